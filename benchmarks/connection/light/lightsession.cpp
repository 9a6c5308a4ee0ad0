// SPDX-License-Identifier: Apache-2.0
#include "lightsession.h"

#include "../role.h"

#include <QtCore/QCborValue>

#include <utility>

namespace bench {

namespace {

/// The numbers of messages, as docs/protocol.md has them.
enum EType : int {
    Hello = 1,
    Welcome = 2,
    Bye = 3,
    Subscribe = 4,
    Snapshot = 7,
    End = 8,
    Batch = 9,
    Absent = 10,
    Ack = 11,
    Write = 12,
    Ping = 15,
    Pong = 16,
    Join = 19,
    Road = 20,
    Heard = 21,
    At = 22
};

constexpr int ValuesSub = 1;
constexpr int ReportSub = 2;
constexpr quint32 MaxMessage = 1 << 20;

/// A server of ours writes the type of each message behind an array's first byte.
int TypeOf(const char* data, qint64 size) {
    return size < 2 ? 0 : static_cast<unsigned char>(data[1]);
}

QCborArray Parse(const char* data, qint64 size) {
    return QCborValue::fromCbor(QByteArray(data, static_cast<int>(size))).toArray();
}

}  // namespace

LightSession::LightSession(std::shared_ptr<nats::INatsBus> bus, const QString& station, Handlers handlers,
                           QString reportPath)
    : m_connector([bus = std::move(bus)](QString* /*problem*/) { return bus; }, station, "-"),
      m_handlers(std::move(handlers)),
      m_reportPath(std::move(reportPath)) {
    m_connector.SetListener(this);
    m_ping.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_ping, &QTimer::timeout, &m_ping, [this] { SendPing(); });
}

LightSession::~LightSession() {
    if (m_channel) m_channel->SetListener(nullptr);
}

void LightSession::OnConnected(std::unique_ptr<vt::IChannel> channel) {
    m_channel = std::move(channel);
    m_channel->SetMaxMessage(MaxMessage);
    m_channel->SetListener(this);
    Send({Hello, 1, QStringLiteral("light"), QStringLiteral("bench"), QString(), QString()});
    m_channel->Flush();
}

void LightSession::OnConnectFailed(const QString& reason) {
    Role::Fail(reason);
}

void LightSession::OnClosed(const QString& reason) {
    Role::Fail(reason);
}

void LightSession::OnMessage(const char* data, qint64 size) {
    const int type = TypeOf(data, size);
    if (type == Snapshot || type == End || type == Batch) {
        ++m_toAcknowledge;
    } else if (type == Welcome) {
        OnWelcome(Parse(data, size));
    } else if (type == Ping) {
        Send({Pong, Parse(data, size).at(1)});
    } else if (type == Road) {
        m_handlers.onRoad(*this, Parse(data, size).at(2).toString());
    } else if (type == At) {
        m_handlers.onTaken();
    } else if (type == Bye || type == Absent) {
        Role::Fail(Parse(data, size).at(2).toString());
    }
}

void LightSession::OnWelcome(const QCborArray& welcome) {
    constexpr int PingPlace = 5;
    Send({Subscribe, ValuesSub, QStringLiteral("/Bench")});
    Send({Join, ValuesSub});
    if (!m_reportPath.isEmpty()) Send({Subscribe, ReportSub, m_reportPath});
    m_ping.start(static_cast<int>(welcome.at(PingPlace).toInteger()));
    SendPing();
    m_handlers.onWelcome();
}

void LightSession::OnInputDone() {
    if (std::exchange(m_acknowledged, m_toAcknowledge) != m_toAcknowledge) Send({Ack, m_toAcknowledge});
    m_channel->Flush();
}

void LightSession::TellHeard(const QString& road) {
    Send({Heard, ValuesSub, road});
    m_channel->Flush();
}

// The value that it writes to is the subscribed item itself.
void LightSession::Report(int number) {
    Send({Write, ++m_requests, ReportSub, 0, number});
    m_channel->Flush();
}

void LightSession::SendPing() {
    Send({Ping, ++m_pings});
    m_channel->Flush();
}

void LightSession::Send(const QCborArray& message) {
    m_channel->Send(QCborValue(message).toCbor());
}

}  // namespace bench
