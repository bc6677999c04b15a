// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ConditionNames.h"

#include <array>

// The rows are in the order of the enumerators; UtilLanguageCtrl.cpp does not compile otherwise.

const char* StatusName(int status)
{
#define STATUS_TEXT(status, ...) #status,
    static constexpr std::array c_names{
#include "texts/StatusTexts.inc"
    };
#undef STATUS_TEXT
    return c_names.at(static_cast<std::size_t>(status));
}

const char* ConditionName(enErrorStatus condition)
{
#define ERROR_TEXT(condition, ...) #condition,
    static constexpr std::array c_names{
#include "texts/ErrorTexts.inc"
    };
#undef ERROR_TEXT
    return c_names.at(static_cast<std::size_t>(condition));
}

QString CodeText(unsigned long code)
{
    return QString::asprintf("0x%04lX", code);
}
