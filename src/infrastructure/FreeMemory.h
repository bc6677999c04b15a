// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Returns the heap's free pages to the system, where the C library can do that. The C library itself keeps what lies
/// between blocks in use. Takes 20 ms for 60 MiB, during which other threads may have to wait for memory.
void ReturnFreeMemory();
