// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/PrinterCheck.h"

#include "status/ConditionNames.h"
#include "status/PrintedText.h"
#include "texts/UtilLanguageCtrl.h"

#include <algorithm>
#include <array>

namespace {

constexpr double PercentPerUnit = 100;

// What a printer adds to the line.
struct Finding
{
    CheckState state = CheckState::Ok;
    QStringList problems;
    QString performance;
};

CheckState Worst(CheckState a, CheckState b)
{
    static constexpr std::array<int, 4> c_urgency{{0, 2, 3, 1}};
    const auto urgency = [](CheckState state) {
        return c_urgency.at(static_cast<std::size_t>(state));
    };
    return urgency(a) < urgency(b) ? b : a;
}

// A bar separates the text from the performance data.
QString LineText(const QString& text)
{
    return SafeText(text).replace(QLatin1Char('|'), QLatin1String("\\x7C"));
}

// A label stands in single quotes, and an equals sign ends it.
QString PerformanceLabel(const QString& queue, const char* what)
{
    QString label = LineText(queue);
    label.replace(QLatin1Char('='), QLatin1String("\\x3D")).replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + label + QLatin1Char(' ') + QLatin1String(what) + QLatin1Char('\'');
}

QString Percent(double value)
{
    return QString::number(value, 'g', 5);
}

void AddConditions(Finding& finding, CheckState state, const QList<enErrorStatus>& conditions,
                   const std::vector<unsigned long>& codes)
{
    for (int i = 0; i < conditions.size(); ++i) {
        finding.state = Worst(finding.state, state);
        finding.problems.append(c_strErrorDescText[conditions.at(i)][static_cast<int>(Language::English)] +
                                QStringLiteral(" (%1)").arg(CodeText(codes.at(static_cast<std::size_t>(i)))));
    }
}

void CheckToner(Finding& finding, const PrinterReport& report, const CheckLimits& limits)
{
    const std::optional<double> ratio = report.reply.tonerRatio();
    if (!ratio) {
        return;
    }
    const double percent = *ratio * PercentPerUnit;
    if (percent < limits.tonerWarning || percent < limits.tonerCritical) {
        finding.state =
            Worst(finding.state, percent < limits.tonerCritical ? CheckState::Critical : CheckState::Warning);
        finding.problems.append(QStringLiteral("toner %1 %").arg(Percent(percent)));
    }
    finding.performance += Filled(QStringLiteral(" %1=%2%;%3:;%4:;0;100"),
                                  {PerformanceLabel(report.info.strPrinterName, "toner"), Percent(percent),
                                   Percent(limits.tonerWarning), Percent(limits.tonerCritical)});
}

Finding CheckPrinter(const PrinterReport& report, const CheckLimits& limits)
{
    Finding finding;
    if (!report.isOnline()) {
        finding.state = limits.offline;
        finding.problems.append(QStringLiteral("off-line, report %1").arg(QLatin1String(ResultName(report.result))));
        return finding;
    }
    const stPrinterState& state = report.reply.state;
    AddConditions(finding, CheckState::Critical, state.listError, report.reply.errorCodes());
    AddConditions(finding, CheckState::Warning, state.listWarning, report.reply.warningCodes());
    CheckToner(finding, report, limits);
    if (report.reply.contains(ReplyField::PrinterPages)) {
        finding.performance += QStringLiteral(" %1=%2c;;;0")
                                   .arg(PerformanceLabel(report.info.strPrinterName, "pages"))
                                   .arg(state.dwPrinterNumOfPages);
    }
    return finding;
}

// Every part of the performance data begins with a blank.
QByteArray Line(CheckState state, const QString& text, const QString& performance)
{
    QString line = QStringLiteral("PRINTERS %1 - ").arg(QLatin1String(CheckStateName(state))) + text;
    if (!performance.isEmpty()) {
        line += QLatin1Char('|') + performance.mid(1);
    }
    return line.toUtf8() + '\n';
}

// Queues that are named twice are judged once, like those that are listed twice: they have the same status file.
QStringList WantedQueues(const PrinterReports& reports, QStringList queues)
{
    if (queues.isEmpty()) {
        for (const PrinterReport& report : reports.printers) {
            queues.append(report.info.strPrinterName);
        }
    }
    queues.removeDuplicates();
    return queues;
}

} // namespace

const char* CheckStateName(CheckState state)
{
    static constexpr std::array<const char*, 4> c_names{{"OK", "WARNING", "CRITICAL", "UNKNOWN"}};
    return c_names.at(static_cast<std::size_t>(state));
}

QByteArray UnknownCheck(const QString& reason)
{
    return Line(CheckState::Unknown, LineText(reason), {});
}

CheckResult CheckPrinters(const PrinterReports& reports, const QStringList& queues, const CheckLimits& limits)
{
    const QStringList wanted = WantedQueues(reports, queues);
    if (!reports.isListReadable || wanted.isEmpty()) {
        return {CheckState::Unknown,
                UnknownCheck(reports.isListReadable ? QStringLiteral("no printers are installed")
                                                    : QStringLiteral("the printer list cannot be read"))};
    }
    CheckState state = CheckState::Ok;
    QStringList texts;
    QString performance;
    for (const QString& queue : wanted) {
        const auto report =
            std::find_if(reports.printers.begin(), reports.printers.end(),
                         [&queue](const PrinterReport& candidate) { return candidate.info.strPrinterName == queue; });
        const Finding finding = report == reports.printers.end()
            ? Finding{CheckState::Unknown, {QStringLiteral("no such printer")}, {}}
            : CheckPrinter(*report, limits);
        state = Worst(state, finding.state);
        performance += finding.performance;
        if (!finding.problems.isEmpty()) {
            texts.append(LineText(queue) + QStringLiteral(": ") + finding.problems.join(QStringLiteral(", ")));
        }
    }
    if (texts.isEmpty()) {
        texts.append(QString::number(wanted.size()) + QLatin1String(wanted.size() == 1 ? " printer" : " printers"));
    }
    return {state, Line(state, texts.join(QStringLiteral("; ")), performance)};
}
