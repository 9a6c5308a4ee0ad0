// SPDX-License-Identifier: Apache-2.0
// What widgets cost the thread that draws them, beside limits and peers. One process, nobody's desktop.
#include "boundscenario.h"
#include "scenario.h"
#include "scenariochoice.h"

#include <platform/values/tree.h>

#include <QtCore/QLocale>
#include <QtWidgets/QApplication>

namespace {

std::vector<bench::Scenario> AllScenarios() {
    return {bench::BoundScenario(), bench::EventsScenario(), bench::ListScenario(), bench::LogScenario()};
}

int RunScenarios(const bench::ScenarioChoice& choice) {
    bench::Scoreboard scoreboard;
    std::vector<bench::Row> rows;
    for (const bench::Scenario& scenario : AllScenarios()) {
        if (!choice.Has(scenario.name, scenario.rows)) continue;
        choice.PlayRounds(scenario.name, scenario.rounds,
                          [&](int) { scenario.playRound(scoreboard, choice.IsQuick()); });
        rows.insert(rows.end(), scenario.rows.begin(), scenario.rows.end());
    }
    return scoreboard.Print(rows) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QLocale::setDefault(QLocale::c());
    const values::Tree tree;

    return RunScenarios(bench::ScenarioChoice(QStringLiteral("Measures what widgets cost.")));
}
