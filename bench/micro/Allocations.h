// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>

/// The number of heap blocks that this thread has allocated so far with malloc, calloc and realloc. operator new and Qt
/// use these functions, too.
std::int64_t AllocationCount();

/// Counts allocations from its construction to its end and adds the number for each iteration to the benchmark.
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
