// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace bench {

/// The number below which \a share (0 to 1) of \a numbers lie; 0 of none.
double Quantile(std::vector<double> numbers, double share);
inline double Median(const std::vector<double>& numbers) {
    return Quantile(numbers, 0.5);
}

}  // namespace bench
