// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/NetworkQuery.h"

#include <arpa/inet.h>
#include <array>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr in_port_t StatusPort = 9300;
constexpr time_t ReplyTimeoutSeconds = 1;
// A datagram of this size or less ends before the first field of a reply.
constexpr ssize_t UselessReplyBytes = 7;

// A start byte, the number of bytes that follow (12, big-endian), the request, zeros.
constexpr std::array<unsigned char, 15> c_statusRequest{{0xA5, 0x00, 0x0C, 0x50, 0xE0, 0x74, 0x08, 0x03}};

// A text that is not an address gives 0.0.0.0, which is this machine.
sockaddr_in PrinterAddress(const QString& address)
{
    sockaddr_in printer = {};
    printer.sin_family = AF_INET;
    printer.sin_port = htons(StatusPort);
    inet_pton(AF_INET, address.toLatin1().constData(), &printer.sin_addr);
    return printer;
}

class UdpSocket
{
public:
    UdpSocket()
        : descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
    }
    ~UdpSocket()
    {
        close(descriptor);
    } // does nothing without a descriptor
    UdpSocket(const UdpSocket&) = delete;
    UdpSocket& operator=(const UdpSocket&) = delete;

    const int descriptor;
};

} // namespace

int QueryPrinter(const QString& address, unsigned char* buffer, unsigned long capacity, unsigned long& length)
{
    if (address.isEmpty()) {
        return -1;
    }
    sockaddr_in peer = PrinterAddress(address);
    auto* peerAddress = reinterpret_cast<sockaddr*>(&peer);
    socklen_t peerBytes = sizeof peer;
    const UdpSocket udp;
    if (udp.descriptor < 0) {
        return -2;
    }
    if (sendto(udp.descriptor, c_statusRequest.data(), c_statusRequest.size(), 0, peerAddress, peerBytes) !=
        static_cast<ssize_t>(c_statusRequest.size())) {
        return -3;
    }
    timeval timeout = {};
    timeout.tv_sec = ReplyTimeoutSeconds;
    if (setsockopt(udp.descriptor, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout) != 0) {
        return -4;
    }
    std::memset(buffer, 0, capacity);
    const ssize_t received = recvfrom(udp.descriptor, buffer, capacity, 0, peerAddress, &peerBytes);
    if (received <= UselessReplyBytes) {
        return -5;
    }
    length = static_cast<unsigned long>(received);
    return 0;
}
