// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// Bare numbers by the client library of NATS, in its own threads: what NATS costs by itself.
Road MakePlainNatsRoad();

}  // namespace bench
