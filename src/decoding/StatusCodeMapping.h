// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

// These pure functions map the raw codes of replies to enumerations. A code without a mapping gives 0.

/// Maps a status code of the standard family.
enPrinterStatus GetPrinterStatusEnum(unsigned long code);
/// Maps a status code of the QZ family.
enPrinterStatus GetPrinterStatusEnum_QZ(unsigned long code);
/// Maps an error or warning code of either family.
enErrorStatus GetErrorStatusEnum(unsigned long code);
/// Returns 0 for every supply type: no value has a meaning of its own.
int GetTonerTypeEnum(unsigned long value);
