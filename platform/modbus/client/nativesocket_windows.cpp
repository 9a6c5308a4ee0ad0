// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/nativesocket.h>

#include <platform/modbus/modbussystem.h>

#include <winsock2.h>
#include <ws2tcpip.h>

using modbussystem::CodeOf;
using modbussystem::EError;

namespace {

/// Sockets are there for as long as the process: who uses them last is not known.
bool StartSockets() {
    static const bool isStarted = [] {
        WSADATA data;
        return ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    return isStarted;
}

unsigned SocketError() {
    return static_cast<unsigned>(::WSAGetLastError());
}

SOCKET Socket(nativesocket::Handle handle) {
    return static_cast<SOCKET>(handle);
}

enum class EEvent { Input, Connected };

/// Waits in slices, since the end of a socket need not wake a thread that waits for it.
unsigned Wait(nativesocket::Handle handle, EEvent event, const QDeadlineTimer& deadline,
              const std::atomic<bool>& isInterrupted) {
    constexpr qint64 SliceMs = 20;
    while (!isInterrupted) {
        fd_set wanted;
        fd_set failed;
        FD_ZERO(&wanted);
        FD_SET(Socket(handle), &wanted);
        FD_ZERO(&failed);
        FD_SET(Socket(handle), &failed);
        const qint64 remaining = deadline.remainingTime();
        timeval slice{0, static_cast<long>(qBound<qint64>(0, remaining, SliceMs) * 1000)};
        fd_set* const readable = event == EEvent::Input ? &wanted : nullptr;
        fd_set* const writable = event == EEvent::Connected ? &wanted : nullptr;
        const int count = ::select(0, readable, writable, &failed, &slice);
        if (count > 0) return 0;
        if (count == SOCKET_ERROR) return SocketError();
        if (remaining <= 0) return WSAETIMEDOUT;
    }
    return ERROR_CANCELLED;
}

/// How many bytes there are of those that wait; none at the end of the connection too, with why in \a error.
int Receive(nativesocket::Handle socket, quint8* bytes, int size, int flags, unsigned* error) {
    const int count = ::recv(Socket(socket), reinterpret_cast<char*>(bytes), size, flags);
    const bool isNothing = count == SOCKET_ERROR && ::WSAGetLastError() == WSAEWOULDBLOCK;
    *error = count > 0 || isNothing ? 0 : count == 0 ? unsigned{WSAECONNRESET} : SocketError();
    return count > 0 ? count : 0;
}

}  // namespace

nativesocket::Handle nativesocket::Open(unsigned* error) {
    if (!StartSockets()) {
        *error = WSANOTINITIALISED;
        return NoHandle;
    }
    const SOCKET socket = ::WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                                       WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
    u_long nonBlocking = 1;
    const BOOL on = TRUE;
    if (socket != INVALID_SOCKET && ::ioctlsocket(socket, FIONBIO, &nonBlocking) == 0 &&
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on) == 0)
        return static_cast<Handle>(socket);
    *error = SocketError();
    if (socket != INVALID_SOCKET) ::closesocket(socket);
    return NoHandle;
}

void nativesocket::Close(Handle socket) {
    ::closesocket(Socket(socket));
}

void nativesocket::Interrupt(Handle socket) {
    ::shutdown(Socket(socket), SD_BOTH);
}

unsigned nativesocket::Connect(Handle socket, quint32 ip, quint16 port, const QDeadlineTimer& deadline,
                               const std::atomic<bool>& isInterrupted) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    if (::connect(Socket(socket), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return 0;
    if (::WSAGetLastError() != WSAEWOULDBLOCK) return SocketError();
    const unsigned waitError = Wait(socket, EEvent::Connected, deadline, isInterrupted);
    if (waitError != 0) return waitError;
    int error = 0;
    int size = sizeof error;
    if (::getsockopt(Socket(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size) != 0)
        return SocketError();
    return static_cast<unsigned>(error);
}

unsigned nativesocket::Send(Handle socket, const quint8* bytes, int size) {
    const int sent = ::send(Socket(socket), reinterpret_cast<const char*>(bytes), size, 0);
    if (sent == SOCKET_ERROR) return SocketError();
    return sent == size ? 0 : unsigned{WSAEMSGSIZE};
}

nativesocket::EWaiting nativesocket::Look(Handle socket, unsigned* error) {
    quint8 first = 0;
    if (Receive(socket, &first, 1, MSG_PEEK, error) > 0) return EWaiting::Bytes;
    return *error == 0 ? EWaiting::Nothing : EWaiting::End;
}

unsigned nativesocket::WaitForInput(Handle socket, const QDeadlineTimer& deadline,
                                    const std::atomic<bool>& isInterrupted) {
    return Wait(socket, EEvent::Input, deadline, isInterrupted);
}

int nativesocket::Take(Handle socket, quint8* bytes, int size, unsigned* error) {
    return Receive(socket, bytes, size, 0, error);
}
