// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "infrastructure/AnnotatedThread.h"
#include "PrinterFolder.h"
#include "records/SharedPrinterList.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <sys/prctl.h>
#include <thread>

// Tests the loop: when it replaces the shared list, how often it reads the file, how it is stopped.
class PrinterListLoopTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void pass_data();
    void pass();
    void changeResetsAllStates();
    void noChangeKeepsAllStates();
    void signalFollowsTheReplacement();
    void withoutAList();
    void secondStartIsIgnored();
    void mayWakeUpLate();
    void readersSeeTheListWhole();
    void looksEveryThreeSeconds();
    void stopEndsThePause();
    void letsGoOfTheList();
};

namespace {

constexpr int RescanIntervalMs = 3000;
constexpr int SliceMs = 500; // a pause is slept in slices
constexpr int PassTimeoutMs = 15000;

stPrinterInfo Printer(const QString& nameAndPort)
{
    const QStringList parts = nameAndPort.split(QLatin1Char('@'));
    return PrinterFolder::Printer(parts.at(0), parts.value(1));
}

// Printers from a text such as "A@1 B@2": names and ports.
QList<stPrinterInfo> Printers(const QString& words)
{
    QList<stPrinterInfo> printers;
    if (words.isEmpty()) {
        return printers;
    }
    const QStringList parts = words.split(QLatin1Char(' '));
    for (const QString& word : parts) {
        printers.append(Printer(word));
    }
    return printers;
}

QList<stPrinterManager> ListOf(const QString& words)
{
    QList<stPrinterManager> list;
    const QList<stPrinterInfo> printers = Printers(words);
    for (const stPrinterInfo& info : printers) {
        stPrinterManager element;
        element.stInfo = info;
        element.stState.enCurrentStatus = PS_PRINTING;
        element.stState.dwRemainingToner = 5000;
        element.stState.listError = {ERR_COOLING};
        element.stState.iFailCount = 4;
        list.append(element);
    }
    return list;
}

QString Words(const QList<stPrinterManager>& list)
{
    QStringList words;
    for (const stPrinterManager& element : list) {
        words.append(element.stInfo.strPrinterName + QLatin1Char('@') + element.stInfo.strPort);
    }
    return words.join(QLatin1Char(' '));
}

// Runs one pass of the loop: the stop is requested beforehand and takes effect in the final pause. Returns the number
// of signals.
int RunOnePass(QList<stPrinterManager>* list)
{
    TrdDeviceManage worker(nullptr);
    worker.Init(list);
    const QSignalSpy updates(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
    worker.SlotThreadQuit();
    worker.SlotTaskStart();
    return updates.size();
}

// A worker on its own thread, as in the window.
class RunningWorker
{
public:
    explicit RunningWorker(QList<stPrinterManager>* list)
    {
        m_clock.start();
        m_worker->Init(list);
        m_worker->moveToThread(&m_thread);
        QObject::connect(m_worker.get(), &TrdDeviceManage::SgnUpdatePrinterList, m_worker.get(), [this] {
            m_lastUpdateMs = m_clock.elapsed();
            ++m_updates;
        });
        m_thread.start();
        start();
    }
    ~RunningWorker()
    {
        m_worker->bThreadQuit = true;
        m_thread.quit();
        m_thread.wait(PassTimeoutMs);
    }
    RunningWorker(const RunningWorker&) = delete;
    RunningWorker& operator=(const RunningWorker&) = delete;

    void start()
    {
        QMetaObject::invokeMethod(m_worker.get(), &TrdDeviceManage::SlotTaskStart, Qt::QueuedConnection);
    }
    TrdDeviceManage& worker()
    {
        return *m_worker;
    }
    AnnotatedThread& thread()
    {
        return m_thread;
    }
    int updates() const
    {
        return m_updates;
    }
    qint64 lastUpdateMs() const
    {
        return m_lastUpdateMs;
    }

private:
    QElapsedTimer m_clock;
    std::atomic<int> m_updates{0};
    std::atomic<qint64> m_lastUpdateMs{0};
    AnnotatedThread m_thread;
    std::unique_ptr<TrdDeviceManage> m_worker = std::make_unique<TrdDeviceManage>(nullptr);
};

// The list as other threads see it while the worker runs.
QString LockedWords(QList<stPrinterManager>& list)
{
    QList<stPrinterManager> copies;
    const QList<stPrinterInfo> printers = SharedPrinterList(&list).copyInfos();
    for (const stPrinterInfo& info : printers) {
        copies.append({info, stPrinterState()});
    }
    return Words(copies);
}

} // namespace

void PrinterListLoopTest::init()
{
    PrinterFolder::Create();
}

void PrinterListLoopTest::pass_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("listed");
    QTest::addColumn<int>("updates");

    QTest::newRow("none, and none before") << ""
                                           << "" << 0;
    QTest::newRow("the first") << ""
                               << "A@1" << 1;
    QTest::newRow("the same") << "A@1 B@2"
                              << "A@1 B@2" << 0;
    QTest::newRow("one more") << "A@1"
                              << "A@1 B@2" << 1;
    QTest::newRow("one less") << "A@1 B@2"
                              << "A@1" << 1;
    QTest::newRow("the first is gone") << "A@1 B@2"
                                       << "B@2" << 1;
    QTest::newRow("all are gone") << "A@1 B@2"
                                  << "" << 1;
    QTest::newRow("another order") << "A@1 B@2"
                                   << "B@2 A@1" << 1;
    QTest::newRow("another name") << "A@1 B@2"
                                  << "A@1 C@2" << 1;
    QTest::newRow("a name in other case") << "A@1"
                                          << "a@1" << 1;
    QTest::newRow("another port") << "A@1 B@2"
                                  << "A@1 B@3" << 1;
    QTest::newRow("a port in other case") << "A@usb"
                                          << "A@USB" << 1;
    QTest::newRow("ports swapped") << "A@1 B@2"
                                   << "A@2 B@1" << 1;
}

void PrinterListLoopTest::pass()
{
    QFETCH(QString, before);
    QFETCH(QString, listed);
    QList<stPrinterManager> list = ListOf(before);
    PrinterFolder::WritePrinterList(Printers(listed));
    QTEST(RunOnePass(&list), "updates");
    QCOMPARE(Words(list), listed);
    // A second pass changes nothing.
    QCOMPARE(RunOnePass(&list), 0);
    // Without the file the list becomes empty; there is a signal only if it was not empty before.
    PrinterFolder::RemovePrinterList();
    QCOMPARE(RunOnePass(&list), listed.isEmpty() ? 0 : 1);
    QVERIFY(list.isEmpty());
}

void PrinterListLoopTest::changeResetsAllStates()
{
    QList<stPrinterManager> list = ListOf(QStringLiteral("A@1 B@2"));
    QList<stPrinterInfo> printers = Printers(QStringLiteral("A@1 B@3"));
    printers[0].enType = QStringLiteral("J4510A");
    PrinterFolder::WritePrinterList(printers);
    QCOMPARE(RunOnePass(&list), 1);
    QCOMPARE(list.first().stInfo.enType, QStringLiteral("J4510A"));
    for (const stPrinterManager& element : qAsConst(list)) {
        QCOMPARE(element.stState.enCurrentStatus, 2);
        QCOMPARE(element.stState.dwRemainingToner, 0UL);
        QVERIFY(element.stState.listError.isEmpty());
        QCOMPARE(element.stState.iFailCount, 0);
    }
}

void PrinterListLoopTest::noChangeKeepsAllStates()
{
    QList<stPrinterManager> list = ListOf(QStringLiteral("A@1 B@2"));
    QList<stPrinterInfo> printers = Printers(QStringLiteral("A@1 B@2"));
    for (stPrinterInfo& printer : printers) {
        printer.enType = QStringLiteral("another model");
        printer.iConnectType = 2;
        printer.strURI = QStringLiteral("socket://another");
    }
    PrinterFolder::WritePrinterList(printers);
    QCOMPARE(RunOnePass(&list), 0);
    for (const stPrinterManager& element : qAsConst(list)) {
        QCOMPARE(element.stInfo.enType, QStringLiteral("K4510A"));
        QCOMPARE(element.stInfo.iConnectType, 1);
        QCOMPARE(element.stInfo.strURI, QStringLiteral("usb://Tolmar"));
        QCOMPARE(element.stState.enCurrentStatus, 8);
        QCOMPARE(element.stState.dwRemainingToner, 5000UL);
        QCOMPARE(element.stState.iFailCount, 4);
    }
}

void PrinterListLoopTest::signalFollowsTheReplacement()
{
    QList<stPrinterManager> list = ListOf(QStringLiteral("A@1"));
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("B@2")));
    TrdDeviceManage worker(nullptr);
    worker.Init(&list);
    QString seen;
    connect(&worker, &TrdDeviceManage::SgnUpdatePrinterList, this, [&] { seen = Words(list); });
    worker.SlotThreadQuit();
    worker.SlotTaskStart();
    QCOMPARE(seen, QStringLiteral("B@2"));
}

void PrinterListLoopTest::withoutAList()
{
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("A@1")));
    QCOMPARE(RunOnePass(nullptr), 0);
    TrdDeviceManage worker(nullptr);
    const QSignalSpy updates(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
    worker.SlotThreadQuit();
    worker.SlotTaskStart();
    QCOMPARE(updates.size(), 0);
}

void PrinterListLoopTest::secondStartIsIgnored()
{
    QList<stPrinterManager> list;
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("A@1")));
    TrdDeviceManage worker(nullptr);
    worker.Init(&list);
    worker.SlotThreadQuit();
    worker.SlotTaskStart();
    QCOMPARE(Words(list), QStringLiteral("A@1"));
    QCOMPARE(worker.bTaskStarted, true);
    // A start after the stop does not run a single pass, even after the loop has ended.
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("B@2")));
    worker.SlotTaskStart();
    QCOMPARE(Words(list), QStringLiteral("A@1"));
}

void PrinterListLoopTest::mayWakeUpLate()
{
    std::thread([] {
        RunOnePass(nullptr);
        QCOMPARE(prctl(PR_GET_TIMERSLACK), 5000000);
    }).join();
}

void PrinterListLoopTest::readersSeeTheListWhole()
{
    QList<stPrinterManager> list;
    std::atomic<bool> isDone{false};
    QString torn;
    std::thread reader([&] {
        const QStringList wholeLists{QString(), QStringLiteral("A@1 B@2 C@3"), QStringLiteral("D@4 E@5")};
        while (!isDone) {
            const QString words = LockedWords(list);
            if (!wholeLists.contains(words)) {
                torn = words;
            }
        }
    });
    for (int i = 0; i < 150; ++i) {
        PrinterFolder::WritePrinterList(
            Printers(i % 2 == 0 ? QStringLiteral("A@1 B@2 C@3") : QStringLiteral("D@4 E@5")));
        RunOnePass(&list);
    }
    isDone = true;
    reader.join();
    QCOMPARE(torn, QString());
    QCOMPARE(Words(list), QStringLiteral("D@4 E@5"));
}

void PrinterListLoopTest::looksEveryThreeSeconds()
{
    QList<stPrinterManager> list;
    RunningWorker running(&list); // the file does not exist yet
    qint64 previousMs = 0;
    qint64 shortestMs = PassTimeoutMs;
    for (int pass = 1; pass <= 4; ++pass) {
        // Change the file right after each pass, so that the next pass finds a change.
        const QString words = QStringLiteral("A@%1").arg(pass);
        PrinterFolder::WritePrinterList(Printers(words));
        QTRY_COMPARE_WITH_TIMEOUT(running.updates(), pass, PassTimeoutMs);
        QCOMPARE(LockedWords(list), words);
        if (pass > 1) {
            const qint64 intervalMs = running.lastUpdateMs() - previousMs;
            QVERIFY2(intervalMs >= RescanIntervalMs, qPrintable(QString::number(intervalMs)));
            shortestMs = std::min(shortestMs, intervalMs);
        }
        previousMs = running.lastUpdateMs();
    }
    // A busy machine makes some intervals longer, but not every one by a whole slice.
    QVERIFY2(shortestMs < RescanIntervalMs + SliceMs, qPrintable(QString::number(shortestMs)));
}

void PrinterListLoopTest::stopEndsThePause()
{
    QList<stPrinterManager> list;
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("A@1")));
    RunningWorker running(&list);
    running.start(); // waits in the queue until the loop ends
    QTRY_COMPARE(running.updates(), 1);
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("B@2")));
    QElapsedTimer timer;
    timer.start();
    running.worker().SlotThreadQuit();
    running.thread().quit();
    QVERIFY(running.thread().wait(PassTimeoutMs));
    QVERIFY2(timer.elapsed() < RescanIntervalMs - 500, qPrintable(QString::number(timer.elapsed())));
    // Neither the ended loop nor the second start has read the file again.
    QCOMPARE(running.updates(), 1);
    QCOMPARE(Words(list), QStringLiteral("A@1"));
}

void PrinterListLoopTest::letsGoOfTheList()
{
    QList<stPrinterManager> list;
    QList<stPrinterManager> observedList;
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("A@1")));
    RunningWorker running(&list);
    QTRY_COMPARE(running.updates(), 1);
    RunningWorker observer(&observedList); // polls later than the other one, at the same interval
    QTRY_COMPARE(observer.updates(), 1);
    running.worker().Init(nullptr);
    PrinterFolder::RemovePrinterList();
    QTRY_COMPARE_WITH_TIMEOUT(observer.updates(), 2, PassTimeoutMs);
    QVERIFY(LockedWords(observedList).isEmpty());
    QCOMPARE(running.updates(), 1);
    QCOMPARE(LockedWords(list), QStringLiteral("A@1"));
}

QTEST_GUILESS_MAIN(PrinterListLoopTest)
#include "tst_printerlistloop.moc"
