// SPDX-License-Identifier: Apache-2.0
#include "statistics.h"

#include <algorithm>
#include <cmath>

namespace bench {

double Quantile(std::vector<double> numbers, double share) {
    if (numbers.empty()) return 0.0;
    const auto place = numbers.begin() + std::lround(share * static_cast<double>(numbers.size() - 1));
    std::nth_element(numbers.begin(), place, numbers.end());
    return *place;
}

}  // namespace bench
