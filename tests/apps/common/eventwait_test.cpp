// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventwait.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds Patience = 5s;

class EventWaitTest : public testing::Test {
  protected:
    /// Posts that something be posted and so on, \a count times, before the last of it is done.
    void PostInTurn(int count) {
        QMetaObject::invokeMethod(
            &m_context,
            [this, count] {
                if (count == 1)
                    m_isDone = true;
                else
                    PostInTurn(count - 1);
            },
            Qt::QueuedConnection);
    }
    bool Wait() {
        return eventwait::Until([this] { return m_isDone; }, Patience);
    }

    QObject m_context;
    bool m_isDone = false;
};

class EventWaitDepth : public EventWaitTest, public testing::WithParamInterface<int> {};

// Nothing else happens here that would end a wait.
TEST_P(EventWaitDepth, EndsWithWhatWasPostedByWhatWasPosted) {
    QElapsedTimer time;
    time.start();
    PostInTurn(GetParam());
    EXPECT_TRUE(Wait());
    EXPECT_FALSE(time.hasExpired(Patience.count()));
}

INSTANTIATE_TEST_SUITE_P(Turns, EventWaitDepth, testing::Range(1, 6));

TEST_F(EventWaitTest, EndsWithItsPatience) {
    EXPECT_FALSE(eventwait::Until([] { return false; }, 1ms));
}

TEST_F(EventWaitTest, LooksAlsoWithoutAnEvent) {
    int looks = 0;
    EXPECT_TRUE(eventwait::Until([&looks] { return ++looks == 5; }, Patience, 1ms));
}

TEST_F(EventWaitTest, DeletesWhatIsToBeDeletedLater) {
    auto* const object = new QObject;
    QObject::connect(object, &QObject::destroyed, &m_context, [this] { m_isDone = true; });
    object->deleteLater();
    EXPECT_TRUE(Wait());
}

}  // namespace
