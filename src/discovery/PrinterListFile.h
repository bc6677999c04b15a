// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <optional>

/// Reads the printer list at `path` (docs/formats.md). Returns the printers in their order, or nothing if the file is
/// missing, is not a regular file or is too large.
std::optional<QList<stPrinterInfo>> ReadPrinterList(const QString& path);
