// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Allocations.h"

#include <cstddef>

namespace {

thread_local std::int64_t s_count = 0;

} // namespace

// The C library's own names for its allocator. The functions below replace malloc, calloc and realloc in every library
// of the process.
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t nmemb, std::size_t size);
void* __libc_realloc(void* ptr, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t size)
{
    ++s_count;
    return __libc_malloc(size);
}

void* calloc(std::size_t nmemb, std::size_t size)
{
    ++s_count;
    return __libc_calloc(nmemb, size);
}

void* realloc(void* ptr, std::size_t size)
{
    ++s_count;
    return __libc_realloc(ptr, size);
}

} // extern "C"

std::int64_t AllocationCount()
{
    return s_count;
}

AllocationNote::AllocationNote(benchmark::State& state)
    : m_state(state)
    , m_before(AllocationCount())
{
}

AllocationNote::~AllocationNote()
{
    m_state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(AllocationCount() - m_before), benchmark::Counter::kAvgIterations);
}
