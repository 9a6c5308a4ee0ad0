// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/framedsocket.h>

#include <platform/vtclient/channel/certificatenames.h>
#include <platform/vtclient/channel/lingeringsocket.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QtEndian>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslSocket>

namespace vt {

namespace {

constexpr int HeaderSize = 4;
/// What Qt and OpenSSL hold of a connection at most, with all that is read ahead in each layer.
constexpr qint64 MostOfTls = 160 * 1024;
/// How a TLS client begins; as a length it would be far too much.
constexpr const char* TlsHandshake = "\x16\x03";

/// The socket calls as long as this lasts, and longer than the one that it calls may.
class CallUnderWay {
  public:
    explicit CallUnderWay(std::shared_ptr<int> count) : m_count(std::move(count)) { ++*m_count; }
    ~CallUnderWay() { --*m_count; }
    CallUnderWay(const CallUnderWay&) = delete;
    CallUnderWay& operator=(const CallUnderWay&) = delete;

  private:
    std::shared_ptr<int> m_count;
};

QString AddressText(const QTcpSocket& socket) {
    const QString host = socket.peerAddress().toString();
    const bool isV6 = host.contains(QLatin1Char(':'));
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(host).arg(socket.peerPort());
}

/// What speaks who begins with \a beginning, which as a length nobody could mean.
QString ForeignText(const QByteArray& beginning) {
    if (beginning.startsWith(TlsHandshake)) return QStringLiteral("the peer speaks TLS, this port does not");
    QString text;
    for (const char byte : beginning)
        text += byte >= ' ' && byte <= '~' ? QString(QLatin1Char(byte)) : QStringLiteral(".");
    return QStringLiteral("the peer does not speak this protocol: it begins with '%1'").arg(text);
}

}  // namespace

FramedSocket::FramedSocket(QTcpSocket* socket)
    : m_socket(socket),
      m_ssl(qobject_cast<QSslSocket*>(socket)),
      m_maxMessage(vtlimits::MaxFrameBeforeWelcome),
      m_isEncrypted(m_ssl != nullptr),
      m_peerAddress(AddressText(*socket)),
      m_isLoopback(socket->peerAddress().isLoopback()) {
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket->setReadBufferSize(m_maxMessage + HeaderSize);
    if (m_ssl != nullptr) {
        const bool isVerified = m_ssl->sslHandshakeErrors().isEmpty() && !m_ssl->peerCertificate().isNull();
        if (isVerified) m_certificateName = certificatenames::UserOf(m_ssl->peerCertificate());
    }
    connect(m_socket, &QTcpSocket::readyRead, this, &FramedSocket::OnReadyRead);
    connect(m_socket, &QTcpSocket::disconnected, this, &FramedSocket::OnDisconnected);
    m_again.setSingleShot(true);
    connect(&m_again, &QTimer::timeout, this, &FramedSocket::ReadOn);
}

FramedSocket::~FramedSocket() {
    Close();
}

void FramedSocket::SetListener(IChannelListener* listener) {
    m_listener = listener;
    // What came before there was somebody to read it, and whatever the end of the connection left.
    if (listener != nullptr) m_again.start(0);
}

void FramedSocket::SetMaxMessage(quint32 size) {
    m_maxMessage = size;
    if (!m_isOpen) return;
    const bool isServersTls = m_ssl != nullptr && m_ssl->mode() == QSslSocket::SslServerMode;
    const qint64 ahead = isServersTls ? vtlimits::TlsReadAhead : vtlimits::ReadAhead;
    m_socket->setReadBufferSize(qMin<qint64>(size + HeaderSize, ahead));
}

// With a message beyond what TLS holds anyway, who takes its time with it takes all of that, too.
qint64 FramedSocket::Unfinished() const {
    const qint64 room = m_in.Room();
    return m_isEncrypted && room > vtlimits::TlsReadAhead ? room + MostOfTls : room;
}

void FramedSocket::GiveBackRoom() {
    if (!m_isReading) m_in.GiveBackIfEmpty();
    m_out.GiveBackIfEmpty();
}

void FramedSocket::SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) {
    if (!m_isOpen) return;
    const auto size = head.size() + static_cast<std::size_t>(shared.size()) + tail.size();
    m_out.Append(static_cast<quint32>(size), head);
    if (!shared.isEmpty()) m_out.AppendShared(shared);
    m_out.Append(tail);
}

void FramedSocket::Flush() {
    if (!m_isOpen || m_out.IsEmpty() || m_socket->state() != QAbstractSocket::ConnectedState) return;
    // Past Qt's socket, which would copy it, and watch for a moment whether it may write.
    if (!m_isEncrypted && m_socket->bytesToWrite() == 0) m_out.SendAtOnce(m_socket->socketDescriptor());
    if (m_out.IsEmpty()) return;
    // Sending may find that the connection is gone, and over TLS it may read. The listener hears of it later.
    m_isFlushing = true;
    m_out.GiveTo(*m_socket);
    m_socket->flush();
    m_isFlushing = false;
}

qint64 FramedSocket::Unsent() const {
    if (!m_isOpen) return 0;
    // A TLS socket counts what it has not encrypted yet apart from what it has.
    const qint64 encrypted = m_ssl != nullptr ? m_ssl->encryptedBytesToWrite() : 0;
    return m_out.Size() + m_socket->bytesToWrite() + encrypted;
}

void FramedSocket::Close() {
    if (!m_isOpen) return;
    Flush();
    m_isOpen = false;
    m_socket->disconnect(this);
    LingeringSocket::TakeOver(m_socket, m_callsUnderWay);
    m_socket = m_ssl = nullptr;
}

// The connection is of no use any more.
void FramedSocket::Fail(const QString& reason) {
    if (!m_isOpen) return;
    m_socket->disconnect(this);
    m_socket->abort();
    Close();
    if (m_listener != nullptr) m_listener->OnClosed(reason);
}

// The peer speaks the protocol and broke a rule: it may be told so.
void FramedSocket::Refuse(const QString& reason) {
    m_isDeaf = true;
    const QPointer<FramedSocket> self(this);
    m_listener->OnClosed(reason);
    if (self) Close();
}

void FramedSocket::OnDisconnected() {
    m_hasEnded = true;
    if (m_isFlushing) return m_again.start(0);
    ReadOn();
}

QString FramedSocket::EndText() const {
    const bool isClosedByPeer = m_socket->error() == QAbstractSocket::RemoteHostClosedError ||
                                m_socket->error() == QAbstractSocket::UnknownSocketError;
    return isClosedByPeer ? QStringLiteral("the peer closed the connection") : m_socket->errorString();
}

// Who has paused goes on when it is its turn, and not because more has come.
void FramedSocket::OnReadyRead() {
    if (m_again.isActive()) return;
    if (m_isFlushing) return m_again.start(0);
    ReadOn();
}

// Everything that is there, but for no longer than a turn.
void FramedSocket::ReadOn() {
    if (m_isReading || m_isDeaf || !m_isOpen || m_listener == nullptr) return;
    m_isReading = true;
    const CallUnderWay call(m_callsUnderWay);
    const QPointer<FramedSocket> self(this);
    const QDeadlineTimer turn(vtlimits::TurnTime, Qt::PreciseTimer);
    bool isPaused = false;
    while (self && m_isOpen && !m_isDeaf) {
        if (!GiveFrames(turn, &isPaused) || isPaused || !ReadMore()) break;
    }
    if (!self) return;
    m_isReading = false;
    // A timer and not an event: an event posted by an event is handled in the same pass of the loop.
    if (m_isOpen && isPaused) m_again.start(0);
    if (m_listener != nullptr) m_listener->OnInputDone();  // which may destroy this
    // What came before the end was given.
    if (self && m_isOpen && m_hasEnded && !isPaused) Fail(EndText());
}

// False if there is nothing.
bool FramedSocket::ReadMore() {
    const qint64 available = m_socket->bytesAvailable();
    if (available == 0) return false;
    const int wanted = static_cast<int>(qMin<qint64>(available, RoomForReading()));
    const qint64 count = m_socket->read(m_in.Reserve(wanted), wanted);
    if (count > 0) m_in.Wrote(static_cast<int>(count));
    return count > 0;
}

// What the buffer keeps, or the frame that has begun if that is larger.
int FramedSocket::RoomForReading() const {
    if (m_in.Size() < HeaderSize) return ByteBuffer::KeptRoom;
    const int frame = HeaderSize + static_cast<int>(qFromBigEndian<quint32>(m_in.Data()));
    return qMax(frame, ByteBuffer::KeptRoom) - m_in.Size();
}

// Until \a turn is over: then there may be more. False if the channel is closed, by whomever.
bool FramedSocket::GiveFrames(const QDeadlineTimer& turn, bool* isPaused) {
    while (m_isOpen && m_in.Size() - m_consumed >= HeaderSize) {
        if (turn.hasExpired()) {
            *isPaused = true;
            break;
        }
        const char* const header = m_in.Data() + m_consumed;
        const quint32 size = qFromBigEndian<quint32>(header);
        if (size > vtlimits::MaxFrame) {
            Fail(ForeignText(QByteArray(header, HeaderSize)));
            return false;
        }
        if (size > m_maxMessage) {
            Refuse(QStringLiteral("a message of %1 bytes, where %2 are allowed").arg(size).arg(m_maxMessage));
            return false;
        }
        if (static_cast<quint32>(m_in.Size() - m_consumed - HeaderSize) < size) break;
        m_consumed += HeaderSize + static_cast<int>(size);
        m_listener->OnMessage(header + HeaderSize, size);
    }
    if (!m_isOpen) return false;
    m_in.RemoveFront(m_consumed);
    m_consumed = 0;
    return true;
}

}  // namespace vt
