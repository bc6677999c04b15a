// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ResponseWatch.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <array>
#include <chrono>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int BeatMs = 10;
constexpr qint64 NanosecondsPerMs = 1000000;
constexpr double NanosecondsPerMsAsDouble = 1e6;

// The second of the three numbers: how long this thread was ready to run but did not run.
qint64 WaitedForProcessorNs(int descriptor)
{
    std::array<char, 128> text{};
    const ssize_t size = pread(descriptor, text.data(), text.size(), 0);
    if (size <= 0) {
        return 0; // this kernel does not count it
    }
    return QByteArray(text.data(), static_cast<int>(size)).split(' ').value(1).toLongLong();
}

} // namespace

ResponseWatch::ResponseWatch()
    : m_scheduling(open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC))
{
    m_clock.start();
    m_controlDueNs = BeatMs * NanosecondsPerMs;
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(BeatMs);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
    m_control = std::thread([this] { sleepAndCompare(); });
}

ResponseWatch::~ResponseWatch()
{
    m_isEnding = true;
    m_control.join();
    close(m_scheduling);
}

void ResponseWatch::resume()
{
    m_lastLostNs = lostByOthersNs();
    m_lastBeatNs = m_clock.nsecsElapsed();
    m_timer.start();
}

// Counts the last wait, which is not yet over when the loop ends.
void ResponseWatch::pause()
{
    beat();
    m_timer.stop();
}

QString ResponseWatch::words() const
{
    return QString::asprintf("answered within %.1f ms, busy machine included %.1f ms", m_worstMs, m_worstUncorrectedMs);
}

void ResponseWatch::beat()
{
    const qint64 lostNs = lostByOthersNs();
    const qint64 nowNs = m_clock.nsecsElapsed();
    const qint64 lateNs = nowNs - m_lastBeatNs - BeatMs * NanosecondsPerMs;
    // Subtracted twice, because other processes also delay what this thread waits for, such as a lock.
    const qint64 ownNs = lateNs - 2 * (lostNs - m_lastLostNs);
    m_worstUncorrectedMs = std::max(m_worstUncorrectedMs, static_cast<double>(lateNs) / NanosecondsPerMsAsDouble);
    m_worstMs = std::max(m_worstMs, static_cast<double>(ownNs) / NanosecondsPerMsAsDouble);
    m_lastBeatNs = nowNs;
    m_lastLostNs = lostNs;
}

// Includes the time by which the control thread is overdue at this moment.
qint64 ResponseWatch::lostByOthersNs() const
{
    const std::lock_guard<std::mutex> lock(m_controlMutex);
    const qint64 overdueNs = std::max<qint64>(0, m_clock.nsecsElapsed() - m_controlDueNs);
    return WaitedForProcessorNs(m_scheduling) + m_controlLateNs + overdueNs;
}

void ResponseWatch::sleepAndCompare()
{
    while (!m_isEnding) {
        std::this_thread::sleep_for(std::chrono::milliseconds(BeatMs));
        const std::lock_guard<std::mutex> lock(m_controlMutex);
        const qint64 nowNs = m_clock.nsecsElapsed();
        m_controlLateNs += std::max<qint64>(0, nowNs - m_controlDueNs);
        m_controlDueNs = nowNs + BeatMs * NanosecondsPerMs;
    }
}
