// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// A hash table of whole numbers other than 0 that is filled at once and asked often. Open addressing in one
/// array, at most half full: a lookup takes one multiplication and touches one cache line nearly always.
template <class Number>
class HertzTable {
  public:
    /// Replaces the content. Doubled numbers count once.
    void Assign(const std::vector<Number>& numbers) {
        unsigned bits = MinBits;
        while ((std::size_t{1} << bits) < 2 * numbers.size())
            ++bits;
        m_shift = 64 - bits;
        m_mask = (std::size_t{1} << bits) - 1;
        // Numbers in regular steps may pile up under one factor, not under all.
        for (const std::uint64_t factor : {0x9E3779B97F4A7C15U, 0xC2B2AE3D27D4EB4FU, 0xD6E8FEB86659FD93U}) {
            m_factor = factor;
            if (Fill(numbers) <= 2 * numbers.size()) return;
        }
    }

    bool Contains(Number number) const {
        for (std::size_t slot = SlotOf(number);; slot = (slot + 1) & m_mask) {
            const Number content = m_slots[slot];
            const bool isFound = content == number;
            // One question and not two: that the search ends here is what the processor can foresee.
            if (static_cast<unsigned>(isFound) | static_cast<unsigned>(content == Free)) return isFound;
        }
    }

  private:
    static constexpr Number Free = 0;
    static constexpr unsigned MinBits = 4;

    std::size_t SlotOf(Number number) const { return static_cast<std::size_t>(number * m_factor >> m_shift); }

    /// \return how many slots were passed by to fill the table.
    std::size_t Fill(const std::vector<Number>& numbers) {
        std::size_t passed = 0;
        m_slots.assign(m_mask + 1, Free);
        for (const Number number : numbers) {
            std::size_t slot = SlotOf(number);
            while (m_slots[slot] != Free && m_slots[slot] != number) {
                slot = (slot + 1) & m_mask;
                ++passed;
            }
            m_slots[slot] = number;
        }
        return passed;
    }

    std::vector<Number> m_slots = std::vector<Number>(std::size_t{1} << MinBits, Free);
    std::size_t m_mask = (std::size_t{1} << MinBits) - 1;  ///< the number of slots, a power of two, less one
    std::uint64_t m_factor = 1;
    unsigned m_shift = 64 - MinBits;
};
