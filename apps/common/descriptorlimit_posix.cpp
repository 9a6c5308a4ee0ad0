// SPDX-License-Identifier: Apache-2.0
#include <apps/common/descriptorlimit.h>

#include <sys/resource.h>

void RaiseDescriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);  // refused: it stays as it was
}
