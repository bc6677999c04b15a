// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilPrinterStatus.h"

/// What must hold after a fresh decoder has parsed a reply of the standard family: accepted if and only if all its
/// fields lie inside, each value where the lengths before it put it, and no text beyond its member.
void CheckStandardDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                           const UtilPrinterStatus& status);
