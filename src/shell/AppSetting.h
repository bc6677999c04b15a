// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <memory>

class Ui_AppSetting;

/// The settings dialog. Its one option, start at login, is no entry of a configuration file: it is on while the
/// auto-start entry exists, and switching it copies or deletes that file. The box shows what was on disk when the
/// dialog was created or last confirmed, cancelled or closed. Closing hides it; it lives as long as the program.
class AppSetting : public QWidget
{
    Q_OBJECT

public:
    explicit AppSetting(QWidget* parent);
    ~AppSetting() override;

    /// Whether the auto-start entry exists.
    bool ReadAutoStartOption();
    /// Makes the auto-start entry exist, from the copy beside the executable, or removes it. Returns whether the file
    /// operation succeeded; an entry that exists already is not overwritten and counts as a failure.
    bool SaveAutoStartOption(bool isWanted);
    /// Sets the box from what is on disk.
    void InitOption();
    /// Saves what the box says; returns the success of the file operation.
    bool SaveOption();
    /// Scales a widget's geometry to the desktop.
    void ScaleControl(QWidget* widget);

public slots:
    void on_pushButtonOK_clicked();
    void on_pushButtonCancel_clicked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui_AppSetting> ui;
};
