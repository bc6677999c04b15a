// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <csignal>

// Holds SIGINT and SIGTERM back from the moment of construction and looks for them only while it sleeps, so that no
// file is left half-written. Must be made before any thread.
class StopSignals
{
public:
    StopSignals();

    // False, at once, when a stop signal has come; true when the time is over.
    bool sleep(std::chrono::milliseconds time) const;

private:
    sigset_t m_signals = {};
};
