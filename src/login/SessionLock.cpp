// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "login/SessionLock.h"

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

SessionLock::SessionLock()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) {
        return;
    }
    const QString path = folder + QStringLiteral("/tolmar-q727-tool-login.lock");
    // O_CLOEXEC: the assistant and its child processes must not hold the lock.
    constexpr int Flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    m_file = open(QFile::encodeName(path).constData(), Flags, S_IRUSR | S_IWUSR);
    if (m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        m_isHeldByAnother = errno == EWOULDBLOCK;
    }
}

SessionLock::~SessionLock()
{
    if (m_file >= 0) {
        close(m_file);
    }
}

bool SessionLock::isHeldByAnother() const
{
    return m_isHeldByAnother;
}
