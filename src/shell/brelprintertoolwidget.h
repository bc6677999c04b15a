// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <QSystemTrayIcon>
#include <QWidget>

#include <memory>

class AppSetting;
class QAction;
class QMenu;
class QThread;
class TrdDeviceManage;
class TrdGetPrinterStatus;
class Ui_BrelPrinterToolWidget;

/// The main window and owner of all that runs: the printer table, the tray icon, the settings dialog, the shared
/// printer list and the workers with their threads.
///
/// Closing it only hides it; the program ends from the tray menu. All members but the shared list are touched on the
/// main thread alone. The destructor stops the workers; one that does not stop in time lets go of the list and is
/// deleted when its thread ends, if it does so before the process.
class BrelPrinterToolWidget : public QWidget
{
    Q_OBJECT

public:
    explicit BrelPrinterToolWidget(QWidget* parent = nullptr);
    ~BrelPrinterToolWidget() override;

    void InitLog();
    void InitConfig();
    void InitLanguage();
    void InitDeviceTable();
    void InitTrayIcon();
    void InitThread();
    void CleanTempFile();
    void setVisible(bool visible) override;

    /// Whether the queue called `name` belongs to the QZ family.
    bool isQZPrinter(QString name);

    /// Writes the shared list to the log, a line a field.
    void DebugOutputPrinterInfo();
    /// Writes the state of the printer at `index` of the shared list to the log; nothing when it has
    /// none.
    void DebugOutputPrinterStatus(int index);

    /// Opens `path` to everybody and returns the command's status; -1 when the path is too long for the command.
    /// See docs/contract.md.
    int ChmodFile(QString path);
    /// The same for a directory, its entries and all directories below it; links are not followed.
    void ChmodVendorPath(QString path);

signals:
    void SgnManageThreadStart();
    void SgnStatusThreadStart();
    void SgnThreadQuit();

public slots:
    void SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason reason);
    void SlotTrayActionShow();
    void SlotTrayActionUpdateFW();
    void SlotTrayActionSetting();
    void SlotTrayActionExit();
    void SlotUpdatePrinterStatus(int index);
    void SlotUpdatePrinterList();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void StayUntilToldToExit();
    QAction* AddTrayAction(const QString& text, void (BrelPrinterToolWidget::*slot)());
    void StartWaitingWorkers();
    void StartStatusWorker(int index);
    QString AnnounceStatus(const stPrinterManager& printer);
    void StopWorkers();

    std::unique_ptr<Ui_BrelPrinterToolWidget> ui;
    QSystemTrayIcon* pTrayIcon = nullptr;
    QMenu* pTrayMenu = nullptr;
    QAction* pActionShow = nullptr;
    QAction* pActionUpdateFW = nullptr;
    QAction* pActionSetting = nullptr;
    QAction* pActionExit = nullptr;
    QList<TrdGetPrinterStatus*> listStatusWorker; ///< in the order of their start, beside their threads
    QList<QThread*> listStatusThread;
    TrdDeviceManage* pDeviceManage = nullptr;
    QThread* pDeviceManageThread = nullptr;
    AppSetting* pAppSetting = nullptr; ///< top-level, never deleted
    QList<stPrinterManager> listPrinter; ///< shared with the workers: see SharedPrinterList
    int iStatusThreadCount = 0; ///< printers for which a worker was started when the list was last rebuilt
    QList<int> listWaitingIndex; ///< those among them whose worker is still to be started, in order
    int iLanguage = 0; ///< column of the text tables
};
