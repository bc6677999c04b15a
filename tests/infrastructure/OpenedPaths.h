// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// The paths that this process has opened since the last call, letter by letter as they were handed to the system:
/// the file system itself does not tell a doubled slash from a single one.
std::vector<std::string> TakeOpenedPaths();
