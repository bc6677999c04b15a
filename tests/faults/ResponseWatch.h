// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <atomic>
#include <mutex>
#include <thread>

/// Measures how long due events wait in the event loop of the constructing thread.
///
/// Only the thread's own actions and waits count. The result excludes the time in which the thread was ready to run but
/// other threads had the processors, and the delays of a control thread that only sleeps. So a busy machine gives the
/// same result as an idle one.
class ResponseWatch
{
public:
    ResponseWatch();
    ~ResponseWatch();
    ResponseWatch(const ResponseWatch&) = delete;
    ResponseWatch& operator=(const ResponseWatch&) = delete;

    /// Call these when the event loop is about to run and when it has ended. The time outside is not measured.
    void resume();
    void pause();

    /// The longest wait so far, in ms.
    double worstMs() const
    {
        return m_worstMs;
    }
    /// The result as text, with and without the corrections.
    QString words() const;

private:
    void beat();
    void sleepAndCompare();
    qint64 lostByOthersNs() const;

    int m_scheduling; ///< descriptor of this thread's schedstat
    QElapsedTimer m_clock;
    QTimer m_timer;
    qint64 m_lastBeatNs = 0;
    qint64 m_lastLostNs = 0;
    double m_worstMs = 0;
    double m_worstUncorrectedMs = 0;
    mutable std::mutex m_controlMutex; ///< guards the two times, so that no delay is counted twice
    qint64 m_controlLateNs = 0; ///< sum of all delays of the control thread
    qint64 m_controlDueNs = 0; ///< when it should wake next
    std::atomic<bool> m_isEnding{false};
    std::thread m_control;
};
