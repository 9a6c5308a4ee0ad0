// SPDX-License-Identifier: Apache-2.0
#include <platform/values/value.h>

#include <platform/values/node.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

using values::EDelivery;
using values::Value;
using Codes = std::vector<TChangeCode>;

template <class T>
struct Contents;
template <>
struct Contents<bool> {
    static bool First() { return false; }
    static bool Second() { return true; }
};
template <>
struct Contents<int> {
    static int First() { return 0; }
    static int Second() { return -2147483647; }
};
template <>
struct Contents<QString> {
    static QString First() { return QString(); }
    static QString Second() { return QString::fromUtf8("Frequenz \xF0\x9F\x93\xA1"); }
};

template <class T>
class ValueTest : public testing::Test {
  protected:
    Value<T> value;
    RecordingObserver observer;
    void SetUp() override { value.AddObserver(&observer); }
    void TearDown() override { value.DeleteObserver(&observer); }
};

using Types = testing::Types<bool, int, QString>;
TYPED_TEST_SUITE(ValueTest, Types);

TYPED_TEST(ValueTest, StartsEmptyValidAndDeliversTheLastValue) {
    EXPECT_EQ(this->value.GetValue(), Contents<TypeParam>::First());
    EXPECT_EQ(this->value.GetState(), values::Valid);
    EXPECT_EQ(this->value.GetDelivery(), EDelivery::LastValue);
    EXPECT_FALSE(this->value.IsNode());
    EXPECT_EQ(this->value.GetObservable(), &this->value);
}

TYPED_TEST(ValueTest, SettingTellsTheContent) {
    this->value.SetValue(Contents<TypeParam>::Second());
    EXPECT_EQ(this->value.GetValue(), Contents<TypeParam>::Second());
    EXPECT_EQ(this->observer.Codes(), (Codes{3}));
}

TYPED_TEST(ValueTest, SettingAnEqualContentDoesNothing) {
    this->value.SetValue(Contents<TypeParam>::First());
    EXPECT_EQ(this->observer.Codes(), Codes());
}

TYPED_TEST(ValueTest, SettingDoesNotTellTheOriginator) {
    this->value.SetValue(Contents<TypeParam>::Second(), &this->observer);
    EXPECT_EQ(this->observer.Codes(), Codes());
}

TYPED_TEST(ValueTest, EveryChangeIsToldEvenWhenEqual) {
    this->value.SetDelivery(EDelivery::EveryChange);
    this->observer.Clear();
    this->value.SetValue(Contents<TypeParam>::Second());
    this->value.SetValue(Contents<TypeParam>::Second());
    EXPECT_EQ(this->observer.Codes(), (Codes{3, 3}));
}

TYPED_TEST(ValueTest, TheContentIsThereWhenObserversAreTold) {
    TypeParam seen = Contents<TypeParam>::First();
    this->observer.React([&](Observable*, TChangeCode) { seen = this->value.GetValue(); });
    this->value.SetValue(Contents<TypeParam>::Second());
    EXPECT_EQ(seen, Contents<TypeParam>::Second());
}

TYPED_TEST(ValueTest, ItMayBeDestroyedByAnObserver) {
    auto mortal = std::make_unique<Value<TypeParam>>();
    RecordingObserver killer;
    killer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) mortal.reset();
    });
    mortal->AddObserver(&killer);
    mortal->SetValue(Contents<TypeParam>::Second());
    EXPECT_EQ(killer.Codes(), (Codes{3, 2}));
}

TEST(ValueBase, ChangingTheStateTells2) {
    Value<int> value;
    RecordingObserver observer;
    value.AddObserver(&observer);
    value.SetState(values::Stale);
    value.SetState(values::Stale);
    EXPECT_EQ(value.GetState(), 2);
    value.SetState(values::Valid, &observer);
    EXPECT_EQ(value.GetState(), 0);
    EXPECT_EQ(observer.Codes(), (Codes{2}));
    value.DeleteObserver(&observer);
}

TEST(ValueBase, DestructionTellsState1WhileTheValueIsWhole) {
    RecordingObserver observer;
    int state = -1;
    bool wasWhole = false;
    observer.React([&](Observable* source, TChangeCode) {
        const auto* const value = dynamic_cast<Value<int>*>(source);
        ASSERT_NE(value, nullptr);
        state = value->GetState();
        wasWhole = value->GetValue() == 5 && value->GetName() == QStringLiteral("V");
    });
    {
        Value<int> value(5);
        value.SetName(QStringLiteral("V"));
        value.AddObserver(&observer);
    }
    EXPECT_EQ(observer.Codes(), (Codes{2}));
    EXPECT_EQ(state, 1);
    EXPECT_TRUE(wasWhole);
}

TEST(ValueBase, RenamingTells4AndMovesTheName) {
    values::Node node(QStringLiteral("N"));
    values::ValueBase* const value = node.CreateChild(Value<int>(), QStringLiteral("A"));
    RecordingObserver observer;
    value->AddObserver(&observer);
    value->SetName(QStringLiteral("B"), nullptr);
    EXPECT_EQ(observer.Codes(), (Codes{4}));
    EXPECT_EQ(node.FindChild(QStringLiteral("A")), nullptr);
    EXPECT_EQ(node.FindChild(QStringLiteral("B")), value);
    value->SetName(QStringLiteral("B"), nullptr);
    EXPECT_EQ(observer.Codes(), (Codes{4})) << "the same name is no change";
    value->DeleteObserver(&observer);
}

TEST(ValueBase, RenamingTellsTheParent19AfterwardsIfItIsStillThere) {
    auto node = std::make_unique<values::Node>(QStringLiteral("N"));
    values::ValueBase* const value = node->CreateChild(Value<int>(), QStringLiteral("A"));
    RecordingObserver ofNode;
    RecordingObserver ofValue;
    node->AddObserver(&ofNode);
    value->AddObserver(&ofValue);
    ofValue.React([&](Observable*, TChangeCode code) {
        if (code == 4) {
            EXPECT_EQ(ofNode.Codes(), Codes());
        }
    });
    value->SetName(QStringLiteral("B"));
    EXPECT_EQ(ofNode.Codes(), (Codes{19}));

    ofValue.React([&](Observable*, TChangeCode code) {
        if (code == 4) node.reset();
    });
    ofNode.Clear();
    value->SetName(QStringLiteral("C"));
    EXPECT_EQ(ofNode.Codes(), (Codes{18}));
}

TEST(ValueBase, ARefusedNameIsTracedAndChangesNothing) {
    values::Node node(QStringLiteral("N"));
    node.CreateChild(Value<int>(), QStringLiteral("Taken"));
    values::ValueBase* const value = node.CreateChild(Value<int>(), QStringLiteral("A"));
    RecordingObserver observer;
    value->AddObserver(&observer);
    for (const QString& name : {QStringLiteral("Taken"), QString(), QStringLiteral("a/b")}) {
        SCOPED_TRACE(name.toStdString());
        const TraceRecorder traces;
        value->SetName(name, nullptr);
        EXPECT_EQ(value->GetName(), QStringLiteral("A"));
        ASSERT_EQ(traces.Records().size(), 1U);
        EXPECT_TRUE(traces.Messages()[0].contains(QStringLiteral("N/A")));
    }
    EXPECT_EQ(observer.Codes(), Codes());
    value->DeleteObserver(&observer);
}

TEST(ValueBase, ADetachedValueMayBeUnnamedButNotHoldASlash) {
    Value<int> value;
    value.SetName(QStringLiteral("A"));
    value.SetName(QString());
    EXPECT_EQ(value.GetName(), QString());
    const TraceRecorder traces;
    value.SetName(QStringLiteral("a/b"));
    EXPECT_EQ(value.GetName(), QString());
    EXPECT_EQ(traces.Records().size(), 1U);
}

TEST(ValueBase, NothingIsTracedWithTheWarningFlagClear) {
    Value<int> value;
    const TraceRecorder traces(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    value.SetName(QStringLiteral("a/b"));
    EXPECT_TRUE(traces.Records().empty());
}

TEST(ValueBase, ChangingTheDeliveryTells4) {
    Value<int> value;
    RecordingObserver observer;
    value.AddObserver(&observer);
    value.SetDelivery(EDelivery::EveryChange);
    value.SetDelivery(EDelivery::EveryChange);
    EXPECT_EQ(observer.Codes(), (Codes{4}));
    value.DeleteObserver(&observer);
}

// Data objects find values by exact type: none may pass for another.
TEST(ValueTypes, AreUnrelated) {
    EXPECT_FALSE((std::is_base_of_v<Value<int>, values::ValueNumeric<int>>));
    const Value<int> plain;
    const values::ValueBase* base = &plain;
    EXPECT_EQ(dynamic_cast<const values::ValueNumeric<int>*>(base), nullptr);
    EXPECT_EQ(dynamic_cast<const Value<bool>*>(base), nullptr);
    EXPECT_EQ(dynamic_cast<const Value<int>*>(base), &plain);
}

}  // namespace
