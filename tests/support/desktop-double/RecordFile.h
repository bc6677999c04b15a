// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// Appends a line to a file that tests read meanwhile: whole, by one write.
void AppendRecord(const QString& path, const QByteArray& line);
