// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/descriptorlimit.h>

#include <sys/resource.h>
#include <unistd.h>

namespace {

void SetLimit(unsigned long limit) {
    rlimit both{};
    getrlimit(RLIMIT_NOFILE, &both);
    both.rlim_cur = limit;
    setrlimit(RLIMIT_NOFILE, &both);
}

}  // namespace

void RaiseDescriptorLimit() {
    rlimit both{};
    getrlimit(RLIMIT_NOFILE, &both);
    SetLimit(both.rlim_max);
}

DescriptorLimit::DescriptorLimit(int left) {
    rlimit both{};
    getrlimit(RLIMIT_NOFILE, &both);
    m_before = both.rlim_cur;
    // The lowest free descriptor is the first that must not be had.
    const int lowest = dup(STDOUT_FILENO);
    close(lowest);
    SetLimit(static_cast<unsigned long>(lowest + left));
}

DescriptorLimit::~DescriptorLimit() {
    SetLimit(m_before);
}
