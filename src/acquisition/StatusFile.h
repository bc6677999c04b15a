// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

/// The status file of one printer at a time: where it lies and when what was read last was written.
class StatusFile
{
public:
    enum class Read
    {
        Missing,
        Unchanged, ///< not opened, since it bears the remembered time
        Unreadable, ///< it could not be opened
        Done
    };

    /// Reads the file of the printer called `name`, up to `capacity` bytes, unless it is unchanged; `force` reads it
    /// all the same. `buffer` is filled with zeros first; `length` is what was really read.
    Read read(const QString& name, bool force, unsigned char* buffer, unsigned long capacity, unsigned long& length);
    /// Makes the next read take place, whatever time the file bears.
    void forgetTime();

private:
    const QByteArray& path(const QString& name);

    QString m_name; ///< the printer's name that the next path was made from
    QByteArray m_path; ///< null: none yet
    std::optional<QDateTime> m_lastModified; ///< UTC; none before the first read or after the file was missing
};
