// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketcalls.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QSocketNotifier>

#include <winsock2.h>

void vt::EndSending(qintptr descriptor) {
    ::shutdown(static_cast<SOCKET>(descriptor), SD_SEND);
}

qintptr vt::AnotherDescriptor(qintptr descriptor) {
    WSAPROTOCOL_INFOW description;
    if (::WSADuplicateSocketW(static_cast<SOCKET>(descriptor), ::GetCurrentProcessId(), &description) != 0)
        return -1;
    const SOCKET socket = ::WSASocketW(FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO,
                                       &description, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
    return socket == INVALID_SOCKET ? -1 : static_cast<qintptr>(socket);
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
