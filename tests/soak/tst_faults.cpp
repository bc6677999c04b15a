// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests the soak run's faults and the effect that it expects of them, using the assistant's own readers.

#include "acquisition/TrdGetPrinterStatus.h"
#include "discovery/TrdDeviceManage.h"
#include "ListFaults.h"
#include "PrinterFolder.h"
#include "SoakPrinters.h"
#include "StatusFaults.h"

#include <QtTest>

#include <sys/stat.h>

namespace {

constexpr int PrinterCount = 20;
constexpr qint64 TickMs = 50;
constexpr quint64 Seed = 4711;

QString ListPath()
{
    return QString::fromLatin1(PrinterFolder::PrinterListPath);
}

int ListedPrinters()
{
    TrdDeviceManage reader(nullptr);
    return reader.GetPrinterInfo(true).size();
}

// Plays the assistant: reads the list from time to time and starts a worker for each new index.
class ListReader
{
public:
    void look()
    {
        const int count = ListedPrinters();
        m_isComplete = count == PrinterCount;
        m_workers += std::max(0, count - m_listed);
        m_lengths.append(count);
        m_listed = count;
    }
    int workers() const
    {
        return m_workers;
    }
    bool isComplete() const
    {
        return m_isComplete;
    }
    const QVector<int>& lengths() const
    {
        return m_lengths;
    }

private:
    int m_listed = 0;
    int m_workers = 0;
    bool m_isComplete = false;
    QVector<int> m_lengths;
};

class StatusReader : public TrdGetPrinterStatus
{
public:
    StatusReader()
        : TrdGetPrinterStatus(nullptr)
    {
    }
    const stPrinterState& state() const
    {
        return stCurrent.stState;
    }
};

QString ConnectionOf(const stPrinterInfo& printer)
{
    return printer.iConnectType == CONNECT_TYPE_USB ? QStringLiteral("USB")
                                                    : QStringLiteral("网络(%1)").arg(printer.strPort);
}

// Reads the list every three seconds, like the assistant, but irregularly.
void PlayStorm(ListFaults& faults, ListReader& reader, Chance& pace, qint64& nowMs)
{
    qint64 nextLookMs = nowMs + 3000;
    faults.beginStorm();
    while (faults.isStormy()) {
        faults.tick(nowMs);
        if (nowMs >= nextLookMs) {
            reader.look();
            nextLookMs = nowMs + 2900 + pace.below(400);
        }
        nowMs += TickMs;
    }
    reader.look();
}

} // namespace

class FaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void workerCount_data();
    void workerCount();
    void alterationsCostNoPrinter();
    void lossesCostAllPrinters();
    void stormsLeaveTheExpectedWorkers();
    void flappingIsFollowedLookByLook();
    void everyStatusFaultComes();
    void clearMakesAllReady();
    void seedRepeatsTheFaults();

private:
    QVector<SimulatedPrinter> m_printers;
};

void FaultsTest::init()
{
    PrinterFolder::Create();
    m_printers = MakePrinters(PrinterCount);
}

void FaultsTest::workerCount_data()
{
    QTest::addColumn<QVector<int>>("lengths");
    QTest::addColumn<int>("workers");
    QTest::newRow("nothing") << QVector<int>{} << 0;
    QTest::newRow("empty list") << QVector<int>{0, 0} << 0;
    QTest::newRow("start") << QVector<int>{3} << 3;
    QTest::newRow("same again") << QVector<int>{3, 3} << 3;
    QTest::newRow("grows") << QVector<int>{2, 3} << 3;
    QTest::newRow("shrinks") << QVector<int>{3, 1} << 3;
    QTest::newRow("shrinks and grows") << QVector<int>{3, 1, 3} << 5;
    QTest::newRow("lost twice") << QVector<int>{100, 0, 100, 0, 100} << 300;
    QTest::newRow("shrinks in steps") << QVector<int>{5, 3, 1, 2, 5} << 9;
}

void FaultsTest::workerCount()
{
    QFETCH(const QVector<int>, lengths);
    WorkerCount count;
    for (const int length : lengths) {
        count.see(length);
    }
    QTEST(count.workers(), "workers");
}

void FaultsTest::alterationsCostNoPrinter()
{
    ListFaults faults(m_printers, Chance(Seed));
    faults.clear();
    QCOMPARE(ListedPrinters(), PrinterCount);
    for (int i = 0; i < 200; ++i) {
        faults.alter();
        QCOMPARE(ListedPrinters(), PrinterCount);
    }
    QCOMPARE(faults.counts().size(), 8);
    QCOMPARE(faults.expectedWorkers(), PrinterCount);
}

void FaultsTest::lossesCostAllPrinters()
{
    Chance chance(Seed);
    for (const PathFault& fault : PathFaults()) {
        FreePath(ListPath());
        fault.put(ListPath(), chance);
        QVERIFY2(ListedPrinters() == 0, fault.name);
    }
    FreePath(ListPath());
}

void FaultsTest::stormsLeaveTheExpectedWorkers()
{
    Chance pace(Seed + 1);
    ListFaults faults(m_printers, Chance(Seed));
    ListReader reader;
    qint64 nowMs = 0;
    faults.clear();
    reader.look();
    for (int storm = 0; storm < 9; ++storm) {
        PlayStorm(faults, reader, pace, nowMs);
        QVERIFY(reader.isComplete());
        QCOMPARE(faults.expectedWorkers(), reader.workers());
        faults.alter();
        reader.look();
        QCOMPARE(faults.expectedWorkers(), reader.workers());
    }
    QVERIFY(reader.lengths().contains(0));
    QVERIFY(reader.workers() >= 4 * PrinterCount + 3); // three storms of losses, three of shorter lists
    QCOMPARE(faults.counts().value(QStringLiteral("flap")), 300);
}

// Reads the list so often that it sees every single change.
void FaultsTest::flappingIsFollowedLookByLook()
{
    ListFaults faults(m_printers, Chance(Seed));
    ListReader reader;
    faults.clear();
    reader.look();
    faults.beginStorm();
    for (qint64 nowMs = 0; faults.isStormy(); nowMs += TickMs) {
        faults.tick(nowMs);
        reader.look();
    }
    QVERIFY2(reader.workers() > PrinterCount + 40, qPrintable(QString::number(reader.workers())));
    QCOMPARE(faults.expectedWorkers(), reader.workers());
}

void FaultsTest::everyStatusFaultComes()
{
    StatusFaults faults(m_printers, Chance(Seed));
    for (int i = 0; i < 2000; ++i) {
        faults.disturb();
    }
    QCOMPARE(faults.counts().size(), PathFaults().size() + 7 + 2); // 7 reply faults; 2 kinds without a fault
    QVERIFY(faults.counts().value(QStringLiteral("good reply")) > 800);
    QVERIFY(faults.counts().value(QStringLiteral("cancelling a job")) > 100);
    for (const int count : faults.counts()) {
        QVERIFY(count > 15);
    }
}

void FaultsTest::clearMakesAllReady()
{
    StatusFaults faults(m_printers, Chance(Seed));
    ListFaults listFaults(m_printers, Chance(Seed));
    for (int i = 0; i < 500; ++i) {
        faults.disturb();
        if (i % 10 == 0) {
            listFaults.alter();
        }
    }
    faults.clear();
    listFaults.clear();
    TrdDeviceManage reader(nullptr);
    const QList<stPrinterInfo> printers = reader.GetPrinterInfo(true);
    QCOMPARE(printers.size(), PrinterCount);
    for (int i = 0; i < printers.size(); ++i) {
        StatusReader worker;
        QCOMPARE(printers.at(i).strPrinterName, m_printers.at(i).name);
        QCOMPARE(worker.GetPrinterStatusFile(printers.at(i).strPrinterName, true), 0);
        QCOMPARE(worker.state().enCurrentStatus, int(PS_READY));
        const double scale = m_printers.at(i).family == PrinterFamily::QZ ? 1 : 100;
        const QStringList row{printers.at(i).strPrinterName, ConnectionOf(printers.at(i)),
                              QString::number(static_cast<double>(worker.state().dwRemainingToner) / scale, 'f', 2) +
                                  QLatin1Char('%'),
                              QStringLiteral("就绪")};
        QCOMPARE(ReadyRow(m_printers.at(i)), row);
    }
}

void FaultsTest::seedRepeatsTheFaults()
{
    QVector<QMap<QString, int>> runs;
    for (const quint64 seed : {Seed, Seed, Seed + 1}) {
        PrinterFolder::Create();
        QVector<SimulatedPrinter> printers = MakePrinters(PrinterCount);
        StatusFaults faults(printers, Chance(seed));
        for (int i = 0; i < 300; ++i) {
            faults.disturb();
        }
        runs.append(faults.counts());
    }
    QCOMPARE(runs.at(0), runs.at(1));
    QVERIFY(runs.at(0) != runs.at(2));
}

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
