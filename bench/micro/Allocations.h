// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>

/// Heap blocks that this thread has asked for so far: malloc, calloc and realloc, which also stand behind operator new
/// and behind all that Qt allocates.
std::int64_t AllocationCount();

/// Counts from its construction to its end, and notes the allocations an iteration with the benchmark.
class AllocationNote
{
public:
    explicit AllocationNote(benchmark::State& state);
    ~AllocationNote();
    AllocationNote(const AllocationNote&) = delete;
    AllocationNote& operator=(const AllocationNote&) = delete;

private:
    benchmark::State& m_state;
    const std::int64_t m_before;
};
