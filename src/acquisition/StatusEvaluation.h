// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/PrinterFamily.h"

/// Evaluates a reply of `length` bytes from a printer of `family` and replaces `state`. Returns false and leaves
/// `state` unchanged if the decoder rejects the reply.
bool EvaluateReply(const PrinterFamily& family, unsigned char* buffer, unsigned long length, stPrinterState& state);
