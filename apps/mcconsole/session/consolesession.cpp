// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/consolesession.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/values/tree.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/ivtretry.h>

#include <algorithm>

namespace {

/// After which what is there is shown, although not all of it is: a server answers much earlier, also with
/// what it does not show.
constexpr std::chrono::milliseconds Patience(2000);

/// Between two pings: a server that has stopped is to be seen within two seconds.
constexpr std::chrono::milliseconds PingInterval(500);

constexpr EMCSControlTreeSegments Segments[] = {CommandSegment, ConfigSegment, StatusSegment,
                                                DynamicMpxORVsSegment, StaticMpxORVsSegment};

}  // namespace

ConsoleSession::ConsoleSession(const QString& basePath, QObject* parent)
    : QObject(parent),
      m_basePath(basePath),
      m_vtClient(*this),
      m_mpxOrvThere(*this, [](const values::ValueBase&) { return true; }) {
    for (QTimer* const timer : {&m_patience, &m_mpxOrvPatience}) {
        timer->setSingleShot(true);
        timer->setInterval(Patience);
        connect(timer, &QTimer::timeout, this, &ConsoleSession::UpdateState);
    }
    values::Refusals::Instance().AddListener(this);
}

ConsoleSession::~ConsoleSession() {
    Disconnect();
    values::Refusals::Instance().RemoveListener(this);
}

bool ConsoleSession::Connect(const ServerAddress& server, const VtClientOptions& options) {
    Disconnect();
    VtClientOptions watchful = options;
    watchful.pingInterval = std::min(watchful.pingInterval, PingInterval);
    VtClientCenter::Instance().SetOptions(watchful);
    auto client = std::make_unique<MultiChannelServerClient>();
    if (!client->ConnectToServer(server.ToVtAddress(), server.port)) return false;
    m_client = std::move(client);
    m_server = server;
    m_options = options;
    m_client->AddObserver(this);
    m_vtClient.Begin(m_client->GetVtClientToUse());
    m_client->ConnectToMCSControlTree(GetBasePath(), AllSegments);
    UpdateState();
    return true;
}

void ConsoleSession::Disconnect() {
    // Moved out first: observers who are told while the client goes must not use it.
    const std::unique_ptr<MultiChannelServerClient> client = std::move(m_client);
    if (!client) return;
    m_patience.stop();
    m_mpxOrvPatience.stop();
    m_vtClient.End();
    client->DeleteObserver(this);
    m_segments = NoSegments;  // so that displays detach before the values go
    m_state = EState::Idle;
    m_serverApplication.clear();
    m_mpxOrv = nullptr;
    m_mpxOrvThere.SetPath(QString());
    m_mpxOrvProblem.clear();
    Q_EMIT Changed();
    client->DisconnectAllMpxORVs();
    client->DisconnectFromMCSControlTree(true);
    client->DisconnectFromServer();
}

IVtClient* ConsoleSession::GetVtClient() const {
    return m_client ? m_client->GetVtClientToUse() : nullptr;
}

QString ConsoleSession::GetProblem() const {
    const IVtClient* const client = GetVtClient();
    return client != nullptr ? client->GetLastError() : QString();
}

bool ConsoleSession::IsEncrypted() const {
    const IVtClient* const client = GetVtClient();
    return client != nullptr && client->IsEncrypted();
}

std::optional<std::chrono::microseconds> ConsoleSession::GetLatency() const {
    const IVtClient* const client = GetVtClient();
    const std::optional<std::chrono::microseconds> latency =
        client != nullptr ? client->GetLatency() : std::nullopt;
    const std::optional<std::chrono::milliseconds> silence = GetSilence();
    // What takes longer than the last time ages before everybody's eyes.
    return latency && silence && *silence > *latency ? *silence : latency;
}

IVtRetry* ConsoleSession::GetRetry() const {
    return dynamic_cast<IVtRetry*>(GetVtClient());
}

std::optional<std::chrono::milliseconds> ConsoleSession::GetTimeToRetry() const {
    const IVtRetry* const retry = GetRetry();
    return retry != nullptr ? retry->GetTimeToRetry() : std::nullopt;
}

void ConsoleSession::RetryNow() {
    if (IVtRetry* const retry = GetRetry()) retry->RetryNow();
}

std::optional<std::chrono::milliseconds> ConsoleSession::GetSilence() const {
    const IVtRetry* const retry = GetRetry();
    return retry != nullptr ? retry->GetSilence() : std::nullopt;
}

QString ConsoleSession::GetMpxOrvName() const {
    return m_mpxOrv != nullptr ? m_mpxOrv->GetName() : WantedMpxOrvName();
}

QString ConsoleSession::WantedMpxOrvName() const {
    return m_mpxOrvName.isEmpty() ? MpxORVHandle::CreateUniqueMpxORVName() : m_mpxOrvName;
}

/// An MpxORV that is there already is another client's. Both would share it: one would tune what the other
/// listens to, and it would go when the other goes.
QString ConsoleSession::FreeMpxOrvName() const {
    constexpr int most = 100;
    const QString wanted = WantedMpxOrvName();
    const QString base = GetBasePath() + QLatin1Char('/') + mcskeys::DynamicMpxORVs + QLatin1Char('/');
    QString name = wanted;
    for (int i = 2; i <= most && values::Tree::Instance()->FindItem(base + name) != nullptr; ++i)
        name = wanted + QLatin1Char('_') + QString::number(i);
    return name;
}

/// An MpxORV in a mirrored segment goes with the connection only, so giving it back means to connect anew.
void ConsoleSession::UseMpxOrv(bool isUsed) {
    if (isUsed == m_usesMpxOrv) return;
    m_usesMpxOrv = isUsed;
    if (!isUsed && m_mpxOrv != nullptr)
        Connect(ServerAddress(m_server), VtClientOptions(m_options));
    else
        UpdateState();
}

bool ConsoleSession::MayHaveMpxOrv() const {
    return m_usesMpxOrv && (m_segments & DynamicMpxORVsSegment) != NoSegments;
}

QString ConsoleSession::GetMpxOrvPath() const {
    const bool isThere = MayHaveMpxOrv() && m_mpxOrvThere.GetState() == EBindingState::Live;
    return isThere ? m_mpxOrv->GetLocalControlPath() : QString();
}

bool ConsoleSession::IsMpxOrvMissing() const {
    return m_usesMpxOrv && m_state == EState::Connected && !m_mpxOrvPatience.isActive() &&
           GetMpxOrvPath().isEmpty();
}

void ConsoleSession::Update(Observable* source, TChangeCode code) {
    if (code == connectioncode::ChangesLost && m_vtClient.Is(source)) return TellLoss();
    UpdateState();
}

// The log and the events are in the status. What else was missed shows what it is now.
void ConsoleSession::TellLoss() {
    const auto* const losses = dynamic_cast<const IVtLosses*>(GetVtClient());
    if (losses == nullptr || losses->GetLastLoss().path != mcskeys::DefaultBasePath(mcskeys::Status)) return;
    const VtLoss loss = losses->GetLastLoss();
    Q_EMIT Missed(loss);
}

void ConsoleSession::OnBindingChanged(PathBinding&, TChangeCode code) {
    if (code != changecode::ContentChanged) UpdateState();
}

// Each station has its place here; what its server calls it others call likewise.
void ConsoleSession::OnSubtreeRefused(const QString& localPath, const QString&, const QString& reason) {
    if (localPath != mcskeys::Join(GetBasePath(), mcskeys::DynamicMpxORVs)) return;
    m_mpxOrvProblem = reason;
    Q_EMIT Changed();
}

void ConsoleSession::UpdateState() {
    // Connecting an MpxORV tells of changes while it is under way.
    if (!m_client || m_isUpdating) return;
    m_isUpdating = true;
    const bool isConnected = m_client->IsConnectedToServer();
    if (isConnected && m_state != EState::Connected) {
        m_state = EState::Connected;
        m_serverApplication = GetVtClient()->GetServerApplication();
        m_mpxOrvProblem.clear();
        m_patience.start();
        m_mpxOrvPatience.start();
    } else if (!isConnected && m_state == EState::Connected) {
        m_state = EState::Lost;
        m_patience.stop();
    } else if (!isConnected && m_state == EState::Idle) {
        m_state = EState::Connecting;
    }
    UpdateSegments();
    UpdateMpxOrv();
    m_isUpdating = false;
    Q_EMIT Changed();
}

void ConsoleSession::UpdateSegments() {
    if (m_state != EState::Connected)
        m_segments = NoSegments;
    else if (m_client->IsMCSControlTreeConnected())
        m_segments = AllSegments;
    else
        m_segments = m_patience.isActive() ? NoSegments : ConnectedSegments();
}

EMCSControlTreeSegments ConsoleSession::ConnectedSegments() const {
    EMCSControlTreeSegments connected = NoSegments;
    for (const EMCSControlTreeSegments segment : Segments)
        if (m_client->AreMCSControlTreeSegmentsConnected(segment)) connected = connected | segment;
    return connected;
}

void ConsoleSession::UpdateMpxOrv() {
    if (!MayHaveMpxOrv()) return;
    if (m_mpxOrv == nullptr) {
        m_client->SetUniqueMpxORVName(FreeMpxOrvName());
        // The MpxORV lies in a segment that is mirrored, so it needs no place of its own.
        m_mpxOrv = m_client->CreateAndConnectDynamicMpxORV(QString());
        m_mpxOrvPatience.start();
    }
    if (m_mpxOrv == nullptr || !m_mpxOrvThere.GetPath().isEmpty()) return;
    m_mpxOrvThere.SetPath(m_mpxOrv->GetLocalControlPath() + QLatin1String("/Request/Answer"));
}
