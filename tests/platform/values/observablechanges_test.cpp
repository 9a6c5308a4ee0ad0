// SPDX-License-Identifier: Apache-2.0
// What observers may do while they are told, which is everything.
#include <platform/values/observable.h>

#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

constexpr TChangeCode Code = 42;

/// Four observers 0 to 3 on one observable, which note their numbers; `on(i)` sets what observer i does.
class ObservableChangesTest : public testing::Test {
  protected:
    using Action = std::function<void()>;

    ObservableChangesTest() {
        for (std::size_t i = 0; i < observers.size(); ++i) {
            observers[i].React([this, i](Observable*, TChangeCode) {
                told.push_back(static_cast<int>(i));
                const Action action = actions[i];  // a copy: it may replace itself
                if (action) action();
            });
            observable->AddObserver(&observers[i]);
        }
    }
    void On(std::size_t i, Action action) { actions[i] = std::move(action); }
    /// Does \a action the first time that observer i is told.
    void OnceOn(std::size_t i, Action action) {
        actions[i] = [this, i, action] {
            actions[i] = nullptr;
            action();
        };
    }
    std::vector<int> Notify() {
        told.clear();
        observable->NotifyObservers(Code);
        return told;
    }

    std::unique_ptr<Observable> observable = std::make_unique<Observable>();
    std::array<RecordingObserver, 4> observers;
    std::array<Action, 4> actions;
    std::vector<int> told;
};

using Told = std::vector<int>;

TEST_F(ObservableChangesTest, OneAddedIsToldFromTheNextNotificationOn) {
    RecordingObserver late;
    OnceOn(1, [&] { observable->AddObserver(&late); });
    Notify();
    EXPECT_TRUE(late.Events().empty());
    Notify();
    EXPECT_EQ(late.Codes(), (std::vector<TChangeCode>{Code}));
}

TEST_F(ObservableChangesTest, ManyAddedWhileToldDoNotDisturbTheRest) {
    std::vector<RecordingObserver> late(100);
    OnceOn(0, [&] {
        for (RecordingObserver& observer : late)
            observable->AddObserver(&observer);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 2, 3}));
    for (const RecordingObserver& observer : late)
        EXPECT_TRUE(observer.Events().empty());
    EXPECT_EQ(observable->CountObservers(), 104);
}

TEST_F(ObservableChangesTest, OneAddedByTheOnlyObserverIsNotTold) {
    Observable lonely;
    RecordingObserver late;
    RecordingObserver first([&](Observable*, TChangeCode) { lonely.AddObserver(&late); });
    lonely.AddObserver(&first);
    lonely.NotifyObservers(Code);
    EXPECT_TRUE(late.Events().empty());
}

TEST_F(ObservableChangesTest, OneRemovedAheadIsNotToldAnyMore) {
    OnceOn(0, [&] { observable->DeleteObserver(&observers[2]); });
    EXPECT_EQ(Notify(), (Told{0, 1, 3}));
}

TEST_F(ObservableChangesTest, OneRemovedBehindDoesNotMakeTheNextBeSkipped) {
    OnceOn(2, [&] { observable->DeleteObserver(&observers[0]); });
    EXPECT_EQ(Notify(), (Told{0, 1, 2, 3}));
    EXPECT_EQ(Notify(), (Told{1, 2, 3}));
}

TEST_F(ObservableChangesTest, OneMayRemoveItself) {
    OnceOn(1, [&] { observable->DeleteObserver(&observers[1]); });
    EXPECT_EQ(Notify(), (Told{0, 1, 2, 3}));
    EXPECT_EQ(Notify(), (Told{0, 2, 3}));
}

TEST_F(ObservableChangesTest, AllRemovedEndsTheNotification) {
    OnceOn(1, [&] { observable->DeleteObservers(); });
    EXPECT_EQ(Notify(), (Told{0, 1}));
    EXPECT_EQ(Notify(), Told());
}

TEST_F(ObservableChangesTest, OneRemovedAndAddedAgainIsToldFromTheNextNotificationOn) {
    OnceOn(0, [&] {
        observable->DeleteObserver(&observers[2]);
        observable->AddObserver(&observers[2]);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 3}));
    EXPECT_EQ(Notify(), (Told{0, 1, 3, 2}));
}

TEST_F(ObservableChangesTest, OneRemovedObserverMayBeDestroyed) {
    auto mortal = std::make_unique<RecordingObserver>();
    observable->AddObserver(mortal.get());
    OnceOn(3, [&] {
        observable->DeleteObserver(mortal.get());
        mortal.reset();
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 2, 3}));
}

TEST_F(ObservableChangesTest, OneMovedToTheFrontIsStillToldExactlyOnce) {
    for (const std::size_t moved : {std::size_t(0), std::size_t(1), std::size_t(3)}) {
        SCOPED_TRACE(moved);
        OnceOn(1, [&] { observable->MakeFirstObserver(&observers[moved]); });
        Told sorted = Notify();
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(sorted, (Told{0, 1, 2, 3}));
        EXPECT_EQ(Notify().front(), static_cast<int>(moved));
    }
}

TEST_F(ObservableChangesTest, TheLastOneMovedToTheFrontIsFirst) {
    OnceOn(0, [&] {
        observable->MakeFirstObserver(&observers[2]);
        observable->MakeFirstObserver(&observers[3]);
    });
    Notify();
    EXPECT_EQ(Notify(), (Told{3, 2, 0, 1}));
}

TEST_F(ObservableChangesTest, OneMovedToTheFrontAndThenRemovedIsGone) {
    OnceOn(0, [&] {
        observable->MakeFirstObserver(&observers[3]);
        observable->DeleteObserver(&observers[3]);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 2}));
    EXPECT_EQ(Notify(), (Told{0, 1, 2}));
}

TEST_F(ObservableChangesTest, TheObservableMayBeDestroyed) {
    OnceOn(1, [&] { observable.reset(); });
    EXPECT_EQ(Notify(), (Told{0, 1}));
}

TEST_F(ObservableChangesTest, TheObservableMayBeDestroyedByItsOnlyObserver) {
    auto mortal = std::make_unique<Observable>();
    RecordingObserver killer([&](Observable*, TChangeCode) { mortal.reset(); });
    mortal->AddObserver(&killer);
    mortal->NotifyObservers(Code);
    EXPECT_EQ(killer.Codes().size(), 1U);
}

TEST_F(ObservableChangesTest, TheObservableMayBeDestroyedInANestedNotification) {
    OnceOn(1, [&] {
        OnceOn(2, [&] { observable.reset(); });
        observable->NotifyObservers(Code);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 0, 1, 2}));
}

TEST_F(ObservableChangesTest, ANestedNotificationRunsInFull) {
    OnceOn(1, [&] { observable->NotifyObservers(Code); });
    EXPECT_EQ(Notify(), (Told{0, 1, 0, 1, 2, 3, 2, 3}));
}

TEST_F(ObservableChangesTest, OneAddedIsToldByANestedNotificationThatFollows) {
    RecordingObserver late;
    OnceOn(1, [&] {
        observable->AddObserver(&late);
        observable->NotifyObservers(Code);
    });
    Notify();
    EXPECT_EQ(late.Events().size(), 1U);
}

TEST_F(ObservableChangesTest, OneRemovedInANestedNotificationIsNotToldByTheOuterOne) {
    OnceOn(1, [&] {
        OnceOn(0, [&] { observable->DeleteObserver(&observers[3]); });
        observable->NotifyObservers(Code);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 0, 1, 2, 2}));
}

TEST_F(ObservableChangesTest, AMoveInANestedNotificationWaitsForTheOuterOne) {
    OnceOn(1, [&] {
        OnceOn(0, [&] { observable->MakeFirstObserver(&observers[3]); });
        observable->NotifyObservers(Code);
    });
    EXPECT_EQ(Notify(), (Told{0, 1, 0, 1, 2, 3, 2, 3}));
    EXPECT_EQ(Notify(), (Told{3, 0, 1, 2}));
}

// The same rules against a model that is simple enough to be right: at random, for long.
TEST_F(ObservableChangesTest, RandomAddsAndRemovesKeepTheRules) {
    std::mt19937 random(7);
    Observable subject;
    std::array<RecordingObserver, 12> pool;
    std::vector<std::size_t> order;  // who is registered
    std::set<std::size_t> due;       // who must still be told in the notification under way
    const auto change = [&] {
        const std::size_t i = random() % pool.size();
        const auto found = std::find(order.begin(), order.end(), i);
        if (random() % 2 == 0) {
            subject.AddObserver(&pool[i]);
            if (found == order.end()) order.push_back(i);
        } else {
            subject.DeleteObserver(&pool[i]);
            if (found != order.end()) order.erase(found);
            due.erase(i);
        }
    };
    int count = 0;
    for (std::size_t i = 0; i < pool.size(); ++i)
        pool[i].React([&, i](Observable*, TChangeCode) {
            ++count;
            ASSERT_EQ(due.erase(i), 1U) << "told though removed, added meanwhile, or told before";
            for (auto n = random() % 3; n > 0; --n)
                change();
        });
    for (int round = 0; round < 3000; ++round) {
        change();
        due = std::set<std::size_t>(order.begin(), order.end());
        subject.NotifyObservers(Code);
        ASSERT_TRUE(due.empty()) << "not told, in round " << round;
    }
    EXPECT_GT(count, 3000);
}

}  // namespace
