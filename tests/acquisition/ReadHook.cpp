// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ReadHook.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <utility>

// Declared here because its header declares read(), too.
extern "C" long syscall(long number, ...);

namespace {

std::function<void()> s_hook;
std::size_t s_bytesAtOnce = 0;
long s_bytesLeft = -1;
bool s_isInterrupted = false;

bool IsDisturbed()
{
    return s_bytesAtOnce > 0 || s_bytesLeft >= 0;
}

bool IsRegularFile(int descriptor)
{
    struct stat properties = {};
    return fstat(descriptor, &properties) == 0 && S_ISREG(properties.st_mode);
}

ssize_t DisturbedRead(int descriptor, void* buffer, std::size_t size)
{
    s_isInterrupted = !s_isInterrupted;
    if (s_isInterrupted) {
        errno = EINTR;
        return -1;
    }
    if (s_bytesLeft == 0) {
        errno = EIO;
        return -1;
    }
    if (s_bytesAtOnce > 0) {
        size = std::min(size, s_bytesAtOnce);
    }
    if (s_bytesLeft > 0) {
        size = std::min(size, static_cast<std::size_t>(s_bytesLeft));
    }
    const long count = syscall(SYS_read, descriptor, buffer, size);
    if (s_bytesLeft > 0 && count > 0) {
        s_bytesLeft -= count;
    }
    return count;
}

} // namespace

void ReadHook::AfterNextFile(const std::function<void()>& hook)
{
    s_hook = hook;
}

void ReadHook::Disturb(std::size_t bytesAtOnce, long bytesUntilFailure)
{
    s_bytesAtOnce = bytesAtOnce;
    s_bytesLeft = bytesUntilFailure;
    s_isInterrupted = false;
}

// Replaces the C library's read().
extern "C" ssize_t read(int fd, void* buf, size_t nbytes)
{
    if (IsDisturbed() && IsRegularFile(fd)) {
        return DisturbedRead(fd, buf, nbytes);
    }
    const ssize_t count = syscall(SYS_read, fd, buf, nbytes);
    if (count == 0 && s_hook && IsRegularFile(fd)) {
        std::exchange(s_hook, nullptr)();
    }
    return count;
}
