// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

// Raw codes of the replies to enumerations. Pure and total: a code without a mapping gives 0.

/// Status code of the standard family.
enPrinterStatus GetPrinterStatusEnum(unsigned long code);
/// Status code of the QZ family.
enPrinterStatus GetPrinterStatusEnum_QZ(unsigned long code);
/// Error or warning code, of both families.
enErrorStatus GetErrorStatusEnum(unsigned long code);
/// Supply type. The reply carries one, but no value has a meaning of its own: always 0.
int GetTonerTypeEnum(unsigned long value);
