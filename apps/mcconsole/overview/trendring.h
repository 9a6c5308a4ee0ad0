// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <optional>

/// The last samples of two numbers, one pair a second, in memory that never grows.
class TrendRing {
  public:
    static constexpr std::size_t Capacity = 600;  // ten minutes

    struct Sample {
        std::optional<double> sweepTimeMs;
        std::optional<double> latencyMs;
    };

    void Add(const Sample& sample) {
        m_samples[m_next] = sample;
        m_next = (m_next + 1) % Capacity;
        if (m_count < Capacity) ++m_count;
    }
    std::size_t Count() const { return m_count; }
    /// The \a age-th before the last one, which is 0.
    const Sample& Get(std::size_t age) const { return m_samples[(m_next + Capacity - 1 - age) % Capacity]; }

  private:
    std::array<Sample, Capacity> m_samples{};
    std::size_t m_next = 0;
    std::size_t m_count = 0;
};
