// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"
#include "records/SharedPrinterList.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QLocale>
#include <QtTest>

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

// Tests the loop in real time, with several workers on one list as in the running program. tst_pollingcycle tests the
// single cycles.
class StatusPollingLoopTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void oneCycleASecond();
    void oneSignalForOneChange();
    void oneCancelForOneEntering();
    void rejectedFileCountsOneFailure();
    void vanishedFileGoesOfflineAfterElevenCycles();
    void beyondTheEndNothingHappens();
    void signalsBearTheIndex();
    void stopEndsEveryLoop();
    void rebuiltListKeepsPrintersApart();
    void cleanupTestCase();
};

namespace {

constexpr qint64 CycleMs = 1000;
constexpr int OfflineTimeoutMs = 40000;
constexpr int StopLimitMs = 5000;

enum Printer
{
    Changing, ///< its file is rewritten after each signal
    Steady,
    Cancelling,
    Rejected,
    Vanished,
    QZFamily,
    PrinterCount
};

constexpr const char* c_names[PrinterCount] = {"changing", "steady", "cancelling", "rejected", "vanished", "J4990E"};

QString NameOf(Printer printer)
{
    return QString::fromLatin1(c_names[printer]);
}

void CloseTogether(std::vector<std::unique_ptr<RunningStatusWorker>>& workers)
{
    for (const auto& running : workers) {
        running->worker().bThreadQuit = true;
    }
    workers.clear();
}

} // namespace

// All tests examine one run of about twelve seconds, until the printer without a file is off-line.
namespace {

struct Run
{
    QList<stPrinterManager> list;
    std::vector<std::unique_ptr<RunningStatusWorker>> workers;
    std::unique_ptr<FakeCommand> cancel;
    qint64 startMs = 0;
    quint32 changingToner = 0;
};

Run s_run;

void RewriteChangingFile()
{
    ++s_run.changingToner;
    PrinterFolder::WriteStatusFile(NameOf(Changing), StandardBytes(RawReady, s_run.changingToner));
}

void WriteFirstFiles()
{
    RewriteChangingFile();
    PrinterFolder::WriteStatusFile(NameOf(Steady), EncodeStandardReply(FullReply()));
    PrinterFolder::WriteStatusFile(NameOf(Cancelling), StandardBytes(RawCancelling));
    PrinterFolder::WriteStatusFile(NameOf(Rejected), RejectedBytes());
    PrinterFolder::WriteStatusFile(NameOf(QZFamily), QZBytes(55));
}

} // namespace

void StatusPollingLoopTest::initTestCase()
{
    PrinterFolder::Create();
    s_run.cancel = std::make_unique<FakeCommand>(QStringLiteral("cancel"));
    WriteFirstFiles();
    for (int i = 0; i < PrinterCount; ++i) {
        s_run.list.append(FilledPrinter(NameOf(static_cast<Printer>(i))));
        s_run.list[i].stState.iFailCount = 0;
    }
    for (int i = 0; i <= PrinterCount; ++i) { // one more than there are printers
        s_run.workers.push_back(std::make_unique<RunningStatusWorker>(i, &s_run.list));
    }
    s_run.startMs = MonotonicMs();
    for (const auto& running : s_run.workers) {
        running->start();
        running->start(); // the second start is ignored
    }
    // Rewrite the file as soon as its change was signalled, so that each cycle finds a change.
    const auto& changing = *s_run.workers[Changing];
    const auto& vanished = *s_run.workers[Vanished];
    QElapsedTimer timer;
    timer.start();
    int seen = 0;
    while (vanished.signalledIndices().isEmpty() && timer.elapsed() < OfflineTimeoutMs) {
        if (changing.signalledIndices().size() > seen) {
            seen = changing.signalledIndices().size();
            RewriteChangingFile();
        }
        QTest::qWait(20);
    }
}

void StatusPollingLoopTest::oneCycleASecond()
{
    const QList<qint64> times = s_run.workers[Changing]->signalTimesMs();
    QVERIFY2(times.size() >= 5, qPrintable(QString::number(times.size())));
    for (int i = 1; i < times.size(); ++i) {
        const qint64 intervalMs = times.at(i) - times.at(i - 1);
        QVERIFY2(intervalMs >= CycleMs, qPrintable(QString::number(intervalMs)));
    }
}

void StatusPollingLoopTest::oneSignalForOneChange()
{
    QCOMPARE(s_run.workers[Steady]->signalledIndices().size(), 1);
    QCOMPARE(Words(Listed(s_run.list, Steady).stState), Words(FullReplyState()));
    QCOMPARE(s_run.workers[QZFamily]->signalledIndices().size(), 1);
    QCOMPARE(Listed(s_run.list, QZFamily).stState.dwRemainingToner, 55UL);
}

void StatusPollingLoopTest::oneCancelForOneEntering()
{
    QCOMPARE(s_run.workers[Cancelling]->signalledIndices().size(), 1);
    QCOMPARE(s_run.cancel->calls(), QList<QStringList>{QStringList{NameOf(Cancelling)}});
}

void StatusPollingLoopTest::rejectedFileCountsOneFailure()
{
    QCOMPARE(s_run.workers[Rejected]->signalledIndices().size(), 0);
    QCOMPARE(Listed(s_run.list, Rejected).stState.iFailCount, 1);
    QCOMPARE(Listed(s_run.list, Rejected).stState.enCurrentStatus, 3);
}

void StatusPollingLoopTest::vanishedFileGoesOfflineAfterElevenCycles()
{
    const QList<qint64> times = s_run.workers[Vanished]->signalTimesMs();
    QCOMPARE(times.size(), 1);
    QVERIFY2(times.first() - s_run.startMs >= 10 * CycleMs, qPrintable(QString::number(times.first() - s_run.startMs)));
    const stPrinterState state = Listed(s_run.list, Vanished).stState;
    QCOMPARE(state.enCurrentStatus, 2);
    QCOMPARE(state.dwRemainingToner, FilledState().dwRemainingToner);
    QCOMPARE(state.strProductName, QStringLiteral("old product"));
}

void StatusPollingLoopTest::beyondTheEndNothingHappens()
{
    QCOMPARE(s_run.workers[PrinterCount]->signalledIndices().size(), 0);
    QCOMPARE(SharedPrinterList(&s_run.list).copyInfos().size(), int(PrinterCount));
}

void StatusPollingLoopTest::signalsBearTheIndex()
{
    for (int i = 0; i < PrinterCount; ++i) {
        const QList<int> indices = s_run.workers[static_cast<std::size_t>(i)]->signalledIndices();
        for (const int index : indices) {
            QCOMPARE(index, i);
        }
    }
}

void StatusPollingLoopTest::stopEndsEveryLoop()
{
    QElapsedTimer timer;
    timer.start();
    for (const auto& running : s_run.workers) {
        running->worker().bThreadQuit = true;
    }
    for (const auto& running : s_run.workers) {
        QVERIFY(running->stop());
    }
    QVERIFY2(timer.elapsed() < StopLimitMs, qPrintable(QString::number(timer.elapsed())));
}

// The list is rebuilt again and again with the printers in other places. No printer may get another one's toner.
void StatusPollingLoopTest::rebuiltListKeepsPrintersApart()
{
    constexpr int printerCount = 4;
    const auto name = [](int i) {
        return QStringLiteral("printer%1").arg(i);
    };
    QList<stPrinterManager> list;
    std::vector<std::unique_ptr<RunningStatusWorker>> workers;
    for (int i = 0; i < printerCount; ++i) {
        PrinterFolder::WriteStatusFile(name(i), StandardBytes(RawReady, static_cast<quint32>(1000 + i)));
        workers.push_back(std::make_unique<RunningStatusWorker>(i, &list));
    }
    for (const auto& running : workers) {
        running->start();
    }
    QElapsedTimer timer;
    timer.start();
    int written = 0;
    for (int round = 0; timer.elapsed() < 2500; ++round) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        QList<stPrinterManager> rebuilt;
        for (int i = 0; i < 1 + round % printerCount; ++i) {
            rebuilt.append(PrinterFolder::ListedPrinter(name((i + round) % printerCount)));
        }
        stPrinterManager printer;
        for (int i = 0; SharedPrinterList(&list).copy(i, printer); ++i) {
            const int number = QLocale::c().toInt(QStringView(printer.stInfo.strPrinterName).right(1));
            const auto toner = static_cast<int>(printer.stState.dwRemainingToner);
            QVERIFY2(toner == 0 || toner == 1000 + number, qPrintable(Words(printer)));
            written += toner == 0 ? 0 : 1;
        }
        ReplaceList(list, rebuilt);
    }
    CloseTogether(workers);
    QVERIFY(written > 0);
}

void StatusPollingLoopTest::cleanupTestCase()
{
    CloseTogether(s_run.workers);
    s_run.cancel.reset();
}

QTEST_GUILESS_MAIN(StatusPollingLoopTest)
#include "tst_statuspollingloop.moc"
