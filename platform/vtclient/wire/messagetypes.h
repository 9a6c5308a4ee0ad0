// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vt {

/// The messages, by their number on the wire (docs/protocol.md).
enum class EMessage : std::uint8_t {
    Hello = 1,
    Welcome = 2,
    Bye = 3,
    Subscribe = 4,
    Unsubscribe = 5,
    Subscribed = 6,
    Snapshot = 7,
    End = 8,
    Batch = 9,
    Absent = 10,
    Ack = 11,
    Write = 12,
    Answer = 13,
    Create = 14,
    Ping = 15,
    Pong = 16,
    Recall = 17,
    Recalled = 18,
    Join = 19,
    Road = 20,
    Heard = 21,
    At = 22,
    Leave = 23,
    Again = 24
};

/// Which end of a connection sends a message.
enum class ESender : std::uint8_t { Client, Server, Either };

/// Why a session ends.
enum class EBye : std::uint8_t {
    Version = 1,
    NotAdmitted = 2,
    Malformed = 3,
    Limit = 4,
    TooSlow = 5,
    ServerEnds = 6,
    Silence = 7,
    ClientEnds = 8
};

/// What became of a write or a creation.
enum class EResult : std::uint8_t { Done = 0, Clamped = 1, Denied = 2, Gone = 3 };

/// Whether changes follow the fields of messages of this type.
constexpr bool CarriesChanges(EMessage type) {
    return type == EMessage::Snapshot || type == EMessage::Batch;
}

}  // namespace vt
