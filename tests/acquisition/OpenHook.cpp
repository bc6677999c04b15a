// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "OpenHook.h"

#include <cstdarg>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int CurrentDirectory = -100; // AT_FDCWD; its header declares open(), too

std::function<void()> s_hook;

bool IsStatusFile(const std::string& path)
{
    const std::string extension = ".dat";
    return path.size() > extension.size() &&
        path.compare(path.size() - extension.size(), extension.size(), extension) == 0;
}

} // namespace

void OnNextStatusFile(const std::function<void()>& hook)
{
    s_hook = hook;
}

// Replaces the C library's open().
extern "C" int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, unsigned int);
    va_end(arguments);
    if (s_hook && IsStatusFile(path)) {
        std::exchange(s_hook, nullptr)();
    }
    return static_cast<int>(syscall(SYS_openat, CurrentDirectory, path, flags, mode));
}
