// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ScenarioRecorder.h"

#include "status/ConditionNames.h"

#include <algorithm>

namespace {

// The limits of scenarios.
constexpr int MaximumNameBytes = 244;
constexpr int MaximumPrinters = 1000;
constexpr std::chrono::milliseconds LongestWait = std::chrono::hours(24);

bool HasControlCharacter(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

QByteArray Quoted(const QString& text)
{
    QString plain = text;
    std::replace_if(
        plain.begin(), plain.end(), [](QChar c) { return c.category() == QChar::Other_Control; }, QLatin1Char('?'));
    return '"' + plain.toUtf8().replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

// What the status file says, for people.
QByteArray Comment(const PrinterReport& report)
{
    QByteArray line = "    # ";
    line += report.isOnline() ? StatusName(report.reply.state.enCurrentStatus) : ResultName(report.result);
    if (const auto toner = report.reply.tonerRatio()) {
        line += ", toner " + QByteArray::number(*toner * 100, 'f', 2) + " %";
    }
    const QList<enErrorStatus> conditions = report.reply.state.listError + report.reply.state.listWarning;
    for (const enErrorStatus condition : conditions) {
        line += QByteArray(", ") + ConditionName(condition);
    }
    return line + '\n';
}

bool HasFile(const PrinterReport& report)
{
    return report.result != ReportResult::Missing && report.result != ReportResult::Unreadable;
}

// The bytes of the status file as a word; empty if there is none.
QByteArray Content(const PrinterReport& report)
{
    if (!HasFile(report)) {
        return {};
    }
    return report.reply.bytes.isEmpty() ? QByteArray("\"\"") : report.reply.bytes.toHex();
}

QByteArray Seconds(std::chrono::milliseconds time)
{
    return QByteArray::number(static_cast<double>(time.count()) / 1000, 'f', 3);
}

} // namespace

void ScenarioRecorder::record(const PrinterReports& reports, std::chrono::milliseconds now)
{
    const bool isStart = m_lastStep.count() < 0;
    const QList<PrinterReport> printers = recordable(reports);
    QByteArray lines;
    for (const PrinterReport& report : printers) {
        const QString& name = report.info.strPrinterName;
        const bool isNew = !m_known.contains(name);
        if (isNew) {
            m_declarations += "\nprinter " + Quoted(name) + (isStart ? "\n" : " absent\n");
        }
        (isStart ? m_declarations : lines) += differences(report, isStart);
        if (isStart) {
            m_listed.append(name);
        }
    }
    lines += listChanges(printers);
    if (isStart) {
        m_lastStep = now;
    } else if (!lines.isEmpty()) {
        appendWait(now);
        m_steps += lines;
        ++m_stepCount;
    }
}

void ScenarioRecorder::end(std::chrono::milliseconds now)
{
    if (now > m_lastStep) {
        appendWait(now);
    }
}

QByteArray ScenarioRecorder::text() const
{
    // A scenario declares at least one printer.
    const QByteArray none = m_declarations.isEmpty() ? "\nprinter nobody absent\n" : "";
    return "# Recorded by tolmar-q727-status.\n" + none + m_declarations + m_steps;
}

QList<PrinterReport> ScenarioRecorder::recordable(const PrinterReports& reports)
{
    QList<PrinterReport> printers;
    QStringList names;
    int printersLeft = MaximumPrinters - m_known.size();
    for (const PrinterReport& report : reports.printers) {
        const QString& name = report.info.strPrinterName;
        const bool isNew = !m_known.contains(name);
        if (!name.isEmpty() && !names.contains(name) && !name.contains(QLatin1Char('/')) &&
            !HasControlCharacter(name) && name.toUtf8().size() <= MaximumNameBytes && (!isNew || printersLeft > 0)) {
            printers.append(report);
            names.append(name);
            printersLeft -= isNew ? 1 : 0;
        } else if (!m_refusedNames.contains(name)) {
            m_refusedNames.append(name);
        }
    }
    return printers;
}

// The properties of a declaration do not repeat the name.
QByteArray ScenarioRecorder::differences(const PrinterReport& report, bool isDeclaration)
{
    const QByteArray name = isDeclaration ? QByteArray() : ' ' + Quoted(report.info.strPrinterName);
    Properties& known = m_known[report.info.strPrinterName];
    QByteArray lines;
    const auto set = [&](const QByteArray& key, const QByteArray& value, const QByteArray& line) {
        if (!known.contains(key) || known.value(key) != value) {
            known.insert(key, value);
            lines += line;
        }
    };
    const auto setEntry = [&](const QByteArray& property, const QByteArray& value) {
        set(property, value, "    " + property + name + ' ' + value + '\n');
    };
    setEntry("model", Quoted(report.info.enType));
    setEntry("connection", ConnectionName(report));
    setEntry("port", Quoted(report.info.strPort));
    setEntry("uri", Quoted(report.info.strURI));
    const QByteArray content = Content(report);
    set("content", content,
        Comment(report) + (HasFile(report) ? "    reply" + name + ' ' + content : "    vanish" + name) + '\n');
    return lines;
}

// Removes and adds first, then puts the rest in order.
QByteArray ScenarioRecorder::listChanges(const QList<PrinterReport>& printers)
{
    QStringList names;
    for (const PrinterReport& report : printers) {
        names.append(report.info.strPrinterName);
    }
    QByteArray lines;
    QStringList listed;
    for (const QString& name : qAsConst(m_listed)) {
        if (names.contains(name)) {
            listed.append(name);
        } else {
            lines += "    remove " + Quoted(name) + '\n';
        }
    }
    for (const QString& name : qAsConst(names)) {
        if (!listed.contains(name)) {
            listed.append(name);
            lines += "    add " + Quoted(name) + '\n';
        }
    }
    if (listed != names) {
        lines += "    reorder";
        for (const QString& name : qAsConst(names)) {
            lines += ' ' + Quoted(name);
        }
        lines += '\n';
    }
    m_listed = names;
    return lines;
}

void ScenarioRecorder::appendWait(std::chrono::milliseconds now)
{
    std::chrono::milliseconds wait = std::max(now - m_lastStep, std::chrono::milliseconds(1));
    m_lastStep = now;
    m_steps += '\n';
    for (; wait > LongestWait; wait -= LongestWait) {
        m_steps += "wait " + Seconds(LongestWait) + '\n';
    }
    m_steps += "wait " + Seconds(wait) + '\n';
}
