// SPDX-License-Identifier: Apache-2.0
#include "pinning.h"

#include <sched.h>
#include <sys/resource.h>

#include <cstddef>

namespace bench {

bool PinToCore(int core) {
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) != 0) return false;
    for (std::size_t i = 0; i < CPU_SETSIZE; ++i) {
        if (!CPU_ISSET(i, &allowed) || core-- > 0) continue;
        cpu_set_t chosen;
        CPU_ZERO(&chosen);
        CPU_SET(i, &chosen);
        return sched_setaffinity(0, sizeof chosen, &chosen) == 0;
    }
    return false;
}

void YieldCores() {
    constexpr int Nicest = 19;
    setpriority(PRIO_PROCESS, 0, Nicest);
}

}  // namespace bench
