// SPDX-License-Identifier: Apache-2.0
// What widgets cost the thread that draws them, beside limits and peers. One process, nobody's desktop.
#include "boundscenario.h"
#include "scenario.h"

#include <platform/values/tree.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QLocale>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {

std::vector<bench::Scenario> AllScenarios() {
    return {bench::BoundScenario(), bench::ListScenario(), bench::LogScenario()};
}

bool IsAskedFor(const bench::Scenario& scenario, const QString& filter) {
    if (scenario.name.contains(filter, Qt::CaseInsensitive)) return true;
    for (const bench::Row& row : scenario.rows) {
        if (row.title.contains(filter, Qt::CaseInsensitive)) return true;
    }
    return false;
}

int RunScenarios(const QString& filter, bool isQuick) {
    bench::Scoreboard scoreboard;
    std::vector<bench::Row> rows;
    for (const bench::Scenario& scenario : AllScenarios()) {
        if (!IsAskedFor(scenario, filter)) continue;
        std::fprintf(stderr, "%s", qPrintable(scenario.name));
        for (int round = 0; round < (isQuick ? 1 : scenario.rounds); ++round) {
            scenario.playRound(scoreboard, isQuick);
            std::fputc('.', stderr);
        }
        std::fputc('\n', stderr);
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

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures what widgets cost. Fails if a limit is missed."));
    parser.addHelpOption();
    const QCommandLineOption filter(QStringLiteral("filter"),
                                    QStringLiteral("Only scenarios with this in their name or table."),
                                    QStringLiteral("text"));
    const QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("One short round of each."));
    parser.addOptions({filter, quick});
    parser.process(application);
    return RunScenarios(parser.value(filter), parser.isSet(quick));
}
