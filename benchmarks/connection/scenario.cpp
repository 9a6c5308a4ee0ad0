// SPDX-License-Identifier: Apache-2.0
#include "scenario.h"

#include "road.h"

#include <memory>

namespace bench {

namespace {

std::vector<Settings> Failed(const Stage& stage, const QString& name, const Child& child) {
    stage.scoreboard->Fail(name + QStringLiteral(": ") + child.GetFailure());
    return {};
}

bool IsOverNats(const QString& road) {
    return road.endsWith(QLatin1String("nats"));
}

}  // namespace

std::vector<Settings> Play(const Stage& stage, const QString& name, const Part& server,
                           const std::vector<Part>& clients) {
    Child serverChild(server);
    const std::optional<int> port = serverChild.WaitForPort();
    if (!port) return Failed(stage, name, serverChild);

    std::vector<std::unique_ptr<Child>> children;
    for (Part client : clients) {
        client.settings.Set(QStringLiteral("port"), *port);
        children.push_back(std::make_unique<Child>(client));
    }
    std::vector<Settings> results;
    for (const auto& child : children) {  // they notice first what goes wrong
        const std::optional<Settings> result = child->WaitForResult();
        if (!result) return Failed(stage, name, *child);
        results.push_back(*result);
    }
    const std::optional<Settings> result = serverChild.WaitForResult();
    if (!result) return Failed(stage, name, serverChild);
    results.insert(results.begin(), *result);
    return results;
}

int BrokerPort(const Stage& stage, const QString& road) {
    return IsOverNats(road) ? stage.natsPort : stage.brokerPort;
}

bool HasRoad(const Stage& stage, const QString& road) {
    if (FindRoad(road) == nullptr) return false;
    return (!IsOverNats(road) && road != QLatin1String("mqtt")) || BrokerPort(stage, road) > 0;
}

}  // namespace bench
