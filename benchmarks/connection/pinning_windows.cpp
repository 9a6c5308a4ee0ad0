// SPDX-License-Identifier: Apache-2.0
#include "pinning.h"

#include <windows.h>

namespace bench {

bool PinToCore(int core) {
    DWORD_PTR allowed = 0;
    DWORD_PTR ofSystem = 0;
    if (GetProcessAffinityMask(GetCurrentProcess(), &allowed, &ofSystem) == 0) return false;
    for (DWORD_PTR bit = 1; bit != 0; bit <<= 1) {
        if ((allowed & bit) == 0 || core-- > 0) continue;
        return SetProcessAffinityMask(GetCurrentProcess(), bit) != 0;
    }
    return false;
}

void YieldCores() {
    SetPriorityClass(GetCurrentProcess(), IDLE_PRIORITY_CLASS);
}

}  // namespace bench
