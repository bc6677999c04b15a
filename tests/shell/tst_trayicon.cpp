// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "PrinterFolder.h"
#include "TestWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QTimer>
#include <QtTest>

#include <unistd.h>

namespace {

constexpr char FirmwareTool[] = "/opt/tolmar/tolmar-printer-q727/bin/tolmarQ727FW";
constexpr char FirmwareToolRecord[] = "/tmp/firmware-tool-calls";

// Creates a tool that records its number of arguments and its session at each start.
void MakeFirmwareTool()
{
    QVERIFY(QDir().mkpath(QStringLiteral("/opt/tolmar/tolmar-printer-q727/bin")));
    const QString path = QString::fromLatin1(FirmwareTool);
    PrinterFolder::WriteFile(path,
                             "#!/bin/sh\n"
                             "echo $# $(ps -o sid= -p $$) >>/tmp/firmware-tool-calls\n");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

QStringList FirmwareToolCalls()
{
    QFile record(QString::fromLatin1(FirmwareToolRecord));
    if (!record.open(QIODevice::ReadOnly)) {
        return {};
    }
    QStringList calls = QString::fromLatin1(record.readAll()).split(QLatin1Char('\n'));
    calls.removeLast(); // the rest after the last line
    return calls;
}

QStringList Texts(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions) {
        texts.append(action->text());
    }
    return texts;
}

// The windows in stacking order, the uppermost last.
QByteArray StackedWindows()
{
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST_STACKING")});
    xprop.waitForFinished();
    return xprop.readAllStandardOutput();
}

// Records the order in which widgets hide, and whether the icon was in the tray then.
class HideRecorder : public QObject
{
public:
    explicit HideRecorder(const QSystemTrayIcon& icon)
        : m_icon(icon)
    {
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) {
            hidden.append(watched);
            iconWasVisible.append(m_icon.isVisible());
        }
        return QObject::eventFilter(watched, event);
    }

    QList<QObject*> hidden;
    QList<bool> iconWasVisible;

private:
    const QSystemTrayIcon& m_icon;
};

} // namespace

class TrayIconTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void icon();
    void menu();
    void everythingBelongsToTheWindow();
    void logLines();
    void activation_data();
    void activation();
    void activationSignalIsConnected();
    void showRestores();
    void showLeavesAnActiveWindowAlone();
    void showDoesNotRaise();
    void settingsAreShownModeless();
    void settingsAreNotRaised();
    void firmwareTool();
    void firmwareToolTwice();
    void firmwareToolMissing();
    void exitSequence();
    void exitDiscardsSettings();

private:
    static QAction& entry(const TestWindow& window, int index);
};

void TrayIconTest::init()
{
    PrinterFolder::Create();
    QFile::remove(QString::fromLatin1(FirmwareToolRecord));
}

QAction& TrayIconTest::entry(const TestWindow& window, int index)
{
    return *window.trayIcon().contextMenu()->actions().at(index);
}

void TrayIconTest::icon()
{
    QVERIFY(QSystemTrayIcon::isSystemTrayAvailable());
    const TestWindow window;
    QVERIFY(window.trayIcon().isVisible());
    QCOMPARE(window.trayIcon().toolTip(), QStringLiteral("拓玛激光打印助手"));
    const QSize size(22, 22);
    QCOMPARE(window.trayIcon().icon().pixmap(size).toImage(),
             QIcon(QStringLiteral(":/Icon/Resource/Tolmar.png")).pixmap(size).toImage());
}

void TrayIconTest::menu()
{
    const TestWindow window;
    const QMenu* menu = window.trayIcon().contextMenu();
    QVERIFY(menu != nullptr);
    QCOMPARE(Texts(menu->actions()),
             (QStringList{QStringLiteral("显示主界面"), QStringLiteral("打印机更新助手"), QStringLiteral("设置"),
                          QStringLiteral("退出")}));
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
        QVERIFY(!action->isSeparator());
        QVERIFY(!action->isCheckable());
        QVERIFY(action->icon().isNull());
        QVERIFY(action->isEnabled());
    }
}

void TrayIconTest::everythingBelongsToTheWindow()
{
    const TestWindow window;
    QCOMPARE(window.trayIcon().parent(), &window);
    QCOMPARE(window.trayIcon().contextMenu()->parent(), &window);
    const QList<QAction*> actions = window.trayIcon().contextMenu()->actions();
    for (const QAction* action : actions) {
        QCOMPARE(action->parent(), &window);
    }
}

// The log is off during a real start, but these steps can be repeated.
void TrayIconTest::logLines()
{
    TestWindow window;
    SetLogEnable(true);
    window.InitDeviceTable();
    window.InitTrayIcon();
    SetLogEnable(false);
    const QDir folder(QString::fromLatin1(PrinterFolder::ToolDirectory));
    QCOMPARE(folder.entryList(QDir::Files).size(), 1);
    const QString log =
        QString::fromUtf8(PrinterFolder::ReadFile(folder.filePath(folder.entryList(QDir::Files).constFirst())));
    QStringList steps;
    const QRegularExpression line(QStringLiteral(R"(\(brelprintertoolwidget@\d+ (\w+)\) (.*)\n)"));
    for (auto match = line.globalMatch(log); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        steps.append(found.captured(1) + QLatin1Char(':') + found.captured(2));
    }
    QCOMPARE(steps,
             (QStringList{QStringLiteral("InitDeviceTable:InitDeviceTable start"),
                          QStringLiteral("InitDeviceTable:InitDeviceTable end"),
                          QStringLiteral("InitTrayIcon:InitTrayIcon start"),
                          QStringLiteral("InitTrayIcon:InitTrayIcon end")}));
}

void TrayIconTest::activation_data()
{
    QTest::addColumn<int>("reason");
    QTest::addColumn<bool>("shows");
    QTest::newRow("single click") << int(QSystemTrayIcon::Trigger) << true;
    QTest::newRow("double click") << int(QSystemTrayIcon::DoubleClick) << false;
    QTest::newRow("middle click") << int(QSystemTrayIcon::MiddleClick) << false;
    QTest::newRow("context menu") << int(QSystemTrayIcon::Context) << false;
    QTest::newRow("unknown") << int(QSystemTrayIcon::Unknown) << false;
}

void TrayIconTest::activation()
{
    QFETCH(const int, reason);
    QFETCH(const bool, shows);
    TestWindow window;
    window.SlotActivatedTrayIcon(static_cast<QSystemTrayIcon::ActivationReason>(reason));
    QCOMPARE(window.isVisible(), shows);
}

void TrayIconTest::activationSignalIsConnected()
{
    TestWindow window;
    emit window.trayIcon().activated(QSystemTrayIcon::DoubleClick);
    QVERIFY(!window.isVisible());
    emit window.trayIcon().activated(QSystemTrayIcon::Trigger);
    QVERIFY(window.isVisible());
}

void TrayIconTest::showRestores()
{
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.showMinimized();
    QTRY_VERIFY(!window.isActiveWindow());
    QVERIFY(window.isMinimized());
    entry(window, 0).trigger();
    QVERIFY(!window.isMinimized());
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    window.hide();
    entry(window, 0).trigger();
    QVERIFY(window.isVisible());
}

void TrayIconTest::showLeavesAnActiveWindowAlone()
{
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(window.timesShown(), 1);
    window.SlotTrayActionShow();
    QCOMPARE(window.timesShown(), 1);
}

void TrayIconTest::showDoesNotRaise()
{
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QWidget other;
    other.setGeometry(window.geometry());
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    const QByteArray stacked = StackedWindows();
    window.SlotTrayActionShow();
    QCOMPARE(window.timesShown(), 2);
    QTest::qWait(200);
    QVERIFY(other.isActiveWindow());
    QCOMPARE(StackedWindows(), stacked);
}

void TrayIconTest::settingsAreShownModeless()
{
    const TestWindow window;
    QVERIFY(!window.settingsDialog().isVisible());
    entry(window, 2).trigger();
    QVERIFY(window.settingsDialog().isVisible());
    QVERIFY(!window.settingsDialog().isModal());
    QVERIFY(window.settingsDialog().parent() == nullptr);
    QVERIFY(!window.isVisible());
}

void TrayIconTest::settingsAreNotRaised()
{
    TestWindow window;
    window.SlotTrayActionSetting();
    QVERIFY(QTest::qWaitForWindowActive(&window.settingsDialog()));
    QWidget other;
    other.setGeometry(window.settingsDialog().geometry());
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    const QByteArray stacked = StackedWindows();
    window.SlotTrayActionSetting();
    QTest::qWait(200);
    QVERIFY(other.isActiveWindow());
    QCOMPARE(StackedWindows(), stacked);
}

void TrayIconTest::firmwareTool()
{
    MakeFirmwareTool();
    const TestWindow window;
    entry(window, 1).trigger();
    QTRY_COMPARE(FirmwareToolCalls().size(), 1);
    const QStringList call = FirmwareToolCalls().constFirst().split(QLatin1Char(' '));
    QCOMPARE(call.first(), QStringLiteral("0")); // no arguments
    // The tool is detached, in its own session, so that it outlives this program.
    QVERIFY(call.last().toInt() > 0);
    QVERIFY(call.last().toInt() != getsid(0));
}

void TrayIconTest::firmwareToolTwice()
{
    MakeFirmwareTool();
    TestWindow window;
    window.SlotTrayActionUpdateFW();
    window.SlotTrayActionUpdateFW();
    QTRY_COMPARE(FirmwareToolCalls().size(), 2);
}

void TrayIconTest::firmwareToolMissing()
{
    TestWindow window;
    window.SlotTrayActionUpdateFW();
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!window.isVisible());
    QVERIFY(window.trayIcon().isVisible());
}

void TrayIconTest::exitSequence()
{
    TestWindow window;
    window.show();
    window.SlotTrayActionSetting();
    HideRecorder hides(window.trayIcon());
    window.installEventFilter(&hides);
    window.settingsDialog().installEventFilter(&hides);
    bool allHiddenAtQuit = false;
    connect(&window, &BrelPrinterToolWidget::SgnThreadQuit, this, [&window, &allHiddenAtQuit]() {
        allHiddenAtQuit = !window.isVisible() && !window.settingsDialog().isVisible() && !window.trayIcon().isVisible();
    });
    const QSignalSpy threadQuit(&window, &BrelPrinterToolWidget::SgnThreadQuit);
    QTimer::singleShot(0, &window, [&window]() { entry(window, 3).trigger(); });
    QTimer::singleShot(10000, &window, []() { QCoreApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(threadQuit.size(), 1);
    QVERIFY(allHiddenAtQuit);
    QCOMPARE(hides.hidden, (QList<QObject*>{&window.settingsDialog(), &window}));
    QCOMPARE(hides.iconWasVisible, (QList<bool>{true, true}));
}

void TrayIconTest::exitDiscardsSettings()
{
    TestWindow window;
    window.SlotTrayActionSetting();
    auto* box = window.settingsDialog().findChild<QCheckBox*>(QStringLiteral("checkBoxAutoStart"));
    QVERIFY(!box->isChecked());
    box->setChecked(true);
    QTimer::singleShot(0, &window, &BrelPrinterToolWidget::SlotTrayActionExit);
    QTimer::singleShot(10000, &window, []() { QCoreApplication::exit(99); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!box->isChecked());
    QVERIFY(!QFile::exists(
        QStringLiteral("/opt/apps/tolmar-printer-q727/entries/autostart/tolmar-q727-tool-autostart.desktop")));
}

QTEST_MAIN(TrayIconTest)
#include "tst_trayicon.moc"
