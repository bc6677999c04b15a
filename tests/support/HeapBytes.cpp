// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "HeapBytes.h"

// The sanitizers replace the C library's heap, which then reports nothing.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include <cstddef>

extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // GCC has no header for it

qint64 HeapBytes()
{
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
}

#else
#include <malloc.h>

qint64 HeapBytes()
{
#if __GLIBC_PREREQ(2, 33)
    const struct mallinfo2 heap = mallinfo2();
#else
    const struct mallinfo heap = mallinfo(); // limited to 2 GiB
#endif
    return static_cast<qint64>(heap.uordblks) + static_cast<qint64>(heap.hblkhd);
}

#endif
