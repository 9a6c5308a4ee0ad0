// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/message.h>

#include <platform/vtclient/wire/cboroutput.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <limits>
#include <utility>

namespace vt {

namespace {

constexpr quint64 MaxInt = std::numeric_limits<int>::max();
constexpr quint64 MaxInt64 = std::numeric_limits<qint64>::max();

/// A reason may quote what somebody else wrote, at any length.
QString Shortened(const QString& reason) {
    return reason.left(vtlimits::MaxReasonLength);
}

void WriteFields(CborOutput& output, const Message& message) {
    switch (message.type) {
        case EMessage::Hello:
            output.Unsigned(message.version);
            output.Text(message.application);
            output.Text(message.machine);
            output.Text(message.user);
            output.Text(message.token);
            break;
        case EMessage::Welcome:
            output.Unsigned(message.version);
            output.Text(message.application);
            output.Integer(message.session);
            output.Unsigned(message.epoch);
            output.Integer(message.ping.count());
            output.Integer(message.dead.count());
            break;
        case EMessage::Bye:
            output.Unsigned(static_cast<quint64>(message.code));
            output.Text(Shortened(message.reason));
            break;
        case EMessage::Subscribe:
            output.Unsigned(message.sub);
            output.Text(message.path);
            break;
        case EMessage::Unsubscribe:
            output.Unsigned(message.sub);
            break;
        case EMessage::Subscribed:
            output.Unsigned(message.sub);
            output.Array(static_cast<quint64>(message.prefixes.size()));
            for (const QString& prefix : message.prefixes)
                output.Text(prefix);
            break;
        case EMessage::Snapshot:
        case EMessage::Batch:
            WriteFields(output, ChangesHead{message.type, message.sub, message.seq, message.more});
            break;
        case EMessage::End:
            output.Unsigned(message.sub);
            output.Unsigned(message.seq);
            output.Unsigned(message.epoch);
            break;
        case EMessage::Absent:
            output.Unsigned(message.sub);
            output.Text(Shortened(message.reason));
            break;
        case EMessage::Ack:
        case EMessage::Ping:
        case EMessage::Pong:
            output.Unsigned(message.seq);
            break;
        case EMessage::Write:
            WriteFields(output, WriteMessage{message.req, message.sub, message.id, message.item.content});
            break;
        case EMessage::Answer:
            WriteFields(output,
                        AnswerMessage{message.req, message.result, message.reason, message.item.content});
            break;
        case EMessage::Create:
            output.Unsigned(message.req);
            output.Unsigned(message.sub);
            output.Text(message.path);
            WriteItem(output, message.item);
            break;
    }
}

}  // namespace

bool CarriesChanges(EMessage type) {
    return type == EMessage::Snapshot || type == EMessage::Batch;
}

QByteArray Encode(const Message& message, const QByteArray& changes) {
    // Keeps its room from one message to the next. Never destroyed: clients and servers that are static say
    // goodbye when whatever can be destroyed already is.
    static auto& output = *new CborOutput;
    output.OpenArray();
    output.Unsigned(static_cast<quint64>(message.type));
    WriteFields(output, message);
    output.AppendRaw(changes.constData(), changes.size());
    output.CloseArray();
    return output.Take();
}

bool MessageReader::ReadType(EMessage* type) {
    quint64 number = 0;
    if (!m_input.Enter() || !m_input.Unsigned(static_cast<quint64>(EMessage::Pong), &number)) return false;
    if (number == 0) return m_input.Fail("there is no such message");
    *type = static_cast<EMessage>(number);
    return true;
}

bool MessageReader::ReadRest(ChangesHead* head) {
    return m_input.Id(&head->sub) && m_input.Unsigned(MaxInt64, &head->seq) &&
           (head->type == EMessage::Snapshot || m_input.Boolean(&head->more));
}

bool MessageReader::ReadRest(AckMessage* ack) {
    return m_input.Unsigned(MaxInt64, &ack->count) && End();
}

bool MessageReader::ReadRest(WriteMessage* write) {
    return m_input.Id(&write->req) && m_input.Id(&write->sub) && m_input.Id(&write->id) &&
           m_input.ReadContent(&write->content) && End();
}

bool MessageReader::ReadRest(AnswerMessage* answer) {
    quint64 result = 0;
    if (!m_input.Id(&answer->req) || !m_input.Unsigned(static_cast<quint64>(EResult::Gone), &result) ||
        !m_input.Text(vtlimits::MaxReasonLength, &answer->reason))
        return false;
    answer->result = static_cast<EResult>(result);
    return (answer->result != EResult::Clamped || m_input.ReadContent(&answer->content)) && End();
}

bool MessageReader::ReadRest(Message* message) {
    switch (message->type) {
        case EMessage::Snapshot:
        case EMessage::Batch: {
            ChangesHead head{message->type};
            if (!ReadRest(&head)) return false;
            message->sub = head.sub;
            message->seq = head.seq;
            message->more = head.more;
            return true;
        }
        case EMessage::Write: {
            WriteMessage write;
            if (!ReadRest(&write)) return false;
            message->req = write.req;
            message->sub = write.sub;
            message->id = write.id;
            message->item.content = std::move(write.content);
            return true;
        }
        case EMessage::Answer: {
            AnswerMessage answer;
            if (!ReadRest(&answer)) return false;
            message->req = answer.req;
            message->result = answer.result;
            message->reason = answer.reason;
            message->item.content = std::move(answer.content);
            return true;
        }
        default:
            return ReadFields(message) && End();
    }
}

bool MessageReader::End() {
    m_isRead = true;
    return m_input.Leave() && m_input.Finish();
}

bool MessageReader::ReadFields(Message* message) {
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
        case EMessage::End:
            return m_input.Id(&message->sub) && m_input.Unsigned(MaxInt64, &message->seq) &&
                   m_input.Unsigned(MaxInt64, &message->epoch);
        case EMessage::Absent:
            return m_input.Id(&message->sub) && m_input.Text(MaxReasonLength, &message->reason);
        case EMessage::Ack:
        case EMessage::Ping:
        case EMessage::Pong:
            return m_input.Unsigned(MaxInt64, &message->seq);
        case EMessage::Snapshot:
        case EMessage::Batch:
        case EMessage::Write:
        case EMessage::Answer:
            break;  // read by themselves
        case EMessage::Create:
            return m_input.Id(&message->req) && m_input.Id(&message->sub) &&
                   m_input.Text(MaxPathLength, &message->path) && m_input.Item(&message->item);
    }
    return false;
}

bool MessageReader::NextChange(TreeChange* change) {
    if (m_isRead) return false;
    if (m_input.NumberChange(&change->id, &change->item.content)) {
        change->change = EChange::Changed;
        return true;
    }
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

}  // namespace vt
