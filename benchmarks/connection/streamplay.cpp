// SPDX-License-Identifier: Apache-2.0
#include "streamplay.h"

namespace bench {

namespace {

constexpr int Values = 1000;
constexpr int QuickShare = 4;
constexpr int Granularity = 5000;

int Quick(int changes) {
    return qMax(Granularity, changes / QuickShare / Granularity * Granularity);
}

}  // namespace

QString StreamKey(int clients, const char* road, const char* figure) {
    return QStringLiteral("stream%1/%2/%3").arg(clients).arg(QLatin1String(road), QLatin1String(figure));
}

void PlayStream(const Stage& stage, const StreamSize& size, int clients, int processes) {
    if (!HasRoad(stage, QLatin1String(size.road))) return;
    Settings settings;
    settings.Set(QStringLiteral("road"), QLatin1String(size.road))
        .Set(QStringLiteral("broker"), BrokerPort(stage, QLatin1String(size.road)))
        .Set(QStringLiteral("values"), Values)
        .Set(QStringLiteral("clients"), clients)
        .Set(QStringLiteral("everychange"), 1)
        .Set(QStringLiteral("ahead"), size.farthestAhead)
        .Set(QStringLiteral("report"), size.reportEvery)
        .Set(QStringLiteral("rest"), size.restMilliseconds)
        .Set(QStringLiteral("warmup"), size.warmUp)
        .Set(QStringLiteral("total"), size.warmUp + (stage.isQuick ? Quick(size.changes) : size.changes));

    Part server = {QStringLiteral("stream-server"), settings};
    std::vector<Part> followers;
    for (int i = 0; i < processes; ++i) {
        const int first = clients * i / processes;
        followers.push_back({QStringLiteral("stream-client"), settings});
        followers.back()
            .settings.Set(QStringLiteral("first"), first)
            .Set(QStringLiteral("count"), clients * (i + 1) / processes - first);
    }
    if (clients == 1) {
        server.settings.Set(QStringLiteral("core"), 0);
        followers[0].settings.Set(QStringLiteral("core"), 1);
    }

    const QString name = QStringLiteral("stream to %1, %2").arg(clients).arg(QLatin1String(size.road));
    const std::vector<Settings> results = Play(stage, name, server, followers);
    if (results.empty()) return;
    double clientCpu = 0.0;
    for (std::size_t i = 1; i < results.size(); ++i)
        clientCpu += results[i].Double(QStringLiteral("cpu")) / processes;
    stage.scoreboard->Add(StreamKey(clients, size.road, "rate"), results[0].Double(QStringLiteral("rate")));
    stage.scoreboard->Add(StreamKey(clients, size.road, "servercpu"),
                          results[0].Double(QStringLiteral("cpu")));
    stage.scoreboard->Add(StreamKey(clients, size.road, "changecpu"),
                          results[0].Double(QStringLiteral("changecpu")));
    stage.scoreboard->Add(StreamKey(clients, size.road, "clientcpu"), clientCpu);
}

}  // namespace bench
