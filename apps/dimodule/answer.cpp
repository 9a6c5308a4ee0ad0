// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/answer.h>

#include <apps/dimodule/modbusframe.h>

namespace dimodule {

namespace {

constexpr int MinLength = 2;

constexpr int MaxBits = 2000;
constexpr int ReadCoils = 1;
constexpr int ReadDiscreteInputs = 2;

enum EException { IllegalFunction = 1, IllegalAddress = 2, IllegalValue = 3, NoAnswerBehindGateway = 11 };

int Byte(const QByteArray& bytes, int at) {
    return static_cast<quint8>(bytes[at]);
}

int Word(const QByteArray& bytes, int at) {
    return Byte(bytes, at) << 8 | Byte(bytes, at + 1);
}

QByteArray Reply(const QByteArray& frame, int function, const QByteArray& data) {
    QByteArray reply = frame.left(modbusframe::ProtocolAt + 2);
    reply += '\0';
    reply += static_cast<char>(2 + data.size());  // unit, function and data: never more than 255
    reply += frame[modbusframe::UnitAt];
    reply += static_cast<char>(function);
    return reply + data;
}

QByteArray States(const QByteArray& frame, const Inputs& inputs) {
    const int first = Word(frame, modbusframe::AddressAt) - inputs.start;
    const int count = Word(frame, modbusframe::CountAt);
    if (count == 0 || count > MaxBits) return Exception(frame, IllegalValue);
    if (first < 0 || first + count > inputs.count) return Exception(frame, IllegalAddress);
    const quint64 asked = (quint64{inputs.states} >> first) & ((quint64{1} << count) - 1);
    QByteArray data(1, static_cast<char>((count + 7) / 8));
    for (int bit = 0; bit < count; bit += 8)
        data += static_cast<char>(asked >> bit & 0xFF);
    return Reply(frame, Byte(frame, modbusframe::FunctionAt), data);
}

}  // namespace

int FrameSize(const QByteArray& received) {
    if (received.size() < modbusframe::HeadSize) return 0;
    const int size = modbusframe::HeadSize + Word(received, modbusframe::LengthAt);
    if (Word(received, modbusframe::ProtocolAt) != 0 || size < modbusframe::HeadSize + MinLength ||
        size > MaxFrameSize)
        return -1;
    return received.size() < size ? 0 : size;
}

QByteArray Answer(const QByteArray& frame, const Inputs& inputs) {
    Q_ASSERT(FrameSize(frame) == frame.size());
    const int function = Byte(frame, modbusframe::FunctionAt);
    if (inputs.unit != Inputs::AnyUnit && Byte(frame, modbusframe::UnitAt) != inputs.unit)
        return Exception(frame, NoAnswerBehindGateway);
    if (function != ReadCoils && function != ReadDiscreteInputs) return Exception(frame, IllegalFunction);
    if (frame.size() != modbusframe::QuestionSize) return Exception(frame, IllegalValue);
    return States(frame, inputs);
}

QByteArray Exception(const QByteArray& frame, int number) {
    constexpr int Flag = 0x80;
    return Reply(frame, Byte(frame, modbusframe::FunctionAt) | Flag,
                 QByteArray(1, static_cast<char>(number)));
}

}  // namespace dimodule
