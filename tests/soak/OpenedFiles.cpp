// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "OpenedFiles.h"

#include <QFile>

#include <array>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

constexpr std::size_t EventBufferBytes = 65536;

} // namespace

OpenedFiles::OpenedFiles(const QStringList& paths)
    : m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    for (const QString& path : paths) {
        m_watches.append(inotify_add_watch(m_descriptor, QFile::encodeName(path).constData(), IN_OPEN));
        if (m_watches.last() < 0) {
            qFatal("cannot watch %s", qPrintable(path));
        }
    }
}

OpenedFiles::~OpenedFiles()
{
    close(m_descriptor);
}

QVector<int> OpenedFiles::take()
{
    QVector<int> opened;
    std::array<char, EventBufferBytes> buffer{};
    for (ssize_t n = read(m_descriptor, buffer.data(), buffer.size()); n > 0;
         n = read(m_descriptor, buffer.data(), buffer.size())) {
        for (ssize_t at = 0; at < n;) {
            inotify_event event = {};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                qFatal("lost track of the opened files");
            }
            const int index = m_watches.indexOf(event.wd);
            if (index >= 0 && (event.mask & IN_OPEN) != 0) {
                opened.append(index);
            }
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return opened;
}
