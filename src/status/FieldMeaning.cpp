// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/FieldMeaning.h"

#include "decoding/QZStatusReply.h"
#include "status/ConditionNames.h"
#include "texts/UtilLanguageCtrl.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<FieldName, ReplyFieldCount> c_names{{
    {"unread", "not read", "未读取"},
    {"head_7", "header byte", "头部字节"},
    {"head_8", "header bytes", "头部字节"},
    {"head_10", "header bytes", "头部字节"},
    {"vendor_name_length", "length of the vendor name", "厂商名长度"},
    {"vendor_name", "vendor name", "厂商名"},
    {"product_name_length", "length of the product name", "产品名长度"},
    {"product_name", "product name", "产品名"},
    {"serial_number_length", "length of the serial number", "序列号长度"},
    {"serial_number", "serial number", "序列号"},
    {"reserved_1", "reserved", "保留"},
    {"status", "status", "状态"},
    {"firmware_version_length", "length of the firmware version", "固件版本长度"},
    {"firmware_version", "firmware version", "固件版本"},
    {"extra_info_length", "length of the further text", "附加文本长度"},
    {"extra_info", "further text", "附加文本"},
    {"error_count", "number of errors", "错误数"},
    {"error_code", "error", "错误"},
    {"warning_count", "number of warnings", "警告数"},
    {"warning_code", "warning", "警告"},
    {"reserved_2", "reserved", "保留"},
    {"reserved_3", "reserved", "保留"},
    {"reserved_4", "reserved", "保留"},
    {"supply_count", "number of supplies records", "耗材记录数"},
    {"supply_serial_number", "cartridge's serial number", "碳粉盒序列号"},
    {"supply_type", "supply type", "耗材类型"},
    {"remaining_toner", "remaining toner", "剩余碳粉量"},
    {"waste_toner", "waste toner", "废粉计数"},
    {"drum_rotation", "drum rotations", "感光鼓转数"},
    {"cartridge_pages", "pages of the cartridge", "碳粉盒页数"},
    {"cartridge_prints", "prints of the cartridge", "碳粉盒印次"},
    {"printed_dots", "printed dots", "打印点数"},
    {"printer_pages", "pages of the printer", "打印机页数"},
    {"printer_prints", "prints of the printer", "打印机印次"},
    {"unknown_supply", "unknown supplies record", "未知耗材记录"},
    {"item_count", "number of items", "条目数"},
    {"machine_state", "machine state", "机器状态"},
    {"job_state", "job state", "任务状态"},
    {"error_item", "error", "错误"},
    {"warning_item", "warning", "警告"},
    {"toner_item", "toner", "碳粉"},
    {"unknown_item", "unknown item", "未知条目"},
    {"ignored", "ignored", "忽略"},
}};

FieldMeaning Number(unsigned long value)
{
    return {static_cast<double>(value), {}, {}};
}

FieldMeaning Text(const char* utf8)
{
    return {QString::fromUtf8(utf8), {}, {}};
}

FieldMeaning Explained(unsigned long value, const char* name, const QString (&texts)[TextLanguages])
{
    const QString prefix = QString::fromLatin1(name) + QLatin1Char(' ');
    return {static_cast<double>(value), prefix + texts[0], prefix + texts[1]};
}

FieldMeaning Condition(unsigned long code)
{
    const enErrorStatus condition = GetErrorStatusEnum(code);
    const QByteArray name = CodeText(code).toLatin1() + ' ' + ConditionName(condition);
    FieldMeaning meaning = Explained(code, name.constData(), c_strErrorDescText[condition]);
    const QString(&remedies)[TextLanguages] = c_strErrorSolutionText[condition];
    if (!remedies[0].isEmpty()) {
        meaning.english += QStringLiteral(" (%1)").arg(remedies[0]);
        meaning.chinese += QStringLiteral("（%1）").arg(remedies[1]);
    }
    return meaning;
}

// A QZ reply says with the code 0000 that there is no condition. Such a code is the decoder's count of 0.
FieldMeaning ConditionItem(unsigned long count, const std::vector<unsigned long>& codes)
{
    if (count == 0) {
        return {static_cast<double>(codes.back()), QStringLiteral("none"), QStringLiteral("无")};
    }
    return Condition(codes.back());
}

FieldMeaning Status(const PrinterFamily& family, unsigned long code)
{
    const enPrinterStatus status = family.status(code);
    return Explained(code, StatusName(status), c_strStatusLanguageText[status]);
}

FieldMeaning Toner(const PrinterFamily& family, unsigned long value)
{
    const QString percent = QString::asprintf("%.2f%%", static_cast<double>(value) / family.tonerUnitsPerPercent);
    return {static_cast<double>(value), percent, percent};
}

// Walks along the fields and asks the decoder's result for the value of each.
class Explainer
{
public:
    explicit Explainer(const DecodedReply& reply)
        : m_reply(reply)
        , m_decoded(*reply.fields)
    {
    }

    FieldMeaning explain(const PlacedField& placed)
    {
        switch (placed.field) {
        case ReplyField::Unread:
        case ReplyField::Ignored:
        case ReplyField::UnknownItem:
            m_items += placed.field == ReplyField::UnknownItem ? 1 : 0;
            return {};
        case ReplyField::ErrorCode:
            return Condition(m_decoded.vecErrorCode.at(m_errors++));
        case ReplyField::WarningCode:
            return Condition(m_decoded.vecWarningCode.at(m_warnings++));
        case ReplyField::Status:
            return Status(*m_reply.family, m_decoded.dwStatus);
        case ReplyField::MachineState:
        case ReplyField::JobState:
        case ReplyField::ErrorItem:
        case ReplyField::WarningItem:
        case ReplyField::TonerItem:
            return item(placed);
        default:
            return placed.field >= ReplyField::SupplySerialNumber && placed.field <= ReplyField::UnknownSupply
                ? supply(placed)
                : plain(placed);
        }
    }

private:
    const unsigned char* at(int offset) const
    {
        return reinterpret_cast<const unsigned char*>(m_reply.bytes.constData()) + offset;
    }

    FieldMeaning plain(const PlacedField& placed) const
    {
        switch (placed.field) {
        case ReplyField::VendorName:
            return Text(m_decoded.szVenderName);
        case ReplyField::ProductName:
            return Text(m_decoded.szProductName);
        case ReplyField::SerialNumber:
            return Text(m_decoded.szSerialNumber);
        case ReplyField::FirmwareVersion:
            return Text(m_decoded.szFWVersion);
        case ReplyField::ExtraInfo:
            return Text(m_decoded.szExtraInfo);
        default: // lengths, counts and reserved bytes
            return Number(UtilPrinterStatus::byteToDWORD(at(placed.offset), static_cast<unsigned long>(placed.size)));
        }
    }

    // Several records of one type may occur, of which the reply keeps the last: each is decoded on its own. A record
    // without data gets the first byte of the last record with data.
    FieldMeaning supply(const PlacedField& placed)
    {
        const int header = static_cast<int>(SupplyHeaderBytes);
        const int length = placed.size - header;
        m_lastData = length > 0 ? placed.offset + header : m_lastData;
        const QByteArray data =
            m_lastData > 0 ? m_reply.bytes.mid(m_lastData, std::max(length, 1)) : QByteArray(1, '\0');
        UtilPrinterStatus record;
        record.setSuppliesData(UtilPrinterStatus::byteToDWORD(at(placed.offset), 2),
                               reinterpret_cast<const unsigned char*>(data.constData()),
                               static_cast<unsigned long>(length));
        switch (placed.field) {
        case ReplyField::SupplySerialNumber:
            return Text(record.szSupplySerialNumber);
        case ReplyField::RemainingToner:
            return Toner(*m_reply.family, record.dwRemainingToner);
        case ReplyField::UnknownSupply:
            return {};
        default: // only one of these numbers is set; pages also count as prints
            return Number(record.dwSupplyType + record.dwWasteToner + record.dwOPCRotation + record.dwNumberOfPrint +
                          record.dwPrintDotsCount + record.dwPrinterNumOfPages + record.dwPrinterNumOfPrint);
        }
    }

    // The decoder's result after this item: it decodes the same bytes with a smaller number of items.
    FieldMeaning item(const PlacedField& placed)
    {
        ++m_items;
        QByteArray bytes = m_reply.bytes;
        bytes[static_cast<int>(QZLayout::ItemCountOffset)] = static_cast<char>(m_items);
        UtilPrinterStatus result;
        result.parseRecvBuf_QZ(reinterpret_cast<unsigned char*>(bytes.data()),
                               static_cast<unsigned long>(bytes.size()));
        switch (placed.field) {
        case ReplyField::ErrorItem:
            return ConditionItem(result.dwErrorCount, result.vecErrorCode);
        case ReplyField::WarningItem:
            return ConditionItem(result.dwWarningCount, result.vecWarningCode);
        case ReplyField::TonerItem:
            return Toner(*m_reply.family, result.dwRemainingToner);
        default:
            return Status(*m_reply.family, result.dwStatus);
        }
    }

    const DecodedReply& m_reply;
    const UtilPrinterStatus& m_decoded;
    std::size_t m_errors = 0;
    std::size_t m_warnings = 0;
    int m_items = 0;
    int m_lastData = 0; // offset; 0: no record had data yet
};

} // namespace

const FieldName& NameOf(ReplyField field)
{
    return c_names.at(static_cast<std::size_t>(field));
}

QVector<FieldMeaning> MeaningsOf(const DecodedReply& reply)
{
    QVector<FieldMeaning> meanings;
    Explainer explainer(reply);
    for (const PlacedField& placed : reply.layout.fields) {
        meanings.append(explainer.explain(placed));
    }
    return meanings;
}
