// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process with a message unless `holds`. A fuzzer reports that as a crash, a test as a failure.
inline void Require(bool holds, const char* requirement)
{
    if (!holds) {
        std::fprintf(stderr, "Does not hold: %s\n", requirement);
        std::abort();
    }
}
