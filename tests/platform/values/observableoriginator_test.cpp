// SPDX-License-Identifier: Apache-2.0
// Few observers, of which one is the originator: then there may be one left to be told, and it may do
// everything too.
#include <platform/values/observable.h>

#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

constexpr TChangeCode Code = 42;

/// Two observers; the parameter is the place of the one that is the originator.
class TwoObservers : public testing::TestWithParam<std::size_t> {
  protected:
    TwoObservers() {
        for (RecordingObserver& observer : observers)
            observable->AddObserver(&observer);
    }
    RecordingObserver& Originator() { return observers[GetParam()]; }
    RecordingObserver& Other() { return observers[1 - GetParam()]; }
    void Notify() { observable->NotifyObservers(Code, &Originator()); }

    std::unique_ptr<Observable> observable = std::make_unique<Observable>();
    std::array<RecordingObserver, 2> observers;
};

TEST_P(TwoObservers, TheOtherIsTold) {
    Notify();
    EXPECT_EQ(Other().Events(), (std::vector<RecordingObserver::Event>{{observable.get(), Code}}));
    EXPECT_TRUE(Originator().Events().empty());
}

TEST_P(TwoObservers, BothAreToldForAStrangerAndForNobody) {
    RecordingObserver stranger;
    observable->NotifyObservers(Code, &stranger);
    observable->NotifyObservers(Code);
    EXPECT_EQ(Other().Codes().size(), 2U);
    EXPECT_EQ(Originator().Codes().size(), 2U);
}

TEST_P(TwoObservers, TheOtherMayDestroyTheObservable) {
    Other().React([this](Observable*, TChangeCode) { observable.reset(); });
    Notify();
    EXPECT_EQ(Other().Codes().size(), 1U);
}

TEST_P(TwoObservers, TheOtherMayRemoveBoth) {
    Other().React([this](Observable*, TChangeCode) { observable->DeleteObservers(); });
    Notify();
    EXPECT_EQ(observable->CountObservers(), 0);
    Notify();
    EXPECT_EQ(Other().Codes().size(), 1U);
}

TEST_P(TwoObservers, OneThatTheOtherAddsIsToldFromTheNextNotificationOn) {
    RecordingObserver late;
    Other().React([&](Observable*, TChangeCode) { observable->AddObserver(&late); });
    Notify();
    EXPECT_TRUE(late.Events().empty());
    Notify();
    EXPECT_EQ(late.Codes().size(), 1U);
}

TEST_P(TwoObservers, ANotificationByTheOtherRunsInFull) {
    bool isNested = false;
    Other().React([&](Observable*, TChangeCode) {
        if (!std::exchange(isNested, true)) observable->NotifyObservers(Code + 1);
    });
    Notify();
    EXPECT_EQ(Other().Codes(), (std::vector<TChangeCode>{Code, Code + 1}));
    EXPECT_EQ(Originator().Codes(), (std::vector<TChangeCode>{Code + 1}));
}

TEST_P(TwoObservers, OneMovedByTheOtherIsTheFirstFromThenOn) {
    std::vector<RecordingObserver*> told;
    Originator().React([&](Observable*, TChangeCode) { told.push_back(&Originator()); });
    Other().React([&](Observable*, TChangeCode) {
        told.push_back(&Other());
        observable->MakeFirstObserver(&observers[1]);
    });
    Notify();
    EXPECT_EQ(told, (std::vector<RecordingObserver*>{&Other()}));
    told.clear();
    observable->NotifyObservers(Code);
    EXPECT_EQ(told, (std::vector<RecordingObserver*>{&observers[1], &observers[0]}));
}

TEST_P(TwoObservers, InANotificationUnderWayThatGoesOnAsItShould) {
    RecordingObserver third;
    bool isNested = false;
    observers[0].React([&](Observable*, TChangeCode) {
        if (std::exchange(isNested, true)) return;
        observable->DeleteObserver(&third);
        Notify();
        observable->AddObserver(&third);
    });
    observable->AddObserver(&third);
    observable->NotifyObservers(Code + 1);
    EXPECT_TRUE(third.Events().empty()) << "it was removed and added again";
    EXPECT_EQ(Other().Codes().size(), 2U) << "by the nested one and by the outer one";
    EXPECT_EQ(Originator().Codes().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Originator, TwoObservers, testing::Values(0U, 1U),
                         [](const auto& row) { return row.param == 0 ? "First" : "Second"; });

// Against a model that is simple enough to be right, with so few that two are often left.
TEST(ObservableOriginatorTest, RandomChangesWithAnOriginatorKeepTheRules) {
    std::mt19937 random(11);
    Observable subject;
    std::array<RecordingObserver, 3> pool;
    std::set<std::size_t> registered;
    std::set<std::size_t> due;  // who must still be told in the notification under way
    const auto change = [&] {
        const std::size_t i = random() % pool.size();
        if (random() % 3 != 0) {
            subject.AddObserver(&pool[i]);
            registered.insert(i);
        } else {
            subject.DeleteObserver(&pool[i]);
            registered.erase(i);
            due.erase(i);
        }
    };
    for (std::size_t i = 0; i < pool.size(); ++i)
        pool[i].React([&, i](Observable*, TChangeCode) {
            ASSERT_EQ(due.erase(i), 1U)
                << "told though removed, added meanwhile, the originator, or told before";
            for (auto n = random() % 2; n > 0; --n)
                change();
        });
    int countOfTwo = 0;
    for (int round = 0; round < 5000; ++round) {
        change();
        const std::size_t originator = random() % (pool.size() + 1);
        countOfTwo += registered.size() == 2 && registered.count(originator) != 0 ? 1 : 0;
        due = registered;
        due.erase(originator);
        subject.NotifyObservers(Code, originator < pool.size() ? &pool[originator] : nullptr);
        ASSERT_TRUE(due.empty()) << "not told, in round " << round;
    }
    EXPECT_GT(countOfTwo, 500);
}

}  // namespace
