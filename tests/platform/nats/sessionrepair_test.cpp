// SPDX-License-Identifier: Apache-2.0
// What a session over NATS does about what is lost on the way, and about what anybody may say of its peer.
// The bus is in memory.
#include <platform/nats/session/inputstream.h>
#include <platform/nats/session/natsconnector.h>
#include <platform/nats/session/presence.h>
#include <platform/nats/session/sentpackets.h>
#include <tests/platform/nats/onesession.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using nats::Packet;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class Repair : public OneSession {
  protected:
    nats::Position SentPosition() const {
        const std::optional<Packet> packet = Sent(Packet::EKind::Number);
        if (!packet) return {};
        return nats::Position::Read(*m_peer->Open(*packet)).value_or(nats::Position());
    }
    /// What was published since the first so many messages.
    std::vector<QByteArray> PublishedAfter(std::size_t first) const {
        std::vector<QByteArray> data;
        for (std::size_t i = first; i < m_bus->published.size(); ++i)
            data.push_back(m_bus->published[i].data);
        return data;
    }
    /// Until so much time has passed that a doubt of no patience would have ended a session.
    void LetDoubtsBeJudged() {
        const auto other = MakeOther();
        other->Doubt(QStringLiteral("x"), 1ms);
        ASSERT_TRUE(WaitUntil([&other] { return !other->IsOpen(); }));
    }
    std::shared_ptr<nats::NatsSession> MakeOther() const {
        auto own = std::make_unique<nats::SessionSeal>();
        nats::SessionSeal peer;
        EXPECT_TRUE(own->Agree(nats::SessionSeal::ESide::Server, View(peer.PublicKey()), "there"));
        return std::make_shared<nats::NatsSession>(
            m_bus, "other", nats::Greeting{Packet::Version, 1000, 0, {}}, std::move(own));
    }
};

TEST_F(Repair, APacketThatIsMissingIsAskedForAndTheOrderHolds) {
    GiveData(1, "one");
    GiveData(3, "three");
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one")));
    EXPECT_EQ(SentPosition().last, 1U);
    GiveData(2, "two");
    GiveData(3, "three");
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one"), QByteArray("two"), QByteArray("three")));
    LetDoubtsBeJudged();
    EXPECT_TRUE(m_channel.IsOpen());
}

TEST_F(Repair, APacketThatCannotBeHadEndsIt) {
    GiveData(1, "one");
    GiveData(3, "three");
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one")));
    EXPECT_THAT(m_listener.closings,
                ElementsAre(QStringLiteral("a message was lost over NATS (number 3 came, 2 was due)")));
    EXPECT_GE(m_bus->published.size(), 5U) << "it is asked for again and again";
}

TEST_F(Repair, APacketThatComesTwiceIsTakenOnce) {
    GiveData(1, "one");
    GiveData(1, "one");
    GiveData(2, "two");
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one"), QByteArray("two")));
    EXPECT_TRUE(m_channel.IsOpen());
}

// What is sealed under one number is sealed once.
TEST_F(Repair, WhatThePeerHasMissedIsSaidOnceMoreWordForWord) {
    for (const char* const text : {"one", "two", "three"}) {
        m_channel.Send(text);
        m_channel.Flush();
    }
    const std::vector<QByteArray> said = PublishedAfter(0);
    ASSERT_THAT(said, SizeIs(3));
    GivePosition(1, 1);
    EXPECT_THAT(PublishedAfter(3), ElementsAre(said[1], said[2]));
    GivePosition(2, 1);
    EXPECT_THAT(PublishedAfter(3), SizeIs(2)) << "who asks again at once has not had it yet";
}

TEST_F(Repair, WhatHasArrivedIsNotSaidOnceMore) {
    m_channel.Send("one");
    m_channel.Flush();
    m_channel.Send("two");
    m_channel.Flush();
    Give(Packet::EKind::Credit, 1, 7);  // a length and "one"
    GivePosition(2, 0);
    EXPECT_THAT(PublishedAfter(2), ElementsAre(m_bus->published[1].data));
}

TEST_F(Repair, TheEndIsSaidOnceMoreToo) {
    m_channel.Close();
    const QByteArray end = Sent(Packet::EKind::End) ? m_bus->published.back().data : QByteArray();
    GivePosition(1, 0);
    EXPECT_EQ(m_bus->published.back().data, end);
    Give(Packet::EKind::Ended, 2);
}

TEST_F(Repair, AQuestionWhereItIsIsAnswered) {
    GiveData(1, "one");
    GivePosition(1, 0, true);
    EXPECT_EQ(SentPosition().last, 1U);
    EXPECT_FALSE(SentPosition().isQuestion);
}

TEST_F(Repair, WhoSaysThatItHasWhatWasNotSentEndsIt) {
    GivePosition(1, 1);
    EXPECT_THAT(m_listener.closings,
                ElementsAre(QStringLiteral("the peer acknowledges what was not sent over NATS")));
}

TEST_F(Repair, TheLossOfAServerOfNatsIsOutlived) {
    GiveData(1, "one");
    m_bus->Cut(QStringLiteral("the cable was cut"));
    m_channel.Send("meanwhile");
    m_channel.Flush();
    EXPECT_THAT(m_bus->published, IsEmpty());
    m_bus->Mend();
    EXPECT_EQ(SentPosition().last, 1U);
    EXPECT_TRUE(SentPosition().isQuestion);
    ASSERT_TRUE(Sent(Packet::EKind::Data));
    GivePosition(1, 0);
    GiveData(2, "two");
    LetDoubtsBeJudged();
    EXPECT_TRUE(m_channel.IsOpen());
    EXPECT_THAT(m_listener.messages, ElementsAre(QByteArray("one"), QByteArray("two")));
}

TEST_F(Repair, NatsThatStaysAwayEndsIt) {
    m_bus->Cut(QStringLiteral("the cable was cut"));
    EXPECT_TRUE(m_channel.IsOpen());
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the cable was cut")));
}

TEST_F(Repair, APeerThatNobodyHearsIsWaitedForAndThenGone) {
    m_session->SetPeerPatience(1ms);
    m_channel.Send("anybody?");
    m_channel.Flush();
    m_bus->TellUnheard(m_bus->published.back().watch);
    EXPECT_TRUE(m_channel.IsOpen());
    EXPECT_TRUE(SentPosition().isQuestion);
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the peer has left NATS")));
}

TEST_F(Repair, APeerThatProvesToBeThereStays) {
    m_session->Doubt(QStringLiteral("it is dead, says somebody"), 1ms);
    GivePosition(1, 0);
    LetDoubtsBeJudged();
    EXPECT_TRUE(m_channel.IsOpen());
}

TEST_F(Repair, WhatWasSaidBeforeProvesNothing) {
    const std::string one(m_peer->Seal({Packet::EKind::Data, 1, 0, View(Frame("one"))}));
    const std::string word(m_peer->Seal({Packet::EKind::Credit, 1, 0, {}}));
    m_session->OnPacket(*Packet::Read(one));
    m_session->OnPacket(*Packet::Read(word));
    m_session->Doubt(QStringLiteral("it is dead"), 1ms);
    m_session->OnPacket(*Packet::Read(one));
    m_session->OnPacket(*Packet::Read(word));
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
}

// A client
// ----------------------------------------------------------------------------------------------------

/// A client's session with a station, whose end is the test.
class ClientOfAStation : public testing::Test, protected vt::IConnector::IListener {
  protected:
    ClientOfAStation() {
        m_connector.SetListener(this);
        m_connector.Connect();
        m_bus->Mend();
        m_down = m_bus->published.back().subject;
        m_up = m_down;
        m_down.replace(".up.", ".down.");
        const auto open = *Packet::Read(View(m_bus->published.back().data));
        const auto greeting = *nats::Greeting::Read(open.body);
        EXPECT_TRUE(m_seal.Agree(nats::SessionSeal::ESide::Server, View(greeting.key), m_up));
        Say(Packet{Packet::EKind::Accept, 0, 0, {}}.Head() +
            nats::Greeting{Packet::Version, 100'000, 77, m_seal.PublicKey()}.Write());
        RunTurns(3);
    }
    void OnConnected(std::unique_ptr<vt::IChannel> channel) override {
        m_channel = std::move(channel);
        m_channel->SetListener(&m_listener);
    }
    void OnConnectFailed(const QString& reason) override { ADD_FAILURE() << reason.toStdString(); }
    void Say(const QByteArray& data) { m_bus->Deliver(m_down.constData(), data); }
    static QByteArray Refusal() { return Packet{Packet::EKind::Refuse, 0, 0, {}}.Head() + "no such session"; }
    void ShowThatHereIs(quint64 instance) {
        nats::Presence presence;
        presence.instance = instance;
        m_bus->Deliver("mcs.tower.here", presence.Write());
    }
    QByteArray Proof() {
        const QByteArray body = nats::Position{0, false}.Write();
        const std::string_view sealed = m_seal.Seal({Packet::EKind::Number, ++m_words, 0, View(body)});
        return {sealed.data(), static_cast<int>(sealed.size())};
    }
    int CountQuestions() const {
        return static_cast<int>(std::count_if(m_bus->published.begin(), m_bus->published.end(),
                                              [](const auto& one) { return one.data.startsWith('N'); }));
    }

    const TraceRecorder m_traces;
    const std::shared_ptr<MemoryBus> m_bus = std::make_shared<MemoryBus>();
    nats::NatsConnector m_connector{[this](QString*) { return m_bus; }, QStringLiteral("tower"), "-"};
    QByteArray m_up, m_down;
    nats::SessionSeal m_seal;
    quint64 m_words = 0;
    RecordingListener m_listener;
    std::unique_ptr<vt::IChannel> m_channel;
};

TEST_F(ClientOfAStation, WhoeverPosesAsARefusingServerEndsNothing) {
    ASSERT_NE(m_channel, nullptr);
    for (int round = 0; round < 4; ++round) {
        Say(Refusal());
        const int asked = CountQuestions();
        EXPECT_GE(asked, 1);
        Say(Proof());
        EXPECT_TRUE(WaitUntil([&] {
            Say(Refusal());
            Say(Proof());
            return CountQuestions() > asked + 2;
        }));
    }
    EXPECT_TRUE(m_channel->IsOpen());
    ASSERT_THAT(m_traces.Records(), SizeIs(1)) << "it is told";
    EXPECT_EQ(
        m_traces.Records()[0].message,
        QStringLiteral("Somebody else publishes in the session over NATS at ") + QString::fromLatin1(m_up));
}

TEST_F(ClientOfAStation, WhoRefusesAndProvesNothingElseIsBelieved) {
    ASSERT_NE(m_channel, nullptr);
    Say(Refusal());
    EXPECT_TRUE(m_channel->IsOpen());
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("no such session")));
}

TEST_F(ClientOfAStation, ASecondServerThatSaysItIsThereIsBelievedOnceTheFirstIsSilent) {
    ASSERT_NE(m_channel, nullptr);
    ShowThatHereIs(78);
    Say(Proof());
    const int asked = CountQuestions();
    ShowThatHereIs(78);
    EXPECT_GT(CountQuestions(), asked);
    EXPECT_TRUE(m_channel->IsOpen());
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the server was restarted")));
}

TEST_F(ClientOfAStation, ASilentServerIsAskedForAWordAndOneThatSaysItIsThereIsNot) {
    ASSERT_NE(m_channel, nullptr);
    EXPECT_TRUE(WaitUntil([this] { return CountQuestions() >= 1; }));
    EXPECT_TRUE(m_channel->IsOpen()) << "it may be busy";
    const quint64 watch = m_bus->published.back().watch;
    m_bus->TellUnheard(watch);
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    EXPECT_THAT(m_listener.closings, ElementsAre(QStringLiteral("the peer has left NATS")));
}

// Packets
// -----------------------------------------------------------------------------------------------------

TEST(InputStream, GivesBackTheRoomOfALongMessage) {
    nats::InputStream stream;
    stream.Append(std::string("\0\3\x0d\x40", 4) + std::string(200'000, 'x'));
    ASSERT_TRUE(stream.HasFrame());
    stream.TakeFrame();
    stream.Tidy();
    EXPECT_LT(stream.Room(), nats::InputStream::KeptRoom);
}

TEST(SentPackets, KeepWhatHasNotArrivedInOrder) {
    nats::SentPackets packets;
    quint64 end = 0;
    quint64 number = 0;
    quint64 arrived = 0;
    for (int round = 0; round < 300; ++round) {
        for (int i = 0; i < round % 7; ++i) {
            end += 10;
            ++number;
            packets.Add(number, std::to_string(number), end);
        }
        if (round % 3 == 0) {
            arrived = std::min(number, arrived + static_cast<quint64>(round % 11));
            packets.DropConsumed(arrived * 10 + 9);
        } else if (round % 5 == 0) {
            arrived = std::min(number, arrived + 2);
            packets.DropUpTo(arrived);
        }
        ASSERT_EQ(packets.Count(), number - arrived);
        for (std::size_t i = 0; i < packets.Count(); ++i)
            ASSERT_EQ(packets.Get(i), std::to_string(arrived + 1 + i));
    }
    packets.DropUpTo(number);
    packets.GiveBackRoom();
    EXPECT_LT(packets.Room(), 64U);
}

}  // namespace
