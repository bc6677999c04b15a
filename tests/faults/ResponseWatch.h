// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <atomic>
#include <thread>

/// Measures how long the event loop of the thread that made it leaves a due event waiting.
///
/// Blamed is only what the thread itself did or waited for. Not counted: the time for which it was ready to run while
/// other threads had the processors, and the time by which a control thread that only sleeps woke too late. So a busy
/// machine looks no worse than an idle one.
class ResponseWatch
{
public:
    ResponseWatch();
    ~ResponseWatch();
    ResponseWatch(const ResponseWatch&) = delete;
    ResponseWatch& operator=(const ResponseWatch&) = delete;

    /// To be called when the event loop is about to run, and when it has ended: what lies outside is not watched.
    void resume();
    void pause();

    /// The longest wait so far, in ms.
    double worstMs() const
    {
        return m_worstMs;
    }
    /// The same in words, with what it would be if nothing were taken off.
    QString words() const;

private:
    void beat();
    void sleepAndCompare();
    qint64 lostByOthersNs() const;

    int m_scheduling; ///< descriptor of this thread's scheduling figures
    QElapsedTimer m_clock;
    QTimer m_timer;
    qint64 m_lastBeatNs = 0;
    qint64 m_lastLostNs = 0;
    double m_worstMs = 0;
    double m_worstUncorrectedMs = 0;
    std::atomic<qint64> m_controlLateNs{0}; ///< all that the control thread ever was late
    std::atomic<qint64> m_controlDueNs{0}; ///< when it should wake next
    std::atomic<bool> m_isEnding{false};
    std::thread m_control;
};
