// SPDX-License-Identifier: Apache-2.0
#include <tests/support/waituntil.h>

#include <apps/common/eventwait.h>

bool WaitUntil(const std::function<bool()>& isDone, int milliseconds) {
    return eventwait::Until(isDone, std::chrono::milliseconds(milliseconds));
}

void RunTurns(int count) {
    for (int i = 0; i < count; ++i)
        eventwait::Turn();
}
