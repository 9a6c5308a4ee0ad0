// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>
#include <QtCore/QDeadlineTimer>

#include <atomic>

/// Sockets as the operating system has them, for a connection that is used by one thread and may be
/// interrupted by others. Errors are the codes of the operating system; 0 is none.
namespace nativesocket {

using Handle = qintptr;
constexpr Handle NoHandle = -1;

/// A TCP socket (IPv4) that never blocks, sends at once, and is this process's alone: no child that it starts
/// meanwhile keeps the connection open. NoHandle with the reason in \a error.
Handle Open(unsigned* error);
void Close(Handle socket);
/// Makes waits of other threads for \a socket end. Where the system has no way to do that they end soon after
/// the flag is set that they were given.
void Interrupt(Handle socket);

unsigned Connect(Handle socket, quint32 ip, quint16 port, const QDeadlineTimer& deadline,
                 const std::atomic<bool>& isInterrupted);
/// All of it or an error: what is sent here always fits in an empty buffer.
unsigned Send(Handle socket, const quint8* bytes, int size);

enum class EWaiting { Nothing, Bytes, End };
/// What waits to be received: nothing, bytes, or the end of the connection, also by an error (\a error).
EWaiting Look(Handle socket, unsigned* error);
/// Waits until Look() would find something. 0 or why it did not.
unsigned WaitForInput(Handle socket, const QDeadlineTimer& deadline, const std::atomic<bool>& isInterrupted);
/// Takes up to \a size of the bytes that wait. \return how many; none where Look() would find none, at the
/// end of the connection with the reason in \a error.
int Take(Handle socket, quint8* bytes, int size, unsigned* error);

}  // namespace nativesocket
