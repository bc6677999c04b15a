// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ReplyLayout.h"

#include "decoding/QZStatusReply.h"

#include <utility>

namespace {

// Places fields one behind the other. Each step returns whether its bytes are there; the first that are not are the
// fault.
class LayoutReader
{
public:
    explicit LayoutReader(QByteArray reply)
        : m_reply(std::move(reply))
    {
    }

    int at() const
    {
        return m_at;
    }
    // The integer of `size` bytes at `offset`, which must lie inside the reply.
    unsigned long integer(int offset, int size) const
    {
        return UtilPrinterStatus::byteToDWORD(reinterpret_cast<const unsigned char*>(m_reply.constData()) + offset,
                                              static_cast<unsigned long>(size));
    }
    bool has(ReplyField field, int size)
    {
        const int left = m_reply.size() - m_at;
        if (size > left) {
            m_layout.fault = ReplyFault{field, m_at, size, left};
        }
        return size <= left;
    }
    bool place(ReplyField field, int size)
    {
        if (!has(field, size)) {
            return false;
        }
        m_layout.fields.append({field, m_at, size});
        m_at += size;
        return true;
    }
    bool placeText(ReplyField length, ReplyField text, int lengthBytes)
    {
        const int offset = m_at;
        return place(length, lengthBytes) && place(text, static_cast<int>(integer(offset, lengthBytes)));
    }
    bool placeCodes(ReplyField count, ReplyField code)
    {
        const int offset = m_at;
        if (!place(count, 1)) {
            return false;
        }
        for (unsigned long i = integer(offset, 1); i > 0; --i) {
            if (!place(code, 2)) {
                return false;
            }
        }
        return true;
    }
    ReplyLayout finish()
    {
        if (!m_layout.fault && m_at < m_reply.size()) {
            place(ReplyField::Ignored, m_reply.size() - m_at);
        }
        return m_layout;
    }

private:
    const QByteArray m_reply;
    int m_at = 0;
    ReplyLayout m_layout;
};

ReplyField SupplyField(unsigned long type)
{
    switch (type) {
    case SUPPLY_SERIAL_NUMBER:
        return ReplyField::SupplySerialNumber;
    case SUPPLY_TYPE:
        return ReplyField::SupplyType;
    case SUPPLY_REMAINING_TONER:
        return ReplyField::RemainingToner;
    case SUPPLY_WASTE_TONER:
        return ReplyField::WasteToner;
    case SUPPLY_OPC_ROTATION:
        return ReplyField::DrumRotation;
    case SUPPLY_NUMBER_OF_PAGES:
        return ReplyField::CartridgePages;
    case SUPPLY_NUMBER_OF_PRINT:
        return ReplyField::CartridgePrints;
    case SUPPLY_PRINT_DOTS_COUNT:
        return ReplyField::PrintedDots;
    case SUPPLY_PRINTER_NUM_OF_PAGES:
        return ReplyField::PrinterPages;
    case SUPPLY_PRINTER_NUM_OF_PRINT:
        return ReplyField::PrinterPrints;
    default:
        return ReplyField::UnknownSupply;
    }
}

bool PlaceSupplies(LayoutReader& reader)
{
    const int countOffset = reader.at();
    if (!reader.place(ReplyField::SupplyCount, 1)) {
        return false;
    }
    constexpr int headerBytes = static_cast<int>(SupplyHeaderBytes);
    for (unsigned long i = reader.integer(countOffset, 1); i > 0; --i) {
        if (!reader.has(ReplyField::UnknownSupply, headerBytes)) {
            return false;
        }
        const ReplyField field = SupplyField(reader.integer(reader.at(), 2));
        if (!reader.place(field, headerBytes + static_cast<int>(reader.integer(reader.at() + 2, 1)))) {
            return false;
        }
    }
    return true;
}

void LayOutStandard(LayoutReader& reader)
{
    // One line for each field, in the order of the reply. The first field that does not fit ends the reply.
    // clang-format off
    static_cast<void>(
        reader.place(ReplyField::Unread, static_cast<int>(StandardUnreadBytes)) &&
        reader.place(ReplyField::Head7, 1) &&
        reader.place(ReplyField::Head8, 2) &&
        reader.place(ReplyField::Head10, 2) &&
        reader.placeText(ReplyField::VendorNameLength, ReplyField::VendorName, 2) &&
        reader.placeText(ReplyField::ProductNameLength, ReplyField::ProductName, 2) &&
        reader.placeText(ReplyField::SerialNumberLength, ReplyField::SerialNumber, 2) &&
        reader.place(ReplyField::Reserved1, 2) &&
        reader.place(ReplyField::Status, 1) &&
        reader.placeText(ReplyField::FirmwareVersionLength, ReplyField::FirmwareVersion, 1) &&
        reader.placeText(ReplyField::ExtraInfoLength, ReplyField::ExtraInfo, 1) &&
        reader.placeCodes(ReplyField::ErrorCount, ReplyField::ErrorCode) &&
        reader.placeCodes(ReplyField::WarningCount, ReplyField::WarningCode) &&
        reader.place(ReplyField::Reserved2, 1) &&
        reader.place(ReplyField::Reserved3, 2) &&
        reader.place(ReplyField::Reserved4, 2) &&
        PlaceSupplies(reader));
    // clang-format on
}

ReplyField ItemField(unsigned long type)
{
    switch (type) {
    case QZ_MACHINE_STATE:
        return ReplyField::MachineState;
    case QZ_JOB_STATE:
        return ReplyField::JobState;
    case QZ_ERROR:
        return ReplyField::ErrorItem;
    case QZ_WARNING:
        return ReplyField::WarningItem;
    case QZ_TONER:
        return ReplyField::TonerItem;
    default:
        return ReplyField::UnknownItem;
    }
}

// The decoder reads the data of an unknown item, and of a state that is not one byte long, as the next item's header.
bool HasSkippedData(ReplyField item, int dataLength)
{
    const bool isState = item == ReplyField::MachineState || item == ReplyField::JobState;
    return item != ReplyField::UnknownItem && (!isState || dataLength == 1);
}

void LayOutQZ(LayoutReader& reader, int size)
{
    constexpr int headerBytes = static_cast<int>(QZLayout::ItemHeaderBytes);
    constexpr int countOffset = static_cast<int>(QZLayout::ItemCountOffset);
    if (size <= countOffset) {
        return;
    }
    reader.place(ReplyField::Unread, countOffset);
    reader.place(ReplyField::ItemCount, 1);
    if (size < static_cast<int>(QZLayout::MinimumReplyBytes)) {
        return;
    }
    for (unsigned long i = reader.integer(countOffset, 1); i > 0 && reader.at() + headerBytes <= size; --i) {
        const ReplyField item = ItemField(reader.integer(reader.at(), 2));
        const int dataLength = static_cast<int>(reader.integer(reader.at() + 2, 1));
        if (item != ReplyField::UnknownItem && !reader.has(item, headerBytes + dataLength)) {
            return;
        }
        reader.place(item, headerBytes + (HasSkippedData(item, dataLength) ? dataLength : 0));
    }
}

} // namespace

ReplyLayout LayOutReply(const PrinterFamily& family, const QByteArray& reply)
{
    LayoutReader reader(reply);
    if (&family == &QZFamily()) {
        LayOutQZ(reader, reply.size());
    } else {
        LayOutStandard(reader);
    }
    return reader.finish();
}
