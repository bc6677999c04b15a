// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// Replaces the C library's socket calls in this process: records their order and simulates rare failures.
namespace SocketCalls {

enum class Failure
{
    None,
    ShortSend, ///< sendto reports one byte less
    Timeout, ///< setsockopt fails
};

/// Forgets the calls so far. From now on calls fail as `failure` says.
void Reset(Failure failure);
/// The names "sendto" and "setsockopt", in the order of the calls.
std::vector<std::string> Order();

} // namespace SocketCalls
