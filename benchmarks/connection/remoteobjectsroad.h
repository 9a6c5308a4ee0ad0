// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// Qt Remote Objects over TCP, the nearest peer in Qt's own world: a source and replicas for each value.
Road MakeRemoteObjectsRoad();
/// The same with one signal for the changes of all values, which the replicas pass on and do not keep.
Road MakeRemoteSignalRoad();

}  // namespace bench
