// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/ReportFields.h"
#include "status/ReportJson.h"

namespace {

QByteArray Format(const PrinterReports& reports, const CommandLine& line)
{
    if (line.format == OutputFormat::Json) {
        return JsonText(ReportsJson(reports, line.directory), true);
    }
    const auto fields = ReportFieldsNamed(line.fields.isEmpty() ? ListFieldNames() : line.fields);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (line.format == OutputFormat::Terse) {
        return FormatTerse(reports, fields, now);
    }
    return FormatList(reports, fields, now, line.language, line.isColoured);
}

} // namespace

int RunList(const CommandLine& line)
{
    int exitCode = ExitDone;
    const PrinterReports reports = ReadReports(line, exitCode);
    return Print(Format(reports, line)) ? exitCode : ExitNotRead;
}
