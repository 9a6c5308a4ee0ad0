// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consolesession.h>

#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/vtclient/ivtclient.h>

namespace {

/// ms after which what is there is shown, although not all of it is: a server answers much earlier, also with
/// what it does not show.
constexpr int Patience = 2000;

constexpr EMCSControlTreeSegments Segments[] = {CommandSegment, ConfigSegment, StatusSegment,
                                                DynamicMpxORVsSegment, StaticMpxORVsSegment};

}  // namespace

ConsoleSession::ConsoleSession(QObject* parent) : QObject(parent) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(Patience);
    connect(&m_patience, &QTimer::timeout, this, &ConsoleSession::UpdateState);
    values::Refusals::Instance().AddListener(this);
}

ConsoleSession::~ConsoleSession() {
    Disconnect();
    values::Refusals::Instance().RemoveListener(this);
}

bool ConsoleSession::Connect(const ServerAddress& server, const VtClientOptions& options) {
    Disconnect();
    VtClientCenter::Instance().SetOptions(options);
    auto client = std::make_unique<MultiChannelServerClient>();
    client->SetUniqueMpxORVName(m_mpxOrvName);
    if (!client->ConnectToServer(server.ToVtAddress(), server.port)) return false;
    m_client = std::move(client);
    m_server = server;
    m_options = options;
    m_client->AddObserver(this);
    m_observed = m_client->GetVtClientToUse();
    m_observed->AddObserver(this);
    m_client->ConnectToMCSControlTree(GetBasePath(), AllSegments);
    UpdateState();
    return true;
}

void ConsoleSession::Disconnect() {
    if (!m_client) return;
    m_patience.stop();
    m_observed->DeleteObserver(this);
    m_observed = nullptr;
    m_client->DeleteObserver(this);
    m_segments = NoSegments;  // displays let go before what they show goes
    m_state = EState::Idle;
    m_mpxOrv = nullptr;
    Q_EMIT Changed();
    m_client->DisconnectAllMpxORVs();
    m_client->DisconnectFromMCSControlTree(true);
    m_client->DisconnectFromServer();
    m_client.reset();
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

int ConsoleSession::GetLatency() const {
    const IVtClient* const client = GetVtClient();
    return client != nullptr ? client->GetLatency() : -1;
}

QString ConsoleSession::GetServerApplication() const {
    const IVtClient* const client = GetVtClient();
    return client != nullptr ? client->GetServerApplication() : QString();
}

QString ConsoleSession::GetMpxOrvName() const {
    return m_mpxOrvName.isEmpty() ? MpxORVHandle::CreateUniqueMpxORVName() : m_mpxOrvName;
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

QString ConsoleSession::GetMpxOrvPath() const {
    if (m_mpxOrv == nullptr || (m_segments & DynamicMpxORVsSegment) == NoSegments) return QString();
    return m_mpxOrv->IsControlTreeConnected() ? m_mpxOrv->GetLocalControlPath() : QString();
}

void ConsoleSession::Update(Observable*, TChangeCode) {
    UpdateState();
}

void ConsoleSession::OnRefused(values::TreeItem*, const QString& path, const QString& reason) {
    if (m_mpxOrv == nullptr || path != m_mpxOrv->GetLocalControlPath()) return;
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
        m_patience.start();
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
    const bool canBe = (m_segments & DynamicMpxORVsSegment) != NoSegments;
    if (m_usesMpxOrv && canBe && m_mpxOrv == nullptr) {
        m_mpxOrvProblem.clear();
        // The MpxORV lies in a segment that is mirrored, so it needs no place of its own.
        m_mpxOrv = m_client->CreateAndConnectDynamicMpxORV(QString());
    }
}
