// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <csignal>

/// Blocks SIGINT and SIGTERM from construction on and accepts them only while it sleeps, so that no file is left
/// half-written. Create it before any thread.
class StopSignals
{
public:
    StopSignals();

    /// Returns false as soon as a stop signal arrives, or true when the time is over.
    bool sleep(std::chrono::milliseconds time) const;

private:
    sigset_t m_signals = {};
};
