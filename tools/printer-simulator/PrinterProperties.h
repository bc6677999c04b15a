// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "SimulatedPrinter.h"

#include <QString>
#include <QStringList>

// The properties that a scenario can set for one printer, in its declaration or in a step: its entry in the printer
// list, its report, and the state of its status file.

bool IsPrinterProperty(const QString& name);

// Checks and sets a property. Returns an error message, or an empty text on success. The status file gets the given
// revision unless the property only affects the printer list.
QString SetPrinterProperty(SimulatedPrinter& printer, const QString& name, const QStringList& values, int revision);

// The raw code of "ready", the initial status of a declared printer.
quint8 ReadyStatus(PrinterFamily family);
