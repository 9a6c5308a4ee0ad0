// SPDX-License-Identifier: Apache-2.0
// Who observes something by an observation neither uses it after its end nor is told after its own.
#include <platform/values/observation.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace {

using Number = values::Value<int>;

class AnObservation : public testing::Test {
  protected:
    Number m_number;
    RecordingObserver m_observer;
};

TEST_F(AnObservation, IsToldFromItsBeginningToItsEnd) {
    Observation<Number> observed(m_observer);
    EXPECT_FALSE(observed);
    observed.Begin(&m_number);
    EXPECT_EQ(observed.Get(), &m_number);
    m_number.SetValue(1);
    observed.End();
    EXPECT_FALSE(observed);
    m_number.SetValue(2);
    EXPECT_EQ(m_observer.Codes(), std::vector<TChangeCode>{changecode::ContentChanged});
}

TEST_F(AnObservation, EndsWithItself) {
    {
        const Observation<Number> observed(m_observer, &m_number);
        EXPECT_EQ(m_number.CountObservers(), 1);
    }
    EXPECT_EQ(m_number.CountObservers(), 0);
}

TEST_F(AnObservation, LeavesOneForAnother) {
    Number other;
    Observation<Number> observed(m_observer, &m_number);
    observed.Begin(&other);
    EXPECT_EQ(m_number.CountObservers(), 0);
    EXPECT_TRUE(observed.Is(&other));
    EXPECT_FALSE(observed.Is(&m_number));
    observed.Begin(nullptr);
    EXPECT_EQ(other.CountObservers(), 0);
    EXPECT_FALSE(observed.Is(nullptr));
}

TEST_F(AnObservation, PassesOnWhenItIsMoved) {
    Observation<Number> first(m_observer, &m_number);
    Observation<Number> second = std::move(first);
    EXPECT_EQ(m_number.CountObservers(), 1);
    Number other;
    Observation<Number> third(m_observer, &other);
    third = std::move(second);
    EXPECT_EQ(other.CountObservers(), 0);
    EXPECT_EQ(m_number.CountObservers(), 1);
    EXPECT_EQ(third.Get(), &m_number);
}

TEST_F(AnObservation, LetsGoOfAValueThatGoesAndNotOfOneThatIsStale) {
    auto value = std::make_unique<Number>();
    Observation<Number> observed(m_observer);
    m_observer.React([&](Observable* source, TChangeCode code) { observed.EndIfGoingAway(source, code); });
    observed.Begin(value.get());
    value->SetState(values::Stale);
    EXPECT_TRUE(observed);
    value->SetValue(3);
    EXPECT_TRUE(observed);
    value.reset();
    EXPECT_FALSE(observed);
}

TEST_F(AnObservation, LetsGoOfANodeThatGoesAndNotOfOneWhoseChildrenGo) {
    values::Tree tree;
    Observation<values::Node> observed(m_observer, tree.ProvideNode(QStringLiteral("/a")));
    values::Node* const child = tree.ProvideNode(QStringLiteral("/a/b"));
    m_observer.React([&](Observable* source, TChangeCode code) { observed.EndIfGoingAway(source, code); });
    tree.Delete(child);
    EXPECT_TRUE(observed);
    tree.Delete(observed.Get());
    EXPECT_FALSE(observed);
}

TEST_F(AnObservation, IsNotEndedByTheEndOfAnother) {
    auto other = std::make_unique<Number>();
    Observation<Number> observed(m_observer, &m_number);
    other->AddObserver(&m_observer);
    m_observer.React([&](Observable* source, TChangeCode code) { observed.EndIfGoingAway(source, code); });
    other.reset();
    EXPECT_TRUE(observed);
}

TEST_F(AnObservation, EndsWithThePlaceInAContainer) {
    std::map<const Observable*, Observation<Number>> observed;
    observed.emplace(&m_number, Observation<Number>(m_observer, &m_number));
    EXPECT_EQ(m_number.CountObservers(), 1);
    observed.clear();
    EXPECT_EQ(m_number.CountObservers(), 0);
}

}  // namespace
