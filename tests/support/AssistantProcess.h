// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QStringList>

/// The real program, seen from outside: its process, its tray item on the session bus and its windows. The destructor
/// kills it. Needs a sandbox with a screen and the desktop double.
class AssistantProcess
{
public:
    /// `program` may be another file than the built one, for example a copy with another name.
    explicit AssistantProcess(QString program = QStringLiteral(ASSISTANT_PROGRAM));
    ~AssistantProcess();
    AssistantProcess(const AssistantProcess&) = delete;
    AssistantProcess& operator=(const AssistantProcess&) = delete;

    /// Makes start() run the program under strace, which writes to `tracePath`.
    void traceTo(const QString& tracePath);
    /// Returns false if the program's tray item, or its window unless `arguments` hide it, does not appear in time.
    bool startIntoTray(const QStringList& arguments = {});
    /// Starts the program and waits only for the process.
    bool start(const QStringList& arguments = {});

    bool isRunning() const;
    qint64 processId() const;
    /// The exit code; -1 after a crash or a timeout.
    int waitForExit(int timeoutMs = 10000);

    bool hasTrayItem() const;
    QString toolTip() const;
    /// The labels of the tray menu. An entry with further properties has them after its label.
    QStringList menu() const;
    bool chooseFromMenu(const QString& label) const;

    static QString fileName();

private:
    QProcess m_process;
    QString m_program;
    QString m_tracePath;
    QString m_trayItem; ///< its name on the bus
};

/// The visible X windows with exactly this title.
QStringList VisibleWindows(const QString& title);
/// Whether a window with this title is visible at any time in the next half second.
bool IsEverVisible(const QString& title);
/// Activates the window with this title and presses a key until the window has gone. For "alt+F4" the window manager
/// closes the window as with its title bar's button. Returns false on a timeout.
bool PressUntilGone(const QString& title, const QString& key);
/// The standard output of a command.
QString OutputOf(const QString& command, const QStringList& arguments);
