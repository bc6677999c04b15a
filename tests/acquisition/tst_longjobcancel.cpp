// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <chrono>
#include <functional>
#include <future>

// Tests cycles whose `cancel` command takes long. By its end the list may have changed, or the program may be ending.
class LongJobCancelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void listChangedMeanwhile_data();
    void listChangedMeanwhile();
    void listUnchangedMeanwhile();
    void stopMeanwhile();
    void letGoMeanwhile();
    void listShrunkMeanwhile();
    void secondWorkerOfThePrinter();
    void secondPrinterOfTheName();
};

using ListChange = std::function<void(stPrinterManager&)>;
Q_DECLARE_METATYPE(ListChange)

namespace {

constexpr int TimeoutMs = 15000;
constexpr int SettleMs = 200;
constexpr int SeveralCyclesMs = 2500;

const QString Name = QStringLiteral("Office_K4510A");
const QString CancelRuns = QStringLiteral("/tmp/cancel-runs");
const QString CancelMayEnd = QStringLiteral("/tmp/cancel-may-end");

// A `cancel` command that runs until the test ends it.
QString LongCancel()
{
    return QStringLiteral("touch %1; while [ ! -e %2 ]; do sleep 0.02; done").arg(CancelRuns, CancelMayEnd);
}

void EndCommand()
{
    PrinterFolder::WriteFile(CancelMayEnd, QByteArray());
}

// The worker of the last of these printers, which cancels a job.
struct CancellingWorker
{
    explicit CancellingWorker(const QList<stPrinterManager>& printers = {FilledPrinter(Name)})
        : list(printers)
    {
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling));
        running.start();
    }
    static bool waitForTheCommand()
    {
        return QTest::qWaitFor([] { return QFile::exists(CancelRuns); }, TimeoutMs);
    }

    const FakeCommand cancel{QStringLiteral("cancel"), LongCancel()};
    QList<stPrinterManager> list;
    RunningStatusWorker running{static_cast<int>(list.size()) - 1, &list};
};

// Replaces the list while the command runs. Returns false if the list was locked during the command.
bool ReplaceMeanwhile(QList<stPrinterManager>& list, const QList<stPrinterManager>& newList)
{
    const auto replaced = std::async(std::launch::async, [&] { ReplaceList(list, newList); });
    const bool isInTime = replaced.wait_for(std::chrono::milliseconds(TimeoutMs)) == std::future_status::ready;
    if (!isInTime) {
        EndCommand();
    }
    return isInTime;
}

} // namespace

void LongJobCancelTest::init()
{
    PrinterFolder::Create();
    QFile::remove(CancelRuns);
    QFile::remove(CancelMayEnd);
}

void LongJobCancelTest::listChangedMeanwhile_data()
{
    QTest::addColumn<ListChange>("change");
    const auto row = [](const char* name, const ListChange& change) {
        QTest::newRow(name) << change;
    };
    row("another name", [](auto& printer) { printer.stInfo.strPrinterName = QStringLiteral("other"); });
    row("another URI", [](auto& printer) {
        // Without its file, the next cycle has a result that differs from that of the current cycle.
        printer.stInfo.strURI = QStringLiteral("usb://other");
        PrinterFolder::RemoveStatusFile(Name);
    });
}

void LongJobCancelTest::listChangedMeanwhile()
{
    QFETCH(ListChange, change);
    CancellingWorker worker;
    QVERIFY(worker.waitForTheCommand());
    stPrinterManager expected = FilledPrinter(Name);
    change(expected);
    QVERIFY(ReplaceMeanwhile(worker.list, {expected}));
    EndCommand();
    // The next cycle finds no file for the listed printer: one more failure, and nothing else changes.
    ++expected.stState.iFailCount;
    QTRY_VERIFY_WITH_TIMEOUT(Listed(worker.list, 0).stState.iFailCount != expected.stState.iFailCount - 1, TimeoutMs);
    QCOMPARE(Words(Listed(worker.list, 0)), Words(expected));
    QCOMPARE(worker.running.signalledIndices(), QList<int>());
}

void LongJobCancelTest::listUnchangedMeanwhile()
{
    CancellingWorker worker;
    QVERIFY(worker.waitForTheCommand());
    // Nothing is written back before the command has ended.
    QCOMPARE(Words(Listed(worker.list, 0)), Words(FilledPrinter(Name)));
    QCOMPARE(worker.running.signalledIndices(), QList<int>());
    EndCommand();
    QTRY_COMPARE_WITH_TIMEOUT(worker.running.signalledIndices(), QList<int>{0}, TimeoutMs);
    QCOMPARE(Listed(worker.list, 0).stState.enCurrentStatus, 6);
}

// A worker finishes the cycle that it has begun: it checks for stop requests only while it pauses.
void LongJobCancelTest::stopMeanwhile()
{
    CancellingWorker worker;
    QVERIFY(worker.waitForTheCommand());
    worker.running.worker().SlotThreadQuit();
    EndCommand();
    QVERIFY(worker.running.stop());
    QCOMPARE(worker.list.first().stState.enCurrentStatus, 6);
    QCOMPARE(worker.running.signalledIndices(), QList<int>{0});
}

void LongJobCancelTest::letGoMeanwhile()
{
    CancellingWorker worker;
    QVERIFY(worker.waitForTheCommand());
    worker.running.worker().Init(-1, nullptr);
    EndCommand();
    QVERIFY(worker.running.stop());
    QCOMPARE(Words(worker.list.first()), Words(FilledPrinter(Name)));
    QCOMPARE(worker.running.signalledIndices(), QList<int>());
}

void LongJobCancelTest::listShrunkMeanwhile()
{
    CancellingWorker worker({FilledPrinter(QStringLiteral("first")), FilledPrinter(Name)});
    QVERIFY(worker.waitForTheCommand());
    QVERIFY(ReplaceMeanwhile(worker.list, {FilledPrinter(QStringLiteral("first"))}));
    EndCommand();
    QTest::qWait(SettleMs); // gives unwanted effects time to appear
    QVERIFY(worker.running.stop());
    QCOMPARE(worker.list.size(), 1);
    QCOMPARE(Words(worker.list.first()), Words(FilledPrinter(QStringLiteral("first"))));
    QCOMPARE(worker.running.signalledIndices(), QList<int>());
}

// A list that has shrunk and grown again gives a printer two workers. The second worker's cycles during the command
// must not cancel another job.
void LongJobCancelTest::secondWorkerOfThePrinter()
{
    const FakeCommand cancel(QStringLiteral("cancel"), LongCancel());
    QList<stPrinterManager> list{FilledPrinter(Name)};
    RunningStatusWorker first(0, &list);
    RunningStatusWorker second(0, &list);
    first.start();
    second.start();
    for (int round = 1; round <= 2; ++round) { // the second round cancels a later job
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(CancelRuns), TimeoutMs);
        QTest::qWait(SeveralCyclesMs);
        EndCommand();
        QTRY_COMPARE_WITH_TIMEOUT(Listed(list, 0).stState.enCurrentStatus, 6, TimeoutMs);
        QTest::qWait(SeveralCyclesMs);
        QCOMPARE(cancel.calls().size(), round);
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
        QTRY_COMPARE_WITH_TIMEOUT(Listed(list, 0).stState.enCurrentStatus, 3, TimeoutMs);
        init();
    }
    const int signalCount = first.signalledIndices().size() + second.signalledIndices().size();
    QVERIFY2(signalCount >= 4, qPrintable(QString::number(signalCount)));
}

// Two entries of the list are two printers, even with the same name.
void LongJobCancelTest::secondPrinterOfTheName()
{
    const FakeCommand cancel(QStringLiteral("cancel"), LongCancel());
    QList<stPrinterManager> list{FilledPrinter(Name), FilledPrinter(Name)};
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling));
    RunningStatusWorker first(0, &list);
    RunningStatusWorker second(1, &list);
    first.start();
    second.start();
    QTRY_COMPARE_WITH_TIMEOUT(cancel.calls().size(), 2, TimeoutMs);
    EndCommand();
    QTRY_COMPARE_WITH_TIMEOUT(Listed(list, 0).stState.enCurrentStatus, 6, TimeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(Listed(list, 1).stState.enCurrentStatus, 6, TimeoutMs);
}

QTEST_GUILESS_MAIN(LongJobCancelTest)
#include "tst_longjobcancel.moc"
