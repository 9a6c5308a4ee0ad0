// SPDX-License-Identifier: Apache-2.0
// Whom a server admits, and how long it keeps a session.
#include <tests/platform/vtclient/serverrules.h>

using namespace std::chrono_literals;

namespace {

using namespace serverrules;

TEST_F(ServerRules, AHelloIsWelcomedWithSessionAndPatience) {
    RawPeer& peer = Admitted();
    const vt::WelcomeMessage welcome = peer.Of<vt::WelcomeMessage>()[0];
    EXPECT_EQ(welcome.version, 1U);
    EXPECT_EQ(welcome.session, 1);
    EXPECT_LT(welcome.epoch, quint64{1} << 53U) << "a double holds it";
    EXPECT_EQ(welcome.ping, 5000ms);
    EXPECT_EQ(welcome.dead, 15000ms);
    EXPECT_EQ(m_access.started.size(), 1U);
}

TEST_F(ServerRules, AnotherVersionIsRefused) {
    RawPeer& peer = Connect();
    peer.Send(Hello(2));
    Run();
    ExpectBye(peer, EBye::Version, "this server speaks version 1 of the protocol, not 2");
    EXPECT_EQ(m_access.started.size(), 0U);
}

TEST_F(ServerRules, WhateverAHelloOfAnotherVersionSaysItHearsWhichOneIsSpoken) {
    // [1, 2, {}, 1.5], as a map and a float never stand there in this version; and one cut off.
    for (const char* bytes : {"\x84\x01\x02\xa0\xf9\x3e\x00", "\x9f\x01\x02\x62"}) {
        RawPeer& peer = Connect();
        peer.SendBytes(QByteArray(bytes, bytes[0] == '\x84' ? 7 : 4));
        Run();
        ExpectBye(peer, EBye::Version, "this server speaks version 1 of the protocol, not 2");
    }
}

TEST_F(ServerRules, WhoIsNotAdmittedHearsWhy) {
    m_access.refusal = S("the token is wrong");
    RawPeer& peer = Connect();
    peer.Send(Hello());
    Run();
    ExpectBye(peer, EBye::NotAdmitted, "the token is wrong");
    EXPECT_EQ(m_access.ended.size(), 0U);
}

TEST_F(ServerRules, TheFirstMessageMustBeAHello) {
    RawPeer& peer = Connect();
    peer.Send(Subscribe(1, "/S"));
    Run();
    ExpectBye(peer, EBye::Malformed, "the first message must be a hello");
}

TEST_F(ServerRules, ASecondHelloEndsTheSession) {
    RawPeer& peer = Admitted();
    peer.Send(Hello());
    Run();
    ExpectBye(peer, EBye::Malformed, "a message that only a server sends, or a second hello");
}

TEST_F(ServerRules, TheEndOfASessionIsTracedAsItsHostsDoing) {
    const TraceRecorder traces;
    Connect("10.0.0.7:1234").SendBytes(QByteArray("GET / HTTP/1.1"));
    vt::HelloMessage hello = Hello(2);
    hello.application = QString(200, QLatin1Char('x'));
    Connect("[2001:db8::1]:1234").Send(hello);
    Run();
    ASSERT_EQ(traces.Records().size(), 2U);
    EXPECT_EQ(traces.Records()[0].source, S("10.0.0.7"));
    EXPECT_EQ(traces.Records()[1].source, S("2001:db8::"));
}

TEST_F(ServerRules, GarbageEndsTheSessionAndNobodyElses) {
    RawPeer& good = Admitted();
    RawPeer& bad = Admitted();
    bad.SendBytes(QByteArray("GET / HTTP/1.1"));
    Run();
    EXPECT_EQ(bad.Count<vt::ByeMessage>(), 1);
    EXPECT_EQ(good.Count<vt::ByeMessage>(), 0);
    EXPECT_EQ(m_hub->CountSessions(), 1);
}

TEST_F(ServerRules, AHelloMustComeInTime) {
    RawPeer& peer = Connect();
    RunAfter(vtlimits::HelloTimeout - 1ms);
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
    RunAfter(300ms);
    ExpectBye(peer, EBye::Silence, "no hello in time");
}

TEST_F(ServerRules, TheOldestThatSaysNoHelloMakesRoom) {
    std::vector<RawPeer*> silent;
    for (int i = 0; i < vtlimits::MaxPendingConnections; ++i)
        silent.push_back(&Connect());
    RawPeer& late = Connect();
    late.Send(Hello());
    Run();
    ExpectBye(*silent.front(), EBye::Limit, "too many connections wait for their hello");
    EXPECT_EQ(silent.back()->Count<vt::ByeMessage>(), 0);
    EXPECT_EQ(late.Count<vt::WelcomeMessage>(), 1);
}

TEST_F(ServerRules, AHostThatCrowdsTheDoorMakesRoomForOthers) {
    RawPeer& slow = Connect("10.0.0.1:1000");
    std::vector<RawPeer*> crowd;
    for (int i = 1; i < vtlimits::MaxPendingConnections; ++i)
        crowd.push_back(&Connect(i % 2 == 0 ? "[2001:db8::1]:2000" : "[2001:db8::2]:2000"));  // one network
    RawPeer& other = Connect("[fe80::1]:3000");
    Run();
    ExpectBye(*crowd.front(), EBye::Limit, "too many connections wait for their hello");
    EXPECT_EQ(crowd[1]->Count<vt::ByeMessage>(), 0);
    for (RawPeer* peer : {&slow, &other}) {
        peer->Send(Hello());
        Run();
        EXPECT_EQ(peer->Count<vt::WelcomeMessage>(), 1);
    }
}

class Places : public ServerRules {
  protected:
    Places() {
        m_settings.maxSessions = 40;  // of which two are for operators, and nine a share of the others
        m_hub.reset();
        StartServer();
    }
    RawPeer& Come(const QString& user, int host) {
        RawPeer& peer = Connect(qPrintable(S("10.0.0.%1:1").arg(host)));
        vt::HelloMessage hello = Hello();
        hello.user = user;
        peer.Send(hello);
        Run();
        return peer;
    }
    static bool IsIn(const RawPeer& peer) {
        return peer.Count<vt::WelcomeMessage>() == 1 && peer.Count<vt::ByeMessage>() == 0;
    }
};

TEST_F(Places, WhoComesToAFullServerIsToldSoAndHasItsPlaceWhenAnotherGoes) {
    m_access.isShareless = true;
    std::vector<RawPeer*> clients;
    for (int i = 0; i < 38; ++i)
        clients.push_back(&Admitted());
    RawPeer& late = Connect();
    late.Send(Hello());
    Run();
    ExpectBye(late, EBye::Limit, "the server has 38 clients");
    vt::ByeMessage bye;
    bye.code = EBye::ClientEnds;
    clients.front()->Send(bye);
    Run();
    EXPECT_TRUE(IsIn(Admitted()));
}

TEST_F(Places, OneUserHasAllOfThemUntilAnotherComes) {
    m_access.needsCredentials = true;
    std::vector<RawPeer*> crowd;
    for (int i = 0; i < 38; ++i)
        crowd.push_back(&Come(S("crowd"), i));
    for (const RawPeer* peer : crowd)
        EXPECT_TRUE(IsIn(*peer));
    EXPECT_FALSE(IsIn(Come(S("crowd"), 99)));
    EXPECT_TRUE(IsIn(Come(S("other"), 100)));
    EXPECT_FALSE(IsIn(*crowd.back())) << "the youngest makes room";
    EXPECT_TRUE(IsIn(*crowd.front()));
}

TEST_F(Places, OneHostMakesRoomForAnother) {
    std::vector<RawPeer*> crowd;
    for (int i = 0; i < 38; ++i)
        crowd.push_back(&Come(QString(), 1));
    EXPECT_FALSE(IsIn(Come(QString(), 1)));
    EXPECT_TRUE(IsIn(Come(QString(), 2)));
    EXPECT_FALSE(IsIn(*crowd.back()));
}

TEST_F(Places, AnOperatorAlwaysGetsIn) {
    m_access.needsCredentials = true;
    for (int i = 0; i < 38; ++i)
        Come(S("user %1").arg(i), i);
    EXPECT_FALSE(IsIn(Come(S("one more"), 50)));
    EXPECT_TRUE(IsIn(Come(S("operator"), 51)));
    EXPECT_FALSE(IsIn(Come(S("operator"), 52))) << "and leaves a place for another one";
    EXPECT_TRUE(IsIn(Come(S("operator 2"), 53)));
}

TEST_F(ServerRules, ASilentClientIsPingedAndThenGivenUp) {
    RawPeer& peer = Admitted();
    RunAfter(5001ms);
    EXPECT_EQ(peer.Count<vt::PingMessage>(), 1);
    RunAfter(4000ms);
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
    RunAfter(6001ms);
    ASSERT_EQ(peer.Count<vt::ByeMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::ByeMessage>()[0].code, EBye::Silence);
    EXPECT_EQ(m_access.ended.size(), 1U);
}

TEST_F(ServerRules, APingIsAnsweredWithItsNumber) {
    RawPeer& peer = Admitted();
    vt::PingMessage ping;
    ping.number = 77;
    peer.Send(ping);
    Run();
    ASSERT_EQ(peer.Count<vt::PongMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::PongMessage>()[0].number, 77U);
}

TEST_F(ServerRules, ASessionsEndIsToldOnceAndLetsGoOfEverything) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    EXPECT_EQ(m_hub->CountWatchers(), 1);
    EXPECT_EQ(Find<Text>("/S/t")->CountObservers(), 1);
    vt::ByeMessage bye;
    bye.code = EBye::ClientEnds;
    peer.Send(bye);
    Run();
    EXPECT_EQ(m_hub->CountSessions(), 0);
    EXPECT_EQ(m_hub->CountWatchers(), 0);
    EXPECT_EQ(m_access.ended.size(), 1U);
    EXPECT_EQ(Find<Text>("/S/t")->CountObservers(), 0);
}

}  // namespace
