// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/frequentmessages.h>

#include <platform/vtclient/wire/cborhead.h>
#include <platform/vtclient/wire/cboroutput.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <array>

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

/// Writes a head of changes where there is room for the longest: each client gets one of its own, and in a
/// batch nothing else is written for it.
class HeadOutput {
  public:
    explicit HeadOutput(char* at) : m_end(at) {}
    void OpenArray() { Byte(CborHead::Array, CborHead::Open); }
    void Unsigned(quint64 number) { m_end = CborHead::Write(m_end, CborHead::Unsigned, number); }
    void Boolean(bool flag) { Byte(CborHead::Simple, flag ? CborHead::True : CborHead::False); }
    const char* End() const { return m_end; }

  private:
    void Byte(CborHead::EType type, unsigned info) {
        *m_end++ = static_cast<char>(CborHead::FirstByte(type, info));
    }

    char* m_end;
};

template <class Output>
void WriteHeadFields(Output& output, const ChangesHead& head) {
    output.Unsigned(head.sub);
    output.Unsigned(head.seq);
    if (head.type == EMessage::Batch) output.Boolean(head.more);
}

}  // namespace

void WriteFields(CborOutput& output, const ChangesHead& head) {
    WriteHeadFields(output, head);
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
    constexpr int SingleBytes = 2;  // what opens the array, and the boolean
    static std::array<char, SingleBytes + 3 * CborHead::Longest> bytes;
    HeadOutput output(bytes.data());
    output.OpenArray();
    output.Unsigned(static_cast<quint64>(head.type));
    WriteHeadFields(output, head);
    return {bytes.data(), static_cast<std::size_t>(output.End() - bytes.data())};
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
