// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// Qt Remote Objects over TCP, the nearest peer in Qt's own world.
Road MakeRemoteObjectsRoad();

}  // namespace bench
