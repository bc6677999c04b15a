// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

// Tests when a status file is read and how its content is used.
class StatusFileChannelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void readOnceThenUnchanged();
    void forceReadsAgain();
    void theTimeAloneDecides_data();
    void theTimeAloneDecides();
    void anyTimeServes_data();
    void anyTimeServes();
    void missingFile();
    void returnsWithAnOlderTime();
    void returnsWithTheFirstTimeOf1970_data();
    void returnsWithTheFirstTimeOf1970();
    void rejectedFileIsRememberedToo();
    void eachWorkerRemembersForItself();
    void emptyFile();
    void truncatedAt2048Bytes_data();
    void truncatedAt2048Bytes();
    void familyGoesByTheName_data();
    void familyGoesByTheName();
    void readsTheNamedFile();
    void usbReadsButDoesNotEvaluate();
    void usbIgnoresItsArgument();
    void usbSharesTheRememberedTime();
    void silentOnAllResults();
    void exceptionIsLogged_data();
    void exceptionIsLogged();
    void exceptionLeavesTheFailureCount();
};

namespace {

constexpr qint64 SomeTimeMs = 1700000000123;
constexpr rlim_t MemoryReserveBytes = 32UL * 1024 * 1024;

const QString Name = QStringLiteral("Office_K4510A");

quint32 TonerAfter(const StatusWorker& worker)
{
    return static_cast<quint32>(worker.stCurrent.stState.dwRemainingToner);
}

rlim_t AddressSpaceInUse()
{
    const QByteArray pages = PrinterFolder::ReadFile(QStringLiteral("/proc/self/statm")).split(' ').first();
    return pages.toULong() * 4096UL;
}

// While an object exists, the process can allocate hardly any more memory: large requests throw std::bad_alloc.
class MemoryLimit
{
public:
    MemoryLimit()
    {
        getrlimit(RLIMIT_AS, &m_before);
        const rlimit limit{AddressSpaceInUse() + MemoryReserveBytes, m_before.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~MemoryLimit()
    {
        setrlimit(RLIMIT_AS, &m_before);
    }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

    // A processor emulator accepts the limit but does not enforce it.
    static bool Binds()
    {
        const MemoryLimit limit;
        rlimit now = {};
        getrlimit(RLIMIT_AS, &now);
        return now.rlim_cur != limit.m_before.rlim_cur;
    }

private:
    rlimit m_before = {};
};

// Sets the time zone of the process for the lifetime of the object.
class TimeZone
{
public:
    explicit TimeZone(const QByteArray& name)
    {
        qputenv("TZ", name);
        tzset();
    }
    ~TimeZone()
    {
        m_hadOne ? qputenv("TZ", m_before) : qunsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    const bool m_hadOne = qEnvironmentVariableIsSet("TZ");
    const QByteArray m_before = qgetenv("TZ");
};

} // namespace

void StatusFileChannelTest::init()
{
    PrinterFolder::Create();
}

void StatusFileChannelTest::cleanup()
{
    SetLogEnable(false);
}

void StatusFileChannelTest::readOnceThenUnchanged()
{
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FullReplyState()));
    worker.stCurrent.stState = FilledState();
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FilledState()));
    // The file is read again after it was rewritten.
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy, 111));
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(TonerAfter(worker), 111U);
}

void StatusFileChannelTest::forceReadsAgain()
{
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    StatusWorker worker;
    for (int i = 0; i < 3; ++i) {
        worker.stCurrent.stState = FilledState();
        QCOMPARE(worker.GetPrinterStatusFile(Name, true), 0);
        QCOMPARE(Words(worker.stCurrent.stState), Words(FullReplyState()));
    }
    // The timestamp of a forced read is remembered, too.
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
}

void StatusFileChannelTest::theTimeAloneDecides_data()
{
    QTest::addColumn<qint64>("time");
    QTest::addColumn<int>("result");

    QTest::newRow("same time") << SomeTimeMs << 1;
    QTest::newRow("a millisecond later") << SomeTimeMs + 1 << 0;
    QTest::newRow("a millisecond earlier") << SomeTimeMs - 1 << 0;
    QTest::newRow("years later") << 2 * SomeTimeMs << 0;
    QTest::newRow("years earlier") << SomeTimeMs / 2 << 0;
}

void StatusFileChannelTest::theTimeAloneDecides()
{
    QFETCH(qint64, time);
    QFETCH(int, result);
    StatusWorker worker;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, 100), SomeTimeMs);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy, 200, {0x1106}), time);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), result);
    QCOMPARE(TonerAfter(worker), result == 0 ? 200U : 100U);
    // A forced read sees the new content in either case.
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), 0);
    QCOMPARE(TonerAfter(worker), 200U);
}

void StatusFileChannelTest::anyTimeServes_data()
{
    constexpr qint64 msPerYear = 31556952000;
    QTest::addColumn<qint64>("time");

    QTest::newRow("1970, to the millisecond") << qint64(0);
    QTest::newRow("1970, the first millisecond") << qint64(1);
    QTest::newRow("1980") << 10 * msPerYear;
    QTest::newRow("2500") << 530 * msPerYear;
    QTest::newRow("20000") << 18030 * msPerYear;
}

void StatusFileChannelTest::anyTimeServes()
{
    QFETCH(qint64, time);
    StatusWorker worker;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), time);
    QCOMPARE(PrinterFolder::ModificationTime(PrinterFolder::StatusFilePath(Name)), time);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy), time + 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
}

void StatusFileChannelTest::missingFile()
{
    StatusWorker worker;
    worker.stCurrent.stState = FilledState();
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
    PrinterFolder::Remove(); // the folder is missing, too
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FilledState()));
}

void StatusFileChannelTest::returnsWithAnOlderTime()
{
    StatusWorker worker;
    for (const qint64 time : {SomeTimeMs, SomeTimeMs - 5000, SomeTimeMs - 5000}) { // older, then the same again
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), time);
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
        PrinterFolder::RemoveStatusFile(Name);
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    }
    // A forced read of a missing file also fails and forgets the timestamp.
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), SomeTimeMs);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    PrinterFolder::RemoveStatusFile(Name);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), SomeTimeMs);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
}

void StatusFileChannelTest::returnsWithTheFirstTimeOf1970_data()
{
    QTest::addColumn<QByteArray>("timeZone");
    QTest::newRow("UTC") << QByteArray("UTC");
    QTest::newRow("China") << QByteArray("Asia/Shanghai");
    QTest::newRow("China, without the zone's file") << QByteArray("CST-8");
}

// Local midnight matters because before Qt 5.14 a null time equals it.
void StatusFileChannelTest::returnsWithTheFirstTimeOf1970()
{
    QFETCH(const QByteArray, timeZone);
    const TimeZone zone(timeZone);
    StatusWorker worker;
    for (const qint64 time : {QDateTime(QDate(1970, 1, 1), QTime(0, 0)).toMSecsSinceEpoch(), qint64(0)}) {
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), time);
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
        QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
        PrinterFolder::RemoveStatusFile(Name);
    }
    StatusWorker fresh;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady),
                                   QDateTime(QDate(1970, 1, 1), QTime(0, 0)).toMSecsSinceEpoch());
    QCOMPARE(fresh.GetPrinterStatusFile(Name, false), 0);
}

void StatusFileChannelTest::rejectedFileIsRememberedToo()
{
    StatusWorker worker;
    worker.stCurrent.stState = FilledState();
    PrinterFolder::WriteStatusFile(Name, RejectedBytes());
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FilledState()));
}

void StatusFileChannelTest::eachWorkerRemembersForItself()
{
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
    StatusWorker first;
    StatusWorker second;
    QCOMPARE(first.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(second.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(first.GetPrinterStatusFile(Name, false), 1);
}

void StatusFileChannelTest::emptyFile()
{
    StatusWorker worker;
    worker.stCurrent.stState = FilledState();
    PrinterFolder::WriteStatusFile(Name, QByteArray());
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FilledState()));
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);

    // The QZ family accepts it as an empty reply, also after a longer one.
    const QString qzName = QStringLiteral("J4990E");
    PrinterFolder::WriteStatusFile(qzName, QZBytes(80));
    QCOMPARE(worker.GetPrinterStatusFile(qzName, false), 0);
    QCOMPARE(TonerAfter(worker), 80U);
    PrinterFolder::WriteStatusFile(qzName, QByteArray());
    QCOMPARE(worker.GetPrinterStatusFile(qzName, false), 0);
    QCOMPARE(worker.stCurrent.stState.enCurrentStatus, 0);
    QCOMPARE(TonerAfter(worker), 0U);
}

void StatusFileChannelTest::truncatedAt2048Bytes_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("result");

    QTest::newRow("2047 bytes") << StandardBytesOfSize(2047) << 0;
    QTest::newRow("2048 bytes") << StandardBytesOfSize(2048) << 0;
    QTest::newRow("2049 bytes, the last is lost") << StandardBytesOfSize(2049) << -1;
    QTest::newRow("4000 bytes") << StandardBytesOfSize(4000) << -1;
    QTest::newRow("a short reply and a long rest") << StandardBytes(RawReady) + QByteArray(100000, '\xFF') << 0;
    QTest::newRow("10 MB") << QByteArray(10000000, '\xFF') << -1;
}

void StatusFileChannelTest::truncatedAt2048Bytes()
{
    QFETCH(QByteArray, content);
    PrinterFolder::WriteStatusFile(Name, content);
    StatusWorker worker;
    QTEST(worker.GetPrinterStatusFile(Name, false), "result");
    QCOMPARE(TonerAfter(worker), worker.GetPrinterStatusFile(Name, true) == 0 ? 8000U : 0U);
}

void StatusFileChannelTest::familyGoesByTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("errors"); // always 1 for the QZ family, 0 for these standard replies

    QTest::newRow("standard name and reply") << "K4510A" << StandardBytes(RawReady) << 0 << 0;
    QTest::newRow("standard name, QZ reply") << "K4510A" << QZBytes() << 0 << 0;
    QTest::newRow("QZ name and reply") << "J4990E" << QZBytes() << 0 << 1;
    QTest::newRow("QZ name, standard reply") << "J4990E" << StandardBytes(RawReady) << 0 << 1;
    QTest::newRow("QZ model within the name") << "Hall J4990E 2" << QZBytes() << 0 << 1;
    QTest::newRow("QZ model in lower case") << "j4990e" << QZBytes() << 0 << 0;
}

void StatusFileChannelTest::familyGoesByTheName()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    PrinterFolder::WriteStatusFile(name, content);
    StatusWorker worker;
    // Neither the model text nor the current printer's name matters.
    worker.stCurrent.stInfo.strPrinterName =
        name.contains(QStringLiteral("J4990E")) ? QStringLiteral("K4510A") : QStringLiteral("J4990E");
    worker.stCurrent.stInfo.enType = worker.stCurrent.stInfo.strPrinterName;
    QTEST(worker.GetPrinterStatusFile(name, false), "result");
    QTEST(worker.stCurrent.stState.iNumberOfError, "errors");
}

void StatusFileChannelTest::readsTheNamedFile()
{
    StatusWorker worker;
    worker.stCurrent.stInfo.strPrinterName = QStringLiteral("current");
    PrinterFolder::WriteStatusFile(QStringLiteral("current"), StandardBytes(RawReady, 1));
    PrinterFolder::WriteStatusFile(QStringLiteral("named"), StandardBytes(RawReady, 2));
    QCOMPARE(worker.GetPrinterStatusFile(QStringLiteral("named"), false), 0);
    QCOMPARE(TonerAfter(worker), 2U);
}

void StatusFileChannelTest::usbReadsButDoesNotEvaluate()
{
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1); // missing
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy), SomeTimeMs);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1); // read
    QCOMPARE(worker.GetPrinterStatusUSB(Name), 1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy), SomeTimeMs - 1);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), 1);
    PrinterFolder::RemoveStatusFile(Name);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy), SomeTimeMs - 1);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), 1);
    QCOMPARE(Words(worker.stCurrent), Words(FilledPrinter(Name)));
}

void StatusFileChannelTest::usbIgnoresItsArgument()
{
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy));
    QCOMPARE(worker.GetPrinterStatusUSB(QStringLiteral("absent")), -1);
    QCOMPARE(worker.GetPrinterStatusUSB(QStringLiteral("absent")), 1);
    // An off-line printer is not read again either: this function has no forced read.
    worker.stCurrent.stState.enCurrentStatus = PS_OFFLINE;
    QCOMPARE(worker.GetPrinterStatusUSB(QStringLiteral("absent")), 1);
}

void StatusFileChannelTest::usbSharesTheRememberedTime()
{
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy));
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
}

void StatusFileChannelTest::silentOnAllResults()
{
    SetLogEnable(true);
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), -1);
    for (const QByteArray& content : {RejectedBytes(), StandardBytes(RawReady)}) {
        PrinterFolder::WriteStatusFile(Name, content);
        worker.GetPrinterStatusFile(Name, true);
        QCOMPARE(worker.GetPrinterStatusUSB(Name), 1);
    }
    QCOMPARE(LogFolder::Names(), QStringList());
}

void StatusFileChannelTest::exceptionIsLogged_data()
{
    QTest::addColumn<bool>("isUsb");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("GetPrinterStatusFile")
        << false << QByteArray("(../TrdGetPrinterStatus@268 GetPrinterStatusFile) throw error");
    QTest::newRow("GetPrinterStatusUSB") << true
                                         << QByteArray("(../TrdGetPrinterStatus@216 GetPrinterStatusUSB) throw error");
}

// The name is so long that its path does not fit into memory.
void StatusFileChannelTest::exceptionIsLogged()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer's allocator does not throw");
#endif
    if (!MemoryLimit::Binds()) {
        QSKIP("memory cannot be limited here");
    }
    QFETCH(bool, isUsb);
    SetLogEnable(true);
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(QString(50000000, QLatin1Char('x')));
    int result = -100;
    {
        const MemoryLimit limit;
        result = isUsb ? worker.GetPrinterStatusUSB(QString())
                       : worker.GetPrinterStatusFile(worker.stCurrent.stInfo.strPrinterName, false);
    }
    QCOMPARE(result, 0);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FilledState()));
    QCOMPARE(LogFolder::Lines().size(), 1);
    QTEST(LogFolder::WithoutTime(LogFolder::Lines().constFirst()), "line");
}

// An exception counts neither as a failure nor as a success.
void StatusFileChannelTest::exceptionLeavesTheFailureCount()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer's allocator does not throw");
#endif
    if (!MemoryLimit::Binds()) {
        QSKIP("memory cannot be limited here");
    }
    QList<stPrinterManager> list{FilledPrinter(QString(50000000, QLatin1Char('x')))};
    SetLogEnable(true);
    StatusWorker worker;
    worker.Init(0, &list);
    for (const int count : {0, 7, 10}) {
        list.first().stState.iFailCount = count;
        const QString before = Words(list.first().stState);
        int signalCount = -1;
        {
            const MemoryLimit limit;
            signalCount = worker.runCycle();
        }
        QCOMPARE(signalCount, 0);
        QCOMPARE(Words(list.first().stState), before);
    }
    QCOMPARE(LogFolder::Lines().size(), 3); // one exception in each cycle
}

QTEST_GUILESS_MAIN(StatusFileChannelTest)
#include "tst_statusfilechannel.moc"
