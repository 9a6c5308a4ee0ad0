// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketlistener.h>

#include <platform/app/trace.h>
#include <platform/vtclient/channel/certificatenames.h>
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/channel/socketcalls.h>
#include <platform/vtclient/vtattemptlimiter.h>
#include <platform/vtclient/wire/messagewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslSocket>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vt {

namespace {

QString HandshakeErrorText(const QSslSocket& socket) {
    if (socket.error() == QAbstractSocket::RemoteHostClosedError)
        return QStringLiteral("it broke off the TLS handshake (does it trust our certificate?)");
    return QStringLiteral("TLS failed (does it speak TLS?): %1").arg(socket.errorString());
}

/// Whom \a socket's peer counts for.
QString HostOf(const QSslSocket& socket) {
    return VtAttemptLimiter::HostOf(QStringLiteral("[%1]:0").arg(socket.peerAddress().toString()));
}

void TraceRefused(const QString& host, const QString& address, const QString& reason) {
    MCS_TRACE_OF(host, QStringLiteral("A connection from %1 is refused: %2").arg(address, reason));
}

/// Why the certificate that the peer showed cannot be used; empty if it can, or there is none. One that does
/// not hold is worse than none: its owner is told.
QString CertificateProblem(const QSslSocket& socket) {
    const QSslCertificate certificate = socket.peerCertificate();
    if (certificate.isNull()) return QString();
    const QList<QSslError> errors = socket.sslHandshakeErrors();
    if (!errors.isEmpty()) return errors.first().errorString();
    return certificatenames::UserOf(certificate).isEmpty()
               ? QStringLiteral("It has not exactly one common name, and so names no user")
               : QString();
}

}  // namespace

SocketListener::SocketListener() {
    m_nextHandshakes.setSingleShot(true);
    connect(&m_nextHandshakes, &QTimer::timeout, this, &SocketListener::StartSomeHandshakes);
}
SocketListener::~SocketListener() = default;

bool SocketListener::ReadCertificates(QString* error) {
    if (!m_isTls) return true;
    if (m_tlsFiles.privateKey.isEmpty()) {
        *error = QStringLiteral("the certificate '%1' needs its private key").arg(m_tlsFiles.certificate);
        return false;
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(
        {});  // nobody's client certificate is trusted unless the caller says whose
    if (!LoadTlsFiles(m_tlsFiles, &configuration, error)) return false;
    if (!IsInForce(m_tlsFiles.certificate, configuration, error)) return false;
    configuration.setPeerVerifyMode(m_tlsFiles.authorities.isEmpty() ? QSslSocket::VerifyNone
                                                                     : QSslSocket::QueryPeer);
    m_configuration = configuration;
    return true;
}

bool SocketListener::Listen(const VtServerOptions& options, bool needsCredentials, QString* error) {
    QHostAddress address;
    if (options.address == QLatin1String("localhost"))
        address = QHostAddress::LocalHost;
    else if (!address.setAddress(options.address)) {
        *error = QStringLiteral("'%1' is no IP address").arg(options.address);
        return false;
    }
    if (options.port < 0 || options.port > 65535) {
        *error = QStringLiteral("%1 is no port").arg(options.port);
        return false;
    }
    m_isTls = !options.certificateFile.isEmpty();
    if (!address.isLoopback() && !options.isInsecure && !(m_isTls && needsCredentials)) {
        *error = QStringLiteral("listening on %1 needs TLS and credentials (or to be allowed as insecure)")
                     .arg(options.address);
        return false;
    }
    m_tlsFiles = {options.certificateFile, options.privateKeyFile, options.caFile};
    if (!ReadCertificates(error)) return false;
    if (listen(address, static_cast<quint16>(options.port))) {
        SetListenQueue(socketDescriptor(), vtlimits::ListenQueue);
        pauseAccepting();
        m_notifier = std::make_unique<QSocketNotifier>(socketDescriptor(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &SocketListener::AcceptSome);
        return true;
    }
    *error = QStringLiteral("cannot listen on %1 port %2: %3")
                 .arg(options.address)
                 .arg(options.port)
                 .arg(errorString());
    return false;
}

QString SocketListener::Address() const {
    return serverAddress().toString();
}

// Qt's own accepting tells of no error once it has met the end of a run of connections, and then tries again
// and again where the process has no descriptor left.
void SocketListener::AcceptSome() {
    const QPointer<SocketListener> self(this);
    for (int i = 0; self && i < vtlimits::AcceptedPerTurn; ++i) {
        qintptr descriptor = -1;
        QString reason;
        const EAccept outcome = AcceptConnection(socketDescriptor(), &descriptor, &reason);
        if (outcome == EAccept::Failed) return PauseAccepting(reason);
        if (outcome == EAccept::NoneWaits) {
            m_isAcceptFailing = false;
            return;
        }
        incomingConnection(descriptor);
    }
}

// Told once until all who wait were accepted.
void SocketListener::PauseAccepting(const QString& reason) {
    m_notifier->setEnabled(false);
    QTimer::singleShot(vtlimits::AcceptPause, m_notifier.get(), [this] { m_notifier->setEnabled(true); });
    if (std::exchange(m_isAcceptFailing, true)) return;
    MCS_TRACE(QStringLiteral("No connection can be accepted: %1").arg(reason));
}

void SocketListener::incomingConnection(qintptr descriptor) {
    KeepFromChildren(descriptor);
    if (m_isTls) return AwaitTls(descriptor);
    auto* const socket = new QTcpSocket;
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    m_handler(std::make_unique<FramedSocket>(socket));
}

void SocketListener::AwaitTls(qintptr descriptor) {
    if (m_waitingRoom.Count() >= static_cast<std::size_t>(MaxPending()))
        Refuse(m_waitingRoom.First(), QStringLiteral("too many connections wait for their handshake"));
    auto* const socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    socket->setReadBufferSize(vtlimits::TlsReadAhead);
    m_waitingRoom.Enter(socket, HostOf(*socket));
    connect(socket, &QSslSocket::encrypted, this, [this, socket] { OnEncrypted(socket); });
    connect(socket, &QAbstractSocket::errorOccurred, this,
            [this, socket] { Refuse(socket, HandshakeErrorText(*socket)); });
    QTimer::singleShot(vtlimits::HelloTimeout, socket,
                       [this, socket] { Refuse(socket, QStringLiteral("no TLS handshake in time")); });
    // What has come by then is what the handshake begins with.
    connect(socket, &QIODevice::readyRead, this, [this, socket] {
        disconnect(socket, &QIODevice::readyRead, this, nullptr);
        m_handshakes.push_back(socket);
        if (!m_nextHandshakes.isActive()) m_nextHandshakes.start(0);
    });
}

void SocketListener::StartSomeHandshakes() {
    QElapsedTimer turn;
    turn.start();
    bool hasPlace = true;
    while (!m_handshakes.empty() && std::chrono::nanoseconds(turn.nsecsElapsed()) < vtlimits::TurnTime) {
        hasPlace = MakeHandshakePlace();
        if (!hasPlace) break;
        QSslSocket* const socket = m_handshakes.front();
        m_handshakes.pop_front();
        m_inHandshake.Enter(socket, HostOf(*socket));
        socket->setSslConfiguration(m_configuration);
        socket->startServerEncryption();
    }
    if (!m_handshakes.empty())
        m_nextHandshakes.start(hasPlace ? std::chrono::milliseconds(0) : vtlimits::HandshakeRetry);
}

// From here on a connection costs as much as a client, whether it goes on or not.
bool SocketListener::MakeHandshakePlace() {
    if (m_inHandshake.Count() < static_cast<std::size_t>(vtlimits::MaxHandshakes)) return true;
    if (m_inHandshake.FirstHasWaited() < vtlimits::HandshakePatience) return false;
    Refuse(m_inHandshake.First(),
           QStringLiteral("it takes its time with the TLS handshake, and others wait"));
    return true;
}

void SocketListener::Forget(QSslSocket* socket) {
    m_waitingRoom.Leave(socket);
    m_inHandshake.Leave(socket);
    m_handshakes.erase(std::remove(m_handshakes.begin(), m_handshakes.end(), socket), m_handshakes.end());
    socket->disconnect(this);
}

void SocketListener::Refuse(QSslSocket* socket, const QString& reason) {
    if (!m_waitingRoom.Has(socket)) return;
    Forget(socket);
    TraceRefused(HostOf(*socket), socket->peerAddress().toString(), reason);
    socket->abort();
    socket->deleteLater();
}

void SocketListener::OnEncrypted(QSslSocket* socket) {
    const QString problem = CertificateProblem(*socket);
    Forget(socket);
    auto channel = std::make_unique<FramedSocket>(socket);
    if (problem.isEmpty()) return m_handler(std::move(channel));
    const QString reason = QStringLiteral("the client certificate: ") + problem;
    TraceRefused(VtAttemptLimiter::HostOf(channel->PeerAddress()), channel->PeerAddress(), reason);
    channel->SendInParts(Encode(ByeMessage{EBye::NotAdmitted, reason}), QByteArray(), {});
    channel->Close();
}

}  // namespace vt
