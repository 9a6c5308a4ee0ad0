// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

/// How long to wait before trying again what has failed: soon at first, and then ever more rarely, so that
/// what is down is not kept busy by those who wait for it.
namespace backoff {

using Time = std::chrono::milliseconds;

/// The wait after \a failures in a row: \a first after one, twice as long after each further one, and never
/// longer than \a longest. None without a failure.
constexpr Time WaitAfter(int failures, Time first, Time longest) {
    if (failures <= 0) return Time::zero();
    Time wait = first < longest ? first : longest;
    while (--failures > 0 && wait < longest && wait > Time::zero())
        wait = wait < longest - wait ? 2 * wait : longest;
    return wait;
}

/// \a wait, half of it by chance: those who lost the same thing at one moment do not come back at one moment.
/// \a random is in [0, 1).
inline Time Spread(Time wait, double random) {
    return std::chrono::duration_cast<Time>(wait * (0.5 + 0.5 * random));
}

}  // namespace backoff
