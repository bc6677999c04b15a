// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "StatusReplyEncoder.h"

#include <QtEndian>

#include <limits>

namespace {

constexpr quint16 QZMachineStateType = 0x0006;
constexpr quint16 QZJobStateType = 0x0007;
constexpr quint16 QZErrorType = 0x0009;
constexpr quint16 QZWarningType = 0x000C;
constexpr quint16 QZTonerType = 0x001D;

template <typename Integer> void AppendInteger(QByteArray& out, Integer value)
{
    char bytes[sizeof(Integer)] = {};
    qToBigEndian(value, bytes);
    out.append(bytes, sizeof(Integer));
}

template <typename Integer> QByteArray IntegerBytes(Integer value)
{
    QByteArray bytes;
    AppendInteger(bytes, value);
    return bytes;
}

// The type of the announced value gives the width of the length field.
template <typename Length> void AppendLength(QByteArray& out, int size, std::optional<Length> announced)
{
    Q_ASSERT(announced || size <= std::numeric_limits<Length>::max());
    AppendInteger(out, announced.value_or(static_cast<Length>(size)));
}

template <typename Length> void AppendText(QByteArray& out, const QByteArray& text, std::optional<Length> announced)
{
    AppendLength(out, text.size(), announced);
    out.append(text);
}

void AppendCodes(QByteArray& out, const QVector<quint16>& codes, std::optional<quint8> announced)
{
    AppendLength(out, codes.size(), announced);
    for (const quint16 code : codes) {
        AppendInteger(out, code);
    }
}

void AppendRecords(QByteArray& out, const QVector<ReplyRecord>& records, std::optional<quint8> announced)
{
    AppendLength(out, records.size(), announced);
    for (const ReplyRecord& record : records) {
        AppendInteger(out, record.type);
        AppendText(out, record.data, record.announcedLength);
    }
}

} // namespace

int SupplyFieldWidth(SupplyField field)
{
    switch (field) {
    case SupplyField::SerialNumber:
        return 0;
    case SupplyField::RemainingToner:
    case SupplyField::WasteToner:
    case SupplyField::OpcRotation:
    case SupplyField::PrintDots:
        return 2;
    case SupplyField::Type:
    case SupplyField::Pages:
    case SupplyField::Prints:
    case SupplyField::PrinterPages:
    case SupplyField::PrinterPrints:
        return 4;
    }
    return 0;
}

ReplyRecord SupplySerialNumber(const QByteArray& serialNumber)
{
    return {static_cast<quint16>(SupplyField::SerialNumber), serialNumber};
}

ReplyRecord SupplyValue(SupplyField field, quint32 value)
{
    const int width = SupplyFieldWidth(field);
    Q_ASSERT(width == 4 || (width == 2 && value <= std::numeric_limits<quint16>::max()));
    return {static_cast<quint16>(field), IntegerBytes(value).right(width)};
}

QByteArray EncodeStandardReply(const StandardReply& reply)
{
    const AnnouncedLengths& announced = reply.announced;
    QByteArray out = reply.header;
    AppendText(out, reply.vendorName, announced.vendorName);
    AppendText(out, reply.productName, announced.productName);
    AppendText(out, reply.serialNumber, announced.serialNumber);
    out.append(reply.reservedBeforeStatus);
    AppendInteger(out, reply.status);
    AppendText(out, reply.firmwareVersion, announced.firmwareVersion);
    AppendText(out, reply.extraInfo, announced.extraInfo);
    AppendCodes(out, reply.errorCodes, announced.errorCodes);
    AppendCodes(out, reply.warningCodes, announced.warningCodes);
    out.append(reply.reservedBeforeSupplies);
    AppendRecords(out, reply.supplies, announced.supplies);
    return out;
}

ReplyRecord QZMachineState(quint8 state)
{
    return {QZMachineStateType, IntegerBytes(state)};
}

ReplyRecord QZJobState(quint8 state)
{
    return {QZJobStateType, IntegerBytes(state)};
}

ReplyRecord QZError(quint16 code)
{
    return {QZErrorType, IntegerBytes(code)};
}

ReplyRecord QZWarning(quint16 code)
{
    return {QZWarningType, IntegerBytes(code)};
}

ReplyRecord QZToner(quint8 percent)
{
    // The level is the third byte. The meaning of the first two is unknown; readers skip them.
    return {QZTonerType, QByteArray(2, '\0') + IntegerBytes(percent)};
}

std::optional<ReplyRecord> QZStatus(quint8 statusCode)
{
    switch (statusCode) {
    case 3:
        return QZMachineState(1);
    case 4:
        return QZMachineState(2);
    case 5:
        return QZMachineState(3);
    case 12:
        return QZMachineState(4);
    case 10:
        return QZJobState(1);
    case 8:
        return QZJobState(2);
    case 9:
        return QZJobState(3);
    default:
        return std::nullopt;
    }
}

QByteArray EncodeQZReply(const QZReply& reply)
{
    QByteArray out = reply.header;
    AppendRecords(out, reply.items, reply.announcedItems);
    return out;
}
