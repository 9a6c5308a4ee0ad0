// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/suppressionfollower.h>

#include <apps/pages/suppressionkeys.h>

#include <platform/values/tree.h>

#include <QtCore/QDateTime>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds LookInterval(34);  // inputs change faster than people read

template <class V>
const V* ChildValue(const values::Node& node, QLatin1String key) {
    return dynamic_cast<const V*>(node.FindChild(key));
}

QString ChildText(const values::Node& node, QLatin1String key) {
    const auto* const text = ChildValue<values::Value<QString>>(node, key);
    return text != nullptr ? text->GetValue() : QString();
}

std::vector<double> ChildList(const values::Node& node, QLatin1String key) {
    const auto* const list = ChildValue<values::ValueList<double>>(node, key);
    return list != nullptr ? list->GetItems() : std::vector<double>();
}

const values::Node* ChildNode(const values::Node& node, QLatin1String key) {
    return dynamic_cast<const values::Node*>(node.FindChild(key));
}

template <class Do>
void ForEachChildNode(const values::Node* node, Do what) {
    for (values::TreeItem* item = node != nullptr ? node->GetFirstChild() : nullptr; item != nullptr;
         item = item->GetNextSibling())
        if (item->IsNode()) what(*static_cast<values::Node*>(item));
}

InputStatus ReadInput(const values::Node& node) {
    InputStatus input;
    input.name = ChildText(node, suppressionkeys::Name);
    if (const auto* const hz = ChildValue<values::ValueNumeric<double>>(node, suppressionkeys::Frequency))
        input.hz = hz->GetValue();
    if (const auto* const keyed = ChildValue<values::Value<bool>>(node, suppressionkeys::Keyed))
        input.isKeyed = keyed->GetValue();
    input.keyedSince = ChildText(node, suppressionkeys::KeyedSince);
    input.lastBlanked = ChildText(node, suppressionkeys::LastBlanked);
    return input;
}

ModuleStatusView ReadModule(const values::Node& node) {
    ModuleStatusView module;
    module.number = node.GetName().toInt();
    module.name = ChildText(node, suppressionkeys::Name);
    module.type = ChildText(node, suppressionkeys::Type);
    module.address = ChildText(node, suppressionkeys::Address);
    module.state = ChildText(node, suppressionkeys::State);
    module.reason = ChildText(node, suppressionkeys::Reason);
    module.stateSince = ChildText(node, suppressionkeys::StateSince);
    module.answersAgainSince = ChildText(node, suppressionkeys::AnswersAgainSince);
    module.lastAnswer = ChildText(node, suppressionkeys::LastAnswer);
    ForEachChildNode(ChildNode(node, suppressionkeys::Inputs),
                     [&](const values::Node& input) { module.inputs.push_back(ReadInput(input)); });
    return module;
}

}  // namespace

SuppressionFollower::SuppressionFollower(QObject* parent)
    : QObject(parent), m_count(*this, [](const values::ValueBase&) { return true; }), m_node(*this) {
    m_look.setSingleShot(true);
    m_look.setInterval(LookInterval);
    connect(&m_look, &QTimer::timeout, this, &SuppressionFollower::Look);
}

SuppressionFollower::~SuppressionFollower() {
    m_count.SetPath(QString());
    Forget();
}

void SuppressionFollower::Follow(const QString& path) {
    m_count.SetPath(path.isEmpty() ? QString() : mcskeys::Join(path, suppressionkeys::ModuleCount));
    Look();
}

void SuppressionFollower::OnBindingChanged(PathBinding&, TChangeCode code) {
    if (code == PathBinding::Rebound) Forget();
    LookSoon(code == PathBinding::Rebound);
}

void SuppressionFollower::Forget() {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const Tracked& module : m_tracked)
        for (std::size_t i = 0; i < module.keyed.size(); ++i)
            m_history.Note({module.number, static_cast<int>(i)}, EKeying::Unknown, now);
    m_tracked.clear();
    m_held.clear();
    m_node.End();
    m_isAttached = false;
}

void SuppressionFollower::Update(Observable* source, TChangeCode code) {
    if (m_node.EndIfGoingAway(source, code)) {
        Forget();
        return LookSoon(true);
    }
    if (m_node.Is(source)) {
        if (code == changecode::StructureChanged) LookSoon(true);
        return;
    }
    const auto found = m_held.find(source);
    if (found == m_held.end()) return;
    const int module = found->second.module;
    if (found->second.value.EndIfGoingAway(source, code)) {
        // What it belonged to goes as well, and must not be read any more.
        Forget();
        return LookSoon(true);
    }
    if (code == changecode::DescriptionChanged) return;
    if (module >= 0) Record(m_tracked[static_cast<std::size_t>(module)]);
    LookSoon(false);
}

void SuppressionFollower::LookSoon(bool isStructure) {
    if (isStructure) m_isAttached = false;
    if (!m_look.isActive()) m_look.start();
}

void SuppressionFollower::Look() {
    m_look.stop();
    if (!m_isAttached) Attach();
    SuppressionState state = Read();
    if (state == m_state) return;
    m_state = std::move(state);
    Q_EMIT Changed();
}

void SuppressionFollower::Attach() {
    m_tracked.clear();
    m_held.clear();
    m_isAttached = true;
    values::ValueBase* const count = m_count.GetValue();
    m_node.Begin(count != nullptr ? count->GetParent() : nullptr);
    if (!m_node) return;
    ForEachChildNode(ChildNode(*m_node, suppressionkeys::Modules),
                     [this](values::Node& node) { Track(node); });
    AttachAll(*m_node);
}

void SuppressionFollower::Track(values::Node& module) {
    const int place = static_cast<int>(m_tracked.size());
    Tracked tracked;
    tracked.number = module.GetName().toInt();
    tracked.state = ChildValue<values::Value<QString>>(module, suppressionkeys::State);
    Hold(module.FindChild(suppressionkeys::State), place);
    ForEachChildNode(ChildNode(module, suppressionkeys::Inputs), [&](values::Node& input) {
        tracked.keyed.push_back(ChildValue<values::Value<bool>>(input, suppressionkeys::Keyed));
        Hold(input.FindChild(suppressionkeys::Keyed), place);
    });
    m_tracked.push_back(std::move(tracked));
    Record(m_tracked.back());
}

void SuppressionFollower::Hold(values::TreeItem* item, int module) {
    auto* const value = dynamic_cast<values::ValueBase*>(item);
    if (value != nullptr && m_held.count(value) == 0)
        m_held.emplace(value, Held{Observation<values::ValueBase>(*this, value), module});
}

void SuppressionFollower::AttachAll(values::Node& node) {
    for (values::TreeItem* item = node.GetFirstChild(); item != nullptr; item = item->GetNextSibling()) {
        if (item->IsNode())
            AttachAll(*static_cast<values::Node*>(item));
        else
            Hold(item, -1);
    }
}

void SuppressionFollower::Record(const Tracked& module) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool isLive = module.state != nullptr && module.state->GetState() == values::Valid &&
                        module.state->GetValue() == suppressionkeys::Connected;
    for (std::size_t i = 0; i < module.keyed.size(); ++i) {
        const bool isKeyed = module.keyed[i] != nullptr && module.keyed[i]->GetValue();
        const EKeying what = !isLive ? EKeying::Unknown : isKeyed ? EKeying::Keyed : EKeying::Silent;
        m_history.Note({module.number, static_cast<int>(i)}, what, now);
    }
}

SuppressionState SuppressionFollower::Read() const {
    SuppressionState state;
    if (!m_node) return state;
    state.isThere = true;
    state.isLive = m_count.GetState() == EBindingState::Live;
    state.keyed = ChildList(*m_node, suppressionkeys::KeyedFrequencies);
    state.unsupervised = ChildList(*m_node, suppressionkeys::UnsupervisedFrequencies);
    ForEachChildNode(ChildNode(*m_node, suppressionkeys::Modules),
                     [&](const values::Node& node) { state.modules.push_back(ReadModule(node)); });
    return state;
}
