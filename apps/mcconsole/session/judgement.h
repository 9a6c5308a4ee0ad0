// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/connection.h>
#include <apps/mcconsole/session/serverfacts.h>
#include <apps/mcconsole/session/situationitem.h>

#include <QtCore/QString>

#include <chrono>

/// What the facts mean to an operator, one thing each.
namespace judgement {

/// From this on a round trip is worth a look.
constexpr std::chrono::milliseconds SlowLatency{500};

/// The server as people call it.
QString ServerName(const ServerFacts& facts, const Connection& connection);
QString Frequency(double hz);

/// \a age is that of the contents: zero while they are live.
SituationItem Server(const ServerFacts& facts, const Connection& connection, std::chrono::milliseconds age);
SituationItem Device(const ServerFacts& facts);
SituationItem Master(const ServerFacts& facts, const Connection& connection);
SituationItem Suppression(const ServerFacts& facts);
SituationItem Own(const ServerFacts& facts, const Connection& connection);

/// \a item as it is after \a age without news.
SituationItem Aged(SituationItem item, std::chrono::milliseconds age);

}  // namespace judgement
