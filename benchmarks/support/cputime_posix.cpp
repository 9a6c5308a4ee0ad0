// SPDX-License-Identifier: Apache-2.0
#include "cputime.h"

#include <sys/resource.h>

namespace bench {

namespace {

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

double CpuSeconds() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

}  // namespace bench
