// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "RoundTrip.h"

#include "decoding/UtilPrinterStatus.h"
#include "Requirement.h"

#include <algorithm>
#include <array>

namespace {

template <std::size_t Size> QByteArray Raw(const unsigned char (&field)[Size])
{
    return {reinterpret_cast<const char*>(field), static_cast<int>(Size) - 1};
}

// Compares all bytes, including those after a zero byte.
template <std::size_t Size> bool Holds(const char (&member)[Size], const QByteArray& text)
{
    const QByteArray kept = text.left(static_cast<int>(Size) - 1);
    return std::equal(kept.begin(), kept.end(), member) &&
        std::all_of(member + kept.size(), member + Size, [](char byte) { return byte == '\0'; });
}

bool AreSameCodes(const std::vector<unsigned long>& codes, const QVector<quint16>& sent)
{
    return std::equal(codes.begin(), codes.end(), sent.begin(), sent.end());
}

quint32 NumberIn(const QByteArray& data)
{
    quint32 number = 0;
    for (const char byte : data) {
        number = number << 8 | static_cast<quint8>(byte);
    }
    return number;
}

// The last record of a field counts. Pages also count as prints until a record of prints follows.
quint32 LastNumber(const QVector<ReplyRecord>& records, SupplyField field)
{
    quint32 number = 0;
    for (const ReplyRecord& record : records) {
        const auto recordField = static_cast<SupplyField>(record.type);
        if (recordField == field || (recordField == SupplyField::Pages && field == SupplyField::Prints)) {
            number = NumberIn(record.data);
        }
    }
    return number;
}

// A shorter serial number keeps the end of the one before it.
QByteArray LastSerialNumber(const QVector<ReplyRecord>& records)
{
    QByteArray serialNumber;
    for (const ReplyRecord& record : records) {
        if (static_cast<SupplyField>(record.type) == SupplyField::SerialNumber) {
            serialNumber.replace(0, record.data.size(), record.data);
        }
    }
    return serialNumber;
}

void CheckSupplies(const UtilPrinterStatus& status, const QVector<ReplyRecord>& records)
{
    const auto last = [&records](SupplyField field) {
        return LastNumber(records, field);
    };
    Require(status.dwSupplyCount == static_cast<unsigned long>(records.size()), "all supplies records are counted");
    Require(Holds(status.szSupplySerialNumber, LastSerialNumber(records)), "the supply's serial number is unchanged");
    Require(status.dwSupplyType == last(SupplyField::Type), "the supply type is unchanged");
    Require(status.dwRemainingToner == last(SupplyField::RemainingToner), "the remaining toner is unchanged");
    Require(status.dwWasteToner == last(SupplyField::WasteToner), "the waste toner is unchanged");
    Require(status.dwOPCRotation == last(SupplyField::OpcRotation), "the drum's rotation is unchanged");
    Require(status.dwNumberOfPages == last(SupplyField::Pages), "the pages are unchanged");
    Require(status.dwNumberOfPrint == last(SupplyField::Prints), "the prints are unchanged");
    Require(status.dwPrintDotsCount == last(SupplyField::PrintDots), "the printed dots are unchanged");
    Require(status.dwPrinterNumOfPages == last(SupplyField::PrinterPages), "the printer's pages are unchanged");
    Require(status.dwPrinterNumOfPrint == last(SupplyField::PrinterPrints), "the printer's prints are unchanged");
}

void CheckUninterpreted(const UtilPrinterStatus& status, const StandardReply& reply)
{
    Require(Raw(status.byHead7) + Raw(status.byHead8) + Raw(status.byHead10) == reply.header.mid(7),
            "the header is unchanged");
    Require(Raw(status.byReserved1) == reply.reservedBeforeStatus, "the bytes before the status are unchanged");
    Require(Raw(status.byReserved2) + Raw(status.byReserved3) + Raw(status.byReserved4) == reply.reservedBeforeSupplies,
            "the bytes before the supplies are unchanged");
}

// The codes that the items of one type announce.
struct QZCodes
{
    explicit QZCodes(const QVector<ReplyRecord>& items, quint16 type)
    {
        for (const ReplyRecord& item : items) {
            if (item.type == type) {
                codes.append(static_cast<quint16>(NumberIn(item.data)));
            }
        }
    }

    QVector<quint16> codes;
    unsigned long isSet() const
    {
        return codes.isEmpty() || codes.last() == 0 ? 0 : 1;
    }
};

// A state without a code keeps the one before it.
unsigned long LastQZStatus(const QVector<ReplyRecord>& items)
{
    std::array<std::optional<ReplyRecord>, 13> stateItems; // by status code
    for (std::size_t code = 0; code < stateItems.size(); ++code) {
        stateItems[code] = QZStatus(static_cast<quint8>(code));
    }
    unsigned long status = 0;
    for (const ReplyRecord& item : items) {
        const auto* const found =
            std::find_if(stateItems.begin(), stateItems.end(), [&item](const std::optional<ReplyRecord>& state) {
                return state && state->type == item.type && state->data == item.data;
            });
        if (found != stateItems.end()) {
            status = static_cast<unsigned long>(found - stateItems.begin());
        }
    }
    return status;
}

unsigned long LastQZToner(const QVector<ReplyRecord>& items)
{
    const quint16 tonerType = QZToner(0).type;
    const auto last = std::find_if(items.rbegin(), items.rend(),
                                   [tonerType](const ReplyRecord& item) { return item.type == tonerType; });
    return last == items.rend() ? 0 : NumberIn(last->data);
}

} // namespace

void CheckRoundTrip(const StandardReply& reply)
{
    QByteArray bytes = EncodeStandardReply(reply);
    UtilPrinterStatus status;
    Require(status.parseRecvBuf(reinterpret_cast<unsigned char*>(bytes.data()),
                                static_cast<unsigned long>(bytes.size())) == 1,
            "a correct reply is accepted");
    CheckUninterpreted(status, reply);
    Require(Holds(status.szVenderName, reply.vendorName), "the vendor name is unchanged");
    Require(Holds(status.szProductName, reply.productName), "the product name is unchanged");
    Require(Holds(status.szSerialNumber, reply.serialNumber), "the serial number is unchanged");
    Require(status.dwStatus == reply.status, "the status is unchanged");
    Require(Holds(status.szFWVersion, reply.firmwareVersion), "the firmware version is unchanged");
    Require(Holds(status.szExtraInfo, reply.extraInfo), "the further text is unchanged");
    Require(AreSameCodes(status.vecErrorCode, reply.errorCodes), "the errors are unchanged");
    Require(AreSameCodes(status.vecWarningCode, reply.warningCodes), "the warnings are unchanged");
    CheckSupplies(status, reply.supplies);
}

void CheckRoundTrip(const QZReply& reply)
{
    QByteArray bytes = EncodeQZReply(reply);
    UtilPrinterStatus status;
    Require(status.parseRecvBuf_QZ(reinterpret_cast<unsigned char*>(bytes.data()),
                                   static_cast<unsigned long>(bytes.size())) == 1,
            "a correct reply is accepted");
    const QZCodes errors(reply.items, QZError(0).type);
    const QZCodes warnings(reply.items, QZWarning(0).type);
    Require(status.dwStatus == LastQZStatus(reply.items), "the status is unchanged");
    Require(AreSameCodes(status.vecErrorCode, errors.codes), "the errors are unchanged");
    Require(status.dwErrorCount == errors.isSet(), "the last error item says whether there are any");
    Require(AreSameCodes(status.vecWarningCode, warnings.codes), "the warnings are unchanged");
    Require(status.dwWarningCount == warnings.isSet(), "the last warning item says whether there are any");
    Require(status.dwRemainingToner == LastQZToner(reply.items), "the toner is unchanged");
}
