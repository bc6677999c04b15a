// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <atomic>

/// Base class of the workers, whose loops never return to their threads' event loops. It has the loop's two flags and a
/// pause that a stop request ends early.
///
/// A derived class has the slots SlotTaskStart(), which sets `bTaskStarted` and loops until WaitForSleep() returns
/// true, and SlotThreadQuit(), which sets `bThreadQuit`. Neither flag is ever cleared: a worker cannot be started
/// again.
class UtilThreadBase : public QObject
{
    Q_OBJECT

public:
    explicit UtilThreadBase(QObject* parent);
    ~UtilThreadBase() override = default;

    /// Sleeps for about `ms` milliseconds on the calling thread and returns whether a stop was requested. The pause
    /// consists of slices of 500 ms and a remainder. The flag is checked before each slice and at the end. Zero and
    /// negative values do not sleep.
    bool WaitForSleep(int ms) const;

    /// Set by the worker's start slot; used only on the worker's thread.
    bool bTaskStarted = false;
    /// Stop request; may be set from any thread. A queued call does not reach a worker while its loop runs.
    std::atomic<bool> bThreadQuit{false};
};
