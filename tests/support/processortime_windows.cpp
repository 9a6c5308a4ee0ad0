// SPDX-License-Identifier: Apache-2.0
#include <tests/support/processortime.h>

#include <windows.h>

namespace {

constexpr double UnitsInMillisecond = 10000;  // of 100 ns

double Units(const FILETIME& time) {
    return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime;
}

}  // namespace

double ProcessorMilliseconds() {
    FILETIME created;
    FILETIME ended;
    FILETIME system;
    FILETIME user;
    if (!::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &system, &user)) return 0;
    return (Units(system) + Units(user)) / UnitsInMillisecond;
}
