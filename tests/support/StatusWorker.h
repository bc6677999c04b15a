// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "acquisition/TrdGetPrinterStatus.h"
#include "infrastructure/AnnotatedThread.h"

#include <QList>

#include <memory>
#include <mutex>

/// A status worker that gives tests access to its current record and runs its loop cycle by cycle.
class StatusWorker : public TrdGetPrinterStatus
{
public:
    StatusWorker();

    using TrdGetPrinterStatus::stCurrent;

    /// Runs one cycle of the loop in the calling thread: the stop is requested beforehand, so that the final pause ends
    /// at once. Returns the number of signals.
    int runCycle();

    /// CheckPrinterStatus or CheckPrinterStatus_QZ.
    using Evaluation = int (TrdGetPrinterStatus::*)(unsigned char*, unsigned long);
    /// Evaluates memory of exactly these bytes, so that a memory checker detects reads beyond them.
    int evaluate(Evaluation evaluation, const QByteArray& bytes);

private:
    int m_signals = 0;
};

/// A status worker on its own thread, as in the window.
class RunningStatusWorker
{
public:
    RunningStatusWorker(int index, QList<stPrinterManager>* list);
    ~RunningStatusWorker();
    RunningStatusWorker(const RunningStatusWorker&) = delete;
    RunningStatusWorker& operator=(const RunningStatusWorker&) = delete;

    /// Does what the window's start signal does.
    void start();
    /// Requests the stop and waits for the end of the loop. Returns false on a timeout.
    bool stop();
    StatusWorker& worker()
    {
        return *m_worker;
    }
    /// The argument of each signal so far.
    QList<int> signalledIndices() const;
    /// The time of each signal, in ms on the monotonic clock.
    QList<qint64> signalTimesMs() const;

private:
    mutable std::mutex m_mutex;
    QList<int> m_indices; ///< guarded by m_mutex
    QList<qint64> m_timesMs; ///< guarded by m_mutex
    AnnotatedThread m_thread;
    std::unique_ptr<StatusWorker> m_worker = std::make_unique<StatusWorker>();
};

/// The time in ms on the monotonic clock.
qint64 MonotonicMs();

/// A copy of the element at `index`, made as workers make it.
stPrinterManager Listed(QList<stPrinterManager>& list, int index);
/// Replaces the list as the device manager does. A list of the same printers is replaced, too, and is empty in between.
void ReplaceList(QList<stPrinterManager>& list, const QList<stPrinterManager>& newList);
