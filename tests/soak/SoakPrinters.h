// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"
#include "SimulatedPrinter.h"

#include <QStringList>
#include <QVector>

/// Printers of both families, on USB and on the network. Some names contain shell or printf syntax. A shell that
/// interpreted one would create a file called "injected" in the working directory.
QVector<SimulatedPrinter> MakePrinters(int count);

/// Sets a random status and toner level, sometimes with errors and warnings, within what the family can report.
void ReportAtRandom(SimulatedPrinter& printer, Chance& chance);
/// Sets the status that makes the assistant cancel a job. The QZ family cannot report it.
void ReportCancelling(SimulatedPrinter& printer);
/// Sets ready, without errors and warnings, and a toner level that identifies the printer.
void ReportReady(SimulatedPrinter& printer, int index);

/// The four texts of the assistant's row for a printer after ReportReady().
QStringList ReadyRow(const SimulatedPrinter& printer);
