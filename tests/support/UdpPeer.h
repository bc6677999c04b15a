// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

#include <atomic>
#include <thread>

/// A printer on the loopback network: listens on its status port and answers the first request.
class UdpPeer
{
public:
    /// Sends `answers` one after another to whoever asks, each after `delayMs`, from `answerAddress`.
    UdpPeer(const char* address, const QList<QByteArray>& answers, const char* answerAddress = nullptr,
            int delayMs = 0);
    ~UdpPeer();
    UdpPeer(const UdpPeer&) = delete;
    UdpPeer& operator=(const UdpPeer&) = delete;

    /// Waits until the peer has finished, stops it and returns everything that it received.
    QList<QByteArray> takeRequests();

private:
    void listen();
    void answer(const struct sockaddr_in& asker) const;

    int m_descriptor = -1;
    int m_answerDescriptor = -1;
    QList<QByteArray> m_answers;
    int m_delayMs;
    QList<QByteArray> m_requests; ///< owned by the thread until it has ended
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
};
