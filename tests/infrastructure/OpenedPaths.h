// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// The paths that this process has opened since the last call, exactly as they were passed to the system. The file
/// system itself does not distinguish a doubled slash from a single one.
std::vector<std::string> TakeOpenedPaths();
