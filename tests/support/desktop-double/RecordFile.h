// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// Appends a line with a single write, because tests read the file meanwhile.
void AppendRecord(const QString& path, const QByteArray& line);
