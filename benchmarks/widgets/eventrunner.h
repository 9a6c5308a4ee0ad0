// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

namespace bench {

/// Serves the event loop for \a seconds and calls \a act \a perSecond times a second, evenly, in turns of its
/// own. \return how often a second it came to it.
double RunAtRate(double seconds, int perSecond, const std::function<void()>& act);

/// Serves the event loop until nothing is left to be drawn.
void DrawAll();

}  // namespace bench
