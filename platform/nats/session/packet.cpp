// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/packet.h>

#include <QtCore/QtEndian>

#include <array>

namespace nats {

namespace {

constexpr int NumberAt = 1;
constexpr int ConsumedAt = 9;
constexpr int WindowAt = 1;
constexpr int InstanceAt = 5;
constexpr int KeyAt = 13;
constexpr int GreetingSize = KeyAt + Greeting::KeySize;
constexpr int LastAt = 1;
constexpr int PositionSize = LastAt + sizeof(quint64);

}  // namespace

void Packet::WriteHead(char* bytes) const {
    bytes[0] = static_cast<char>(kind);
    qToBigEndian(number, bytes + NumberAt);
    qToBigEndian(consumed, bytes + ConsumedAt);
}

QByteArray Packet::Head() const {
    std::array<char, HeadSize> head{};
    WriteHead(head.data());
    return QByteArray(head.data(), HeadSize);
}

std::optional<Packet> Packet::Read(std::string_view data) {
    if (data.size() < HeadSize || std::string_view("OADCEFNR").find(data[0]) == std::string_view::npos)
        return std::nullopt;
    Packet packet;
    packet.kind = static_cast<EKind>(data[0]);
    packet.number = qFromBigEndian<quint64>(data.data() + NumberAt);
    packet.consumed = qFromBigEndian<quint64>(data.data() + ConsumedAt);
    packet.body = data.substr(HeadSize);
    return packet;
}

QByteArray Greeting::Write() const {
    QByteArray bytes(KeyAt, '\0');
    bytes[0] = static_cast<char>(version);
    qToBigEndian(window, bytes.data() + WindowAt);
    qToBigEndian(instance, bytes.data() + InstanceAt);
    return bytes + key.leftJustified(KeySize, '\0', true);
}

// A later version may say more.
std::optional<Greeting> Greeting::Read(std::string_view body) {
    if (body.size() < GreetingSize) return std::nullopt;
    Greeting greeting;
    greeting.version = static_cast<quint8>(body[0]);
    greeting.window = qFromBigEndian<quint32>(body.data() + WindowAt);
    greeting.instance = qFromBigEndian<quint64>(body.data() + InstanceAt);
    greeting.key = QByteArray(body.data() + KeyAt, KeySize);
    return greeting;
}

QByteArray Position::Write() const {
    QByteArray bytes(PositionSize, '\0');
    bytes[0] = isQuestion ? 1 : 0;
    qToBigEndian(last, bytes.data() + LastAt);
    return bytes;
}

std::optional<Position> Position::Read(std::string_view body) {
    if (body.size() < PositionSize) return std::nullopt;
    return Position{qFromBigEndian<quint64>(body.data() + LastAt), body[0] != 0};
}

}  // namespace nats
