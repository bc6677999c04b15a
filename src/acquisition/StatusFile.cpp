// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/StatusFile.h"

#include "infrastructure/RegularFile.h"

#include <QFile>

#include <cstring>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr qint64 MsPerSecond = 1000;
constexpr qint64 NanosecondsPerMs = 1000000;

// Returns nothing if there is no such file. A null QDateTime would not do: before Qt 5.14 it equals 1 January 1970,
// local time. The timestamp is in UTC: local time would cost look-ups of the time-zone file and lock contention among
// the workers every second.
std::optional<QDateTime> ModificationTime(const QByteArray& path)
{
    struct stat properties = {};
    if (stat(path.constData(), &properties) != 0) {
        return std::nullopt;
    }
    // Unsigned, because a file may have any timestamp: extreme ones wrap round and still differ from others.
    const quint64 ms = static_cast<quint64>(properties.st_mtim.tv_sec) * MsPerSecond +
        static_cast<quint64>(properties.st_mtim.tv_nsec / NanosecondsPerMs);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms), Qt::UTC);
}

} // namespace

StatusFile::StatusFile(QByteArray directory)
    : m_directory(std::move(directory))
{
}

// The timestamp is remembered before the file is opened: a file that cannot be opened is not tried again until it
// changes. The timestamp of a missing file is forgotten, so that the file is read when it returns with the same one.
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

// Returns the path in the file system's encoding. The path is made once for each name: making it in each poll took half
// of the instructions and all heap allocations of a poll in which nothing changes. A name with a zero character has the
// empty path, which is no file: the system would look up the part before the zero.
const QByteArray& StatusFile::path(const QString& name)
{
    if (m_path.isNull() || name != m_name) {
        m_name = name;
        m_path = name.contains(QChar::Null) ? QByteArray("")
                                            : m_directory + QFile::encodeName(name) + FixedPaths::StatusFileExtension;
    }
    return m_path;
}
