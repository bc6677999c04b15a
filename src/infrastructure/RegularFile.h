// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// A file that is opened only if it is a regular file, links followed. Opening never blocks, not even on a FIFO.
///
/// The check applies to the opened file: replacing the path meanwhile cannot put another kind of file in its place.
/// The destructor closes the file.
class RegularFile
{
public:
    explicit RegularFile(const QString& path);
    /// Takes a path in the file system's encoding; the empty path is no file.
    explicit RegularFile(const QByteArray& encodedPath);
    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// False when the path could not be opened or is not a regular file.
    bool isOpen() const
    {
        return m_descriptor >= 0;
    }
    /// The size in bytes at the time of opening.
    qint64 size() const
    {
        return m_size;
    }
    /// Reads up to `capacity` bytes from the current position and returns the number of bytes read.
    unsigned long read(unsigned char* buffer, unsigned long capacity) const;

private:
    int m_descriptor;
    qint64 m_size = 0;
};
