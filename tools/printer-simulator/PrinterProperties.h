// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "SimulatedPrinter.h"

#include <QString>
#include <QStringList>

// What a scenario can say about one printer, in its declaration or in a step: its entry in the printer list, what it
// reports, and what happens to its status file.

bool IsPrinterProperty(const QString& name);

// Checks and sets a property. The result is the reason of a refusal, empty when there is none. Unless the property
// concerns the printer list alone, the status file becomes the given revision.
QString SetPrinterProperty(SimulatedPrinter& printer, const QString& name, const QStringList& values, int revision);

// The raw code of "ready", with which a declared printer begins.
quint8 ReadyStatus(PrinterFamily family);
