// SPDX-License-Identifier: Apache-2.0
// What a data module publishes in the value tree.
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/values/tree.h>

#include <utility>

namespace {

constexpr int HighestWord = 65535;
constexpr int HighestIndex = 100;

void SetLimits(values::ValueNumeric<int>* value, int maximum, IObserver* originator) {
    if (value == nullptr) return;
    value->SetMin(0, originator);
    value->SetMax(maximum, originator);
}

template <class V>
void Detach(V*& item, IObserver* observer) {
    if (item != nullptr) item->DeleteObserver(observer);
    item = nullptr;
}

}  // namespace

/// The child of the type V, created where absent; null where an item of another type holds the name.
template <class V>
V* DataModule::ProvideChild(values::Node& node, const QString& name) {
    auto* child = dynamic_cast<V*>(node.FindChild(name));
    if (child == nullptr) child = dynamic_cast<V*>(node.CreateChild(V(), name));
    if (child == nullptr)
        TraceWarning(QStringLiteral("The value '%1/%2' could not be created").arg(node.GetPathName(), name),
                     __LINE__);
    else
        child->AddObserver(this);
    return child;
}

void DataModule::ProvideTreeItems() {
    const QString name = GetIdentity().NodeName();
    if (m_pModuleNode != nullptr && m_pModuleNode->GetName() != name) RemoveTreeItems();
    values::Tree* const tree = values::Tree::Instance();
    values::Node* const gts = tree != nullptr ? tree->FindNode(gtskeys::NodePath()) : nullptr;
    if (gts == nullptr) {
        TraceWarning(QStringLiteral("Node '%1' missing in ValueTree: Cannot handle DataModule '%2'.")
                         .arg(gtskeys::Gts, m_type),
                     __LINE__);
        return;
    }
    if (auto* const node = dynamic_cast<values::Node*>(gts->FindChild(name))) {
        ProvideValues(*node);
        RefreshTree();
        return;
    }
    // Complete before it is added, so that whoever hears of it finds it so.
    auto node = std::make_unique<values::Node>(name);
    ProvideValues(*node);
    RefreshTree();
    std::unique_ptr<values::TreeItem> item = std::move(node);
    if (gts->AddChild(item)) return;
    TraceWarning(QStringLiteral("The node '%1/%2' could not be created").arg(gts->GetPathName(), name),
                 __LINE__);
    ForgetTreeItems();
}

void DataModule::ProvideValues(values::Node& node) {
    m_pModuleNode = &node;
    m_pInputDiscretes = ProvideChild<Number>(node, gtskeys::InputDiscretes);
    SetLimits(m_pInputDiscretes, HighestWord, this);
    m_pIndex = ProvideChild<Number>(node, gtskeys::Index);
    SetLimits(m_pIndex, HighestIndex, this);
    m_pAssignments = ProvideChild<Assignments>(node, gtskeys::FrequencyAssignments);
    node.AddObserver(this);
}

void DataModule::RemoveTreeItems() {
    values::Node* const node = m_pModuleNode;
    ForgetTreeItems();
    if (node != nullptr) values::Tree::Instance()->Delete(node);
}

void DataModule::ForgetTreeItems() {
    Detach(m_pInputDiscretes, this);
    Detach(m_pIndex, this);
    Detach(m_pAssignments, this);
    Detach(m_pModuleNode, this);
}

void DataModule::RefreshTree() {
    if (m_pIndex != nullptr) m_pIndex->SetValue(m_index, this);
    // An input that is 0 is active. So the frequencies come after the inputs and go before them, or all of
    // them would be blanked for a moment.
    if (m_connected) {
        WriteInputDiscretes(m_inputDiscretes);
        WriteAssignments(m_frequencies);
    } else {
        WriteAssignments(std::vector<double>(m_numberOfInputs, 0.0));
        WriteInputDiscretes(0);
    }
}

/// Bits beyond the range must not turn into its maximum, which would show every input as inactive.
void DataModule::WriteInputDiscretes(unsigned long bits) {
    if (m_pInputDiscretes != nullptr) m_pInputDiscretes->SetValue(static_cast<int>(bits & HighestWord), this);
}

void DataModule::WriteAssignments(const std::vector<double>& frequencies) {
    if (m_pAssignments == nullptr) return;
    // The list is told of even if it stays the same.
    if (m_pAssignments->GetItems() == frequencies)
        m_pAssignments->NotifyObservers(changecode::ItemsChanged, this);
    else
        m_pAssignments->SetItems(frequencies, this);
}

/// Nobody but the module itself may touch its items, and of what it does itself it is not told.
void DataModule::Update(Observable* source, TChangeCode code) {
    const char* const name = NameOfItem(source);
    if (name == nullptr) return;
    // fixed: own-items
    TraceWarning(
        QStringLiteral("Someone does something with our value '%2' which should not happen. Change code: %1")
            .arg(code)
            .arg(QLatin1String(name)),
        159);
    ForgetIfGoingAway(source);
}

const char* DataModule::NameOfItem(const Observable* item) const {
    const std::pair<const Observable*, const char*> items[] = {{m_pIndex, "m_pIndex"},
                                                               {m_pInputDiscretes, "m_pInputDiscretes"},
                                                               {m_pAssignments, "m_pAssignments"},
                                                               {m_pModuleNode, "m_pModuleNode"}};
    for (const auto& [observable, name] : items)
        if (observable == item && item != nullptr) return name;
    return nullptr;
}

void DataModule::ForgetIfGoingAway(Observable* source) {
    const auto forget = [&](auto*& item) {
        if (item == nullptr || item != source || item->GetState() != values::GoingAway) return;
        if (!item->IsNode())
            TraceWarning(QStringLiteral("Invalid delete of observable \"%1\".").arg(item->GetName()), 159);
        Detach(item, this);
    };
    forget(m_pIndex);
    forget(m_pInputDiscretes);
    forget(m_pAssignments);
    forget(m_pModuleNode);
}
