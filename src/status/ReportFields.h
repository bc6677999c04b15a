// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrintedText.h"
#include "status/PrinterReport.h"

#include <QStringList>

/// What table and terse output can show of a printer, by the name that --fields takes.
struct ReportField
{
    const char* name;
    const char* english; ///< title
    const char* chinese; ///< title
    QString (*plain)(const PrinterReport& report, const QDateTime& now); ///< for programs; empty if unknown
    /// For people; empty if unknown. Null: the same as for programs.
    QString (*spoken)(const PrinterReport& report, const QDateTime& now, Language language);
};

/// All fields, in the order in which `show` prints them.
const QVector<ReportField>& ReportFields();
QStringList ReportFieldNames();
/// The fields with these names, which must be valid.
QVector<const ReportField*> ReportFieldsNamed(const QStringList& names);
/// The names of the columns of the table of `list`.
QStringList ListFieldNames();

/// The field as people read it; empty if unknown.
QString SpokenText(const ReportField& field, const PrinterReport& report, const QDateTime& now, Language language);

/// How urgent a printer's state is.
Colour ColourOf(const PrinterReport& report);
/// Why the printer is off-line; empty if it is not.
QString OfflineReason(const PrinterReport& report, Language language);

/// One line for each printer: the fields with a colon between them. Colons and backslashes inside a field get a
/// backslash, control characters become escape sequences.
QByteArray FormatTerse(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now);
QByteArray FormatList(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now,
                      Language language, bool isColoured);
