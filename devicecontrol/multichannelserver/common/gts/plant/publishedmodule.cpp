// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/publishedmodule.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/plant/moduletrace.h>

#include <platform/app/trace.h>
#include <platform/values/tree.h>

#include <memory>
#include <utility>

namespace {

constexpr int HighestWord = 65535;
constexpr int HighestIndex = 100;

void SetLimits(values::ValueNumeric<int>* value, int maximum, IObserver* originator) {
    if (value == nullptr) return;
    value->SetMin(0, originator);
    value->SetMax(maximum, originator);
}

}  // namespace

PublishedModule::PublishedModule(IObserver& owner)
    : m_owner(owner),
      m_pModuleNode(owner),
      m_pInputDiscretes(owner),
      m_pIndex(owner),
      m_pAssignments(owner) {}

/// The child of the type V, created where absent; null where an item of another type holds the name.
template <class V>
V* PublishedModule::ProvideChild(values::Node& node, const QString& name) {
    auto* child = dynamic_cast<V*>(node.FindChild(name));
    if (child == nullptr) child = dynamic_cast<V*>(node.CreateChild(V(), name));
    if (child == nullptr)
        MCS_TRACE(QStringLiteral("The value '%1/%2' could not be created").arg(node.GetPathName(), name));
    return child;
}

void PublishedModule::Provide(const QString& name, const QString& type, const Content& content) {
    if (m_pModuleNode && m_pModuleNode->GetName() != name) Remove();
    values::Tree* const tree = values::Tree::Instance();
    values::Node* const gts = tree != nullptr ? tree->FindNode(gtskeys::NodePath()) : nullptr;
    if (gts == nullptr) {
        MCS_TRACE(QStringLiteral("Node '%1' missing in ValueTree: Cannot handle DataModule '%2'.")
                      .arg(gtskeys::Gts, type));
        return;
    }
    if (auto* const node = dynamic_cast<values::Node*>(gts->FindChild(name))) {
        ProvideValues(*node);
        Refresh(content);
        return;
    }
    // Complete before it is added, so that whoever hears of it finds it so.
    auto node = std::make_unique<values::Node>(name);
    ProvideValues(*node);
    Refresh(content);
    std::unique_ptr<values::TreeItem> item = std::move(node);
    if (gts->AddChild(item)) return;
    MCS_TRACE(QStringLiteral("The node '%1/%2' could not be created").arg(gts->GetPathName(), name));
    Forget();
}

void PublishedModule::ProvideValues(values::Node& node) {
    m_pInputDiscretes.Begin(ProvideChild<Number>(node, gtskeys::InputDiscretes));
    SetLimits(m_pInputDiscretes.Get(), HighestWord, &m_owner);
    m_pIndex.Begin(ProvideChild<Number>(node, gtskeys::Index));
    SetLimits(m_pIndex.Get(), HighestIndex, &m_owner);
    m_pAssignments.Begin(ProvideChild<Assignments>(node, gtskeys::FrequencyAssignments));
    m_pModuleNode.Begin(&node);
}

void PublishedModule::Remove() {
    values::Node* const node = m_pModuleNode.Get();
    Forget();
    if (node != nullptr) values::Tree::Instance()->Delete(node);
}

void PublishedModule::Forget() {
    m_pInputDiscretes.End();
    m_pIndex.End();
    m_pAssignments.End();
    m_pModuleNode.End();
}

void PublishedModule::Refresh(const Content& content) {
    if (m_pIndex) m_pIndex->SetValue(content.index, &m_owner);
    // An input that is 0 is active. So the frequencies come after the inputs and go before them, or all of
    // them would be blanked for a moment.
    if (content.isConnected) {
        WriteInputDiscretes(content.inputDiscretes);
        WriteAssignments(content.frequencies);
    } else {
        WriteAssignments(std::vector<double>(content.numberOfInputs, 0.0));
        WriteInputDiscretes(0);
    }
}

/// Bits beyond the range must not turn into its maximum, which would show every input as inactive.
void PublishedModule::WriteInputDiscretes(unsigned long bits) {
    if (m_pInputDiscretes) m_pInputDiscretes->SetValue(static_cast<int>(bits & HighestWord), &m_owner);
}

void PublishedModule::WriteAssignments(const std::vector<double>& frequencies) {
    if (!m_pAssignments) return;
    // The list is told of even if it stays the same.
    if (m_pAssignments->GetItems() == frequencies)
        m_pAssignments->NotifyObservers(changecode::ItemsChanged, &m_owner);
    else
        m_pAssignments->SetItems(frequencies, &m_owner);
}

// Nobody but the module itself may touch its items, and of what it does itself it is not told.
void PublishedModule::OnUpdate(Observable* source, TChangeCode code) {
    const char* const name = NameOf(source);
    if (name == nullptr) return;
    // fixed: own-items
    moduletrace::Warn(
        QStringLiteral("Someone does something with our value '%2' which should not happen. Change code: %1")
            .arg(code)
            .arg(QLatin1String(name)),
        159);
    ForgetIfGoingAway(source);
}

const char* PublishedModule::NameOf(const Observable* item) const {
    const std::pair<const Observable*, const char*> items[] = {{m_pIndex.Get(), "m_pIndex"},
                                                               {m_pInputDiscretes.Get(), "m_pInputDiscretes"},
                                                               {m_pAssignments.Get(), "m_pAssignments"},
                                                               {m_pModuleNode.Get(), "m_pModuleNode"}};
    for (const auto& [observable, name] : items)
        if (observable == item && item != nullptr) return name;
    return nullptr;
}

void PublishedModule::ForgetIfGoingAway(Observable* source) {
    const auto forget = [&](auto& item) {
        if (!item.Is(source) || item->GetState() != values::GoingAway) return;
        if (!item->IsNode())
            moduletrace::Warn(QStringLiteral("Invalid delete of observable \"%1\".").arg(item->GetName()),
                              159);
        item.End();
    };
    forget(m_pIndex);
    forget(m_pInputDiscretes);
    forget(m_pAssignments);
    forget(m_pModuleNode);
}
