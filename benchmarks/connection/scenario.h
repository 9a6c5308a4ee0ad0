// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "child.h"
#include "scoreboard.h"

#include <functional>

namespace bench {

/// What all scenarios of a run share.
struct Stage {
    Scoreboard* scoreboard = nullptr;
    int brokerPort = 0;  ///< 0: no broker, so no MQTT
    int natsPort = 0;    ///< 0: no server of NATS, so no shared roads
    bool isQuick = false;
};

struct Scenario {
    QString name;
    int rounds;
    std::function<void(const Stage&)> playRound;  ///< all contestants once
    std::vector<Row> rows;
};

Scenario RoundTripScenario();
Scenario StreamScenario();
Scenario FanOutScenario();
Scenario SharedRoadScenario();
Scenario RoadCostScenario();
Scenario CrowdScenario();
Scenario StalledScenario();
Scenario SnapshotScenario();
Scenario MemoryScenario();

/// Plays \a server and then \a clients, which are told its port; a client that has no core is left to the
/// system. \return the results, the server's first, or nothing if a part failed, which the scoreboard then
/// knows.
std::vector<Settings> Play(const Stage& stage, const QString& name, const Part& server,
                           const std::vector<Part>& clients);

/// True where this build and this machine have it.
bool HasRoad(const Stage& stage, const QString& road);

/// The port of whoever carries that road; 0: nobody.
int BrokerPort(const Stage& stage, const QString& road);

}  // namespace bench
