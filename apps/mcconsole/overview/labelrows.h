// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

/// Where labels beside points on a line stand without covering each other. All lengths in pixels.
namespace labelrows {

struct Label {
    double x = 0;  ///< of the point
    double width = 0;
};
struct Place {
    static constexpr int None = -1;
    int row = None;       ///< none: there is no room, the label is not shown
    bool isLeft = false;  ///< of the point, else right of it
};

/// Places labels in the order in which they are given, which is that of their importance, each in the first
/// of \a rows that has room for it, within \a width; points beyond that have none.
std::vector<Place> Assign(const std::vector<Label>& labels, double width, int rows);

}  // namespace labelrows
