// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusEvaluation.h"

#include <algorithm>
#include <utility>

namespace {

// Most replies repeat the texts and conditions of the previous one. Equal values are shared with `before`, because one
// allocation costs as much as decoding a quarter of a reply.

// Converts `utf8` like fromUtf8(). Only ASCII texts are compared: other characters must be decoded first.
QString Text(const char* utf8, const QString& before)
{
    const auto isSame = [](QChar a, char b) {
        return a.unicode() == static_cast<unsigned char>(b) && a.unicode() > 0 && a.unicode() < 0x80;
    };
    // The comparison ends at the terminating zero of a shorter text.
    const bool isBeforeRepeated = std::equal(before.begin(), before.end(), utf8, isSame) && utf8[before.size()] == 0;
    return isBeforeRepeated ? before : QString::fromUtf8(utf8);
}

// In both families a count of 0 means that nothing is wrong, even if codes were sent: the QZ family sends the code 0000
// for "no error".
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

void TakeTextsAndCounts(const UtilPrinterStatus& reply, const stPrinterState& before, stPrinterState& evaluated)
{
    evaluated.strPrinterSerialNumber = Text(reply.szSerialNumber, before.strPrinterSerialNumber);
    evaluated.strFWVersion = Text(reply.szFWVersion, before.strFWVersion);
    evaluated.strVenderName = Text(reply.szVenderName, before.strVenderName);
    evaluated.strProductName = Text(reply.szProductName, before.strProductName);
    evaluated.iNumberOfError = static_cast<int>(reply.dwErrorCount);
    evaluated.iNumberOfWarning = static_cast<int>(reply.dwWarningCount);
}

} // namespace

bool EvaluateReply(const PrinterFamily& family, unsigned char* buffer, unsigned long length, stPrinterState& state)
{
    auto reply = UtilPrinterStatus(); // zeroes one block; a plain definition zeroes each array
    if ((reply.*family.decode)(buffer, length) != 1) {
        return false;
    }
    stPrinterState evaluated;
    evaluated.iNumberOfError = 1;
    evaluated.iNumberOfWarning = 1;
    if (family.reportsTextsAndCounts) {
        TakeTextsAndCounts(reply, state, evaluated);
    }
    evaluated.enCurrentStatus = family.status(reply.dwStatus);
    evaluated.listError = Conditions(reply.dwErrorCount, reply.vecErrorCode, state.listError);
    evaluated.listWarning = Conditions(reply.dwWarningCount, reply.vecWarningCode, state.listWarning);
    evaluated.strSupplySerialNumber = Text(reply.szSupplySerialNumber, state.strSupplySerialNumber);
    evaluated.enSpplyType = GetTonerTypeEnum(reply.dwSupplyType);
    evaluated.dwRemainingToner = reply.dwRemainingToner;
    evaluated.dwWasteToner = reply.dwWasteToner;
    evaluated.dwOPCRotation = reply.dwOPCRotation;
    evaluated.dwNumberOfPages = reply.dwNumberOfPages;
    evaluated.dwNumberOfPrint = reply.dwNumberOfPrint;
    evaluated.dwPrintDotsCount = reply.dwPrintDotsCount;
    evaluated.dwPrinterNumOfPages = reply.dwPrinterNumOfPages;
    evaluated.dwPrinterNumOfPrint = reply.dwPrinterNumOfPrint;
    state = std::move(evaluated);
    return true;
}
