// SPDX-License-Identifier: Apache-2.0
#include <platform/app/backoff.h>

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

using namespace std::chrono_literals;

namespace {

struct BackoffRow {
    const char* name;
    int failures;
    backoff::Time first;
    backoff::Time longest;
    backoff::Time wait;
};

void PrintTo(const BackoffRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ABackoff : public testing::TestWithParam<BackoffRow> {};

TEST_P(ABackoff, WaitsAfterFailures) {
    const BackoffRow& row = GetParam();
    EXPECT_EQ(backoff::WaitAfter(row.failures, row.first, row.longest), row.wait);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ABackoff,
    testing::Values(BackoffRow{"NotAtAllWithoutAFailure", 0, 100ms, 10s, 0ms},
                    BackoffRow{"BrieflyAfterTheFirst", 1, 100ms, 10s, 100ms},
                    BackoffRow{"TwiceAsLongAfterTheSecond", 2, 100ms, 10s, 200ms},
                    BackoffRow{"DoublingAfterEach", 7, 100ms, 10s, 6400ms},
                    BackoffRow{"NoLongerThanTheLongest", 8, 100ms, 10s, 10s},
                    BackoffRow{"TheLongestForEver", std::numeric_limits<int>::max(), 100ms, 10s, 10s},
                    BackoffRow{"TheLongestIfThatIsShorterThanTheFirst", 1, 500ms, 200ms, 200ms},
                    BackoffRow{"NotAtAllWhereTheFirstIsNone", std::numeric_limits<int>::max(), 0ms, 10s, 0ms},
                    BackoffRow{"WithoutOverflowing", std::numeric_limits<int>::max(), 1ms,
                               backoff::Time::max(), backoff::Time::max()}),
    testing::PrintToStringParamName());

TEST(ASpreadWait, LiesBetweenHalfAndAllOfIt) {
    EXPECT_EQ(backoff::Spread(1000ms, 0.0), 500ms);
    EXPECT_EQ(backoff::Spread(1000ms, 0.5), 750ms);
    EXPECT_LT(backoff::Spread(1000ms, 0.9999), 1000ms);
}

}  // namespace
