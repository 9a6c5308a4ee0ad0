// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

constexpr int Few = 100000;
constexpr int Many = 1000000;

QString Key(int values, const char* figure) {
    return QStringLiteral("snapshot%1/%2").arg(values).arg(QLatin1String(figure));
}

void PlayOverNats(const Stage& stage) {
    if (!HasRoad(stage, QStringLiteral("nats"))) return;
    Settings settings;
    settings.Set(QStringLiteral("values"), Few).Set(QStringLiteral("broker"), stage.natsPort);
    const std::vector<Settings> results =
        Play(stage, QStringLiteral("snapshot over NATS"), {QStringLiteral("tree-server"), settings},
             {{QStringLiteral("tree-client"), settings}});
    if (!results.empty())
        stage.scoreboard->Add(Key(Few, "nats"), results[1].Double(QStringLiteral("seconds")));
}

void PlaySize(const Stage& stage, int values) {
    Settings settings;
    settings.Set(QStringLiteral("values"), values);
    const std::vector<Settings> results =
        Play(stage, QStringLiteral("snapshot of %1").arg(values),
             {QStringLiteral("tree-server"), Settings(settings).Set(QStringLiteral("core"), 0)},
             {{QStringLiteral("tree-client"), Settings(settings).Set(QStringLiteral("core"), 1)}});
    if (results.empty()) return;
    Scoreboard& scoreboard = *stage.scoreboard;
    scoreboard.Add(Key(values, "seconds"), results[1].Double(QStringLiteral("seconds")));
    for (const char* figure : {"turn", "turnclock"}) {
        scoreboard.Add(Key(values, figure) + QStringLiteral("/server"),
                       results[0].Double(QLatin1String(figure)));
        scoreboard.Add(Key(values, figure) + QStringLiteral("/client"),
                       results[1].Double(QLatin1String(figure)));
    }
}

void PlayRound(const Stage& stage) {
    PlaySize(stage, Few);
    PlayOverNats(stage);
    if (!stage.isQuick) PlaySize(stage, Many);
}

Row TimeRow(const char* title, int values, double bound, const char* figure = "seconds") {
    return {QLatin1String(title),
            QStringLiteral("s"),
            1.0,
            Key(values, figure),
            QString(),
            QString(),
            Row::AtMost,
            bound};
}

Row TurnRow(const char* title, const char* figure, const char* side, Row::ELimit limit) {
    return {QLatin1String(title),
            QStringLiteral("ms"),
            1e3,
            Key(Many, figure) + QLatin1Char('/') + QLatin1String(side),
            QString(),
            QString(),
            limit,
            20.0};
}

}  // namespace

Scenario SnapshotScenario() {
    return {QStringLiteral("snapshot"),
            3,
            PlayRound,
            {TimeRow("snapshot of 100,000 values", Few, 0.5), TimeRow("  over NATS", Few, 1.0, "nats"),
             TimeRow("snapshot of 1,000,000 values", Many, 6.0),
             TurnRow("  longest turn of the server", "turn", "server", Row::AtMost),
             TurnRow("  longest turn of the client", "turn", "client", Row::AtMost),
             TurnRow("  the same by the clock, server", "turnclock", "server", Row::Information),
             TurnRow("  the same by the clock, client", "turnclock", "client", Row::Information)}};
}

}  // namespace bench
