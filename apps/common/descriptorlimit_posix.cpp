// SPDX-License-Identifier: Apache-2.0
#include <apps/common/descriptorlimit.h>

#include <sys/resource.h>

#include <algorithm>
#include <limits>

void RaiseDescriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);  // refused: it stays as it was
}

int GetDescriptorLimit() {
    constexpr rlim_t Most = std::numeric_limits<int>::max();
    rlimit limit{};
    return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? static_cast<int>(std::min(limit.rlim_cur, Most))
                                                   : static_cast<int>(Most);
}
