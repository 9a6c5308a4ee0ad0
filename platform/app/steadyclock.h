// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

/// The clock by which the project measures how long something takes, and waits. Any thread.
namespace steadyclock {

/// The time since some moment, which is the same for all who ask; never goes back.
template <class Duration>
Duration Now() {
    return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace steadyclock
