// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valuenumeric.h>

#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

using values::ValueNumeric;
using Codes = std::vector<TChangeCode>;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

template <class T>
class ValueNumericTest : public testing::Test {
  protected:
    ValueNumericTest() : value(T(5), T(0), T(10)) { value.AddObserver(&observer); }
    ~ValueNumericTest() override { value.DeleteObserver(&observer); }

    ValueNumeric<T> value;
    RecordingObserver observer;
};

using Types = testing::Types<int, double>;
TYPED_TEST_SUITE(ValueNumericTest, Types);

TYPED_TEST(ValueNumericTest, StartsAtZeroWithTheWidestLimits) {
    const ValueNumeric<TypeParam> fresh;
    EXPECT_EQ(fresh.GetValue(), TypeParam(0));
    EXPECT_EQ(fresh.GetMin(), std::numeric_limits<TypeParam>::lowest());
    EXPECT_EQ(fresh.GetMax(), std::numeric_limits<TypeParam>::max());
}

TYPED_TEST(ValueNumericTest, SettingTellsTheContent) {
    this->value.SetValue(TypeParam(6));
    EXPECT_EQ(this->value.GetValue(), TypeParam(6));
    EXPECT_EQ(this->observer.Codes(), (Codes{3}));
    this->value.SetValue(TypeParam(7), &this->observer);
    EXPECT_EQ(this->observer.Codes(), (Codes{3}));
}

TYPED_TEST(ValueNumericTest, AContentBeyondALimitBecomesTheLimit) {
    this->value.SetValue(TypeParam(11));
    EXPECT_EQ(this->value.GetValue(), TypeParam(10));
    this->value.SetValue(TypeParam(-1));
    EXPECT_EQ(this->value.GetValue(), TypeParam(0));
    EXPECT_EQ(this->observer.Codes(), (Codes{3, 3}));
}

TYPED_TEST(ValueNumericTest, ClampingToTheSameContentTellsNothing) {
    this->value.SetValue(TypeParam(10));
    this->observer.Clear();
    this->value.SetValue(TypeParam(99));
    EXPECT_EQ(this->observer.Codes(), Codes());
}

TYPED_TEST(ValueNumericTest, EveryChangeIsToldEvenWhenEqual) {
    this->value.SetDelivery(values::EDelivery::EveryChange);
    this->observer.Clear();
    this->value.SetValue(TypeParam(5));
    EXPECT_EQ(this->observer.Codes(), (Codes{3}));
}

TYPED_TEST(ValueNumericTest, ALimitThatLeavesTheContentTellsTheDescriptionOnly) {
    this->value.SetMin(TypeParam(1));
    this->value.SetMax(TypeParam(9));
    EXPECT_EQ(this->value.GetMin(), TypeParam(1));
    EXPECT_EQ(this->value.GetMax(), TypeParam(9));
    EXPECT_EQ(this->observer.Codes(), (Codes{4, 4}));
}

TYPED_TEST(ValueNumericTest, ALimitThatMovesTheContentTellsBothInOrder) {
    this->value.SetMin(TypeParam(6));
    EXPECT_EQ(this->value.GetValue(), TypeParam(6));
    this->value.SetMin(TypeParam(0));
    this->value.SetMax(TypeParam(3));
    EXPECT_EQ(this->value.GetValue(), TypeParam(3));
    EXPECT_EQ(this->observer.Codes(), (Codes{4, 3, 4, 4, 3}));
}

TYPED_TEST(ValueNumericTest, AnEqualLimitTellsNothing) {
    this->value.SetMin(TypeParam(0));
    this->value.SetMax(TypeParam(10));
    EXPECT_EQ(this->observer.Codes(), Codes());
}

TYPED_TEST(ValueNumericTest, AMinimumAboveTheMaximumTakesItAlong) {
    this->value.SetMin(TypeParam(20));
    EXPECT_EQ(this->value.GetMin(), TypeParam(20));
    EXPECT_EQ(this->value.GetMax(), TypeParam(20));
    EXPECT_EQ(this->value.GetValue(), TypeParam(20));
}

TYPED_TEST(ValueNumericTest, AMaximumBelowTheMinimumTakesItAlong) {
    this->value.SetMax(TypeParam(-20));
    EXPECT_EQ(this->value.GetMin(), TypeParam(-20));
    EXPECT_EQ(this->value.GetMax(), TypeParam(-20));
    EXPECT_EQ(this->value.GetValue(), TypeParam(-20));
}

TYPED_TEST(ValueNumericTest, LimitsSetOneAfterTheOtherMoveAnyRangeAnywhere) {
    this->value.SetMin(TypeParam(100));
    this->value.SetMax(TypeParam(200));
    EXPECT_EQ(this->value.GetMin(), TypeParam(100));
    EXPECT_EQ(this->value.GetMax(), TypeParam(200));
    this->value.SetMin(TypeParam(-9));
    this->value.SetMax(TypeParam(-5));
    EXPECT_EQ(this->value.GetMin(), TypeParam(-9));
    EXPECT_EQ(this->value.GetMax(), TypeParam(-5));
    EXPECT_EQ(this->value.GetValue(), TypeParam(-5));
}

TYPED_TEST(ValueNumericTest, ObserversSeeLimitsAndContentThatFit) {
    this->observer.React([this](Observable*, TChangeCode) {
        EXPECT_LE(this->value.GetMin(), this->value.GetValue());
        EXPECT_LE(this->value.GetValue(), this->value.GetMax());
    });
    this->value.SetMin(TypeParam(7));
    this->value.SetMax(TypeParam(2));
    EXPECT_EQ(this->observer.Events().size(), 4U);
}

TYPED_TEST(ValueNumericTest, ItMayBeDestroyedBetweenTheTwoNotificationsOfALimit) {
    auto mortal = std::make_unique<ValueNumeric<TypeParam>>(TypeParam(5), TypeParam(0), TypeParam(10));
    RecordingObserver killer;
    killer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::DescriptionChanged) mortal.reset();
    });
    mortal->AddObserver(&killer);
    mortal->SetMin(TypeParam(8));
    EXPECT_EQ(killer.Codes(), (Codes{4, 2}));
}

TEST(ValueNumeric, NanIsRefusedAndTraced) {
    ValueNumeric<double> value(5.0, 0.0, 10.0);
    value.SetName(QStringLiteral("F"));
    RecordingObserver observer;
    value.AddObserver(&observer);
    const TraceRecorder traces;
    value.SetValue(NaN);
    value.SetMin(NaN);
    value.SetMax(NaN);
    EXPECT_EQ(value.GetValue(), 5.0);
    EXPECT_EQ(value.GetMin(), 0.0);
    EXPECT_EQ(value.GetMax(), 10.0);
    EXPECT_EQ(observer.Codes(), Codes());
    ASSERT_EQ(traces.Records().size(), 3U);
    EXPECT_EQ(traces.Messages()[0], QStringLiteral("The value 'F' refuses: content NaN"));
    value.DeleteObserver(&observer);
}

TEST(ValueNumeric, AnInfiniteContentBecomesTheLimit) {
    ValueNumeric<double> limited(5.0, 0.0, 10.0);
    limited.SetValue(Infinity);
    EXPECT_EQ(limited.GetValue(), 10.0);
    limited.SetValue(-Infinity);
    EXPECT_EQ(limited.GetValue(), 0.0);
    ValueNumeric<double> widest;
    widest.SetValue(Infinity);
    EXPECT_EQ(widest.GetValue(), std::numeric_limits<double>::max());
}

TEST(ValueNumeric, AnInfiniteLimitLetsInfinityIn) {
    ValueNumeric<double> value;
    value.SetMax(Infinity);
    value.SetValue(Infinity);
    EXPECT_EQ(value.GetValue(), Infinity);
}

TEST(ValueNumeric, TheExtremesOfAnIntFit) {
    ValueNumeric<int> value;
    value.SetValue(std::numeric_limits<int>::min());
    EXPECT_EQ(value.GetValue(), std::numeric_limits<int>::min());
    value.SetValue(std::numeric_limits<int>::max());
    EXPECT_EQ(value.GetValue(), std::numeric_limits<int>::max());
}

}  // namespace
