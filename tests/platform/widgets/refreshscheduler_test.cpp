// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/refreshscheduler.h>

#include <platform/widgets/vclabel.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/allocationcounter.h>
#include <tests/support/waituntil.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

namespace {

using values::ValueNumeric;
using widgettest::Add;
using widgettest::BeginPause;
using widgettest::Settle;
using widgettest::Text;

class Client final : public RefreshScheduler::Client {
  public:
    void Refresh() override {
        ++count;
        if (reaction) reaction();
    }
    void Request() { RefreshScheduler::Instance().Request(*this); }

    int count = 0;
    std::function<void()> reaction;
};

class RefreshSchedulerTest : public widgettest::WidgetTest {
  protected:
    RefreshSchedulerTest() { Settle(); }
};

TEST_F(RefreshSchedulerTest, TheFirstIsRefreshedAtOnceAndTheNextOnesTogether) {
    Client first;
    Client second;
    Client third;
    first.Request();
    EXPECT_EQ(first.count, 1);
    second.Request();
    third.Request();
    first.Request();
    first.Request();
    EXPECT_EQ(first.count + second.count + third.count, 1);
    third.reaction = [&] { EXPECT_EQ(second.count, 1) << "in the order in which it was asked for"; };
    EXPECT_TRUE(WaitUntil([&] { return first.count == 2; }));
    EXPECT_EQ(second.count, 1);
    EXPECT_EQ(third.count, 1);
}

TEST_F(RefreshSchedulerTest, RefreshesAtMostThirtyTimesASecondAllTogether) {
    std::vector<Client> clients(10);
    QElapsedTimer time;
    std::vector<qint64> refreshes;
    for (Client& client : clients)
        client.reaction = [&] {
            if (refreshes.empty() || time.elapsed() - refreshes.back() > 15)
                refreshes.push_back(time.elapsed());
        };
    int requests = 0;
    QTimer feed;
    QObject::connect(&feed, &QTimer::timeout, &feed, [&] {
        for (int i = 0; i < 10; ++i)
            for (Client& client : clients)
                client.Request();
        requests += 100;
    });
    time.start();
    feed.start(0);
    ASSERT_TRUE(WaitUntil([&] { return requests >= 10000 && time.elapsed() >= 1000; }));
    feed.stop();
    const qint64 taken = time.elapsed();
    EXPECT_LE(static_cast<qint64>(refreshes.size()), taken * 30 / 1000 + 1);
    EXPECT_GE(refreshes.size(), 5U);
    for (const Client& client : clients)
        EXPECT_LE(client.count, taken * 30 / 1000 + 1);
}

TEST_F(RefreshSchedulerTest, WhatIsAskedForDuringARefreshComesWithTheNext) {
    BeginPause();
    Client client;
    client.reaction = [&] {
        if (client.count == 1) client.Request();
    };
    client.Request();
    RefreshScheduler::Instance().Flush();
    EXPECT_EQ(client.count, 1);
    EXPECT_TRUE(WaitUntil([&] { return client.count == 2; }));
}

TEST_F(RefreshSchedulerTest, WhatIsTakenBackOrDestroyedIsNotRefreshed) {
    BeginPause();
    Client first;
    auto second = std::make_unique<Client>();
    Client third;
    first.Request();
    second->Request();
    third.Request();
    RefreshScheduler::Cancel(first);
    RefreshScheduler::Cancel(first);
    second.reset();
    RefreshScheduler::Instance().Flush();
    EXPECT_EQ(first.count, 0);
    EXPECT_EQ(third.count, 1);
}

TEST_F(RefreshSchedulerTest, ARefreshMayDestroyOthersAndItself) {
    BeginPause();
    auto first = std::make_unique<Client>();
    auto second = std::make_unique<Client>();
    auto third = std::make_unique<Client>();
    Client last;
    for (Client* const client : {first.get(), second.get(), third.get(), &last})
        client->Request();
    second->reaction = [&] {
        EXPECT_EQ(first->count, 1);
        first.reset();
        third.reset();
        second.reset();
    };
    RefreshScheduler::Instance().Flush();
    EXPECT_EQ(last.count, 1);
    EXPECT_EQ(third, nullptr);
}

TEST_F(RefreshSchedulerTest, ASlowRefreshLeavesTimeForOthers) {
    Client slow;
    slow.reaction = [&] {
        QElapsedTimer busy;
        busy.start();
        while (!busy.hasExpired(3 * RefreshScheduler::Interval.count())) {
        }
        slow.Request();
    };
    BeginPause();
    slow.Request();
    int others = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, &other, [&] { ++others; });
    other.start(1);
    ASSERT_TRUE(WaitUntil([&] { return slow.count == 3; }));
    EXPECT_GT(others, 2 * slow.count);  // one each if it left them none, also on a busy machine
    slow.reaction = nullptr;
}

TEST_F(RefreshSchedulerTest, AChangeThatWaitsCostsNoMemory) {
    auto* const number = Add<ValueNumeric<int>>("/a/v", 0, 0, 1000000);
    VCLabel label;
    label.SetText_ValuePath(Text("/a/v"), true);
    BeginPause();
    const AllocationCounter allocations;
    for (int i = 1; i <= 10000; ++i)
        number->SetValue(i);
    EXPECT_EQ(AllocationCounter::Count(), 0U);
}

TEST_F(RefreshSchedulerTest, AWidgetIsPaintedAtMostThirtyTimesASecondAndShowsTheLastContent) {
    auto* const number = Add<ValueNumeric<int>>("/a/v", 0, 0, 2000000000);
    auto* const label = new VCLabel(&m_window);
    label->resize(100, 30);
    label->SetText_ValuePath(Text("/a/v"), true);
    m_window.show();
    Settle();
    const widgettest::PaintCounter paints(*label);
    QElapsedTimer time;
    int changes = 0;
    QTimer feed;
    QObject::connect(&feed, &QTimer::timeout, &feed, [&] {
        for (int i = 0; i < 20; ++i)  // where a turn costs much, too
            number->SetValue(++changes);
    });
    time.start();
    feed.start(0);
    ASSERT_TRUE(WaitUntil([&] { return changes >= 10000 && time.elapsed() >= 500; }));
    feed.stop();
    EXPECT_LE(paints.Count(), time.elapsed() * 30 / 1000 + 2);
    EXPECT_GE(paints.Count(), 3);
    EXPECT_TRUE(WaitUntil([&] { return label->text() == QString::number(changes); }));
}

}  // namespace
