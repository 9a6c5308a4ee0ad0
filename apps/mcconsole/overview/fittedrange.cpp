// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/fittedrange.h>

#include <algorithm>

namespace {

constexpr double HertzInAMegahertz = 1e6;
constexpr fittedrange::Range UsualRange = {108, 138};  // while nothing is tuned
constexpr double FitMargin = 0.06;                     // of what is shown, at both ends
constexpr double LeastMargin = 0.5;                    // MHz

}  // namespace

fittedrange::Range fittedrange::Of(const std::vector<FrequencyMark>& marks,
                                   const std::vector<FrequencyBand>& bands) {
    std::vector<double> ends;  // Hz
    for (const FrequencyMark& mark : marks)
        ends.push_back(mark.hz);
    for (const FrequencyBand& band : bands)
        if (band.kind == FrequencyBand::EKind::Master) ends.insert(ends.end(), {band.from, band.to});
    if (ends.empty()) return UsualRange;
    const auto [first, last] = std::minmax_element(ends.begin(), ends.end());
    const double lowest = *first / HertzInAMegahertz;
    const double highest = *last / HertzInAMegahertz;
    const double margin = std::max((highest - lowest) * FitMargin, LeastMargin);
    return {lowest - margin, highest + margin};
}
