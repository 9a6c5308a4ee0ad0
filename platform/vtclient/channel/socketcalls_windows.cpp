// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketcalls.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QSocketNotifier>

#include <winsock2.h>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<SOCKET>(descriptor), SD_SEND);
}

// To share a socket here takes a detour over a description of it, which has not been tried.
qintptr vt::AnotherDescriptor(qintptr /*descriptor*/) {
    return -1;
}

// Qt sees to it for the sockets that it makes, not for those that it accepts.
void vt::KeepFromChildren(qintptr descriptor) {
    ::SetHandleInformation(reinterpret_cast<HANDLE>(descriptor), HANDLE_FLAG_INHERIT, 0);
}

void vt::SetListenQueue(qintptr descriptor, int length) {
    ::listen(static_cast<SOCKET>(descriptor), length);
}

// Everything goes through Qt's socket: WSASend beside it has not been tried on this system.
qint64 vt::SendAtOnce(qintptr /*descriptor*/, const SendPiece* /*pieces*/, int /*count*/) {
    return 0;
}

vt::EAccept vt::AcceptConnection(qintptr listening, qintptr* descriptor, QString* reason) {
    const SOCKET accepted = ::accept(static_cast<SOCKET>(listening), nullptr, nullptr);
    if (accepted == INVALID_SOCKET) {
        const int error = ::WSAGetLastError();
        if (error == WSAEWOULDBLOCK || error == WSAECONNRESET) return EAccept::NoneWaits;
        *reason = qt_error_string(error);
        return EAccept::Failed;
    }
    *descriptor = static_cast<qintptr>(accepted);
    // It would go on telling whoever watches the listening socket.
    QSocketNotifier watch(*descriptor, QSocketNotifier::Read);
    watch.setEnabled(false);
    return EAccept::Done;
}

int vt::MaxPending() {
    return vtlimits::MaxPendingConnections;
}
