// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QVector>

/// Observes the order in which a few files are opened, by whatever name. It does not matter how quickly the names move
/// between the files.
class OpenedFiles
{
public:
    explicit OpenedFiles(const QStringList& paths);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    /// The files opened since the last call, in order, as indexes into the paths.
    QVector<int> take();

private:
    int m_descriptor;
    QVector<int> m_watches;
};
