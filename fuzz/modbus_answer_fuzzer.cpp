// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>

#include <apps/dimodule/answer.h>

#include <platform/modbus/client/modbusmessage.h>

#include <algorithm>

namespace {

constexpr std::size_t QuestionBytes = 5;
constexpr int MaxInputs = 32;

ModbusQuestion MakeQuestion(const std::uint8_t* data) {
    ModbusQuestion question;
    question.transaction = static_cast<quint16>(data[0] << 8 | data[1]);
    question.unit = data[2];
    question.function = static_cast<quint8>(1 + data[3] % 2);
    question.count = static_cast<quint16>(1 + data[4] % MaxInputs);
    return question;
}

/// The one answer to \a question that there is for \a bits, as the simulated module gives it.
QByteArray AnswerOf(const ModbusQuestion& question, unsigned bits) {
    const auto bytes = question.ToBytes();
    dimodule::Inputs inputs;
    inputs.count = question.count;
    inputs.states = bits;
    const QByteArray frame(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()));
    Check(dimodule::FrameSize(frame) == frame.size(), "a question is a frame");
    return dimodule::Answer(frame, inputs);
}

}  // namespace

/// The first bytes are a question, the others what came for an answer. Only the very bytes that a module
/// sends for some states are taken for them. The module itself stands whatever comes for a question.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < QuestionBytes) return 0;
    const ModbusQuestion question = MakeQuestion(data);
    const QByteArray answer(reinterpret_cast<const char*>(data + QuestionBytes),
                            static_cast<int>(size - QuestionBytes));
    unsigned bits = 0;
    const auto* const bytes = reinterpret_cast<const quint8*>(answer.constData());
    if (question.CheckAnswer(bytes, answer.size(), &bits) == 0)
        Check(AnswerOf(question, bits) == answer, "only one answer stands for these states");
    else
        Check(bits == 0, "what is refused sets no states");
    const int frame = dimodule::FrameSize(answer);
    Check(frame <= answer.size(), "a frame is within what came");
    if (frame <= 0) return 0;
    const QByteArray reply = dimodule::Answer(answer.left(frame), dimodule::Inputs());
    Check(dimodule::FrameSize(reply) == reply.size(), "a module answers in frames");
    return 0;
}
