// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// The resources that a process uses at one moment.
struct ProcessSample
{
    double pssKib = 0; ///< its share of all that it has mapped; moves with the other programs that map the same files
    double pssAnonymousKib = 0; ///< the part of it that no file backs, which does not
    double rssKib = 0;
    double privateKib = 0; ///< what it has written: heap, stacks, data
    int descriptors = 0;
    int threads = 0; ///< all of them
    int workerThreads = 0; ///< those of the device manager and of the status workers, which have QThread's plain name
    double cpuSeconds = 0; ///< of all its threads since its start
};

/// Returns false if the process does not exist or must not be inspected.
bool ReadProcess(qint64 pid, ProcessSample& sample);
