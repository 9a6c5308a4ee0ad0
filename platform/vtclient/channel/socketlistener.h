// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/tlsfiles.h>
#include <platform/vtclient/channel/waitingroom.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QTcpServer>

#include <deque>
#include <functional>
#include <memory>

class QSocketNotifier;
class QSslSocket;

namespace vt {

/// Accepts TCP or TLS connections and hands them on as channels. Whoever connects to a TLS port costs a
/// descriptor until the first byte comes; then handshakes start, in the order in which they can, for as much
/// of each turn of the event loop as leaves the others theirs, and with a bounded number under way at once.
/// Main thread.
class SocketListener final : public QTcpServer {
    Q_OBJECT

  public:
    using Handler = std::function<void(std::unique_ptr<IChannel>)>;

    SocketListener();
    ~SocketListener() override;

    bool Listen(const VtServerOptions& options, bool needsCredentials, QString* error);
    /// Once more those that Listen() was told of. False with the reason in \a error; then nothing changes.
    bool ReadCertificates(QString* error);
    void SetHandler(Handler handler) { m_handler = std::move(handler); }
    QString Address() const;
    int Port() const { return serverPort(); }

  protected:
    void incomingConnection(qintptr descriptor) override;

  private:
    void AcceptSome();
    void PauseAccepting(const QString& reason);
    void AwaitTls(qintptr descriptor);
    void StartSomeHandshakes();
    bool MakeHandshakePlace();
    void OnEncrypted(QSslSocket* socket);
    void Refuse(QSslSocket* socket, const QString& reason);
    void Forget(QSslSocket* socket);

    Handler m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;  ///< of connections that wait; null until it listens
    bool m_isTls = false;
    bool m_isAcceptFailing = false;  ///< and that was traced
    TlsFiles m_tlsFiles;
    QSslConfiguration m_configuration;
    WaitingRoom<QSslSocket> m_waitingRoom;  ///< who is not encrypted yet
    std::deque<QSslSocket*> m_handshakes;   ///< that can start: something has come
    WaitingRoom<QSslSocket> m_inHandshake;  ///< of m_waitingRoom, whose handshake has started
    QTimer m_nextHandshakes;
};

}  // namespace vt
