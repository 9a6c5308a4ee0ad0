// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valuelist.h>

#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using List = values::ValueList<double>;
using Codes = std::vector<TChangeCode>;
using Items = std::vector<double>;

class ValueListTest : public testing::Test {
  protected:
    ValueListTest() { list.AddObserver(&observer); }
    ~ValueListTest() override { list.DeleteObserver(&observer); }

    List list;
    RecordingObserver observer;
};

TEST_F(ValueListTest, EachChangeTells7) {
    list.Add(1.0);
    list.Add(2.0);
    list.SetItems({3.0, 4.0, 5.0});
    list.Clear();
    EXPECT_EQ(observer.Codes(), (Codes{7, 7, 7, 7}));
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(ValueListTest, ReplacingTheListIsOneChange) {
    list.SetItems({1.0, 2.0});
    EXPECT_EQ(list.GetItems(), (Items{1.0, 2.0}));
    EXPECT_EQ(observer.Codes(), (Codes{7}));
}

TEST_F(ValueListTest, AnEqualListTellsNothing) {
    list.Clear();
    list.SetItems({1.0});
    list.SetItems({1.0});
    EXPECT_EQ(observer.Codes(), (Codes{7}));
}

TEST_F(ValueListTest, AnEqualListIsToldWhenEveryChangeIs) {
    list.SetDelivery(values::EDelivery::EveryChange);
    observer.Clear();
    list.Clear();
    EXPECT_EQ(observer.Codes(), (Codes{7}));
}

TEST_F(ValueListTest, TheOriginatorIsNotTold) {
    list.Add(1.0, &observer);
    list.SetItems({2.0}, &observer);
    list.Clear(&observer);
    EXPECT_EQ(observer.Codes(), Codes());
}

TEST_F(ValueListTest, AnItemBeyondTheListReadsZero) {
    list.Add(7.0);
    EXPECT_EQ(list.GetItem(0), 7.0);
    EXPECT_EQ(list.GetItem(1), 0.0);
    EXPECT_EQ(list.GetItem(-1), 0.0);
}

TEST_F(ValueListTest, NanIsRefusedAndTraced) {
    const TraceRecorder traces;
    list.Add(std::numeric_limits<double>::quiet_NaN());
    list.SetItems({1.0, std::numeric_limits<double>::quiet_NaN()});
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(observer.Codes(), Codes());
    EXPECT_EQ(traces.Records().size(), 2U);
}

}  // namespace
