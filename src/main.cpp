// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/FixedPaths.h"
#include "infrastructure/ProcessTable.h"
#include "shell/brelprintertoolwidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QSessionManager>

namespace {

/// Returns whether another process has this program's name; false when the process table cannot be read. Also makes the
/// tool directory.
bool CheckIsRunning()
{
    const QString toolDirectory = QString::fromLatin1(FixedPaths::ToolDirectory);
    QDir().mkpath(toolDirectory);
    // Older versions left a process list there.
    QFile::remove(toolDirectory + QStringLiteral("pslist.tmp"));
    // The count includes this process.
    return CountProcesses(QCoreApplication::applicationName().left(ProcessNameCharacters)) > 1;
}

/// Returns whether the command line contains "-hide", ignoring case.
bool CheckIsHide(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (QString::fromLocal8Bit(argv[i]).compare(QLatin1String("-hide"), Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

// Otherwise a session manager would restore the program at the next login: with its window open, even if the auto-start
// option is off, and as a second copy if it is on. A session manager may send only one of the two requests.
void NeverRestart(const QApplication& application)
{
    const auto refuseRestart = [](QSessionManager& manager) {
        manager.setRestartHint(QSessionManager::RestartNever);
    };
    QObject::connect(&application, &QGuiApplication::saveStateRequest, refuseRestart);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, refuseRestart);
}

void ShowAlreadyRunning()
{
    const QString title = QStringLiteral("拓玛激光打印助手");
    QMessageBox box(QMessageBox::Information, title, title + QStringLiteral("已经处于运行中！"));
    box.setStandardButtons(QMessageBox::Ok);
    // The two blanks widen the button.
    box.button(QMessageBox::Ok)->setText(QStringLiteral("确  定"));
    box.exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    NeverRestart(application);
    // Under Wayland the desktop finds the window icon by the name of the installed desktop entry.
    QGuiApplication::setDesktopFileName(QStringLiteral("tolmar-q727-tool"));
    if (CheckIsRunning()) {
        ShowAlreadyRunning();
        return 0;
    }
    BrelPrinterToolWidget window(nullptr);
    if (CheckIsHide(argc, argv)) {
        window.hide();
    } else {
        window.show();
    }
    return QApplication::exec();
}
