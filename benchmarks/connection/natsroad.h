// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// Our own road over NATS: what changes is published once.
Road MakeNatsRoad();

}  // namespace bench
