// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/overview/frequencyband.h>
#include <apps/mcconsole/overview/frequencymark.h>

#include <vector>

/// Which part of the line of all frequencies shows all that there is.
namespace fittedrange {

/// In MHz.
struct Range {
    double lowest = 0;
    double highest = 0;
};

/// So that all of \a marks are seen, with some room beside them, and of \a bands what the master receives.
Range Of(const std::vector<FrequencyMark>& marks, const std::vector<FrequencyBand>& bands);

}  // namespace fittedrange
