// SPDX-License-Identifier: Apache-2.0
// What a session over NATS does about what a network of others may do to it. The bus is in memory.
#include <platform/nats/session/natslistener.h>
#include <platform/nats/session/openings.h>
#include <tests/platform/nats/onesession.h>

#include <gmock/gmock.h>

namespace {

using nats::Greeting;
using nats::NatsSession;
using nats::Packet;
using nats::SessionSeal;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(OneSession, PacketsInOrderAreAStreamOfMessages) {
    Give(Packet::EKind::Data, 1, 0, Frame("one") + Frame("two").left(2));
    Give(Packet::EKind::Data, 2, 0, Frame("two").mid(2) + Frame(""));
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one"), QByteArray("two"), QByteArray("")));
}

TEST_F(OneSession, SendsNoMoreThanThePeerHasRoomFor) {
    m_channel.Send(QByteArray(5000, 'x'));
    m_channel.Flush();
    EXPECT_EQ(m_bus->PublishedBytes() - nats::Packet::HeadSize - SessionSeal::TagSize, 1000);
    EXPECT_EQ(m_channel.Unsent(), 4004);
    Give(Packet::EKind::Credit, 1, 600);
    EXPECT_EQ(m_channel.Unsent(), 3404);
    Give(Packet::EKind::Credit, 2, 1600);
    Give(Packet::EKind::Credit, 3, 2600);
    Give(Packet::EKind::Credit, 4, 3600);
    Give(Packet::EKind::Credit, 5, 4600);
    EXPECT_EQ(m_channel.Unsent(), 0);
}

TEST_F(OneSession, AnAcknowledgementOfWhatWasNotSentEndsIt) {
    Give(Packet::EKind::Credit, 1, 1);
    EXPECT_THAT(m_listener.closings,
                ElementsAre(QStringLiteral("the peer acknowledges what was not sent over NATS")));
}

TEST_F(OneSession, APeerThatSendsMoreThanItMayEndsIt) {
    m_channel.SetListener(nullptr);
    const QByteArray body(60'000, '\0');
    for (quint64 i = 1; i <= 4; ++i)
        Give(Packet::EKind::Data, i, 0, body);
    EXPECT_TRUE(m_channel.IsOpen());
    m_channel.SetListener(&m_listener);
    m_channel.SetListener(nullptr);
    Give(Packet::EKind::Data, 5, 0, body);
    EXPECT_FALSE(m_channel.IsOpen());
}

TEST_F(OneSession, WhatWasConsumedIsToldInTime) {
    m_channel.SetMaxMessage(1 << 20);
    const QByteArray message = Frame(QByteArray(100, 'x'));
    quint64 number = 0;
    while (!Sent(Packet::EKind::Credit) && number < 10'000) {
        Give(Packet::EKind::Data, ++number, 0, message);
        RunTurns(1);
    }
    ASSERT_TRUE(Sent(Packet::EKind::Credit));
    EXPECT_GE(Sent(Packet::EKind::Credit)->consumed, NatsSession::Window / 4);
    EXPECT_LE(Sent(Packet::EKind::Credit)->consumed, NatsSession::Window / 2);
}

TEST_F(OneSession, WhatAStrangerPublishesThereChangesNothingAndIsToldOnce) {
    GiveData(1, "one");
    const QByteArray frame = Frame("forged") + QByteArray(SessionSeal::TagSize, 'x');
    for (const auto kind :
         {Packet::EKind::Data, Packet::EKind::End, Packet::EKind::Credit, Packet::EKind::Ended,
          Packet::EKind::Open, Packet::EKind::Accept, Packet::EKind::Number, Packet::EKind::Refuse})
        m_session->OnPacket({kind, 2, 0, View(frame)});
    m_session->OnPacket({Packet::EKind::Data, 2, 0, {}});
    GiveData(2, "two");
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one"), QByteArray("two")));
    EXPECT_THAT(m_listener.closings, IsEmpty());
    ASSERT_THAT(m_traces.Records(), SizeIs(1));
    EXPECT_EQ(m_traces.Records()[0].message.toStdString(),
              "Somebody else publishes in the session over NATS at down");
}

TEST_F(OneSession, APacketWhoseHeadWasChangedIsNone) {
    const std::string sealed(m_peer->Seal({Packet::EKind::Data, 1, 0, View(Frame("one"))}));
    Packet packet = *Packet::Read(sealed);
    packet.number = 2;
    m_session->OnPacket(packet);
    packet.number = 1;
    packet.kind = Packet::EKind::End;
    m_session->OnPacket(packet);
    EXPECT_TRUE(m_channel.IsOpen());
    EXPECT_THAT(m_listener.messages, IsEmpty());
}

TEST_F(OneSession, ItsOwnPacketsSentBackAreNone) {
    m_channel.Send("secret");
    m_channel.Flush();
    EXPECT_FALSE(m_bus->published.back().data.contains("secret"));
    m_session->OnPacket(*Packet::Read(View(m_bus->published.back().data)));
    EXPECT_TRUE(m_channel.IsOpen());
    EXPECT_THAT(m_listener.messages, IsEmpty());
}

TEST_F(OneSession, TheEndOfTheConnectionToNatsEndsIt) {
    m_bus->Break(QStringLiteral("the cable was cut"));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the cable was cut")));
}

TEST_F(OneSession, TheLastWordsWaitForRoomAndTheEndComesBehindThem) {
    m_channel.Send(QByteArray(1500, 'x'));
    m_channel.Close();
    EXPECT_FALSE(Sent(Packet::EKind::End));
    Give(Packet::EKind::Credit, 1, 1000);
    ASSERT_TRUE(Sent(Packet::EKind::End));
    EXPECT_EQ(Sent(Packet::EKind::End)->number, 3U);
    Give(Packet::EKind::Ended, 2, 1000);
    EXPECT_THAT(m_listener.closings, IsEmpty());
}

TEST_F(OneSession, WhatCameBeforeTheEndIsGivenAlsoIfThePeerHasLeftByThen) {
    m_channel.SetListener(nullptr);
    GiveData(1, "farewell");
    Give(Packet::EKind::End, 2);
    m_session->Lose(QStringLiteral("gone"));
    m_channel.SetListener(&m_listener);
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("farewell")));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the peer closed the connection")));
}

// What nobody reads is not kept for ever, nor any amount of it for a moment.
TEST_F(OneSession, TheLastWordsOfManyAreBounded) {
    std::vector<std::weak_ptr<NatsSession>> left;
    for (int i = 0; i < 4; ++i) {
        auto session = MakeSession();
        nats::NatsChannel channel(session, {});
        channel.SetMaxMessage(NatsSession::MaxMessage);
        for (int j = 0; j < 3; ++j)
            channel.Send(QByteArray(1 << 20, 'x'));
        channel.Close();
        left.push_back(session);
    }
    const auto count =
        std::count_if(left.begin(), left.end(), [](const auto& one) { return !one.expired(); });
    EXPECT_EQ(count, 2) << "of 3 MiB each, since 8 MiB are allowed";
    m_bus->Break(QStringLiteral("over"));
}

// The bus is shared: what all sessions say in a turn is to leave at once.
TEST_F(OneSession, WhatIsSaidLeavesWithWhatOthersSayUnlessThatIsMuch) {
    m_channel.Send("one");
    m_channel.Flush();
    EXPECT_EQ(m_bus->flushes, 0);
    m_bus->unsent = nats::INatsBus::EnoughUnsent;
    m_bus->takesAllWhenFlushed = true;
    m_channel.Send("two");
    m_channel.Flush();
    EXPECT_EQ(m_bus->flushes, 1);
    EXPECT_THAT(m_bus->published, SizeIs(2)) << "nobody would tell when there is room";
}

TEST_F(OneSession, NothingIsPublishedWhileNatsDoesNotTakeWhatThereIs) {
    m_bus->unsent = nats::INatsBus::EnoughUnsent;
    m_channel.Send("late");
    m_channel.Flush();
    EXPECT_THAT(m_bus->published, IsEmpty());
    m_bus->unsent = 0;
    m_bus->TellWritable();
    EXPECT_THAT(m_bus->published, SizeIs(1));
}

constexpr const char* Other = "mcs.tower.up.mallory.0000000000000000000000";
constexpr const char* Third = "mcs.tower.up.mallory.1111111111111111111111";

QByteArray PacketOf(Packet::EKind kind) {
    return Packet{kind, 1, 0, {}}.Head();
}

/// The door of a station, and what strangers do there.
class Door : public testing::Test {
  protected:
    Door() { m_bus->Open(true); }
    void Say(const QByteArray& subject, const QByteArray& data) { m_bus->Deliver(View(subject), data); }
    static QByteArray OpenPacket(quint8 version = Packet::Version, quint32 window = 100'000) {
        return Packet{Packet::EKind::Open, 0, 0, {}}.Head() +
               Greeting{version, window, 0, SessionSeal().PublicKey()}.Write();
    }
    /// Who is in when all openings that have come are worked on, as far as that is allowed in a turn.
    std::vector<QString> InAfterTurns(int turns) {
        RunTurns(turns);
        std::vector<QString> addresses;
        for (const auto& channel : m_channels)
            addresses.push_back(channel->PeerAddress());
        return addresses;
    }
    /// A subject on which \a who begins session number \a number.
    static QByteArray SubjectOf(const char* who, int number) {
        return QByteArray("mcs.tower.up.") + who + '.' +
               QByteArray::number(number).rightJustified(IdSize, '0');
    }
    void ComeOften(const char* who, int count) {
        for (int i = 0; i < count; ++i)
            Say(SubjectOf(who, i), OpenPacket());
    }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const TraceRecord& record : m_traces.Records())
            lines.push_back(record.source.toStdString() + " | " + record.message.toStdString());
        return lines;
    }

    static constexpr int IdSize = 22;
    static constexpr std::size_t MostPerTurn = 4;
    static constexpr const char* Subject = "mcs.tower.up.joe.abcdefghijklmnopqrstuv";
    const TraceRecorder m_traces{ErrorHandler::TraceWarnings};
    const std::shared_ptr<MemoryBus> m_bus = std::make_shared<MemoryBus>();
    std::vector<std::unique_ptr<vt::IChannel>> m_channels;
    nats::NatsListener m_door{
        m_bus, QStringLiteral("tower"), 77,
        [this](std::unique_ptr<vt::IChannel> channel) { m_channels.push_back(std::move(channel)); }};
};

TEST_F(Door, WhoKnocksGetsAChannelAndIsNobodyOfThisMachine) {
    Say(Subject, OpenPacket());
    ASSERT_THAT(m_channels, SizeIs(1));
    EXPECT_EQ(m_channels[0]->PeerAddress(), QStringLiteral("nats/joe:abcdef"));
    EXPECT_FALSE(m_channels[0]->IsLoopback());
    EXPECT_FALSE(m_channels[0]->IsEncrypted());
    ASSERT_THAT(m_bus->published, SizeIs(1));
    EXPECT_EQ(m_bus->published[0].subject, "mcs.tower.down.joe.abcdefghijklmnopqrstuv");
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(Door, WhoHasGoneIsForgotten) {
    Say(Subject, OpenPacket());
    EXPECT_EQ(m_door.CountSessions(), 1);
    m_bus->TellUnheard(m_bus->published.back().watch);
    EXPECT_TRUE(WaitUntil([this] { return m_door.CountSessions() == 0; }));
}

TEST_F(Door, WhoIsThereIsHeardBeforeManyWhoComeAtOnceAreIn) {
    SessionSeal seal;
    Say(Subject, Packet{Packet::EKind::Open, 0, 0, {}}.Head() +
                     Greeting{Packet::Version, 100'000, 0, seal.PublicKey()}.Write());
    ASSERT_THAT(m_bus->published, SizeIs(1));
    const auto greeting = Greeting::Read(Packet::Read(View(m_bus->published[0].data))->body);
    ASSERT_TRUE(greeting && seal.Agree(SessionSeal::ESide::Client, View(greeting->key), Subject));
    RecordingListener listener;
    m_channels[0]->SetListener(&listener);
    RunTurns(2);
    ComeOften("mallory", 100);
    const std::string_view word = seal.Seal({Packet::EKind::Data, 1, 0, View(Frame("word"))});
    Say(Subject, QByteArray(word.data(), static_cast<int>(word.size())));
    EXPECT_THAT(listener.messages, ElementsAre(QByteArray("word")));
    EXPECT_LE(m_channels.size(), 1 + MostPerTurn);
    m_channels[0]->SetListener(nullptr);
}

TEST_F(Door, SoManyGetInPerTurnAndAllInTheEnd) {
    constexpr std::size_t Count = 50;
    ComeOften("joe", Count);
    EXPECT_LE(m_channels.size(), MostPerTurn);
    for (int turn = 0; turn < 1000 && m_channels.size() < Count; ++turn) {
        const std::size_t in = m_channels.size();
        RunTurns(1);
        EXPECT_LE(m_channels.size() - in, MostPerTurn);
    }
    EXPECT_THAT(m_channels, SizeIs(Count));
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(Door, WhoComesOftenKeepsNobodyWaiting) {
    ComeOften("mallory", 10'000);
    ComeOften("ann", 1);
    EXPECT_THAT(InAfterTurns(3), testing::Contains(QStringLiteral("nats/ann:000000")));
    EXPECT_LT(m_channels.size(), 5 * MostPerTurn);
}

TEST_F(Door, WhoComesOnceMoreWhileWaitingIsInOnce) {
    ComeOften("joe", 20);
    ComeOften("joe", 20);
    EXPECT_THAT(InAfterTurns(40), SizeIs(20));
}

TEST(Openings, ThoseWhoWaitAreBoundedAndWhoHasMostOfThemGivesWay) {
    const auto openingOf = [](const char* who, int number) {
        return nats::Openings::Opening{{who, QByteArray::number(number)}, {}};
    };
    nats::Openings openings;
    openings.Add(openingOf("ann", 0));
    for (int i = 0; i < 10'000; ++i)
        openings.Add(openingOf("mallory", i));
    EXPECT_EQ(openings.Count(), nats::Openings::MaxWaiting);
    EXPECT_EQ(openings.Take()->name.ToText(), "ann.0");
    const int oldest = 10'000 - static_cast<int>(nats::Openings::MaxWaiting) + 1;
    EXPECT_EQ(openings.Take()->name.ToText(), "mallory." + QByteArray::number(oldest))
        << "the oldest have gone";
}

TEST(Openings, UsersTakeTurnsAndEachOnesAreInOrder) {
    nats::Openings openings;
    for (const char* const id : {"1", "2", "3"})
        openings.Add({{"joe", id}, {}});
    openings.Add({{"ann", "4"}, {}});
    openings.Add({{"sue", "5"}, {}});
    std::vector<std::string> taken;
    while (const auto next = openings.Take())
        taken.push_back(next->name.ToText().toStdString());
    EXPECT_THAT(taken, ElementsAre("ann.4", "joe.1", "sue.5", "joe.2", "joe.3"));
    EXPECT_EQ(openings.Count(), 0U);
}

// NATS was lost, and it is not sure yet that nobody else has the station by now.
TEST_F(Door, WhileItIsClosedSessionsGoOnAndWhoKnocksWaits) {
    Say(Subject, OpenPacket());
    ASSERT_THAT(m_channels, SizeIs(1));
    m_door.SetOpen(false);
    Say(Other, OpenPacket());
    Say(Third, PacketOf(Packet::EKind::Data));
    EXPECT_THAT(m_channels, SizeIs(1));
    EXPECT_THAT(m_bus->published, SizeIs(1)) << "nobody is refused";
    m_door.SetOpen(true);
    EXPECT_THAT(m_channels, SizeIs(2));
    EXPECT_TRUE(m_channels[0]->IsOpen());
    EXPECT_THAT(Lines(), IsEmpty());
}

struct Rubbish {
    const char* name;
    const char* subject;
    QByteArray data;
    const char* line;  ///< empty: none
};

class Strangers : public Door, public testing::WithParamInterface<Rubbish> {};

TEST_P(Strangers, AreToldInOneLineAndOthersGetIn) {
    Say(Subject, OpenPacket());
    ASSERT_THAT(m_channels, SizeIs(1));
    Say(GetParam().subject, GetParam().data);
    EXPECT_TRUE(m_channels[0]->IsOpen());
    EXPECT_THAT(m_channels, SizeIs(1));
    if (*GetParam().line != '\0') {
        EXPECT_THAT(Lines(), ElementsAre(std::string(GetParam().line)));
    } else {
        EXPECT_THAT(Lines(), IsEmpty());
    }
    Say("mcs.tower.up.ann.0123456789012345678901", OpenPacket());
    EXPECT_THAT(m_channels, SizeIs(2));
}

const Rubbish AllRubbish[] = {
    {"Rubbish", Other, "rubbish", "nats/mallory | From nats/mallory: what came is no packet of a session"},
    {"Nothing", Other, "", "nats/mallory | From nats/mallory: what came is no packet of a session"},
    {"AnOpeningWithoutAGreeting", Other, PacketOf(Packet::EKind::Open),
     "nats/mallory | From nats/mallory: a session was begun with what is no greeting"},
    {"AnOpeningThatLeavesNoRoom", Other,
     Packet{Packet::EKind::Open, 0, 0, {}}.Head() + Greeting{1, 0, 0, {}}.Write(),
     "nats/mallory | From nats/mallory: a session was begun with what is no greeting"},
    {"AnOpeningWithWhatIsNoKey", Other,
     Packet{Packet::EKind::Open, 0, 0, {}}.Head() + Greeting{1, 9999, 0, {}}.Write(),
     "nats/mallory | From nats/mallory: a session was begun with what is no key"},
    {"ASessionThatIsThereBegunOnceMore", "mcs.tower.up.joe.abcdefghijklmnopqrstuv",
     Packet{Packet::EKind::Open, 0, 0, {}}.Head() + Greeting{1, 9999, 0, {}}.Write(),
     "nats/joe | From nats/joe: a session that is there was begun once more"},
    {"AnIdThatIsNone", "mcs.tower.up.mallory.short",
     Packet{Packet::EKind::Open, 0, 0, {}}.Head() + Greeting{1, 9999, 0, {}}.Write(),
     "nats/- | From nats/-: what came is no packet of a session"},
    {"TheIdOfAnothersSession", "mcs.tower.up.mallory.abcdefghijklmnopqrstuv", PacketOf(Packet::EKind::End),
     ""},
    {"DataOfNoSession", Other, PacketOf(Packet::EKind::Data), ""},
};

INSTANTIATE_TEST_SUITE_P(Door, Strangers, testing::ValuesIn(AllRubbish),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Door, AnotherVersionIsToldWhichOneIsSpoken) {
    Say(Subject, OpenPacket(2));
    EXPECT_THAT(m_channels, IsEmpty());
    ASSERT_THAT(m_bus->published, SizeIs(1));
    EXPECT_THAT(m_bus->published[0].data.toStdString(),
                HasSubstr("speaks version 1 of the session over NATS, not 2"));
}

TEST_F(Door, WhoTalksOfSessionsThatThereAreNotGetsSoManyAnswers) {
    for (int i = 0; i < 1000; ++i)
        Say(Other, PacketOf(Packet::EKind::Data));
    EXPECT_THAT(m_bus->published, SizeIs(100));
}

}  // namespace
