// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/vtclient.h>

#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>
#include <platform/values/node.h>
#include <platform/values/refusals.h>
#include <platform/vtclient/client/vtclientdetail.h>
#include <platform/vtclient/client/vttic.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>

namespace vt {

using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using vtclientdetail::Trace;

VtClient::VtClient(QString address, int port, VtClientOptions options, std::unique_ptr<IConnector> connector,
                   std::unique_ptr<IEventLoop> loop)
    : m_address(std::move(address)),
      m_port(port),
      m_options(std::move(options)),
      m_connector(std::move(connector)),
      m_loop(std::move(loop)) {
    m_connector->SetListener(this);
    m_loop->SetTaker(this);
    RequestTurn();
}

VtClient::~VtClient() {
    Shutdown();
}

void VtClient::Shutdown() {
    if (m_state == EState::Ended) return;
    const Busy busy(*this);
    NotifyObservers(connectioncode::GoingAway);
    m_connector->Abort();
    if (m_channel && m_channel->IsOpen()) {
        Message bye = Message::Of(EMessage::Bye);
        bye.code = EBye::ClientEnds;
        bye.reason = QStringLiteral("the client ends");
        Send(bye);
    }
    m_state = EState::Ended;
    if (m_channel) {
        m_channel->Close();
        m_channel->SetListener(nullptr);
    }
    while (!m_tics.empty())
        RemoveTic(m_tics.front().get());
    m_loop->SetTaker(nullptr);
    m_loop->SetDeadline(std::nullopt);
}

// Connecting ------------------------------------------------------------------------------------------------

void VtClient::StartConnecting() {
    m_state = EState::Connecting;
    m_stateDeadline = m_loop->Now() + m_options.connectTimeout;
    m_connector->Connect();
    SetNextDeadline();
}

void VtClient::OnConnected(std::unique_ptr<IChannel> channel) {
    const Busy busy(*this);
    m_channel = std::move(channel);
    m_channel->SetListener(this);
    m_state = EState::Greeting;
    m_lastReceived = m_loop->Now();
    Message hello = Message::Of(EMessage::Hello);
    hello.version = vtlimits::ProtocolVersion;
    hello.application = CfgCenter::GetAppName().left(vtlimits::MaxHelloText);
    hello.machine = VornOS::Create()->GetMachineName().left(vtlimits::MaxHelloText);
    const bool isSafe = m_channel->IsEncrypted() || m_channel->IsLoopback();
    if (isSafe) {
        hello.user = m_options.user.left(vtlimits::MaxHelloText);
        hello.token = m_options.token.left(vtlimits::MaxHelloText);
    } else if (!m_options.token.isEmpty()) {
        Trace(QStringLiteral("The token is not sent to %1: the connection is not encrypted").arg(m_address));
    }
    Send(hello);
    FlushOutput();
}

void VtClient::OnConnectFailed(const QString& reason) {
    const Busy busy(*this);
    Retry(reason);
}

void VtClient::Retry(const QString& reason) {
    if (m_state == EState::Ended) return;
    if (reason != m_lastError)
        Trace(QStringLiteral("No connection to %1 port %2: %3").arg(m_address).arg(m_port).arg(reason));
    m_lastError = reason;
    m_state = EState::Waiting;
    const int doublings = std::min(m_failures++, 16);
    const milliseconds longest = std::min(m_options.firstRetry * (1 << doublings), m_options.longestRetry);
    // Half of it by chance, so that the clients of a server that was restarted do not come all at once.
    const auto wait = duration_cast<milliseconds>(longest * (0.5 + 0.5 * m_loop->Random()));
    m_stateDeadline = m_loop->Now() + wait;
    SetNextDeadline();
}

void VtClient::SetNextDeadline() {
    if (m_state == EState::Idle || m_state == EState::Ended) return;
    microseconds next = m_stateDeadline;
    if (m_state == EState::Connected)
        next = std::min(m_lastPing + m_pingInterval, m_lastReceived + m_deadAfter);
    const microseconds wait = std::max(microseconds::zero(), next - m_loop->Now());
    m_loop->SetDeadline(std::chrono::ceil<milliseconds>(wait));
}

void VtClient::OnDeadline() {
    const Busy busy(*this);
    const microseconds now = m_loop->Now();
    if (m_state == EState::Waiting && now >= m_stateDeadline) {
        StartConnecting();
    } else if (m_state == EState::Connecting && now >= m_stateDeadline) {
        m_connector->Abort();
        Retry(QStringLiteral("no connection within %1 ms").arg(m_options.connectTimeout.count()));
    } else if (m_state == EState::Greeting && now >= m_stateDeadline) {
        Fail(EBye::Silence, QStringLiteral("no welcome within %1 ms").arg(m_options.connectTimeout.count()));
    } else if (m_state == EState::Connected && now - m_lastReceived >= m_deadAfter) {
        Fail(EBye::Silence, QStringLiteral("nothing heard for %1 ms")
                                .arg(duration_cast<milliseconds>(now - m_lastReceived).count()));
    } else if (m_state == EState::Connected && now - m_lastPing >= m_pingInterval) {
        m_lastPing = now;
        Message ping = Message::Of(EMessage::Ping);
        ping.seq = static_cast<quint64>(now.count());
        Send(ping);
        FlushOutput();
    }
    SetNextDeadline();
}

void VtClient::OnClosed(const QString& reason) {
    const Busy busy(*this);
    if (m_channel->IsOpen()) return Fail(EBye::Limit, reason);  // it was the server that broke a rule
    if (m_state != EState::Greeting) return EndSession(reason);
    const QString hint = m_channel->IsEncrypted() ? QString() : QStringLiteral(" (does it want TLS?)");
    EndSession(QStringLiteral("%1 before it welcomed us%2").arg(reason, hint));
}

// The server broke a rule, or is silent.
void VtClient::Fail(EBye code, const QString& reason) {
    if (m_state != EState::Greeting && m_state != EState::Connected) return;
    Message bye = Message::Of(EMessage::Bye);
    bye.code = code;
    bye.reason = reason;
    Send(bye);
    EndSession(reason);
}

void VtClient::EndSession(const QString& reason) {
    if (!m_channel) return;
    const bool wasConnected = IsConnected();
    m_channel->Close();
    m_channel->SetListener(nullptr);
    m_deadChannels.push_back(std::move(m_channel));
    m_serverApplication.clear();
    m_latency.reset();
    m_hasOutput = false;
    m_requests.clear();
    Retry(reason);
    // All is stale before anybody hears of it by other ways.
    ForEachLink([this](Link& link) {
        link.sub = 0;
        link.isReceiving = false;
        SetAbsent(link, false);
        link.mirror->Lose();
    });
    if (wasConnected) NotifyObservers(connectioncode::Disconnected);
    TellEstablished();
    TellAnswered();
    RequestTurn();  // which destroys the channel
}

}  // namespace vt
