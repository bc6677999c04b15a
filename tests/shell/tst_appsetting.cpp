// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"
#include "shell/AppSetting.h"
#include "ui_AppSetting.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QMetaMethod>
#include <QScreen>
#include <QtTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char EntryDirectory[] = "/opt/apps/tolmar-printer-q727/entries/autostart";
constexpr char EntryPath[] = "/opt/apps/tolmar-printer-q727/entries/autostart/tolmar-q727-tool-autostart.desktop";
constexpr char EntryContent[] = "[Desktop Entry]\nName=拓玛激光打印助手\nExec=BrelPrinterTool -hide\n";

struct ExpectedGeometry
{
    QRect window;
    QRect box;
    QRect ok;
    QRect cancel;
};

ExpectedGeometry GeometryOnThisDesktop()
{
    const QRect box(70, 60, 200, 25);
    const QRect ok(70, 250, 80, 25);
    const QRect cancel(250, 250, 80, 25);
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    if (desktop == QSize(1280, 800)) {
        return {{440, 250, 400, 300}, box, ok, cancel};
    }
    if (desktop == QSize(1920, 1080)) {
        return {{760, 390, 400, 300}, box, ok, cancel};
    }
    if (desktop == QSize(1921, 1080)) { // a scale of 1.0005, which truncation hides
        return {{760, 390, 400, 300}, box, ok, cancel};
    }
    if (desktop == QSize(2560, 1440)) {
        return {{1013, 520, 533, 400}, {93, 80, 266, 33}, {93, 333, 106, 33}, {333, 333, 106, 33}};
    }
    if (desktop == QSize(3840, 2160)) {
        return {{1520, 780, 800, 600}, {140, 120, 400, 50}, {140, 500, 160, 50}, {500, 500, 160, 50}};
    }
    if (desktop == QSize(3840, 1080)) { // two screens side by side
        return {{1520, 240, 800, 600}, {140, 120, 400, 50}, {140, 500, 160, 50}, {500, 500, 160, 50}};
    }
    qFatal("no geometry is known for a desktop of %d x %d pixels", desktop.width(), desktop.height());
}

QString SourcePath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/tolmar-q727-tool-autostart.desktop");
}

QString Entry()
{
    return QString::fromLatin1(EntryPath);
}

void MakeEntry(const QByteArray& content)
{
    QVERIFY(QDir().mkpath(QString::fromLatin1(EntryDirectory)));
    PrinterFolder::WriteFile(Entry(), content);
}

QCheckBox& Box(const AppSetting& dialog)
{
    return *dialog.findChild<QCheckBox*>(QStringLiteral("checkBoxAutoStart"));
}

QPushButton& OkButton(const AppSetting& dialog)
{
    return *dialog.findChild<QPushButton*>(QStringLiteral("pushButtonOK"));
}

QPushButton& CancelButton(const AppSetting& dialog)
{
    return *dialog.findChild<QPushButton*>(QStringLiteral("pushButtonCancel"));
}

void Click(QWidget& widget)
{
    QTest::mouseClick(&widget, Qt::LeftButton);
}

// A check box reacts to clicks on its mark and text only. They do not extend to its centre.
void ClickBox(const AppSetting& dialog)
{
    QCheckBox& box = Box(dialog);
    const int markX = 8;
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(markX, box.height() / 2));
}

// The state of the box and of the disk at the moment when the dialog hides.
class HideObserver : public QObject
{
public:
    explicit HideObserver(AppSetting& dialog)
        : m_dialog(dialog)
    {
        dialog.installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) {
            ++times;
            wasTicked = Box(m_dialog).isChecked();
            hadEntry = QFile::exists(Entry());
        }
        return QObject::eventFilter(watched, event);
    }

    int times = 0;
    bool wasTicked = false;
    bool hadEntry = false;

private:
    AppSetting& m_dialog;
};

} // namespace

class AppSettingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void form();
    void formKeepsObjectNames();
    void geometryAndTexts();
    void scaleControlDoesNotTestTheDesktop();
    void metaObjectOrder();
    void boxShowsTheEntry_data();
    void boxShowsTheEntry();
    void saveMakesTheEntry();
    void savePartlyCheckedMakesTheEntry();
    void saveKeepsAnExistingEntry();
    void saveRemovesTheEntry();
    void saveWithoutSourceMakesTheDirectory();
    void okSwitchesOff();
    void okSwitchesOn();
    void okWithoutSourceShowsTheTruth();
    void hidesBeforeItSavesAndReadsAgain_data();
    void hidesBeforeItSavesAndReadsAgain();
    void discarding_data();
    void discarding();
    void closingIsIgnored();
    void notReadAgainWhenShown();
    void lockedDirectory_data();
    void lockedDirectory();
};

void AppSettingTest::init()
{
    PrinterFolder::WriteFile(SourcePath(), EntryContent);
    QVERIFY(QDir(QStringLiteral("/opt/apps")).removeRecursively());
}

void AppSettingTest::cleanup()
{
    chmod(EntryDirectory, 0755);
    QFile::remove(SourcePath());
}

void AppSettingTest::form()
{
    QWidget window;
    Ui_AppSetting form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QStringLiteral("AppSetting"));
    QCOMPARE(window.size(), QSize(400, 300));
    QCOMPARE(window.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(form.checkBoxAutoStart->geometry(), QRect(70, 60, 200, 25));
    QCOMPARE(form.checkBoxAutoStart->text(), QStringLiteral("AutoStart"));
    QCOMPARE(form.pushButtonOK->geometry(), QRect(70, 250, 80, 25));
    QCOMPARE(form.pushButtonOK->text(), QStringLiteral("OK"));
    QCOMPARE(form.pushButtonCancel->geometry(), QRect(250, 250, 80, 25));
    QCOMPARE(form.pushButtonCancel->text(), QStringLiteral("Cancel"));
    QCOMPARE(window.findChildren<QWidget*>(),
             (QList<QWidget*>{form.checkBoxAutoStart, form.pushButtonOK, form.pushButtonCancel}));
}

void AppSettingTest::formKeepsObjectNames()
{
    QWidget window;
    window.setObjectName(QStringLiteral("another"));
    Ui_AppSetting form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QStringLiteral("another"));
}

void AppSettingTest::geometryAndTexts()
{
    const ExpectedGeometry expected = GeometryOnThisDesktop();
    const AppSetting dialog(nullptr);
    QCOMPARE(dialog.geometry(), expected.window);
    QCOMPARE(dialog.minimumSize(), expected.window.size());
    QCOMPARE(dialog.maximumSize(), expected.window.size());
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("设置"));
    QVERIFY(!dialog.isVisible());
    QVERIFY(!dialog.isModal());
    QCOMPARE(Box(dialog).geometry(), expected.box);
    QCOMPARE(Box(dialog).text(), QStringLiteral("开机启动"));
    QCOMPARE(OkButton(dialog).geometry(), expected.ok);
    QCOMPARE(OkButton(dialog).text(), QStringLiteral("确定"));
    QCOMPARE(CancelButton(dialog).geometry(), expected.cancel);
    QCOMPARE(CancelButton(dialog).text(), QStringLiteral("取消"));
}

// Below 1920 pixels the function shrinks the widget, although the dialog itself is not scaled there.
void AppSettingTest::scaleControlDoesNotTestTheDesktop()
{
    const QHash<int, QRect> expected{{1280, {46, 166, 53, 16}},
                                     {1920, {70, 250, 80, 25}},
                                     {1921, {70, 250, 80, 25}},
                                     {2560, {93, 333, 106, 33}},
                                     {3840, {140, 500, 160, 50}}};
    AppSetting dialog(nullptr);
    QWidget widget;
    widget.setGeometry(70, 250, 80, 25);
    dialog.ScaleControl(&widget);
    QCOMPARE(widget.geometry(), expected.value(QGuiApplication::primaryScreen()->virtualSize().width()));
}

void AppSettingTest::metaObjectOrder()
{
    const QMetaObject& metaObject = AppSetting::staticMetaObject;
    QCOMPARE(metaObject.className(), "AppSetting");
    QList<QByteArray> names;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        QCOMPARE(metaObject.method(i).methodType(), QMetaMethod::Slot);
        names.append(metaObject.method(i).methodSignature());
    }
    QCOMPARE(names, (QList<QByteArray>{"on_pushButtonOK_clicked()", "on_pushButtonCancel_clicked()"}));
}

void AppSettingTest::boxShowsTheEntry_data()
{
    QTest::addColumn<bool>("hasEntry");
    QTest::newRow("entry") << true;
    QTest::newRow("no entry") << false;
}

void AppSettingTest::boxShowsTheEntry()
{
    QFETCH(const bool, hasEntry);
    if (hasEntry) {
        MakeEntry("");
    }
    AppSetting dialog(nullptr);
    QCOMPARE(dialog.ReadAutoStartOption(), hasEntry);
    QCOMPARE(Box(dialog).isChecked(), hasEntry);
}

void AppSettingTest::saveMakesTheEntry()
{
    AppSetting dialog(nullptr);
    QVERIFY(dialog.SaveAutoStartOption(true));
    QCOMPARE(PrinterFolder::ReadFile(Entry()), QByteArray(EntryContent));
    QVERIFY(QFile::exists(SourcePath()));
}

void AppSettingTest::savePartlyCheckedMakesTheEntry()
{
    AppSetting dialog(nullptr);
    Box(dialog).setTristate(true);
    Box(dialog).setCheckState(Qt::PartiallyChecked);
    QVERIFY(dialog.SaveOption());
    QVERIFY(QFile::exists(Entry()));
}

void AppSettingTest::saveKeepsAnExistingEntry()
{
    MakeEntry("edited by the user");
    AppSetting dialog(nullptr);
    QVERIFY(!dialog.SaveAutoStartOption(true));
    QCOMPARE(PrinterFolder::ReadFile(Entry()), QByteArray("edited by the user"));
}

void AppSettingTest::saveRemovesTheEntry()
{
    MakeEntry("");
    AppSetting dialog(nullptr);
    QVERIFY(dialog.SaveAutoStartOption(false));
    QVERIFY(!QFile::exists(Entry()));
    QVERIFY(!dialog.SaveAutoStartOption(false)); // nothing to remove
    QVERIFY(QDir(QString::fromLatin1(EntryDirectory)).exists());
}

void AppSettingTest::saveWithoutSourceMakesTheDirectory()
{
    QFile::remove(SourcePath());
    AppSetting dialog(nullptr);
    QVERIFY(!dialog.SaveAutoStartOption(true));
    QVERIFY(QDir(QString::fromLatin1(EntryDirectory)).exists());
    QVERIFY(!QFile::exists(Entry()));
}

void AppSettingTest::okSwitchesOff()
{
    MakeEntry("");
    AppSetting dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(Box(dialog).isChecked());
    ClickBox(dialog);
    QVERIFY(!Box(dialog).isChecked());
    QVERIFY(QFile::exists(Entry()));
    Click(OkButton(dialog));
    QVERIFY(!dialog.isVisible());
    QVERIFY(!QFile::exists(Entry()));
    dialog.show();
    QVERIFY(!Box(dialog).isChecked());
}

void AppSettingTest::okSwitchesOn()
{
    AppSetting dialog(nullptr);
    dialog.show();
    ClickBox(dialog);
    Click(OkButton(dialog));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(PrinterFolder::ReadFile(Entry()), QByteArray(EntryContent));
    QVERIFY(Box(dialog).isChecked());
}

void AppSettingTest::okWithoutSourceShowsTheTruth()
{
    QFile::remove(SourcePath());
    AppSetting dialog(nullptr);
    dialog.show();
    ClickBox(dialog);
    QVERIFY(Box(dialog).isChecked());
    Click(OkButton(dialog));
    QVERIFY(!dialog.isVisible());
    QVERIFY(!Box(dialog).isChecked());
}

void AppSettingTest::hidesBeforeItSavesAndReadsAgain_data()
{
    QTest::addColumn<bool>("hasEntry");
    QTest::addColumn<bool>("isConfirmed");
    QTest::newRow("on") << false << true;
    QTest::newRow("off") << true << true;
    QTest::newRow("on, cancelled") << false << false;
    QTest::newRow("off, cancelled") << true << false;
}

void AppSettingTest::hidesBeforeItSavesAndReadsAgain()
{
    QFETCH(const bool, hasEntry);
    QFETCH(const bool, isConfirmed);
    if (hasEntry) {
        MakeEntry("");
    }
    AppSetting dialog(nullptr);
    dialog.show();
    ClickBox(dialog);
    const HideObserver observer(dialog);
    Click(isConfirmed ? OkButton(dialog) : CancelButton(dialog));
    QCOMPARE(observer.times, 1);
    QCOMPARE(observer.wasTicked, !hasEntry);
    QCOMPARE(observer.hadEntry, hasEntry);
    // If the state was read before it was saved, the box would show the old one.
    QCOMPARE(Box(dialog).isChecked(), isConfirmed ? !hasEntry : hasEntry);
    QCOMPARE(QFile::exists(Entry()), isConfirmed ? !hasEntry : hasEntry);
}

void AppSettingTest::discarding_data()
{
    QTest::addColumn<bool>("hasEntry");
    QTest::addColumn<bool>("byClosing");
    QTest::newRow("ticked, then cancelled") << false << false;
    QTest::newRow("ticked, then closed") << false << true;
    QTest::newRow("unticked, then cancelled") << true << false;
    QTest::newRow("unticked, then closed") << true << true;
}

void AppSettingTest::discarding()
{
    QFETCH(const bool, hasEntry);
    QFETCH(const bool, byClosing);
    if (hasEntry) {
        MakeEntry("kept");
    }
    AppSetting dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    ClickBox(dialog);
    QCOMPARE(Box(dialog).isChecked(), !hasEntry);
    if (byClosing) {
        dialog.close();
    } else {
        Click(CancelButton(dialog));
    }
    QVERIFY(!dialog.isVisible());
    QCOMPARE(Box(dialog).isChecked(), hasEntry);
    QCOMPARE(QFile::exists(Entry()), hasEntry);
}

void AppSettingTest::closingIsIgnored()
{
    AppSetting dialog(nullptr);
    dialog.show();
    QCloseEvent event;
    event.accept();
    QCoreApplication::sendEvent(&dialog, &event);
    QVERIFY(!event.isAccepted());
    QVERIFY(!dialog.isVisible());
}

void AppSettingTest::notReadAgainWhenShown()
{
    AppSetting dialog(nullptr);
    MakeEntry("");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QVERIFY(!Box(dialog).isChecked());
    Click(CancelButton(dialog));
    QVERIFY(Box(dialog).isChecked());
}

void AppSettingTest::lockedDirectory_data()
{
    QTest::addColumn<bool>("hasEntry");
    QTest::newRow("copy fails") << false;
    QTest::newRow("removal fails") << true;
}

void AppSettingTest::lockedDirectory()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions; run as an ordinary user");
    }
    QFETCH(const bool, hasEntry);
    QVERIFY(QDir().mkpath(QString::fromLatin1(EntryDirectory)));
    if (hasEntry) {
        MakeEntry("locked");
    }
    QCOMPARE(chmod(EntryDirectory, 0555), 0);
    AppSetting dialog(nullptr);
    dialog.show();
    ClickBox(dialog);
    QCOMPARE(Box(dialog).isChecked(), !hasEntry);
    Click(OkButton(dialog));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(Box(dialog).isChecked(), hasEntry);
    QCOMPARE(QFile::exists(Entry()), hasEntry);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!dialog.SaveAutoStartOption(!hasEntry));
}

QTEST_MAIN(AppSettingTest)
#include "tst_appsetting.moc"
