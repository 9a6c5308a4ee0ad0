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

void PlayRound(const Stage& stage) {
    for (const int clients : {1, 10})
        PlayClients(stage, clients);
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

}  // namespace

Scenario MemoryScenario() {
    return {QStringLiteral("memory"),
            1,
            PlayRound,
            {MakeRow("memory of a mirrored value over one's own", 1, "client", 122.0),
             MakeRow("  with 10 mirrors", 10, "client", 122.0),
             MakeRow("memory of the server per value, 1 client", 1, "server", 86.0),
             MakeRow("  per client and value, 10 clients", 10, "server", 100.0)}};
}

}  // namespace bench
