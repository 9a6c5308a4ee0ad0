// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// A bare QTcpSocket with 8 bytes per change, written and flushed by hand: what no road over Qt can beat.
Road MakeRawSocketRoad();

}  // namespace bench
