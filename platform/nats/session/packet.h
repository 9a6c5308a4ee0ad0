// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <optional>
#include <string_view>

namespace nats {

/// What one message of NATS carries of a session: a head of fixed size, and what belongs to its kind.
struct Packet {
    enum class EKind : char {
        Open = 'O',    ///< from the client, first: the version and the window
        Accept = 'A',  ///< from the server, first: the same, and which start of the server it is
        Data = 'D',    ///< some of the stream
        Credit = 'C',  ///< says only how much was consumed
        End = 'E',     ///< no more data comes
        Ended = 'F',   ///< the end was seen
        Number = 'N',  ///< up to which number all has come, after which something may be said once more
        Refuse = 'R'   ///< there is no such session, with the reason
    };

    static constexpr int HeadSize = 17;
    static constexpr quint8 Version = 1;

    EKind kind = EKind::Data;
    quint64 number = 0;    ///< counts data and the end in each direction, from 1; apart from them the others
    quint64 consumed = 0;  ///< bytes of the other direction's stream, since its beginning
    std::string_view body;

    /// Writes the head in HeadSize bytes at \a bytes.
    void WriteHead(char* bytes) const;
    /// The head alone, of a packet without a body.
    QByteArray Head() const;
    /// Reads a packet, whose body lies in \a data; none if it is none.
    static std::optional<Packet> Read(std::string_view data);
};

/// What Open and Accept say.
struct Greeting {
    static constexpr int KeySize = 32;

    quint8 version = Packet::Version;
    quint32 window = 0;    ///< bytes that may be on their way to who says this
    quint64 instance = 0;  ///< of the server; 0 from a client
    QByteArray key;        ///< with which a seal is agreed on

    QByteArray Write() const;
    static std::optional<Greeting> Read(std::string_view body);
};

/// What Number says.
struct Position {
    quint64 last = 0;         ///< the last number before which none is missing
    bool isQuestion = false;  ///< the other end is to say its own

    QByteArray Write() const;
    static std::optional<Position> Read(std::string_view body);
};

}  // namespace nats
