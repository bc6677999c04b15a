// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests the real program on a desktop.

#include "AssistantProcess.h"
#include "DesktopMessages.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QDir>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QtTest>

namespace {

constexpr int ManyPrinters = 50;
// A stop takes one slice of half a second. The rest is a margin for a busy machine.
constexpr qint64 StopLimitMs = 1500;
// The window waits this long for a thread that does not stop.
constexpr qint64 HangingThreadMs = 1000;
constexpr int SteadySeconds = 4;
constexpr double MsPerSecond = 1000.0;

QString Title()
{
    return QStringLiteral("拓玛激光打印助手");
}

bool IsWindowVisible()
{
    return !VisibleWindows(Title()).isEmpty();
}

void WritePrinters(int count)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("Prn%1").arg(i);
        const int networkType = 2;
        printers.append(PrinterFolder::Printer(name, QStringLiteral("127.0.0.1"), QStringLiteral("socket://127.0.0.1"),
                                               i % 2 == 0 ? CONNECT_TYPE_USB : networkType));
        PrinterFolder::WriteStatusFile(name, StandardBytes(RawReady, 0, {}, {TonerLow}));
    }
    PrinterFolder::WritePrinterList(printers);
}

// Every printer has a warning, whose message shows that the status was read.
bool AreAllAnnounced(int count)
{
    return QTest::qWaitFor([count]() { return DesktopMessages().size() == count; }, 15000);
}

struct TracedCall
{
    double time = 0; // seconds since 1970
    QString text;
};

// Parses strace's lines: process, time, call.
QVector<TracedCall> TracedCalls(const QString& path)
{
    QVector<TracedCall> calls;
    const QStringList lines = QString::fromUtf8(PrinterFolder::ReadFile(path)).split(QLatin1Char('\n'));
    const QRegularExpression pattern(QStringLiteral(R"(^\d+ +(\d+\.\d+) (.*)$)"));
    for (const QString& line : lines) {
        const QRegularExpressionMatch match = pattern.match(line);
        if (match.hasMatch()) {
            calls.append({match.captured(1).toDouble(), match.captured(2)});
        }
    }
    return calls;
}

double Now()
{
    return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / MsPerSecond;
}

} // namespace

class AssistantTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void startsHidden_data();
    void startsHidden();
    void windowOfFixedSize();
    void stopsAtOnce();
    void stopsInSpiteOfAHangingCommand();
    void sideEffects();
    void steadyState();
};

void AssistantTest::init()
{
    PrinterFolder::Create();
    ForgetDesktopMessages();
    QTRY_VERIFY(!IsWindowVisible());
}

void AssistantTest::startsHidden_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("isHidden");
    const QString hide = QStringLiteral("-hide");
    QTest::newRow("no argument") << QStringList() << false;
    QTest::newRow("-hide") << QStringList{hide} << true;
    QTest::newRow("-HIDE") << QStringList{QStringLiteral("-HIDE")} << true;
    QTest::newRow("-Hide") << QStringList{QStringLiteral("-Hide")} << true;
    QTest::newRow("-hide first") << QStringList{hide, QStringLiteral("x"), QString()} << true;
    QTest::newRow("-hide last") << QStringList{QStringLiteral("x"), QStringLiteral("-y"), hide} << true;
    QTest::newRow("-hidden") << QStringList{QStringLiteral("-hidden")} << false;
    QTest::newRow("--hide") << QStringList{QStringLiteral("--hide")} << false;
    QTest::newRow("hide") << QStringList{QStringLiteral("hide")} << false;
    QTest::newRow("-hide=1") << QStringList{QStringLiteral("-hide=1")} << false;
    QTest::newRow("with a blank") << QStringList{QStringLiteral("-hide ")} << false;
    QTest::newRow("empty") << QStringList{QString()} << false;
}

void AssistantTest::startsHidden()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, isHidden);
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray(arguments));
    if (isHidden) {
        QVERIFY(!assistant.menu().isEmpty()); // the event loop is running
        QVERIFY(!IsEverVisible(Title()));
    } else {
        QTRY_VERIFY(IsWindowVisible());
    }
    QVERIFY(assistant.hasTrayItem());
    QVERIFY(assistant.isRunning());
}

void AssistantTest::windowOfFixedSize()
{
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
    QTRY_VERIFY(IsWindowVisible());
    const QString window = VisibleWindows(Title()).constFirst();
    const auto properties = [&window]() {
        return OutputOf(QStringLiteral("xprop"),
                        {QStringLiteral("-id"), window, QStringLiteral("WM_NORMAL_HINTS"),
                         QStringLiteral("_NET_WM_ALLOWED_ACTIONS")});
    };
    QTRY_VERIFY(properties().contains(QStringLiteral("_NET_WM_ACTION_CLOSE")));
    QVERIFY(!properties().contains(QStringLiteral("_NET_WM_ACTION_MAXIMIZE")));
    QVERIFY(properties().contains(QStringLiteral("minimum size: 600 by 300")));
    QVERIFY(properties().contains(QStringLiteral("maximum size: 600 by 300")));
}

void AssistantTest::stopsAtOnce()
{
    WritePrinters(ManyPrinters);
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
    QVERIFY(AreAllAnnounced(ManyPrinters));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(assistant.chooseFromMenu(QStringLiteral("退出")));
    QCOMPARE(assistant.waitForExit(), 0);
    const qint64 elapsedMs = timer.elapsed();
    qInfo("with %d printers the program ended in %lld ms", ManyPrinters, elapsedMs);
    QVERIFY2(elapsedMs < StopLimitMs, qPrintable(QString::number(elapsedMs)));
}

void AssistantTest::stopsInSpiteOfAHangingCommand()
{
    const FakeCommand cancel(QStringLiteral("cancel"), QStringLiteral("exec sleep 20"));
    WritePrinters(2);
    PrinterFolder::WriteStatusFile(QStringLiteral("Prn1"), StandardBytes(RawCancelling));
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
    QTRY_COMPARE(cancel.calls(), (QList<QStringList>{{QStringLiteral("Prn1")}}));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(assistant.chooseFromMenu(QStringLiteral("退出")));
    QCOMPARE(assistant.waitForExit(), 0);
    const qint64 elapsedMs = timer.elapsed();
    qInfo("with a hanging command the program ended in %lld ms", elapsedMs);
    QVERIFY2(elapsedMs < HangingThreadMs + StopLimitMs, qPrintable(QString::number(elapsedMs)));
}

void AssistantTest::sideEffects()
{
    const FakeCommand lpstat(QStringLiteral("lpstat"));
    const FakeCommand cancel(QStringLiteral("cancel"));
    const FakeCommand chmodCommand(QStringLiteral("chmod"));
    const FakeCommand ps(QStringLiteral("ps"));
    WritePrinters(2);
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray({QStringLiteral("-hide")}));
    QVERIFY(AreAllAnnounced(2));
    for (const char* table : {"/proc/net/udp", "/proc/net/udp6"}) {
        const QByteArray sockets = PrinterFolder::ReadFile(QString::fromLatin1(table));
        QCOMPARE(sockets.count('\n'), 1); // only the heading
    }
    QVERIFY(assistant.chooseFromMenu(QStringLiteral("退出")));
    QCOMPARE(assistant.waitForExit(), 0);
    for (const FakeCommand* command : {&lpstat, &cancel, &chmodCommand, &ps}) {
        QCOMPARE(command->calls(), QList<QStringList>());
    }
    const QDir folder(QString::fromLatin1(PrinterFolder::ToolDirectory));
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

// While nothing changes, a printer costs one stat call a second.
void AssistantTest::steadyState()
{
    if (QStandardPaths::findExecutable(QStringLiteral("strace")).isEmpty()) {
        QSKIP("strace is not installed");
    }
    const QString trace = QStringLiteral("/tmp/trace");
    WritePrinters(2);
    AssistantProcess assistant;
    assistant.traceTo(trace);
    QVERIFY(assistant.startIntoTray({QStringLiteral("-hide")}));
    QVERIFY(AreAllAnnounced(2));
    const double begin = Now();
    QTest::qWait(SteadySeconds * static_cast<int>(MsPerSecond));
    const double end = Now();
    QVERIFY(assistant.chooseFromMenu(QStringLiteral("退出")));
    QCOMPARE(assistant.waitForExit(), 0);

    QMap<QString, int> statCounts;
    int programStarts = 0;
    const QRegularExpression statusFile(QStringLiteral(R"(^(\w+)\(.*\b(Prn\d)\.dat)"));
    const QVector<TracedCall> calls = TracedCalls(trace);
    for (const TracedCall& call : calls) {
        QVERIFY2(!call.text.contains(QStringLiteral("AF_INET")), qPrintable(call.text));
        programStarts += call.text.startsWith(QStringLiteral("execve(")) ? 1 : 0;
        const QRegularExpressionMatch match = statusFile.match(call.text);
        if (match.hasMatch() && call.time >= begin && call.time < end) {
            QVERIFY2(match.captured(1).contains(QStringLiteral("stat")), qPrintable(call.text));
            ++statCounts[match.captured(2)];
        }
    }
    QCOMPARE(programStarts, 1); // the program's own start
    QCOMPARE(statCounts.keys(), (QStringList{QStringLiteral("Prn0"), QStringLiteral("Prn1")}));
    for (const int count : qAsConst(statCounts)) {
        qInfo("%d stats in %d s", count, SteadySeconds);
        QVERIFY(count >= SteadySeconds / 2);
        QVERIFY(count <= static_cast<int>(end - begin) + 1);
    }
}

QTEST_GUILESS_MAIN(AssistantTest)
#include "tst_assistant.moc"
