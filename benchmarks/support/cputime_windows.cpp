// SPDX-License-Identifier: Apache-2.0
#include "cputime.h"

#include <windows.h>

namespace bench {

namespace {

double Seconds(const FILETIME& time) {
    ULARGE_INTEGER ticks = {};
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    return static_cast<double>(ticks.QuadPart) * 1e-7;  // ticks of 100 ns
}

}  // namespace

double CpuSeconds() {
    FILETIME begin = {};
    FILETIME end = {};
    FILETIME system = {};
    FILETIME user = {};
    if (GetProcessTimes(GetCurrentProcess(), &begin, &end, &system, &user) == 0) return 0;
    return Seconds(system) + Seconds(user);
}

}  // namespace bench
