// SPDX-License-Identifier: Apache-2.0
// Connections beside their peers, in processes of their own: this program starts itself once per process.
#include "broker.h"
#include "role.h"
#include "scenario.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

bool IsAskedFor(const bench::Scenario& scenario, const QString& filter) {
    if (scenario.name.contains(filter, Qt::CaseInsensitive)) return true;
    for (const bench::Row& row : scenario.rows) {
        if (row.title.contains(filter, Qt::CaseInsensitive)) return true;
    }
    return false;
}

int RunScenarios(const QString& filter, bool isQuick) {
    bench::Broker broker;
    bench::Scoreboard scoreboard;
    const bench::Stage stage = {&scoreboard, broker.Start() ? broker.GetPort() : 0, isQuick};

    std::vector<bench::Row> rows;
    for (const bench::Scenario& scenario :
         {bench::RoundTripScenario(), bench::StreamScenario(), bench::FanOutScenario(),
          bench::StalledScenario(), bench::SnapshotScenario(), bench::MemoryScenario()}) {
        if (!IsAskedFor(scenario, filter)) continue;
        std::fprintf(stderr, "%s", qPrintable(scenario.name));
        for (int round = 0; round < (isQuick ? 1 : scenario.rounds); ++round) {
            scenario.playRound(stage);
            std::fputc('.', stderr);
        }
        std::fputc('\n', stderr);
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

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures connections beside their peers. Fails if a limit is missed."));
    parser.addHelpOption();
    const QCommandLineOption filter(QStringLiteral("filter"),
                                    QStringLiteral("Only scenarios with this in their name or table."),
                                    QStringLiteral("text"));
    const QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("One short round of each."));
    parser.addOptions({filter, quick});
    parser.process(application);
    return RunScenarios(parser.value(filter), parser.isSet(quick));
}
