// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvrow.h>

#include <apps/pages/mpxorvs/mpxorvorder.h>
#include <apps/pages/serverkeys.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>
#include <platform/widgets/valuetext.h>

namespace {

QStringList ItemNames(const values::ValueSelection* selection) {
    QStringList names;
    for (int i = 0; selection != nullptr && i < selection->Count(); ++i)
        names += selection->GetItemAt(i)->GetName();
    return names;
}

}  // namespace

MpxOrvRow::IListener::~IListener() = default;

MpxOrvRow::MpxOrvRow(values::Node& node, bool isStatic, IListener& listener)
    : m_listener(listener),
      m_key(&node),
      m_node(*this, &node),
      m_values{Observation<values::ValueBase>(*this), Observation<values::ValueBase>(*this),
               Observation<values::ValueBase>(*this), Observation<values::ValueBase>(*this),
               Observation<values::ValueBase>(*this), Observation<values::ValueBase>(*this),
               Observation<values::ValueBase>(*this), Observation<values::ValueBase>(*this),
               Observation<values::ValueBase>(*this), Observation<values::ValueBase>(*this)} {
    m_content.path = node.GetPathName();
    m_content.name = node.GetName();
    m_content.order = mpxorvorder::KeyOf(m_content.name);
    m_content.isStatic = isStatic;
    Read();
}

void MpxOrvRow::FindValues() {
    m_isIncomplete = false;
    static constexpr QLatin1String keys[] = {mcskeys::OperationMode,
                                             mcskeys::IsMaster,
                                             mcskeys::IsWatchingMaster,
                                             mcskeys::ConnectedClients,
                                             mcskeys::Comment,
                                             serverkeys::TunedFrequency,
                                             serverkeys::TunedSince,
                                             serverkeys::BlankingSwitchedBy,
                                             serverkeys::BlankingSwitchedSince};
    static_assert(std::size(keys) == Blanking);
    const auto find = [](values::Node* node, QLatin1String key) {
        return node != nullptr ? dynamic_cast<values::ValueBase*>(node->FindChild(key)) : nullptr;
    };
    auto* const status = dynamic_cast<values::Node*>(m_node->FindChild(mcskeys::Status));
    for (std::size_t i = 0; i < Blanking; ++i)
        m_values[i].Begin(find(status, keys[i]));
    m_values[Blanking].Begin(find(m_node.Get(), serverkeys::Blanking));
}

bool MpxOrvRow::Read() {
    if (!m_node) return false;
    const MpxOrvContent before = m_content;
    if (m_isIncomplete) FindValues();
    ReadState();
    const auto* const frequency = Get<values::ValueNumeric<double>>(TunedFrequency);
    m_content.hz = frequency != nullptr ? frequency->GetValue() : 0.0;
    m_content.since = Text(TunedSince);
    m_content.switchedSince = Text(BlankingSwitchedSince);
    m_content.switchedBy = Text(BlankingSwitchedBy);
    m_content.obeys = Flag(Blanking, true);
    m_content.clients = ItemNames(Get<values::ValueSelection>(ConnectedClients));
    m_content.comment = Text(Comment);
    return !(m_content == before);
}

void MpxOrvRow::ReadState() {
    using EState = MpxOrvContent::EState;
    const auto* const mode = Get<values::ValueSelection>(OperationMode);
    m_content.isComplete = mode != nullptr;
    m_content.isStale = mode != nullptr && mode->GetState() == values::Stale;
    m_content.mode = mode != nullptr ? valuetext::Content(*mode) : QString();
    const auto* const frequency = Get<values::ValueNumeric<double>>(TunedFrequency);
    if (Flag(IsMaster, false))
        m_content.state = EState::Master;
    else if (Flag(IsWatchingMaster, false))
        m_content.state = EState::Watching;
    else if (frequency != nullptr && frequency->GetValue() != 0.0)
        m_content.state = EState::Tuned;
    else
        m_content.state =
            mode == nullptr || mode->GetCurrentKey() == OperationIdle ? EState::Idle : EState::AtWork;
}

QString MpxOrvRow::Text(EValue value) const {
    const auto* const text = Get<values::Value<QString>>(value);
    return text != nullptr ? text->GetValue() : QString();
}

bool MpxOrvRow::Flag(EValue value, bool absent) const {
    const auto* const flag = Get<values::Value<bool>>(value);
    return flag != nullptr ? flag->GetValue() : absent;
}

void MpxOrvRow::Forget() {
    m_node.End();
    for (Observation<values::ValueBase>& value : m_values)
        value.End();
}

void MpxOrvRow::Update(Observable* source, TChangeCode code) {
    if (m_node.Is(source) && code == changecode::GoingAway) {
        Forget();
        return m_listener.OnRowGone(*this);
    }
    if (m_node.Is(source) && code != changecode::StructureChanged) return;
    if (m_node.Is(source)) m_isIncomplete = true;
    if (code == changecode::StateChanged)
        for (Observation<values::ValueBase>& value : m_values)
            if (value.EndIfGoingAway(source, code)) break;
    m_listener.OnRowChanged(*this);
}
