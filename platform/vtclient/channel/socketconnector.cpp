// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketconnector.h>

#include <platform/vtclient/channel/certificatenames.h>
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/channel/tlsfiles.h>

#include <QtCore/QTimer>
#include <QtNetwork/QSslSocket>
#include <QtNetwork/QTcpSocket>

namespace vt {

SocketConnector::SocketConnector(QString host, int port, bool isTls, VtClientOptions options)
    : m_host(std::move(host)), m_port(port), m_isTls(isTls), m_options(std::move(options)) {}

SocketConnector::~SocketConnector() {
    Abort();
}

QTcpSocket* SocketConnector::MakeTlsSocket(QString* error) {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    const TlsFiles files{m_options.certificateFile, m_options.privateKeyFile, m_options.caFile};
    if (!LoadTlsFiles(files, &configuration, error)) return nullptr;
    auto* const socket = new QSslSocket(this);
    socket->setSslConfiguration(configuration);
    return socket;
}

void SocketConnector::Connect() {
    Abort();
    if (!m_isTls) {
        m_socket = new QTcpSocket(this);
        connect(m_socket, &QTcpSocket::connected, this, &SocketConnector::OnReady);
    } else {
        QString error;
        m_socket = MakeTlsSocket(&error);
        if (m_socket == nullptr) {
            QTimer::singleShot(0, this, [this, error] {
                if (m_listener != nullptr) m_listener->OnConnectFailed(error);
            });
            return;
        }
        connect(static_cast<QSslSocket*>(m_socket), &QSslSocket::encrypted, this, &SocketConnector::OnReady);
    }
    connect(m_socket, &QAbstractSocket::errorOccurred, this, &SocketConnector::OnError);
    if (m_isTls)
        static_cast<QSslSocket*>(m_socket)->connectToHostEncrypted(m_host, static_cast<quint16>(m_port));
    else
        m_socket->connectToHost(m_host, static_cast<quint16>(m_port));
}

void SocketConnector::Abort() {
    if (m_socket == nullptr) return;
    m_socket->disconnect(this);
    m_socket->deleteLater();
    m_socket = nullptr;
}

// Qt takes a server for the host that its certificate has as its common name, too.
bool SocketConnector::IsWhoWasAskedFor() const {
    const auto* const ssl = qobject_cast<QSslSocket*>(m_socket);
    return ssl == nullptr || certificatenames::NamesHost(ssl->peerCertificate(), m_host);
}

void SocketConnector::OnReady() {
    if (!IsWhoWasAskedFor()) {
        const QString reason =
            QStringLiteral("the server's certificate: '%1' is not among its subject alternative names")
                .arg(m_host);
        Abort();
        if (m_listener != nullptr) m_listener->OnConnectFailed(reason);
        return;
    }
    QTcpSocket* const socket = m_socket;
    m_socket = nullptr;
    socket->disconnect(this);
    auto channel = std::make_unique<FramedSocket>(socket);
    if (m_listener != nullptr) m_listener->OnConnected(std::move(channel));
}

void SocketConnector::OnError() {
    const QString reason = ErrorText();
    Abort();
    if (m_listener != nullptr) m_listener->OnConnectFailed(reason);
}

QString SocketConnector::ErrorText() const {
    const auto* const ssl = qobject_cast<QSslSocket*>(m_socket);
    if (ssl == nullptr) return m_socket->errorString();
    if (!ssl->sslHandshakeErrors().isEmpty())
        return QStringLiteral("the server's certificate: %1")
            .arg(ssl->sslHandshakeErrors().first().errorString());
    const bool isInHandshake = m_socket->error() == QAbstractSocket::SslHandshakeFailedError ||
                               m_socket->error() == QAbstractSocket::RemoteHostClosedError;
    if (!isInHandshake) return m_socket->errorString();
    return QStringLiteral("TLS failed (does the server speak TLS?): %1").arg(m_socket->errorString());
}

}  // namespace vt
