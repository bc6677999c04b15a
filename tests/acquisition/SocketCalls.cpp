// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SocketCalls.h"

#include <dlfcn.h>
#include <sys/socket.h>

namespace {

// One record per thread: a peer on another thread uses the same calls and must not appear here.
thread_local std::vector<std::string> t_order;
thread_local SocketCalls::Failure t_failure = SocketCalls::Failure::None;

template <typename Function> Function* CLibrary(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

void SocketCalls::Reset(Failure failure)
{
    t_order.clear();
    t_failure = failure;
}

std::vector<std::string> SocketCalls::Order()
{
    return t_order;
}

extern "C" ssize_t sendto(int fd, const void* buf, size_t n, int flags, const sockaddr* addr, socklen_t addr_len)
{
    t_order.emplace_back("sendto");
    const ssize_t sent = CLibrary<decltype(sendto)>("sendto")(fd, buf, n, flags, addr, addr_len);
    return t_failure == SocketCalls::Failure::ShortSend ? sent - 1 : sent;
}

extern "C" int setsockopt(int fd, int level, int optname, const void* optval, socklen_t optlen) noexcept
{
    t_order.emplace_back("setsockopt");
    if (t_failure == SocketCalls::Failure::Timeout) {
        return -1;
    }
    return CLibrary<int(int, int, int, const void*, socklen_t)>("setsockopt")(fd, level, optname, optval, optlen);
}
