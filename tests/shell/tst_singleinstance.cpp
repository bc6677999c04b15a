// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests the real program beside others of its name.

#include "AssistantProcess.h"
#include "PrinterFolder.h"

#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QString Title()
{
    return QStringLiteral("拓玛激光打印助手");
}

QString CopyOfProgram(const QString& program, const QString& name)
{
    const QString folder = QStringLiteral("/tmp/copies/");
    QDir().mkpath(folder);
    QFile::remove(folder + name);
    return QFile::copy(program, folder + name) ? folder + name : QString();
}

QString CopyOfAssistant(const QString& name)
{
    return CopyOfProgram(QStringLiteral(ASSISTANT_PROGRAM), name);
}

// The box has the window's title but is a dialog, and its program has no tray item.
bool ShowsBoxAlone(const AssistantProcess& copy)
{
    const bool hasWindow = QTest::qWaitFor([]() { return VisibleWindows(Title()).size() == 1; }, 10000);
    if (!hasWindow || !copy.isRunning() || copy.hasTrayItem()) {
        return false;
    }
    const QString type =
        OutputOf(QStringLiteral("xprop"),
                 {QStringLiteral("-id"), VisibleWindows(Title()).constFirst(), QStringLiteral("_NET_WM_WINDOW_TYPE")});
    return type.contains(QStringLiteral("_NET_WM_WINDOW_TYPE_DIALOG"));
}

// A screenshot of the only window with the program's title, without its frame.
QImage Picture()
{
    const QStringList windows = VisibleWindows(Title());
    if (windows.size() != 1) {
        return {};
    }
    return QGuiApplication::primaryScreen()->grabWindow(windows.constFirst().toULongLong()).toImage();
}

// A /proc that contains only this process itself. Users cannot list it; root can, but finds no other process.
QStringList InUnreadableProcessTable(const QString& program)
{
    return {QStringLiteral("--die-with-parent"),
            QStringLiteral("--dev-bind"),
            QStringLiteral("/"),
            QStringLiteral("/"),
            QStringLiteral("--dir"),
            QStringLiteral("/tmp/proc"),
            QStringLiteral("--bind"),
            QStringLiteral("/proc"),
            QStringLiteral("/tmp/proc"),
            QStringLiteral("--tmpfs"),
            QStringLiteral("/proc"),
            QStringLiteral("--symlink"),
            QStringLiteral("/tmp/proc/self"),
            QStringLiteral("/proc/self"),
            QStringLiteral("--chmod"),
            QStringLiteral("0311"),
            QStringLiteral("/proc"),
            QStringLiteral("--"),
            program};
}

} // namespace

class SingleInstanceTest : public QObject
{
    Q_OBJECT

public:
    // Called by QtTest before there is an application. This test's own message box must not load OpenGL either.
    static void initMain()
    {
        QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    }

private slots:
    void init();

    void looksOfTheBox();
    void boxClosedByItsTitleBar();
    void namesAreCutTo15Characters();
    void otherProcesses_data();
    void otherProcesses();
    void longerNameElsewhere();
    void zombie();
    void toolDirectory();
    void toolDirectoryCannotBeMade();
    void secondCopyMakesTheToolDirectory();
    void processTableCannotBeRead();
    void startedAtTheSameMoment();
};

void SingleInstanceTest::init()
{
    PrinterFolder::Create();
    QTRY_COMPARE(VisibleWindows(Title()), QStringList());
}

// Compares icon, text and button pixel by pixel.
void SingleInstanceTest::looksOfTheBox()
{
    AssistantProcess first;
    QVERIFY(first.startIntoTray({QStringLiteral("-hide")}));
    QImage picture;
    {
        AssistantProcess second;
        QVERIFY(second.start());
        QVERIFY(ShowsBoxAlone(second));
        const auto hasSettled = [&picture]() {
            const QImage last = picture;
            picture = Picture();
            return !picture.isNull() && picture == last;
        };
        QVERIFY(QTest::qWaitFor(hasSettled, 10000));
    }
    QTRY_COMPARE(VisibleWindows(Title()), QStringList());
    QMessageBox expected(QMessageBox::Information, Title(), Title() + QStringLiteral("已经处于运行中！"),
                         QMessageBox::Ok);
    expected.button(QMessageBox::Ok)->setText(QStringLiteral("确  定"));
    expected.show();
    QVERIFY(QTest::qWaitForWindowActive(&expected));
    QTRY_COMPARE(Picture(), picture);
}

void SingleInstanceTest::boxClosedByItsTitleBar()
{
    AssistantProcess first;
    QVERIFY(first.startIntoTray({QStringLiteral("-hide")}));
    AssistantProcess second;
    QVERIFY(second.start());
    QVERIFY(ShowsBoxAlone(second));
    QVERIFY(PressUntilGone(Title(), QStringLiteral("alt+F4")));
    QCOMPARE(second.waitForExit(), 0);
    QVERIFY(first.isRunning());
}

void SingleInstanceTest::namesAreCutTo15Characters()
{
    AssistantProcess first(CopyOfAssistant(QStringLiteral("FifteenLettersXAndMore")));
    QVERIFY(first.startIntoTray({QStringLiteral("-hide")}));
    AssistantProcess second(CopyOfAssistant(QStringLiteral("FifteenLettersXAndOthers")));
    QVERIFY(second.start());
    QVERIFY(ShowsBoxAlone(second));
    AssistantProcess third(CopyOfAssistant(QStringLiteral("FifteenLettersYAndMore")));
    QVERIFY(third.startIntoTray({QStringLiteral("-hide")}));
}

void SingleInstanceTest::otherProcesses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("counts");
    QTest::newRow("same name") << QStringLiteral("BrelPrinterTool") << true;
    QTest::newRow("another case") << QStringLiteral("bRELpRINTERtOOL") << true;
    QTest::newRow("same first 15 characters") << QStringLiteral("BrelPrinterTool-x") << true;
    QTest::newRow("beginning alone") << QStringLiteral("BrelPrinterToo") << false;
    QTest::newRow("end alone") << QStringLiteral("xBrelPrinterTool") << false;
    QTest::newRow("with a blank") << QStringLiteral("Brel Printer") << false;
}

void SingleInstanceTest::otherProcesses()
{
    QFETCH(const QString, name);
    QFETCH(const bool, counts);
    QProcess sleeper;
    sleeper.start(CopyOfProgram(QStringLiteral("/bin/sleep"), name), {QStringLiteral("60")});
    QVERIFY(sleeper.waitForStarted());
    AssistantProcess assistant;
    if (counts) {
        QVERIFY(assistant.start());
        QVERIFY(ShowsBoxAlone(assistant));
    } else {
        QVERIFY(assistant.startIntoTray());
    }
    sleeper.kill();
    sleeper.waitForFinished();
}

// A name among a command's arguments is not a process name.
void SingleInstanceTest::longerNameElsewhere()
{
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("sleep 60; :"), QStringLiteral("BrelPrinterTool")});
    QVERIFY(shell.waitForStarted());
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
    shell.kill();
    shell.waitForFinished();
}

void SingleInstanceTest::zombie()
{
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_NAME, "BrelPrinterTool");
        _exit(0);
    }
    siginfo_t information = {};
    QCOMPARE(waitid(P_PID, static_cast<id_t>(child), &information, WEXITED | WNOWAIT), 0); // the child stays a zombie
    {
        AssistantProcess assistant;
        QVERIFY(assistant.start());
        QVERIFY(ShowsBoxAlone(assistant));
    }
    QCOMPARE(waitpid(child, nullptr, 0), child);
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
}

void SingleInstanceTest::toolDirectory()
{
    const QDir folder(QString::fromLatin1(PrinterFolder::ToolDirectory));
    PrinterFolder::Remove();
    {
        AssistantProcess assistant;
        QVERIFY(assistant.startIntoTray());
        QVERIFY(folder.exists());
        QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    }
    const QString list = folder.filePath(QStringLiteral("pslist.tmp"));
    {
        PrinterFolder::WriteFile(list, "1 ? 00:00:00 BrelPrinterTool\n");
        AssistantProcess assistant;
        QVERIFY(assistant.startIntoTray());
        QVERIFY(!QFile::exists(list));
    }
    const QString target = QStringLiteral("/opt/target");
    PrinterFolder::WriteFile(target, "kept");
    QVERIFY(QFile::link(target, list));
    AssistantProcess assistant;
    QVERIFY(assistant.startIntoTray());
    QVERIFY(!QFileInfo(list).isSymLink());
    QCOMPARE(PrinterFolder::ReadFile(target), QByteArray("kept"));
}

// A file in the folder's place stops even root.
void SingleInstanceTest::toolDirectoryCannotBeMade()
{
    PrinterFolder::Remove();
    PrinterFolder::WriteFile(QStringLiteral("/opt/tolmar/tolmar-printer-q727"), "");
    AssistantProcess assistant;
    const bool isStarted = assistant.startIntoTray();
    const bool isVisible = QTest::qWaitFor([]() { return VisibleWindows(Title()).size() == 1; }, 15000);
    QVERIFY(QFile::remove(QStringLiteral("/opt/tolmar/tolmar-printer-q727")));
    QVERIFY(isStarted);
    QVERIFY(isVisible);
}

void SingleInstanceTest::secondCopyMakesTheToolDirectory()
{
    AssistantProcess first;
    QVERIFY(first.startIntoTray({QStringLiteral("-hide")}));
    PrinterFolder::Remove();
    AssistantProcess second;
    QVERIFY(second.start());
    QVERIFY(ShowsBoxAlone(second));
    const QDir folder(QString::fromLatin1(PrinterFolder::ToolDirectory));
    QVERIFY(folder.exists());
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

// A copy that cannot read the process table starts.
void SingleInstanceTest::processTableCannotBeRead()
{
    AssistantProcess first;
    QVERIFY(first.startIntoTray({QStringLiteral("-hide")}));
    AssistantProcess second(QStringLiteral("bwrap"));
    QVERIFY(second.startIntoTray(InUnreadableProcessTable(QStringLiteral(ASSISTANT_PROGRAM))));
    QTRY_COMPARE(VisibleWindows(Title()).size(), 1);
    QVERIFY(first.isRunning());
    QVERIFY(first.hasTrayItem());
}

// Both copies may find each other and give up, but never do both go on.
void SingleInstanceTest::startedAtTheSameMoment()
{
    for (int round = 0; round < 5; ++round) {
        AssistantProcess first;
        AssistantProcess second;
        QVERIFY(first.start());
        QVERIFY(second.start());
        // The window of a copy that goes on and the box of a copy that gives up have the same title.
        QTRY_COMPARE_WITH_TIMEOUT(VisibleWindows(Title()).size(), 2, 15000);
        QVERIFY(first.isRunning());
        QVERIFY(second.isRunning());
        QVERIFY(!first.hasTrayItem() || !second.hasTrayItem());
        QVERIFY(!QFile::exists(QString::fromLatin1(PrinterFolder::ToolDirectory) + QStringLiteral("/pslist.tmp")));
    }
}

QTEST_MAIN(SingleInstanceTest)
#include "tst_singleinstance.moc"
