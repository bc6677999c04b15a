// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/ShellCommand.h"
#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"

#include <QtTest>

#include <sys/wait.h>

class ShellCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void runsTheCommand();
    void returnsTheWaitStatus_data();
    void returnsTheWaitStatus();
    void waitsForTheEnd();
    void argumentsReachAShell();
    void commandLength_data();
    void commandLength();
};

void ShellCommandTest::runsTheCommand()
{
    const FakeCommand record(QStringLiteral("record"));
    QCOMPARE(RunShellCommand("record %s-%d", "打印机", 7), 0);
    QCOMPARE(record.calls(), QList<QStringList>{QStringList{QStringLiteral("打印机-7")}});
}

void ShellCommandTest::returnsTheWaitStatus_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<int>("exitCode");

    QTest::newRow("success") << "exit 0" << 0;
    QTest::newRow("failure") << "exit 3" << 3;
    QTest::newRow("greatest code") << "exit 255" << 255;
}

void ShellCommandTest::returnsTheWaitStatus()
{
    QFETCH(QString, body);
    const FakeCommand record(QStringLiteral("record"), body);
    const int status = RunShellCommand("record");
    QVERIFY(WIFEXITED(status));
    QTEST(WEXITSTATUS(status), "exitCode");
}

void ShellCommandTest::waitsForTheEnd()
{
    const FakeCommand record(QStringLiteral("record"), QStringLiteral("sleep 0.5"));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(RunShellCommand("record"), 0);
    QVERIFY(timer.elapsed() >= 500);
}

void ShellCommandTest::argumentsReachAShell()
{
    const FakeCommand record(QStringLiteral("record"));
    QCOMPARE(RunShellCommand("record %s", "one  two 'three four'"), 0);
    QCOMPARE(
        record.calls(),
        (QList<QStringList>{QStringList{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three four")}}));
}

void ShellCommandTest::commandLength_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isRun");

    QTest::newRow("254 bytes") << 254 << true;
    QTest::newRow("255 bytes") << 255 << true;
    QTest::newRow("256 bytes") << 256 << false;
    QTest::newRow("257 bytes") << 257 << false;
    QTest::newRow("100000 bytes") << 100000 << false;
}

void ShellCommandTest::commandLength()
{
    QFETCH(int, bytes);
    QFETCH(bool, isRun);
    PrinterFolder::Create();
    SetLogEnable(true);
    const FakeCommand record(QStringLiteral("record"));
    const QByteArray argument(bytes - static_cast<int>(sizeof "record ") + 1, 'x');
    QCOMPARE(RunShellCommand("record %s", argument.constData()), isRun ? 0 : -1);
    QCOMPARE(record.calls().size(), isRun ? 1 : 0);
    if (isRun) {
        QCOMPARE(record.calls().constFirst(), QStringList{QString::fromLatin1(argument)});
        QCOMPARE(LogFolder::Names(), QStringList());
    } else {
        QCOMPARE(LogFolder::Lines().size(), 1);
        const QByteArray line = LogFolder::WithoutTime(LogFolder::Lines().constFirst());
        QVERIFY2(line.endsWith("RunShellCommand) command refused: " + QByteArray::number(bytes) +
                               " bytes do not fit into 255"),
                 line.constData());
    }
    SetLogEnable(false);
}

QTEST_GUILESS_MAIN(ShellCommandTest)
#include "tst_shellcommand.moc"
