// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>

/// Replaces the C library's read() in this process, for regular files only.
namespace ReadHook {

/// Runs the hook once, after the next read that reaches the end of a file. The hook can then make the data that was
/// read obsolete.
void AfterNextFile(const std::function<void()>& hook);

/// From now on a read returns no more than `bytesAtOnce` bytes, is interrupted by a signal before each of them, and
/// fails for good after `bytesUntilFailure` bytes. 0 and -1 mean no limit.
void Disturb(std::size_t bytesAtOnce, long bytesUntilFailure);

} // namespace ReadHook
