// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <functional>
#include <thread>

/// Runs `body`, which must return soon after `isEnding` has become true.
class StoppableThread
{
public:
    explicit StoppableThread(const std::function<void(const std::atomic<bool>& isEnding)>& body)
        : m_thread([this, body] { body(m_isEnding); })
    {
    }
    ~StoppableThread()
    {
        stop();
    }
    StoppableThread(const StoppableThread&) = delete;
    StoppableThread& operator=(const StoppableThread&) = delete;

    /// Returns when the body has returned.
    void stop()
    {
        m_isEnding = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

private:
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread; ///< the last member: it uses the other
};
