// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <utility>

namespace {

QList<enErrorStatus> MapCodes(const std::vector<unsigned long>& codes)
{
    QList<enErrorStatus> conditions;
    conditions.reserve(static_cast<int>(codes.size()));
    for (const unsigned long code : codes) {
        conditions.append(GetErrorStatusEnum(code));
    }
    return conditions;
}

// In both families a count of 0 means that nothing is wrong, whatever codes were sent: the QZ family also sends the
// code 0000 for "no error".
QList<enErrorStatus> Conditions(unsigned long count, const std::vector<unsigned long>& codes)
{
    return count > 0 ? MapCodes(codes) : QList<enErrorStatus>();
}

// What replies of both families carry.
void TakeCommonFields(const UtilPrinterStatus& reply, stPrinterState& state)
{
    state.listError = Conditions(reply.dwErrorCount, reply.vecErrorCode);
    state.listWarning = Conditions(reply.dwWarningCount, reply.vecWarningCode);
    state.strSupplySerialNumber = QString::fromUtf8(reply.szSupplySerialNumber);
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
    stPrinterState state;
    state.strPrinterSerialNumber = QString::fromUtf8(reply.szSerialNumber);
    state.enCurrentStatus = GetPrinterStatusEnum(reply.dwStatus);
    state.strFWVersion = QString::fromUtf8(reply.szFWVersion);
    state.strVenderName = QString::fromUtf8(reply.szVenderName);
    state.strProductName = QString::fromUtf8(reply.szProductName);
    state.iNumberOfError = static_cast<int>(reply.dwErrorCount);
    state.iNumberOfWarning = static_cast<int>(reply.dwWarningCount);
    TakeCommonFields(reply, state);
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
    TakeCommonFields(reply, state);
    stCurrent.stState = std::move(state);
    return 0;
}

bool TrdGetPrinterStatus::CheckStatusChange(stPrinterState a, stPrinterState b)
{
    return a.enCurrentStatus != b.enCurrentStatus || a.dwRemainingToner != b.dwRemainingToner ||
        a.listError != b.listError || a.listWarning != b.listWarning;
}
