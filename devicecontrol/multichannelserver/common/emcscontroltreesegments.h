// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// The segments of the server's control tree that a client can mirror, as a set of bits. Any combination of
/// them may be asked for; a set with any other bit is invalid as a whole.
enum EMCSControlTreeSegments : std::uint32_t {
    NoSegments = 0,
    CommandSegment = 1,
    ConfigSegment = 2,
    StatusSegment = 4,
    DynamicMpxORVsSegment = 8,
    StaticMpxORVsSegment = 16,
    AllSegments = 31
};

constexpr EMCSControlTreeSegments operator|(EMCSControlTreeSegments left, EMCSControlTreeSegments right) {
    return static_cast<EMCSControlTreeSegments>(static_cast<std::uint32_t>(left) |
                                                static_cast<std::uint32_t>(right));
}

constexpr EMCSControlTreeSegments operator&(EMCSControlTreeSegments left, EMCSControlTreeSegments right) {
    return static_cast<EMCSControlTreeSegments>(static_cast<std::uint32_t>(left) &
                                                static_cast<std::uint32_t>(right));
}
