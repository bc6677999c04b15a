// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/StatusCodeMapping.h"

#include <array>

namespace {

// The index is the raw status code, 0 to 19.
constexpr std::array<enPrinterStatus, 20> c_standardStatus{{
    PS_READY,    PS_INITIALIZE, PS_BUSY,    PS_CANCELING_JOB, // 0 to 3
    PS_UNKNOWN,  PS_UNKNOWN,    PS_UNKNOWN, PS_UNKNOWN, // 4 to 7
    PS_UNKNOWN,  PS_UNKNOWN,    PS_UNKNOWN, PS_UNKNOWN, // 8 to 11
    PS_UNKNOWN,  PS_UNKNOWN,    PS_UNKNOWN, PS_UNKNOWN, // 12 to 15
    PS_PRINTING, PS_SCANNING,   PS_COPYING, PS_REPORTING // 16 to 19
}};

// The index is the raw status code minus 2. Codes mostly equal the enumeration, but 7 has no meaning; 18 is reporting.
constexpr unsigned long FirstQZStatusCode = 2;
constexpr std::array<enPrinterStatus, 17> c_qzStatus{{
    PS_OFFLINE, PS_READY, PS_INITIALIZE, PS_BUSY, // 2 to 5
    PS_CANCELING_JOB, PS_UNKNOWN, PS_PRINTING, PS_SCANNING, // 6 to 9
    PS_COPYING, PS_UNKNOWN, PS_UNKNOWN, PS_UNKNOWN, // 10 to 13
    PS_UNKNOWN, PS_UNKNOWN, PS_UNKNOWN, PS_UNKNOWN, // 14 to 17
    PS_REPORTING // 18
}};

} // namespace

enPrinterStatus GetPrinterStatusEnum(unsigned long code)
{
    return code < c_standardStatus.size() ? c_standardStatus[code] : PS_UNKNOWN;
}

enPrinterStatus GetPrinterStatusEnum_QZ(unsigned long code)
{
    // Unsigned: the codes 0 and 1 wrap round to an index beyond the table.
    const unsigned long index = code - FirstQZStatusCode;
    return index < c_qzStatus.size() ? c_qzStatus[index] : PS_UNKNOWN;
}

int GetTonerTypeEnum(unsigned long /*value*/)
{
    return 0;
}
