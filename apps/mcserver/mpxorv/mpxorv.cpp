// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorv.h>

#include <apps/common/codedtext.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

MpxOrv::MpxOrv(EMpxOrvKind kind, const QString& name, const Defaults& defaults, IMpxOrvListener& listener)
    : m_kind(kind),
      m_name(name),
      m_listener(listener),
      m_facts(mcskeys::Join(MpxOrvPath::NodePath(kind, name), mcskeys::Status)),
      m_status(mcskeys::Join(MpxOrvPath::NodePath(kind, name), mcskeys::Status)),
      m_policies(defaults.policies),
      m_hadPolicies(defaults.policies),
      m_requests(MpxOrvPath::NodePath(kind, name), defaults.frequency,
                 [this](ERequest request) { m_listener.OnRequest(*this, request); }),
      m_blankingClient(name),
      m_pBlanking(*this) {
    m_status.SetComment(defaults.comment);
    ShowOperationType(CodedText::Word(QStringLiteral("Idle")));
    m_status.GetOperationModeValue()->Select(OperationIdle);
    const QString policyPath = mcskeys::Join(MpxOrvPath::NodePath(kind, name), mcskeys::Policy);
    m_policies.ShowViewInTree(values::Tree::Instance()->ProvideNode(policyPath), false);
    m_policies.AddObserver(this);
    m_pBlanking.Begin(values::ProvideValue<values::Value<bool>>(
        mcskeys::Join(MpxOrvPath::NodePath(kind, name), BlankingName()), defaults.obeysBlanking, false,
        nullptr));
}

MpxOrv::~MpxOrv() {
    m_policies.DeleteObserver(this);
}

void MpxOrv::ShowOperationType(const CodedText& does) {
    m_facts.ShowOperationType(does);
    if (m_status.GetOperationTypeValue() != nullptr) m_status.SetOperationType(does.ToEnglish());
}

bool MpxOrv::ObeysBlanking() const {
    return !m_pBlanking || m_pBlanking->GetValue();
}

void MpxOrv::SetObeysBlanking(bool obeys) {
    if (m_pBlanking) m_pBlanking->SetValue(obeys);
}

QStringList MpxOrv::TakeChangedPolicies(QStringList* given) {
    QStringList lost;
    for (const MCSPolicy* const policy : MCSPolicy::s_NameMCSPolicyMap) {
        const bool had = m_hadPolicies.Contains(*policy);
        const bool has = m_policies.Contains(*policy);
        if (had && !has) lost += policy->GetName();
        if (has && !had) *given += policy->GetName();
    }
    m_hadPolicies = m_policies;
    return lost;
}

bool MpxOrv::AddClient(int session, const QString& application) {
    if (++m_clients[session] > 1) return false;
    m_status.AddConnectedClient(session, application);
    return true;
}

bool MpxOrv::ReleaseClient(int session) {
    const auto client = m_clients.find(session);
    if (client == m_clients.end() || --client->second > 0) return false;
    return RemoveClient(session);
}

bool MpxOrv::RemoveClient(int session) {
    if (m_clients.erase(session) == 0) return false;
    if (m_status.GetConnectedClientsValue() != nullptr) m_status.RemoveConnectedClient(session);
    return true;
}

void MpxOrv::Update(Observable* source, TChangeCode code) {
    const bool isPolicy = code == MCSPolicySet::PolicyAdded || code == MCSPolicySet::PolicyRemoved;
    if (source == &m_policies && isPolicy) return m_listener.OnPoliciesChanged(*this);
    if (m_pBlanking.EndIfGoingAway(source, code)) return;
    if (m_pBlanking.Is(source) && code == changecode::ContentChanged) m_listener.OnBlankingSwitched(*this);
}
