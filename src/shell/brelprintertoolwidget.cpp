// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/brelprintertoolwidget.h"

#include "acquisition/TrdGetPrinterStatus.h"
#include "discovery/TrdDeviceManage.h"
#include "infrastructure/FixedPaths.h"
#include "infrastructure/QtGenerations.h"
#include "infrastructure/ShellCommand.h"
#include "infrastructure/UtilLog.h"
#include "records/ModelCatalogue.h"
#include "records/SharedPrinterList.h"
#include "shell/AppSetting.h"
#include "shell/DiagnosticDumps.h"
#include "shell/ScreenScale.h"
#include "shell/WorkerThread.h"
#include "texts/UtilLanguageCtrl.h"
#include "ui_brelprintertoolwidget.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QMenu>
#include <QPixmap>
#include <QProcess>
#include <QThread>
#include <QTimer>

namespace {

constexpr char LogSource[] = "brelprintertoolwidget";
constexpr int ChineseColumn = 1;
constexpr int MessageTimeMs = 3000;
constexpr int SignalsPerTurn = 10000;

// The settings dialog outlives the window. This pointer keeps it reachable, so that a leak checker does not report it.
// It is volatile because a compiler would drop a variable that nobody reads.
AppSetting* volatile s_pAppSetting = nullptr;

// Qt loads all its picture plug-ins for a picture whose format it may detect itself.
QIcon ReadProgramIcon()
{
    QImageReader reader(QStringLiteral(":/Icon/Resource/Tolmar.png"), "PNG");
    reader.setAutoDetectImageFormat(false);
    return {QPixmap::fromImageReader(&reader)};
}

} // namespace

BrelPrinterToolWidget::BrelPrinterToolWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui_BrelPrinterToolWidget>())
{
    // The images register themselves before main(), but nothing else refers to their object file. Without this line a
    // linker would leave it out of a program that uses the library.
    Q_INIT_RESOURCE(images);
    ui->setupUi(this);
    setWindowIcon(ReadProgramIcon());
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

// Only the tray's exit entry ends the program. By default Qt would refuse the user's log-out because a window refuses
// to close, and would quit when a passing window, such as a tray balloon, was the last to close.
void BrelPrinterToolWidget::StayUntilToldToExit()
{
    AnswerSessionManagersOnly<QGuiApplication>();
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

// There is no configuration: all paths are fixed.
void BrelPrinterToolWidget::InitConfig() { }

void BrelPrinterToolWidget::InitLanguage()
{
    iLanguage = ChineseColumn;
}

void BrelPrinterToolWidget::InitDeviceTable()
{
    WriteStringLog(LogSource, __LINE__, "InitDeviceTable", QStringLiteral("InitDeviceTable start"));
    ui->tableDeviceManage->setUp();
    WriteStringLog(LogSource, __LINE__, "InitDeviceTable", QStringLiteral("InitDeviceTable end"));
}

void BrelPrinterToolWidget::setVisible(bool visible)
{
    if (visible) {
        ui->tableDeviceManage->setHeadersVisible(true);
    }
    QWidget::setVisible(visible);
}

// Temporary files are removed where they are made; none is left to clean up.
void BrelPrinterToolWidget::CleanTempFile() { }

void BrelPrinterToolWidget::closeEvent(QCloseEvent* event)
{
    hide();
    event->ignore();
}

// Nothing in the window depends on its state, font, style or language; all its texts are fixed.
void BrelPrinterToolWidget::changeEvent(QEvent* /*event*/) { }

// Handles the end of the user's session. Qt closes its windows one by one, gives up at the first that only hides, and
// does not quit while another is visible. This filter hides them all beforehand.
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

void BrelPrinterToolWidget::InitTrayIcon()
{
    WriteStringLog(LogSource, __LINE__, "InitTrayIcon", QStringLiteral("InitTrayIcon start"));
    pTrayIcon = new QSystemTrayIcon(this);
    // Shares the window's icon: reading it again would decode and keep the picture once more, 256 KiB each time.
    pTrayIcon->setIcon(windowIcon());
    pTrayIcon->setToolTip(QStringLiteral("拓玛激光打印助手"));
    connect(pTrayIcon, &QSystemTrayIcon::activated, this, &BrelPrinterToolWidget::SlotActivatedTrayIcon);
    pActionShow = AddTrayAction(QStringLiteral("显示主界面"), &BrelPrinterToolWidget::SlotTrayActionShow);
    pActionUpdateFW = AddTrayAction(QStringLiteral("打印机更新助手"), &BrelPrinterToolWidget::SlotTrayActionUpdateFW);
    pActionSetting = AddTrayAction(QStringLiteral("设置"), &BrelPrinterToolWidget::SlotTrayActionSetting);
    pActionExit = AddTrayAction(QStringLiteral("退出"), &BrelPrinterToolWidget::SlotTrayActionExit);
    pTrayMenu = new QMenu(this);
    pTrayMenu->addActions({pActionShow, pActionUpdateFW, pActionSetting, pActionExit});
    pTrayIcon->setContextMenu(pTrayMenu);
    pTrayIcon->show();
    WriteStringLog(LogSource, __LINE__, "InitTrayIcon", QStringLiteral("InitTrayIcon end"));
}

QAction* BrelPrinterToolWidget::AddTrayAction(const QString& text, void (BrelPrinterToolWidget::*slot)())
{
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void BrelPrinterToolWidget::SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger) {
        SlotTrayActionShow();
    }
}

void BrelPrinterToolWidget::SlotTrayActionShow()
{
    if (!isActiveWindow()) {
        showNormal();
    }
}

void BrelPrinterToolWidget::SlotTrayActionUpdateFW()
{
    QProcess::startDetached(QString::fromLatin1(FixedPaths::FirmwareUpdateTool), QStringList());
}

void BrelPrinterToolWidget::SlotTrayActionSetting()
{
    pAppSetting->show();
}

void BrelPrinterToolWidget::SlotTrayActionExit()
{
    pAppSetting->close();
    hide();
    pTrayIcon->hide();
    emit SgnThreadQuit();
    QCoreApplication::quit();
}

void BrelPrinterToolWidget::InitThread()
{
    WriteStringLog(LogSource, __LINE__, "InitThread", QStringLiteral("InitThread start"));
    pDeviceManage = new TrdDeviceManage(nullptr);
    pDeviceManageThread = StartThreadOf(pDeviceManage);
    pDeviceManage->Init(&listPrinter);
    connect(this, &BrelPrinterToolWidget::SgnManageThreadStart, pDeviceManage, &TrdDeviceManage::SlotTaskStart);
    connect(this, &BrelPrinterToolWidget::SgnThreadQuit, pDeviceManage, &TrdDeviceManage::SlotThreadQuit);
    connect(pDeviceManage, &TrdDeviceManage::SgnUpdatePrinterList, this, &BrelPrinterToolWidget::SlotUpdatePrinterList);
    emit SgnManageThreadStart();
    WriteStringLog(LogSource, __LINE__, "InitThread", QStringLiteral("InitThread end"));
}

// Each start is signalled to all workers: a thousand starts at once would block the window for a second. One turn of
// the event loop sends about SignalsPerTurn signals; later turns send the rest.
void BrelPrinterToolWidget::StartWaitingWorkers()
{
    for (int sent = 0; sent < SignalsPerTurn && !listWaitingIndex.isEmpty(); sent += listStatusWorker.size()) {
        StartStatusWorker(listWaitingIndex.takeFirst());
    }
    if (!listWaitingIndex.isEmpty()) {
        QTimer::singleShot(0, this, &BrelPrinterToolWidget::StartWaitingWorkers);
    }
}

// The start signal reaches all workers started so far; those that already run ignore it.
void BrelPrinterToolWidget::StartStatusWorker(int index)
{
    auto* worker = new TrdGetPrinterStatus(nullptr);
    QThread* thread = StartThreadOf(worker);
    worker->Init(index, &listPrinter);
    connect(this, &BrelPrinterToolWidget::SgnStatusThreadStart, worker, &TrdGetPrinterStatus::SlotTaskStart);
    connect(this, &BrelPrinterToolWidget::SgnThreadQuit, worker, &TrdGetPrinterStatus::SlotThreadQuit);
    connect(worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this,
            &BrelPrinterToolWidget::SlotUpdatePrinterStatus);
    emit SgnStatusThreadStart();
    listStatusWorker.append(worker);
    listStatusThread.append(thread);
}

// A looping worker does not receive signals, but it sees its flag. All flags are set before the first wait, so that all
// loops end within the same pause. A worker that hangs in a command lets go of the list and is left running.
void BrelPrinterToolWidget::StopWorkers()
{
    pDeviceManage->bThreadQuit = true;
    for (TrdGetPrinterStatus* worker : qAsConst(listStatusWorker)) {
        worker->bThreadQuit = true;
    }
    pDeviceManageThread->quit();
    for (QThread* thread : qAsConst(listStatusThread)) {
        thread->quit();
    }
    if (AwaitEnd(pDeviceManageThread)) {
        delete pDeviceManage;
    } else {
        pDeviceManage->Init(nullptr);
        DeleteWhenFinished(pDeviceManageThread, pDeviceManage);
    }
    for (int k = 0; k < listStatusWorker.size(); ++k) {
        TrdGetPrinterStatus* worker = listStatusWorker.at(k);
        QThread* thread = listStatusThread.at(k);
        if (AwaitEnd(thread)) {
            delete worker;
        } else {
            worker->Init(-1, nullptr);
            DeleteWhenFinished(thread, worker);
        }
    }
}

void BrelPrinterToolWidget::SlotUpdatePrinterList()
{
    const QList<stPrinterInfo> printers = SharedPrinterList(&listPrinter).copyInfos();
    ui->tableDeviceManage->showPrinters(printers, c_strStatusLanguageText[PS_OFFLINE][iLanguage]);
    for (int k = iStatusThreadCount; k < printers.size(); ++k) {
        listWaitingIndex.append(k);
    }
    StartWaitingWorkers();
    // The count also shrinks: workers beyond the list's end idle, and a list that grows again gets new ones.
    iStatusThreadCount = printers.size();
    DumpPrinters(printers);
}

void BrelPrinterToolWidget::SlotUpdatePrinterStatus(int index)
{
    stPrinterManager printer;
    // The list may have been replaced since the signal was emitted, and the table may not have its rows yet.
    if (!SharedPrinterList(&listPrinter).copy(index, printer) || index >= ui->tableDeviceManage->rowCount()) {
        return;
    }
    ui->tableDeviceManage->showToner(index, printer);
    ui->tableDeviceManage->showStatus(index, AnnounceStatus(printer));
    DumpPrinter(index, printer);
}

// Shows only the first error or, without errors, the first warning. Returns the row's status text.
QString BrelPrinterToolWidget::AnnounceStatus(const stPrinterManager& printer)
{
    const QString& name = printer.stInfo.strPrinterName;
    const stPrinterState& state = printer.stState;
    if (!state.listError.isEmpty()) {
        const QString& error = c_strErrorDescText[state.listError.first()][iLanguage];
        pTrayIcon->showMessage(name, error, QSystemTrayIcon::Critical, MessageTimeMs);
        return error;
    }
    const QString& status = c_strStatusLanguageText[state.enCurrentStatus][iLanguage];
    if (state.listWarning.isEmpty()) {
        pTrayIcon->setIcon(windowIcon());
        return status;
    }
    const QString& warning = c_strErrorDescText[state.listWarning.first()][iLanguage];
    pTrayIcon->showMessage(name, warning, QSystemTrayIcon::Warning, MessageTimeMs);
    if (state.enCurrentStatus == PS_PRINTING) {
        return status + QLatin1Char('(') + warning + QLatin1Char(')');
    }
    return status;
}

bool BrelPrinterToolWidget::isQZPrinter(QString name)
{
    return IsQZPrinterName(name);
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
