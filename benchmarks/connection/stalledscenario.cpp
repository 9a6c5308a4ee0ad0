// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

namespace bench {

namespace {

constexpr double PerMiB = 1.0 / (1024.0 * 1024.0);

void PlayOnce(const Stage& stage, bool hasStalled) {
    Settings settings;
    settings.Set(QStringLiteral("road"), QStringLiteral("ours"))
        .Set(QStringLiteral("values"), 1000)
        .Set(QStringLiteral("clients"), 4)
        .Set(QStringLiteral("interval"), 1)
        .Set(QStringLiteral("turns"), stage.isQuick ? 1000 : 3000);
    std::vector<Part> clients = {
        {QStringLiteral("paced-client"), Settings(settings).Set(QStringLiteral("core"), 1)}};
    if (hasStalled) clients.push_back({QStringLiteral("stalled-client"), Settings()});
    const QString key = hasStalled ? QStringLiteral("paced/stalled") : QStringLiteral("paced/alone");
    const std::vector<Settings> results =
        Play(stage, key, {QStringLiteral("paced-server"), Settings(settings).Set(QStringLiteral("core"), 0)},
             clients);
    if (results.empty()) return;
    stage.scoreboard->Add(key + QStringLiteral("/heap"), results[0].Double(QStringLiteral("heap")));
    for (const QString& figure : {QStringLiteral("p50"), QStringLiteral("p99")})
        stage.scoreboard->Add(key + QLatin1Char('/') + figure, results[1].Double(figure));
    if (hasStalled)
        stage.scoreboard->AddDifference(QStringLiteral("paced/cost"), key + QStringLiteral("/heap"),
                                        QStringLiteral("paced/alone/heap"));
}

void PlayRound(const Stage& stage) {
    PlayOnce(stage, false);
    PlayOnce(stage, true);
}

Row LatencyRow(const char* figure, Row::ELimit limit, double bound) {
    return {QStringLiteral("delivery beside one that reads no more, ") + QLatin1String(figure),
            QStringLiteral("us"),
            1.0,
            QStringLiteral("paced/stalled/") + QLatin1String(figure),
            QStringLiteral("without that one"),
            QStringLiteral("paced/alone/") + QLatin1String(figure),
            limit,
            bound};
}

}  // namespace

Scenario StalledScenario() {
    return {QStringLiteral("stalled client"),
            5,
            PlayRound,
            {LatencyRow("p50", Row::Information, 0),
             LatencyRow("p99", Row::AtMost, 1.05),
             {QStringLiteral("  what that one costs the server"), QStringLiteral("MiB"), PerMiB,
              QStringLiteral("paced/cost"), QString(), QString(), Row::AtMost, 8.0}}};
}

}  // namespace bench
