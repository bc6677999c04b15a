// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests rare cases of the window's workers: started again, left over from a longer list, hanging.

#include "acquisition/TrdGetPrinterStatus.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"
#include "TestWindow.h"

#include <QElapsedTimer>
#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdarg>
#include <cstring>
#include <new>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int TimeoutMs = 15000;
constexpr qint64 StopTimeoutMs = 1000; // for a thread that does not stop
constexpr qint64 StopLimitMs = 1500; // for everything else on a busy machine
constexpr char Untouched = '\x5a';

const QString Ready = QStringLiteral("就绪");

QString NameOf(int printer)
{
    return QStringLiteral("Prn%1").arg(printer);
}

void WritePrinters(int count)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < count; ++i) {
        printers.append(PrinterFolder::Printer(NameOf(i)));
    }
    PrinterFolder::WritePrinterList(printers);
}

bool HasRows(const TestWindow& window, int count)
{
    return QTest::qWaitFor([&window, count] { return window.table().rowCount() == count; }, TimeoutMs);
}

// While an object exists, opening the printer list hangs, as on a network file system without its server.
class HangingList
{
public:
    HangingList()
    {
        s_isHeld = true;
    }
    ~HangingList()
    {
        s_isHeld = false;
    }
    HangingList(const HangingList&) = delete;
    HangingList& operator=(const HangingList&) = delete;

    static bool hangs()
    {
        return s_waiting > 0;
    }
    static void waitIfHeld(const char* path)
    {
        if (!s_isHeld || std::strcmp(path, PrinterFolder::PrinterListPath) != 0) {
            return;
        }
        ++s_waiting;
        while (s_isHeld) {
            usleep(10000);
        }
        --s_waiting;
    }

private:
    static std::atomic<bool> s_isHeld;
    static std::atomic<int> s_waiting;
};

std::atomic<bool> HangingList::s_isHeld{false};
std::atomic<int> HangingList::s_waiting{0};

// A window in known memory, which reveals any access after its end.
class ObservedWindow
{
public:
    ObservedWindow()
        : m_window(new (s_memory.data()) TestWindow)
    {
    }
    TestWindow& window()
    {
        return *m_window;
    }
    /// Ends the window. Returns the duration in ms.
    qint64 end()
    {
        QElapsedTimer timer;
        timer.start();
        m_window->~TestWindow();
        const qint64 elapsedMs = timer.elapsed();
        s_memory.fill(Untouched);
        return elapsedMs;
    }
    static bool isUntouched()
    {
        return std::all_of(s_memory.begin(), s_memory.end(), [](char byte) { return byte == Untouched; });
    }

private:
    alignas(TestWindow) static std::array<char, sizeof(TestWindow)> s_memory;
    TestWindow* m_window;
};

alignas(TestWindow) std::array<char, sizeof(TestWindow)> ObservedWindow::s_memory;

} // namespace

// Replaces the C library's open().
extern "C" int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, unsigned int);
    va_end(arguments);
    HangingList::waitIfHeld(path);
    return static_cast<int>(syscall(SYS_openat, -100, path, flags, mode)); // AT_FDCWD
}

class SurplusWorkersTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void repeatedStartReachesEarlierWorkers();
    void regrownWorkersHaveTheirOwnIndex();
    void eachRebuildMakesNewItems();
    void hangingDeviceManager();
    void twoHangingWorkers();
};

// Without this, a test could pass while the stack of a crashed worker is being written.
void SurplusWorkersTest::initTestCase()
{
    qputenv("QTEST_DISABLE_STACK_DUMP", "1");
}

void SurplusWorkersTest::init()
{
    PrinterFolder::Create();
}

// Running loops ignore a repeated start. So the test ends the loops and clears their mark of being started.
void SurplusWorkersTest::repeatedStartReachesEarlierWorkers()
{
    WritePrinters(2);
    TestWindow window;
    QVERIFY(HasRows(window, 2));
    const QList<TrdGetPrinterStatus*> workers = window.statusWorkers();
    QCOMPARE(workers.size(), 2);
    for (TrdGetPrinterStatus* worker : workers) {
        worker->bThreadQuit = true; // from here on each start makes one cycle
        QMetaObject::invokeMethod(
            worker, [worker] { worker->bTaskStarted = false; }, Qt::BlockingQueuedConnection);
    }
    for (int i = 0; i < 3; ++i) {
        PrinterFolder::WriteStatusFile(NameOf(i), StandardBytes(RawReady));
    }
    WritePrinters(3);
    QVERIFY(HasRows(window, 3));
    for (int row = 0; row < 3; ++row) {
        QTRY_COMPARE_WITH_TIMEOUT(window.row(row).at(3), Ready, TimeoutMs);
    }
}

void SurplusWorkersTest::regrownWorkersHaveTheirOwnIndex()
{
    TestWindow window;
    for (const int count : {3, 1, 3}) {
        WritePrinters(count);
        QVERIFY(HasRows(window, count));
    }
    const QList<TrdGetPrinterStatus*> workers = window.statusWorkers();
    QCOMPARE(workers.size(), 5);
    QVector<QSet<int>> indexes(5);
    for (int k = 0; k < 5; ++k) {
        connect(workers.at(k), &TrdGetPrinterStatus::SgnUpdatePrinterStatus, &window,
                [&indexes, k](int index) { indexes[k].insert(index); });
    }
    // When a printer has two workers, the first to see a change signals it. The older workers are stopped half-way, so
    // that all workers signal.
    quint32 toner = 0;
    const auto haveAllTold = [&](const QList<int>& expected) {
        return QTest::qWaitFor(
            [&] {
                ++toner;
                for (int i = 0; i < 3; ++i) {
                    PrinterFolder::WriteStatusFile(NameOf(i), StandardBytes(RawReady, toner));
                }
                QTest::qWait(300);
                return std::all_of(expected.begin(), expected.end(), [&](int k) { return !indexes.at(k).isEmpty(); });
            },
            TimeoutMs);
    };
    QVERIFY(haveAllTold({0}));
    workers.at(1)->bThreadQuit = true;
    workers.at(2)->bThreadQuit = true;
    QVERIFY(haveAllTold({3, 4}));
    QCOMPARE(indexes.at(0), QSet<int>{0});
    QCOMPARE(indexes.at(3), QSet<int>{1});
    QCOMPARE(indexes.at(4), QSet<int>{2});
    QVERIFY((QSet<int>(indexes.at(1)) - QSet<int>{1}).isEmpty());
    QVERIFY((QSet<int>(indexes.at(2)) - QSet<int>{2}).isEmpty());
}

void SurplusWorkersTest::eachRebuildMakesNewItems()
{
    WritePrinters(2);
    TestWindow window;
    QVERIFY(HasRows(window, 2));
    const auto markedItems = [&window] {
        int count = 0;
        for (int row = 0; row < window.table().rowCount(); ++row) {
            for (int column = 0; column < 4; ++column) {
                count += window.table().item(row, column)->data(Qt::UserRole).toBool() ? 1 : 0;
            }
        }
        return count;
    };
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column) {
            window.table().item(row, column)->setData(Qt::UserRole, true);
        }
    }
    QCOMPARE(markedItems(), 8);
    WritePrinters(3); // the first two rows are unchanged
    QVERIFY(HasRows(window, 3));
    QCOMPARE(markedItems(), 0);
}

void SurplusWorkersTest::hangingDeviceManager()
{
    WritePrinters(2);
    ObservedWindow observed;
    QVERIFY(HasRows(observed.window(), 2));
    const int ending = observed.window().startedWorkers();
    QCOMPARE(ending, 2);
    qint64 elapsedMs = 0;
    {
        const HangingList hanging;
        QTRY_VERIFY_WITH_TIMEOUT(HangingList::hangs(), TimeoutMs);
        // The window still works.
        PrinterFolder::WriteStatusFile(NameOf(1), StandardBytes(RawReady));
        QTRY_COMPARE_WITH_TIMEOUT(observed.window().row(1).at(3), Ready, TimeoutMs);
        elapsedMs = observed.end();
        QVERIFY(HangingList::hangs());
        WritePrinters(3); // the list for the device manager's return
    }
    QVERIFY2(elapsedMs >= StopTimeoutMs && elapsedMs < StopTimeoutMs + StopLimitMs,
             qPrintable(QString::number(elapsedMs)));
    QTRY_VERIFY_WITH_TIMEOUT(!HangingList::hangs(), TimeoutMs);
    QTest::qWait(StopTimeoutMs); // gives unwanted effects time to appear
    QVERIFY(ObservedWindow::isUntouched());
}

void SurplusWorkersTest::twoHangingWorkers()
{
    const QString commandMayEnd = QStringLiteral("/tmp/cancel-may-end");
    const QString commandHasEnded = QStringLiteral("/tmp/cancel-has-ended-");
    const FakeCommand cancel(
        QStringLiteral("cancel"),
        QStringLiteral("while [ ! -e %1 ]; do sleep 0.05; done; touch %2$1").arg(commandMayEnd, commandHasEnded));
    WritePrinters(3);
    PrinterFolder::WriteStatusFile(NameOf(0), StandardBytes(RawCancelling));
    PrinterFolder::WriteStatusFile(NameOf(1), StandardBytes(RawReady));
    PrinterFolder::WriteStatusFile(NameOf(2), StandardBytes(RawCancelling));
    ObservedWindow observed;
    QVERIFY(HasRows(observed.window(), 3));
    QTRY_COMPARE_WITH_TIMEOUT(cancel.calls().size(), 2, TimeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(observed.window().row(1).at(3), Ready, TimeoutMs);
    const qint64 elapsedMs = observed.end();
    // The window waits for each worker in turn.
    QVERIFY2(elapsedMs >= 2 * StopTimeoutMs && elapsedMs < 2 * StopTimeoutMs + StopLimitMs,
             qPrintable(QString::number(elapsedMs)));
    PrinterFolder::WriteFile(commandMayEnd, QByteArray());
    for (const int printer : {0, 2}) {
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(commandHasEnded + NameOf(printer)), TimeoutMs);
    }
    QTest::qWait(StopTimeoutMs); // gives unwanted effects time to appear
    QVERIFY(ObservedWindow::isUntouched());
    QCOMPARE(cancel.calls().size(), 2);
}

QTEST_MAIN(SurplusWorkersTest)
#include "tst_surplusworkers.moc"
