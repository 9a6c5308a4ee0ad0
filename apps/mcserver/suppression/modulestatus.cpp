// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/modulestatus.h>

#include <apps/pages/suppressionkeys.h>

#include <devicecontrol/multichannelserver/common/gts/moduleview.h>

#include <platform/values/tree.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

template <class V>
V* AddChild(values::Node& node, QLatin1String name) {
    return static_cast<V*>(node.CreateChild(V(), name));
}

/// The node is new, so that nothing holds the name.
values::Node* AddNode(values::Node& parent, const QString& name) {
    std::unique_ptr<values::TreeItem> item = std::make_unique<values::Node>(name);
    auto* const node = static_cast<values::Node*>(item.get());
    return parent.AddChild(item) ? node : nullptr;
}

const QString& StateText(EModuleState state) {
    static const auto& texts = *new std::vector<QString>{suppressionkeys::Disconnected,
                                                         suppressionkeys::Connected, suppressionkeys::Error};
    return texts[static_cast<std::size_t>(state)];
}

/// With milliseconds and the letter of UTC; empty for none.
QString TimeText(const QDateTime& time) {
    return time.isValid() ? time.toUTC().toString(Qt::ISODateWithMs) : QString();
}

}  // namespace

ModuleStatus::ModuleStatus(values::Node& parent, const ModuleView& module) {
    using namespace suppressionkeys;
    // Complete before it is added, so that whoever hears of it finds it so.
    auto node = std::make_unique<values::Node>(QString::number(module.number));
    m_node = node.get();
    m_name = AddChild<Text>(*node, Name);
    m_type = AddChild<Text>(*node, Type);
    m_address = AddChild<Text>(*node, Address);
    m_pollInterval = AddChild<values::Value<int>>(*node, suppressionkeys::PollInterval);
    m_state = AddChild<Text>(*node, State);
    m_reason = AddChild<Text>(*node, Reason);
    m_stateSince = AddChild<Text>(*node, StateSince);
    m_answersAgainSince = AddChild<Text>(*node, AnswersAgainSince);
    m_lastAnswerText = AddChild<Text>(*node, LastAnswer);
    m_inputsNode = AddNode(*node, Inputs);
    ShowSettings(module);
    ShowState(module);
    ShowLastAnswer(module);
    std::unique_ptr<values::TreeItem> item = std::move(node);
    parent.AddChild(item);
}

void ModuleStatus::Remove() {
    values::Tree::Instance()->Delete(m_node);
}

void ModuleStatus::MakeInputs(std::size_t count) {
    using namespace suppressionkeys;
    while (m_inputs.size() > count) {
        values::Node* const last = m_inputs.back().node;
        m_inputs.pop_back();
        values::Tree::Instance()->Delete(last);
    }
    while (m_inputs.size() < count) {
        auto node = std::make_unique<values::Node>(QString::number(m_inputs.size()));
        Input input;
        input.node = node.get();
        input.name = AddChild<Text>(*node, Name);
        input.frequency = AddChild<values::ValueNumeric<double>>(*node, Frequency);
        input.keyed = AddChild<values::Value<bool>>(*node, Keyed);
        input.keyedSince = AddChild<Text>(*node, KeyedSince);
        input.lastBlanked = AddChild<Text>(*node, LastBlanked);
        m_inputs.push_back(input);
        std::unique_ptr<values::TreeItem> item = std::move(node);
        m_inputsNode->AddChild(item);
    }
}

void ModuleStatus::ShowSettings(const ModuleView& module) {
    constexpr ::PollInterval Longest(std::numeric_limits<int>::max());
    m_nodeName = module.identity.NodeName();
    m_name->SetValue(module.GetName());
    m_type->SetValue(module.identity.type);
    m_address->SetValue(module.identity.address);
    m_pollInterval->SetValue(static_cast<int>(std::min(module.pollInterval, Longest).count()));
    MakeInputs(module.frequencies.size());
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        m_inputs[i].name->SetValue(module.GetInputName(static_cast<int>(i)));
        m_inputs[i].frequency->SetValue(std::max(module.frequencies[i], 0.0));
    }
}

void ModuleStatus::ShowState(const ModuleView& module) {
    m_answersAgainSince->SetValue(TimeText(module.answersAgainSince));
    m_reason->SetValue(module.reason);
    if (m_state->GetValue() != StateText(module.state)) {
        m_stateSince->SetValue(TimeText(module.stateSince));
        m_state->SetValue(StateText(module.state));
    }
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        const bool isKeyed = module.IsKeyed(static_cast<int>(i));
        if (m_inputs[i].keyed->GetValue() == isKeyed) continue;
        m_inputs[i].keyedSince->SetValue(isKeyed ? TimeText(QDateTime::currentDateTimeUtc()) : QString());
        m_inputs[i].keyed->SetValue(isKeyed);
    }
}

void ModuleStatus::ShowLastAnswer(const ModuleView& module) {
    if (module.lastAnswer == m_lastAnswer) return;
    m_lastAnswer = module.lastAnswer;
    m_lastAnswerText->SetValue(TimeText(m_lastAnswer));
}

void ModuleStatus::NoteBlanked(int input, const QString& mpxOrv) {
    if (input >= 0 && static_cast<std::size_t>(input) < m_inputs.size())
        m_inputs[static_cast<std::size_t>(input)].lastBlanked->SetValue(mpxOrv);
}
