// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <devicecontrol/multichannelserver/common/connection/serverclientdetail.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/app/errorhandler.h>
#include <platform/values/node.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <optional>
#include <utility>

namespace {

using serverclientdetail::AreFailuresTraced;
using serverclientdetail::SourcePath;
using serverclientdetail::TraceFailure;

constexpr std::uint32_t LowestBit(std::uint32_t bits) {
    return bits & (~bits + 1);
}

// Both name the dynamic operation, whichever is called, and the first says "not connected" where the control
// tree is. (fixed: dynamic-texts)
constexpr char LocalPathForbidden[] =
    "MultiChannelServerClient::CreateAndConnectDynamicMpxORV: LocalMpxORVControlPath must not be specified "
    "when MCS control tree is not connected";
constexpr char LocalPathMissing[] =
    "MultiChannelServerClient::CreateAndConnectDynamicMpxORV: LocalMpxORVControlPath must be specified when "
    "MCS control tree is not connected";

}  // namespace

/// The control tree is being disconnected; ends with the step that made it, or with the client.
class MultiChannelServerClient::Disconnecting {
  public:
    explicit Disconnecting(MultiChannelServerClient& client) : m_client(client), m_guard(client) {
        ++m_client.m_disconnections;
    }
    ~Disconnecting() {
        if (IsAlive()) --m_client.m_disconnections;
    }
    Disconnecting(const Disconnecting&) = delete;
    Disconnecting& operator=(const Disconnecting&) = delete;
    bool IsAlive() const { return m_guard.IsAlive(); }

  private:
    MultiChannelServerClient& m_client;
    ObservableGuard m_guard;
};

MultiChannelServerClient::MultiChannelServerClient() {
    Observable::AddObserver(this);  // fixed: observes-itself. Update ignores what comes from the client.
}

MultiChannelServerClient::MultiChannelServerClient(const MultiChannelServerClient& other)
    : IObserver(other), Observable(other) {
    CopyMembers(other);
}

// Lets go of what this client had before it copies (fixed: assignment-lets-go): what only this client knows
// of would be left without an owner, or would tell a client that is gone.
MultiChannelServerClient& MultiChannelServerClient::operator=(const MultiChannelServerClient& other) {
    if (this == &other) return *this;
    // Whoever hears of what goes may delete either client, or connect again, which the second time is for.
    const ObservableGuard source(const_cast<MultiChannelServerClient&>(other));
    for (int time = 0; time < 2; ++time)
        if (!LetGoOfAllBut(source.IsAlive() ? other.m_pOwnVtClient : nullptr)) return *this;
    Observable::DeleteObserver(this);
    if (source.IsAlive()) CopyMembers(other);
    return *this;
}

bool MultiChannelServerClient::LetGoOfAllBut(const IVtClient* kept) {
    const ObservableGuard self(*this);
    LetGo();
    MultiChannelServerClient::DisconnectAllMpxORVs();
    if (self.IsAlive() && m_pOwnVtClient != kept)
        VtClientCenter::Instance().DestroyVtClient(std::exchange(m_pOwnVtClient, nullptr));
    return self.IsAlive();
}

void MultiChannelServerClient::CopyMembers(const MultiChannelServerClient& other) {
    m_pOwnVtClient = other.m_pOwnVtClient;
    m_pVtClientToUse = other.m_pVtClientToUse;
    m_lastServerConnectionCode = other.m_lastServerConnectionCode;
    m_localMcsBasePath = other.m_localMcsBasePath;
    m_eRequestedControlTreeSegments = other.m_eRequestedControlTreeSegments;
    m_segmentTics = other.m_segmentTics;
    m_lastControlTreeCode = other.m_lastControlTreeCode;
    m_mpxORVHandles = other.m_mpxORVHandles;
    m_serverAddress = other.m_serverAddress;
    m_serverPort = other.m_serverPort;
    m_uniqueMpxORVName = other.m_uniqueMpxORVName;
    m_areTicsCopied = !m_segmentTics.empty();
    m_areHandlesCopied = !m_mpxORVHandles.empty();
}

MultiChannelServerClient::~MultiChannelServerClient() {
    MultiChannelServerClient::DisconnectFromServer();
    // Whoever heard of that may have connected again, for the last time.
    Observable::DeleteObservers();
    MultiChannelServerClient::DisconnectFromServer();
    LetGo();
}

bool MultiChannelServerClient::ConnectToServer(const QString& address, int port) {
    const ObservableGuard self(*this);
    DisconnectFromServer();
    if (!self.IsAlive()) return false;
    // Not null if whoever heard of the end connected already. This call ends later, and holds.
    IVtClient* const replaced = m_pOwnVtClient;
    m_pOwnVtClient = VtClientCenter::Instance().CreateVtClient(address.toLatin1().constData(), port);
    if (m_pOwnVtClient == nullptr && AreFailuresTraced())
        _Q_TraceOld("MultiChannelServerClient::ConnectToServer: CreateVtClient(\"%s\", %d) failed",
                    qUtf8Printable(address), port);
    UseVtClient(m_pOwnVtClient);
    VtClientCenter::Instance().DestroyVtClient(replaced);
    return self.IsAlive() && m_pOwnVtClient != nullptr;
}

// Observers are not told of the lost connection here, and a later connection is then no change to them.
// (fixed: silent-disconnection)
void MultiChannelServerClient::DisconnectFromServer() {
    const ObservableGuard self(*this);
    UseVtClient(nullptr);
    if (self.IsAlive() && m_pOwnVtClient != nullptr)
        VtClientCenter::Instance().DestroyVtClient(std::exchange(m_pOwnVtClient, nullptr));
}

void MultiChannelServerClient::UseVtClient(IVtClient* client) {
    const ObservableGuard self(*this);
    std::optional<ObservableGuard> clientGuard;
    if (client != nullptr) clientGuard.emplace(*client);
    ForgetVtClient();
    DisconnectFromMCSControlTree(false);
    if (!self.IsAlive()) return;
    LetGo();
    if (clientGuard && !clientGuard->IsAlive()) client = nullptr;  // whoever heard of the end destroyed it
    if (client == nullptr) {
        DisconnectAllMpxORVs();
        if (!self.IsAlive()) return;
        LetGo();
    }
    m_pVtClientToUse = client;
    if (client != nullptr) client->AddObserver(this);
    m_serverAddress = client != nullptr ? client->GetServerAddress() : QString();
    m_serverPort = client != nullptr ? client->GetServerPort() : 0;
}

// Whoever heard of a disconnection may have answered with another client; the outer call ends later, and
// holds.
void MultiChannelServerClient::LetGo() {
    ForgetVtClient();
    ForgetSegmentTics();
    m_localMcsBasePath.clear();
}

void MultiChannelServerClient::ForgetVtClient() {
    if (m_pVtClientToUse != nullptr) m_pVtClientToUse->DeleteObserver(this);
    m_pVtClientToUse = nullptr;
}

IVtClient* MultiChannelServerClient::GetVtClientToUse() const {
    return m_pVtClientToUse;
}

bool MultiChannelServerClient::IsConnectedToServer() const {
    return m_pVtClientToUse != nullptr && m_pVtClientToUse->IsConnected();
}

bool MultiChannelServerClient::ConnectToMCSControlTree(const QString& localMcsBasePath,
                                                       EMCSControlTreeSegments segments) {
    if (!MayConnectToControlTree(localMcsBasePath, segments)) return false;
    m_localMcsBasePath = localMcsBasePath;
    m_eRequestedControlTreeSegments = segments;
    for (std::uint32_t rest = segments; rest != 0; rest &= rest - 1)
        if (!AddSegmentTic(static_cast<EMCSControlTreeSegments>(LowestBit(rest)))) return false;
    return true;
}

bool MultiChannelServerClient::MayConnectToControlTree(const QString& localMcsBasePath,
                                                       EMCSControlTreeSegments segments) const {
    if (m_pVtClientToUse == nullptr) {
        TraceFailure("MultiChannelServerClient::ConnectToMCSControlTree: VtClientToUse not set", 135);
    } else if (m_eRequestedControlTreeSegments != NoSegments) {
        if (AreFailuresTraced())
            _Q_TraceOld(
                "MultiChannelServerClient::ConnectToMCSControlTree: there are already MCS control tree "
                "segments connected (m_eRequestedControlTreeSegments=0x%08x)",
                static_cast<unsigned>(m_eRequestedControlTreeSegments));
    } else if (segments > AllSegments) {
        if (AreFailuresTraced())
            _Q_TraceOld(
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid MCS control tree segments "
                "specified (eTreeSegmentsToConnect=0x%08x)",
                static_cast<unsigned>(segments));
    } else if ((segments & AllSegments) == NoSegments) {
        if (AreFailuresTraced())
            _Q_TraceOld(
                "MultiChannelServerClient::ConnectToMCSControlTree: no MCS control tree segments specified "
                "(eTreeSegmentsToConnect=0x%08x)",
                static_cast<unsigned>(segments));
    } else if (!IsPathValid(localMcsBasePath)) {
        if (AreFailuresTraced())
            _Q_TraceOld(
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid local MCS base path: "
                "sLocalMcsBasePath=%s",
                qUtf8Printable(localMcsBasePath));
    } else {
        return true;
    }
    return false;
}

bool MultiChannelServerClient::AddSegmentTic(EMCSControlTreeSegments segment) {
    const QString part = GetRelativeControlTreeSegmentPath(segment);
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceAssertions) && part.isEmpty())
        _Q_assert(L"! sPart.isEmpty()", SourcePath, 170);
    const QString ticText = m_localMcsBasePath + QLatin1Char('/') + part + QLatin1Char(',') + mcskeys::Root +
                            QLatin1Char('/') + part;
    const ObservableGuard self(*this);
    const ObservableGuard clientGuard(*m_pVtClientToUse);
    IVtClient* const client = m_pVtClientToUse;
    const EMCSControlTreeSegments requested = m_eRequestedControlTreeSegments;
    const std::size_t countOfTics = m_segmentTics.size();
    IVtTic* const tic = client->AddTic(ticText, "");
    // Whoever heard of the tic may have disconnected, or worse.
    if (!self.IsAlive() || client != m_pVtClientToUse || requested != m_eRequestedControlTreeSegments ||
        countOfTics != m_segmentTics.size()) {
        if (tic != nullptr && clientGuard.IsAlive()) client->RemoveTic(tic);
        return false;
    }
    if (tic == nullptr) {
        TraceFailure("ConnectToMCSControlTree: AddTic(\"%1\") failed", ticText, 180);
        DisconnectFromMCSControlTree(false);
        return false;
    }
    tic->AddObserver(this);
    m_segmentTics[static_cast<int>(segment)] = tic;
    return true;
}

// Nobody hears of the end before all of it is undone: who answers by connecting again must find room for it.
void MultiChannelServerClient::DisconnectFromMCSControlTree(bool deleteLocalTree) {
    if (!DropControlTree(deleteLocalTree)) return;
    NotifyUponMCSControlTreeConnectionChange();
}

bool MultiChannelServerClient::DropControlTree(bool deleteLocalTree) {
    const Disconnecting self(*this);
    RemoveSegmentTics();
    if (!self.IsAlive()) return false;
    ForgetSegmentTics();
    if (deleteLocalTree && !m_localMcsBasePath.isEmpty())
        serverclientdetail::DeleteNode(serverclientdetail::FindNode(m_localMcsBasePath));
    if (!self.IsAlive()) return false;
    // Whoever heard of the deletion may have connected anew.
    if (m_eRequestedControlTreeSegments == NoSegments) m_localMcsBasePath.clear();
    return true;
}

// Looks at its members anew after every step, since observers of the mirrored items, of the tics and of the
// client may do anything in answer.
void MultiChannelServerClient::RemoveSegmentTics() {
    const ObservableGuard self(*this);
    while (m_pVtClientToUse != nullptr && !m_segmentTics.empty()) {
        const auto [segment, tic] = *m_segmentTics.begin();
        if (values::Node* const node = serverclientdetail::FindNode(tic->GetLocalPath())) {
            m_pVtClientToUse->ReleaseNode(node);
            if (!self.IsAlive() || m_pVtClientToUse == nullptr) return;
            const auto found = m_segmentTics.find(segment);
            if (found == m_segmentTics.end() || found->second != tic) continue;
        }
        m_segmentTics.erase(segment);
        tic->DeleteObserver(this);
        m_pVtClientToUse->RemoveTic(tic);
        if (!self.IsAlive()) return;
    }
}

void MultiChannelServerClient::ForgetSegmentTics() {
    if (!m_areTicsCopied)
        for (const auto& [segment, tic] : m_segmentTics)
            tic->DeleteObserver(this);
    m_segmentTics.clear();
    m_areTicsCopied = false;
    m_eRequestedControlTreeSegments = NoSegments;
}

bool MultiChannelServerClient::IsMCSControlTreeConnected() const {
    return !m_segmentTics.empty() && AreMCSControlTreeSegmentsConnected(m_eRequestedControlTreeSegments);
}

bool MultiChannelServerClient::AreMCSControlTreeSegmentsRequested(EMCSControlTreeSegments segments) const {
    return (m_eRequestedControlTreeSegments & segments) != NoSegments;
}

bool MultiChannelServerClient::AreMCSControlTreeSegmentsConnected(EMCSControlTreeSegments segments) const {
    for (std::uint32_t rest = segments; rest != 0; rest &= rest - 1) {
        const auto found = m_segmentTics.find(static_cast<int>(LowestBit(rest)));
        if (found == m_segmentTics.end() || found->second == nullptr || !found->second->IsEstablished())
            return false;
    }
    return true;
}

QString MultiChannelServerClient::GetLocalMCSBasePath() {
    return m_localMcsBasePath;
}

MpxORVHandle* MultiChannelServerClient::ConnectStaticMpxORV(QString localControlPath, const QString& name) {
    return CheckPathAndConnect(StaticMpxORVsSegment, std::move(localControlPath), name, {273, 284});
}

MpxORVHandle* MultiChannelServerClient::CreateAndConnectDynamicMpxORV(QString localControlPath) {
    const QString name =
        m_uniqueMpxORVName.isEmpty() ? MpxORVHandle::CreateUniqueMpxORVName() : m_uniqueMpxORVName;
    return CheckPathAndConnect(DynamicMpxORVsSegment, std::move(localControlPath), name, {305, 316});
}

MpxORVHandle* MultiChannelServerClient::CheckPathAndConnect(EMCSControlTreeSegments segment,
                                                            QString localControlPath, const QString& name,
                                                            const TraceLines& lines) {
    const bool isMirrored = AreMCSControlTreeSegmentsRequested(segment);
    if (isMirrored && !localControlPath.isEmpty()) {
        TraceFailure(LocalPathForbidden, lines.pathForbidden);
        return nullptr;
    }
    if (!isMirrored && localControlPath.isEmpty()) {
        TraceFailure(LocalPathMissing, lines.pathMissing);
        return nullptr;
    }
    const QString part = QLatin1Char('/') + GetRelativeControlTreeSegmentPath(segment);
    if (isMirrored) localControlPath = m_localMcsBasePath + part + QLatin1Char('/') + name;
    return ConnectMpxORV(localControlPath, mcskeys::Root + part, name, !isMirrored);
}

MpxORVHandle* MultiChannelServerClient::ConnectMpxORV(const QString& localControlPath,
                                                      const QString& remoteBasePath, const QString& name,
                                                      bool ownTic) {
    if (m_pVtClientToUse == nullptr) {
        TraceFailure("MultiChannelServerClient::ConnectMpxORV(): VtClientToUse not set", 328);
        return nullptr;
    }
    if (!IsPathValid(localControlPath)) {
        TraceFailure(serverclientdetail::InvalidLocalPath, 333);
        return nullptr;
    }
    if (!IsPathValid(remoteBasePath)) {
        TraceFailure(serverclientdetail::InvalidRemotePath, 338);
        return nullptr;
    }
    auto* const handle = new MpxORVHandle(*this, ownTic);  // owned by the set in which it registers
    const std::weak_ptr<const bool> life = handle->GetLife();
    handle->ConnectMpxORVControlTreeRemote(localControlPath, remoteBasePath, name, ownTic);
    return life.expired() ? nullptr : handle;
}

void MultiChannelServerClient::DisconnectAllMpxORVs() {
    if (m_areHandlesCopied) {
        m_mpxORVHandles.clear();
        m_areHandlesCopied = false;
    }
    const ObservableGuard self(*this);
    while (self.IsAlive() && !m_mpxORVHandles.empty())
        delete *m_mpxORVHandles.begin();
}

void MultiChannelServerClient::RegisterMpxORVHandle(MpxORVHandle* handle) {
    if (m_areHandlesCopied) m_mpxORVHandles.clear();
    m_areHandlesCopied = false;
    m_mpxORVHandles.insert(handle);
}

void MultiChannelServerClient::UnregisterMpxORVHandle(MpxORVHandle* handle) {
    m_mpxORVHandles.erase(handle);
}

void MultiChannelServerClient::SetUniqueMpxORVName(QString name) {
    m_uniqueMpxORVName = std::move(name);
}

QString MultiChannelServerClient::GetUniqueMpxORVName() {
    return m_uniqueMpxORVName;
}

void MultiChannelServerClient::Update(Observable* source, TChangeCode code) {
    if (m_pVtClientToUse == nullptr || source != m_pVtClientToUse) return;
    if (code == connectioncode::TicsChanged) {
        const ObservableGuard self(*this);
        if (m_pVtClientToUse->AreAllTicsEstablished()) NotifyUponConnectionToServerAllTicsEstablished();
        if (self.IsAlive()) NotifyUponConnectionToServerChange();
        if (self.IsAlive()) NotifyUponMCSControlTreeConnectionChange();
    } else if (code == connectioncode::Connected || code == connectioncode::Disconnected) {
        NotifyUponConnectionToServerChange();
    } else if (code == connectioncode::GoingAway) {
        if (m_pOwnVtClient == m_pVtClientToUse) m_pOwnVtClient = nullptr;  // another client may get its place
        UseVtClient(nullptr);
    }
}

void MultiChannelServerClient::NotifyUponConnectionToServerAllTicsEstablished() {
    NotifyObservers(serverclientcode::AllTicsEstablished, nullptr);
}

void MultiChannelServerClient::NotifyUponConnectionToServerChange() {
    const TChangeCode code = IsConnectedToServer() ? serverclientcode::ConnectedToServer
                                                   : serverclientcode::DisconnectedFromServer;
    if (code == m_lastServerConnectionCode) return;
    m_lastServerConnectionCode = code;
    NotifyObservers(code, nullptr);
}

void MultiChannelServerClient::NotifyUponMCSControlTreeConnectionChange() {
    if (m_disconnections != 0) return;  // told at the end of that
    const TChangeCode code = IsMCSControlTreeConnected() ? serverclientcode::ControlTreeConnected
                                                         : serverclientcode::ControlTreeDisconnected;
    if (code == m_lastControlTreeCode) return;
    m_lastControlTreeCode = code;
    NotifyObservers(code, nullptr);
}

void MultiChannelServerClient::NotifyMpxORVControlTreeConnection(MpxORVHandle* handle) {
    const TChangeCode code = handle->IsControlTreeConnected() ? serverclientcode::MpxORVConnected
                                                              : serverclientcode::MpxORVDisconnected;
    if (code == handle->m_lastControlTreeCode) return;
    handle->m_lastControlTreeCode = code;
    NotifyObservers(code, nullptr);
}

bool MultiChannelServerClient::IsPathValid(const QString& path) {
    return path.startsWith(QLatin1Char('/'));
}

QString MultiChannelServerClient::GetRelativeControlTreeSegmentPath(EMCSControlTreeSegments segment) {
    switch (segment) {
        case CommandSegment:
            return mcskeys::Command;
        case ConfigSegment:
            return mcskeys::Config;
        case StatusSegment:
            return mcskeys::Status;
        case DynamicMpxORVsSegment:
            return mcskeys::DynamicMpxORVs;
        case StaticMpxORVsSegment:
            return mcskeys::StaticMpxORVs;
        default:
            return QString();
    }
}
