// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

/// Every field on its own line, so that a failed comparison is readable.
QString Words(const stPrinterInfo& info);
QString Words(const stPrinterState& state);
QString Words(const stPrinterManager& printer);

/// A state in which every field differs from its default and all counters from each other; they are above 2^32, and the
/// reported numbers are not those of the lists. The status is ready, so that no file is read twice.
stPrinterState FilledState();
stPrinterManager FilledPrinter(const QString& name);
