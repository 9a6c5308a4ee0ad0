// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/messagereader.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <limits>

namespace vt {

bool MessageReader::NextOtherChange(TreeChange* change) {
    if (m_isRead) return false;
    if (!m_input.HasNext()) {
        m_isRead = true;
        // The end, unless something was wrong.
        if (m_input.Leave()) m_input.Finish();
        return false;
    }
    if (m_input.IsArray()) return ReadWrapped(change);
    change->change = EChange::Changed;
    return m_input.Id(&change->id) && m_input.ReadContent(&change->item.content);
}

bool MessageReader::ReadLimits(TreeChange* change) {
    quint64 flags = 0;
    if (!m_input.Text(vtlimits::MaxNameLength, &change->name) ||
        !m_input.Unsigned(ItemDescription::AllFlags, &flags))
        return false;
    change->item.flags = static_cast<unsigned>(flags);
    change->item.minimum.emplace<std::monostate>();
    change->item.maximum.emplace<std::monostate>();
    if (!m_input.HasNext()) return !m_input.HasFailed();
    return m_input.ReadContent(&change->item.minimum) && m_input.ReadContent(&change->item.maximum);
}

bool MessageReader::ReadWrapped(TreeChange* change) {
    quint64 code = 0;
    if (!m_input.Enter() || !m_input.Unsigned(static_cast<quint64>(EChange::Own), &code) ||
        !m_input.Id(&change->id))
        return false;
    change->change = static_cast<EChange>(code);
    switch (change->change) {
        case EChange::Added:
            if (!m_input.Id(&change->parent) || !m_input.Text(vtlimits::MaxNameLength, &change->name) ||
                !m_input.Item(&change->item))
                return false;
            break;
        case EChange::Described:
            if (!ReadLimits(change)) return false;
            break;
        case EChange::Items:
            if (!m_input.ReadContent(&change->item.content) || !m_input.Choices(&change->item.choices))
                return false;
            break;
        case EChange::Own: {
            constexpr quint64 MaxSession = std::numeric_limits<int>::max();
            quint64 session = 0;
            if (!m_input.Unsigned(MaxSession, &session) || !m_input.ReadContent(&change->item.content))
                return false;
            change->session = static_cast<int>(session);
            break;
        }
        case EChange::Removed:
        case EChange::Changed:
            break;
    }
    return m_input.Leave();
}

}  // namespace vt
