// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "texts/UtilLanguageCtrl.h"

#include "records/PrinterRecords.h"

#include <array>

// StatusTexts.inc and ErrorTexts.inc contain the rows. The checks below do not compile when a row is missing, out of
// order or repeated.
#pragma GCC diagnostic error "-Wswitch"

namespace {

#define STATUS_TEXT(status, ...) status,
constexpr std::array c_statusRows{
#include "texts/StatusTexts.inc"
};
#undef STATUS_TEXT

#define ERROR_TEXT(condition, ...) condition,
constexpr std::array c_errorRows{
#include "texts/ErrorTexts.inc"
};
#undef ERROR_TEXT

template <typename Value, std::size_t Rows> constexpr bool AreInOrder(const std::array<Value, Rows>& values)
{
    for (std::size_t row = 0; row < Rows; ++row) {
        if (static_cast<std::size_t>(values[row]) != row) {
            return false;
        }
    }
    return true;
}

constexpr bool HasRow(enPrinterStatus status)
{
    switch (status) {
#define STATUS_TEXT(status, ...) case status:
#include "texts/StatusTexts.inc"
#undef STATUS_TEXT
        return true;
    }
    return false;
}

constexpr bool HasRow(enErrorStatus condition)
{
    switch (condition) {
#define ERROR_TEXT(condition, ...) case condition:
#include "texts/ErrorTexts.inc"
#undef ERROR_TEXT
        return true;
    }
    return false;
}

static_assert(HasRow(PS_UNKNOWN) && AreInOrder(c_statusRows));
static_assert(HasRow(ERR_UNKNOWN) && AreInOrder(c_errorRows));
static_assert(c_statusRows.size() + 1 == StatusTextRows && c_errorRows.size() == ErrorTextRows);

} // namespace

// QStringLiteral texts are static data: building the tables at start-up copies no text.

#define STATUS_TEXT(status, english, chinese) {QStringLiteral(english), QStringLiteral(chinese)},
const QString c_strStatusLanguageText[StatusTextRows][TextLanguages] = {
#include "texts/StatusTexts.inc"
};
#undef STATUS_TEXT

#define ERROR_TEXT(condition, english, chinese, ...) {QStringLiteral(english), QStringLiteral(chinese)},
const QString c_strErrorDescText[ErrorTextRows][TextLanguages] = {
#include "texts/ErrorTexts.inc"
};
#undef ERROR_TEXT

#define ERROR_TEXT(condition, english, chinese, englishRemedy, chineseRemedy)                                          \
    {QStringLiteral(englishRemedy), QStringLiteral(chineseRemedy)},
const QString c_strErrorSolutionText[ErrorTextRows][TextLanguages] = {
#include "texts/ErrorTexts.inc"
};
#undef ERROR_TEXT
