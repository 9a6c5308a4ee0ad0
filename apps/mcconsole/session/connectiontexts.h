// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>
#include <optional>

class ConsoleSession;
class Situation;

/// What a console's window says of its connection, in the language of the window. Main thread.
namespace connectiontexts {

/// A server that says nothing for longer than links take.
constexpr std::chrono::milliseconds LongSilence(750);
/// Of what others chose, such as a server's reason: characters at most.
constexpr int MostCharacters = 200;

/// What the connection does, in one line.
QString Line(const ConsoleSession& session);
/// What stands above the pages while something is wrong: why, since when as \a situation tells it, and when
/// the next try is. Empty if nothing is.
QString Banner(const ConsoleSession& session, const Situation& situation);
/// The round trip \a latency, or for how long there was no answer; empty while nobody knows.
QString Latency(const ConsoleSession& session, std::optional<std::chrono::microseconds> latency);
/// What the console's MpxORV is called, or why there is none.
QString MpxOrv(const ConsoleSession& session);

}  // namespace connectiontexts
