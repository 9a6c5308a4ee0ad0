// SPDX-License-Identifier: Apache-2.0
// The sweep time, and numbers that other servers may hold.
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using displaytest::TextOf;
using treeaccess::Text;

const QString path = Text("/MultiChannelServer/Status");

struct SweepRow {
    const char* name;
    int time;
    long mode;
    bool isOnline;
    const char* shown;
};

void PrintTo(const SweepRow& row, std::ostream* stream) {
    *stream << row.name;
}

constexpr int maxTime = 100000000;
constexpr const char* none = "- - - ";

const SweepRow sweeps[] = {
    {"OneMicrosecond", 1, OperationScan, true, "0.00 ms"},
    {"HalfOfAHundredth", 5, OperationScan, true, "0.01 ms"},
    {"WithFractions", 2500, OperationScan, true, "2.50 ms"},
    {"LastWithFractions", 9999, OperationScan, true, "10.00 ms"},
    {"FirstWithout", 10000, OperationScan, true, "10 ms"},
    {"RoundedUp", 10001, OperationScan, true, "11 ms"},
    {"RoundedUpByTheMost", 11000, OperationScan, true, "11 ms"},
    {"Longest", maxTime, OperationScan, true, "100000 ms"},
    {"InMemoryScan", 2500, OperationMemoryScan, true, "2.50 ms"},
    {"Zero", 0, OperationScan, true, none},
    {"Offline", 2500, OperationScan, false, none},
    {"OfflineInMemoryScan", 20000, OperationMemoryScan, false, none},
    {"InIdle", 2500, OperationIdle, true, none},
    {"InFfm", 2500, OperationFfm, true, none},
    {"InAudio", 2500, OperationAudio, true, none},
    {"InSearch", 2500, OperationSearch, true, none},
    {"InCalibration", 20000, OperationCalibration, true, none},
    {"InBuiltInTest", 20000, OperationBuiltInTest, true, none},
};

class SweepTime : public testing::TestWithParam<SweepRow> {
  protected:
    void Apply(const MCSStatus& status) {
        status.GetOnlineValue()->SetValue(GetParam().isOnline);
        status.GetOperationModeValue()->Select(GetParam().mode);
        status.GetSweepTimeValue()->SetValue(GetParam().time);
    }

    values::Tree m_tree;
};

TEST_P(SweepTime, IsShownWhenItChanges) {
    const MCSStatus status(path);
    MCSStatusDisplay display;
    display.SetStatus_ValuePath(path);
    Apply(status);
    EXPECT_EQ(TextOf(display, "sweepTimeDisp"), Text(GetParam().shown));
}

TEST_P(SweepTime, IsShownWhenTheDisplayIsBound) {
    const MCSStatus status(path);
    Apply(status);
    MCSStatusDisplay display;
    display.SetStatus_ValuePath(path);
    EXPECT_EQ(TextOf(display, "sweepTimeDisp"), Text(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(Table, SweepTime, testing::ValuesIn(sweeps), testing::PrintToStringParamName());

/// Values that a server made with limits of its own, or without.
class OtherLimits : public testing::Test {
  protected:
    using Number = values::ValueNumeric<int>;
    static constexpr int Most = std::numeric_limits<int>::max();
    static constexpr int Least = std::numeric_limits<int>::min();

    void Put(const char* key, int content) { treeaccess::PutValue<Number>(path, key)->SetValue(content); }
    void Show() {
        MCSStatus(path).GetOperationModeValue()->Select(OperationScan);
        MCSStatus(path).GetOnlineValue()->SetValue(true);
        m_display.SetStatus_ValuePath(path);
    }

    values::Tree m_tree;
    MCSStatusDisplay m_display;
};

TEST_F(OtherLimits, ANegativeSweepTimeIsNone) {
    Put("SweepTime", -1);
    Show();
    EXPECT_EQ(TextOf(m_display, "sweepTimeDisp"), Text(none));
}

TEST_F(OtherLimits, TheLongestSweepTimeIsRoundedUpToo) {
    Put("SweepTime", Most);
    Show();
    EXPECT_EQ(TextOf(m_display, "sweepTimeDisp"), Text("2147484 ms"));
}

TEST_F(OtherLimits, TheMostChannelsAreAddedUp) {
    Put("UsedFreqChannels", Most);
    Put("FreeFreqChannels", Most);
    Show();
    EXPECT_EQ(TextOf(m_display, "freqChannelDisp"), Text("2147483647 of 4294967294 channels used"));
}

TEST_F(OtherLimits, NegativeNumbersAreShownAsTheyAre) {
    Put("StaticMpxORVs", Least);
    Put("DynamicMpxORVs", -1);
    Show();
    EXPECT_EQ(TextOf(m_display, "nummberOfORVsDisp"), Text("-2147483648 static and -1 dynamic"));
}

}  // namespace
