// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr int QZUnreadBytes = 36;

template <typename Member> DecoderField Field(const char* name, const Member& member)
{
    return {name, reinterpret_cast<const unsigned char*>(&member), sizeof member};
}

DecoderField FieldByName(const UtilPrinterStatus& status, const QString& name)
{
    const std::vector<DecoderField> fields = DecoderFields(status);
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&name](const DecoderField& field) { return name == QLatin1String(field.name); });
    if (found == fields.end()) {
        qFatal("the decoder has no member %s", qPrintable(name));
    }
    return *found;
}

std::vector<DecoderField> HeaderAndTextFields(const UtilPrinterStatus& status)
{
    return {
        Field("byHead7", status.byHead7),
        Field("byHead8", status.byHead8),
        Field("byHead10", status.byHead10),
        Field("byVenderNameLen", status.byVenderNameLen),
        Field("szVenderName", status.szVenderName),
        Field("dwVenderNameLen", status.dwVenderNameLen),
        Field("byProductNameLen", status.byProductNameLen),
        Field("szProductName", status.szProductName),
        Field("dwProductNameLen", status.dwProductNameLen),
        Field("bySerialNumberLen", status.bySerialNumberLen),
        Field("szSerialNumber", status.szSerialNumber),
        Field("dwSerialNumberLen", status.dwSerialNumberLen),
        Field("byReserved1", status.byReserved1),
        Field("byStatus", status.byStatus),
        Field("byExtraInfoLen", status.byExtraInfoLen),
        Field("szExtraInfo", status.szExtraInfo),
        Field("byErrorCount", status.byErrorCount),
        Field("byErrorCode", status.byErrorCode),
        Field("byWarningCount", status.byWarningCount),
        Field("byWarningCode", status.byWarningCode),
        Field("dwExtraInfoLen", status.dwExtraInfoLen),
        Field("dwErrorCount", status.dwErrorCount),
        Field("dwWarningCount", status.dwWarningCount),
        Field("dwStatus", status.dwStatus),
        Field("szFWVersion", status.szFWVersion),
        Field("byFWVersionLen", status.byFWVersionLen),
        Field("byReserved2", status.byReserved2),
        Field("byReserved3", status.byReserved3),
        Field("byReserved4", status.byReserved4),
        Field("bySupplyCount", status.bySupplyCount),
        Field("dwSupplyCount", status.dwSupplyCount),
    };
}

std::vector<DecoderField> SuppliesFields(const UtilPrinterStatus& status)
{
    return {
        Field("szSupplySerialNumber", status.szSupplySerialNumber),
        Field("bySupplyType", status.bySupplyType),
        Field("byRemainingToner", status.byRemainingToner),
        Field("byWasteToner", status.byWasteToner),
        Field("byOPCRotation", status.byOPCRotation),
        Field("byNumberOfPages", status.byNumberOfPages),
        Field("byNumberOfPrint", status.byNumberOfPrint),
        Field("byPrintDotsCount", status.byPrintDotsCount),
        Field("byPrinterNumOfPages", status.byPrinterNumOfPages),
        Field("byPrinterNumOfPrint", status.byPrinterNumOfPrint),
        Field("dwSupplyType", status.dwSupplyType),
        Field("dwRemainingToner", status.dwRemainingToner),
        Field("dwWasteToner", status.dwWasteToner),
        Field("dwOPCRotation", status.dwOPCRotation),
        Field("dwNumberOfPages", status.dwNumberOfPages),
        Field("dwNumberOfPrint", status.dwNumberOfPrint),
        Field("dwPrintDotsCount", status.dwPrintDotsCount),
        Field("dwPrinterNumOfPages", status.dwPrinterNumOfPages),
        Field("dwPrinterNumOfPrint", status.dwPrinterNumOfPrint),
    };
}

} // namespace

std::vector<DecoderField> DecoderFields(const UtilPrinterStatus& status)
{
    std::vector<DecoderField> fields = HeaderAndTextFields(status);
    const std::vector<DecoderField> supplies = SuppliesFields(status);
    fields.insert(fields.end(), supplies.begin(), supplies.end());
    return fields;
}

QStringList FilledFields(const UtilPrinterStatus& status)
{
    QStringList names;
    for (const DecoderField& field : DecoderFields(status)) {
        if (std::any_of(field.bytes, field.bytes + field.size, [](unsigned char byte) { return byte != 0; })) {
            names.append(QLatin1String(field.name));
        }
    }
    return names;
}

QStringList Names(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '));
}

QStringList FilledFieldsBut(const UtilPrinterStatus& status, const char* names)
{
    const QStringList without = Names(names);
    QStringList filled = FilledFields(status);
    filled.erase(std::remove_if(filled.begin(), filled.end(),
                                [&without](const QString& name) { return without.contains(name); }),
                 filled.end());
    return filled;
}

QByteArray RawField(const UtilPrinterStatus& status, const QString& name)
{
    const DecoderField field = FieldByName(status, name);
    return {reinterpret_cast<const char*>(field.bytes), static_cast<int>(field.size)};
}

unsigned long Value(const UtilPrinterStatus& status, const QString& name)
{
    const DecoderField field = FieldByName(status, name);
    unsigned long value = 0;
    if (field.size != sizeof value) {
        qFatal("%s is no decoded value", qPrintable(name));
    }
    std::memcpy(&value, field.bytes, sizeof value);
    return value;
}

QList<unsigned long> Codes(const std::vector<unsigned long>& codes)
{
    QList<unsigned long> list;
    std::copy(codes.begin(), codes.end(), std::back_inserter(list));
    return list;
}

QByteArray Hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray QZReplyOf(int count, const QByteArray& items)
{
    return QByteArray(QZUnreadBytes, '\xEE') + static_cast<char>(count) + items;
}

unsigned int ParseStandard(UtilPrinterStatus& status, const QByteArray& reply)
{
    std::vector<unsigned char> copy(reply.begin(), reply.end());
    return status.parseRecvBuf(copy.data(), copy.size());
}

unsigned int ParseQZ(UtilPrinterStatus& status, const QByteArray& reply)
{
    std::vector<unsigned char> copy(reply.begin(), reply.end());
    return status.parseRecvBuf_QZ(copy.data(), copy.size());
}

unsigned int ParseStandardCut(UtilPrinterStatus& status, QByteArray reply, int length)
{
    return status.parseRecvBuf(reinterpret_cast<unsigned char*>(reply.data()), static_cast<unsigned long>(length));
}

unsigned int ParseQZCut(UtilPrinterStatus& status, QByteArray reply, int length)
{
    return status.parseRecvBuf_QZ(reinterpret_cast<unsigned char*>(reply.data()), static_cast<unsigned long>(length));
}
