// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

/// One run of a fuzz target, with the name and arguments that libFuzzer requires. `data` is a block of exactly `size`
/// bytes and must not be modified. All objects are new in each run, so that no run depends on earlier ones. A violated
/// requirement ends the process. Always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);
