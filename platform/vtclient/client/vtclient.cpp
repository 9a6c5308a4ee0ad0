// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/vtclient.h>

#include <platform/values/node.h>
#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

VtClient::VtClient(QString address, int port, VtClientOptions options, std::unique_ptr<IConnector> connector,
                   std::unique_ptr<IEventLoop> loop)
    : m_address(std::move(address)),
      m_port(port),
      m_options(std::move(options)),
      m_loop(std::move(loop)),
      m_turn(*m_loop),
      m_reconnector(QStringLiteral("%1 port %2").arg(m_address).arg(m_port), m_options, std::move(connector),
                    *m_loop),
      m_tics(*this, m_depth, m_turn) {
    m_reconnector.SetListener(this);
    m_loop->SetTaker(this);
    m_turn.Make();
}

VtClient::~VtClient() {
    Shutdown();
}

void VtClient::Shutdown() {
    if (m_isEnded) return;
    const CallDepth::Call call(m_depth);
    NotifyObservers(connectioncode::GoingAway);
    m_isEnded = true;
    m_reconnector.End();
    m_turn.End();
    if (m_session) m_session->Close();
    m_tics.RemoveAll();
    m_loop->SetTaker(nullptr);
    m_loop->SetDeadline(std::nullopt);
}

bool VtClient::AreAllTicsEstablished() const {
    return IsConnected() && m_tics.AreAllEstablished();
}

bool VtClient::HasUnansweredWrites() const {
    return m_tics.HasUnanswered();
}

QString VtClient::GetServerApplication() const {
    return m_session ? m_session->ServerApplication() : QString();
}

std::optional<std::chrono::microseconds> VtClient::GetLatency() const {
    return m_session ? m_session->Latency() : std::nullopt;
}

std::optional<std::chrono::milliseconds> VtClient::GetTimeToRetry() const {
    const auto next = m_reconnector.NextAttempt();
    if (!next) return std::nullopt;
    const auto wait = std::max(std::chrono::microseconds::zero(), *next - m_loop->Now());
    return std::chrono::ceil<std::chrono::milliseconds>(wait);
}

void VtClient::RetryNow() {
    if (m_isEnded) return;
    const CallDepth::Call call(m_depth);
    m_reconnector.TryNow();
    SetNextDeadline();
}

std::optional<std::chrono::milliseconds> VtClient::GetSilence() const {
    const auto silence = m_session ? m_session->Silence() : std::nullopt;
    return silence ? std::optional(std::chrono::floor<std::chrono::milliseconds>(*silence)) : std::nullopt;
}

bool VtClient::Recall(const QString& path, quint64 before, int count, const IVtHistory::Answer& answer) {
    const bool isAskable = IsConnected() && count >= 0 && path.startsWith(QLatin1Char('/')) &&
                           path.size() <= vtlimits::MaxPathLength;
    if (isAskable) m_session->Recall(path, before, static_cast<quint64>(count), answer);
    return isAskable;
}

// The connection -------------------------------------------------------------------------------------------

void VtClient::OnConnected(std::unique_ptr<IChannel> channel) {
    const CallDepth::Call call(m_depth);
    const auto greetedBy = m_reconnector.Deadline().value_or(m_loop->Now());
    m_session = std::make_unique<ClientSession>(std::move(channel), m_options, *m_loop, greetedBy, m_depth,
                                                m_turn, static_cast<ClientSession::IHost&>(*this));
    m_session->Greet(m_address);
}

void VtClient::OnConnectFailed(const QString& reason) {
    const CallDepth::Call call(m_depth);
    m_reconnector.Retry(reason);
    SetNextDeadline();
}

void VtClient::OnWelcome() {
    m_reconnector.Succeed();
    m_isRefused = false;
    SetNextDeadline();
    m_tics.Subscribe(*m_session);
    NotifyObservers(connectioncode::Connected);
}

// All is stale before anybody hears of it by other ways.
void VtClient::OnSessionEnded(const ClientSession::Ending& ending) {
    m_deadSessions.push_back(std::move(m_session));
    if (ending.isRefused) m_isRefused = *ending.isRefused;
    m_reconnector.Retry(ending.reason);
    SetNextDeadline();
    m_tics.Lose();
    if (ending.wasConnected) NotifyObservers(connectioncode::Disconnected);
    m_tics.TellEstablished();
    m_tics.TellAnswered();
    m_turn.Make();  // which destroys the session
    // Last, since whoever is told may end this client.
    for (const IVtHistory::Answer& answer : m_deadSessions.back()->TakeRecalls())
        if (!m_isEnded) answer({ending.reason, {}, 0});
}

void VtClient::OnInputHandled() {
    Flush();
}

// Whoever is told of what is sent, or is not, may end the session.
void VtClient::Flush() {
    if (m_session) m_tics.SendEdits();
    if (m_session) m_session->Flush();
}

void VtClient::SetNextDeadline() {
    const auto next = m_session ? std::optional(m_session->Deadline()) : m_reconnector.Deadline();
    if (m_isEnded || !next) return;
    const auto wait = std::max(std::chrono::microseconds::zero(), *next - m_loop->Now());
    m_loop->SetDeadline(std::chrono::ceil<std::chrono::milliseconds>(wait));
}

void VtClient::OnDeadline() {
    const CallDepth::Call call(m_depth);
    if (m_session)
        m_session->OnDeadline();
    else
        m_reconnector.OnDeadline();
    SetNextDeadline();
}

void VtClient::OnTurn() {
    const CallDepth::Call call(m_depth);
    m_turn.Take();
    if (m_depth.IsOutermost()) m_deadSessions.clear();
    if (!m_reconnector.Deadline()) {
        m_reconnector.Start();
        SetNextDeadline();
    }
    if (m_session) m_session->OnTurn();
    m_tics.OnTurn();
    Flush();
}

// Tics -----------------------------------------------------------------------------------------------------

IVtTic* VtClient::AddTic(const QString& spec, const char* options) {
    const QLatin1String option(options);
    const bool isLook = option == QLatin1String(ticoption::Look);
    if (!isLook && !option.isEmpty()) {
        TraceClient(QStringLiteral("'%1' is no option of a tic").arg(option));
        return nullptr;
    }
    return m_isEnded ? nullptr : m_tics.Add(spec, isLook);
}

void VtClient::RemoveTic(IVtTic* tic) {
    const CallDepth::Call call(m_depth);
    m_tics.Remove(tic);
}

void VtClient::ReleaseNode(values::Node* node) {
    if (node == nullptr) return;
    const CallDepth::Call call(m_depth);
    m_tics.Release(node);
}

}  // namespace vt
