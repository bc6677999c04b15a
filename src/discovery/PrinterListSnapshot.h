// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QVariant;

/// A copy of the printer list in a memory file, for QSettings to read. The copy cannot change between check and parse.
/// It has its own timestamp, because QSettings identifies files by size and timestamp.
///
/// A list that is missing, not a regular file or larger than 1 MiB is not usable. A value that holds a stored object
/// (`Name=@Variant(...)`) counts as missing. QSettings would create any such object: a hundred bytes that announce a
/// list of two thousand million elements, or deeply nested lists, would end the program. Texts and numbers never have
/// this form.
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
    /// The path by which this process can read the copy while the object lives.
    QString path() const;
    /// The text of a value that QSettings has read from the copy; empty for a stored object.
    static QString text(const QVariant& value);

private:
    int m_descriptor = -1;
};
