// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// By what frequencies are compared with those that are assigned.
namespace wholehertz {

/// Truncates toward zero (fixed: whole-hertz). False for what no unsigned 64-bit integer can hold, NaN among
/// it.
inline bool Of(double frequency, std::uint64_t* hertz) {
    constexpr double SignBit = 9223372036854775808.0;  // 2^63
    if (frequency > -1.0 && frequency < SignBit) {     // the usual case takes one instruction
        *hertz = static_cast<std::uint64_t>(static_cast<std::int64_t>(frequency));
        return true;
    }
    if (!(frequency >= SignBit && frequency < 2.0 * SignBit)) return false;
    *hertz = static_cast<std::uint64_t>(frequency);
    return true;
}

}  // namespace wholehertz
