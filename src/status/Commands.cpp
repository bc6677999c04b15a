// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"

#include "status/ReportJson.h"
#include "status/StatusFolder.h"

#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>

namespace {

constexpr int Any = std::numeric_limits<int>::max();

} // namespace

const QVector<Command>& Commands()
{
    static const QVector<Command> commands{
        {"list",
         "",
         0,
         0,
         "table,terse,json",
         true,
         "(default) the installed printers, a line for each",
         "（默认）已安装的打印机，每行一台",
         RunList,
         {}},
        {"show",
         "[QUEUE...]",
         0,
         Any,
         "table,terse,json",
         true,
         "everything about these printers, or about all",
         "这些打印机或全部打印机的详细信息",
         RunShow,
         {}},
        {"decode",
         "FILE...|-",
         1,
         Any,
         "table,json",
         false,
         "a status file, byte by byte (--family standard|qz)",
         "逐字节解释状态文件（--family standard|qz）",
         RunDecode,
         {{"family", "FAMILY", "standard,qz"}}},
        {"watch",
         "",
         0,
         0,
         "table,json",
         false,
         "a line for each change, until Ctrl-C",
         "每次变化输出一行，直到按 Ctrl-C",
         RunWatch,
         {}},
        {"record",
         "FILE",
         1,
         1,
         "table",
         false,
         "what happens until Ctrl-C, for printer-simulator",
         "记录到按 Ctrl-C 为止，供 printer-simulator 回放",
         RunRecord,
         {}},
        {"metrics",
         "",
         0,
         0,
         "table",
         false,
         "metrics for Prometheus, also to --output FILE",
         "Prometheus 指标，可用 --output 写入文件",
         RunMetrics,
         {{"output", "FILE", nullptr}}},
        {"check",
         "[QUEUE...]",
         0,
         Any,
         "table",
         false,
         "a line and exit code for Icinga and Nagios",
         "供 Icinga 和 Nagios 使用的一行输出和退出码",
         RunCheck,
         {{"toner-warning", "PERCENT", nullptr},
          {"toner-critical", "PERCENT", nullptr},
          {"offline", "STATE", "ok,warning,critical,unknown"}}},
    };
    return commands;
}

const Command* FindCommand(const QString& name)
{
    const QVector<Command>::const_iterator command =
        std::find_if(Commands().begin(), Commands().end(),
                     [&name](const Command& candidate) { return name == QLatin1String(candidate.name); });
    return command == Commands().end() ? nullptr : &*command;
}

PrinterReports ReadReports(const CommandLine& line, int& exitCode)
{
    PrinterReports reports = StatusFolder(line.directory).read();
    if (!reports.isListReadable) {
        ComplainAboutList(line);
        exitCode = ExitNotRead;
    }
    for (PrinterReport& report : reports.printers) {
        // A printer that has not reported yet is off-line, which is no failure of this program.
        if (report.result == ReportResult::Unreadable) {
            Complain(Pick(line.language, "cannot read the status file of %1", "无法读取 %1 的状态文件")
                         .arg(report.info.strPrinterName));
            exitCode = ExitNotRead;
        }
        if (line.hidesSerialNumbers) {
            HideSerialNumbers(report);
        }
    }
    return reports;
}

QByteArray FormatReports(const PrinterReports& reports, const CommandLine& line, const QStringList& defaultFields,
                         TableFormat formatTable)
{
    if (line.format == OutputFormat::Json) {
        return JsonText(ReportsJson(reports, line.directory), true);
    }
    const auto fields = ReportFieldsNamed(line.fields.isEmpty() ? defaultFields : line.fields);
    const QDateTime now = QDateTime::currentDateTimeUtc();
    return line.format == OutputFormat::Terse ? FormatTerse(reports, fields, now)
                                              : formatTable(reports, fields, now, line);
}

bool Print(const QByteArray& text)
{
    const auto size = static_cast<std::size_t>(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0) {
        return true;
    }
    Complain(QStringLiteral("cannot write: %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
    return false;
}

// commit() does not notice a failed write of what is still buffered.
bool SaveFile(const QString& path, const QByteArray& text, QFileDevice::Permissions permissions)
{
    QSaveFile file(path);
    const bool isSaved = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() &&
        (!permissions || file.setPermissions(permissions)) && file.commit();
    if (!isSaved) {
        Complain(Filled(QStringLiteral("cannot write %1: %2"), {path, file.errorString()}));
    }
    return isSaved;
}

void Complain(const QString& message)
{
    std::fprintf(stderr, "tolmar-q727-status: %s\n", SafeText(message).toUtf8().constData());
}

void ComplainAboutList(const CommandLine& line)
{
    Complain(
        Pick(line.language, "cannot read the printer list in %1", "无法读取 %1 中的打印机列表").arg(line.directory));
}
