// SPDX-License-Identifier: Apache-2.0
// The round trip as a number that people read.
#include <apps/mcconsole/session/steadylatency.h>

#include <gtest/gtest.h>

#include <string>

using namespace std::chrono_literals;

namespace {

using Latency = std::optional<std::chrono::microseconds>;

struct SteadyRow {
    const char* name;
    Latency first;
    Latency second;
    std::chrono::milliseconds later;
    Latency shown;
};

class SteadyLatencyTable : public testing::TestWithParam<SteadyRow> {};

TEST_P(SteadyLatencyTable, Shows) {
    SteadyLatency latency;
    EXPECT_EQ(latency.Show(GetParam().first, 0ms), GetParam().first);
    EXPECT_EQ(latency.Show(GetParam().second, GetParam().later), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Latencies, SteadyLatencyTable,
    testing::Values(SteadyRow{"FewMicrosecondsAreNoNews", 400us, 900us, 1s, 400us},
                    SteadyRow{"NorFewer", 900us, 200us, 1s, 900us},
                    SteadyRow{"AMillisecondMoreIs", 400us, 1401us, 1s, 1401us},
                    SteadyRow{"OfLongOnesAQuarterIsNot", 40ms, 50ms, 1s, 40ms},
                    SteadyRow{"MoreIs", 40ms, 51ms, 1s, 51ms}, SteadyRow{"LessIs", 40ms, 29ms, 1s, 29ms},
                    SteadyRow{"AndAnyAfterTenSeconds", 400us, 420us, 10s, 420us},
                    SteadyRow{"NotBefore", 400us, 420us, 9999ms, 400us},
                    SteadyRow{"WhatNobodyKnowsIsNotShown", 400us, std::nullopt, 1s, std::nullopt},
                    SteadyRow{"TheFirstOneIsNews", std::nullopt, 400us, 1s, 400us}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SteadyLatencyTest, CreepsNowhereUnseen) {
    SteadyLatency latency;
    Latency shown;
    for (int i = 0; i < 100; ++i)
        shown = latency.Show(1ms + i * 100us, i * 100ms);
    EXPECT_GE(*shown, 9ms) << "each differs from the one before by little only";
}

}  // namespace
