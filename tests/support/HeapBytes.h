// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// The allocated heap bytes of the process, in all threads.
qint64 HeapBytes();
