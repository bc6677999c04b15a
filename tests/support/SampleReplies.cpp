// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReplies.h"

StandardReply FullReply()
{
    StandardReply reply;
    reply.vendorName = "托尔玛 Tolmar";
    reply.productName = "QV K4510A";
    reply.serialNumber = "SN-0001";
    reply.status = RawPrinting;
    reply.firmwareVersion = "1.2.3";
    reply.extraInfo = "extra";
    reply.errorCodes = {0x1106, 0x11A0};
    reply.warningCodes = {0x110D, 0x1121, 0x0001};
    reply.supplies = {SupplySerialNumber("墨粉-7"),
                      SupplyValue(SupplyField::Type, 3),
                      SupplyValue(SupplyField::RemainingToner, 7890),
                      SupplyValue(SupplyField::WasteToner, 65535),
                      SupplyValue(SupplyField::OpcRotation, 102),
                      SupplyValue(SupplyField::Pages, 4294967295U),
                      SupplyValue(SupplyField::Prints, 104),
                      SupplyValue(SupplyField::PrintDots, 105),
                      SupplyValue(SupplyField::PrinterPages, 70000),
                      SupplyValue(SupplyField::PrinterPrints, 107)};
    return reply;
}

stPrinterState FullReplyState()
{
    stPrinterState state;
    state.strPrinterSerialNumber = QStringLiteral("SN-0001");
    state.enCurrentStatus = PS_PRINTING;
    state.strFWVersion = QStringLiteral("1.2.3");
    state.strVenderName = QStringLiteral("托尔玛 Tolmar");
    state.strProductName = QStringLiteral("QV K4510A");
    state.iNumberOfError = 2;
    state.iNumberOfWarning = 3;
    state.listError = {ERR_FRONT_COVER_OPEN, ERR_TRAY_EMPTY};
    state.listWarning = {ERR_TONER_LOW, ERR_WASTE_TONER_NEAR_FULL, ERR_UNKNOWN};
    state.strSupplySerialNumber = QStringLiteral("墨粉-7");
    state.enSpplyType = 0;
    state.dwRemainingToner = 7890;
    state.dwWasteToner = 65535;
    state.dwOPCRotation = 102;
    state.dwNumberOfPages = 4294967295UL;
    state.dwNumberOfPrint = 104;
    state.dwPrintDotsCount = 105;
    state.dwPrinterNumOfPages = 70000;
    state.dwPrinterNumOfPrint = 107;
    state.iFailCount = 0;
    return state;
}

QByteArray StandardBytes(quint8 status, quint32 toner, const QVector<quint16>& errors, const QVector<quint16>& warnings)
{
    StandardReply reply;
    reply.status = status;
    reply.errorCodes = errors;
    reply.warningCodes = warnings;
    reply.supplies = {SupplyValue(SupplyField::RemainingToner, toner)};
    return EncodeStandardReply(reply);
}

QByteArray StandardBytesOfSize(int bytes)
{
    StandardReply reply;
    reply.supplies = {SupplyValue(SupplyField::RemainingToner, 8000)};
    reply.vendorName = QByteArray(bytes - EncodeStandardReply(reply).size(), 'v');
    return EncodeStandardReply(reply);
}

QByteArray QZItems(const QVector<ReplyRecord>& items)
{
    QZReply reply;
    reply.items = items;
    return EncodeQZReply(reply);
}

QByteArray QZBytes(quint8 tonerPercent)
{
    return QZItems({QZMachineState(1), QZToner(tonerPercent)});
}

QByteArray RejectedBytes()
{
    QByteArray bytes = StandardBytes(RawReady);
    bytes.chop(1);
    return bytes;
}
