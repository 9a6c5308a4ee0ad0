// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>

namespace eventwait {

/// No look without an event.
constexpr std::chrono::milliseconds Never{0};

/// Runs the event loop until \a isDone says so, looking after every turn of it, for \a time at most. Looks
/// every \a interval too, for what changes without an event here. \return what isDone() said last.
bool Until(const std::function<bool()>& isDone, std::chrono::milliseconds time,
           std::chrono::milliseconds interval = Never);

/// Runs one turn of the event loop, of what is there to be done without waiting.
void Turn();

}  // namespace eventwait
