// SPDX-License-Identifier: Apache-2.0
#include "ownroad.h"

#include "ownends.h"

namespace bench {

Road MakeOwnRoad() {
    return {QStringLiteral("ours"),
            [](const RoadSetup& setup) { return std::make_unique<OwnServerEnd>(setup); },
            [](const RoadSetup& setup, int client, int port) {
                return std::make_unique<OwnClientEnd>(setup, client, "127.0.0.1", port);
            }};
}

}  // namespace bench
