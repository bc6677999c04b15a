// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

// The dumps in the log: one line for each field. Nothing is formatted while the log is off.

void DumpPrinters(const QList<stPrinterInfo>& printers);
/// Dumps the state of the printer at `index` of the list.
void DumpPrinter(int index, const stPrinterManager& printer);
