// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "AppSetting.h"
#include "brelprintertoolwidget.h"

#include <QStringList>

class QTableWidget;

/// The main window with its protected and hidden parts open to tests. Deletes its settings dialog, which the window
/// itself leaves to the end of the process.
class TestWindow : public BrelPrinterToolWidget
{
public:
    TestWindow();
    ~TestWindow() override;

    using BrelPrinterToolWidget::changeEvent;

    void setVisible(bool isWanted) override;

    QTableWidget& table() const;
    /// The texts of a row of the table.
    QStringList row(int index) const;
    QSystemTrayIcon& trayIcon() const;
    AppSetting& settingsDialog() const;
    /// Status workers that were ever started.
    int startedWorkers() const;
    /// The same themselves, in the order of their start.
    QList<TrdGetPrinterStatus*> statusWorkers() const;
    /// How often the window was asked to show itself.
    int timesShown() const;

    /// The shared list itself, for a worker of the test's own.
    QList<stPrinterManager>* sharedList();
    /// A copy of its records.
    QList<stPrinterManager> printers();
    /// Puts a state into the shared list that no printer can send.
    void setState(int index, const stPrinterState& state);

    /// From now on a status worker looks at its printer once and then ends its loop, so that nobody but the test
    /// changes the shared list while the list file stays the same.
    void letWorkersPollOnce();

private:
    AppSetting* m_settingsDialog = nullptr;
    int m_timesShown = 0;
};
