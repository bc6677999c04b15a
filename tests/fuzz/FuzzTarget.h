// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

/// One run of a fuzz target, by the name and with the arguments that libFuzzer asks for. `data` is a block of exactly
/// `size` bytes and must not be modified. All objects are made anew, so that no run depends on those before it; what
/// does not hold ends the process. Always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);
