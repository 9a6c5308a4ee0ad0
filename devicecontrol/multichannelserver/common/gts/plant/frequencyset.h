// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/plant/hertztable.h>

#include <cstdint>
#include <vector>

/// A set of whole hertz that is made at once and asked often. Frequencies of 32 bits, which nearly all are,
/// have a table of their own: at half the size it stays longer in the cache.
class FrequencySet {
  public:
    /// Replaces the content. Doubled frequencies count once.
    void Assign(const std::vector<std::uint64_t>& frequencies);

    bool Contains(std::uint64_t frequency) const {
        const auto low = static_cast<std::uint32_t>(frequency);
        if (low != frequency) return m_high.Contains(frequency);
        return low != 0 ? m_low.Contains(low) : m_hasZero;
    }

  private:
    HertzTable<std::uint32_t> m_low;   ///< below 2^32, without 0
    HertzTable<std::uint64_t> m_high;  ///< from 2^32 on
    bool m_hasZero = false;
    std::vector<std::uint32_t> m_lowScratch;  ///< of Assign()
    std::vector<std::uint64_t> m_highScratch;
};
