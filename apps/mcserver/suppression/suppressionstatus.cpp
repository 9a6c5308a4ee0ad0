// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionstatus.h>

#include <apps/pages/suppressionkeys.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/values/tree.h>

#include <memory>

using namespace std::chrono_literals;

SuppressionStatus::SuppressionStatus(const SuppressionPlant* plant, IClock& clock)
    : m_plant(plant), m_look(clock), m_answers(clock), m_node(*this) {
    Provide();
    if (m_plant == nullptr) return;
    connect(m_plant, &SuppressionPlant::SignalStatesChanged, this, &SuppressionStatus::LookSoon);
    connect(m_plant, &SuppressionPlant::SignalSettingsChanged, this, [this] {
        m_haveSettingsChanged = true;
        LookSoon();
    });
    Look();
    ShowAnswers();
}

SuppressionStatus::~SuppressionStatus() {
    values::Node* const node = m_node.Get();
    m_node.End();
    if (node != nullptr) values::Tree::Instance()->Delete(node);
}

void SuppressionStatus::Provide() {
    using namespace suppressionkeys;
    auto node = std::make_unique<values::Node>(Suppression);
    const auto add = [&node](auto prototype, QLatin1String name) {
        return static_cast<decltype(prototype)*>(node->CreateChild(prototype, name));
    };
    m_moduleCount = add(values::Value<int>(), ModuleCount);
    m_answeringModules = add(values::Value<int>(), AnsweringModules);
    m_keyedFrequencies = add(values::ValueList<double>(), KeyedFrequencies);
    m_unsupervisedFrequencies = add(values::ValueList<double>(), UnsupervisedFrequencies);
    std::unique_ptr<values::TreeItem> modules = std::make_unique<values::Node>(Modules);
    m_modulesNode = static_cast<values::Node*>(modules.get());
    node->AddChild(modules);
    values::Node* const added = node.get();
    std::unique_ptr<values::TreeItem> item = std::move(node);
    if (values::Tree::Instance()->AddItem(mcskeys::DefaultBasePath(mcskeys::Status), item))
        m_node.Begin(added);
}

/// Nobody takes the node away but this; if somebody does all the same, nothing is shown any more.
void SuppressionStatus::Update(Observable* source, TChangeCode code) {
    m_node.EndIfGoingAway(source, code);
}

void SuppressionStatus::LookSoon() {
    if (!m_look.IsRunning()) m_look.Start(0ms, [this] { Look(); });
}

void SuppressionStatus::Look() {
    if (!m_node) return;
    ShowModules();
    int answering = 0;
    m_plant->ForEachModule([&answering](const ModuleView& module) {
        if (module.state == EModuleState::Connected) ++answering;
    });
    m_moduleCount->SetValue(m_plant->Count());
    m_answeringModules->SetValue(answering);
    m_unsupervisedFrequencies->SetItems(m_plant->GetUnsupervisedFrequencies());
    m_keyedFrequencies->SetItems(Blanking::Instance()->GetBlankedFrequencies());
}

void SuppressionStatus::ShowModules() {
    for (auto& entry : m_modules)
        entry.second.Mark(false);
    m_plant->ForEachModule([this](const ModuleView& module) {
        const auto found = m_modules.find(module.number);
        if (found == m_modules.end()) {
            m_modules.emplace(module.number, ModuleStatus(*m_modulesNode, module));
            return;
        }
        found->second.Mark(true);
        if (m_haveSettingsChanged) found->second.ShowSettings(module);
        found->second.ShowState(module);
    });
    m_haveSettingsChanged = false;
    for (auto entry = m_modules.begin(); entry != m_modules.end();) {
        if (!entry->second.IsThere()) {
            entry->second.Remove();
            entry = m_modules.erase(entry);
        } else {
            ++entry;
        }
    }
}

void SuppressionStatus::ShowAnswers() {
    m_answers.Start(AnswerInterval, [this] { ShowAnswers(); });
    if (!m_node) return;
    m_plant->ForEachModule([this](const ModuleView& module) {
        const auto found = m_modules.find(module.number);
        if (found != m_modules.end()) found->second.ShowLastAnswer(module);
    });
}

void SuppressionStatus::NoteBlanked(const QString& node, int input, const QString& mpxOrv) {
    if (!m_node) return;
    for (auto& entry : m_modules)
        if (entry.second.GetNodeName() == node) entry.second.NoteBlanked(input, mpxOrv);
}
