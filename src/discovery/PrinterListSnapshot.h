// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QVariant;

/// What the printer list file said at one moment, as a file in memory for QSettings to read: nobody changes it between
/// the look at it and the parse, and QSettings, which knows files by size and time, takes none for another.
///
/// A list that is missing, no regular file or larger than 1 MiB is not usable. A value that holds a stored object
/// (`Name=@Variant(...)`) counts as missing. QSettings would bring such an object to life, whatever it is: a hundred
/// bytes that announce a list of two thousand million elements, or lists nested deep enough, end the program. Texts and
/// numbers are never written so.
class PrinterListSnapshot
{
public:
    explicit PrinterListSnapshot(const QString& path);
    ~PrinterListSnapshot();
    PrinterListSnapshot(const PrinterListSnapshot&) = delete;
    PrinterListSnapshot& operator=(const PrinterListSnapshot&) = delete;

    bool isUsable() const
    {
        return m_descriptor >= 0;
    }
    /// Where this process reads it, as long as the object lives.
    QString path() const;
    /// The text of a value that QSettings has read from there.
    static QString text(const QVariant& value);

private:
    int m_descriptor = -1;
};
