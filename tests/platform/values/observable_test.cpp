// SPDX-License-Identifier: Apache-2.0
// The plain contract of observables; what observers may do while they are told is in observablechanges_test.
#include <platform/values/observable.h>

#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

constexpr TChangeCode Code = 42;

class ObservableTest : public testing::Test {
  protected:
    /// An observer that notes its number whenever it is told.
    std::unique_ptr<RecordingObserver> Numbered(int number) {
        return std::make_unique<RecordingObserver>(
            [this, number](Observable*, TChangeCode) { told.push_back(number); });
    }

    Observable observable;
    std::vector<int> told;
};

TEST_F(ObservableTest, TellsObserversInTheOrderOfRegistration) {
    std::vector<std::unique_ptr<RecordingObserver>> observers;
    for (int i = 0; i < 20; ++i) {
        observers.push_back(Numbered(i));
        observable.AddObserver(observers.back().get());
    }
    observable.NotifyObservers(Code);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(told.at(static_cast<std::size_t>(i)), i);
    EXPECT_EQ(told.size(), 20U);
}

TEST_F(ObservableTest, PassesItselfAndTheCode) {
    RecordingObserver observer;
    observable.AddObserver(&observer);
    observable.NotifyObservers(Code);
    EXPECT_EQ(observer.Events(), (std::vector<RecordingObserver::Event>{{&observable, Code}}));
}

TEST_F(ObservableTest, AddingTwiceIsOnce) {
    const auto a = Numbered(1);
    const auto b = Numbered(2);
    observable.AddObserver(a.get());
    observable.AddObserver(b.get());
    observable.AddObserver(a.get());
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{1, 2}));
    EXPECT_EQ(observable.CountObservers(), 2);
}

TEST_F(ObservableTest, KnowsWhoObserves) {
    const auto a = Numbered(1);
    const auto b = Numbered(2);
    const auto stranger = Numbered(3);
    observable.AddObserver(a.get());
    observable.AddObserver(b.get());
    EXPECT_TRUE(observable.HasObserver(a.get()));
    EXPECT_TRUE(observable.HasObserver(b.get()));
    EXPECT_FALSE(observable.HasObserver(stranger.get()));
    EXPECT_FALSE(observable.HasObserver(nullptr));
    observable.DeleteObserver(a.get());
    EXPECT_FALSE(observable.HasObserver(a.get()));
}

TEST_F(ObservableTest, AddingNullDoesNothing) {
    observable.AddObserver(nullptr);
    EXPECT_EQ(observable.CountObservers(), 0);
    observable.NotifyObservers(Code);
}

TEST_F(ObservableTest, DeletingAStrangerDoesNothing) {
    const auto a = Numbered(1);
    RecordingObserver stranger;
    observable.AddObserver(a.get());
    observable.DeleteObserver(&stranger);
    observable.DeleteObserver(nullptr);
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{1}));
}

TEST_F(ObservableTest, DeletingKeepsTheOrderOfTheOthers) {
    std::vector<std::unique_ptr<RecordingObserver>> observers;
    for (int i = 0; i < 5; ++i) {
        observers.push_back(Numbered(i));
        observable.AddObserver(observers.back().get());
    }
    observable.DeleteObserver(observers[0].get());
    observable.DeleteObserver(observers[3].get());
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{1, 2, 4}));
}

TEST_F(ObservableTest, DeleteObserversDeletesAll) {
    const auto a = Numbered(1);
    const auto b = Numbered(2);
    observable.AddObserver(a.get());
    observable.AddObserver(b.get());
    observable.DeleteObservers();
    observable.NotifyObservers(Code);
    EXPECT_TRUE(told.empty());
    observable.AddObserver(b.get());
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{2}));
}

TEST_F(ObservableTest, TheOriginatorIsNotTold) {
    const auto a = Numbered(1);
    const auto b = Numbered(2);
    const auto c = Numbered(3);
    for (const auto* observer : {&a, &b, &c})
        observable.AddObserver(observer->get());
    observable.NotifyObservers(Code, b.get());
    EXPECT_EQ(told, (std::vector<int>{1, 3}));
}

TEST_F(ObservableTest, TheOnlyObserverIsNotToldAsOriginator) {
    const auto a = Numbered(1);
    observable.AddObserver(a.get());
    observable.NotifyObservers(Code, a.get());
    EXPECT_TRUE(told.empty());
}

TEST_F(ObservableTest, AnOriginatorThatIsNoObserverChangesNothing) {
    const auto a = Numbered(1);
    RecordingObserver stranger;
    observable.AddObserver(a.get());
    observable.NotifyObservers(Code, &stranger);
    EXPECT_EQ(told, (std::vector<int>{1}));
}

TEST_F(ObservableTest, MakeFirstObserverMovesToTheFront) {
    std::vector<std::unique_ptr<RecordingObserver>> observers;
    for (int i = 0; i < 4; ++i) {
        observers.push_back(Numbered(i));
        observable.AddObserver(observers.back().get());
    }
    observable.MakeFirstObserver(observers[2].get());
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{2, 0, 1, 3}));
}

TEST_F(ObservableTest, MakeFirstObserverOfAStrangerDoesNotAddIt) {
    const auto a = Numbered(1);
    RecordingObserver stranger;
    observable.AddObserver(a.get());
    observable.MakeFirstObserver(&stranger);
    EXPECT_EQ(observable.CountObservers(), 1);
}

TEST_F(ObservableTest, CopiesHaveNoObservers) {
    const auto a = Numbered(1);
    observable.AddObserver(a.get());
    Observable copy(observable);
    copy.NotifyObservers(Code);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(copy.CountObservers(), 0);
    EXPECT_EQ(observable.CountObservers(), 1);
}

TEST_F(ObservableTest, AssignmentLeavesTheObserversOfBothSides) {
    const auto a = Numbered(1);
    const auto b = Numbered(2);
    Observable other;
    observable.AddObserver(a.get());
    other.AddObserver(b.get());
    other = observable;
    other.NotifyObservers(Code);
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{2, 1}));
}

TEST_F(ObservableTest, AThrowingObserverLeavesTheObservableIntact) {
    const auto a = Numbered(1);
    RecordingObserver throwing([](Observable*, TChangeCode) { throw std::runtime_error("no"); });
    const auto c = Numbered(3);
    observable.AddObserver(a.get());
    observable.AddObserver(&throwing);
    observable.AddObserver(c.get());
    EXPECT_THROW(observable.NotifyObservers(Code), std::runtime_error);
    EXPECT_EQ(told, (std::vector<int>{1}));
    observable.DeleteObserver(&throwing);
    observable.NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<int>{1, 1, 3}));
}

TEST_F(ObservableTest, AGuardSeesTheEnd) {
    auto mortal = std::make_unique<Observable>();
    const ObservableGuard outer(*mortal);
    {
        const ObservableGuard inner(*mortal);
        EXPECT_TRUE(inner.IsAlive());
    }
    EXPECT_TRUE(outer.IsAlive());
    mortal.reset();
    EXPECT_FALSE(outer.IsAlive());
}

}  // namespace
