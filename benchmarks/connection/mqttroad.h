// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// MQTT through a broker, a topic per value, quality of service 0: what many would pick.
Road MakeMqttRoad();

}  // namespace bench
