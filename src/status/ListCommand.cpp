// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/ReportFields.h"

namespace {

QByteArray ListTable(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now,
                     const CommandLine& line)
{
    return FormatList(reports, fields, now, line.language, line.isColoured);
}

} // namespace

int RunList(const CommandLine& line)
{
    int exitCode = ExitDone;
    const PrinterReports reports = ReadReports(line, exitCode);
    return Print(FormatReports(reports, line, ListFieldNames(), ListTable)) ? exitCode : ExitNotRead;
}
