// SPDX-License-Identifier: Apache-2.0
#include "ownroad.h"
#include "rawsocketroad.h"
#include "road.h"
#ifdef MCS_BENCH_NATS
#include "natsroad.h"
#include "plainnatsroad.h"
#endif
#ifdef MCS_BENCH_REMOTE_OBJECTS
#include "remoteobjectsroad.h"
#endif
#ifdef MCS_BENCH_MQTT
#include "mqttroad.h"
#endif

namespace bench {

const std::vector<Road>& Roads() {
    static const std::vector<Road> roads = {
        MakeOwnRoad(),           MakeRawSocketRoad(),
#ifdef MCS_BENCH_NATS
        MakeNatsRoad(),          MakePlainNatsRoad(),
#endif
#ifdef MCS_BENCH_REMOTE_OBJECTS
        MakeRemoteObjectsRoad(), MakeRemoteSignalRoad(),
#endif
#ifdef MCS_BENCH_MQTT
        MakeMqttRoad(),
#endif
    };
    return roads;
}

const Road* FindRoad(const QString& name) {
    for (const Road& road : Roads()) {
        if (road.name == name) return &road;
    }
    return nullptr;
}

}  // namespace bench
