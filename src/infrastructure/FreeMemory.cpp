// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/FreeMemory.h"

#include <cstdlib> // defines __GLIBC__

#ifdef __GLIBC__
#include <malloc.h>
#endif

void ReturnFreeMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
