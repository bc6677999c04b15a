// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What this process holds at one moment.
struct ProcessUse
{
    int descriptors = 0;
    int threads = 0;
    qint64 heapBytes = 0; ///< allocated and not yet freed

    static ProcessUse now();
    /// For example "7 descriptors, 3 threads, 512 KiB of heap".
    QString words() const;
};
