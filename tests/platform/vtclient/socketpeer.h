// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/anymessage.h>

#include <QtNetwork/QTcpSocket>

#include <variant>
#include <vector>

/// The client's end of a TCP connection by hand: sends whatever it is told, and keeps what comes.
class SocketPeer {
  public:
    /// Starts to connect to \a port on this machine.
    explicit SocketPeer(int port);

    bool IsConnected() const { return m_socket.state() == QAbstractSocket::ConnectedState; }
    bool IsClosed() const { return m_socket.state() == QAbstractSocket::UnconnectedState; }
    bool WaitConnected();
    bool WaitClosed();
    /// Waits for such a message; null if none comes. The others before it are dropped.
    template <class M>
    const M* WaitFor() {
        return std::get_if<M>(
            WaitFor([](const vt::Message& come) { return std::holds_alternative<M>(come); }));
    }

    void SendBytes(const QByteArray& bytes);
    void SendFrame(const QByteArray& message);
    void Send(const vt::Message& message) { SendFrame(ToBytes(message)); }
    void SendHello(quint32 version = 1, const char* user = "", const char* token = "");
    void Subscribe(quint32 sub, const char* path);
    /// From now on what comes stays with the sender, as far as the system does not take it.
    void StopReading() { m_socket.setReadBufferSize(1); }
    void ReadAgain() { m_socket.setReadBufferSize(0); }

    QTcpSocket& Socket() { return m_socket; }
    /// The headers of the messages that came.
    const std::vector<vt::Message>& Received();

  private:
    const vt::Message* WaitFor(bool (*isSuch)(const vt::Message&));

    QTcpSocket m_socket;
    QByteArray m_in;
    std::vector<vt::Message> m_received;
    std::size_t m_seen = 0;
    vt::Message m_found;
};
