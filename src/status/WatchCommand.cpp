// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/LateWakeUps.h"
#include "status/Commands.h"
#include "status/ReportChanges.h"
#include "status/ReportFields.h"
#include "status/ReportJson.h"
#include "status/StatusFolder.h"

#include <QJsonArray>
#include <QThread>

#include <csignal>
#include <cstdlib>

namespace {

// The assistant's intervals.
constexpr int PollingIntervalMs = 1000;
constexpr int PollsPerList = 3;
constexpr int NameColumns = 20;

// A write may block for ever, so the signal must end the program at any time. Nothing has to be saved.
void EndAtSignals()
{
    const auto end = [](int /*signal*/) {
        std::_Exit(ExitDone);
    };
    std::signal(SIGINT, end);
    std::signal(SIGTERM, end);
}

QByteArray ChangeJson(const ReportChange& change, const QDateTime& now)
{
    return JsonText(JsonObject({{"format_version", FormatVersion()},
                                {"time", Rfc3339(now)},
                                {"event", QLatin1String(KindName(change.kind))},
                                {"printer", PrinterJson(change.report)}}),
                    false);
}

QByteArray ChangeLine(const ReportChange& change, const QDateTime& now, const CommandLine& line)
{
    TableRow row{{now.toLocalTime().toString(QStringLiteral("HH:mm:ss"))},
                 {change.report.info.strPrinterName.leftJustified(NameColumns)}};
    if (change.kind == ReportChange::Kind::Removed) {
        row.append({Pick(line.language, "removed", "已移除"), Colour::Dim});
    } else {
        const auto fields =
            ReportFieldsNamed({QStringLiteral("toner"), QStringLiteral("status"), QStringLiteral("condition")});
        for (const ReportField* field : fields) {
            row.append({SpokenText(*field, change.report, now, line.language), ColourOf(change.report)});
        }
        row[2].text = row.at(2).text.rightJustified(7);
        row[2].colour = Colour::None;
    }
    return FormatTable({row}, line.isColoured).toUtf8();
}

} // namespace

int RunWatch(const CommandLine& line)
{
    EndAtSignals();
    AllowLateWakeUps();
    StatusFolder folder(line.directory);
    PrinterReports before;
    bool isListReadable = true;
    for (int poll = 0;; poll = (poll + 1) % PollsPerList) {
        const PrinterReports& after = folder.read(poll == 0);
        if (isListReadable && !after.isListReadable) {
            ComplainAboutList(line);
        }
        isListReadable = after.isListReadable;
        const QDateTime now = QDateTime::currentDateTimeUtc();
        QByteArray text;
        for (ReportChange& change : ChangesBetween(before, after)) {
            if (line.hidesSerialNumbers) {
                HideSerialNumbers(change.report);
            }
            text += line.format == OutputFormat::Json ? ChangeJson(change, now) : ChangeLine(change, now, line);
        }
        if (!text.isEmpty() && !Print(text)) {
            return ExitNotRead;
        }
        before = after;
        QThread::msleep(PollingIntervalMs);
    }
}
