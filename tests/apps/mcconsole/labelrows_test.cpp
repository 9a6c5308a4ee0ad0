// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/labelrows.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using labelrows::Label;
using labelrows::Place;

TEST(LabelRows, PutsLabelsThatFitInTheFirstRow) {
    const std::vector<Place> places = labelrows::Assign({{10, 50}, {100, 50}}, 300, 3);
    EXPECT_EQ(places[0].row, 0);
    EXPECT_EQ(places[1].row, 0);
    EXPECT_FALSE(places[1].isLeft);
}

TEST(LabelRows, PutsTheNextOneIntoAnotherRow) {
    const std::vector<Place> places = labelrows::Assign({{10, 50}, {12, 50}, {14, 50}}, 300, 2);
    EXPECT_EQ(places[0].row, 0);
    EXPECT_EQ(places[1].row, 1);
    EXPECT_EQ(places[2].row, Place::None) << "there is no room left";
}

TEST(LabelRows, TurnsToTheLeftAtTheEnd) {
    const std::vector<Place> places = labelrows::Assign({{290, 50}}, 300, 1);
    EXPECT_EQ(places[0].row, 0);
    EXPECT_TRUE(places[0].isLeft);
}

TEST(LabelRows, HasNoneForWhatIsNotSeen) {
    const std::vector<Place> places = labelrows::Assign({{-1, 50}, {301, 50}, {10, 500}}, 300, 1);
    for (const Place& place : places)
        EXPECT_EQ(place.row, Place::None);
}

TEST(LabelRows, NeverCoverEachOther) {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    for (int round = 0; round < 200; ++round) {
        std::vector<Label> labels;
        for (int i = 0; i < 30; ++i)
            labels.push_back({static_cast<double>(random() % 800), static_cast<double>(20 + random() % 120)});
        const std::vector<Place> places = labelrows::Assign(labels, 800, 4);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (places[i].row == Place::None || places[i].row != places[j].row) continue;
                const auto begin = [&](std::size_t k) {
                    return places[k].isLeft ? labels[k].x - labels[k].width : labels[k].x;
                };
                const bool isApart =
                    begin(i) >= begin(j) + labels[j].width || begin(j) >= begin(i) + labels[i].width;
                ASSERT_TRUE(isApart) << i << ' ' << j;
            }
        }
    }
}

}  // namespace
