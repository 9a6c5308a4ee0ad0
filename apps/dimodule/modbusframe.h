// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Where things stand in a Modbus/TCP frame, in bytes from its beginning: a transaction, a protocol and a
/// length of two bytes each, the higher one first, then a unit, a function and its data.
namespace dimodule::modbusframe {

constexpr int TransactionAt = 0;
constexpr int ProtocolAt = 2;
constexpr int LengthAt = 4;
constexpr int UnitAt = 6;
constexpr int HeadSize = 6;  ///< which the length does not count
constexpr int FunctionAt = 7;

constexpr int AddressAt = 8;  ///< of a question
constexpr int CountAt = 10;   ///< of a question
constexpr int QuestionSize = 12;

constexpr int ByteCountAt = 8;  ///< of an answer
constexpr int StatesAt = 9;     ///< of an answer

}  // namespace dimodule::modbusframe
