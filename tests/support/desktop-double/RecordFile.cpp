// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "RecordFile.h"

#include <QFile>

void AppendRecord(const QString& path, const QByteArray& line)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered) ||
        file.write(line + '\n') != line.size() + 1) {
        qFatal("cannot write %s", qPrintable(path));
    }
}
