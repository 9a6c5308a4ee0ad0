// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The frequencies that a device can be tuned to, in Hz. One that nobody knows has none.
struct FrequencyRange {
    double least = 0.0;
    double most = 0.0;

    bool IsKnown() const { return most > least; }  ///< Without limits nothing is beyond them.
    /// Whether \a hz is outside of a range that is known.
    bool Excludes(double hz) const { return IsKnown() && (hz < least || hz > most); }
};
