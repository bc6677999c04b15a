// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "OpenedPaths.h"
#include "PrinterFolder.h"

#include <QDateTime>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <thread>
#include <unistd.h>
#include <vector>

// Tests which files the log writes to: their names, the change to the next file, and files that cannot be written.
class UtilLogFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nameBearsTheTimeOfSwitchingOn();
    void pathHasTheDoubledSlash();
    void rollOver_data();
    void rollOver();
    void lineThatFillsAFileStaysInIt();
    void nextFileExists_data();
    void nextFileExists();
    void currentFileVanishes_data();
    void currentFileVanishes();
    void indexGrowsWithoutBound();
    void rollOverHappensOnceAmongThreads();
    void switchingOnTwiceWithinASecond();
    void switchingOnLaterStartsAnotherFile();
    void switchingOnStartsAtIndexZero();
    void folderThatCannotBeMade();
    void folderThatCannotBeWritten();
    void folderThatVanishes();
};

namespace {

constexpr qint64 LimitBytes = 1048576;

void WriteLine(int line)
{
    WriteStringLog("file", line, "function", QStringLiteral("text"));
}

QByteArray ExpectedLine(int line)
{
    return "(file@" + QByteArray::number(line) + " function) text";
}

QByteArray LastLine(const QString& name)
{
    return LogFolder::WithoutTime(LogFolder::Lines(name).constLast());
}

bool Resize(const QString& name, qint64 bytes)
{
    // Fill the file with line ends, so that the next text begins a new line.
    return QFile::resize(LogFolder::Path(name), 0) && [&] {
        QFile file(LogFolder::Path(name));
        return file.open(QIODevice::WriteOnly) && file.write(QByteArray(static_cast<int>(bytes), '\n')) == bytes;
    }();
}

qint64 SizeOf(const QString& name)
{
    return QFileInfo(LogFolder::Path(name)).size();
}

QString SecondText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_hhmmss"));
}

// The name of the same run's file with another index.
QString WithIndex(const QString& name, int index)
{
    return name.left(name.lastIndexOf(QLatin1Char('_')) + 1) + QString::number(index) + QStringLiteral(".log");
}

// Switches the log on and writes a line. Returns the name of its file.
QString StartLog()
{
    SetLogEnable(true);
    WriteLine(0);
    return LogFolder::Names().value(0);
}

} // namespace

void UtilLogFilesTest::init()
{
    PrinterFolder::Remove();
}

void UtilLogFilesTest::cleanup()
{
    SetLogEnable(false);
}

void UtilLogFilesTest::nameBearsTheTimeOfSwitchingOn()
{
    const QString before = SecondText();
    SetLogEnable(true);
    const QString after = SecondText();
    QTRY_VERIFY(SecondText() > after); // gives the first line a new timestamp
    WriteLine(1);

    QCOMPARE(LogFolder::Names().size(), 1);
    const QString name = LogFolder::Names().constFirst();
    const QRegularExpression pattern(QStringLiteral(R"(\Alog_tool_(\d{8}_\d{6})_0\.log\z)"));
    const QRegularExpressionMatch match = pattern.match(name);
    QVERIFY2(match.hasMatch(), qPrintable(name));
    QVERIFY2(match.captured(1) == before || match.captured(1) == after, qPrintable(name));
}

void UtilLogFilesTest::pathHasTheDoubledSlash()
{
    const QString name = StartLog();
    QVERIFY(Resize(name, LimitBytes + 1));
    TakeOpenedPaths();
    WriteLine(1);
    std::vector<std::string> paths = TakeOpenedPaths();
    const std::string expected = "/opt/tolmar/tolmar-printer-q727/tool//" + WithIndex(name, 1).toStdString();
    QVERIFY(std::count(paths.begin(), paths.end(), expected) == 1);
    WriteLine(2);
    paths = TakeOpenedPaths();
    QVERIFY(std::count(paths.begin(), paths.end(), expected) == 1);
}

void UtilLogFilesTest::rollOver_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("index");

    QTest::newRow("just below 1 MiB") << LimitBytes - 1 << 0;
    QTest::newRow("exactly 1 MiB") << LimitBytes << 0;
    QTest::newRow("one byte more") << LimitBytes + 1 << 1;
    QTest::newRow("twice as much") << 2 * LimitBytes << 1;
}

void UtilLogFilesTest::rollOver()
{
    QFETCH(qint64, size);
    QFETCH(int, index);
    const QString name = StartLog();
    QVERIFY(Resize(name, size));
    WriteLine(1);
    QCOMPARE(LogFolder::Names().size(), index + 1);
    QCOMPARE(LastLine(WithIndex(name, index)), ExpectedLine(1));
    if (index > 0) {
        QCOMPARE(SizeOf(name), size); // the old file is unchanged
        QCOMPARE(LogFolder::Lines(WithIndex(name, index)).size(), 1);
    }
}

void UtilLogFilesTest::lineThatFillsAFileStaysInIt()
{
    const QString name = StartLog();
    QVERIFY(Resize(name, LimitBytes - 3));
    WriteLine(1);
    QVERIFY(SizeOf(name) > LimitBytes);
    QCOMPARE(LastLine(name), ExpectedLine(1));
    QCOMPARE(LogFolder::Names(), QStringList{name});
    WriteLine(2);
    WriteLine(3);
    QCOMPARE(LogFolder::Names(), (QStringList{name, WithIndex(name, 1)}));
    QCOMPARE(LogFolder::Lines(WithIndex(name, 1)).size(), 2);
    QCOMPARE(LastLine(WithIndex(name, 1)), ExpectedLine(3));
}

void UtilLogFilesTest::nextFileExists_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("indexOfTheSecondLine");

    QTest::newRow("empty") << qint64(0) << 1;
    QTest::newRow("with lines of its own") << qint64(20) << 1;
    QTest::newRow("exactly 1 MiB, which the line before pushes over the limit") << LimitBytes << 2;
    QTest::newRow("full") << LimitBytes + 1 << 2;
}

// An existing next file is continued, and gets a line even if it is full: only the current file's size counts.
void UtilLogFilesTest::nextFileExists()
{
    QFETCH(qint64, size);
    QFETCH(int, indexOfTheSecondLine);
    const QString name = StartLog();
    const QString next = WithIndex(name, 1);
    QVERIFY(Resize(name, LimitBytes + 1));
    PrinterFolder::WriteFile(LogFolder::Path(next), QByteArray());
    QVERIFY(Resize(next, size));
    WriteLine(1);
    QCOMPARE(LogFolder::Names(), (QStringList{name, next}));
    QCOMPARE(LastLine(next), ExpectedLine(1));
    QCOMPARE(LogFolder::Lines(next).size(), size + 1); // its old content is kept
    WriteLine(2);
    QCOMPARE(LogFolder::Names().size(), indexOfTheSecondLine + 1);
    QCOMPARE(LastLine(WithIndex(name, indexOfTheSecondLine)), ExpectedLine(2));
}

void UtilLogFilesTest::currentFileVanishes_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<qint64>("size");

    QTest::newRow("the first") << 0 << qint64(20);
    QTest::newRow("the first, full") << 0 << LimitBytes;
    QTest::newRow("the second") << 1 << qint64(20);
    QTest::newRow("the second, full") << 1 << LimitBytes;
}

// The next line creates the file again under the same name.
void UtilLogFilesTest::currentFileVanishes()
{
    QFETCH(int, index);
    QFETCH(qint64, size);
    const QString name = StartLog();
    if (index > 0) {
        QVERIFY(Resize(name, LimitBytes + 1));
        WriteLine(1);
    }
    const QString current = WithIndex(name, index);
    QVERIFY(Resize(current, size));
    WriteLine(2);
    QVERIFY(SizeOf(current) > size);
    QVERIFY(QFile::remove(LogFolder::Path(current)));
    WriteLine(3);
    QVERIFY(QFile::exists(LogFolder::Path(current)));
    QCOMPARE(LogFolder::Names().size(), index + 1);
    QCOMPARE(LogFolder::Lines(current).size(), 1);
    QCOMPARE(LastLine(current), ExpectedLine(3));
}

void UtilLogFilesTest::indexGrowsWithoutBound()
{
    const QString name = StartLog();
    for (int index = 0; index < 12; ++index) {
        QVERIFY(Resize(WithIndex(name, index), LimitBytes + 1));
        WriteLine(index);
        QVERIFY(QFile::exists(LogFolder::Path(WithIndex(name, index + 1))));
    }
    // No file is ever deleted.
    QCOMPARE(LogFolder::Names().size(), 13);
}

// Many rounds, because the threads must meet at the same moment.
void UtilLogFilesTest::rollOverHappensOnceAmongThreads()
{
    constexpr int threadCount = 4;
    constexpr int linesPerThread = 5;
    const QString name = StartLog();
    for (int round = 0; round < 50; ++round) {
        QVERIFY(QFile::resize(LogFolder::Path(WithIndex(name, round)), LimitBytes + 1));
        std::atomic<int> waiting{threadCount};
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int thread = 0; thread < threadCount; ++thread) {
            threads.emplace_back([&waiting] {
                for (--waiting; waiting > 0;) {
                    std::this_thread::yield();
                }
                for (int line = 0; line < linesPerThread; ++line) {
                    WriteLine(line);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        QCOMPARE(LogFolder::Names().size(), round + 2);
        QCOMPARE(LogFolder::Lines(WithIndex(name, round + 1)).size(), threadCount * linesPerThread);
    }
}

void UtilLogFilesTest::switchingOnTwiceWithinASecond()
{
    QString second;
    do {
        PrinterFolder::Remove();
        second = SecondText();
        StartLog();
        StartLog();
    } while (SecondText() != second); // repeat if a second ended meanwhile
    QCOMPARE(LogFolder::Names().size(), 1);
    QCOMPARE(LogFolder::Lines().size(), 2);
}

void UtilLogFilesTest::switchingOnLaterStartsAnotherFile()
{
    const QString first = StartLog();
    const QString second = SecondText();
    QTRY_VERIFY(SecondText() > second);
    SetLogEnable(true);
    WriteLine(1);
    QCOMPARE(LogFolder::Names().size(), 2);
    QCOMPARE(LogFolder::Names().constFirst(), first);
    QVERIFY(LogFolder::Names().constLast().endsWith(QStringLiteral("_0.log")));
}

void UtilLogFilesTest::switchingOnStartsAtIndexZero()
{
    const QString name = StartLog();
    QVERIFY(Resize(name, LimitBytes + 1));
    WriteLine(1);
    QCOMPARE(LogFolder::Names().size(), 2);
    PrinterFolder::Remove();
    const QString next = StartLog();
    QVERIFY2(next.endsWith(QStringLiteral("_0.log")), qPrintable(next));
}

// A file is in the place of the folder, which stops even root.
void UtilLogFilesTest::folderThatCannotBeMade()
{
    const QString folder = QStringLiteral("/opt/tolmar/tolmar-printer-q727/tool");
    QVERIFY(QDir().mkpath(QStringLiteral("/opt/tolmar/tolmar-printer-q727")));
    PrinterFolder::WriteFile(folder, "in the way");
    SetLogEnable(true);
    WriteLine(1);
    QCOMPARE(PrinterFolder::ReadFile(folder), QByteArray("in the way"));

    // The next line tries again.
    QVERIFY(QFile::remove(folder));
    QVERIFY(QDir().mkpath(folder));
    WriteLine(2);
    QCOMPARE(LogFolder::Lines().size(), 1);
    QCOMPARE(LastLine(LogFolder::Names().value(0)), ExpectedLine(2));
}

void UtilLogFilesTest::folderThatCannotBeWritten()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    const QString folder = QString::fromLatin1(PrinterFolder::ToolDirectory);
    SetLogEnable(true);
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    WriteLine(1);
    QCOMPARE(LogFolder::Names(), QStringList());
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    WriteLine(2);
    QCOMPARE(LogFolder::Lines().size(), 1);
    QCOMPARE(LastLine(LogFolder::Names().value(0)), ExpectedLine(2));
}

void UtilLogFilesTest::folderThatVanishes()
{
    StartLog();
    PrinterFolder::Remove();
    WriteLine(1);
    // Only switching on creates the folder.
    QVERIFY(!QFile::exists(QString::fromLatin1(PrinterFolder::ToolDirectory)));
}

QTEST_GUILESS_MAIN(UtilLogFilesTest)
#include "tst_utillog_files.moc"
