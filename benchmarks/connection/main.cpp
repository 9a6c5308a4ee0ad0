// SPDX-License-Identifier: Apache-2.0
// Connections beside their peers, in processes of their own: this program starts itself once per process.
#include "broker.h"
#include "natsbroker.h"
#include "role.h"
#include "scenario.h"
#include "scenariochoice.h"

#include <QtCore/QCoreApplication>

namespace {

int RunScenarios(const bench::ScenarioChoice& choice) {
    bench::Broker broker;
    bench::NatsBroker nats;
    bench::Scoreboard scoreboard;
    const bench::Stage stage = {&scoreboard, broker.Start() ? broker.GetPort() : 0,
                                nats.Start() ? nats.GetPort() : 0, choice.IsQuick()};

    std::vector<bench::Row> rows;
    for (const bench::Scenario& scenario :
         {bench::RoundTripScenario(), bench::StreamScenario(), bench::FanOutScenario(),
          bench::SharedRoadScenario(), bench::RoadCostScenario(), bench::CrowdScenario(),
          bench::StalledScenario(), bench::SnapshotScenario(), bench::MemoryScenario()}) {
        if (!choice.Has(scenario.name, scenario.rows)) continue;
        choice.PlayRounds(scenario.name, scenario.rounds, [&](int) { scenario.playRound(stage); });
        rows.insert(rows.end(), scenario.rows.begin(), scenario.rows.end());
    }
    return scoreboard.Print(rows) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_NO_GLIB", "1");  // all contestants run the event dispatcher of a server without a window
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--role")) return bench::Role::Run(arguments.mid(2));

    return RunScenarios(bench::ScenarioChoice(QStringLiteral("Measures connections beside their peers.")));
}
