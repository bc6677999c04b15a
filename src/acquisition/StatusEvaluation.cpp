// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/StatusEvaluation.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace {

// A change of one value of the state. Most replies repeat the texts and conditions of the previous one. Equal values
// are not touched, because one allocation costs as much as decoding a quarter of a reply.
template <typename Value> struct Change
{
    Value* current = nullptr; // null: no change
    Value next;

    void apply()
    {
        if (current != nullptr) {
            current->swap(next);
        }
    }
};

// Converts `utf8` like fromUtf8(). Only ASCII texts can count as equal: other characters must be decoded first.
Change<QString> ChangeOf(QString& text, const char* utf8)
{
    const auto isSame = [](QChar a, char b) {
        return a.unicode() == static_cast<unsigned char>(b) && a.unicode() > 0 && a.unicode() < 0x80;
    };
    // The comparison ends at the terminating zero of a shorter text.
    if (std::equal(text.cbegin(), text.cend(), utf8, isSame) && utf8[text.size()] == 0) {
        return {};
    }
    return {&text, QString::fromUtf8(utf8)};
}

// In both families a count of 0 means that nothing is wrong, even if codes were sent: the QZ family sends the code 0000
// for "no error".
Change<QList<enErrorStatus>> ChangeOf(QList<enErrorStatus>& conditions, unsigned long count,
                                      const std::vector<unsigned long>& codes)
{
    const auto end = count == 0 ? codes.begin() : codes.end();
    if (std::equal(conditions.cbegin(), conditions.cend(), codes.begin(), end,
                   [](enErrorStatus condition, unsigned long code) { return condition == GetErrorStatusEnum(code); })) {
        return {};
    }
    QList<enErrorStatus> next;
    next.reserve(static_cast<int>(end - codes.begin()));
    std::transform(codes.begin(), end, std::back_inserter(next), GetErrorStatusEnum);
    return {&conditions, std::move(next)};
}

void TakeNumbers(const UtilPrinterStatus& reply, const PrinterFamily& family, stPrinterState& state)
{
    state.enCurrentStatus = family.status(reply.dwStatus);
    state.iNumberOfError = family.reportsCounts ? static_cast<int>(reply.dwErrorCount) : 1;
    state.iNumberOfWarning = family.reportsCounts ? static_cast<int>(reply.dwWarningCount) : 1;
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

bool EvaluateReply(const PrinterFamily& family, unsigned char* buffer, unsigned long length, stPrinterState& state)
{
    auto reply = UtilPrinterStatus(); // zeroes one block; a plain definition zeroes each array
    if ((reply.*family.decode)(buffer, length) != 1) {
        return false;
    }
    // Everything that allocates comes before the first assignment: the state keeps its values if memory runs out.
    std::array<Change<QString>, 5> texts{
        {ChangeOf(state.strPrinterSerialNumber, reply.szSerialNumber), ChangeOf(state.strFWVersion, reply.szFWVersion),
         ChangeOf(state.strVenderName, reply.szVenderName), ChangeOf(state.strProductName, reply.szProductName),
         ChangeOf(state.strSupplySerialNumber, reply.szSupplySerialNumber)}};
    auto errors = ChangeOf(state.listError, reply.dwErrorCount, reply.vecErrorCode);
    auto warnings = ChangeOf(state.listWarning, reply.dwWarningCount, reply.vecWarningCode);
    std::for_each(texts.begin(), texts.end(), [](Change<QString>& text) { text.apply(); });
    errors.apply();
    warnings.apply();
    TakeNumbers(reply, family, state);
    return true;
}
