// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/ProcessTable.h"

#include <array>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A name and its line end. Names of kernel threads have up to 63 bytes.
constexpr std::size_t NameBytes = 64;

// Returns the name of the process whose folder in `table` is `entry`; empty if the process has ended.
QString ProcessName(int table, const char* entry)
{
    const QByteArray path = QByteArray(entry) + "/comm";
    const int file = openat(table, path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return {};
    }
    std::array<char, NameBytes> name{};
    const ssize_t length = read(file, name.data(), name.size());
    close(file);
    return length > 0 ? QString::fromLocal8Bit(name.data(), static_cast<int>(length)).trimmed() : QString();
}

} // namespace

int CountProcesses(const QString& name)
{
    DIR* table = opendir("/proc");
    if (table == nullptr) {
        return 0;
    }
    int count = 0;
    while (const dirent* entry = readdir(table)) {
        const char first = entry->d_name[0];
        if (first >= '0' && first <= '9' &&
            ProcessName(dirfd(table), entry->d_name).compare(name, Qt::CaseInsensitive) == 0) {
            ++count;
        }
    }
    closedir(table);
    return count;
}
