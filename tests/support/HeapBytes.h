// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// What the process holds on the heap: blocks that were given out and not yet given back, in all threads.
qint64 HeapBytes();
