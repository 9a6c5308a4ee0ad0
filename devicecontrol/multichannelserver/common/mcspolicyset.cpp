// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <platform/app/errorhandler.h>
#include <platform/config/icfg.h>
#include <platform/values/node.h>

#include <QtCore/QStringList>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* PolicySetPlace = L"devicecontrol/multichannelserver/common/mcspolicyset";
constexpr int LineOfShow = 140;
constexpr int LineOfNodeGoingAway = 237;

}  // namespace

// Said once more, where MinGW exports them.
constexpr decltype(MCSPolicySet::PolicyAdded) MCSPolicySet::PolicyAdded;
constexpr decltype(MCSPolicySet::PolicyRemoved) MCSPolicySet::PolicyRemoved;

MCSPolicySet::MCSPolicySet(const MCSPolicySet& other)
    : Observable(other), IObserver(other), m_policies(other.m_policies) {}

MCSPolicySet& MCSPolicySet::operator=(const MCSPolicySet& other) {
    if (this == &other) return *this;
    ShowViewInTree(nullptr, false);
    m_policies = other.m_policies;
    return *this;
}

MCSPolicySet::~MCSPolicySet() {
    MCSPolicySet::ShowViewInTree(nullptr, false);
}

// Whoever is told of a policy or a switch may destroy the set, here and below.
void MCSPolicySet::Add(const MCSPolicy& policy) {
    if (!m_policies.insert(policy).second) return;
    const ObservableGuard self(*this);
    ToTree(policy.GetName());
    if (self.IsAlive()) NotifyObservers(PolicyAdded, nullptr);
}

void MCSPolicySet::Remove(const MCSPolicy& policy) {
    const QString name = policy.GetName();  // the policy may be the set's own, which ends here
    if (m_policies.erase(policy) == 0) return;
    const ObservableGuard self(*this);
    ToTree(name);
    if (self.IsAlive()) NotifyObservers(PolicyRemoved, nullptr);
}

void MCSPolicySet::AddAll() {
    const ObservableGuard self(*this);
    for (const MCSPolicy* policy : qAsConst(MCSPolicy::s_NameMCSPolicyMap))
        if (self.IsAlive()) Add(*policy);
}

void MCSPolicySet::RemoveAll() {
    const ObservableGuard self(*this);
    while (self.IsAlive() && !m_policies.empty())
        Remove(*m_policies.begin());
}

void MCSPolicySet::SetContains(const MCSPolicy& policy, bool contains) {
    if (contains)
        Add(policy);
    else
        Remove(policy);
}

bool MCSPolicySet::Contains(const MCSPolicy& policy) const {
    return m_policies.count(policy) != 0;
}

MCSPolicySet::const_iterator MCSPolicySet::begin() const {
    return m_policies.begin();
}

MCSPolicySet::const_iterator MCSPolicySet::end() const {
    return m_policies.end();
}

void MCSPolicySet::ReadFromCfg(ICfg* cfg) {
    if (cfg == nullptr) return;
    const ObservableGuard self(*this);
    for (const MCSPolicy* policy : qAsConst(MCSPolicy::s_NameMCSPolicyMap))
        if (self.IsAlive())
            MCSPolicySet::SetContains(*policy, cfg->ReadBool(policy->GetName(), Contains(*policy)));
}

void MCSPolicySet::WriteToCfg(ICfg* cfg) const {
    if (cfg == nullptr) return;
    for (const MCSPolicy* policy : qAsConst(MCSPolicy::s_NameMCSPolicyMap))
        cfg->WriteBool(policy->GetName(), Contains(*policy));
}

void MCSPolicySet::ShowViewInTree(values::Node* node, bool fromTree) {
    DetachFromSwitches(LineOfShow);
    SetParentNode(node);
    if (node == nullptr) return;
    const ObservableGuard self(*this);
    for (const MCSPolicy* policy : qAsConst(MCSPolicy::s_NameMCSPolicyMap)) {
        ShowSwitch(policy->GetName(), fromTree);
        // Whoever heard of the switch may have destroyed or hidden the set, or removed the node.
        if (!self.IsAlive() || m_pParentNode != node) return;
    }
}

void MCSPolicySet::ShowSwitch(const QString& name, bool fromTree) {
    const ObservableGuard self(*this);
    if (GetValueForName(name) == nullptr) {
        if (m_pParentNode->CreateChild(Switch(), name) == nullptr)
            return;  // taken by an item of another type
        if (self.IsAlive()) ToTree(name);
    }
    if (!self.IsAlive()) return;
    if (fromTree)
        FromTree(name);
    else
        ToTree(name);
    if (!self.IsAlive()) return;
    Switch* const value = GetValueForName(name);
    if (value == nullptr) return;  // whoever heard of it removed it
    value->AddObserver(this);
    m_ObservedValues.insert(value);
}

values::Node* MCSPolicySet::GetParentNodeInTree() const {
    return m_pParentNode;
}

QString MCSPolicySet::ToString() const {
    if (m_policies.empty()) return QStringLiteral("<none>");
    QStringList names;
    for (const MCSPolicy& policy : m_policies)
        names << policy.GetName();
    return names.join(QStringLiteral(", "));
}

void MCSPolicySet::SetToDefaultPolicy() {
    const ObservableGuard self(*this);
    RemoveAll();
    for (const MCSPolicy* policy :
         {&MCSPolicy::MAYALTERFREQSINGLE, &MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES,
          &MCSPolicy::MAYBEJOBMASTER, &MCSPolicy::MAYRESTARTJOB, &MCSPolicy::MAYALTERFREQRANGES})
        if (self.IsAlive()) Add(*policy);
}

void MCSPolicySet::Update(Observable* source, TChangeCode code) {
    auto* const value = dynamic_cast<Switch*>(source);
    if (code == changecode::StateChanged && value != nullptr && value->GetState() == values::GoingAway) {
        value->DeleteObserver(this);
        m_ObservedValues.erase(value);
    } else if (code == changecode::ContentChanged && value != nullptr) {
        const ObservableGuard self(*this);
        FromTree(value->GetName());
        if (self.IsAlive()) NotifyObservers(changecode::ContentChanged, this);
    } else if (code == changecode::GoingAway && m_pParentNode != nullptr && source == m_pParentNode) {
        SetParentNode(nullptr);
        DetachFromSwitches(LineOfNodeGoingAway);
    }
}

MCSPolicySet::Switch* MCSPolicySet::GetValueForName(const QString& name) const {
    return m_pParentNode != nullptr ? dynamic_cast<Switch*>(m_pParentNode->FindChild(name)) : nullptr;
}

void MCSPolicySet::FromTree(const QString& name) {
    const Switch* const value = GetValueForName(name);
    const MCSPolicy* const policy = MCSPolicy::PolicyByName(name);
    if (value != nullptr && policy != nullptr) MCSPolicySet::SetContains(*policy, value->GetValue());
}

void MCSPolicySet::ToTree(const QString& name) {
    Switch* const value = GetValueForName(name);
    const MCSPolicy* const policy = MCSPolicy::PolicyByName(name);
    if (value != nullptr && policy != nullptr) value->SetValue(Contains(*policy), nullptr);
}

void MCSPolicySet::DetachFromSwitches(int line) {
    for (Switch* value : m_ObservedValues)
        value->DeleteObserver(this);
    m_ObservedValues.clear();
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceAssertions) && !m_ObservedValues.empty())
        _Q_assert(L"m_ObservedValues.size() == 0", PolicySetPlace, line);
}

// The set observes the node to hear of its end: a pointer to a node that is gone would be used by the next
// Add. (fixed: set-observes-its-node)
void MCSPolicySet::SetParentNode(values::Node* node) {
    if (m_pParentNode != nullptr) m_pParentNode->DeleteObserver(this);
    m_pParentNode = node;
    if (m_pParentNode != nullptr) m_pParentNode->AddObserver(this);
}
