// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/lingeringsocket.h>

#include <platform/vtclient/nativesocket.h>
#include <platform/vtclient/vtlimits.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtNetwork/QSslSocket>

namespace vt {

int LingeringSocket::s_count = 0;

void LingeringSocket::TakeOver(QTcpSocket* socket) {
    socket->setParent(nullptr);
    if (socket->state() != QAbstractSocket::ConnectedState || s_count >= vtlimits::MaxLingering) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    new LingeringSocket(socket);
}

// What is left when the program ends goes with it.
LingeringSocket::LingeringSocket(QTcpSocket* socket)
    : QObject(QCoreApplication::instance()), m_socket(socket), m_ssl(qobject_cast<QSslSocket*>(socket)) {
    ++s_count;
    m_socket->setParent(this);
    connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(m_socket, &QTcpSocket::readyRead, this, &LingeringSocket::OnReadyRead);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &LingeringSocket::EndSendingOnceSent);
    if (m_ssl != nullptr)
        connect(m_ssl, &QSslSocket::encryptedBytesWritten, this, &LingeringSocket::EndSendingOnceSent);
    QTimer::singleShot(vtlimits::LingerTime, this, &QObject::deleteLater);
    OnReadyRead();
    EndSendingOnceSent();
}

LingeringSocket::~LingeringSocket() {
    --s_count;
}

void LingeringSocket::OnReadyRead() {
    m_socket->readAll();
}

void LingeringSocket::EndSendingOnceSent() {
    const qint64 encrypted = m_ssl != nullptr ? m_ssl->encryptedBytesToWrite() : 0;
    if (m_hasEnded || m_socket->bytesToWrite() + encrypted != 0) return;
    m_hasEnded = true;
    EndSending(m_socket->socketDescriptor());
}

}  // namespace vt
