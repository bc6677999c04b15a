// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusFile.h"

#include "FixedPaths.h"
#include "RegularFile.h"

#include <QFile>

#include <cstring>
#include <sys/stat.h>

namespace {

constexpr qint64 MsPerSecond = 1000;
constexpr qint64 NanosecondsPerMs = 1000000;

// None when there is no such file. A null time will not do: before Qt 5.14 it equals the first of January 1970, local
// time. One stat and nothing else: taken as local time, it would cost look-ups of the time-zone file and lock traffic
// among the workers, every second.
std::optional<QDateTime> ModificationTime(const QByteArray& path)
{
    struct stat properties = {};
    if (stat(path.constData(), &properties) != 0) {
        return std::nullopt;
    }
    // Unsigned, since a file may bear any time at all: far ones wrap round, which serves to tell them apart.
    const quint64 ms = static_cast<quint64>(properties.st_mtim.tv_sec) * MsPerSecond +
        static_cast<quint64>(properties.st_mtim.tv_nsec / NanosecondsPerMs);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms), Qt::UTC);
}

} // namespace

// The time is remembered before the file is opened: one that cannot be opened is left alone until it changes again.
// Forgetting the time of a missing file makes its return be noticed whatever time it bears.
StatusFile::Read StatusFile::read(const QString& name, bool force, unsigned char* buffer, unsigned long capacity,
                                  unsigned long& length)
{
    const QByteArray& file = path(name);
    const std::optional<QDateTime> modified = ModificationTime(file);
    const bool isUnchanged = modified.has_value() && modified == m_lastModified;
    m_lastModified = modified;
    if (!modified.has_value()) {
        return Read::Missing;
    }
    if (isUnchanged && !force) {
        return Read::Unchanged;
    }
    const RegularFile opened(file);
    if (!opened.isOpen()) {
        return Read::Unreadable;
    }
    std::memset(buffer, 0, capacity);
    length = opened.read(buffer, capacity);
    return Read::Done;
}

void StatusFile::forgetTime()
{
    m_lastModified.reset();
}

// In the file system's encoding, and made once a name: making it every second took half of the instructions and all
// of the heap allocations of a cycle in which nothing changes. A name with a zero character has the empty path, which
// is no file: the system would look at what stands before the zero.
const QByteArray& StatusFile::path(const QString& name)
{
    if (m_path.isNull() || name != m_name) {
        m_name = name;
        m_path = name.contains(QChar::Null)
            ? QByteArray("")
            : FixedPaths::ConfigurationDirectory + QFile::encodeName(name) + FixedPaths::StatusFileExtension;
    }
    return m_path;
}
