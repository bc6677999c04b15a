// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "infrastructure/FixedPaths.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// The status file of one printer at a time: its path and the timestamp of the last read. Not thread-safe.
class StatusFile
{
public:
    enum class Read
    {
        Missing,
        Unchanged, ///< not opened, because it has the remembered timestamp
        Unreadable, ///< could not be opened or is not a regular file
        Done
    };

    /// `directory` is in the file system's encoding and ends in a slash.
    explicit StatusFile(QByteArray directory = QByteArray(FixedPaths::ConfigurationDirectory));

    /// Reads up to `capacity` bytes of the status file of the printer called `name`, unless it has the remembered
    /// timestamp; `force` reads it anyway. On Done `buffer` holds `length` bytes of the file, then zeros. Otherwise
    /// both are unchanged.
    Read read(const QString& name, bool force, unsigned char* buffer, unsigned long capacity, unsigned long& length);
    /// Makes the next read() read the file, whatever its timestamp.
    void forgetTime();
    /// Returns the timestamp (UTC) that the file had at the last read(); nothing if it was missing.
    std::optional<QDateTime> lastModified() const
    {
        return m_lastModified;
    }

private:
    const QByteArray& path(const QString& name);

    QByteArray m_directory;
    QString m_name; ///< the name from which m_path was made
    QByteArray m_path; ///< null before the first read
    std::optional<QDateTime> m_lastModified; ///< UTC; none before the first read and after the file was missing
};
