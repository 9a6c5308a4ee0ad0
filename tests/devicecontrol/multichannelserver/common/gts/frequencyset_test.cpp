// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/frequencyset.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <unordered_set>

namespace {

constexpr std::uint64_t Highest = std::numeric_limits<std::uint64_t>::max();

TEST(AFrequencySet, HoldsNothingAtFirst) {
    const FrequencySet set;
    for (const std::uint64_t frequency : {std::uint64_t{0}, std::uint64_t{1}, Highest})
        EXPECT_FALSE(set.Contains(frequency)) << frequency;
}

TEST(AFrequencySet, HoldsZeroAndTheHighestNumberLikeAnyOther) {
    FrequencySet set;
    set.Assign({0, Highest});
    EXPECT_TRUE(set.Contains(0));
    EXPECT_TRUE(set.Contains(Highest));
    EXPECT_FALSE(set.Contains(1));
    set.Assign({1});
    EXPECT_FALSE(set.Contains(0));
    EXPECT_FALSE(set.Contains(Highest));
    EXPECT_TRUE(set.Contains(1));
}

TEST(AFrequencySet, CountsDoubledFrequenciesOnce) {
    FrequencySet set;
    set.Assign(std::vector<std::uint64_t>(1000, 118100000));
    EXPECT_TRUE(set.Contains(118100000));
    EXPECT_FALSE(set.Contains(118100001));
}

TEST(AFrequencySet, HoldsWhatItWasMadeOfThroughGrowingAndShrinking) {
    std::mt19937_64 random(1);
    FrequencySet set;
    for (const std::size_t count : {1U, 8U, 9U, 1000U, 7U, 30000U, 0U, 16U, 17U}) {
        std::vector<std::uint64_t> frequencies;
        // Regular steps, and numbers that differ in high bits only.
        for (std::size_t i = 0; i < count; ++i)
            frequencies.push_back(i % 2 == 0 ? 118000000 + 25000 * i : random() << 40);
        set.Assign(frequencies);
        const std::unordered_set<std::uint64_t> expected(frequencies.begin(), frequencies.end());
        for (const std::uint64_t frequency : frequencies)
            for (const std::uint64_t asked : {frequency - 1, frequency, frequency + 1})
                ASSERT_EQ(set.Contains(asked), expected.count(asked) != 0) << asked << " among " << count;
    }
}

}  // namespace
