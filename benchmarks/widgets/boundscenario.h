// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scenario.h"

namespace bench {

/// A window of 1,000 widgets that are bound to values, beside one of the same widgets that plain signals
/// fill: what 3,700 updates a second cost.
Scenario BoundScenario();

}  // namespace bench
