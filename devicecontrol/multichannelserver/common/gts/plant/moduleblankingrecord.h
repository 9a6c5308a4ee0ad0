// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// What Blanking knows of one data module, by number of digital input: two arrays of the same length, and
/// what follows from them.
struct ModuleBlankingRecord {
    std::vector<double> frequencies;     ///< Hz; 0 or less: none assigned
    std::vector<bool> active;            ///< the transmitter at this input is keyed
    std::vector<std::uint64_t> blanked;  ///< the whole hertz of the frequencies of active inputs

    /// New places have no frequency and are inactive.
    void Resize(std::size_t count) {
        frequencies.resize(count, 0.0);
        active.resize(count, false);
    }
};
