// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <algorithm>
#include <utility>

namespace {

// Replies mostly repeat their texts and conditions. What `before` holds already is shared with it: an allocation costs
// as much as decoding a quarter of a reply.

// `utf8` as fromUtf8() reads it. Only ASCII is compared: other characters have to be decoded first.
QString Text(const char* utf8, const QString& before)
{
    const auto isSame = [](QChar a, char b) {
        return a.unicode() == static_cast<unsigned char>(b) && a.unicode() > 0 && a.unicode() < 0x80;
    };
    // Ends at the terminating zero of a shorter text.
    const bool isBeforeRepeated = std::equal(before.begin(), before.end(), utf8, isSame) && utf8[before.size()] == 0;
    return isBeforeRepeated ? before : QString::fromUtf8(utf8);
}

// In both families a count of 0 means that nothing is wrong, whatever codes were sent: the QZ family also sends the
// code 0000 for "no error".
QList<enErrorStatus> Conditions(unsigned long count, const std::vector<unsigned long>& codes,
                                const QList<enErrorStatus>& before)
{
    QList<enErrorStatus> conditions;
    if (count == 0) {
        return conditions;
    }
    if (std::equal(before.begin(), before.end(), codes.begin(), codes.end(),
                   [](enErrorStatus condition, unsigned long code) { return condition == GetErrorStatusEnum(code); })) {
        return before;
    }
    conditions.reserve(static_cast<int>(codes.size()));
    for (const unsigned long code : codes) {
        conditions.append(GetErrorStatusEnum(code));
    }
    return conditions;
}

// What replies of both families carry.
void TakeCommonFields(const UtilPrinterStatus& reply, const stPrinterState& before, stPrinterState& state)
{
    state.listError = Conditions(reply.dwErrorCount, reply.vecErrorCode, before.listError);
    state.listWarning = Conditions(reply.dwWarningCount, reply.vecWarningCode, before.listWarning);
    state.strSupplySerialNumber = Text(reply.szSupplySerialNumber, before.strSupplySerialNumber);
    state.enSpplyType = GetTonerTypeEnum(reply.dwSupplyType);
    state.dwRemainingToner = reply.dwRemainingToner;
    state.dwWasteToner = reply.dwWasteToner;
    state.dwOPCRotation = reply.dwOPCRotation;
    state.dwNumberOfPages = reply.dwNumberOfPages;
    state.dwNumberOfPrint = reply.dwNumberOfPrint;
    state.dwPrintDotsCount = reply.dwPrintDotsCount;
    state.dwPrinterNumOfPages = reply.dwPrinterNumOfPages;
    state.dwPrinterNumOfPrint = reply.dwPrinterNumOfPrint;
    state.iFailCount = 0;
}

} // namespace

int TrdGetPrinterStatus::CheckPrinterStatus(unsigned char* buf, unsigned long len)
{
    auto reply = UtilPrinterStatus(); // zeroed as one block; a plain definition does it array by array
    if (reply.parseRecvBuf(buf, len) != 1) {
        return -1;
    }
    const stPrinterState& before = stCurrent.stState;
    stPrinterState state;
    state.strPrinterSerialNumber = Text(reply.szSerialNumber, before.strPrinterSerialNumber);
    state.enCurrentStatus = GetPrinterStatusEnum(reply.dwStatus);
    state.strFWVersion = Text(reply.szFWVersion, before.strFWVersion);
    state.strVenderName = Text(reply.szVenderName, before.strVenderName);
    state.strProductName = Text(reply.szProductName, before.strProductName);
    state.iNumberOfError = static_cast<int>(reply.dwErrorCount);
    state.iNumberOfWarning = static_cast<int>(reply.dwWarningCount);
    TakeCommonFields(reply, stCurrent.stState, state);
    stCurrent.stState = std::move(state);
    return 0;
}

int TrdGetPrinterStatus::CheckPrinterStatus_QZ(unsigned char* buf, unsigned long len)
{
    auto reply = UtilPrinterStatus();
    if (reply.parseRecvBuf_QZ(buf, len) != 1) {
        return -1;
    }
    // This family reports neither texts nor counts. Always 1: who needs the number of conditions asks the lists.
    stPrinterState state;
    state.enCurrentStatus = GetPrinterStatusEnum_QZ(reply.dwStatus);
    state.iNumberOfError = 1;
    state.iNumberOfWarning = 1;
    TakeCommonFields(reply, stCurrent.stState, state);
    stCurrent.stState = std::move(state);
    return 0;
}

bool TrdGetPrinterStatus::CheckStatusChange(stPrinterState a, stPrinterState b)
{
    return a.enCurrentStatus != b.enCurrentStatus || a.dwRemainingToner != b.dwRemainingToner ||
        a.listError != b.listError || a.listWarning != b.listWarning;
}
