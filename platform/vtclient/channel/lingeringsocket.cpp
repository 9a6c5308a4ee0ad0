// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/lingeringsocket.h>

#include <platform/vtclient/channel/socketcalls.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtNetwork/QSslSocket>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vt {

namespace {

constexpr std::chrono::milliseconds LookInterval(100);

qint64 UnsentOf(const QTcpSocket& socket) {
    const auto* const ssl = qobject_cast<const QSslSocket*>(&socket);
    return socket.bytesToWrite() + (ssl != nullptr ? ssl->encryptedBytesToWrite() : 0);
}

}  // namespace

std::deque<LingeringSocket*> LingeringSocket::s_all;
qint64 LingeringSocket::s_bytes = 0;

void LingeringSocket::TakeOver(QTcpSocket* socket, std::shared_ptr<const int> callsUnderWay) {
    socket->setParent(nullptr);
    const qint64 unsent = UnsentOf(*socket);
    const bool mayLinger = socket->state() == QAbstractSocket::ConnectedState && MakeRoom(unsent);
    if (!mayLinger) socket->abort();
    auto* const lingering = new LingeringSocket(socket, std::move(callsUnderWay));
    if (mayLinger)
        lingering->Linger();
    else
        lingering->End();
}

// A peer that reads has read the words of those that have been there longest.
bool LingeringSocket::MakeRoom(qint64 unsent) {
    if (unsent > vtlimits::MaxLingeringBytes) return false;
    while (s_all.size() >= vtlimits::MaxLingering || s_bytes + unsent > vtlimits::MaxLingeringBytes) {
        LingeringSocket* const first = s_all.front();
        first->StopLingering();
        first->m_socket->disconnect(first);
        first->m_socket->abort();
        first->End();
    }
    return true;
}

// What is left when the program ends goes with it.
LingeringSocket::LingeringSocket(QTcpSocket* socket, std::shared_ptr<const int> callsUnderWay)
    : QObject(QCoreApplication::instance()),
      m_socket(socket),
      m_ssl(qobject_cast<QSslSocket*>(socket)),
      m_callsUnderWay(std::move(callsUnderWay)) {
    m_socket->setParent(this);
}

LingeringSocket::~LingeringSocket() {
    StopLingering();
}

void LingeringSocket::StopLingering() {
    const auto found = std::find(s_all.begin(), s_all.end(), this);
    if (found == s_all.end()) return;
    s_all.erase(found);
    s_bytes -= m_bytes;
}

void LingeringSocket::Linger() {
    s_all.push_back(this);
    m_bytes = UnsentOf(*m_socket);
    s_bytes += m_bytes;
    connect(m_socket, &QTcpSocket::disconnected, this, &LingeringSocket::End);
    connect(m_socket, &QTcpSocket::readyRead, this, &LingeringSocket::OnReadyRead);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &LingeringSocket::EndSendingOnceSent);
    if (m_ssl != nullptr)
        connect(m_ssl, &QSslSocket::encryptedBytesWritten, this, &LingeringSocket::EndSendingOnceSent);
    QTimer::singleShot(vtlimits::LingerTime, this, &LingeringSocket::End);
    OnReadyRead();
    EndSendingOnceSent();
}

void LingeringSocket::End() {
    if (*m_callsUnderWay == 0)
        deleteLater();
    else
        QTimer::singleShot(LookInterval, this, &LingeringSocket::End);
}

void LingeringSocket::OnReadyRead() {
    m_socket->readAll();
}

void LingeringSocket::EndSendingOnceSent() {
    if (m_hasEnded || UnsentOf(*m_socket) != 0) return;
    m_hasEnded = true;
    EndSending(m_socket->socketDescriptor());
    if (m_ssl != nullptr) QTimer::singleShot(0, this, &LingeringSocket::LetGoOfEncryption);
}

// What still comes is read by nobody, so nobody has to decrypt it.
void LingeringSocket::LetGoOfEncryption() {
    if (*m_callsUnderWay != 0) {
        QTimer::singleShot(LookInterval, this, &LingeringSocket::LetGoOfEncryption);
        return;
    }
    if (m_socket->state() != QAbstractSocket::ConnectedState) return;
    const qintptr descriptor = AnotherDescriptor(m_socket->socketDescriptor());
    if (descriptor == -1) return;
    m_socket->disconnect(this);
    delete m_socket;
    m_ssl = nullptr;
    m_socket = new QTcpSocket(this);
    m_socket->setSocketDescriptor(descriptor);
    connect(m_socket, &QTcpSocket::disconnected, this, &LingeringSocket::End);
    connect(m_socket, &QTcpSocket::readyRead, this, &LingeringSocket::OnReadyRead);
}

}  // namespace vt
