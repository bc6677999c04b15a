// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"

#include "PrinterFolder.h"

#include <QStringList>

namespace {

QString Numbers(const QList<enErrorStatus>& conditions)
{
    QStringList numbers;
    for (const enErrorStatus condition : conditions) {
        numbers.append(QString::number(condition));
    }
    return numbers.join(QLatin1Char(','));
}

} // namespace

QString Words(const stPrinterInfo& info)
{
    return QStringLiteral("name '%1' model '%2' type %3 port '%4' uri '%5'")
        .arg(info.strPrinterName, info.enType, QString::number(info.iConnectType), info.strPort, info.strURI);
}

QString Words(const stPrinterState& state)
{
    const auto number = [](unsigned long value) {
        return QString::number(value);
    };
    return QStringList{
        QStringLiteral("status %1").arg(state.enCurrentStatus),
        QStringLiteral("serial number '%1'").arg(state.strPrinterSerialNumber),
        QStringLiteral("firmware '%1'").arg(state.strFWVersion),
        QStringLiteral("vendor '%1'").arg(state.strVenderName),
        QStringLiteral("product '%1'").arg(state.strProductName),
        QStringLiteral("errors %1: %2").arg(QString::number(state.iNumberOfError), Numbers(state.listError)),
        QStringLiteral("warnings %1: %2").arg(QString::number(state.iNumberOfWarning), Numbers(state.listWarning)),
        QStringLiteral("supply '%1' type %2").arg(state.strSupplySerialNumber, QString::number(state.enSpplyType)),
        QStringLiteral("toner %1 waste %2 opc %3")
            .arg(number(state.dwRemainingToner), number(state.dwWasteToner), number(state.dwOPCRotation)),
        QStringLiteral("pages %1 prints %2 dots %3")
            .arg(number(state.dwNumberOfPages), number(state.dwNumberOfPrint), number(state.dwPrintDotsCount)),
        QStringLiteral("printer pages %1 prints %2")
            .arg(number(state.dwPrinterNumOfPages), number(state.dwPrinterNumOfPrint)),
        QStringLiteral("failures %1").arg(state.iFailCount)}
        .join(QStringLiteral("; "));
}

QString Words(const stPrinterManager& printer)
{
    return Words(printer.stInfo) + QStringLiteral("; ") + Words(printer.stState);
}

stPrinterState FilledState()
{
    stPrinterState state;
    state.strPrinterSerialNumber = QStringLiteral("old serial");
    state.enCurrentStatus = PS_READY;
    state.strFWVersion = QStringLiteral("old firmware");
    state.strVenderName = QStringLiteral("old vendor");
    state.strProductName = QStringLiteral("old product");
    state.iNumberOfError = -3;
    state.iNumberOfWarning = 255;
    state.listError = {ERR_FRONT_COVER_OPEN, ERR_TRAY_EMPTY};
    state.listWarning = {ERR_TONER_LOW};
    state.strSupplySerialNumber = QStringLiteral("old supply");
    state.enSpplyType = -5;
    state.dwRemainingToner = 0x100000000;
    state.dwWasteToner = 0x1FFFFFFFF;
    state.dwOPCRotation = 0x123456789ABC;
    state.dwNumberOfPages = 0x7FFFFFFFFFFFFFFF;
    state.dwNumberOfPrint = 0x8000000000000000;
    state.dwPrintDotsCount = 0xFFFFFFFF00000000;
    state.dwPrinterNumOfPages = 0xFEDCBA9876543210;
    state.dwPrinterNumOfPrint = 0xFFFFFFFFFFFFFFFF;
    state.iFailCount = 7;
    return state;
}

stPrinterManager FilledPrinter(const QString& name)
{
    return {PrinterFolder::Printer(name), FilledState()};
}
