// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

constexpr int Crowd = 100;

QString Key(const char* road, bool hasCrowd, const char* figure) {
    return QStringLiteral("crowd/%1/%2/%3")
        .arg(QLatin1String(road), QLatin1String(hasCrowd ? "come" : "alone"), QLatin1String(figure));
}

void PlayOnce(const Stage& stage, const char* road, bool hasCrowd) {
    if (!HasRoad(stage, QLatin1String(road))) return;
    Settings settings;
    settings.Set(QStringLiteral("road"), QLatin1String(road))
        .Set(QStringLiteral("broker"), BrokerPort(stage, QLatin1String(road)))
        .Set(QStringLiteral("values"), 1000)
        .Set(QStringLiteral("clients"), 4)
        .Set(QStringLiteral("crowd"), Crowd)
        .Set(QStringLiteral("turns"), stage.isQuick ? 2000 : 4000);
    std::vector<Part> clients = {
        {QStringLiteral("paced-client"), Settings(settings).Set(QStringLiteral("core"), 1)}};
    const bool isBare = QLatin1String(road) == QLatin1String("plainnats");
    if (hasCrowd)
        clients.push_back({isBare ? QStringLiteral("bare-crowd") : QStringLiteral("crowd"), settings});
    const std::vector<Settings> results =
        Play(stage, Key(road, hasCrowd, ""),
             {QStringLiteral("paced-server"), Settings(settings).Set(QStringLiteral("core"), 0)}, clients);
    if (results.empty()) return;
    for (const char* figure : {"p50", "p99"})
        stage.scoreboard->Add(Key(road, hasCrowd, figure), results[1].Double(QLatin1String(figure)));
    if (hasCrowd)
        stage.scoreboard->Add(Key(road, true, "slowest"), results[2].Double(QStringLiteral("slowest")));
}

void PlayRound(const Stage& stage) {
    for (const char* road : {"ours", "nats", "plainnats"}) {
        PlayOnce(stage, road, false);
        PlayOnce(stage, road, true);
    }
}

Row SlowestRow(const char* title, const char* road) {
    return {QLatin1String(title),
            QStringLiteral("s"),
            1.0,
            Key(road, true, "slowest"),
            QString(),
            QString(),
            Row::AtMost,
            5.0};
}

Row OthersRow(const char* title, const char* road, const char* figure, Row::ELimit limit) {
    return {QStringLiteral("%1, %2").arg(QLatin1String(title), QLatin1String(figure)),
            QStringLiteral("us"),
            1.0,
            Key(road, true, figure),
            QStringLiteral("nobody comes"),
            Key(road, false, figure),
            limit,
            2.0};
}

// Who comes follows what changes, and NATS hands that to one after the other: a hundred more hold up the
// others as long as they are there, also if nobody comes any more. What is ours to keep short is what comes
// on top.
Row BareRow(const char* figure, Row::ELimit limit) {
    return {QStringLiteral("  delivery to others meanwhile, %1").arg(QLatin1String(figure)),
            QStringLiteral("us"),
            1.0,
            Key("nats", true, figure),
            QStringLiteral("bare NATS, likewise"),
            Key("plainnats", true, figure),
            limit,
            2.0};
}

}  // namespace

Scenario CrowdScenario() {
    return {QStringLiteral("crowd"),
            3,
            PlayRound,
            {SlowestRow("the slowest of 100 clients that come at once", "ours"),
             OthersRow("  delivery to others meanwhile", "ours", "p50", Row::Information),
             OthersRow("  delivery to others meanwhile", "ours", "p99", Row::Information),
             SlowestRow("the slowest of 100 that come over NATS", "nats"),
             OthersRow("  delivery to others meanwhile", "nats", "p50", Row::Information),
             OthersRow("  delivery to others meanwhile", "nats", "p99", Row::Information),
             BareRow("p50", Row::Information), BareRow("p99", Row::AtMost),
             SlowestRow("100 bare connections to NATS at once", "plainnats"),
             OthersRow("  bare messages to others meanwhile", "plainnats", "p50", Row::Information),
             OthersRow("  bare messages to others meanwhile", "plainnats", "p99", Row::Information)}};
}

}  // namespace bench
