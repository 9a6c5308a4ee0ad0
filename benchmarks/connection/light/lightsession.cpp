// SPDX-License-Identifier: Apache-2.0
#include "lightsession.h"

#include "../role.h"

#include <QtCore/QCborValue>

#include <utility>

namespace bench {

namespace {

using vt::EMessage;

constexpr int ValuesSub = 1;
constexpr int ReportSub = 2;
constexpr quint32 MaxMessage = 1 << 20;

/// A server of ours writes the type of each message behind an array's first byte.
EMessage TypeOf(const char* data, qint64 size) {
    return static_cast<EMessage>(size < 2 ? 0 : static_cast<unsigned char>(data[1]));
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
    Send(EMessage::Hello, {1, QStringLiteral("light"), QStringLiteral("bench"), QString(), QString()});
    m_channel->Flush();
}

void LightSession::OnConnectFailed(const QString& reason) {
    Role::Fail(reason);
}

void LightSession::OnClosed(const QString& reason) {
    Role::Fail(reason);
}

void LightSession::OnMessage(const char* data, qint64 size) {
    const EMessage type = TypeOf(data, size);
    if (type == EMessage::Snapshot || type == EMessage::End || type == EMessage::Batch) {
        ++m_toAcknowledge;
    } else if (type == EMessage::Welcome) {
        OnWelcome(Parse(data, size));
    } else if (type == EMessage::Ping) {
        Send(EMessage::Pong, {Parse(data, size).at(1)});
    } else if (type == EMessage::Road) {
        m_handlers.onRoad(*this, Parse(data, size).at(2).toString());
    } else if (type == EMessage::At) {
        m_handlers.onTaken();
    } else if (type == EMessage::Bye || type == EMessage::Absent) {
        Role::Fail(Parse(data, size).at(2).toString());
    }
}

void LightSession::OnWelcome(const QCborArray& welcome) {
    constexpr int PingPlace = 5;
    Send(EMessage::Subscribe, {ValuesSub, QStringLiteral("/Bench")});
    Send(EMessage::Join, {ValuesSub});
    if (!m_reportPath.isEmpty()) Send(EMessage::Subscribe, {ReportSub, m_reportPath});
    m_ping.start(static_cast<int>(welcome.at(PingPlace).toInteger()));
    SendPing();
    m_handlers.onWelcome();
}

void LightSession::OnInputDone() {
    if (std::exchange(m_acknowledged, m_toAcknowledge) != m_toAcknowledge)
        Send(EMessage::Ack, {m_toAcknowledge});
    m_channel->Flush();
}

void LightSession::TellHeard(const QString& road) {
    Send(EMessage::Heard, {ValuesSub, road});
    m_channel->Flush();
}

// The value that it writes to is the subscribed item itself.
void LightSession::Report(int number) {
    Send(EMessage::Write, {++m_requests, ReportSub, 0, number});
    m_channel->Flush();
}

void LightSession::SendPing() {
    Send(EMessage::Ping, {++m_pings});
    m_channel->Flush();
}

void LightSession::Send(EMessage type, QCborArray content) {
    content.prepend(static_cast<int>(type));
    m_channel->Send(QCborValue(content).toCbor());
}

}  // namespace bench
