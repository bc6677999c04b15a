// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#pragma once

#include <mutex>

/// The one lock of the shared printer list, the `QList<stPrinterManager>` that the window owns, the device manager
/// replaces and each status worker reads and writes at its own index.
///
/// Held to copy a record, to compare and replace the list, or to write a record back; never across file, process or
/// signal work. A standard mutex, which, unlike Qt's, thread sanitizers see through.
std::mutex& PrinterListMutex();
