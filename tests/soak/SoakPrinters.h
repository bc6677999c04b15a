// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"
#include "SimulatedPrinter.h"

#include <QStringList>
#include <QVector>

/// Printers of both families, on USB and on the network; some have names that a shell or printf would take apart.
/// A shell that took one apart would leave a file called "injected" in the working directory.
QVector<SimulatedPrinter> MakePrinters(int count);

/// Any status that the family can report, errors and warnings now and then, any toner level.
void ReportAtRandom(SimulatedPrinter& printer, Chance& chance);
/// The status that makes the assistant cancel a job; printers of the QZ family cannot report it.
void ReportCancelling(SimulatedPrinter& printer);
/// Ready, without errors and warnings, and a toner level that tells the printers apart.
void ReportReady(SimulatedPrinter& printer, int index);

/// The four texts of the assistant's row for a printer that ReportReady() was called for.
QStringList ReadyRow(const SimulatedPrinter& printer);
