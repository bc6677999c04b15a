// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusCodeMapping.h"
#include "UtilPrinterStatus.h"

/// What one family of printers does differently from the others: a row of the table in PrinterFamily.cpp.
struct PrinterFamily
{
    /// Whether the print queue called `name` belongs to the family; the first family that says so has it.
    bool (*hasQueue)(const QString& name);
    unsigned int (UtilPrinterStatus::*decode)(unsigned char* buffer, unsigned long length);
    enPrinterStatus (*status)(unsigned long code);
    /// How many units of `dwRemainingToner` make one per cent.
    double tonerUnitsPerPercent;
    /// Whether replies carry the texts about the printer and the numbers of errors and warnings. Without, the texts are
    /// empty and both numbers always 1: whoever needs the number of conditions asks the lists.
    bool reportsTextsAndCounts;
};

const PrinterFamily& StandardFamily();
const PrinterFamily& QZFamily();
/// The family of the print queue called `queueName`.
const PrinterFamily& FamilyOf(const QString& queueName);
