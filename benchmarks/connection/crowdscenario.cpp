// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

constexpr int Crowd = 100;

/// How often a hundred values change.
struct Pace {
    const char* name;
    const char* title;  // changes
    int interval;       // ms
    int turns;
};

// A busy station, and more than any: a thousand messages a second, each to a hundred and more.
constexpr Pace Busy = {"busy", "10,000/s", 10, 400};
constexpr Pace Flood = {"flood", "100,000/s", 1, 4000};

QString Key(const Pace& pace, const char* road, bool hasCrowd, const char* figure) {
    return QStringLiteral("crowd/%1/%2/%3/%4")
        .arg(QLatin1String(pace.name), QLatin1String(road), QLatin1String(hasCrowd ? "come" : "alone"),
             QLatin1String(figure));
}

void PlayOnce(const Stage& stage, const Pace& pace, const char* road, bool hasCrowd) {
    if (!HasRoad(stage, QLatin1String(road))) return;
    Settings settings;
    settings.Set(QStringLiteral("road"), QLatin1String(road))
        .Set(QStringLiteral("broker"), BrokerPort(stage, QLatin1String(road)))
        .Set(QStringLiteral("values"), 1000)
        .Set(QStringLiteral("clients"), 4)
        .Set(QStringLiteral("crowd"), Crowd)
        .Set(QStringLiteral("interval"), pace.interval)
        .Set(QStringLiteral("turns"), stage.isQuick ? pace.turns / 2 : pace.turns);
    std::vector<Part> clients = {
        {QStringLiteral("paced-client"), Settings(settings).Set(QStringLiteral("core"), 1)}};
    const bool isBare = QLatin1String(road) == QLatin1String("plainnats");
    if (hasCrowd)
        clients.push_back({isBare ? QStringLiteral("bare-crowd") : QStringLiteral("crowd"), settings});
    const std::vector<Settings> results =
        Play(stage, Key(pace, road, hasCrowd, ""),
             {QStringLiteral("paced-server"), Settings(settings).Set(QStringLiteral("core"), 0)}, clients);
    if (results.empty()) return;
    for (const char* figure : {"p50", "p99"})
        stage.scoreboard->Add(Key(pace, road, hasCrowd, figure), results[1].Double(QLatin1String(figure)));
    if (hasCrowd)
        stage.scoreboard->Add(Key(pace, road, true, "slowest"), results[2].Double(QStringLiteral("slowest")));
}

void PlayRound(const Stage& stage) {
    for (const Pace& pace : {Busy, Flood}) {
        for (const char* road : {"ours", "nats", "plainnats"}) {
            PlayOnce(stage, pace, road, false);
            PlayOnce(stage, pace, road, true);
        }
    }
}

Row SlowestRow(const Pace& pace, const char* title, const char* road) {
    return {
        QStringLiteral("%1 at once, %2: the slowest").arg(QLatin1String(title), QLatin1String(pace.title)),
        QStringLiteral("s"),
        1.0,
        Key(pace, road, true, "slowest"),
        QString(),
        QString(),
        Row::AtMost,
        5.0};
}

Row OthersRow(const Pace& pace, const char* road, const char* figure, Row::ELimit limit) {
    return {QStringLiteral("  delivery to others meanwhile, %1").arg(QLatin1String(figure)),
            QStringLiteral("us"),
            1.0,
            Key(pace, road, true, figure),
            QStringLiteral("nobody comes"),
            Key(pace, road, false, figure),
            limit,
            2.0};
}

// Who comes follows what changes, and NATS hands that to one after the other: of a flood, a hundred more hold
// up the others as long as they are there, also if nobody comes any more. What is ours to keep short is what
// comes on top.
Row BareRow(const Pace& pace, const char* figure, Row::ELimit limit) {
    return {QStringLiteral("  the same, %1").arg(QLatin1String(figure)),
            QStringLiteral("us"),
            1.0,
            Key(pace, "nats", true, figure),
            QStringLiteral("bare NATS, likewise"),
            Key(pace, "plainnats", true, figure),
            limit,
            2.0};
}

void AddRows(std::vector<Row>* rows, const Pace& pace, Row::ELimit others) {
    rows->push_back(SlowestRow(pace, "100 clients", "ours"));
    rows->push_back(OthersRow(pace, "ours", "p50", Row::Information));
    rows->push_back(OthersRow(pace, "ours", "p99", Row::Information));
    rows->push_back(SlowestRow(pace, "100 over NATS", "nats"));
    rows->push_back(OthersRow(pace, "nats", "p50", Row::Information));
    rows->push_back(OthersRow(pace, "nats", "p99", others));
    rows->push_back(BareRow(pace, "p50", Row::Information));
    rows->push_back(BareRow(pace, "p99", Row::AtMost));
    rows->push_back(SlowestRow(pace, "100 bare ones to NATS", "plainnats"));
    rows->push_back(OthersRow(pace, "plainnats", "p50", Row::Information));
    rows->push_back(OthersRow(pace, "plainnats", "p99", Row::Information));
}

/// First those of a busy station, then those of a flood.
std::vector<Row> Rows() {
    std::vector<Row> rows;
    AddRows(&rows, Busy, Row::AtMost);
    AddRows(&rows, Flood, Row::Information);
    return rows;
}

}  // namespace

Scenario CrowdScenario() {
    return {QStringLiteral("crowd"), 3, PlayRound, Rows()};
}

}  // namespace bench
