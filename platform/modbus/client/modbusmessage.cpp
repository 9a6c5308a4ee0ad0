// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbusmessage.h>

#include <platform/modbus/client/modbuserror.h>

namespace {

// Where the fields of an answer are.
constexpr int TransactionAt = 0;
constexpr int ProtocolAt = 2;
constexpr int LengthAt = 4;
constexpr int UnitAt = 6;
constexpr int FunctionAt = 7;
constexpr int ExceptionAt = 8;
constexpr int ByteCountAt = 8;
constexpr int DataAt = 9;

constexpr int LengthEnd = ModbusQuestion::HeaderSize;  // the length counts what follows it
constexpr int ExceptionSize = 9;
constexpr quint8 ExceptionFlag = 0x80;

constexpr quint16 ProtocolModbus = 0;

quint8 High(quint16 number) {
    return static_cast<quint8>(number >> 8);
}

quint8 Low(quint16 number) {
    return static_cast<quint8>(number & 0xFF);
}

int Number(const quint8* bytes, int at) {
    return bytes[at] << 8 | bytes[at + 1];
}

unsigned CheckException(const quint8* bytes, int size) {
    if (size != ExceptionSize) return modbuserror::InvalidAnswer;
    return modbuserror::OfException(bytes[ExceptionAt]);
}

}  // namespace

std::array<quint8, ModbusQuestion::Size> ModbusQuestion::ToBytes() const {
    constexpr quint8 length = Size - LengthEnd;
    return {High(transaction), Low(transaction), 0,          0,           0,         length, unit,
            function,          High(start),      Low(start), High(count), Low(count)};
}

int ModbusQuestion::AnswerSize(const quint8* header) const {
    const int size = LengthEnd + Number(header, LengthAt);
    return size == ExceptionSize || size == DataAt + (count + 7) / 8 ? size : 0;
}

unsigned ModbusQuestion::CheckAnswer(const quint8* bytes, int size, unsigned* bits) const {
    if (size < ExceptionSize) return modbuserror::InvalidAnswer;
    if (Number(bytes, TransactionAt) != transaction) return modbuserror::InvalidAnswer;
    if (Number(bytes, ProtocolAt) != ProtocolModbus) return modbuserror::InvalidAnswer;
    if (Number(bytes, LengthAt) != size - LengthEnd) return modbuserror::InvalidAnswer;
    if (bytes[UnitAt] != unit) return modbuserror::ForeignUnit;
    if (bytes[FunctionAt] == (function | ExceptionFlag)) return CheckException(bytes, size);
    if (bytes[FunctionAt] != function) return modbuserror::InvalidAnswer;
    const int byteCount = (count + 7) / 8;
    if (bytes[ByteCountAt] != byteCount || size != DataAt + byteCount) return modbuserror::InvalidAnswer;
    quint64 word = 0;
    for (int i = 0; i < byteCount; ++i)
        word |= static_cast<quint64>(bytes[DataAt + i]) << (8 * i);
    if (word >> count != 0) return modbuserror::InvalidAnswer;
    *bits = static_cast<unsigned>(word);
    return 0;
}
