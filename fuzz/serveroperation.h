// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// What a script for a server can ask for, by its byte. New ones go at the end, or the inputs that are
/// checked in mean something else.
enum class EServerOperation : std::uint8_t {
    Edit,  ///< of the server's tree
    Turn,  ///< of the event loop
    Connect,
    Switch,  ///< to another client
    SendHello,
    SendSubscribe,
    SendUnsubscribe,
    SendAck,
    SendWrite,
    SendCreate,
    SendRaw,  ///< bytes, or a message of any type
    Damage,   ///< the next message
    Deliver,  ///< what the client has sent
    Receive,  ///< what the server has sent
    Cut,      ///< the wire
    Pass,     ///< time
    Slow,     ///< makes time pass at every look at the clock
    Arm,      ///< something happens while something is told
    Forbid,   ///< changes what is allowed
    Settle,   ///< some rounds of everything, with acknowledgements
    SendJoin,
    SendHeard,
    SendLeave,
    SendAgain,
    ChangeKeys,
    Count
};
