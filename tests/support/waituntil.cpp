// SPDX-License-Identifier: Apache-2.0
#include <tests/support/waituntil.h>

#include <apps/common/eventwait.h>

namespace {

#ifdef Q_OS_WIN
constexpr int Slowness = 6;  // of processes, files and sockets by Wine, where tests run
#else
constexpr int Slowness = 3;  // of a machine that compiles meanwhile
#endif

}  // namespace

bool WaitUntil(const std::function<bool()>& isDone, int milliseconds) {
    return eventwait::Until(isDone, std::chrono::milliseconds(milliseconds) * Slowness);
}

void RunTurns(int count) {
    for (int i = 0; i < count; ++i)
        eventwait::Turn();
}
