// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventfeed.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueaccess.h>

#include <tests/apps/mcconsole/eventmaker.h>
#include <tests/support/doubles/fakevtclient.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

namespace {

using eventmaker::Make;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// A server with so many events, whose answers the test lets come.
class RecallingClient final : public FakeVtClient {
  public:
    bool Recall(const QString& path, quint64 before, int count, const IVtHistory::Answer& answer) override {
        EXPECT_EQ(path, S("/MultiChannelServer/Status/Event"));
        asked.push_back(before);
        const qint64 end = before == 0 ? newest + 1 : static_cast<qint64>(before);
        VtHistoryPage page;
        for (qint64 number = end - 1; number >= oldest && page.texts.size() < count; --number) {
            page.texts.prepend(Make(number).ToJson());
            page.next = number > oldest ? static_cast<quint64>(number) : 0;
        }
        waiting.emplace_back(answer, page);
        return true;
    }
    quint64 GetServerEpoch() const override { return epoch; }
    void AnswerOne() {
        const auto next = waiting.front();
        waiting.erase(waiting.begin());
        next.first(next.second);
    }
    void AnswerAll() {
        while (!waiting.empty())
            AnswerOne();
    }

    qint64 oldest = 1;
    qint64 newest = 0;
    quint64 epoch = 1;
    std::vector<quint64> asked;
    std::vector<std::pair<IVtHistory::Answer, VtHistoryPage>> waiting;
};

class EventFeedTest : public testing::Test {
  protected:
    EventFeedTest() {
        QObject::connect(&m_feed, &EventFeed::Came, [this](const std::vector<Event>& events) {
            for (const Event& event : events) {
                m_told.push_back(event.number);
                m_texts << event.Translated();
            }
            ++m_batches;
        });
        QObject::connect(&m_feed, &EventFeed::OlderCame, [this](const std::vector<Event>& events) {
            for (auto event = events.rbegin(); event != events.rend(); ++event)
                m_told.insert(m_told.begin(), event->number);
        });
        QObject::connect(&m_feed, &EventFeed::Restarted, [this] { m_told.clear(); });
        m_event =
            values::ProvideValue<values::Value<QString>>(S("/Server/Status/Event"), QString(), true, nullptr);
        m_event->SetDelivery(values::EDelivery::EveryChange);
    }
    void Offer() {
        values::ProvideValue<values::Value<int>>(S("/Server/Status/EventHistory"), 2000, true, nullptr);
    }
    void Connect() { m_feed.Bind(S("/Server/Status")); }
    /// The server tells the events up to \a newest.
    void Happen(qint64 newest) {
        while (m_client.newest < newest)
            m_event->SetValue(Make(++m_client.newest).ToJson());
    }
    bool WaitForLast(qint64 number) {
        return WaitUntil([&] { return !m_told.empty() && m_told.back() == number; });
    }
    void ExpectTold(qint64 first, qint64 last) {
        ASSERT_EQ(m_told.size(), std::size_t(last - first + 1));
        for (std::size_t i = 0; i < m_told.size(); ++i)
            ASSERT_EQ(m_told[i], first + qint64(i));
    }

    values::Tree m_tree;
    RecallingClient m_client;
    values::Value<QString>* m_event;
    EventFeed m_feed{[this] { return &m_client; }};
    QStringList m_texts;  // of the same
    std::vector<qint64> m_told;
    int m_batches = 0;
};

TEST_F(EventFeedTest, TellsTheLastOnesAtOnceAndOlderOnesOnRequest) {
    m_client.newest = 450;
    Offer();
    Connect();
    m_client.AnswerAll();
    ExpectTold(251, 450);
    EXPECT_TRUE(m_feed.HasOlder());
    m_feed.AskForOlder();
    EXPECT_FALSE(m_feed.HasOlder()) << "on their way";
    m_client.AnswerAll();
    ExpectTold(151, 450);
    m_feed.AskForOlder();
    m_client.AnswerAll();
    m_feed.AskForOlder();
    m_client.AnswerAll();
    ExpectTold(1, 450);
    EXPECT_FALSE(m_feed.HasOlder());
}

TEST_F(EventFeedTest, TellsWhatHappensMeanwhileOnceAndBehindWhatHappenedBefore) {
    m_client.newest = 150;
    Offer();
    Connect();
    Happen(153);
    m_client.AnswerOne();
    Happen(155);
    EXPECT_TRUE(m_told.empty());
    m_client.AnswerAll();
    EXPECT_TRUE(WaitForLast(155));
    ExpectTold(1, 155);
}

TEST_F(EventFeedTest, TellsTheFirstAtOnceAndTogetherWhatComesTogether) {
    m_client.newest = 1;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_batches = 0;
    Happen(101);
    EXPECT_EQ(m_batches, 1);
    ExpectTold(1, 2);
    EXPECT_TRUE(WaitForLast(101));
    EXPECT_EQ(m_batches, 2);
    ExpectTold(1, 101);
}

TEST_F(EventFeedTest, TellsWhatWasMissedWhileThereWasNoConnection) {
    m_client.newest = 10;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_feed.Bind(QString());
    m_client.newest = 320;
    Connect();
    m_client.AnswerAll();
    ExpectTold(1, 320);
}

TEST_F(EventFeedTest, StartsAnewWhereMoreWasMissedThanIsKept) {
    m_client.newest = 10;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_feed.Bind(QString());
    m_client.newest = 5000;
    m_client.oldest = 3001;
    Connect();
    m_client.AnswerAll();
    EXPECT_EQ(m_told.back(), 5000);
    EXPECT_EQ(m_told[m_told.size() - 2000], 3001);
}

TEST_F(EventFeedTest, SaysHowManyAreMissingThatTheServerHasNoMore) {
    m_client.newest = 10;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_feed.Bind(QString());
    m_client.newest = 40;
    m_client.oldest = 31;
    Connect();
    m_client.AnswerAll();
    ASSERT_EQ(m_texts.size(), 21);
    EXPECT_EQ(m_texts[10], S("20 events are missing here: the server does not keep so many"));
    EXPECT_EQ(m_told[11], 31);
    Happen(41);
    EXPECT_TRUE(WaitForLast(41));
    EXPECT_EQ(m_texts.size(), 22);
}

TEST_F(EventFeedTest, KeepsWhatTheServerToldBeforeItWasRestarted) {
    m_client.newest = 3;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_feed.Bind(QString());
    m_client.epoch = 2;
    m_client.newest = 2;
    Connect();
    m_client.AnswerAll();
    EXPECT_EQ(m_told, (std::vector<qint64>{1, 2, 3, 1, 2}));
    Happen(4);
    EXPECT_TRUE(WaitForLast(4));
    EXPECT_EQ(m_told, (std::vector<qint64>{1, 2, 3, 1, 2, 3, 4}));
}

TEST_F(EventFeedTest, LeavesOutWhatAnAnswerSaysTooLate) {
    m_client.newest = 3;
    Offer();
    Connect();
    m_feed.Bind(QString());
    Connect();
    ASSERT_EQ(m_client.waiting.size(), 2U);
    m_client.AnswerAll();
    ExpectTold(1, 3);
}

TEST_F(EventFeedTest, AsksNoServerThatDoesNotOfferIt) {
    m_client.newest = 3;
    Connect();
    Happen(5);
    EXPECT_TRUE(WaitForLast(5));
    EXPECT_TRUE(m_client.asked.empty());
    ExpectTold(4, 5);
}

TEST_F(EventFeedTest, GoesOnWithoutWhatIsRefused) {
    m_client.newest = 3;
    Offer();
    Connect();
    Happen(4);
    m_client.waiting.front().first({S("no"), {}, 0});
    EXPECT_TRUE(WaitForLast(4));
    ExpectTold(4, 4);
}

TEST_F(EventFeedTest, LeavesOutWhatIsNoEvent) {
    m_client.newest = 1;
    Offer();
    Connect();
    m_client.AnswerAll();
    m_event->SetValue(S("no JSON"));
    Happen(2);
    EXPECT_TRUE(WaitForLast(2));
    ExpectTold(1, 2);
}

}  // namespace
