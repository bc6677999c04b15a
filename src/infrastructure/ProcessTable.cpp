// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "ProcessTable.h"

#include <QDir>
#include <QFile>

namespace {

// The name of the process whose folder in /proc is called `entry`; empty when it is no process, or ended meanwhile.
QString ProcessName(const QString& entry)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(entry));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll().trimmed()) : QString();
}

} // namespace

int CountProcesses(const QString& name)
{
    int count = 0;
    const QStringList entries =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& entry : entries) {
        if (entry.at(0).isDigit() && ProcessName(entry).compare(name, Qt::CaseInsensitive) == 0) {
            ++count;
        }
    }
    return count;
}
