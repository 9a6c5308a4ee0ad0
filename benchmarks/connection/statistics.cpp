// SPDX-License-Identifier: Apache-2.0
#include "statistics.h"

#include <algorithm>

namespace bench {

double Quantile(std::vector<double> numbers, double share) {
    if (numbers.empty()) return 0.0;
    const auto index = static_cast<std::size_t>(share * static_cast<double>(numbers.size() - 1) + 0.5);
    const auto place = numbers.begin() + static_cast<std::ptrdiff_t>(index);
    std::nth_element(numbers.begin(), place, numbers.end());
    return *place;
}

}  // namespace bench
