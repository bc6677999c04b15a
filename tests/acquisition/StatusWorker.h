// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "AnnotatedThread.h"
#include "TrdGetPrinterStatus.h"

#include <QList>

#include <memory>
#include <mutex>

/// A status worker whose current record a test can reach, and whose loop it can run cycle by cycle.
class StatusWorker : public TrdGetPrinterStatus
{
public:
    StatusWorker();

    using TrdGetPrinterStatus::stCurrent;

    /// One cycle of the loop in the calling thread, by a stop that is requested beforehand: the pause, which comes
    /// last, ends at once. Returns how many signals were emitted.
    int runCycle();

private:
    int m_signals = 0;
};

/// A status worker that loops on a thread of its own, as the window has it.
class RunningStatusWorker
{
public:
    RunningStatusWorker(int index, QList<stPrinterManager>* list);
    ~RunningStatusWorker();
    RunningStatusWorker(const RunningStatusWorker&) = delete;
    RunningStatusWorker& operator=(const RunningStatusWorker&) = delete;

    /// What the window's start signal does.
    void start();
    /// Requests the stop and waits for the loop's end; false when it does not end in time.
    bool stop();
    StatusWorker& worker()
    {
        return *m_worker;
    }
    /// The argument of each signal so far.
    QList<int> signalledIndices() const;
    /// When each was emitted, in ms on the monotonic clock.
    QList<qint64> signalTimesMs() const;

private:
    mutable std::mutex m_mutex;
    QList<int> m_indices; ///< guarded by m_mutex
    QList<qint64> m_timesMs; ///< guarded by m_mutex
    AnnotatedThread m_thread;
    std::unique_ptr<StatusWorker> m_worker = std::make_unique<StatusWorker>();
};

/// Milliseconds on the monotonic clock.
qint64 MonotonicMs();

/// Every field, a line each, so that a failed comparison can be read.
QString Words(const stPrinterInfo& info);
QString Words(const stPrinterState& state);
QString Words(const stPrinterManager& printer);

/// A state none of whose fields has its default; ready, so that nothing is read twice.
stPrinterState FilledState();
stPrinterManager FilledPrinter(const QString& name);

/// The element at `index`, copied as workers do.
stPrinterManager Listed(QList<stPrinterManager>& list, int index);
/// Replaces the list as the device manager does, but also by one of the same printers; then it is empty in between.
void ReplaceList(QList<stPrinterManager>& list, const QList<stPrinterManager>& newList);
