// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "shell/AppSetting.h"
#include "shell/brelprintertoolwidget.h"

#include <QStringList>

class QTableWidget;

/// The main window with its protected and hidden parts open to tests. It also deletes its settings dialog, which the
/// main window itself keeps until the process ends.
class TestWindow : public BrelPrinterToolWidget
{
public:
    TestWindow();
    ~TestWindow() override;

    using BrelPrinterToolWidget::changeEvent;

    void setVisible(bool isWanted) override;

    QTableWidget& table() const;
    /// The texts of a table row.
    QStringList row(int index) const;
    QSystemTrayIcon& trayIcon() const;
    AppSetting& settingsDialog() const;
    /// The number of status workers that were ever started.
    int startedWorkers() const;
    /// These workers, in the order of their start.
    QList<TrdGetPrinterStatus*> statusWorkers() const;
    /// How often show() was requested.
    int timesShown() const;

    /// The shared list itself, for a test's own worker.
    QList<stPrinterManager>* sharedList();
    /// A copy of the shared list's records.
    QList<stPrinterManager> printers();
    /// Puts a state into the shared list, including states that no printer can send.
    void setState(int index, const stPrinterState& state);

    /// From now on each status worker polls once and ends its loop. So only the test changes the shared list as long as
    /// the list file stays the same.
    void letWorkersPollOnce();

private:
    AppSetting* m_settingsDialog = nullptr;
    int m_timesShown = 0;
};
