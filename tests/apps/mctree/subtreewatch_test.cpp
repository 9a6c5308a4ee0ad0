// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/subtreewatch.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <tests/support/allocationcounter.h>

#include <gtest/gtest.h>

using namespace mctree;

namespace {

class SubtreeWatchTest : public testing::Test {
  protected:
    values::Value<int>* AddValue(const char* parent, const char* name) {
        auto* const value = new values::Value<int>();
        value->SetName(QLatin1String(name));
        EXPECT_TRUE(tree.AddValue(QLatin1String(parent), value));
        return value;
    }

    values::Tree tree;
    int events = 0;
    int unsettled = 0;
    SubtreeWatch watch{[this](EEvent, const values::TreeItem&) { ++events; }, [this] { ++unsettled; }};
};

TEST_F(SubtreeWatchTest, ForgetsWhatGoes) {
    AddValue("/a", "b");
    watch.Watch(*tree.FindItem(QStringLiteral("/a")));
    EXPECT_FALSE(watch.IsEmpty());
    tree.Delete(tree.FindItem(QStringLiteral("/a")));
    EXPECT_EQ(events, 1);
    EXPECT_TRUE(watch.IsEmpty());
}

TEST_F(SubtreeWatchTest, LetsGoWhenItGoes) {
    values::Value<int>* const value = AddValue("/a", "b");
    {
        SubtreeWatch other([](EEvent, const values::TreeItem&) {}, [] {});
        other.Watch(*tree.FindItem(QStringLiteral("/a")));
        EXPECT_EQ(value->CountObservers(), 1);
    }
    EXPECT_EQ(value->CountObservers(), 0);
}

TEST_F(SubtreeWatchTest, WatchingTwiceIsWatchingOnce) {
    values::Value<int>* const value = AddValue("/a", "b");
    watch.Watch(*value);
    watch.Watch(*value);
    value->SetValue(1);
    EXPECT_EQ(events, 1);
}

TEST_F(SubtreeWatchTest, AStateThatComesAndGoesIsNoEvent) {
    values::Value<int>* const value = AddValue("/a", "b");
    watch.Watch(*value);
    value->SetState(values::Stale);
    value->SetState(values::Valid);
    EXPECT_EQ(unsettled, 1);
    watch.SettleStates(true);
    EXPECT_EQ(events, 0);
}

TEST_F(SubtreeWatchTest, WhatGoesBeforeItIsSettledIsForgotten) {
    values::Value<int>* const value = AddValue("/a", "b");
    watch.Watch(*value);
    value->SetState(values::Stale);
    tree.Delete(value);
    EXPECT_EQ(events, 1);
    watch.SettleStates(true);
    EXPECT_EQ(events, 1);
}

TEST_F(SubtreeWatchTest, ChangesWithoutEndTakeNoMemory) {
    values::Value<int>* const value = AddValue("/a", "b");
    watch.Watch(*value);
    const AllocationCounter counter;
    for (int i = 1; i <= 1000; ++i)
        value->SetValue(i);
    EXPECT_EQ(events, 1000);
    EXPECT_EQ(AllocationCounter::Count(), 0U);
}

}  // namespace
