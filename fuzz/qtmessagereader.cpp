// SPDX-License-Identifier: Apache-2.0
#include <fuzz/qtmessagereader.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <limits>

using namespace vt;

namespace {

constexpr quint64 MaxInt = std::numeric_limits<int>::max();
constexpr quint64 MaxInt64 = std::numeric_limits<qint64>::max();

}  // namespace

bool QtMessageReader::ReadHeader(Message* message) {
    quint64 type = 0;
    if (!m_input.Enter() || !m_input.Unsigned(static_cast<quint64>(EMessage::Pong), &type)) return false;
    if (type == 0) return m_input.Fail("there is no such message");
    message->type = static_cast<EMessage>(type);
    if (!ReadFields(message)) return false;
    if (CarriesChanges(message->type)) return true;
    m_isRead = true;
    return m_input.Leave() && m_input.Finish();
}

bool QtMessageReader::ReadAnswer(Message* message) {
    quint64 result = 0;
    if (!m_input.Id(&message->req) || !m_input.Unsigned(static_cast<quint64>(EResult::Gone), &result) ||
        !m_input.Text(vtlimits::MaxReasonLength, &message->reason))
        return false;
    message->result = static_cast<EResult>(result);
    return message->result != EResult::Clamped || m_input.ReadContent(&message->item.content);
}

bool QtMessageReader::ReadFields(Message* message) {
    using namespace vtlimits;
    quint64 number = 0;
    switch (message->type) {
        case EMessage::Hello:
            return m_input.Id(&message->version) && m_input.Text(MaxHelloText, &message->application) &&
                   m_input.Text(MaxHelloText, &message->machine) &&
                   m_input.Text(MaxHelloText, &message->user) && m_input.Text(MaxHelloText, &message->token);
        case EMessage::Welcome: {
            quint64 session = 0;
            quint64 ping = 0;
            quint64 dead = 0;
            if (!(m_input.Id(&message->version) && m_input.Text(MaxHelloText, &message->application) &&
                  m_input.Unsigned(MaxInt, &session) && m_input.Unsigned(MaxInt64, &message->epoch) &&
                  m_input.Unsigned(MaxInt, &ping) && m_input.Unsigned(MaxInt, &dead)))
                return false;
            message->session = static_cast<int>(session);
            message->ping = std::chrono::milliseconds(ping);
            message->dead = std::chrono::milliseconds(dead);
            return true;
        }
        case EMessage::Bye:
            if (!m_input.Unsigned(static_cast<quint64>(EBye::ClientEnds), &number)) return false;
            if (number == 0) return m_input.Fail("there is no such reason");
            message->code = static_cast<EBye>(number);
            return m_input.Text(MaxReasonLength, &message->reason);
        case EMessage::Subscribe:
            return m_input.Id(&message->sub) && m_input.Text(MaxPathLength, &message->path);
        case EMessage::Unsubscribe:
            return m_input.Id(&message->sub);
        case EMessage::Subscribed: {
            if (!m_input.Id(&message->sub) || !m_input.Enter()) return false;
            message->prefixes.clear();
            QString prefix;
            while (m_input.HasNext() && m_input.Text(MaxPathLength, &prefix))
                message->prefixes.append(prefix);
            return m_input.Leave();
        }
        case EMessage::Snapshot:
            return m_input.Id(&message->sub) && m_input.Unsigned(MaxInt64, &message->seq);
        case EMessage::End:
            return m_input.Id(&message->sub) && m_input.Unsigned(MaxInt64, &message->seq) &&
                   m_input.Unsigned(MaxInt64, &message->epoch);
        case EMessage::Batch:
            return m_input.Id(&message->sub) && m_input.Unsigned(MaxInt64, &message->seq) &&
                   m_input.Boolean(&message->more);
        case EMessage::Absent:
            return m_input.Id(&message->sub) && m_input.Text(MaxReasonLength, &message->reason);
        case EMessage::Ack:
        case EMessage::Ping:
        case EMessage::Pong:
            return m_input.Unsigned(MaxInt64, &message->seq);
        case EMessage::Write:
            return m_input.Id(&message->req) && m_input.Id(&message->sub) && m_input.Id(&message->id) &&
                   m_input.ReadContent(&message->item.content);
        case EMessage::Answer:
            return ReadAnswer(message);
        case EMessage::Create:
            return m_input.Id(&message->req) && m_input.Id(&message->sub) &&
                   m_input.Text(MaxPathLength, &message->path) && m_input.Item(&message->item);
    }
    return false;
}

bool QtMessageReader::NextChange(TreeChange* change) {
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

bool QtMessageReader::ReadLimits(TreeChange* change) {
    quint64 flags = 0;
    if (!m_input.Text(vtlimits::MaxNameLength, &change->name) ||
        !m_input.Unsigned(ItemDescription::AllFlags, &flags))
        return false;
    change->item.flags = static_cast<unsigned>(flags);
    change->item.minimum = change->item.maximum = Content();
    if (!m_input.HasNext()) return !m_input.HasFailed();
    return m_input.ReadContent(&change->item.minimum) && m_input.ReadContent(&change->item.maximum);
}

bool QtMessageReader::ReadWrapped(TreeChange* change) {
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
            quint64 session = 0;
            if (!m_input.Unsigned(MaxInt, &session) || !m_input.ReadContent(&change->item.content))
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
