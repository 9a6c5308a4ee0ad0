// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cputime.h"

#include <chrono>

namespace bench {

/// Time on the clock and on the processor since it was started.
class Stopwatch {
  public:
    Stopwatch() { Start(); }
    void Start() {
        m_start = std::chrono::steady_clock::now();
        m_startCpu = CpuSeconds();
    }
    double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }
    double BusySeconds() const { return CpuSeconds() - m_startCpu; }

  private:
    std::chrono::steady_clock::time_point m_start;
    double m_startCpu = 0.0;
};

}  // namespace bench
