// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <devicecontrol/multichannelserver/common/connection/serverclientdetail.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/app/errorhandler.h>
#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>
#include <platform/values/node.h>
#include <platform/values/valuedescriptor.h>
#include <platform/vtclient/ivtclient.h>

#include <utility>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* HandlePlace = L"devicecontrol/multichannelserver/common/mpxorvhandle";

using serverclientdetail::DeleteNode;
using serverclientdetail::FindNode;

values::Node* ProvideNode(const QString& path) {
    return values::ValueDescriptor::CreateNodeAbsolute(path, nullptr);
}

}  // namespace

MpxORVHandle::MpxORVHandle(MultiChannelServerClient& client, bool ownTic)
    : m_MCSClient(client),
      m_hasOwnTic(ownTic),
      m_lastControlTreeCode(serverclientcode::MpxORVDisconnected),
      m_life(std::make_shared<const bool>(true)) {
    m_MCSClient.RegisterMpxORVHandle(this);
}

MpxORVHandle::MpxORVHandle(const MpxORVHandle& other)
    : IObserver(other),
      m_MCSClient(other.m_MCSClient),
      m_localControlPath(other.m_localControlPath),
      m_remoteBasePath(other.m_remoteBasePath),
      m_name(other.m_name),
      m_pControlTic(other.m_pControlTic),
      m_pControlNode(other.m_pControlNode),
      m_hasOwnTic(other.m_hasOwnTic),
      m_lastControlTreeCode(other.m_lastControlTreeCode),
      m_policySet(other.m_policySet),
      m_life(std::make_shared<const bool>(true)) {}

MpxORVHandle::~MpxORVHandle() {
    m_MCSClient.UnregisterMpxORVHandle(this);
    DisconnectMpxORVControlTree();
}

void MpxORVHandle::ConnectMpxORVControlTreeRemote(const QString& localControlPath,
                                                  const QString& remoteBasePath, const QString& name,
                                                  bool ownTic) {
    const std::weak_ptr<const bool> life = GetLife();
    m_localControlPath = localControlPath;
    m_remoteBasePath = remoteBasePath;
    m_name = name;
    const values::Node* const node = ProvideNode(localControlPath);
    if (life.expired()) return;
    AssertNotNull(node, L"pNode", HandlePlace, 109);
    if (ownTic) {
        AddControlTic(localControlPath + QLatin1Char(',') + remoteBasePath + QLatin1Char('/') + name);
        if (life.expired()) return;
    }
    m_MCSClient.NotifyMpxORVControlTreeConnection(this);
}

void MpxORVHandle::AddControlTic(const QString& ticText) {
    IVtClient* const client = m_MCSClient.GetVtClientToUse();
    AssertNotNull(client, L"m_MCSClient.GetVtClientToUse() != NULL", HandlePlace, 113);
    IVtTic* tic = nullptr;
    if (client != nullptr) {
        const std::weak_ptr<const bool> life = GetLife();
        const ObservableGuard clientGuard(*client);
        // Through Latin-1: what it cannot express arrives as "?". (fixed: tics-in-latin-1)
        tic = client->AddTic(QString::fromLatin1(ticText.toLatin1()), "");
        // Whoever heard of the tic may have deleted the handle or changed the client in use.
        if (life.expired() || client != m_MCSClient.GetVtClientToUse()) {
            if (tic != nullptr && clientGuard.IsAlive()) client->RemoveTic(tic);
            if (life.expired()) return;
            tic = nullptr;
        }
    }
    AssertNotNull(tic, L"m_pControlTic", HandlePlace, 116);
    m_pControlTic = tic;
    if (tic != nullptr) tic->AddObserver(this);
}

// At the server the path of the handle is that of its parent. (fixed: local-path-of-the-parent)
void MpxORVHandle::ConnectMpxORVControlTreeLocal(const QString& /*localControlPath*/,
                                                 const QString& localBasePath, const QString& name,
                                                 bool /*ownTic*/) {
    const std::weak_ptr<const bool> life = GetLife();
    m_localControlPath = localBasePath;
    m_remoteBasePath.clear();
    m_name = name;
    values::Node* const node = ProvideNode(localBasePath + QLatin1Char('/') + name);
    if (life.expired()) return;
    m_pControlNode = node;
    AssertNotNull(m_pControlNode, L"m_pControlNode", HandlePlace, 135);
    if (m_pControlNode != nullptr) m_pControlNode->AddObserver(this);
}

void MpxORVHandle::DisconnectMpxORVControlTree() {
    const std::weak_ptr<const bool> life = GetLife();  // lasts while the handle is being destroyed
    RemoveControlTic();
    if (life.expired()) return;
    DeleteControlNode();
    if (life.expired()) return;
    if (m_hasOwnTic) DeleteNode(GetControlNode());
    if (life.expired()) return;
    m_localControlPath.clear();
    m_remoteBasePath.clear();
    m_name.clear();
}

// The client of the server and the value-tree client may go with what is told of the release. What becomes of
// the tic is nobody's news any more; it may also stay, without a client in use, or if it is another client's.
void MpxORVHandle::RemoveControlTic() {
    if (m_pControlTic == nullptr) return;
    const std::weak_ptr<const bool> life = GetLife();
    IVtTic* const tic = m_pControlTic;
    tic->DeleteObserver(this);
    if (IVtClient* const client = m_MCSClient.GetVtClientToUse()) {
        const ObservableGuard ticGuard(*tic);
        const ObservableGuard clientGuard(*client);
        if (values::Node* const node = GetControlNode()) client->ReleaseNode(node);
        if (ticGuard.IsAlive() && clientGuard.IsAlive()) client->RemoveTic(tic);
    }
    if (!life.expired()) m_pControlTic = nullptr;
}

void MpxORVHandle::DeleteControlNode() {
    if (m_pControlNode == nullptr) return;
    values::Node* const node = std::exchange(m_pControlNode, nullptr);
    node->DeleteObserver(this);
    DeleteNode(node);
}

QString MpxORVHandle::CreateUniqueMpxORVName() {
    const QString machine = VornOS::Create()->GetMachineName();
    return QStringLiteral("MpxORV%1_%2").arg(machine, CfgCenter::GetAppName());
}

QString MpxORVHandle::GetLocalControlPath() {
    return m_localControlPath;
}

values::Node* MpxORVHandle::GetControlNode() const {
    return m_localControlPath.isEmpty() ? nullptr : FindNode(m_localControlPath);
}

QString MpxORVHandle::GetName() {
    return m_name;
}

bool MpxORVHandle::IsControlTreeConnected() const {
    return m_pControlTic != nullptr ? m_pControlTic->IsEstablished() : !m_remoteBasePath.isEmpty();
}

QString MpxORVHandle::GetRemoteMpxORVBasePath() {
    return QLatin1Char('/') + GetName();
}

MCSPolicySet& MpxORVHandle::GetPolicySet() {
    if (m_policySet) return *m_policySet;
    const std::weak_ptr<const bool> life = GetLife();
    const auto policySet = std::make_shared<MCSPolicySet>();
    m_policySet = policySet;
    policySet->ShowViewInTree(ProvideNode(mcskeys::Join(m_localControlPath, mcskeys::Policy)), true);
    if (!life.expired()) return *policySet;
    static auto& nobodys = *new MCSPolicySet;  // never destroyed
    return nobodys;
}

void MpxORVHandle::Update(Observable* source, TChangeCode code) {
    if (code == connectioncode::TicsChanged) {
        m_MCSClient.NotifyMpxORVControlTreeConnection(this);
    } else if (code == connectioncode::GoingAway && m_pControlTic != nullptr && source == m_pControlTic) {
        m_pControlTic->DeleteObserver(this);
        m_pControlTic = nullptr;
    } else if (code == changecode::GoingAway && m_pControlNode != nullptr && source == m_pControlNode) {
        m_pControlNode->DeleteObserver(this);
        m_pControlNode = nullptr;
    }
}
