// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/frequentmessages.h>

#include <platform/vtclient/wire/cboroutput.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

namespace vt {

namespace {

/// Keeps its room from one message to the next. Never destroyed: clients and servers that are static say
/// goodbye when whatever can be destroyed already is.
CborOutput& Begun(EMessage type) {
    static auto& output = *new CborOutput;
    output.Clear();
    output.OpenArray();
    output.Unsigned(static_cast<quint64>(type));
    return output;
}

std::string_view View(const CborOutput& output) {
    return {output.Data(), static_cast<std::size_t>(output.Size())};
}

template <class Frequent>
std::string_view EncodeWhole(EMessage type, const Frequent& message) {
    CborOutput& output = Begun(type);
    WriteFields(output, message);
    output.CloseArray();
    return View(output);
}

}  // namespace

void WriteFields(CborOutput& output, const ChangesHead& head) {
    output.Unsigned(head.sub);
    output.Unsigned(head.seq);
    if (head.type == EMessage::Batch) output.Boolean(head.more);
}

void WriteFields(CborOutput& output, const AckMessage& ack) {
    output.Unsigned(ack.count);
}

void WriteFields(CborOutput& output, const WriteMessage& write) {
    output.Unsigned(write.req);
    output.Unsigned(write.sub);
    output.Unsigned(write.id);
    WriteContent(output, write.content);
}

void WriteFields(CborOutput& output, const AnswerMessage& answer) {
    output.Unsigned(answer.req);
    output.Unsigned(static_cast<quint64>(answer.result));
    // It may quote what somebody else wrote, at any length.
    output.Text(answer.reason.left(vtlimits::MaxReasonLength));
    if (answer.result == EResult::Clamped) WriteContent(output, answer.content);
}

std::string_view EncodeHead(const ChangesHead& head) {
    CborOutput& output = Begun(head.type);
    WriteFields(output, head);
    return View(output);
}

std::string_view Encode(const AckMessage& ack) {
    return EncodeWhole(EMessage::Ack, ack);
}

std::string_view Encode(const WriteMessage& write) {
    return EncodeWhole(EMessage::Write, write);
}

std::string_view Encode(const AnswerMessage& answer) {
    return EncodeWhole(EMessage::Answer, answer);
}

}  // namespace vt
