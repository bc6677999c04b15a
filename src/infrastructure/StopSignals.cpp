// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/StopSignals.h"

#include <algorithm>
#include <cerrno>

StopSignals::StopSignals()
{
    sigemptyset(&m_signals);
    sigaddset(&m_signals, SIGINT);
    sigaddset(&m_signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &m_signals, nullptr);
}

bool StopSignals::sleep(std::chrono::milliseconds time) const
{
    using std::chrono::nanoseconds;
    using std::chrono::seconds;
    using std::chrono::steady_clock;

    const auto end = steady_clock::now() + time;
    while (true) {
        const nanoseconds rest = std::max<nanoseconds>(end - steady_clock::now(), nanoseconds::zero());
        const auto wholeSeconds = std::chrono::duration_cast<seconds>(rest);
        const timespec timeout = {wholeSeconds.count(), (rest - wholeSeconds).count()};
        if (sigtimedwait(&m_signals, nullptr, &timeout) >= 0) {
            return false;
        }
        if (errno == EAGAIN) {
            return true;
        }
        // A handler for another signal has run (EINTR): sleep for the rest.
    }
}
