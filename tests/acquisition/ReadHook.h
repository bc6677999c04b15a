// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>

/// The reads of regular files in this process, in front of the C library's.
namespace ReadHook {

/// Runs the hook once, after the next read that finds the end of a file: what was read is older than what the hook
/// does.
void AfterNextFile(const std::function<void()>& hook);

/// From now on a read returns no more than `bytesAtOnce` bytes, is interrupted by a signal before each of them, and
/// fails for good after `bytesUntilFailure`; 0 and -1 mean without a limit.
void Disturb(std::size_t bytesAtOnce, long bytesUntilFailure);

} // namespace ReadHook
