// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

const char* const contestants[] = {"ours", "raw", "remoteobjects", "mqtt", "nats", "plainnats"};

void PlayContestant(const Stage& stage, const QString& road) {
    Settings settings;
    settings.Set(QStringLiteral("road"), road)
        .Set(QStringLiteral("broker"), BrokerPort(stage, road))
        .Set(QStringLiteral("warmup"), 2000)
        .Set(QStringLiteral("count"), stage.isQuick ? 2000 : 10000);
    const QString key = QStringLiteral("roundtrip/") + road;
    const std::vector<Settings> results = Play(
        stage, key, {QStringLiteral("roundtrip-server"), Settings(settings).Set(QStringLiteral("core"), 0)},
        {{QStringLiteral("roundtrip-client"), Settings(settings).Set(QStringLiteral("core"), 1)}});
    if (results.empty()) return;
    for (const QString& figure : {QStringLiteral("p50"), QStringLiteral("p99")})
        stage.scoreboard->Add(key + QLatin1Char('/') + figure, results[0].Double(figure));
}

void PlayRound(const Stage& stage) {
    for (const char* contestant : contestants) {
        const QString road = QLatin1String(contestant);
        if (HasRoad(stage, road)) PlayContestant(stage, road);
    }
}

Row MakeRow(const char* title, const char* ours, const char* quantile, const char* peerName, const char* peer,
            Row::ELimit limit, double bound) {
    const QString figure = QLatin1String(quantile);
    return {QLatin1String(title) + QStringLiteral(", ") + figure,
            QStringLiteral("us"),
            1.0,
            QStringLiteral("roundtrip/%1/%2").arg(QLatin1String(ours), figure),
            QLatin1String(peerName),
            QStringLiteral("roundtrip/%1/%2").arg(QLatin1String(peer), figure),
            limit,
            bound};
}

Row OwnRow(const char* quantile, const char* peerName, const char* peer, Row::ELimit limit, double bound) {
    return MakeRow("round trip", "ours", quantile, peerName, peer, limit, bound);
}

// NATS itself stands in between twice, and takes more than two round trips of a socket alone: what is ours to
// keep short is what comes on top of bare NATS.
Row NatsRow(const char* quantile, const char* peerName, const char* peer, Row::ELimit limit, double bound) {
    return MakeRow("round trip over NATS", "nats", quantile, peerName, peer, limit, bound);
}

}  // namespace

Scenario RoundTripScenario() {
    return {QStringLiteral("round trip"),
            9,
            PlayRound,
            {OwnRow("p50", "QTcpSocket", "raw", Row::AtMost, 1.0),
             OwnRow("p50", "Qt Remote Objects", "remoteobjects", Row::AtMost, 1.0),
             OwnRow("p50", "MQTT", "mqtt", Row::Information, 0),
             OwnRow("p99", "QTcpSocket", "raw", Row::Information, 0),
             OwnRow("p99", "Qt Remote Objects", "remoteobjects", Row::Information, 0),
             OwnRow("p99", "MQTT", "mqtt", Row::Information, 0),
             NatsRow("p50", "ours", "ours", Row::Information, 0),
             NatsRow("p50", "plain NATS", "plainnats", Row::AtMost, 1.5),
             NatsRow("p99", "ours", "ours", Row::Information, 0),
             NatsRow("p99", "plain NATS", "plainnats", Row::Information, 0)}};
}

}  // namespace bench
