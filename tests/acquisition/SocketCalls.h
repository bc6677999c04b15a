// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// The socket calls of this process, in front of those of the C library: what was called in which order, and calls
/// that fail as they hardly ever do.
namespace SocketCalls {

enum class Failure
{
    None,
    ShortSend, ///< sendto reports a byte less
    Timeout, ///< setsockopt fails
};

/// Forgets the calls so far; from now on calls fail like this.
void Reset(Failure failure);
/// "sendto" and "setsockopt", in the order of the calls.
std::vector<std::string> Order();

} // namespace SocketCalls
