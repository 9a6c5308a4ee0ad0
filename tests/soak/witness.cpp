// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/witness.h>

#include <tests/soak/words.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/values/tree.h>

#include <cmath>

namespace soak {

namespace {

/// So much later than it was true may a state be published: an answer takes as long as the response time-out
/// at most, and this process and that of the modules may have to wait for the processor.
constexpr qint64 LatestMs = 5000;

}  // namespace

Witness::Witness(const Plant& plant)
    : m_plant(plant), m_node(values::Tree::Instance()->ProvideNode(gtskeys::NodePath())) {
    m_node->AddObserver(this);
    Discover();
}

Witness::~Witness() {
    while (!m_published.empty())
        Forget(m_published.begin()->first);
    if (m_error != nullptr) m_error->DeleteObserver(this);
    m_node->DeleteObserver(this);
}

int Witness::ModuleOf(const Published& published) {
    const std::vector<double>& frequencies = published.assignments->GetItems();
    if (frequencies.empty() || !(frequencies[0] > 0.0)) return -1;
    return static_cast<int>(std::lround((frequencies[0] - FrequencyOf(0, 0)) / 1e6));
}

void Witness::Update(Observable* source, TChangeCode code) {
    if (source == m_node && code == changecode::StructureChanged) Discover();
    if (m_error != nullptr && source == m_error && code == changecode::ContentChanged) ++m_errorsWritten;
    for (auto& [node, published] : m_published) {
        if (source == node && code == changecode::GoingAway) return Forget(node);
        if (source == published.discretes || source == published.assignments) return Check(published);
    }
}

void Witness::Discover() {
    for (values::TreeItem* item = m_node->GetFirstChild(); item != nullptr; item = item->GetNextSibling())
        if (item->IsNode() && m_published.count(static_cast<values::Node*>(item)) == 0)
            Observe(static_cast<values::Node*>(item));
    if (m_error != nullptr) return;
    m_error = dynamic_cast<values::ValueBase*>(m_node->FindChild(gtskeys::Error));
    if (m_error != nullptr) m_error->AddObserver(this);
}

void Witness::Observe(values::Node* node) {
    Published published;
    published.discretes = dynamic_cast<Discretes*>(node->FindChild(gtskeys::InputDiscretes));
    published.assignments = dynamic_cast<Assignments*>(node->FindChild(gtskeys::FrequencyAssignments));
    if (published.discretes == nullptr || published.assignments == nullptr) return;
    node->AddObserver(this);
    published.discretes->AddObserver(this);
    published.assignments->AddObserver(this);
    Check(m_published[node] = published);
}

void Witness::Forget(values::Node* node) {
    const Published published = m_published[node];
    m_published.erase(node);
    m_isChanged = true;
    published.discretes->DeleteObserver(this);
    published.assignments->DeleteObserver(this);
    node->DeleteObserver(this);
}

void Witness::Check(const Published& published) {
    m_isChanged = true;
    const auto states = static_cast<quint32>(published.discretes->GetValue());
    const int module = ModuleOf(published);
    if (states != 0 && !words::IsOne(states))
        Report(QStringLiteral("states that no module ever had: %1").arg(states, 0, 2));
    if (module == -1) return;
    ++m_readings;
    // 0 among them, with which a module begins: all of its transmitters would be taken for keyed.
    if (!m_plant.HeldStates(module, states, LatestMs))
        Report(QStringLiteral("states that module %1 did not have lately: %2").arg(module).arg(states, 0, 2));
}

void Witness::CompareBlanking() {
    if (!m_isChanged) return;
    m_isChanged = false;
    std::vector<bool> isConnected(static_cast<std::size_t>(m_plant.Count()), false);
    for (const auto& [node, published] : m_published) {
        const int module = ModuleOf(published);
        if (module == -1) continue;
        isConnected.at(static_cast<std::size_t>(module)) = true;
        CompareBlanking(module, static_cast<quint32>(published.discretes->GetValue()));
    }
    for (int module = 0; module < m_plant.Count(); ++module)
        if (!isConnected[static_cast<std::size_t>(module)]) CompareBlanking(module, words::AllReleased);
}

void Witness::CompareBlanking(int module, quint32 states) {
    for (int i = 0; i < words::Inputs; ++i) {
        const bool isKeyed = (states >> i & 1) == 0;
        if (Blanking::Instance()->IsFrequencyBlanked(FrequencyOf(module, i), &m_client) != isKeyed)
            Report(QStringLiteral("module %1, input %2: %3 blanked")
                       .arg(module)
                       .arg(i)
                       .arg(isKeyed ? QStringLiteral("not") : QStringLiteral("falsely")));
    }
}

bool Witness::IsTrulyShown(int module) const {
    for (const auto& [node, published] : m_published)
        if (ModuleOf(published) == module)
            return static_cast<quint32>(published.discretes->GetValue()) == m_plant.States(module);
    return false;
}

void Witness::Report(const QString& text) {
    constexpr int MaxKept = 20;
    ++m_falseCount;
    if (m_falseStates.size() < MaxKept) m_falseStates += text;
}

}  // namespace soak
