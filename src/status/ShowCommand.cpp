// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/ConditionNames.h"
#include "status/ReportFields.h"
#include "texts/UtilLanguageCtrl.h"

#include <algorithm>

namespace {

constexpr int ValueColumns = 200;

// The printers with these queue names, in the order of the list; all if there are no names.
PrinterReports Chosen(const PrinterReports& reports, const CommandLine& line, int& exitCode)
{
    PrinterReports chosen = reports;
    if (line.arguments.isEmpty()) {
        return chosen;
    }
    chosen.printers.clear();
    std::copy_if(reports.printers.begin(), reports.printers.end(), std::back_inserter(chosen.printers),
                 [&line](const PrinterReport& report) { return line.arguments.contains(report.info.strPrinterName); });
    for (const QString& name : line.arguments) {
        const bool isFound =
            std::any_of(chosen.printers.begin(), chosen.printers.end(),
                        [&name](const PrinterReport& report) { return report.info.strPrinterName == name; });
        if (!isFound) {
            Complain(Pick(line.language, "there is no printer called %1", "没有名为 %1 的打印机").arg(name));
            exitCode = ExitNotRead;
        }
    }
    return chosen;
}

void AppendConditions(QVector<TableRow>& rows, const QString& title, const QList<enErrorStatus>& conditions,
                      const std::vector<unsigned long>& codes, Language language)
{
    const auto column = static_cast<int>(language);
    for (int i = 0; i < conditions.size(); ++i) {
        const enErrorStatus condition = conditions.at(i);
        const QString text = CodeText(codes.at(static_cast<std::size_t>(i))) + QLatin1Char(' ') +
            QString::fromLatin1(ConditionName(condition)) + QLatin1Char(' ') + c_strErrorDescText[condition][column];
        rows.append({{title}, {text}});
        const QString& remedy = c_strErrorSolutionText[condition][column];
        if (!remedy.isEmpty()) {
            rows.append({{Pick(language, "  Remedy", "  处理方法")}, {remedy}});
        }
    }
}

QString PrinterTable(const PrinterReport& report, const QVector<const ReportField*>& fields, const QDateTime& now,
                     const CommandLine& line)
{
    const DecodedReply& reply = report.reply;
    QVector<TableRow> rows;
    for (const ReportField* field : fields) {
        const QString title = Pick(line.language, field->english, field->chinese);
        const QString text = SpokenText(*field, report, now, line.language);
        const QLatin1String name(field->name);
        if (name == QLatin1String("errors") && !reply.state.listError.isEmpty()) {
            AppendConditions(rows, title, reply.state.listError, reply.errorCodes(), line.language);
        } else if (name == QLatin1String("warnings") && !reply.state.listWarning.isEmpty()) {
            AppendConditions(rows, title, reply.state.listWarning, reply.warningCodes(), line.language);
        } else {
            rows.append({{title}, {text.isEmpty() ? QStringLiteral("-") : text}});
        }
    }
    return FormatTable(rows, line.isColoured, ValueColumns);
}

QByteArray PrinterTables(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now,
                         const CommandLine& line)
{
    QString text;
    for (const PrinterReport& report : reports.printers) {
        text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + PrinterTable(report, fields, now, line);
    }
    return text.toUtf8();
}

} // namespace

int RunShow(const CommandLine& line)
{
    int exitCode = ExitDone;
    const PrinterReports reports = Chosen(ReadReports(line, exitCode), line, exitCode);
    return Print(FormatReports(reports, line, ReportFieldNames(), PrinterTables)) ? exitCode : ExitNotRead;
}
