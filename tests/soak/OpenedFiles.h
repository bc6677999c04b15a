// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QVector>

/// Tells in which order a few files are opened, whatever path leads to them: under which of its names a file was
/// opened does not matter, nor how quickly the names change hands.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QStringList& paths);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    /// The files opened since the last call, the first one first, as indexes into the paths.
    QVector<int> take();

private:
    int m_descriptor;
    QVector<int> m_watches;
};
