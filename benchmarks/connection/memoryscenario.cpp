// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

constexpr int Values = 50000;

QString Key(int clients, const char* side) {
    return QStringLiteral("memory%1/%2").arg(clients).arg(QLatin1String(side));
}

void PlayClients(const Stage& stage, int clients) {
    Settings settings;
    settings.Set(QStringLiteral("values"), Values)
        .Set(QStringLiteral("clients"), clients)
        .Set(QStringLiteral("count"), clients)
        .Set(QStringLiteral("compare"), 1);
    const std::vector<Settings> results =
        Play(stage, QStringLiteral("memory, %1 clients").arg(clients),
             {QStringLiteral("tree-server"), settings}, {{QStringLiteral("tree-client"), settings}});
    if (results.empty()) return;
    const QString heap = QStringLiteral("heap");
    stage.scoreboard->Add(Key(clients, "server"), results[0].Double(heap) / clients / Values);
    stage.scoreboard->Add(Key(clients, "client"), results[1].Double(heap) / Values);
}

constexpr int Crowd = 100;
constexpr int FewValues = 10;

QString CrowdKey(const char* road) {
    return QStringLiteral("memory/crowd/") + QLatin1String(road);
}

/// What a client itself costs the server, beside its values.
void PlayCrowd(const Stage& stage, const char* road, int broker) {
    Settings settings;
    settings.Set(QStringLiteral("values"), FewValues)
        .Set(QStringLiteral("clients"), Crowd)
        .Set(QStringLiteral("count"), Crowd)
        .Set(QStringLiteral("broker"), broker);
    const std::vector<Settings> results =
        Play(stage, QStringLiteral("memory of a crowd, %1").arg(QLatin1String(road)),
             {QStringLiteral("tree-server"), settings}, {{QStringLiteral("tree-client"), settings}});
    if (!results.empty())
        stage.scoreboard->Add(CrowdKey(road), results[0].Double(QStringLiteral("heap")) / Crowd);
}

void PlayClientOverNats(const Stage& stage) {
    Settings settings;
    settings.Set(QStringLiteral("values"), Values)
        .Set(QStringLiteral("compare"), 1)
        .Set(QStringLiteral("broker"), stage.natsPort);
    const std::vector<Settings> results =
        Play(stage, QStringLiteral("memory over NATS"), {QStringLiteral("tree-server"), settings},
             {{QStringLiteral("tree-client"), settings}});
    if (!results.empty())
        stage.scoreboard->Add(QStringLiteral("memory/nats/client"),
                              results[1].Double(QStringLiteral("heap")) / Values);
}

void PlayRound(const Stage& stage) {
    for (const int clients : {1, 10})
        PlayClients(stage, clients);
    PlayCrowd(stage, "socket", 0);
    if (!HasRoad(stage, QStringLiteral("nats"))) return;
    PlayCrowd(stage, "nats", stage.natsPort);
    PlayClientOverNats(stage);
}

Row MakeRow(const char* title, int clients, const char* side, double bound) {
    return {QLatin1String(title),
            QStringLiteral("bytes"),
            1.0,
            Key(clients, side),
            QString(),
            QString(),
            Row::AtMost,
            bound};
}

Row CrowdRow(const char* title, const char* road, Row::ELimit limit) {
    return {QLatin1String(title),
            QStringLiteral("KiB"),
            1.0 / 1024,
            CrowdKey(road),
            QString(),
            QString(),
            limit,
            32.0};
}

}  // namespace

Scenario MemoryScenario() {
    return {QStringLiteral("memory"),
            1,
            PlayRound,
            {MakeRow("memory of a mirrored value over one's own", 1, "client", 122.0),
             MakeRow("  with 10 mirrors", 10, "client", 122.0),
             MakeRow("memory of the server per value, 1 client", 1, "server", 86.0),
             MakeRow("  per client and value, 10 clients", 10, "server", 100.0),
             {QStringLiteral("memory of a value mirrored over NATS"), QStringLiteral("bytes"), 1.0,
              QStringLiteral("memory/nats/client"), QStringLiteral("over a socket"), Key(1, "client"),
              Row::AtMost, 1.2},
             CrowdRow("memory of the server per client", "socket", Row::Information),
             CrowdRow("  over NATS", "nats", Row::AtMost)}};
}

}  // namespace bench
