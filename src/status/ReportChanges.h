// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

/// One printer that has changed.
struct ReportChange
{
    enum class Kind
    {
        Added,
        Removed,
        Changed
    };
    Kind kind;
    PrinterReport report; ///< the new one; for Removed the last one
};

/// "added", "removed" or "changed".
const char* KindName(ReportChange::Kind kind);

/// The changes from one reading to the next, in the order of the list, removed printers first. A printer has changed if
/// the assistant would show it differently, or if its entry in the list or the reason for being off-line differs.
QVector<ReportChange> ChangesBetween(const PrinterReports& before, const PrinterReports& after);
