// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests that set the system clock while the assistant runs. They need libfaketime, configured to read the offset from a
// file.

#include "FaultRig.h"
#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QDateTime>
#include <QTableWidget>
#include <QtTest>

#include <cmath>

namespace {

constexpr qint64 SecondsPerYear = qint64{365} * 86400;
constexpr qint64 MsPerSecond = 1000;
// A new state is shown within a cycle of one second, a new list within three seconds. The rest is a margin for a busy
// machine, far shorter than any of the jumps.
constexpr int SoonMs = 15000;
constexpr qint64 StopLimitMs = 5000;
constexpr qint64 NoiseBytes = 131072;

const QString Name = QStringLiteral("Office_K4510A");

// Shifts the clock of all programs of this test by so many seconds from the true time.
void SetClock(qint64 seconds)
{
    PrinterFolder::WriteFile(QStringLiteral("/tmp/clock"),
                             QByteArray(seconds < 0 ? "" : "+") + QByteArray::number(seconds));
}

// The kernel's timestamps show the true time.
qint64 TrueMs()
{
    const QString path = QStringLiteral("/tmp/true-time");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("x") != 1) {
        qFatal("cannot write %s", qPrintable(path));
    }
    file.close();
    return PrinterFolder::ModificationTime(path);
}

qint64 ClockOffsetSeconds()
{
    return std::llround(static_cast<double>(QDateTime::currentMSecsSinceEpoch() - TrueMs()) / MsPerSecond);
}

// Writes the file with the timestamp of the shifted clock, as another program would.
void WriteStatus(quint32 percent)
{
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, percent * 100), QDateTime::currentMSecsSinceEpoch());
}

QString Shown(quint32 percent)
{
    return QStringLiteral("%1.00% 就绪").arg(percent);
}

} // namespace

class ClockFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void clockIsSet_data();
    void clockIsSet();
    void clockNeverRests();
    void cleanup();

private:
    std::unique_ptr<FaultRig> m_rig;
};

void ClockFaultsTest::initTestCase()
{
    SetClock(-SecondsPerYear);
    QVERIFY2(std::llabs(ClockOffsetSeconds() + SecondsPerYear) <= 2,
             "the clock cannot be set: is libfaketime missing?");
    // The first window and its first changes load fonts and pictures, which stay in memory.
    init();
    WriteStatus(20);
    QVERIFY(m_rig->waitUntilShown(0, Shown(20)));
    PrinterFolder::RemovePrinterList();
    QVERIFY(m_rig->waitUntil([this] { return m_rig->window().table().rowCount() == 0; }, SoonMs));
    m_rig.reset();
}

void ClockFaultsTest::init()
{
    SetClock(0);
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(Name)});
    WriteStatus(10);
    m_rig = std::make_unique<FaultRig>();
    SetLogEnable(true); // the window switches the log off when it starts, before its first status worker
    QVERIFY(m_rig->waitForRows(1));
    QVERIFY(m_rig->waitUntilShown(0, Shown(10)));
    m_rig->startRecord();
}

void ClockFaultsTest::clockIsSet_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::newRow("back by a minute") << qint64(-60);
    QTest::newRow("back by a year") << -SecondsPerYear;
    QTest::newRow("back by 40 years") << -40 * SecondsPerYear;
    QTest::newRow("forward by 10 years") << 10 * SecondsPerYear;
}

void ClockFaultsTest::clockIsSet()
{
    QFETCH(qint64, seconds);
    const ProcessUse use = ProcessUse::now();
    SetClock(seconds);
    // The old state stays, the next one is shown, and so is the one after the clock was corrected.
    QCOMPARE(m_rig->shown(0), Shown(10));
    WriteStatus(20);
    QVERIFY(m_rig->waitUntil([this] { return m_rig->shown(0) == Shown(20); }, SoonMs));
    const QByteArray year = QDateTime::currentDateTime().toString(QStringLiteral("[yyyy-")).toLatin1();
    QVERIFY(LogFolder::Lines().constLast().startsWith(year));
    SetClock(0);
    WriteStatus(30);
    QVERIFY(m_rig->waitUntil([this] { return m_rig->shown(0) == Shown(30); }, SoonMs));
    QCOMPARE(m_rig->record(0), QStringList({Shown(10), Shown(20), Shown(30)}));
    QCOMPARE(m_rig->signalsOf(0), 2);
    QCOMPARE(LogFolder::Names().size(), 1);
    // The list is still polled as before.
    SetClock(seconds);
    PrinterFolder::RemovePrinterList();
    QVERIFY(m_rig->waitUntil([this] { return m_rig->window().table().rowCount() == 0; }, SoonMs));
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
    QVERIFY(m_rig->hasAnsweredInTime());
    const qint64 ms = m_rig->endWindow();
    QVERIFY2(ms < StopLimitMs, qPrintable(QString::number(ms)));
}

// The clock jumps back and forth by an hour all the time, so that polls and pauses meet jumps at any point.
void ClockFaultsTest::clockNeverRests()
{
    qint64 seconds = 3600;
    for (quint32 percent = 11; percent <= 14; ++percent) {
        WriteStatus(percent);
        const auto isShown = [this, percent, &seconds] {
            seconds = -seconds;
            SetClock(seconds);
            return m_rig->shown(0) == Shown(percent);
        };
        QVERIFY(m_rig->waitUntil(isShown, SoonMs));
    }
    QCOMPARE(m_rig->record(0), QStringList({Shown(10), Shown(11), Shown(12), Shown(13), Shown(14)}));
    QVERIFY(m_rig->hasAnsweredInTime());
}

void ClockFaultsTest::cleanup()
{
    m_rig.reset();
    SetLogEnable(false);
}

QTEST_MAIN(ClockFaultsTest)
#include "tst_clockfaults.moc"
