// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/ShellCommand.h"

#include "infrastructure/UtilLog.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int MaximumCommandBytes = 255;

} // namespace

int RunShellCommand(const char* format, ...)
{
    std::array<char, MaximumCommandBytes + 1> command{};
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(command.data(), command.size(), format, arguments);
    va_end(arguments);
    if (length < 0 || static_cast<std::size_t>(length) >= command.size()) {
        WriteStringLog("ShellCommand", __LINE__, "RunShellCommand",
                       QStringLiteral("command refused: %d bytes do not fit into %d"), length, MaximumCommandBytes);
        return -1;
    }
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no code changes the environment while workers run
    return system(command.data());
}
