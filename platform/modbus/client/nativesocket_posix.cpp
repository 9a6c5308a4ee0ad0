// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/nativesocket.h>

#include <platform/modbus/modbussystem.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

using modbussystem::CodeOf;
using modbussystem::EError;

namespace {

unsigned Errno() {
    return static_cast<unsigned>(errno);
}

/// A socket that does not block and is not inherited, from the beginning where the system has that: another
/// thread may be starting a process.
int CreateSocket() {
#ifdef SOCK_CLOEXEC
    return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
#else
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (socket == -1) return -1;
    if (::fcntl(socket, F_SETFL, O_NONBLOCK) == 0 && ::fcntl(socket, F_SETFD, FD_CLOEXEC) == 0) return socket;
    ::close(socket);
    return -1;
#endif
}

/// Waits for one of \a events. An interruption shuts the socket down, which is an event of all kinds.
unsigned Wait(nativesocket::Handle socket, short events, const QDeadlineTimer& deadline) {
    pollfd waited{static_cast<int>(socket), events, 0};
    for (;;) {
        const int count = ::poll(&waited, 1, static_cast<int>(deadline.remainingTime()));
        if (count > 0) return 0;
        if (count == 0) return ETIMEDOUT;
        if (errno != EINTR) return Errno();
    }
}

/// How many bytes there are of those that wait; none at the end of the connection too, with why in \a error.
int Receive(nativesocket::Handle socket, quint8* bytes, int size, int flags, unsigned* error) {
    ssize_t count = -1;
    do
        count = ::recv(static_cast<int>(socket), bytes, static_cast<size_t>(size), flags | MSG_DONTWAIT);
    while (count == -1 && errno == EINTR);
    const bool isNothing = count == -1 && (errno == EAGAIN || errno == EWOULDBLOCK);
    *error = count > 0 || isNothing ? 0 : count == 0 ? unsigned{ECONNRESET} : Errno();
    return static_cast<int>(std::max<ssize_t>(count, 0));
}

}  // namespace

nativesocket::Handle nativesocket::Open(unsigned* error) {
    const int socket = CreateSocket();
    const int on = 1;
    if (socket != -1 && ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on) == 0) return socket;
    *error = Errno();
    if (socket != -1) ::close(socket);
    return NoHandle;
}

void nativesocket::Close(Handle socket) {
    ::close(static_cast<int>(socket));
}

void nativesocket::Interrupt(Handle socket) {
    ::shutdown(static_cast<int>(socket), SHUT_RDWR);
}

unsigned nativesocket::Connect(Handle socket, quint32 ip, quint16 port, const QDeadlineTimer& deadline,
                               const std::atomic<bool>& isInterrupted) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    const int descriptor = static_cast<int>(socket);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return 0;
    if (errno != EINPROGRESS && errno != EINTR) return Errno();
    // Before this point there was nothing that Interrupt() could have ended.
    if (isInterrupted) return CodeOf(EError::Interrupted);
    const unsigned waitError = Wait(socket, POLLOUT, deadline);
    if (waitError != 0) return waitError;
    int error = 0;
    socklen_t size = sizeof error;
    if (::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size) != 0) return Errno();
    return static_cast<unsigned>(error);
}

unsigned nativesocket::Send(Handle socket, const quint8* bytes, int size) {
    const auto length = static_cast<size_t>(size);
    ssize_t sent = -1;
    do
        sent = ::send(static_cast<int>(socket), bytes, length, MSG_NOSIGNAL);
    while (sent == -1 && errno == EINTR);
    if (sent == -1) return Errno();
    return sent == size ? 0 : unsigned{EMSGSIZE};
}

nativesocket::EWaiting nativesocket::Look(Handle socket, unsigned* error) {
    quint8 first = 0;
    if (Receive(socket, &first, 1, MSG_PEEK, error) > 0) return EWaiting::Bytes;
    return *error == 0 ? EWaiting::Nothing : EWaiting::End;
}

unsigned nativesocket::WaitForInput(Handle socket, const QDeadlineTimer& deadline, const std::atomic<bool>&) {
    return Wait(socket, POLLIN, deadline);
}

int nativesocket::Take(Handle socket, quint8* bytes, int size, unsigned* error) {
    return Receive(socket, bytes, size, 0, error);
}
