// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <fcntl.h>
#include <unistd.h>

/// It grows while a file stays open.
inline int LowestFreeDescriptor()
{
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return descriptor;
}
