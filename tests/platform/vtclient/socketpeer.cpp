// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/socketpeer.h>

#include <tests/support/waituntil.h>

#include <QtCore/QtEndian>
#include <QtNetwork/QHostAddress>

namespace {

constexpr int HeaderSize = 4;

}  // namespace

SocketPeer::SocketPeer(int port) {
    m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
}

bool SocketPeer::WaitConnected() {
    return WaitUntil([this] { return IsConnected(); });
}

bool SocketPeer::WaitClosed() {
    return WaitUntil([this] { return IsClosed(); });
}

void SocketPeer::SendBytes(const QByteArray& bytes) {
    m_socket.write(bytes);
    m_socket.flush();
}

void SocketPeer::SendFrame(const QByteArray& message) {
    const quint32 size = qToBigEndian(static_cast<quint32>(message.size()));
    SendBytes(QByteArray(reinterpret_cast<const char*>(&size), HeaderSize) + message);
}

void SocketPeer::SendHello(quint32 version, const char* user, const char* token) {
    vt::HelloMessage hello;
    hello.version = version;
    hello.application = QStringLiteral("raw");
    hello.machine = QStringLiteral("here");
    hello.user = QString::fromLatin1(user);
    hello.token = QString::fromLatin1(token);
    Send(hello);
}

void SocketPeer::Subscribe(quint32 sub, const char* path) {
    vt::SubscribeMessage subscribe;
    subscribe.sub = sub;
    subscribe.path = QString::fromLatin1(path);
    Send(subscribe);
}

const std::vector<vt::Message>& SocketPeer::Received() {
    m_in += m_socket.readAll();
    int consumed = 0;
    while (m_in.size() - consumed >= HeaderSize) {
        const int size = static_cast<int>(qFromBigEndian<quint32>(m_in.constData() + consumed));
        if (m_in.size() - consumed - HeaderSize < size) break;
        vt::Message message;
        vt::MessageReader reader(m_in.constData() + consumed + HeaderSize, size);
        if (ReadAny(reader, &message)) m_received.push_back(message);
        consumed += HeaderSize + size;
    }
    m_in.remove(0, consumed);
    return m_received;
}

const vt::Message* SocketPeer::WaitFor(bool (*isSuch)(const vt::Message&)) {
    const auto hasCome = [this, isSuch] {
        Received();
        while (m_seen < m_received.size()) {
            m_found = m_received[m_seen++];
            if (isSuch(m_found)) return true;
        }
        return false;
    };
    return WaitUntil(hasCome) ? &m_found : nullptr;
}
