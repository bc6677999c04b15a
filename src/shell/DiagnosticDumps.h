// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

// What the window writes to the log, a line for each field. Nothing is formatted while the log is off.

void DumpPrinters(const QList<stPrinterInfo>& printers);
/// The state of the printer that stands at `index` of the list.
void DumpPrinter(int index, const stPrinterManager& printer);
