// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

/// Runs the event loop until \a isDone says so, looking after every turn of it, for \a milliseconds at most.
/// \return what isDone() said last.
bool WaitUntil(const std::function<bool()>& isDone, int milliseconds = 10000);

/// Runs \a count turns of the event loop, of what is there to be done without waiting.
void RunTurns(int count);
