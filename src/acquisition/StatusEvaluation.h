// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterFamily.h"

/// Turns a reply of `length` bytes from a printer of `family` into a state. Returns false when the decoder rejects the
/// reply, which leaves `state` as it was.
bool EvaluateReply(const PrinterFamily& family, unsigned char* buffer, unsigned long length, stPrinterState& state);
