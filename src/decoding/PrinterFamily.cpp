// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/PrinterFamily.h"

#include "records/ModelCatalogue.h"

#include <algorithm>
#include <array>

namespace {

bool AnyName(const QString& /*name*/)
{
    return true;
}

constexpr std::array<PrinterFamily, 2> c_families{{
    {IsQZPrinterName, &UtilPrinterStatus::parseRecvBuf_QZ, GetPrinterStatusEnum_QZ, 1, false},
    // Must be last: it has every queue that no other family has.
    {AnyName, &UtilPrinterStatus::parseRecvBuf, GetPrinterStatusEnum, 100, true},
}};

} // namespace

const PrinterFamily& StandardFamily()
{
    return c_families.back();
}

const PrinterFamily& QZFamily()
{
    return c_families.front();
}

const PrinterFamily& FamilyOf(const QString& queueName)
{
    return *std::find_if(c_families.begin(), c_families.end(),
                         [&queueName](const PrinterFamily& family) { return family.hasQueue(queueName); });
}
