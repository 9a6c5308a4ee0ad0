// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"

namespace bench {

/// Ours: values in the server's tree, mirrored into the client's, with an observer on each.
Road MakeOwnRoad();

}  // namespace bench
