// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

#include <algorithm>

namespace bench {

namespace {

constexpr int Crowd = 1000;
constexpr int ClientCounts[] = {1, 16, 128, Crowd};
constexpr int Values = 1000;  // all of which change in a turn
constexpr int Interval = 2;   // ms, which makes half a million changes a second
constexpr int PacedTurns = 2000;
constexpr int FloodTurns = 3000;
constexpr int QuickShare = 4;
constexpr int Rest = 5000;           // ms: each client has had its ping
constexpr int MostConnections = 16;  // to NATS, which writes what is published to each of them
constexpr int MostProcesses = 2;     // of clients
constexpr int ReportEvery = 100;     // turns
constexpr int FarthestAhead = 400;   // turns: well within what NATS keeps for a connection

QString Key(int clients, const char* figure) {
    return QStringLiteral("light%1/%2").arg(clients).arg(QLatin1String(figure));
}

int ShareOf(int total, int part, int parts) {
    return total * (part + 1) / parts - total * part / parts;
}

void PlayClients(const Stage& stage, int clients) {
    const int share = stage.isQuick ? QuickShare : 1;
    const int processes = std::min(clients, MostProcesses);
    Settings settings;
    settings.Set(QStringLiteral("road"), QStringLiteral("nats"))
        .Set(QStringLiteral("broker"), stage.natsPort)
        .Set(QStringLiteral("values"), Values)
        .Set(QStringLiteral("clients"), processes)  // who report
        .Set(QStringLiteral("everychange"), 1)
        .Set(QStringLiteral("rest"), Rest)
        .Set(QStringLiteral("interval"), Interval)
        .Set(QStringLiteral("paced"), PacedTurns / share)
        .Set(QStringLiteral("flood"), FloodTurns / share)
        .Set(QStringLiteral("enough"), (PacedTurns + FloodTurns) / share)
        .Set(QStringLiteral("report"), ReportEvery)
        .Set(QStringLiteral("ahead"), FarthestAhead);
    std::vector<Part> followers;
    for (int i = 0; i < processes; ++i) {
        followers.push_back({QStringLiteral("light-clients"), settings, QStringLiteral("mcs_light_clients")});
        followers.back()
            .settings.Set(QStringLiteral("first"), i)
            .Set(QStringLiteral("sessions"), ShareOf(clients, i, processes))
            .Set(QStringLiteral("connections"), ShareOf(std::min(clients, MostConnections), i, processes));
    }
    const QString name = QStringLiteral("shared road to %1 light clients").arg(clients);
    const std::vector<Settings> results =
        Play(stage, name, {QStringLiteral("roadcost-server"), settings}, followers);
    if (results.empty()) return;
    for (const char* figure : {"rest", "pace", "pacedcpu", "pacednet", "rate", "floodcpu", "floodnet"})
        stage.scoreboard->Add(Key(clients, figure), results[0].Double(QLatin1String(figure)));
}

void PlayAll(const Stage& stage) {
    if (!HasRoad(stage, QStringLiteral("nats"))) return;
    for (const int clients : ClientCounts)
        if (clients != Crowd || !stage.isQuick) PlayClients(stage, clients);
}

Row CostRow(int clients, const char* title, const char* figure) {
    const bool isFirst = clients == ClientCounts[0];
    return {QStringLiteral("%1, %2").arg(QLatin1String(title)).arg(clients),
            QStringLiteral("s"),
            1.0,
            Key(clients, figure),
            isFirst ? QString() : QStringLiteral("1 client"),
            Key(1, figure),
            isFirst ? Row::Information : Row::AtMost,
            1.2};
}

Row FigureRow(int clients, const char* title, const char* unit, double factor, const char* figure) {
    return {QStringLiteral("  %1, %2").arg(QLatin1String(title)).arg(clients),
            QLatin1String(unit),
            factor,
            Key(clients, figure),
            QString(),
            QString(),
            Row::Information,
            0};
}

std::vector<Row> Rows() {
    std::vector<Row> rows;
    for (const int clients : ClientCounts) {
        rows.push_back(CostRow(clients, "server CPU per million changes, light clients", "pacedcpu"));
        rows.push_back(CostRow(clients, "  without what it does at rest", "pacednet"));
        rows.push_back(FigureRow(clients, "which is, of a processor", "%", 1e2, "rest"));
        rows.push_back(FigureRow(clients, "so many changes", "M/s", 1e-6, "pace"));
        rows.push_back(CostRow(clients, "  CPU at full speed", "floodcpu"));
        rows.push_back(FigureRow(clients, "which is", "M/s", 1e-6, "rate"));
    }
    return rows;
}

}  // namespace

Scenario RoadCostScenario() {
    return {QStringLiteral("shared road, light clients"), 3, PlayAll, Rows()};
}

}  // namespace bench
