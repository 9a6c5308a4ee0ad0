// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/labelrows.h>

#include <algorithm>
#include <cstddef>

namespace {

constexpr double LabelGap = 6;  // between a point and its label, and between two labels

struct LabelSpan {
    double begin;
    double end;
};

bool HasRoom(const std::vector<LabelSpan>& row, const LabelSpan& wanted) {
    return std::none_of(row.begin(), row.end(), [&](const LabelSpan& taken) {
        return wanted.begin < taken.end + LabelGap && taken.begin < wanted.end + LabelGap;
    });
}

}  // namespace

std::vector<labelrows::Place> labelrows::Assign(const std::vector<Label>& labels, double width, int rows) {
    std::vector<std::vector<LabelSpan>> taken(static_cast<std::size_t>(std::max(rows, 0)));
    std::vector<Place> places(labels.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const Label& label = labels[i];
        if (label.x < 0 || label.x > width) continue;
        const LabelSpan right{label.x, label.x + LabelGap + label.width};
        const LabelSpan left{label.x - LabelGap - label.width, label.x};
        for (std::size_t row = 0; row < taken.size() && places[i].row == Place::None; ++row) {
            const bool fitsRight = right.end <= width && HasRoom(taken[row], right);
            const bool fitsLeft = !fitsRight && left.begin >= 0 && HasRoom(taken[row], left);
            if (!fitsRight && !fitsLeft) continue;
            taken[row].push_back(fitsRight ? right : left);
            places[i] = {static_cast<int>(row), fitsLeft};
        }
    }
    return places;
}
