// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/FixedPaths.h"
#include "infrastructure/ProcessTable.h"
#include "login/SessionLock.h"
#include "login/TrayProbe.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

constexpr char AssistantName[] = "BrelPrinterTool";
constexpr std::chrono::seconds TrayLimit(30);

bool IsAutoStartEnabled()
{
    return QFileInfo::exists(QString::fromLatin1(FixedPaths::AutoStartDirectory) +
                             QString::fromLatin1(FixedPaths::AutoStartEntryName));
}

bool IsAssistantRunning()
{
    return CountProcesses(QString::fromLatin1(AssistantName).left(ProcessNameCharacters)) > 0;
}

// Returns only on failure, with the exit code.
int BecomeAssistant()
{
    const QByteArray path =
        QFile::encodeName(QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(AssistantName));
    execl(path.constData(), path.constData(), "-hide", static_cast<char*>(nullptr));
    std::fprintf(stderr, "tolmar-q727-tool-login: cannot start %s: %s\n", path.constData(), std::strerror(errno));
    return 1;
}

} // namespace

/// Starts the assistant at login. Qt looks for a tray only when a program starts: an assistant that starts before the
/// desktop's panel has no icon until the next login. The launcher waits for the tray, then becomes the assistant.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool onlyIfEnabled = arguments == QStringList{QStringLiteral("--if-enabled")};
    if (!onlyIfEnabled && !arguments.isEmpty()) {
        std::fprintf(stderr, "tolmar-q727-tool-login: the only option is --if-enabled\n");
        return 2;
    }
    if (onlyIfEnabled && !IsAutoStartEnabled()) {
        return 0;
    }
    const SessionLock lock;
    if (lock.isHeldByAnother()) {
        return 0;
    }
    WaitForTray(TrayLimit);
    // A message at login about a running copy would only disturb. _Exit() runs no destructors: a check may still hang.
    std::_Exit(IsAssistantRunning() ? 0 : BecomeAssistant());
}
