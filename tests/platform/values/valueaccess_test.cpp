// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valueaccess.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/scrapped.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace values;  // NOLINT(google-build-using-namespace)
using Codes = std::vector<TChangeCode>;

constexpr SelItemDesc Items[] = {{"One", 1.0, 1}, {"Two", 2.0, 2}};

QString LeakMessage(const QString& path) {
    return QStringLiteral(
               "!!!!!!!MEMORY LEAK! The value with the path '%1' could not be created!!! A value of this "
               "name already exists for a different type!!!!!!!!")
        .arg(path);
}

/// Each test runs for each of the six types of value.
template <class V>
class ValueAccessTest : public testing::Test {
  protected:
    /// A value of another type than V.
    using Other = std::conditional_t<std::is_same_v<V, Value<bool>>, Value<int>, Value<bool>>;

    const QString path = QStringLiteral("/Base/Key");
    RecordingObserver observer;
    std::unique_ptr<Tree> tree = std::make_unique<Tree>();
};

using Types = testing::Types<Value<bool>, Value<int>, Value<QString>, ValueNumeric<int>, ValueNumeric<double>,
                             ValueSelection>;
TYPED_TEST_SUITE(ValueAccessTest, Types);

TYPED_TEST(ValueAccessTest, FindGivesNullWhereNothingIs) {
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, &this->observer), nullptr);
}

TYPED_TEST(ValueAccessTest, CreateMakesTheValueAndItsParents) {
    TypeParam* const value = CreateValue<TypeParam>(this->path, &this->observer);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(this->tree->FindItem(this->path), value);
    EXPECT_EQ(value->GetPathName(), this->path);
    EXPECT_EQ(value->CountObservers(), 1);
    EXPECT_TRUE(this->observer.Events().empty());
}

TYPED_TEST(ValueAccessTest, FindAndCreateGiveTheOneThatExistsAndAttach) {
    TypeParam* const value = CreateValue<TypeParam>(this->path, nullptr);
    EXPECT_EQ(value->CountObservers(), 0);
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, nullptr), value);
    EXPECT_EQ(value->CountObservers(), 0);
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, &this->observer), value);
    EXPECT_EQ(value->CountObservers(), 1);
    value->DeleteObservers();
    EXPECT_EQ(CreateValue<TypeParam>(this->path, &this->observer), value);
    EXPECT_EQ(value->CountObservers(), 1);
}

TYPED_TEST(ValueAccessTest, FindDetachesFromTheOldValueFirst) {
    TypeParam* const oldValue = CreateValue<TypeParam>(QStringLiteral("/Base/Old"), &this->observer);
    TypeParam* const value = CreateValue<TypeParam>(this->path, nullptr);
    EXPECT_EQ(FindValue<TypeParam>(this->path, oldValue, nullptr), value);
    EXPECT_EQ(oldValue->CountObservers(), 1) << "without an observer there is nothing to detach";
    EXPECT_EQ(FindValue<TypeParam>(this->path, oldValue, &this->observer), value);
    EXPECT_EQ(oldValue->CountObservers(), 0);
    EXPECT_EQ(FindValue<TypeParam>(QStringLiteral("/nowhere"), value, &this->observer), nullptr);
    EXPECT_EQ(value->CountObservers(), 0) << "detached also where nothing is found";
}

TYPED_TEST(ValueAccessTest, AnotherTypeIsNeverFound) {
    using OtherType = typename TestFixture::Other;
    auto* const other = CreateValue<OtherType>(this->path, nullptr);
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, &this->observer), nullptr);
    EXPECT_EQ(other->CountObservers(), 0);
}

TYPED_TEST(ValueAccessTest, ANodeIsNotFoundAsAValue) {
    this->tree->ProvideNode(this->path);
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, &this->observer), nullptr);
}

TYPED_TEST(ValueAccessTest, WhereAnotherTypeHasTheNameTheNewValueWorksOutsideOfTheTree) {
    using OtherType = typename TestFixture::Other;
    auto* const other = CreateValue<OtherType>(this->path, nullptr);
    TraceRecorder traces;
    const std::unique_ptr<TypeParam> value(CreateValue<TypeParam>(this->path, &this->observer));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetParent(), nullptr);
    EXPECT_EQ(value->GetName(), QStringLiteral("Key"));
    EXPECT_EQ(value->CountObservers(), 1);
    EXPECT_EQ(this->tree->FindItem(this->path), other);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].message, LeakMessage(this->path));
    EXPECT_EQ(traces.Records()[0].file, QStringLiteral("valueframework/valueclasses/valueobservermacros"));
    EXPECT_EQ(traces.Records()[0].line, 299);
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Trace);
}

TYPED_TEST(ValueAccessTest, TheRefusalIsTracedOnlyWithTheWarningFlag) {
    this->tree->ProvideNode(this->path);
    const TraceRecorder traces(0xFF & ~ErrorHandler::TraceWarnings);
    const std::unique_ptr<TypeParam> value(CreateValue<TypeParam>(this->path, nullptr));
    EXPECT_NE(value, nullptr);
    EXPECT_TRUE(traces.Records().empty());
}

TYPED_TEST(ValueAccessTest, APathThatEndsInASlashGivesAnEmptyName) {
    const TraceRecorder traces;
    const QString slashed = QStringLiteral("/Base/Key/");
    const std::unique_ptr<TypeParam> value(CreateValue<TypeParam>(slashed, nullptr));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetName(), QString());
    EXPECT_EQ(this->tree->FindItem(QStringLiteral("/Base")), nullptr);
    EXPECT_EQ(traces.Messages(), (std::vector<QString>{LeakMessage(slashed)}));
}

TYPED_TEST(ValueAccessTest, APathWithoutASlashIsANameBelowTheRoot) {
    TypeParam* const value = CreateValue<TypeParam>(QStringLiteral("Key"), nullptr);
    EXPECT_EQ(value->GetName(), QStringLiteral("Key"));
    EXPECT_EQ(value->GetParent(), this->tree->GetRoot());
    EXPECT_EQ(FindValue<TypeParam>(QStringLiteral("Key"), nullptr, nullptr), value);
}

TYPED_TEST(ValueAccessTest, AValueThatAnObserverDestroysAtOnceIsNull) {
    RecordingObserver killer([this](Observable*, TChangeCode code) {
        if (code == changecode::ChildrenAdded) this->tree->Delete(this->tree->FindItem(this->path));
    });
    this->tree->ProvideNode(QStringLiteral("/Base"))->AddObserver(&killer);
    EXPECT_EQ(CreateValue<TypeParam>(this->path, &this->observer), nullptr);
    EXPECT_EQ(ProvideValue<TypeParam>(this->path, &this->observer), nullptr);
    this->tree->GetRoot()->DeleteObservers();
    this->tree->FindNode(QStringLiteral("/Base"))->DeleteObserver(&killer);
}

TYPED_TEST(ValueAccessTest, WithoutATreeNothingIsFound) {
    this->tree.reset();
    EXPECT_EQ(FindValue<TypeParam>(this->path, nullptr, &this->observer), nullptr);
}

class ProvideValueTest : public testing::Test {
  protected:
    const QString path = QStringLiteral("/Base/Key");
    RecordingObserver observer;
    Tree tree;
};

TEST_F(ProvideValueTest, PlainValues) {
    auto* const value = ProvideValue<Value<QString>>(path, QStringLiteral("new"), false, &observer);
    EXPECT_EQ(value->GetValue(), QStringLiteral("new"));
    EXPECT_EQ(observer.Codes(), (Codes{3})) << "the default is set with the observer attached";
    EXPECT_EQ(ProvideValue<Value<QString>>(path, QStringLiteral("kept"), false, nullptr), value);
    EXPECT_EQ(value->GetValue(), QStringLiteral("new"));
    ProvideValue<Value<QString>>(path, QStringLiteral("overwritten"), true, nullptr);
    EXPECT_EQ(value->GetValue(), QStringLiteral("overwritten"));
}

TEST_F(ProvideValueTest, NumbersGetMinimumMaximumAndContentInThisOrder) {
    auto* const value = ProvideValue<ValueNumeric<int>>(path, 4, 0, 50, false, nullptr);
    EXPECT_EQ(value->GetValue(), 4);
    EXPECT_EQ(value->GetMin(), 0);
    EXPECT_EQ(value->GetMax(), 50);
    value->SetValue(20);
    ProvideValue<ValueNumeric<int>>(path, 1, 2, 3, false, nullptr);
    EXPECT_EQ(value->GetValue(), 20);
    EXPECT_EQ(value->GetMax(), 50);
    value->AddObserver(&observer);
    ProvideValue<ValueNumeric<int>>(path, 150, 100, 200, true, nullptr);
    EXPECT_EQ(value->GetValue(), 150);
    EXPECT_EQ(observer.Codes(), (Codes{4, 3, 4, 3}));
}

TEST_F(ProvideValueTest, Doubles) {
    const auto* const value = ProvideValue<ValueNumeric<double>>(path, 3e7, 3e5, 3e9, false, nullptr);
    EXPECT_EQ(value->GetValue(), 3e7);
    EXPECT_EQ(value->GetMin(), 3e5);
    EXPECT_EQ(value->GetMax(), 3e9);
}

TEST_F(ProvideValueTest, SelectionsGetItemsButTheDefaultIndexIsNotApplied) {
    auto* const value = ProvideValue<ValueSelection>(path, 1, Items, 2, false, nullptr);
    EXPECT_EQ(value->Count(), 2);
    EXPECT_EQ(value->GetCurrentIndex(), -1);
    value->SelectIndex(1);
    ProvideValue<ValueSelection>(path, 0, Items, 2, true, nullptr);
    EXPECT_EQ(value->Count(), 2);
    EXPECT_EQ(value->GetCurrentIndex(), 1);
}

TEST_F(ProvideValueTest, AnExistingSelectionKeepsItsItems) {
    auto* const value = CreateValue<ValueSelection>(path, nullptr);
    value->AddItem(QStringLiteral("Own"), 0.0, 9, nullptr);
    ProvideValue<ValueSelection>(path, 1, Items, 2, false, &observer);
    EXPECT_EQ(value->Count(), 1);
    EXPECT_EQ(value->CountObservers(), 1);
}

TEST_F(ProvideValueTest, OverwritingSurvivesAnObserverThatDestroysTheValue) {
    auto* const value = ProvideValue<ValueNumeric<int>>(path, 5, 0, 10, false, nullptr);
    RecordingObserver killer([this](Observable*, TChangeCode code) {
        if (code == changecode::DescriptionChanged) tree.Delete(tree.FindItem(path));
    });
    value->AddObserver(&killer);
    EXPECT_EQ(ProvideValue<ValueNumeric<int>>(path, 5, 1, 9, true, nullptr), nullptr);
}

/// An item that only stands for another one.
class Wrapper final : public TreeItem {
  public:
    explicit Wrapper(TreeItem* wrapped) : m_wrapped(wrapped) {}
    Observable* GetObservable() override {
        return m_wrapped != nullptr ? m_wrapped->GetObservable() : nullptr;
    }

  private:
    void NotifyGoingAway() override {}
    TreeItem* m_wrapped;
};

TEST(NotifyInitially, TellsAPlainValuesStateDescriptionAndContent) {
    Value<int> value;
    RecordingObserver observer;
    NotifyInitially(&value, &observer);
    EXPECT_EQ(observer.Events(),
              (std::vector<RecordingObserver::Event>{{&value, 2}, {&value, 4}, {&value, 3}}));
}

TEST(NotifyInitially, TellsTheItemsOfASelectionToo) {
    ValueSelection selection;
    RecordingObserver observer;
    NotifyInitially(&selection, &observer);
    EXPECT_EQ(observer.Codes(), (Codes{2, 4, 7, 3}));
}

TEST(NotifyInitially, TellsANode) {
    Node node;
    RecordingObserver observer;
    NotifyInitially(&node, &observer);
    EXPECT_EQ(observer.Codes(), (Codes{2, 4, 3}));
}

TEST(NotifyInitially, TellsOfWhatAnItemWraps) {
    Value<int> value;
    Wrapper wrapper(&value);
    RecordingObserver observer;
    NotifyInitially(&wrapper, &observer);
    EXPECT_EQ(observer.Events(),
              (std::vector<RecordingObserver::Event>{{&value, 2}, {&value, 4}, {&value, 3}}));
}

TEST(NotifyInitially, DoesNothingWithoutItemObserverOrObservable) {
    Value<int> value;
    Wrapper empty(nullptr);
    RecordingObserver observer;
    NotifyInitially(nullptr, &observer);
    NotifyInitially(&value, nullptr);
    NotifyInitially(&empty, &observer);
    EXPECT_TRUE(observer.Events().empty());
}

TEST(NotifyInitially, EndsWhenTheObserverDestroysTheItem) {
    auto value = std::make_unique<Value<int>>();
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code == changecode::DescriptionChanged) value.reset();
    });
    NotifyInitially(value.get(), &observer);
    EXPECT_EQ(observer.Codes(), (Codes{2, 4}));
}

/// Ends itself, as observers do, when it is told of a description.
class Fleeting : public IObserver {
  public:
    explicit Fleeting(Codes* codes) : m_codes(codes) {}
    void Update(Observable* source, TChangeCode code) override {
        m_codes->push_back(code);
        if (code != changecode::DescriptionChanged) return;
        source->DeleteObserver(this);
        delete this;
    }

  private:
    Codes* m_codes;
};

TEST(NotifyInitially, EndsWhenTheObserverDestroysItself) {
    Value<int> value;
    Codes codes;
    auto* const observer = new Scrapped<Fleeting>(&codes);
    value.AddObserver(observer);
    NotifyInitially(&value, observer);
    EXPECT_EQ(codes, (Codes{2, 4}));
}

TEST(NotifyInitially, EndsWhenTheObserverTurnsAwayFromTheItem) {
    Value<int> value;
    RecordingObserver observer([&](Observable* source, TChangeCode) { source->DeleteObserver(&observer); });
    value.AddObserver(&observer);
    NotifyInitially(&value, &observer);
    EXPECT_EQ(observer.Codes(), (Codes{2}));
}

}  // namespace
