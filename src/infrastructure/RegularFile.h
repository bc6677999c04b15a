// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// A file opened for reading only if it is a regular one, links followed; never blocks, also not on a FIFO.
///
/// What was opened is what was looked at: replacing the path meanwhile cannot put another kind of file in its place.
/// Closed with the object.
class RegularFile
{
public:
    explicit RegularFile(const QString& path);
    /// The same with a path in the file system's encoding; the empty path is no file.
    explicit RegularFile(const QByteArray& encodedPath);
    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// False when the path could not be opened or is anything but a regular file.
    bool isOpen() const
    {
        return m_descriptor >= 0;
    }
    /// Size in bytes when it was opened.
    qint64 size() const
    {
        return m_size;
    }
    /// Reads up to `capacity` bytes from the present position and returns how many were really read.
    unsigned long read(unsigned char* buffer, unsigned long capacity) const;

private:
    int m_descriptor;
    qint64 m_size = 0;
};
