// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "PrinterFolder.h"
#include "shell/brelprintertoolwidget.h"
#include "shell/ScreenScale.h"
#include "TestWindow.h"
#include "ui_brelprintertoolwidget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QHeaderView>
#include <QMetaMethod>
#include <QScreen>
#include <QScrollBar>
#include <QtTest>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QDesktopWidget>
#endif

namespace {

struct ExpectedGeometry
{
    QRect window;
    QRect table;
    QVector<int> columnWidths; // the last one is only valid while that column does not stretch
};

ExpectedGeometry GeometryOnThisDesktop()
{
    const QRect table(20, 20, 560, 260);
    const QVector<int> columnWidths{120, 150, 85, 185};
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    if (desktop == QSize(1280, 800)) {
        return {{340, 250, 600, 300}, table, columnWidths};
    }
    if (desktop == QSize(1920, 1080)) {
        return {{660, 390, 600, 300}, table, columnWidths};
    }
    if (desktop == QSize(1921, 1080)) { // a scale of 1.0005, which truncation hides
        return {{660, 390, 600, 300}, table, columnWidths};
    }
    if (desktop == QSize(2560, 1440)) {
        return {{880, 520, 800, 400}, {26, 26, 746, 346}, {160, 200, 113, 246}};
    }
    if (desktop == QSize(3840, 2160)) {
        return {{1320, 780, 1200, 600}, {40, 40, 1120, 520}, {240, 300, 170, 370}};
    }
    if (desktop == QSize(3840, 1080)) { // two screens side by side
        return {{1320, 240, 1200, 600}, {40, 40, 1120, 520}, {240, 300, 170, 370}};
    }
    qFatal("no geometry is known for a desktop of %d x %d pixels", desktop.width(), desktop.height());
}

QStringList HeaderTexts(const QTableWidget& table)
{
    QStringList texts;
    for (int column = 0; column < table.columnCount(); ++column) {
        texts.append(table.horizontalHeaderItem(column)->text());
    }
    return texts;
}

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget)
    {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
        }
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

} // namespace

class BrelPrinterToolWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void form();
    void formKeepsObjectNames();
    void desktopSize();
    void geometry();
    void framePositionWhenShown();
    void fixedSizeWithoutMaximiseButton();
    void titleAndIcon();
    void table();
    void headersSurviveRebuild();
    void newRowsAreChinese();
    void closeHides();
    void changeEventDoesNothing_data();
    void changeEventDoesNothing();
    void metaObjectOrder();
    void imagesAreRegistered_data();
    void imagesAreRegistered();
    void logIsSwitchedOff();
    void logOutIsNotRefused();
    void isQZPrinter_data();
    void isQZPrinter();
};

void BrelPrinterToolWidgetTest::init()
{
    PrinterFolder::Create();
}

void BrelPrinterToolWidgetTest::form()
{
    QWidget window;
    Ui_BrelPrinterToolWidget form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QStringLiteral("BrelPrinterToolWidget"));
    QCOMPARE(window.size(), QSize(600, 300));
    QCOMPARE(window.windowTitle(), QStringLiteral("BrelPrinterToolWidget"));
    QCOMPARE(form.tableDeviceManage->objectName(), QStringLiteral("tableDeviceManage"));
    QCOMPARE(form.tableDeviceManage->geometry(), QRect(20, 20, 560, 260));
    QCOMPARE(form.tableDeviceManage->geometry().right(), 579);
    QCOMPARE(form.tableDeviceManage->geometry().bottom(), 279);
    QCOMPARE(form.tableDeviceManage->font().pointSize(), 9);
    QCOMPARE(form.tableDeviceManage->font().family(), QApplication::font().family());
    QCOMPARE(window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
}

void BrelPrinterToolWidgetTest::formKeepsObjectNames()
{
    QWidget window;
    window.setObjectName(QStringLiteral("another"));
    Ui_BrelPrinterToolWidget form;
    form.setupUi(&window);
    QCOMPARE(window.objectName(), QStringLiteral("another"));
}

void BrelPrinterToolWidgetTest::desktopSize()
{
    QCOMPARE(ScreenScale::DesktopSize(), QGuiApplication::primaryScreen()->virtualSize());
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCOMPARE(ScreenScale::DesktopSize(), QApplication::desktop()->size()); // Qt 6 has no such widget
#endif
}

void BrelPrinterToolWidgetTest::geometry()
{
    const ExpectedGeometry expected = GeometryOnThisDesktop();
    const TestWindow window;
    QCOMPARE(window.size(), expected.window.size());
    QCOMPARE(window.pos(), expected.window.topLeft());
    QCOMPARE(window.table().geometry(), expected.table);
    QHeaderView& header = *window.table().horizontalHeader();
    QVERIFY(header.stretchLastSection());
    header.setStretchLastSection(false);
    for (int column = 0; column < expected.columnWidths.size(); ++column) {
        QCOMPARE(header.sectionSize(column), expected.columnWidths.at(column));
    }
}

void BrelPrinterToolWidgetTest::framePositionWhenShown()
{
    const ExpectedGeometry expected = GeometryOnThisDesktop();
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_COMPARE(window.frameGeometry().topLeft(), expected.window.topLeft());
    QCOMPARE(window.size(), expected.window.size());
    // The last column takes the space that the row header and the other columns leave.
    const QHeaderView& header = *window.table().horizontalHeader();
    QCOMPARE(header.length(), window.table().viewport()->width());
    QVERIFY(!window.table().horizontalScrollBar()->isVisible());
}

void BrelPrinterToolWidgetTest::fixedSizeWithoutMaximiseButton()
{
    const QSize size = GeometryOnThisDesktop().window.size();
    const TestWindow window;
    QCOMPARE(window.minimumSize(), size);
    QCOMPARE(window.maximumSize(), size);
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
    QVERIFY(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QCOMPARE(window.windowType(), Qt::Window);
}

void BrelPrinterToolWidgetTest::titleAndIcon()
{
    const TestWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("拓玛激光打印助手"));
    const QSize size(16, 16);
    QCOMPARE(window.windowIcon().pixmap(size).toImage(),
             QIcon(QStringLiteral(":/Icon/Resource/Tolmar.png")).pixmap(size).toImage());
}

void BrelPrinterToolWidgetTest::table()
{
    const TestWindow window;
    QCOMPARE(window.table().columnCount(), 4);
    QCOMPARE(window.table().rowCount(), 0);
    QCOMPARE(HeaderTexts(window.table()),
             (QStringList{QStringLiteral("打印机名称"), QStringLiteral("连接方式"), QStringLiteral("剩余碳粉量"),
                          QStringLiteral("状态")}));
    QCOMPARE(window.table().editTriggers(), QAbstractItemView::NoEditTriggers);
}

void BrelPrinterToolWidgetTest::headersSurviveRebuild()
{
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("PrnA"))});
    TestWindow window;
    const QStringList headers = HeaderTexts(window.table());
    QTRY_COMPARE(window.table().rowCount(), 1);
    QCOMPARE(HeaderTexts(window.table()), headers);
    window.SlotUpdatePrinterList();
    QCOMPARE(HeaderTexts(window.table()), headers);
    QCOMPARE(window.table().columnWidth(0), GeometryOnThisDesktop().columnWidths.at(0));
}

void BrelPrinterToolWidgetTest::newRowsAreChinese()
{
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("PrnA"))});
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 1);
    QCOMPARE(
        window.row(0),
        (QStringList{QStringLiteral("PrnA"), QStringLiteral("USB"), QStringLiteral("0.00%"), QStringLiteral("脱机")}));
}

void BrelPrinterToolWidgetTest::closeHides()
{
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy lastWindowClosed(qApp, &QGuiApplication::lastWindowClosed);
    QCloseEvent event;
    event.accept();
    QCoreApplication::sendEvent(&window, &event);
    QVERIFY(!event.isAccepted());
    QVERIFY(!window.isVisible());
    QVERIFY(window.trayIcon().isVisible());

    window.show();
    QVERIFY(!window.close());
    QVERIFY(!window.isVisible());
    QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
}

// After some of these changes QWidget repaints. A change of window state or language has no other effect.
void BrelPrinterToolWidgetTest::changeEventDoesNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("palette") << int(QEvent::PaletteChange);
    QTest::newRow("font") << int(QEvent::FontChange);
    QTest::newRow("style") << int(QEvent::StyleChange);
    QTest::newRow("enabled") << int(QEvent::EnabledChange);
    QTest::newRow("language") << int(QEvent::LanguageChange);
    QTest::newRow("window state") << int(QEvent::WindowStateChange);
    QTest::newRow("window title") << int(QEvent::WindowTitleChange);
    QTest::newRow("activation") << int(QEvent::ActivationChange);
}

void BrelPrinterToolWidgetTest::changeEventDoesNothing()
{
    QFETCH(const int, type);
    TestWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    PaintCounter paints(window);
    PaintCounter tablePaints(*window.table().viewport());
    window.update();
    QTRY_VERIFY(paints.count > 0); // the counter detects a repaint
    QCoreApplication::processEvents();
    paints.count = 0;
    tablePaints.count = 0;
    QEvent event(static_cast<QEvent::Type>(type));
    window.changeEvent(&event);
    // A repaint of the window would arrive with the table's.
    window.table().viewport()->update();
    QTRY_VERIFY(tablePaints.count > 0);
    QCOMPARE(paints.count, 0);
    QVERIFY(window.isVisible());
    QCOMPARE(window.windowTitle(), QStringLiteral("拓玛激光打印助手"));
}

void BrelPrinterToolWidgetTest::metaObjectOrder()
{
    const QMetaObject& metaObject = BrelPrinterToolWidget::staticMetaObject;
    QCOMPARE(metaObject.className(), "BrelPrinterToolWidget");
    QList<QByteArray> signalNames;
    QList<QByteArray> slotNames;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        (method.methodType() == QMetaMethod::Signal ? signalNames : slotNames).append(method.methodSignature());
    }
    QCOMPARE(signalNames, (QList<QByteArray>{"SgnManageThreadStart()", "SgnStatusThreadStart()", "SgnThreadQuit()"}));
    QCOMPARE(slotNames,
             (QList<QByteArray>{"SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason)", "SlotTrayActionShow()",
                                "SlotTrayActionUpdateFW()", "SlotTrayActionSetting()", "SlotTrayActionExit()",
                                "SlotUpdatePrinterStatus(int)", "SlotUpdatePrinterList()"}));
}

void BrelPrinterToolWidgetTest::imagesAreRegistered_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Tolmar") << QStringLiteral("Tolmar.png");
    QTest::newRow("Brel") << QStringLiteral("Brel.png");
    QTest::newRow("Halvet") << QStringLiteral("Halvet.png");
}

void BrelPrinterToolWidgetTest::imagesAreRegistered()
{
    QFETCH(const QString, name);
    const QImage image(QStringLiteral(":/Icon/Resource/") + name);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() >= 16);
    QCOMPARE(image.width(), image.height());
}

void BrelPrinterToolWidgetTest::logIsSwitchedOff()
{
    SetLogEnable(true);
    const TestWindow window;
    WriteStringLog("tst", 1, "logIsSwitchedOff", QStringLiteral("dropped"));
    QCOMPARE(QDir(QString::fromLatin1(PrinterFolder::ToolDirectory)).entryList(QDir::Files), QStringList());
}

void BrelPrinterToolWidgetTest::logOutIsNotRefused()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QGuiApplication::setFallbackSessionManagementEnabled(true);
    const TestWindow window;
    QVERIFY(!QGuiApplication::isFallbackSessionManagementEnabled());
#else
    QSKIP("Qt 6 closes no windows for a session manager");
#endif
}

void BrelPrinterToolWidgetTest::isQZPrinter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isQZ");
    QTest::newRow("model alone") << QStringLiteral("J4990E") << true;
    QTest::newRow("model within a name") << QStringLiteral("Tolmar_J4990E_2楼") << true;
    QTest::newRow("lower case") << QStringLiteral("j4990e") << false;
    QTest::newRow("part of the model") << QStringLiteral("J4990") << false;
    QTest::newRow("standard family") << QStringLiteral("K4510A") << false;
    QTest::newRow("empty") << QString() << false;
}

void BrelPrinterToolWidgetTest::isQZPrinter()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isQZ);
    TestWindow window;
    QCOMPARE(window.isQZPrinter(name), isQZ);
}

QTEST_MAIN(BrelPrinterToolWidgetTest)
#include "tst_brelprintertoolwidget.moc"
