// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/modbus/fulllistener.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

FullListener::FullListener() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    m_sockets.push_back(listener);
    ::bind(listener, generic, size);
    ::getsockname(listener, generic, &size);
    ::listen(listener, 0);
    m_port = ntohs(address.sin_port);
    constexpr int EnoughMs = 200;  // a connection on this machine that takes longer is in no queue
    pollfd waited{-1, POLLOUT, 0};
    do {
        waited.fd = ::socket(AF_INET, SOCK_STREAM, 0);
        m_sockets.push_back(waited.fd);
        ::fcntl(waited.fd, F_SETFL, O_NONBLOCK);
        ::connect(waited.fd, generic, size);
    } while (::poll(&waited, 1, EnoughMs) == 1);
}

FullListener::~FullListener() {
    for (const int socket : m_sockets)
        ::close(socket);
}
