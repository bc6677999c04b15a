// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"

#include <QDateTime>
#include <QtTest>

#include <ctime>
#include <thread>
#include <vector>

// Tests the lines of the log, and when the log has any.
class UtilLogTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void offFromTheStart();
    void offWritesNothing();
    void switchingOnOpensNothing();
    void onAgainAfterOff();
    void lineBearsThePresentTime();
    void timesAreLocal();
    void lineFields_data();
    void lineFields();
    void messageIsFormatted();
    void formatIsLocal8Bit();
    void longMessageIsCut_data();
    void longMessageIsCut();
    void cutInsideACharacter();
    void eachCallAppendsOneLine();
    void threadsDoNotInterleave();
};

namespace {

constexpr char File[] = "../main";

int s_messageCount = 0;

void CountMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
    ++s_messageCount;
}

// Sets the time zone of the process while the object lives, in the form that needs no time zone files.
class TimeZone
{
public:
    explicit TimeZone(const char* zone)
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~TimeZone()
    {
        m_wasSet ? qputenv("TZ", m_before) : qunsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    bool m_wasSet = qEnvironmentVariableIsSet("TZ");
    QByteArray m_before = qgetenv("TZ");
};

QByteArray OnlyMessage()
{
    const QList<QByteArray> lines = LogFolder::Lines();
    return lines.size() == 1 ? LogFolder::WithoutTime(lines.first()) : QByteArray("not one line");
}

} // namespace

void UtilLogTest::init()
{
    PrinterFolder::Remove();
}

void UtilLogTest::cleanup()
{
    SetLogEnable(false);
}

// Must stay the first test: it needs a process in which the log was never switched on.
void UtilLogTest::offFromTheStart()
{
    const QtMessageHandler before = qInstallMessageHandler(CountMessage);
    WriteStringLog(File, 1, "main", QStringLiteral("%s %d"), "text", 1);
    qInstallMessageHandler(before);
    QCOMPARE(s_messageCount, 0); // trying to open the unnamed file would cause a message
    QVERIFY(!QFile::exists(QString::fromLatin1(PrinterFolder::ToolDirectory)));
}

void UtilLogTest::offWritesNothing()
{
    SetLogEnable(true);
    SetLogEnable(false);
    WriteStringLog(File, 1, "main", QStringLiteral("text"));
    QCOMPARE(LogFolder::Names(), QStringList());
    // A log that is switched off does not create the folder.
    PrinterFolder::Remove();
    WriteStringLog(File, 1, "main", QStringLiteral("text"));
    QVERIFY(!QFile::exists(QString::fromLatin1(PrinterFolder::ToolDirectory)));
}

void UtilLogTest::switchingOnOpensNothing()
{
    SetLogEnable(true);
    QVERIFY(QFileInfo(QString::fromLatin1(PrinterFolder::ToolDirectory)).isDir());
    QCOMPARE(LogFolder::Names(), QStringList());
}

void UtilLogTest::onAgainAfterOff()
{
    SetLogEnable(true);
    SetLogEnable(false);
    SetLogEnable(true);
    WriteStringLog(File, 1, "main", QStringLiteral("text"));
    QCOMPARE(OnlyMessage(), QByteArray("(../main@1 main) text"));
}

void UtilLogTest::lineBearsThePresentTime()
{
    SetLogEnable(true);
    const QDateTime before = QDateTime::currentDateTime();
    WriteStringLog(File, 42, "main", QStringLiteral("message text"));
    const QDateTime after = QDateTime::currentDateTime();

    const QString content = QString::fromUtf8(PrinterFolder::ReadFile(LogFolder::Path(LogFolder::Names().value(0))));
    const QRegularExpression pattern(
        QStringLiteral(R"(\A\[(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3})\] \(\.\./main@42 main\) message text\n\z)"));
    const QRegularExpressionMatch match = pattern.match(content);
    QVERIFY2(match.hasMatch(), qPrintable(content));
    const QDateTime written = QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
    QVERIFY2(written >= before && written <= after, qPrintable(content));
}

// Both the time in the line and the time in the file's name are local.
void UtilLogTest::timesAreLocal()
{
    const TimeZone zone("TST-7:30"); // 7.5 hours ahead of UTC
    SetLogEnable(true);
    const QDateTime before = QDateTime::currentDateTimeUtc();
    WriteStringLog(File, 42, "main", QStringLiteral("message text"));
    const QString name = LogFolder::Names().value(0);
    const QByteArray line = LogFolder::Lines().value(0);

    constexpr int offsetSeconds = 7 * 3600 + 1800;
    constexpr int marginSeconds = 600;
    const auto isLocal = [&before](const QString& text, const char* pattern) {
        QDateTime time = QDateTime::fromString(text, QString::fromLatin1(pattern));
        time.setTimeSpec(Qt::UTC);
        return qAbs(before.secsTo(time) - offsetSeconds) < marginSeconds;
    };
    QVERIFY2(isLocal(QString::fromUtf8(line.mid(1, 19)), "yyyy-MM-dd hh:mm:ss"), line.constData());
    QVERIFY2(isLocal(name.mid(9, 15), "yyyyMMdd_hhmmss"), qPrintable(name));
}

void UtilLogTest::lineFields_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("line");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray null;
    QTest::newRow("plain") << QByteArray("../main") << 42 << QByteArray("main") << QByteArray("(../main@42 main) text");
    QTest::newRow("null file") << null << 42 << QByteArray("main") << QByteArray("(@42 main) text");
    QTest::newRow("null function") << QByteArray("../main") << 42 << null << QByteArray("(../main@42 ) text");
    QTest::newRow("both null") << null << 42 << null << QByteArray("(@42 ) text");
    QTest::newRow("empty") << QByteArray("") << 0 << QByteArray("") << QByteArray("(@0 ) text");
    QTest::newRow("negative line") << QByteArray("f") << -7 << QByteArray("g") << QByteArray("(f@-7 g) text");
    QTest::newRow("greatest line") << QByteArray("f") << 2147483647 << QByteArray("g")
                                   << QByteArray("(f@2147483647 g) text");
    QTest::newRow("UTF-8") << QByteArray("源") << 1 << QByteArray("函数") << QByteArray("(源@1 函数) text");
    QTest::newRow("percent signs are text")
        << QByteArray("%s%n") << 1 << QByteArray("%d") << QByteArray("(%s%n@1 %d) text");
}

void UtilLogTest::lineFields()
{
    QFETCH(QByteArray, file);
    QFETCH(int, line);
    QFETCH(QByteArray, function);
    SetLogEnable(true);
    WriteStringLog(file.isNull() ? nullptr : file.constData(), line, function.isNull() ? nullptr : function.constData(),
                   QStringLiteral("text"));
    QTEST(OnlyMessage(), "expected");
}

void UtilLogTest::messageIsFormatted()
{
    SetLogEnable(true);
    WriteStringLog(File, 1, "main", QStringLiteral("%s|%d|%lu|%5.2f|%c|%%|%x"), "打印机", -3, 18446744073709551615UL,
                   1.5, 'z', 255U);
    QCOMPARE(OnlyMessage(), QByteArray("(../main@1 main) 打印机|-3|18446744073709551615| 1.50|z|%|ff"));
}

void UtilLogTest::formatIsLocal8Bit()
{
    SetLogEnable(true);
    WriteStringLog(File, 1, "main", QStringLiteral("打印机 %d 号"), 2);
    QCOMPARE(OnlyMessage(), QByteArray("(../main@1 main) 打印机 2 号"));
}

void UtilLogTest::longMessageIsCut_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("written");

    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("one less than fits") << 1022 << 1022;
    QTest::newRow("just fits") << 1023 << 1023;
    QTest::newRow("one too many") << 1024 << 1023;
    QTest::newRow("far too many") << 2000 << 1023;
}

void UtilLogTest::longMessageIsCut()
{
    QFETCH(int, length);
    QFETCH(int, written);
    SetLogEnable(true);
    WriteStringLog(File, 1, "main", QStringLiteral("%s"), QByteArray(length, 'x').constData());
    WriteStringLog(File, 2, "main", QStringLiteral("next"));
    const QList<QByteArray> lines = LogFolder::Lines();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(LogFolder::WithoutTime(lines.at(0)), "(../main@1 main) " + QByteArray(written, 'x'));
    QCOMPARE(LogFolder::WithoutTime(lines.at(1)), QByteArray("(../main@2 main) next"));
}

void UtilLogTest::cutInsideACharacter()
{
    SetLogEnable(true);
    const QByteArray message = QByteArray(1022, 'x') + "打印";
    WriteStringLog(File, 1, "main", QStringLiteral("%s"), message.constData());
    const QByteArray line = OnlyMessage();
    QVERIFY(line.startsWith("(../main@1 main) " + QByteArray(1022, 'x')));
    QVERIFY(!line.contains("打") && !line.contains("印"));
}

void UtilLogTest::eachCallAppendsOneLine()
{
    SetLogEnable(true);
    for (int i = 0; i < 3; ++i) {
        WriteStringLog(File, i, "main", QStringLiteral("text"));
        // Every call writes its line at once.
        QCOMPARE(LogFolder::Lines().size(), i + 1);
        QCOMPARE(LogFolder::WithoutTime(LogFolder::Lines().constLast()),
                 "(../main@" + QByteArray::number(i) + " main) text");
    }
}

void UtilLogTest::threadsDoNotInterleave()
{
    constexpr int threadCount = 4;
    constexpr int linesPerThread = 250;
    SetLogEnable(true);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            const QByteArray filler(900, static_cast<char>('a' + thread));
            for (int line = 0; line < linesPerThread; ++line) {
                WriteStringLog(File, thread, "run", QStringLiteral("%d %s"), line, filler.constData());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    const QList<QByteArray> lines = LogFolder::Lines();
    QCOMPARE(lines.size(), threadCount * linesPerThread);
    int nextLine[threadCount] = {};
    for (const QByteArray& line : lines) {
        const int thread = LogFolder::WithoutTime(line).mid(9, 1).toInt();
        QVERIFY(thread >= 0 && thread < threadCount);
        const QByteArray expected = "(../main@" + QByteArray::number(thread) + " run) " +
            QByteArray::number(nextLine[thread]) + ' ' + QByteArray(900, static_cast<char>('a' + thread));
        QCOMPARE(LogFolder::WithoutTime(line), expected);
        ++nextLine[thread];
    }
}

QTEST_GUILESS_MAIN(UtilLogTest)
#include "tst_utillog.moc"
