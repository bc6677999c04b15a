// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <QTableWidget>

/// The table of the managed printers, with a row for each: name, connection, remaining toner and status.
class PrinterTable : public QTableWidget
{
public:
    using QTableWidget::QTableWidget;

    /// Sets up the columns and scales the table to the desktop. To be called once, when the form has placed it.
    void setUp();
    void setHeadersVisible(bool visible);
    /// Replaces all rows. A row starts with `initialStatus` and without toner, whatever is known of its printer; the
    /// next change that the printer's worker reports fills it.
    void showPrinters(const QList<stPrinterInfo>& printers, const QString& initialStatus);
    /// Change a row, which must exist.
    void showToner(int row, const stPrinterManager& printer);
    void showStatus(int row, const QString& status);
};
