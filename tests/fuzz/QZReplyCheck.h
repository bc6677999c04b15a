// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/UtilPrinterStatus.h"

/// Checks a fresh decoder after it has parsed a reply of the QZ family. The result, status, codes and toner must match
/// the items, which this check reads in the simplest way. Nothing else in the decoder may be set.
void CheckQZDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                     const UtilPrinterStatus& status);
