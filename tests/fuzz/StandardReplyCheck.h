// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/UtilPrinterStatus.h"

/// Checks a fresh decoder after it has parsed a reply of the standard family. The reply must be accepted if and only if
/// all its fields are inside it. Each value must be at the place that the preceding lengths determine, and no text may
/// exceed its member.
void CheckStandardDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                           const UtilPrinterStatus& status);
