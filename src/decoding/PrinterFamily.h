// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/UtilPrinterStatus.h"
#include "records/PrinterRecords.h"

/// The properties of one printer family: a row of the table in PrinterFamily.cpp.
struct PrinterFamily
{
    /// Returns whether the queue called `name` belongs to the family. The first family that returns true has the queue.
    bool (*hasQueue)(const QString& name);
    unsigned int (UtilPrinterStatus::*decode)(unsigned char* buffer, unsigned long length);
    enPrinterStatus (*status)(unsigned long code);
    /// The number of units of `dwRemainingToner` in one percent.
    double tonerUnitsPerPercent;
    /// Whether replies contain the numbers of errors and warnings. If not, both numbers are always 1: use the lengths
    /// of the lists.
    bool reportsCounts;
};

const PrinterFamily& StandardFamily();
const PrinterFamily& QZFamily();
/// Returns the family of the queue called `queueName`.
const PrinterFamily& FamilyOf(const QString& queueName);
