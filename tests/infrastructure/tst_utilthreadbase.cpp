// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilThreadBase.h"

#include <QElapsedTimer>
#include <QtTest>

#include <future>
#include <map>
#include <thread>

class UtilThreadBaseTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void freshObject();
    void theFlagStays();
    void className();
    void waitForSleep_data();
    void waitForSleep();
    void waitingRunsNoEvents();
};

namespace {

constexpr int Never = -1;
constexpr int BeforeTheCall = 0;

struct Row
{
    const char* name;
    int ms;
    int stopMs; // the time of the stop request, after the call
    int atLeastMs;
    bool result;
};

// Shorter than any part of a pause that could be slept by mistake. A busy machine exceeds it now and then.
constexpr int MarginMs = 150;
constexpr int Attempts = 8;

const Row c_rows[] = {
    {"3000", 3000, Never, 3000, false},
    {"1000", 1000, Never, 1000, false},
    {"1200: the rest after the slices", 1200, Never, 1200, false},
    {"500", 500, Never, 500, false},
    {"501", 501, Never, 501, false},
    {"499", 499, Never, 499, false},
    {"300", 300, Never, 300, false},
    {"0", 0, Never, 0, false},
    {"-1", -1, Never, 0, false},
    {"-3700", -3700, Never, 0, false},
    {"0, stopped before", 0, BeforeTheCall, 0, true},
    {"-1200, stopped before", -1200, BeforeTheCall, 0, true},
    {"3000, stopped before", 3000, BeforeTheCall, 0, true},
    {"500, stopped before", 500, BeforeTheCall, 0, true},
    {"1200, stopped before", 1200, BeforeTheCall, 0, true},
    {"499, stopped before, sleeps all the same", 499, BeforeTheCall, 499, true},
    {"3000, stopped in the first slice", 3000, 200, 500, true},
    {"3000, stopped in the third slice", 3000, 1150, 1500, true},
    {"3000, stopped in the last slice", 3000, 2700, 3000, true},
    {"500, stopped in its slice", 500, 150, 500, true},
    {"1400, stopped in the first slice, leaves out the rest", 1400, 150, 500, true},
    {"1200, stopped in the last slice, sleeps the rest", 1200, 700, 1200, true},
    {"1900, stopped in the rest", 1900, 1600, 1900, true},
};

struct Outcome
{
    qint64 elapsedMs = 0;
    bool result = false;
};

Outcome Wait(const Row& row)
{
    UtilThreadBase worker(nullptr);
    worker.bThreadQuit = row.stopMs == BeforeTheCall;
    std::thread stopper;
    QElapsedTimer timer;
    timer.start();
    if (row.stopMs > 0) {
        stopper = std::thread([&worker, &row] {
            std::this_thread::sleep_for(std::chrono::milliseconds(row.stopMs));
            worker.bThreadQuit = true;
        });
    }
    Outcome outcome;
    outcome.result = worker.WaitForSleep(row.ms);
    outcome.elapsedMs = timer.elapsed();
    if (stopper.joinable()) {
        stopper.join();
    }
    return outcome;
}

// The first pause that is in time or has a wrong result; otherwise the last one.
Outcome WaitUntilOnTime(const Row& row)
{
    Outcome outcome;
    for (int i = 0; i < Attempts; ++i) {
        outcome = Wait(row);
        if (outcome.elapsedMs < row.atLeastMs + MarginMs || outcome.result != row.result) {
            break;
        }
    }
    return outcome;
}

// All rows wait at the same time, each on its own thread.
std::map<QByteArray, std::future<Outcome>> s_outcomes;

} // namespace

Q_DECLARE_METATYPE(const Row*)

void UtilThreadBaseTest::initTestCase()
{
    for (const Row& row : c_rows) {
        s_outcomes[row.name] = std::async(std::launch::async, [&row] { return WaitUntilOnTime(row); });
    }
}

void UtilThreadBaseTest::freshObject()
{
    QObject parent;
    auto* worker = new UtilThreadBase(&parent);
    QCOMPARE(worker->parent(), &parent);
    QCOMPARE(worker->bTaskStarted, false);
    QCOMPARE(worker->bThreadQuit.load(), false);
}

void UtilThreadBaseTest::theFlagStays()
{
    UtilThreadBase worker(nullptr);
    worker.bThreadQuit = true;
    QVERIFY(worker.WaitForSleep(500));
    QVERIFY(worker.WaitForSleep(500));
    QCOMPARE(worker.bThreadQuit.load(), true);
    QCOMPARE(worker.bTaskStarted, false);
}

void UtilThreadBaseTest::className()
{
    const UtilThreadBase worker(nullptr);
    const QMetaObject* meta = worker.metaObject();
    QCOMPARE(meta->className(), "UtilThreadBase");
    QCOMPARE(meta->superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void UtilThreadBaseTest::waitForSleep_data()
{
    QTest::addColumn<const Row*>("row");
    for (const Row& row : c_rows) {
        QTest::newRow(row.name) << &row;
    }
}

void UtilThreadBaseTest::waitForSleep()
{
    QFETCH(const Row*, row);
    const Outcome outcome = s_outcomes.at(row->name).get();
    QCOMPARE(outcome.result, row->result);
    QVERIFY2(outcome.elapsedMs >= row->atLeastMs, qPrintable(QString::number(outcome.elapsedMs)));
    QVERIFY2(outcome.elapsedMs < row->atLeastMs + MarginMs, qPrintable(QString::number(outcome.elapsedMs)));
}

void UtilThreadBaseTest::waitingRunsNoEvents()
{
    UtilThreadBase worker(nullptr);
    bool wasCalled = false;
    QMetaObject::invokeMethod(
        &worker, [&wasCalled] { wasCalled = true; }, Qt::QueuedConnection);
    QVERIFY(!worker.WaitForSleep(600));
    QVERIFY(!wasCalled);
    QTRY_VERIFY(wasCalled);
}

QTEST_GUILESS_MAIN(UtilThreadBaseTest)
#include "tst_utilthreadbase.moc"
