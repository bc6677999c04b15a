// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

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

/// The main window. It owns everything that runs: the printer table, the tray icon, the settings dialog, the shared
/// list and the workers with their threads.
///
/// Closing the window only hides it; the tray menu ends the program. All members except the shared list are used on the
/// main thread only. The destructor stops the workers. A worker that does not stop in time lets go of the list and is
/// deleted when its thread ends, unless the process ends first.
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

    /// Returns whether the queue called `name` belongs to the QZ family.
    bool isQZPrinter(QString name);

    /// Writes the shared list to the log, one line for each field.
    void DebugOutputPrinterInfo();
    /// Writes the state of the printer at `index` of the shared list to the log; does nothing without such an index.
    void DebugOutputPrinterStatus(int index);

    /// Makes `path` accessible to everybody and returns the command's status; -1 when the path is too long for the
    /// command. The path is not quoted and must be safe for a shell. See docs/contract.md.
    int ChmodFile(QString path);
    /// Does the same for a directory, its entries and all directories below it. Does not enter linked directories.
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
    QList<TrdGetPrinterStatus*> listStatusWorker; ///< in the order of their start; listStatusThread is parallel
    QList<QThread*> listStatusThread;
    TrdDeviceManage* pDeviceManage = nullptr;
    QThread* pDeviceManageThread = nullptr;
    AppSetting* pAppSetting = nullptr; ///< top-level, never deleted
    QList<stPrinterManager> listPrinter; ///< shared with the workers; use it only through SharedPrinterList
    int iStatusThreadCount = 0; ///< length of the list at its last change; indexes from here on get new workers
    QList<int> listWaitingIndex; ///< indexes whose workers are still to be started, in order
    int iLanguage = 0; ///< column of the text tables
};
