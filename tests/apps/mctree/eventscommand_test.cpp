// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

#include <apps/common/event.h>

using namespace mctree;

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

Event Make(qint64 number) {
    Event event;
    event.number = number;
    event.time = QDateTime(QDate(2026, 11, 22), QTime(14, 3, 21), Qt::UTC);
    event.severity = EEventSeverity::Warning;
    event.source = S("device");
    event.said = {ECode::DeviceLog, {S("line %1\x07").arg(number)}};
    event.text = event.said.ToEnglish();
    return event;
}

class EventsCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        values::Node& status = AddNode(AddNode(Server(), "MultiChannelServer"), "Status");
        m_event = &Add(status, "Event", new values::Value<QString>());
        m_event->SetDelivery(values::EDelivery::EveryChange);
        m_history = &Add(status, "EventHistory", new values::Value<int>(2000));
        client.recall = [this](quint64 before, int count) {
            VtHistoryPage page;
            const qint64 end = before == 0 ? m_newest + 1 : static_cast<qint64>(before);
            for (qint64 number = end - 1; number > m_kept && page.texts.size() < count; --number) {
                page.texts.prepend(Make(number).ToJson());
                page.next = number > m_kept + 1 ? static_cast<quint64>(number) : 0;
            }
            page.refusal = m_refusal;
            return page;
        };
    }
    static QString Line(int number) {
        return Make(number).time.toLocalTime().toString(S("yyyy-MM-dd HH:mm:ss")) +
               S(" warning device: ORV: line %1\\x07").arg(number);
    }

    values::Value<QString>* m_event = nullptr;
    values::Value<int>* m_history = nullptr;
    QString m_refusal;
    qint64 m_newest = 150;
    qint64 m_kept = 0;  ///< numbers up to this one are kept no more
    int m_writes = 0;
};

TEST_F(EventsCommandTest, PrintsTheLastOnes) {
    EXPECT_TRUE(RunConnected(Words({"events"})).IsDone());
    ASSERT_EQ(Lines().size(), 20);
    EXPECT_EQ(Lines().first(), Line(131));
    EXPECT_EQ(Lines().last(), Line(150));
}

TEST_F(EventsCommandTest, PrintsAsManyAsAskedForAndNoMoreThanThereAre) {
    EXPECT_TRUE(RunConnected(Words({"events", "--count", "3"})).IsDone());
    EXPECT_EQ(Lines().size(), 3);
    output.clear();
    EXPECT_TRUE(Run(Words({"events", "--count", "1000"})).IsDone());
    ASSERT_EQ(Lines().size(), 150);
    EXPECT_EQ(Lines().first(), Line(1));
}

TEST_F(EventsCommandTest, AsJson) {
    EXPECT_TRUE(RunConnected(Words({"events", "--json", "--count", "1"})).IsDone());
    EXPECT_EQ(QString::fromUtf8(output), Make(150).ToJson() + QLatin1Char('\n'));
}

TEST_F(EventsCommandTest, FollowsUntilInterrupted) {
    onWrite = [this] {
        if (++m_writes != 1) return;
        client.Soon([this] {
            Local<values::Value<QString>>("Event").SetValue(Make(150).ToJson());  // which was printed
            Local<values::Value<QString>>("Event").SetValue(Make(151).ToJson());
            client.Disconnect();
        });
    };
    client.ConnectSoon();
    EXPECT_EQ(Run(Words({"events", "--follow", "--count", "1"})).code, EExitCode::NoConnection);
    EXPECT_EQ(Lines(), (QStringList{Line(150), Line(151)}));
}

TEST_F(EventsCommandTest, AsksForWhatItHasMissedWhileItFollows) {
    onWrite = [this] {
        if (++m_writes == 1)
            client.Soon([this] {
                m_newest = 155;
                Local<values::Value<QString>>("Event").SetValue(Make(155).ToJson());
            });
        if (Lines().size() == 6) client.Soon([this] { client.Disconnect(); });
    };
    client.ConnectSoon();
    const Outcome outcome = Run(Words({"events", "--follow", "--count", "1"}));
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(Lines(), (QStringList{Line(150), Line(151), Line(152), Line(153), Line(154), Line(155)}));
    EXPECT_FALSE(outcome.message.contains(S("lost:"))) << outcome.message.toStdString();
}

TEST_F(EventsCommandTest, TellsWhatIsLost) {
    onWrite = [this] {
        if (++m_writes == 1)
            client.Soon([this] {
                m_newest = 155;
                m_kept = 153;
                Local<values::Value<QString>>("Event").SetValue(Make(155).ToJson());
            });
        if (Lines().size() == 3) client.Soon([this] { client.Disconnect(); });
    };
    client.ConnectSoon();
    const Outcome outcome = Run(Words({"events", "--follow", "--count", "1"}));
    EXPECT_EQ(Lines(), (QStringList{Line(150), Line(154), Line(155)}));
    EXPECT_TRUE(outcome.message.startsWith(S("3 events are lost: the server does not keep so many")))
        << outcome.message.toStdString();
}

TEST_F(EventsCommandTest, AServerThatKeepsNoneIsNotAsked) {
    delete m_history;
    client.recall = nullptr;
    const Outcome outcome = RunConnected(Words({"events"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, S("this server keeps no events"));
}

TEST_F(EventsCommandTest, TellsWhyTheyAreRefused) {
    m_refusal = S("not for you");
    const Outcome outcome = RunConnected(Words({"events"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, S("/MultiChannelServer/Status/Event: not for you"));
}

TEST_F(EventsCommandTest, TakesNoPath) {
    Arguments arguments;
    EXPECT_EQ(ParseArguments(Words({"events", "/a"}), {}, &arguments).code, EExitCode::Usage);
    EXPECT_EQ(ParseArguments(Words({"watch", "--follow", "/a"}), {}, &arguments).message,
              S("--follow belongs to events"));
}

}  // namespace
