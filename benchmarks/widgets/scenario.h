// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scoreboard.h"

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace bench {

/// Something that widgets are put through, in this process and its event loop.
struct Scenario {
    QString name;
    int rounds;
    std::function<void(Scoreboard& scoreboard, bool isQuick)> playRound;  ///< adds a figure per key and round
    std::vector<Row> rows;                                                ///< what the table says of them
};

Scenario EventsScenario();
Scenario ListScenario();
Scenario LogScenario();

}  // namespace bench
