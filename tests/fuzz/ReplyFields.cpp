// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ReplyFields.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int SupplyTextBytes = 64;

class LenientReader
{
public:
    explicit LenientReader(QByteArray bytes)
        : m_bytes(std::move(bytes))
    {
    }

    // Returns fewer bytes if fewer are left.
    QByteArray bytes(int n)
    {
        QByteArray part = m_bytes.mid(m_offset, n);
        m_offset += part.size();
        return part;
    }
    quint32 integer(int n)
    {
        quint32 value = 0;
        for (int i = 0; i < n; ++i) {
            value = value << 8 | (atEnd() ? 0 : static_cast<quint8>(m_bytes.at(m_offset++)));
        }
        return value;
    }
    QByteArray text(int lengthBytes)
    {
        return bytes(static_cast<int>(integer(lengthBytes)));
    }
    QByteArray padded(int n)
    {
        return bytes(n).leftJustified(n, '\0');
    }
    QVector<quint16> codes()
    {
        const auto count = static_cast<int>(integer(1));
        QVector<quint16> codes;
        for (int i = 0; i < count && !atEnd(); ++i) {
            codes.append(static_cast<quint16>(integer(2)));
        }
        return codes;
    }
    bool atEnd() const
    {
        return m_offset >= m_bytes.size();
    }

private:
    const QByteArray m_bytes;
    int m_offset = 0;
};

constexpr std::array<SupplyField, 9> c_numbers{{SupplyField::Type, SupplyField::RemainingToner, SupplyField::WasteToner,
                                                SupplyField::OpcRotation, SupplyField::Pages, SupplyField::Prints,
                                                SupplyField::PrintDots, SupplyField::PrinterPages,
                                                SupplyField::PrinterPrints}};

// A record with a number of the right width, or with a serial number.
ReplyRecord SupplyRecordOf(LenientReader& reader)
{
    const quint32 type = reader.integer(2);
    const QByteArray data = reader.text(1);
    const auto* const number = std::find_if(c_numbers.begin(), c_numbers.end(),
                                            [type](SupplyField field) { return static_cast<quint32>(field) == type; });
    if (number == c_numbers.end()) {
        return SupplySerialNumber(data.left(SupplyTextBytes));
    }
    const int width = SupplyFieldWidth(*number);
    return SupplyValue(*number, LenientReader(data.rightJustified(width, '\0', true)).integer(width));
}

ReplyRecord QZItemOf(LenientReader& reader)
{
    const quint32 type = reader.integer(2);
    LenientReader data(reader.text(1));
    switch (type) {
    case 0x0006:
        return QZMachineState(static_cast<quint8>(data.integer(1)));
    case 0x0007:
        return QZJobState(static_cast<quint8>(data.integer(1)));
    case 0x0009:
        return QZError(static_cast<quint16>(data.integer(2)));
    case 0x000C:
        return QZWarning(static_cast<quint16>(data.integer(2)));
    default:
        return QZToner(static_cast<quint8>(data.integer(3)));
    }
}

} // namespace

StandardReply StandardReplyOf(const QByteArray& bytes)
{
    LenientReader reader(bytes);
    StandardReply reply;
    reply.header = reader.padded(12);
    reply.vendorName = reader.text(2);
    reply.productName = reader.text(2);
    reply.serialNumber = reader.text(2);
    reply.reservedBeforeStatus = reader.padded(2);
    reply.status = static_cast<quint8>(reader.integer(1));
    reply.firmwareVersion = reader.text(1);
    reply.extraInfo = reader.text(1);
    reply.errorCodes = reader.codes();
    reply.warningCodes = reader.codes();
    reply.reservedBeforeSupplies = reader.padded(5);
    const quint32 records = reader.integer(1);
    for (quint32 i = 0; i < records && !reader.atEnd(); ++i) {
        reply.supplies.append(SupplyRecordOf(reader));
    }
    return reply;
}

QZReply QZReplyOf(const QByteArray& bytes)
{
    LenientReader reader(bytes);
    QZReply reply;
    reply.header = reader.padded(36);
    const quint32 items = reader.integer(1);
    for (quint32 i = 0; i < items && !reader.atEnd(); ++i) {
        reply.items.append(QZItemOf(reader));
    }
    return reply;
}
