// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "OpenedPaths.h"

#include <cstdarg>
#include <dlfcn.h>
#include <mutex>

namespace {

// Never destroyed, because files are opened until the very end of the process.
struct Record
{
    std::mutex mutex;
    std::vector<std::string> paths;
};

Record& OpenRecord()
{
    static auto* record = new Record;
    return *record;
}

using OpenFunction = int (*)(const char*, int, ...);

int RecordAndOpen(const char* path, int flags, unsigned int mode)
{
    Record& record = OpenRecord();
    {
        const std::lock_guard<std::mutex> lock(record.mutex);
        record.paths.emplace_back(path);
    }
    static const auto openFile = reinterpret_cast<OpenFunction>(dlsym(RTLD_NEXT, "open64"));
    return openFile(path, flags, mode);
}

} // namespace

std::vector<std::string> TakeOpenedPaths()
{
    Record& record = OpenRecord();
    const std::lock_guard<std::mutex> lock(record.mutex);
    std::vector<std::string> paths;
    paths.swap(record.paths);
    return paths;
}

// Replaces the C library's open64(), through which Qt opens the log's files. Reading the mode is safe in any case: the
// system ignores it when no file is created.
extern "C" int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, unsigned int);
    va_end(arguments);
    return RecordAndOpen(path, flags, mode);
}
