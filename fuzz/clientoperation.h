// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// What a script for a client can ask for, by its byte. New ones go at the end, or the inputs that are
/// checked in mean something else.
enum class EClientOperation : std::uint8_t {
    Edit,     ///< of the client's tree
    Turn,     ///< of the event loop
    Connect,  ///< or fail to, if the client wants to
    SendWelcome,
    SendSubscribed,
    SendSnapshot,
    SendEnd,
    SendBatch,
    SendAbsent,
    SendAnswer,
    SendRaw,    ///< bytes, or a message of any type
    SendWhole,  ///< subscribed, a snapshot with its root, and its end
    Damage,     ///< the next message
    Deliver,    ///< what the server has sent
    Receive,    ///< what the client has sent
    Cut,        ///< the wire
    Pass,       ///< time
    AddTic,
    RemoveTic,
    ReleaseNode,
    Arm,            ///< something happens while something is told
    Settle,         ///< some rounds of everything
    UseRoads,       ///< with connections from now on, or not
    OfferRoad,      ///< of a subscription
    PublishOnRoad,  ///< some changes
    SendAt,         ///< a position on the road
    ChangeRoadKey,
    StrangeOnRoad,  ///< somebody else publishes there
    ForgetKept,     ///< whoever keeps the road loses some of it, or has it
    DeliverRoad,    ///< one message, or none of it
    Count
};
