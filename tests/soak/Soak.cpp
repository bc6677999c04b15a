// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Soak.h"

#include "Accessibility.h"
#include "SoakPrinters.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int PrinterCount = 100;
constexpr int TickMs = 50;
constexpr int FaultsPerTick = 2;
constexpr int TicksPerAlteration = 150;
constexpr int TicksPerCancelChange = 80;
constexpr double MsPerSecond = 1000;
constexpr double NanosecondsPerMs = 1e6;
// Covers the list's poll interval of three seconds, the status files' of one second, a hanging cancel and a slow
// machine.
constexpr int RecoveryMs = 15000;
constexpr qint64 ExitMs = 3000;
constexpr char CancelBehaviour[] = "/tmp/cancel-behaviour";

bool Fail(const QString& reason)
{
    std::fprintf(stderr, "soak: %s\n", qPrintable(reason));
    return false;
}

void Say(const QString& text)
{
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

// Started late, because otherwise Qt's accessibility objects would count as the program's growth.
bool StartScreenReaderBus(QProcess& launcher)
{
    launcher.start(
        QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
        {QStringLiteral("--launch-immediately"), QStringLiteral("--a11y=1"), QStringLiteral("--screen-reader=1")});
    return launcher.waitForStarted() && QTest::qWaitFor([]() {
               return QDBusConnection::sessionBus()
                   .interface()
                   ->isServiceRegistered(QStringLiteral("org.a11y.Bus"))
                   .value();
           });
}

QStringList ShownTexts()
{
    QStringList texts;
    const QList<AccessibleObject> objects = AccessibleObjects(AssistantProcess::fileName());
    for (const AccessibleObject& object : objects) {
        texts.append(object.name);
    }
    return texts;
}

QStringList MissingRows(const QVector<SimulatedPrinter>& printers)
{
    const QStringList texts = ShownTexts();
    QStringList missing;
    for (const SimulatedPrinter& printer : printers) {
        const QStringList row = ReadyRow(printer);
        if (std::search(texts.begin(), texts.end(), row.begin(), row.end()) == texts.end()) {
            missing.append(row.join(QLatin1Char('|')));
        }
    }
    return missing;
}

void ReportCounts(const QMap<QString, int>& counts)
{
    QStringList parts;
    for (auto it = counts.begin(); it != counts.end(); ++it) {
        parts.append(QStringLiteral("%1 %2").arg(it.key()).arg(it.value()));
    }
    Say(QStringLiteral("Faults: ") + parts.join(QStringLiteral(", ")));
}

} // namespace

SoakPlan::SoakPlan(double seconds)
    : duration(seconds)
    , warmUp(std::clamp(seconds / 10, 10.0, 180.0))
    , stormInterval(std::max(seconds / 10, 10.0))
    , settling(std::clamp(stormInterval / 6, 2.0, 30.0))
{
}

Soak::Soak(const SoakPlan& plan, quint64 seed, const QString& csvPath)
    : m_plan(plan)
    , m_printers(MakePrinters(PrinterCount))
    , m_statusFaults(m_printers, Chance(seed))
    , m_listFaults(m_printers, Chance(seed + 1))
    , m_chance(seed + 2)
    , m_cancel(QStringLiteral("cancel"), QStringLiteral(". ") + QString::fromLatin1(CancelBehaviour))
    , m_csv(csvPath)
    , m_nextStorm(plan.warmUp + plan.stormInterval)
    , m_settledFrom(plan.warmUp)
{
}

bool Soak::run()
{
    return start() && rage() && showsAllPrinters() && cancelsJobs() && exits() && leftNothingBehind();
}

bool Soak::start()
{
    PrinterFolder::Create();
    QDir::setCurrent(QStringLiteral("/tmp")); // a command injected by a printer's name would leave its trace here
    changeCancelCommand("exit 0");
    m_statusFaults.clear();
    if (!m_csv.open(QIODevice::WriteOnly) || m_csv.write(SoakCsvHeader()) < 0) {
        return Fail(QStringLiteral("cannot write %1").arg(m_csv.fileName()));
    }
    if (!m_assistant.startIntoTray()) {
        return Fail(QStringLiteral("the assistant did not start"));
    }
    m_listFaults.clear();
    m_timer.start();
    return true;
}

bool Soak::rage()
{
    double nextSample = 1;
    for (int tick = 0; seconds() < m_plan.duration || m_listFaults.isStormy(); ++tick) {
        QTest::qWait(TickMs);
        disturb(tick);
        if (seconds() >= nextSample) {
            nextSample = std::floor(seconds()) + 1;
            if (!takeSample()) {
                return false;
            }
        }
    }
    ReportCounts(m_statusFaults.counts());
    ReportCounts(m_listFaults.counts());
    return true;
}

void Soak::disturb(int tick)
{
    static const QVector<QByteArray> s_commandEnds{"exit 0", "exit 1", "exit 127", "sleep 1", "sleep 3"};
    for (int i = 0; i < FaultsPerTick; ++i) {
        m_statusFaults.disturb();
    }
    if (tick % TicksPerCancelChange == 0) {
        changeCancelCommand(m_chance.of(s_commandEnds));
    }
    m_listFaults.tick(m_timer.elapsed());
    if (m_listFaults.isStormy()) {
        m_settledFrom = seconds() + m_plan.settling;
        m_nextStorm = seconds() + m_plan.stormInterval;
    } else if (seconds() >= m_nextStorm && m_nextStorm + m_plan.stormInterval < m_plan.duration) {
        m_listFaults.beginStorm();
    } else if (tick % TicksPerAlteration == 0) {
        m_listFaults.alter();
    }
}

void Soak::changeCancelCommand(const QByteArray& body)
{
    PrinterFolder::WriteFile(QString::fromLatin1(CancelBehaviour), body + '\n');
}

bool Soak::takeSample()
{
    SoakSample sample;
    QElapsedTimer answer;
    answer.start();
    // While a tray message is shown, the tool tip is the message's.
    if (!m_assistant.isRunning() || m_assistant.toolTip().isEmpty()) {
        return Fail(QString::asprintf("the assistant did not answer after %.0f s", seconds()));
    }
    sample.answerMs = static_cast<double>(answer.nsecsElapsed()) / NanosecondsPerMs;
    sample.seconds = seconds();
    if (!ReadProcess(m_assistant.processId(), sample.process)) {
        return Fail(QStringLiteral("cannot inspect the assistant's process"));
    }
    sample.isSettled = sample.seconds >= m_settledFrom;
    sample.expectedWorkers = m_listFaults.expectedWorkers();
    if (m_previous.seconds > 0) {
        sample.cpuPercent =
            100 * (sample.process.cpuSeconds - m_previous.process.cpuSeconds) / (sample.seconds - m_previous.seconds);
    }
    m_previous = sample;
    const bool isWritten = m_csv.write(SoakCsvLine(sample)) > 0 && m_csv.flush();
    return isWritten || Fail(QStringLiteral("cannot write %1").arg(m_csv.fileName()));
}

bool Soak::showsAllPrinters()
{
    QElapsedTimer timer;
    timer.start();
    changeCancelCommand("exit 0");
    m_statusFaults.clear();
    m_listFaults.clear();
    QProcess screenReaderBus;
    if (!StartScreenReaderBus(screenReaderBus)) {
        return Fail(QStringLiteral("there is no accessibility bus"));
    }
    QStringList missing;
    const bool isShown = QTest::qWaitFor(
        [this, &missing]() {
            missing = MissingRows(m_printers);
            return missing.isEmpty();
        },
        RecoveryMs);
    screenReaderBus.kill();
    screenReaderBus.waitForFinished();
    if (!isShown) {
        return Fail(QStringLiteral("%1 rows are wrong, for example %2").arg(missing.size()).arg(missing.first()));
    }
    Say(QString::asprintf("All %d rows were right %.1f s after the last fault.", static_cast<int>(m_printers.size()),
                          static_cast<double>(timer.elapsed()) / MsPerSecond));
    return true;
}

bool Soak::cancelsJobs()
{
    const QVector<SimulatedPrinter>::iterator printer =
        std::find_if(m_printers.begin(), m_printers.end(), [](const SimulatedPrinter& candidate) {
            return candidate.family == PrinterFamily::Standard && candidate.name.startsWith(QStringLiteral("Soak_"));
        });
    const int callsBefore = m_cancel.calls().size();
    ReportCancelling(*printer);
    PrinterFolder::WriteStatusFile(printer->name, EncodeStatusReply(*printer));
    const auto newCalls = [this, callsBefore]() {
        return m_cancel.calls().mid(callsBefore);
    };
    const bool isCalled = QTest::qWaitFor([&newCalls]() { return !newCalls().isEmpty(); }, RecoveryMs);
    if (!isCalled || newCalls().constFirst() != QStringList{printer->name}) {
        return Fail(QStringLiteral("no job was cancelled at %1").arg(printer->name));
    }
    Say(QStringLiteral("A job was cancelled; %1 were before.").arg(callsBefore));
    return true;
}

bool Soak::exits()
{
    QElapsedTimer timer;
    timer.start();
    if (!m_assistant.chooseFromMenu(QStringLiteral("退出")) || m_assistant.waitForExit() != 0) {
        return Fail(QStringLiteral("the assistant did not end well"));
    }
    const qint64 elapsedMs = timer.elapsed();
    Say(QStringLiteral("It ended in %1 ms.").arg(elapsedMs));
    return elapsedMs <= ExitMs || Fail(QStringLiteral("the assistant was slow to end"));
}

bool Soak::leftNothingBehind() const
{
    const QDir tools(QString::fromLatin1(PrinterFolder::ToolDirectory));
    const QStringList left = tools.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    if (!left.isEmpty()) {
        return Fail(QStringLiteral("%1 was left in the tool directory").arg(left.first()));
    }
    return !QFile::exists(QStringLiteral("injected")) || Fail(QStringLiteral("a printer's name was run as a command"));
}

double Soak::seconds() const
{
    return static_cast<double>(m_timer.elapsed()) / MsPerSecond;
}
