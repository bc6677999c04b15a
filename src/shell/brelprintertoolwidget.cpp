// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "brelprintertoolwidget.h"

#include "AppSetting.h"
#include "DiagnosticDumps.h"
#include "ScreenScale.h"
#include "SharedPrinterList.h"
#include "ShellCommand.h"
#include "ui_brelprintertoolwidget.h"
#include "UtilLog.h"

#include <QCloseEvent>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QStyledItemDelegate>

#include <array>

namespace {

constexpr char LogSource[] = "brelprintertoolwidget";
constexpr int ChineseColumn = 1;
constexpr std::array<int, 4> c_columnWidths{{120, 150, 85, 185}};
constexpr int DrawnCharacters = 1000;

// Nothing bounds a name but the size of the printer list, and all of a text is laid out whenever a part of it is drawn:
// a single one of 1 MB would hold the window up for a third of a second each time. No column is as wide as this.
class CutTextDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        return QStyledItemDelegate::displayText(value.toString().left(DrawnCharacters), locale);
    }
};

// A table measures headers that it may show, with each change, and that takes the bold face of a Chinese font: 1 MiB
// and a fifth of a hidden start. They come with the window's first showing.
void SetHeadersVisible(const QTableWidget& table, bool visible)
{
    table.horizontalHeader()->setVisible(visible);
    table.verticalHeader()->setVisible(visible);
}

// The settings dialog lives to the end of the process, longer than the window: then this alone refers to it, so that a
// leak checker can tell it from lost memory. Volatile, or a compiler would drop a variable that nobody reads.
AppSetting* volatile s_pAppSetting = nullptr;

} // namespace

BrelPrinterToolWidget::BrelPrinterToolWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui_BrelPrinterToolWidget>())
{
    // The images register themselves before main(). Nothing else refers to their object file, which a linker would
    // otherwise leave out of a program that uses the library.
    Q_INIT_RESOURCE(images);
    ui->setupUi(this);
    setWindowIcon(QIcon(QStringLiteral(":/Icon/Resource/Tolmar.png")));
    if (ScreenScale::IsScaled()) {
        resize(ScreenScale::Scaled(width()), ScreenScale::Scaled(height()));
    }
    ScreenScale::FixSize(*this);
    setWindowTitle(QStringLiteral("拓玛激光打印助手"));
    ScreenScale::Centre(*this);
    StayUntilToldToExit();
    pAppSetting = new AppSetting(nullptr);
    s_pAppSetting = pAppSetting;
    InitLog();
    InitConfig();
    InitLanguage();
    InitDeviceTable();
    InitTrayIcon();
    InitThread();
}

BrelPrinterToolWidget::~BrelPrinterToolWidget()
{
    StopWorkers();
    ui.reset();
    CleanTempFile();
}

// Only the tray's exit entry ends the program. A window that refuses to close would make Qt refuse the user's log-out;
// and no passing window, such as a tray balloon, shall count as the program's last one.
void BrelPrinterToolWidget::StayUntilToldToExit()
{
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::instance()->installEventFilter(this);
}

void BrelPrinterToolWidget::InitLog()
{
    SetLogEnable(BRELPRINTERTOOL_LOG_ENABLED != 0);
    const QSize desktop = ScreenScale::DesktopSize();
    WriteStringLog(LogSource, __LINE__, "InitLog", QStringLiteral("desktop = %d, %d"), desktop.width(),
                   desktop.height());
}

// There is no configuration yet: all paths are fixed.
void BrelPrinterToolWidget::InitConfig() { }

void BrelPrinterToolWidget::InitLanguage()
{
    iLanguage = ChineseColumn;
}

void BrelPrinterToolWidget::InitDeviceTable()
{
    WriteStringLog(LogSource, __LINE__, "InitDeviceTable", QStringLiteral("InitDeviceTable start"));
    QTableWidget& table = *ui->tableDeviceManage;
    SetHeadersVisible(table, false);
    table.setColumnCount(static_cast<int>(c_columnWidths.size()));
    table.horizontalHeader()->setStretchLastSection(true);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setItemDelegate(new CutTextDelegate(&table));
    table.setHorizontalHeaderLabels({QStringLiteral("打印机名称"), QStringLiteral("连接方式"),
                                     QStringLiteral("剩余碳粉量"), QStringLiteral("状态")});
    table.resizeRowsToContents();
    if (ScreenScale::IsScaled()) {
        table.resize(ScreenScale::Scaled(table.width()), ScreenScale::Scaled(table.height()));
        table.move(ScreenScale::Scaled(table.x()), ScreenScale::Scaled(table.y()));
    }
    for (int column = 0; column < table.columnCount(); ++column) {
        const int width = c_columnWidths.at(static_cast<std::size_t>(column));
        table.setColumnWidth(column, ScreenScale::IsScaled() ? ScreenScale::Scaled(width) : width);
    }
    WriteStringLog(LogSource, __LINE__, "InitDeviceTable", QStringLiteral("InitDeviceTable end"));
}

void BrelPrinterToolWidget::setVisible(bool visible)
{
    if (visible) {
        SetHeadersVisible(*ui->tableDeviceManage, true);
    }
    QWidget::setVisible(visible);
}

// Temporary files are removed where they are made; there is none to clean up at the end.
void BrelPrinterToolWidget::CleanTempFile() { }

void BrelPrinterToolWidget::closeEvent(QCloseEvent* event)
{
    hide();
    event->ignore();
}

// The window shows nothing that depends on its state, font, style or language; all its texts are fixed.
void BrelPrinterToolWidget::changeEvent(QEvent* /*event*/) { }

// The end of the user's session. Qt closes its windows one by one, gives up at the first that only hides, and does not
// quit while another is visible.
bool BrelPrinterToolWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Quit && watched == QCoreApplication::instance()) {
        pAppSetting->close();
        hide();
    }
    return QWidget::eventFilter(watched, event);
}

void BrelPrinterToolWidget::DebugOutputPrinterInfo()
{
    DumpPrinters(SharedPrinterList(&listPrinter).copyInfos());
}

void BrelPrinterToolWidget::DebugOutputPrinterStatus(int index)
{
    stPrinterManager printer;
    if (SharedPrinterList(&listPrinter).copy(index, printer)) {
        DumpPrinter(index, printer);
    }
}

int BrelPrinterToolWidget::ChmodFile(QString path)
{
    return RunShellCommand("chmod 777 %s", path.toLocal8Bit().constData());
}

void BrelPrinterToolWidget::ChmodVendorPath(QString path)
{
    const QByteArray localPath = path.toLocal8Bit();
    RunShellCommand("chmod 777 %s/", localPath.constData());
    RunShellCommand("chmod 777 %s/*", localPath.constData());
    const QFileInfoList directories = QDir(path).entryInfoList(QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo& directory : directories) {
        if (directory.fileName() != QLatin1String(".") && directory.fileName() != QLatin1String("..")) {
            ChmodVendorPath(directory.absoluteFilePath());
        }
    }
}
