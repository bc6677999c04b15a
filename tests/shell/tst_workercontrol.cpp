// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "HeapBytes.h"
#include "infrastructure/FreeMemory.h"
#include "PrinterFolder.h"
#include "ProcessSample.h"
#include "SampleReplies.h"
#include "TestWindow.h"

#include <QElapsedTimer>
#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <array>
#include <future>
#include <memory>
#include <new>
#include <sys/resource.h>
#include <thread>

namespace {

constexpr int ManyPrinters = 50;
// A stop takes one slice of half a second. The rest is a margin for a busy machine.
constexpr qint64 StopLimitMs = 1500;
// The window waits one second for a thread that does not stop.
constexpr qint64 StopTimeoutMs = 1000;

void WritePrinters(int count)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < count; ++i) {
        printers.append(PrinterFolder::Printer(QStringLiteral("Prn%1").arg(i)));
    }
    PrinterFolder::WritePrinterList(printers);
}

bool HasRows(const TestWindow& window, int count)
{
    return QTest::qWaitFor([&window, count]() { return window.table().rowCount() == count; }, 10000);
}

void WriteStatus(const QString& name, quint8 status)
{
    PrinterFolder::WriteStatusFile(name, StandardBytes(status, 0));
}

} // namespace

class WorkerControlTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void deviceManagerAlone();
    void oneWorkerAPrinter();
    void growingStartsTheMissing();
    void shrinkingStopsNothing();
    void workersOfAShrunkListPollAgain();
    void workersNeedNoDescriptor();
    void requestsDoNotPileUp();
    void longListLeavesTheWindowToItself();
    void roomOfStartSignalsIsReturned();
    void stopsAtOnce_data();
    void stopsAtOnce();
    void stopsSoonAfterTheStart();
    void hangingCommand();
    void threadsEndByThemselves();

private:
    int workerThreads() const;

    int m_otherThreads = 0;
};

void WorkerControlTest::initTestCase()
{
    { // make Qt start its own threads
        const QSystemTrayIcon icon;
        QTest::qWait(100);
    }
    m_otherThreads = OwnProcess().workerThreads;
}

int WorkerControlTest::workerThreads() const
{
    return OwnProcess().workerThreads - m_otherThreads;
}

void WorkerControlTest::init()
{
    PrinterFolder::Create();
    QTRY_COMPARE(workerThreads(), 0);
}

void WorkerControlTest::deviceManagerAlone()
{
    const TestWindow window;
    QTRY_COMPARE(workerThreads(), 1);
    QCOMPARE(window.startedWorkers(), 0);
}

void WorkerControlTest::oneWorkerAPrinter()
{
    WritePrinters(3);
    const TestWindow window;
    const QSignalSpy starts(&window, &BrelPrinterToolWidget::SgnStatusThreadStart);
    QVERIFY(HasRows(window, 3));
    QCOMPARE(window.startedWorkers(), 3);
    QCOMPARE(starts.size(), 3); // one for each new worker; earlier workers receive it, too
    QTRY_COMPARE(workerThreads(), 4);
}

void WorkerControlTest::growingStartsTheMissing()
{
    WritePrinters(2);
    const TestWindow window;
    QVERIFY(HasRows(window, 2));
    QCOMPARE(window.startedWorkers(), 2);
    const QSignalSpy starts(&window, &BrelPrinterToolWidget::SgnStatusThreadStart);
    WritePrinters(3);
    QVERIFY(HasRows(window, 3));
    QCOMPARE(window.startedWorkers(), 3);
    QCOMPARE(starts.size(), 1);
    QTRY_COMPARE(workerThreads(), 4);
}

void WorkerControlTest::shrinkingStopsNothing()
{
    WritePrinters(3);
    const TestWindow window;
    QVERIFY(HasRows(window, 3));
    WritePrinters(1);
    QVERIFY(HasRows(window, 1));
    QCOMPARE(window.startedWorkers(), 3);
    WritePrinters(3);
    QVERIFY(HasRows(window, 3));
    QCOMPARE(window.startedWorkers(), 5);
    QTRY_COMPARE(workerThreads(), 6);
    PrinterFolder::RemovePrinterList();
    QVERIFY(HasRows(window, 0));
    QCOMPARE(window.startedWorkers(), 5);
    QCOMPARE(workerThreads(), 6);
}

// The last printer then has two workers. Either one fills its row.
void WorkerControlTest::workersOfAShrunkListPollAgain()
{
    WritePrinters(2);
    WriteStatus(QStringLiteral("Prn1"), 0);
    const TestWindow window;
    QVERIFY(HasRows(window, 2));
    WritePrinters(1);
    QVERIFY(HasRows(window, 1));
    WritePrinters(2);
    QVERIFY(HasRows(window, 2));
    QCOMPARE(window.startedWorkers(), 3);
    QTRY_COMPARE(window.row(1).at(3), QStringLiteral("就绪"));
}

// A printer list that keeps changing creates more and more workers. Qt would abort the program at the first thread
// without a free descriptor.
void WorkerControlTest::workersNeedNoDescriptor()
{
    rlimit old = {};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &old), 0);
    rlimit few = old;
    few.rlim_cur = 40;
    WritePrinters(ManyPrinters);
    const QString last = QStringLiteral("Prn%1").arg(ManyPrinters - 1);
    WriteStatus(last, 0);
    const TestWindow window;
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &few), 0);
    const bool isReady =
        QTest::qWaitFor([&window]() { return window.row(ManyPrinters - 1).at(3) == QStringLiteral("就绪"); }, 10000);
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &old), 0);
    QVERIFY(isReady);
    QCOMPARE(window.startedWorkers(), ManyPrinters);
}

// Each start of a worker is also signalled to all others, which are busy in their loops.
void WorkerControlTest::requestsDoNotPileUp()
{
    constexpr int requests = 5000;
    constexpr qint64 noiseBytes = 65536;
    WritePrinters(2);
    TestWindow window;
    QVERIFY(HasRows(window, 2));
    qint64 afterTheFirstBytes = 0;
    for (int round = 0; round < 4; ++round) {
        const qint64 before = HeapBytes();
        for (int i = 0; i < requests; ++i) {
            emit window.SgnStatusThreadStart();
        }
        QVERIFY(HeapBytes() > before + requests);
        QTest::qWait(2000); // at least a cycle of each worker
        if (round == 0) {
            afterTheFirstBytes = HeapBytes(); // the heap keeps the freed memory for reuse
        }
    }
    const qint64 growthBytes = HeapBytes() - afterTheFirstBytes;
    QVERIFY2(growthBytes < noiseBytes, qPrintable(QString::number(growthBytes)));
    QCOMPARE(window.startedWorkers(), 2);
}

// A broken count can turn any list into one of a thousand printers.
void WorkerControlTest::longListLeavesTheWindowToItself()
{
    constexpr int printers = 1000;
    WritePrinters(printers);
    TestWindow window;
    QVERIFY(HasRows(window, printers));
    // Not all workers are started at once.
    QVERIFY2(window.startedWorkers() < printers, qPrintable(QString::number(window.startedWorkers())));
    WritePrinters(1);
    QTRY_COMPARE_WITH_TIMEOUT(window.startedWorkers(), printers, 10000);
    QVERIFY(HasRows(window, 1));
    WritePrinters(3);
    QVERIFY(HasRows(window, 3));
    QCOMPARE(window.startedWorkers(), printers + 2);
}

// While the workers start, half a million calls wait in their queues.
void WorkerControlTest::roomOfStartSignalsIsReturned()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("the sanitizers replace the heap");
#endif
    constexpr int printers = 1000;
    ReturnFreeMemory(); // free memory of other tests
    const double limitKib = OwnProcess().privateKib + 45 * 1024;
    WritePrinters(printers);
    const TestWindow window;
    QTRY_COMPARE_WITH_TIMEOUT(window.startedWorkers(), printers, 10000);
    QTRY_VERIFY2_WITH_TIMEOUT(OwnProcess().privateKib <= limitKib, qPrintable(QString::number(OwnProcess().privateKib)),
                              20000);
}

void WorkerControlTest::stopsAtOnce_data()
{
    QTest::addColumn<bool>("byTrayEntry");
    QTest::newRow("by the tray entry") << true;
    QTest::newRow("by another way") << false;
}

void WorkerControlTest::stopsAtOnce()
{
    QFETCH(const bool, byTrayEntry);
    WritePrinters(ManyPrinters);
    auto window = std::make_unique<TestWindow>();
    QVERIFY(HasRows(*window, ManyPrinters));
    QTRY_COMPARE(workerThreads(), ManyPrinters + 1);
    QElapsedTimer timer;
    timer.start();
    if (byTrayEntry) {
        window->SlotTrayActionExit();
    }
    window.reset();
    const qint64 elapsedMs = timer.elapsed();
    qInfo("%d workers stopped in %lld ms", ManyPrinters, elapsedMs);
    QVERIFY2(elapsedMs < StopLimitMs, qPrintable(QString::number(elapsedMs)));
    QTRY_COMPARE(workerThreads(), 0);
}

void WorkerControlTest::stopsSoonAfterTheStart()
{
    WritePrinters(ManyPrinters);
    QElapsedTimer timer;
    timer.start();
    {
        const TestWindow window;
    }
    QVERIFY2(timer.elapsed() < StopLimitMs, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(workerThreads(), 0);
}

// The window is in memory of the test, which reveals whether the worker left behind accesses it.
void WorkerControlTest::hangingCommand()
{
    constexpr char Untouched = '\x5a';
    const FakeCommand cancel(QStringLiteral("cancel"), QStringLiteral("sleep 4"));
    WritePrinters(2);
    WriteStatus(QStringLiteral("Prn0"), RawCancelling);
    WriteStatus(QStringLiteral("Prn1"), 0);
    alignas(TestWindow) static std::array<char, sizeof(TestWindow)> s_memory;
    auto* window = new (s_memory.data()) TestWindow;
    QVERIFY(HasRows(*window, 2));
    QTRY_COMPARE(cancel.calls().size(), 1);
    QElapsedTimer timer;
    timer.start();
    window->~TestWindow();
    const qint64 elapsedMs = timer.elapsed();
    s_memory.fill(Untouched);
    qInfo("a hanging command delayed the window by %lld ms", elapsedMs);
    QVERIFY(elapsedMs >= StopTimeoutMs);
    QVERIFY2(elapsedMs < StopTimeoutMs + StopLimitMs, qPrintable(QString::number(elapsedMs)));
    QTRY_COMPARE(workerThreads(), 1); // the window leaves it running
    QTRY_COMPARE_WITH_TIMEOUT(workerThreads(), 0, 10000); // the worker ends with its command
    QVERIFY(std::all_of(s_memory.begin(), s_memory.end(), [](char byte) { return byte == Untouched; }));
    QCOMPARE(cancel.calls().size(), 1);
}

// While the window waits for the hanging first worker, the other threads end by themselves. If each waited for the main
// thread, a thousand threads would take a tenth of a second for their thread switches.
void WorkerControlTest::threadsEndByThemselves()
{
    const FakeCommand cancel(QStringLiteral("cancel"), QStringLiteral("sleep 4"));
    WritePrinters(3);
    WriteStatus(QStringLiteral("Prn0"), RawCancelling);
    auto window = std::make_unique<TestWindow>();
    QVERIFY(HasRows(*window, 3));
    QTRY_COMPARE(cancel.calls().size(), 1);
    QTRY_COMPARE(workerThreads(), 4);
    QElapsedTimer timer;
    timer.start();
    auto elapsedMs = std::async(std::launch::async, [this, &timer] {
        while (workerThreads() > 1 && timer.elapsed() < StopTimeoutMs) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return timer.elapsed();
    });
    window.reset();
    QVERIFY(elapsedMs.get() < StopTimeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(workerThreads(), 0, 10000);
}

QTEST_MAIN(WorkerControlTest)
#include "tst_workercontrol.moc"
