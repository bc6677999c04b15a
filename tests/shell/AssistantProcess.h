// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QStringList>

/// The real program, seen from outside: its process, its tray item on the session bus and its windows. Killed with
/// the object. Needs a sandbox with a screen and the desktop double.
class AssistantProcess
{
public:
    /// Another program file than the one that was built, e.g. a copy of it under another name.
    explicit AssistantProcess(QString program = QStringLiteral(ASSISTANT_PROGRAM));
    ~AssistantProcess();
    AssistantProcess(const AssistantProcess&) = delete;
    AssistantProcess& operator=(const AssistantProcess&) = delete;

    /// Starts it under strace, which writes to `tracePath`. To be called before start().
    void traceTo(const QString& tracePath);
    void setEnvironment(const QString& name, const QString& value);
    /// Returns whether the tray has the program's item, in time.
    bool startIntoTray(const QStringList& arguments = {});
    /// Starts it without waiting for anything but the process.
    bool start(const QStringList& arguments = {});

    bool isRunning() const;
    qint64 processId() const;
    /// The exit code; -1 when it crashed or did not end in time.
    int waitForExit(int timeoutMs = 10000);

    bool hasTrayItem() const;
    QString toolTip() const;
    /// The labels of the tray menu; what is more than a plain entry has its properties behind it.
    QStringList menu() const;
    bool chooseFromMenu(const QString& label) const;
    /// A click on the tray item.
    void activate() const;

    static QString fileName();

private:
    QProcess m_process;
    QString m_program;
    QString m_tracePath;
    QString m_trayItem; ///< its name on the bus
};

/// X windows that can be seen and have exactly this title.
QStringList VisibleWindows(const QString& title);
/// Whether a window with this title is seen at any time in the next half second.
bool IsEverVisible(const QString& title);
/// Activates the window with this title and presses a key, again until the window has gone; e.g. "alt+F4", which the
/// window manager takes for its title bar's button. Returns whether it has gone.
bool PressUntilGone(const QString& title, const QString& key);
/// The standard output of a command.
QString OutputOf(const QString& command, const QStringList& arguments);
