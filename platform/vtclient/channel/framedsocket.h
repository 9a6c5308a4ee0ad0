// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/sendqueue.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/wire/bytebuffer.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QAbstractSocket>

#include <memory>

class QDeadlineTimer;
class QSslSocket;
class QTcpSocket;

namespace vt {

/// A channel over a connected TCP or TLS socket: each message is a frame of 4 bytes length, big endian, and
/// the message. What is sent in one turn of the event loop leaves as one write: at once where nothing waits
/// to be sent, and as far as the system takes it; the rest, and everything that is encrypted, through Qt's
/// socket.
class FramedSocket final : public QObject, public IChannel {
    Q_OBJECT

  public:
    /// Takes over \a socket, which is connected (and encrypted, if it is to be).
    explicit FramedSocket(QTcpSocket* socket);
    ~FramedSocket() override;

    void SetListener(IChannelListener* listener) override;
    void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) override;
    void Flush() override;
    qint64 Unsent() const override;
    qint64 Unfinished() const override;
    void GiveBackRoom() override;
    bool IsOpen() const override { return m_isOpen; }
    void Close() override;
    void SetMaxMessage(quint32 size) override;
    QString PeerAddress() const override { return m_peerAddress; }
    bool IsLoopback() const override { return m_isLoopback; }
    bool IsEncrypted() const override { return m_isEncrypted; }
    QString CertificateName() const override { return m_certificateName; }

  private:
    void OnReadyRead();
    void OnDisconnected();
    void ReadOn();
    bool ReadMore();
    int RoomForReading() const;
    bool GiveFrames(const QDeadlineTimer& turn, bool* isPaused);
    void Fail(const QString& reason);
    void Refuse(const QString& reason);
    QString EndText() const;

    QTcpSocket* m_socket;  ///< null once closed
    QSslSocket* m_ssl;     ///< the same, if it is one
    IChannelListener* m_listener = nullptr;
    ByteBuffer m_in;
    int m_consumed = 0;  ///< bytes of m_in that were given
    SendQueue m_out;
    quint32 m_maxMessage;
    QTimer m_again;  ///< while reading pauses
    bool m_isOpen = true;
    bool m_isReading = false;
    bool m_isFlushing = false;
    bool m_isDeaf = false;    ///< the peer broke a rule: nothing more is read
    bool m_hasEnded = false;  ///< the peer closed; what came before may be left to be read
    /// How many calls of the socket may be under way that led here. Outlives this, with the socket.
    std::shared_ptr<int> m_callsUnderWay = std::make_shared<int>(0);
    bool m_isEncrypted;
    QString m_peerAddress;
    bool m_isLoopback;
    QString m_certificateName;
};

}  // namespace vt
