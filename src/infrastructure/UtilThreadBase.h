// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <atomic>

/// Base of the long-running workers: the two flags of a loop that never returns to its thread's event loop, and a
/// pause that a stop request ends early.
///
/// Derived classes offer SlotTaskStart(), which sets `bTaskStarted` and loops until WaitForSleep() tells it to stop,
/// and SlotThreadQuit(), which sets `bThreadQuit`. Neither flag is ever cleared: an ended worker is not started again.
class UtilThreadBase : public QObject
{
    Q_OBJECT

public:
    explicit UtilThreadBase(QObject* parent);
    ~UtilThreadBase() override = default;

    /// Sleeps for about `ms` milliseconds in the calling thread and returns whether a stop was requested.
    /// From 500 ms on the pause is taken in slices of 500 ms, with a look at the flag before each; what is left
    /// over (and any pause below 500 ms) is slept in one piece. Zero and negative values do not sleep.
    bool WaitForSleep(int ms) const;

    /// Set by the worker's start slot; read and written in the worker's thread alone.
    bool bTaskStarted = false;
    /// Stop request. Set from any thread: a queued call does not reach a worker while its loop runs.
    std::atomic<bool> bThreadQuit{false};
};
