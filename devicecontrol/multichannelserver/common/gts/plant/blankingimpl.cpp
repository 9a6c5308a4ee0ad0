// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/blankingimpl.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/values/valuedescriptor.h>

Blanking::BlankingImpl::BlankingImpl()
    : m_node(*this, values::ValueDescriptor::CreateNodeAbsolute(gtskeys::NodePath(), nullptr)) {
    DiscoverModules();
}

void Blanking::BlankingImpl::EnableClient(BlankingClient* client, bool enable) {
    const auto found = std::find(m_disabledClients.begin(), m_disabledClients.end(), client);
    if (enable && found != m_disabledClients.end())
        m_disabledClients.erase(found);
    else if (!enable && found == m_disabledClients.end())
        m_disabledClients.push_back(client);
}

std::optional<BlankingSource> Blanking::BlankingImpl::WhoBlanks(double frequency) const {
    std::uint64_t wanted = 0;
    if (!m_node || !wholehertz::Of(frequency, &wanted) || !m_blanked.Contains(wanted)) return std::nullopt;
    for (values::TreeItem* item = m_node->GetFirstChild(); item != nullptr; item = item->GetNextSibling()) {
        const auto found = m_modules.find(item->GetObservable());
        if (found == m_modules.end()) continue;
        const ModuleBlankingRecord& record = *found->second.record;
        for (std::size_t i = 0; i < record.active.size(); ++i) {
            std::uint64_t hertz = 0;
            if (IsBlanking(record, i, &hertz) && hertz == wanted)
                return BlankingSource{item->GetName(), static_cast<int>(i)};
        }
    }
    return std::nullopt;
}

std::vector<double> Blanking::BlankingImpl::GetBlanked() const {
    std::vector<std::uint64_t> hertz = m_scratch;
    std::sort(hertz.begin(), hertz.end());
    hertz.erase(std::unique(hertz.begin(), hertz.end()), hertz.end());
    return std::vector<double>(hertz.begin(), hertz.end());
}

void Blanking::BlankingImpl::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::StateChanged:
            ForgetIfGoingAway(m_discretes, source, code);
            ForgetIfGoingAway(m_assignments, source, code);
            break;
        case changecode::ContentChanged:
            if (const auto found = m_discretes.find(source); found != m_discretes.end()) {
                ReadInputs(found->second);
                Rebuild();
            }
            break;
        case changecode::ItemsChanged:
            if (const auto found = m_assignments.find(source); found != m_assignments.end()) {
                ReadAssignments(found->second);
                Rebuild();
            }
            break;
        case changecode::StructureChanged:
            if (m_node.Is(source)) DiscoverModules();
            break;
        case changecode::GoingAway:
            // The set stays as it is (fixed: blanked-after-the-module): a module shows that it is
            // disconnected before it goes, and where one is lost in another way, its frequencies had better
            // stay blanked than be released unseen.
            m_node.EndIfGoingAway(source, code);
            ForgetIfGoingAway(m_modules, source, code);
            break;
        default:
            break;
    }
}

template <class V>
void Blanking::BlankingImpl::ForgetIfGoingAway(ObservedMap<V>& map, Observable* source, TChangeCode code) {
    const auto found = map.find(source);
    if (found != map.end() && found->second.value.EndIfGoingAway(source, code)) map.erase(found);
}

void Blanking::BlankingImpl::DiscoverModules() {
    if (!m_node) return;
    for (values::TreeItem* item = m_node->GetFirstChild(); item != nullptr; item = item->GetNextSibling())
        if (item->IsNode() && m_modules.count(item->GetObservable()) == 0)
            AddModule(static_cast<values::Node*>(item));
}

/// A module that is not complete yet is looked at again at the next change below the node.
void Blanking::BlankingImpl::AddModule(values::Node* node) {
    auto* const assignments = dynamic_cast<Assignments*>(node->FindChild(gtskeys::FrequencyAssignments));
    auto* const discretes = dynamic_cast<Discretes*>(node->FindChild(gtskeys::InputDiscretes));
    if (assignments == nullptr || discretes == nullptr) return;
    const auto record = std::make_shared<ModuleBlankingRecord>();
    Observe(m_modules, *node, record);
    ReadAssignments(Observe(m_assignments, *assignments, record));
    ReadInputs(Observe(m_discretes, *discretes, record));
    Rebuild();
}

template <class V>
const Blanking::BlankingImpl::Observed<V>& Blanking::BlankingImpl::Observe(ObservedMap<V>& map, V& value,
                                                                           const Record& record) {
    return map.emplace(&value, Observed<V>{Observation<V>(*this, &value), record}).first->second;
}

void Blanking::BlankingImpl::ReadInputs(const Observed<Discretes>& discretes) {
    constexpr std::size_t SignBit = 31;
    const auto bits = static_cast<std::uint32_t>(discretes.value->GetValue());
    std::vector<bool>& active = discretes.record->active;
    // A keyed transmitter pulls its input to 0. Beyond bit 31 the sign goes on. (fixed: zero-is-active)
    for (std::size_t i = 0; i < active.size(); ++i)
        active[i] = (bits >> std::min(i, SignBit) & 1U) == 0;
    CollectBlanked(*discretes.record);
}

void Blanking::BlankingImpl::ReadAssignments(const Observed<Assignments>& assignments) {
    const std::vector<double>& items = assignments.value->GetItems();
    // New inputs stay inactive until the inputs are read the next time. (fixed: new-inputs-inactive)
    assignments.record->Resize(items.size());
    assignments.record->frequencies = items;
    CollectBlanked(*assignments.record);
}

void Blanking::BlankingImpl::CollectBlanked(ModuleBlankingRecord& record) {
    record.blanked.clear();
    for (std::size_t i = 0; i < record.active.size(); ++i) {
        std::uint64_t hertz = 0;
        if (IsBlanking(record, i, &hertz)) record.blanked.push_back(hertz);
    }
}

void Blanking::BlankingImpl::Rebuild() {
    m_scratch.clear();
    for (const auto& entry : m_modules) {
        const std::vector<std::uint64_t>& blanked = entry.second.record->blanked;
        m_scratch.insert(m_scratch.end(), blanked.begin(), blanked.end());
    }
    m_blanked.Assign(m_scratch);
}
