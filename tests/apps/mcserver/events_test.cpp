// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverfixture.h>

#include <apps/common/event.h>
#include <apps/mcserver/events/eventhistory.h>
#include <apps/mcserver/log/peertext.h>

#include <vector>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// What the server tells as events, and beside answers.
class EventsTest : public ServerTest {
  protected:
    /// The events since the last call, the oldest first.
    std::vector<Event> TakeEvents() {
        std::vector<Event> events;
        for (const EventJournal::Entry& entry : m_server->GetLog().GetJournal().GetEntries()) {
            const std::optional<Event> event = Event::FromJson(entry.json);
            EXPECT_TRUE(event) << entry.json.toStdString();
            if (event && event->number > m_taken) events.push_back(*event);
        }
        if (!events.empty()) m_taken = events.back().number;
        return events;
    }
    /// The only one of the \a code since the last call.
    Event TakeOnly(const char* code) {
        std::vector<Event> found;
        for (const Event& event : TakeEvents())
            if (event.code == QLatin1String(code)) found.push_back(event);
        EXPECT_EQ(found.size(), 1U) << code;
        return found.empty() ? Event() : found.front();
    }
    CodedText AnswerCode(const QString& mpxOrv) {
        return CodedText::FromJsonText(Text(Dynamic(mpxOrv, S("Request/AnswerCode")))).value_or(CodedText());
    }

    const QString m_name = S("MpxORVhostA_receiver");
    const QString m_who = S("receiver on hostA (127.0.0.1:50001)");

  private:
    qint64 m_taken = 0;
};

TEST_F(EventsTest, TheValueHoldsTheLastOne) {
    Start();
    m_server->GetLog().Write(ECode::ConfigSaved);
    const std::optional<Event> event = Event::FromJson(StatusText(S("Event")));
    ASSERT_TRUE(event);
    EXPECT_EQ(event->text, S("the configuration is saved"));
    EXPECT_EQ(event->source, S("config"));
    EXPECT_EQ(event->time, m_clock.Utc());
    EXPECT_EQ(event->number, m_server->GetLog().GetJournal().GetEntries().back().number);
}

TEST_F(EventsTest, TheTextIsTheLineOfTheLog) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    TakeEvents();
    TakeLog();
    Use(peer, m_name);
    Disconnect(peer);
    QStringList texts;
    for (const Event& event : TakeEvents())
        texts << event.text;
    EXPECT_EQ(texts, TakeLog());
    EXPECT_EQ(texts.size(), 3);
}

TEST_F(EventsTest, NumbersRiseByOneAndOnlyTheLastAreKept) {
    Start();
    for (int i = 0; i < EventJournal::MaxKept + 10; ++i)
        m_server->GetLog().Write(ECode::ConfigSaved);
    const auto& entries = m_server->GetLog().GetJournal().GetEntries();
    ASSERT_EQ(entries.size(), std::size_t(EventJournal::MaxKept));
    for (std::size_t i = 1; i < entries.size(); ++i)
        ASSERT_EQ(entries[i].number, entries[i - 1].number + 1);
}

TEST_F(EventsTest, NobodyWritesWhatTheServerTells) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    Use(peer, m_name);
    for (const QString& path :
         {S("/MultiChannelServer/Status/Event"), Dynamic(m_name, S("Request/AnswerCode"))})
        EXPECT_NE(Write<values::Value<QString>>(peer, path, S("forged")), QString()) << path.toStdString();
}

TEST_F(EventsTest, ATuningIsToldWithWhoAskedForIt) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    Use(peer, m_name);
    TakeEvents();
    TakeLog();
    Tune(peer, m_name, 121.5e6);
    const Event event = TakeOnly("tuned");
    EXPECT_EQ(event.text, S("MpxORVhostA_receiver is tuned to 121.5 MHz"));
    EXPECT_EQ(event.source, S("MpxORV ") + m_name);
    EXPECT_EQ(event.who, m_who);
    EXPECT_EQ(event.severity, EEventSeverity::Info);
    ASSERT_EQ(event.said.GetArguments().size(), 2U);
    EXPECT_EQ(event.said.GetArguments()[0], CodedText(S("121.5 MHz")));
    EXPECT_EQ(TakeLog(), QStringList()) << "the log has no line for it";
}

TEST_F(EventsTest, ARefusalHasTheLineOfTheLogAndTheReasonByCode) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    const VtPeer other = Connect(S("other"));
    Use(peer, m_name);
    Switch(other, m_name, S("MayCal"), false);
    TakeEvents();
    TakeLog();
    Push(peer, m_name, S("Calibrate"));
    const Event event = TakeOnly("request-refused");
    EXPECT_EQ(QStringList{event.text}, TakeLog());
    EXPECT_EQ(event.text, S("MpxORVhostA_receiver: refused: needs MayCal"));
    EXPECT_EQ(event.severity, EEventSeverity::Notice);
    EXPECT_EQ(Answer(m_name), S("refused: needs MayCal"));
    EXPECT_EQ(AnswerCode(m_name), event.said.GetArguments().at(1));
}

TEST_F(EventsTest, APolicyIsToldWithFromAndToAndByWhom) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    const VtPeer other = Connect(S("other"));
    Use(peer, m_name);
    TakeEvents();
    Switch(other, m_name, S("MayCal"), true);
    EXPECT_EQ(TakeOnly("policy-given").text,
              S("MayCal of MpxORVhostA_receiver is switched from off to on, by other on hostA "
                "(127.0.0.1:50002)"));
    Switch(other, m_name, S("MayCal"), false);
    const Event taken = TakeOnly("policy-taken");
    EXPECT_EQ(taken.text, S("MayCal of MpxORVhostA_receiver is switched from on to off, by other on hostA "
                            "(127.0.0.1:50002)"));
    EXPECT_EQ(taken.who, S("other on hostA (127.0.0.1:50002)"));
}

TEST_F(EventsTest, WhatEndsByItselfIsAWarning) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    Use(peer, m_name);
    Tune(peer, m_name, 121.5e6);
    TakeEvents();
    m_device->Disconnect();
    const Event event = TakeOnly("request-ended");
    EXPECT_EQ(event.text, S("MpxORVhostA_receiver: ended: the ORV is not connected"));
    EXPECT_EQ(event.severity, EEventSeverity::Warning);
    EXPECT_EQ(Answer(m_name), S("ended: the ORV is not connected"));
    EXPECT_EQ(AnswerCode(m_name).ToEnglish(), Answer(m_name));
}

TEST_F(EventsTest, AKeyOfTheConfigurationIsToldWithOldAndNewAndByWhom) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    TakeEvents();
    TakeLog();
    EXPECT_EQ(Write<values::Value<QString>>(peer, S("/MultiChannelServer/Config/DeviceName"), S("mast <2>")),
              QString());
    const Event event = TakeOnly("config-changed");
    EXPECT_EQ(event.said.GetArguments().at(0), CodedText(S("DeviceName")));
    EXPECT_EQ(event.said.GetArguments().at(2), CodedText(S("'mast (2)'")));
    EXPECT_EQ(event.who, m_who);
    EXPECT_EQ(TakeLog(), QStringList());
}

TEST_F(EventsTest, ASecretIsNotTold) {
    values::ProvideValue<values::Value<QString>>(S("/MultiChannelServer/Config/DevicePassword"), S("old"),
                                                 true, nullptr);
    Start();
    const VtPeer peer = Connect(S("receiver"));
    TakeEvents();
    Write<values::Value<QString>>(peer, S("/MultiChannelServer/Config/DevicePassword"), S("hunter2"));
    const std::vector<Event> events = TakeEvents();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].code, S("config-secret-changed"));
    EXPECT_FALSE(events[0].ToJson().contains(S("hunter2")));
    EXPECT_FALSE(events[0].ToJson().contains(S("old")));
}

TEST_F(EventsTest, AClientCannotFillThem) {
    Start();
    const VtPeer peer = Connect(S("receiver"));
    Use(peer, m_name);
    TakeEvents();
    for (int i = 0; i < 1000; ++i)
        Tune(peer, m_name, 121.5e6 + i * 1000);
    EXPECT_LE(int(TakeEvents().size()), LogLimiter::LogRates.burst);
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_EQ(TakeOnly("events-left-out").text,
              S("900 events left out, most of them of MpxORVhostA_receiver"));
}

TEST_F(EventsTest, TooLongATextIsCut) {
    Start();
    TakeEvents();
    m_server->OnLog(QString(100000, QLatin1Char('x')));
    const std::vector<Event> events = TakeEvents();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].text.size(), EventJournal::MaxTextLength);
    EXPECT_LE(events[0].ToJson().size(), EventJournal::MaxJsonLength);
}

TEST_F(EventsTest, LosingTheDeviceIsAnAlarmAndLettingItGoIsNot) {
    Start();
    TakeEvents();
    m_server->OnConnectionChanged(false, {ECode::DeviceLost, {CodedText(ECode::DeviceDoesNotAnswer)}});
    EXPECT_EQ(TakeEvents().front().severity, EEventSeverity::Alarm);
    m_server->OnConnectionChanged(false, ECode::DeviceLetGo);
    EXPECT_EQ(TakeEvents().front().severity, EEventSeverity::Notice);
}

class EventHistoryTest : public EventsTest {
  protected:
    /// Asks as a client does, and hands on the numbers of what comes.
    std::vector<qint64> Ask(quint64 before, int count, int length = 1000000, const char* path = nullptr) {
        std::vector<qint64> numbers;
        m_history.Recall({path != nullptr ? S(path) : EventJournal::Path(), before, count, length},
                         [&](const VtHistoryPage& page) {
                             m_page = page;
                             for (const QString& text : page.texts)
                                 numbers.push_back(Event::FromJson(text).value_or(Event()).number);
                         });
        return numbers;
    }
    void Write(int count) {
        for (int i = 0; i < count; ++i)
            m_server->GetLog().Write(ECode::ConfigSaved);
    }

    EventHistory m_history{m_server->GetLog().GetJournal()};
    VtHistoryPage m_page;
};

TEST_F(EventHistoryTest, IsOfferedInTheStatus) {
    const auto* const value =
        values::FindValue<values::Value<int>>(S("/MultiChannelServer/Status/EventHistory"), nullptr, nullptr);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetValue(), 2000);
}

TEST_F(EventHistoryTest, GivesTheLastOnesAndThoseBefore) {
    Write(10);
    EXPECT_EQ(Ask(0, 3), (std::vector<qint64>{8, 9, 10}));
    EXPECT_EQ(m_page.next, 8U);
    EXPECT_EQ(Ask(m_page.next, 3), (std::vector<qint64>{5, 6, 7}));
    EXPECT_EQ(Ask(3, 100), (std::vector<qint64>{1, 2}));
    EXPECT_EQ(m_page.next, 0U);
    EXPECT_EQ(Ask(1, 100), std::vector<qint64>());
    EXPECT_EQ(m_page.refusal, QString());
    EXPECT_EQ(Ask(1000, 1), std::vector<qint64>{10});
    EXPECT_EQ(Ask(0, 0), std::vector<qint64>());
}

TEST_F(EventHistoryTest, GivesOnlyWhatIsKept) {
    Write(EventJournal::MaxKept + 5);
    EXPECT_EQ(Ask(6, 100), std::vector<qint64>());
    EXPECT_EQ(Ask(8, 100), (std::vector<qint64>{6, 7}));
    EXPECT_EQ(m_page.next, 0U);
}

TEST_F(EventHistoryTest, GivesNoMoreThanThereIsRoomFor) {
    Write(10);
    const int length = m_server->GetLog().GetJournal().GetEntries().back().json.size();
    EXPECT_EQ(Ask(0, 100, 2 * length), (std::vector<qint64>{9, 10}));
    EXPECT_EQ(m_page.next, 9U);
}

TEST_F(EventHistoryTest, OfOtherValuesNothingIsKept) {
    EXPECT_EQ(Ask(0, 1, 1000, "/MultiChannelServer/Status/LogMessage"), std::vector<qint64>());
    EXPECT_EQ(m_page.refusal, S("nothing is kept of '/MultiChannelServer/Status/LogMessage'"));
}

}  // namespace
