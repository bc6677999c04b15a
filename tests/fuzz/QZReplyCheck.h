// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilPrinterStatus.h"

/// What must hold after a fresh decoder has parsed a reply of the QZ family: the result, status, codes and toner that
/// its items call for, read here in the plainest way, and nothing else in the decoder.
void CheckQZDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                     const UtilPrinterStatus& status);
