// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <memory>

class Ui_AppSetting;

/// The settings dialog with its one option, start at login. The option is on while the auto-start entry exists; saving
/// copies or deletes that file. The check box shows the state of the disk when the dialog was created or last
/// confirmed, cancelled or closed. Closing hides the dialog, which lives as long as the program.
class AppSetting : public QWidget
{
    Q_OBJECT

public:
    explicit AppSetting(QWidget* parent);
    ~AppSetting() override;

    /// Returns whether the auto-start entry exists.
    bool ReadAutoStartOption();
    /// Copies the auto-start entry from beside the executable, or removes it. Returns whether the file operation
    /// succeeded. An existing entry is not overwritten and counts as a failure.
    bool SaveAutoStartOption(bool isWanted);
    /// Sets the check box to the state on disk.
    void InitOption();
    /// Saves the state of the check box. Returns whether the file operation succeeded.
    bool SaveOption();
    /// Scales the widget's size and position by ScreenScale::Factor().
    void ScaleControl(QWidget* widget);

public slots:
    void on_pushButtonOK_clicked();
    void on_pushButtonCancel_clicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui_AppSetting> ui;
};
