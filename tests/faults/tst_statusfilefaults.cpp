// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests what a user sees when status files go wrong: one window, one printer for each fault. All printers are ready
// with 80 % of toner. Then all files are damaged together, left so until they count as off-line, and repaired.

#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"
#include "StoppableThread.h"

#include <QtTest>

#include <chrono>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int EarlyMs = 3500;
constexpr int LateTimeoutMs = 40000;
constexpr int MoreCyclesMs = 1500;
constexpr qint64 NoiseBytes = 262144;
constexpr qint64 NoiseOfCyclesBytes = 16384;
constexpr int HugeBytes = 10 * 1024 * 1024;
constexpr qint64 MsPerHour = 3600000;
constexpr qint64 MsPerYear = 8760 * MsPerHour;

const QString Good = QStringLiteral("80.00% 就绪");
const QString Offline = QStringLiteral("80.00% 脱机");
const QString Other = QStringLiteral("60.00% 就绪");
const QString Unknown = QStringLiteral("0.00% 未知");
const QString Healed = QStringLiteral("70.00% 就绪");

enum class Family
{
    Standard,
    QZ
};

QByteArray Ready(Family family, quint8 percent)
{
    return family == Family::QZ ? QZBytes(percent) : StandardBytes(RawReady, percent * 100U);
}

using Strike = std::function<void(const QString& printer)>;

struct Fault
{
    const char* name;
    Family family;
    Strike strike;
    QString early; ///< shown soon after the fault
    QString late; ///< shown when printers that do not answer count as off-line
};

QByteArray LocalPath(const QString& printer)
{
    return QFile::encodeName(PrinterFolder::StatusFilePath(printer));
}

void Require(bool done)
{
    if (!done) {
        qFatal("cannot damage a status file");
    }
}

Strike Content(const QByteArray& bytes)
{
    return [bytes](const QString& printer) {
        PrinterFolder::WriteStatusFile(printer, bytes);
    };
}

// Writes the other reply with a different timestamp.
Strike TimeMoved(qint64 ms)
{
    return [ms](const QString& printer) {
        const qint64 time = PrinterFolder::ModificationTime(PrinterFolder::StatusFilePath(printer));
        PrinterFolder::WriteStatusFile(printer, Ready(Family::Standard, 60), time + ms);
    };
}

Strike TimeSet(qint64 ms)
{
    return [ms](const QString& printer) {
        PrinterFolder::WriteStatusFile(printer, Ready(Family::Standard, 60), ms);
    };
}

// Replaces the file by what `make` puts at the path.
Strike InItsPlace(const std::function<bool(const char* path)>& make)
{
    return [make](const QString& printer) {
        const QByteArray path = LocalPath(printer);
        Require(unlink(path.constData()) == 0 && make(path.constData()));
    };
}

Strike LinkTo(const char* target)
{
    return InItsPlace([target](const char* path) { return symlink(target, path) == 0; });
}

void Forbid(const QString& printer)
{
    PrinterFolder::WriteStatusFile(printer, Ready(Family::Standard, 60));
    Require(chmod(LocalPath(printer).constData(), S_IWUSR) == 0);
}

QByteArray Cut(QByteArray bytes)
{
    bytes.chop(1);
    return bytes;
}

// NeverRest adds two more faults to those of this table.
QVector<Fault> Faults()
{
    const auto standard = Family::Standard;
    const auto qz = Family::QZ;
    const QByteArray other = Ready(standard, 60);
    const QString forbidden = geteuid() == 0 ? Other : Good;
    const auto missing = InItsPlace([](const char* /*path*/) { return true; });
    return {
        {"missing", standard, missing, Good, Offline},
        {"missing, QZ", qz, missing, Good, Offline},
        {"empty", standard, Content({}), Good, Good},
        {"empty, QZ", qz, Content({}), Unknown, Unknown},
        {"one byte", standard, Content("\x01"), Good, Good},
        {"one byte, QZ", qz, Content("\x01"), Unknown, Unknown},
        {"last byte missing", standard, Content(Cut(other)), Good, Good},
        {"last byte missing, QZ", qz, Content(Cut(Ready(qz, 60))), Good, Good},
        {"10 MiB of zeros", standard, Content(QByteArray(HugeBytes, '\0')), QStringLiteral("0.00% 就绪"),
         QStringLiteral("0.00% 就绪")},
        {"10 MiB of zeros, QZ", qz, Content(QByteArray(HugeBytes, '\0')), Unknown, Unknown},
        {"10 MiB of ones", standard, Content(QByteArray(HugeBytes, '\xFF')), Good, Good},
        {"10 MiB of ones, QZ", qz, Content(QByteArray(HugeBytes, '\xFF')), Unknown, Unknown},
        {"10 MiB behind a reply", standard, Content(other + QByteArray(HugeBytes, '\xFF')), Other, Other},
        {"10 MiB behind a reply, QZ", qz, Content(Ready(qz, 60) + QByteArray(HugeBytes, '\xFF')), Other, Other},
        {"other content, same size and time", standard, TimeMoved(0), Good, Good},
        {"older by an hour", standard, TimeMoved(-MsPerHour), Other, Other},
        {"older by a millisecond", standard, TimeMoved(-1), Other, Other},
        {"from 1970", standard, TimeSet(0), Other, Other},
        {"from before 1970", standard, TimeSet(-MsPerYear), Other, Other},
        {"from the future", standard, TimeMoved(10 * MsPerYear), Other, Other},
        {"directory", standard, InItsPlace([](const char* path) { return mkdir(path, S_IRWXU) == 0; }), Good, Good},
        {"FIFO", standard, InItsPlace([](const char* path) { return mkfifo(path, S_IRUSR | S_IWUSR) == 0; }), Good,
         Good},
        {"device", standard, LinkTo("/dev/zero"), Good, Good},
        {"device, QZ", qz, LinkTo("/dev/zero"), Good, Good},
        {"dangling link", standard, LinkTo("/opt/absent"), Good, Offline},
        {"link to itself", standard, [](const QString& printer) { LinkTo(LocalPath(printer).constData())(printer); },
         Good, Offline},
        {"link to a reply", standard, LinkTo("/opt/reply"), Other, Other},
        {"no permission", standard, Forbid, forbidden, forbidden},
    };
}

// Rewrites the file in place, slowly, so that readers mostly find it truncated.
void Rewrite(const QString& printer, const QByteArray& bytes)
{
    const int file = open(LocalPath(printer).constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    Require(file >= 0);
    for (const char byte : bytes) {
        Require(write(file, &byte, 1) == 1);
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    close(file);
}

// Writes two files all the time, with 10 % and 20 % of toner in turn: one is replaced, the other rewritten in place.
std::unique_ptr<StoppableThread> NeverRest(const QString& replaced, const QString& rewritten)
{
    return std::make_unique<StoppableThread>([replaced, rewritten](const std::atomic<bool>& isEnding) {
        for (quint8 percent = 10; !isEnding; percent = 30 - percent) {
            PrinterFolder::WriteStatusFile(replaced, Ready(Family::Standard, percent));
            Rewrite(rewritten, Ready(Family::Standard, percent));
        }
    });
}

} // namespace

class StatusFileFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fault_data();
    void fault();
    void filesThatNeverRest_data();
    void filesThatNeverRest();
    void nothingIsHeldOn();
    void windowAnswers();
    void thousandCycles_data();
    void thousandCycles();
    void cleanupTestCase();

private:
    QString printer(int row) const;
    bool isGoodBefore();
    void strike();
    void heal();
    QStringList expected(QString Fault::*when) const;

    const QVector<Fault> m_faults = Faults();
    const int m_replacedRow = m_faults.size();
    const int m_rewrittenRow = m_faults.size() + 1;
    const int m_rows = m_faults.size() + 2;
    std::unique_ptr<StoppableThread> m_restless;
    std::unique_ptr<FaultRig> m_rig;
    QList<stPrinterManager> m_before;
    QList<stPrinterManager> m_after;
    QStringList m_early;
    QStringList m_late;
    bool m_isFlat = false;
};

QString StatusFileFaultsTest::printer(int row) const
{
    const bool isQZ = row < m_faults.size() && m_faults.at(row).family == Family::QZ;
    return (isQZ ? QStringLiteral("J4990E_%1") : QStringLiteral("Std_%1")).arg(row);
}

bool StatusFileFaultsTest::isGoodBefore()
{
    QList<stPrinterInfo> printers;
    for (int row = 0; row < m_rows; ++row) {
        printers.append(PrinterFolder::Printer(printer(row)));
        const Family family = row < m_faults.size() ? m_faults.at(row).family : Family::Standard;
        PrinterFolder::WriteStatusFile(printer(row), Ready(family, 80));
    }
    PrinterFolder::WriteFile(QStringLiteral("/opt/reply"), Ready(Family::Standard, 60));
    PrinterFolder::WritePrinterList(printers);
    m_rig = std::make_unique<FaultRig>();
    return m_rig->waitForRows(m_rows) && m_rig->waitUntil([this] { return m_rig->shown().count(Good) == m_rows; });
}

void StatusFileFaultsTest::strike()
{
    for (int row = 0; row < m_faults.size(); ++row) {
        m_faults.at(row).strike(printer(row));
    }
    m_restless = NeverRest(printer(m_replacedRow), printer(m_rewrittenRow));
}

void StatusFileFaultsTest::heal()
{
    m_restless.reset();
    for (int row = 0; row < m_rows; ++row) {
        rmdir(LocalPath(printer(row)).constData());
        const Family family = row < m_faults.size() ? m_faults.at(row).family : Family::Standard;
        PrinterFolder::WriteStatusFile(printer(row), Ready(family, 70));
    }
}

QStringList StatusFileFaultsTest::expected(QString Fault::*when) const
{
    QStringList texts;
    for (const Fault& fault : m_faults) {
        texts.append(fault.*when);
    }
    return texts;
}

void StatusFileFaultsTest::initTestCase()
{
    PrinterFolder::Create();
    QVERIFY(isGoodBefore());
    m_before = m_rig->window().printers();
    m_rig->startRecord();
    strike();
    m_rig->run(EarlyMs);
    m_early = m_rig->shown();
    const ProcessUse use = ProcessUse::now();
    const QStringList late = expected(&Fault::late);
    m_rig->waitUntil([this, &late] { return m_rig->shown().mid(0, late.size()) == late; }, LateTimeoutMs);
    m_rig->run(MoreCyclesMs);
    m_late = m_rig->shown();
    m_after = m_rig->window().printers();
    m_isFlat = m_rig->settlesAt(use, NoiseBytes);
    heal();
    QVERIFY(m_rig->waitUntil([this] { return m_rig->shown().count(Healed) == m_rows; }));
    m_rig->run(MoreCyclesMs); // repeated or late signals count, too
}

void StatusFileFaultsTest::fault_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < m_faults.size(); ++row) {
        QTest::newRow(m_faults.at(row).name) << row;
    }
}

void StatusFileFaultsTest::fault()
{
    QFETCH(int, row);
    const Fault& fault = m_faults.at(row);
    QCOMPARE(m_early.at(row), fault.early);
    QCOMPARE(m_late.at(row), fault.late);
    QStringList seen{Good, fault.early, fault.late, Healed};
    seen.removeDuplicates();
    QCOMPARE(m_rig->record(row), seen);
    // The worker signals each change once.
    QCOMPARE(m_rig->signalsOf(row), seen.size() - 1);
    if (fault.late == Good) {
        stPrinterState state = m_after.at(row).stState;
        state.iFailCount = 0;
        QCOMPARE(Words(state), Words(m_before.at(row).stState));
    }
}

void StatusFileFaultsTest::filesThatNeverRest_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("replaced while it is read") << m_replacedRow;
    QTest::newRow("rewritten while it is read") << m_rewrittenRow;
}

// Half a reply is a failed read. Eleven of them in a row make a printer off-line; whole replies never do.
void StatusFileFaultsTest::filesThatNeverRest()
{
    QFETCH(int, row);
    QStringList possible{Good, QStringLiteral("10.00% 就绪"), QStringLiteral("20.00% 就绪"), Healed};
    if (row == m_rewrittenRow) {
        possible += {Offline, QStringLiteral("10.00% 脱机"), QStringLiteral("20.00% 脱机")};
    }
    const QStringList seen = m_rig->record(row);
    for (const QString& text : seen) {
        QVERIFY2(possible.contains(text), qPrintable(text));
    }
    QCOMPARE(seen.first(), Good);
    QCOMPARE(seen.last(), Healed);
    if (row == m_replacedRow) {
        QVERIFY2(seen.size() > 3, qPrintable(seen.join(QStringLiteral(", "))));
    }
}

void StatusFileFaultsTest::nothingIsHeldOn()
{
    QVERIFY(m_isFlat);
    QCOMPARE(m_rig->window().startedWorkers(), m_rows);
}

void StatusFileFaultsTest::windowAnswers()
{
    QVERIFY(m_rig->hasAnsweredInTime());
}

void StatusFileFaultsTest::thousandCycles_data()
{
    m_rig.reset();
    fault_data();
}

// Runs one worker without its pauses. Its printer is off-line, so that every cycle reads the file.
void StatusFileFaultsTest::thousandCycles()
{
    QFETCH(int, row);
    const QString name = printer(row);
    rmdir(LocalPath(name).constData());
    PrinterFolder::WriteStatusFile(name, Ready(m_faults.at(row).family, 80));
    m_faults.at(row).strike(name);
    QList<stPrinterManager> list{PrinterFolder::ListedPrinter(name)};
    StatusWorker worker;
    worker.Init(0, &list);
    const auto runCycles = [&worker, &list](int count) {
        for (int i = 0; i < count; ++i) {
            list[0].stState.enCurrentStatus = PS_OFFLINE;
            worker.runCycle();
        }
    };
    runCycles(10);
    const ProcessUse before = ProcessUse::now();
    runCycles(1000);
    const ProcessUse after = ProcessUse::now();
    QCOMPARE(after.descriptors, before.descriptors);
    QVERIFY2(after.heapBytes - before.heapBytes < NoiseOfCyclesBytes,
             qPrintable(QString::number(after.heapBytes - before.heapBytes)));
}

void StatusFileFaultsTest::cleanupTestCase()
{
    m_restless.reset();
    m_rig.reset();
}

QTEST_MAIN(StatusFileFaultsTest)
#include "tst_statusfilefaults.moc"
