// SPDX-License-Identifier: Apache-2.0
#include <apps/common/descriptorlimit.h>

#include <limits>

void RaiseDescriptorLimit() {}

int GetDescriptorLimit() {
    return std::numeric_limits<int>::max();
}
