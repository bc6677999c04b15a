// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "UdpPeer.h"

#include <QtGlobal>

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr in_port_t StatusPort = 9300;
constexpr int LookMs = 20;

int BoundSocket(const char* address, in_port_t port)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in own = {};
    own.sin_family = AF_INET;
    own.sin_port = htons(port);
    if (inet_pton(AF_INET, address, &own.sin_addr) != 1 ||
        bind(descriptor, reinterpret_cast<sockaddr*>(&own), sizeof own) != 0) {
        qFatal("cannot listen on %s", address);
    }
    return descriptor;
}

} // namespace

UdpPeer::UdpPeer(const char* address, const QList<QByteArray>& answers, const char* answerAddress, int delayMs)
    : m_descriptor(BoundSocket(address, StatusPort))
    , m_answerDescriptor(answerAddress == nullptr ? dup(m_descriptor) : BoundSocket(answerAddress, 0))
    , m_answers(answers)
    , m_delayMs(delayMs)
    , m_thread([this] { listen(); })
{
}

UdpPeer::~UdpPeer()
{
    takeRequests();
    close(m_descriptor);
    close(m_answerDescriptor);
}

QList<QByteArray> UdpPeer::takeRequests()
{
    m_isEnding = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    return m_requests;
}

void UdpPeer::listen()
{
    for (;;) {
        pollfd readable{m_descriptor, POLLIN, 0};
        if (poll(&readable, 1, LookMs) <= 0) {
            if (m_isEnding) {
                return;
            }
            continue;
        }
        QByteArray request(4096, '\0');
        sockaddr_in asker = {};
        socklen_t askerBytes = sizeof asker;
        const ssize_t size = recvfrom(m_descriptor, request.data(), static_cast<size_t>(request.size()), 0,
                                      reinterpret_cast<sockaddr*>(&asker), &askerBytes);
        if (size >= 0) {
            m_requests.append(request.left(static_cast<int>(size)));
            answer(asker);
        }
    }
}

void UdpPeer::answer(const sockaddr_in& asker) const
{
    for (const QByteArray& bytes : m_answers) {
        std::this_thread::sleep_for(std::chrono::milliseconds(m_delayMs));
        sendto(m_answerDescriptor, bytes.constData(), static_cast<size_t>(bytes.size()), 0,
               reinterpret_cast<const sockaddr*>(&asker), sizeof asker);
    }
}
