// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/gts/blankingtest.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace {

constexpr double Beyond63 = 9223372036854775808.0;   // 2^63
constexpr double Beyond64 = 18446744073709551616.0;  // 2^64
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

class ABlanking : public BlankingTest {};

TEST_F(ABlanking, BlanksNothingWithoutModules) {
    for (const double frequency : {0.0, 1.0, 118100000.0, Beyond63})
        EXPECT_FALSE(IsBlanked(frequency)) << frequency;
}

TEST_F(ABlanking, BlanksNothingWhileNoInputIsActive) {
    Publish("Module-0", {118100000.0, 121500000.0}, 3);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_FALSE(IsBlanked(121500000.0));
}

TEST_F(ABlanking, TakesAnInputAsActiveWhileItsBitIsZero) {
    const Module module = Publish("Module-0", {118100000.0, 121500000.0}, 3);
    module.discretes->SetValue(2);
    EXPECT_TRUE(IsBlanked(118100000.0));
    EXPECT_FALSE(IsBlanked(121500000.0));
    module.discretes->SetValue(1);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_TRUE(IsBlanked(121500000.0));
    module.discretes->SetValue(0);
    EXPECT_TRUE(IsBlanked(118100000.0));
    EXPECT_TRUE(IsBlanked(121500000.0));
}

TEST_F(ABlanking, BlanksAFrequencyAslongAsAnyInputOfAnyModuleDoes) {
    const Module first = Publish("Module-0", {118100000.0}, 0);
    const Module second = Publish("Module-1", {1.0, 118100000.0}, 0);
    first.discretes->SetValue(1);
    EXPECT_TRUE(IsBlanked(118100000.0));
    second.discretes->SetValue(2);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_TRUE(IsBlanked(1.0));
}

TEST_F(ABlanking, RepeatsTheSignBitForInputsBeyondBit31) {
    std::vector<double> frequencies;
    for (int i = 0; i < 40; ++i)
        frequencies.push_back(100.0 + i);
    const Module module = Publish("Module-0", frequencies, std::numeric_limits<int>::max());
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(IsBlanked(100.0 + i), i >= 31) << i;
    module.discretes->SetValue(std::numeric_limits<int>::min());
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(IsBlanked(100.0 + i), i < 31) << i;
    module.discretes->SetValue(-1);
    for (int i = 0; i < 40; ++i)
        EXPECT_FALSE(IsBlanked(100.0 + i)) << i;
}

struct MatchRow {
    const char* name;
    double assigned;
    double asked;
    bool isBlanked;
};

void PrintTo(const MatchRow& row, std::ostream* stream) {
    *stream << row.name;
}

// clang-format off
const MatchRow matchRows[] = {
    {"TheSame",                          100000000.0, 100000000.0, true},
    {"AFractionAbove",                   100000000.0, 100000000.7, true},
    {"ALesserFractionAbove",             100000000.0, 100000000.2, true},
    {"AFractionBelow",                   100000000.0, 99999999.9,  false},
    {"AHertzAbove",                      100000000.0, 100000001.0, false},
    {"AFractionInTheAssignment",         100000000.6, 100000000.0, true},
    {"AFractionInTheAssignmentAndAbove", 100000000.6, 100000001.0, false},
    {"OneHertz",                         1.0,         1.9,         true},
    {"LessThanAHertz",                   0.25,        0.5,         true},
    {"LessThanAHertzAndZero",            0.25,        0.0,         true},
    {"LessThanAHertzAndLessThanZero",    0.25,        -0.5,        true},
    {"LessThanAHertzAndMinusOne",        0.25,        -1.0,        false},
    {"ZeroIsNoAssignment",               0.0,         0.0,         false},
    {"MinusZeroIsNoAssignment",          -0.0,        0.0,         false},
    {"ANegativeOneIsNoAssignment",       -5.0,        -5.0,        false},
    {"ANegativeOneWrappedAround",        -5.0,        Beyond64 - 4096.0, false},
    {"TwoToThe63",                       Beyond63,    Beyond63,    true},
    {"JustBelowTwoToThe63",              9223372036854774784.0, 9223372036854774784.0, true},
    {"TwoToThe63AndJustBelow",           Beyond63,    9223372036854774784.0, false},
    {"AboveTwoToThe63",                  12345678901234567168.0, 12345678901234567168.0, true},
    {"TheHighest",                       18446744073709549568.0, 18446744073709549568.0, true},
    {"TwoToThe64IsNone",                 Beyond64,    Beyond64,    false},
    {"TwoToThe64IsNotZero",              Beyond64,    0.0,         false},
    {"TwoToThe64IsNotTheHighest",        Beyond64,    18446744073709549568.0, false},
    {"AskedForTwoToThe64",               0.25,        Beyond64,    false},
    {"InfinityIsNone",                   Infinity,    Infinity,    false},
    {"InfinityIsNotZero",                Infinity,    0.0,         false},
    {"MinusInfinity",                    0.25,        -Infinity,   false},
    {"NotANumber",                       0.25,        NotANumber,  false},
    {"HugeIsNone",                       1e300,       1e300,       false},
};
// clang-format on

class AMatch : public BlankingTest, public testing::WithParamInterface<MatchRow> {};

TEST_P(AMatch, IsOfWholeHertz) {
    Publish("Module-0", {GetParam().assigned}, 0);
    EXPECT_EQ(IsBlanked(GetParam().asked), GetParam().isBlanked);
}

INSTANTIATE_TEST_SUITE_P(Table, AMatch, testing::ValuesIn(matchRows), testing::PrintToStringParamName());

TEST_F(ABlanking, DoesNotLoseOtherFrequenciesOverOneThatCannotBe) {
    Publish("Module-0", {Infinity, Beyond64, -1.0, 118100000.0, 1e300}, 0);
    EXPECT_TRUE(IsBlanked(118100000.0));
}

TEST_F(ABlanking, HoldsAHundredThousandFrequencies) {
    std::vector<double> frequencies;
    for (int i = 0; i < 100000; ++i)
        frequencies.push_back(108000000.0 + 25.0 * i);
    Publish("Module-0", frequencies, 0);
    for (int i = 0; i < 100000; ++i) {
        ASSERT_TRUE(IsBlanked(108000000.0 + 25.0 * i)) << i;
        ASSERT_FALSE(IsBlanked(108000001.0 + 25.0 * i)) << i;
    }
}

TEST(ABlankingWithoutATree, BlanksNothing) {
    ASSERT_EQ(values::Tree::Instance(), nullptr);
    BlankingClient client;
    EXPECT_FALSE(Blanking::Instance()->IsFrequencyBlanked(118100000.0, &client));
    Blanking::Instance()->FreeInstance();
}

}  // namespace
