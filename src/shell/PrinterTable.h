// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <QTableWidget>

/// The table of printers. Each row shows name, connection, remaining toner and status.
class PrinterTable : public QTableWidget
{
public:
    using QTableWidget::QTableWidget;

    /// Sets up the columns and scales the table to the desktop. Call this once, after the form has placed the table.
    void setUp();
    void setHeadersVisible(bool visible);
    /// Replaces all rows. Each row starts with `initialStatus` and 0.00% toner, whatever is known of its printer. The
    /// next change that the printer's worker reports fills it.
    void showPrinters(const QList<stPrinterInfo>& printers, const QString& initialStatus);
    /// Change one cell of `row`, which must exist.
    void showToner(int row, const stPrinterManager& printer);
    void showStatus(int row, const QString& status);
};
