// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// The resources that a process uses at one moment.
struct ProcessSample
{
    double pssKib = 0; ///< share of all mapped memory; depends on other programs that map the same files
    double pssAnonymousKib = 0; ///< the part without a file behind it; independent of other programs
    double rssKib = 0;
    double privateKib = 0; ///< written memory: heap, stacks, data
    int descriptors = 0;
    int threads = 0;
    int workerThreads = 0; ///< device manager and status workers; they have QThread's default name
    double cpuSeconds = 0; ///< of all threads since the start
};

/// Returns false if the process does not exist or must not be inspected.
bool ReadProcess(qint64 pid, ProcessSample& sample);
/// What the test program itself uses.
ProcessSample OwnProcess();
