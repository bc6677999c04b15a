// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ProcessUse.h"

#include "HeapBytes.h"

#include <QDir>

namespace {

int EntriesOf(const char* directory)
{
    return QDir(QString::fromLatin1(directory))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted)
        .size();
}

} // namespace

ProcessUse ProcessUse::now()
{
    ProcessUse use;
    // Reading the folder opens one descriptor itself.
    use.descriptors = EntriesOf("/proc/self/fd") - 1;
    use.threads = EntriesOf("/proc/self/task");
    use.heapBytes = HeapBytes();
    return use;
}

QString ProcessUse::words() const
{
    return QStringLiteral("%1 descriptors, %2 threads, %3 KiB of heap")
        .arg(descriptors)
        .arg(threads)
        .arg(heapBytes / 1024);
}
