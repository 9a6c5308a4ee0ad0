// SPDX-License-Identifier: Apache-2.0
// How a client comes to a session, and how it ends one.
#include <tests/platform/vtclient/clientrules.h>

using namespace std::chrono_literals;

namespace {

using namespace clientrules;

TEST_F(ClientRules, FailuresAreRetriedWithGrowingPausesForever) {
    m_loop->Run();
    std::vector<int> pauses;
    for (int i = 0; i < 12; ++i) {
        m_listener->OnConnectFailed(S("nobody there"));
        const int before = m_attempts;
        int pause = 0;
        for (; m_attempts == before && pause < 20000; pause += 100) {
            m_clock.Pass(100ms);
            m_loop->Run();
        }
        pauses.push_back(pause);
    }
    EXPECT_THAT(pauses, ElementsAre(100, 200, 400, 800, 1600, 3200, 6400, 10000, 10000, 10000, 10000, 10000));
    EXPECT_EQ(m_client->GetLastError(), S("nobody there"));
    EXPECT_TRUE(m_observer.Events().empty());
}

TEST_F(ClientRules, AWelcomeMakesThePausesShortAgain) {
    m_loop->Run();
    for (int i = 0; i < 5; ++i) {
        m_listener->OnConnectFailed(S("nobody there"));
        m_clock.Pass(10000ms);
        m_loop->Run();
    }
    Connect();
    Welcome();
    EXPECT_EQ(m_client->GetLastError(), QString());
    EXPECT_FALSE(m_client->IsRefused());
    m_wire->isOpen = false;
    Run();
    EXPECT_EQ(m_client->GetLastError(), S("the wire was cut"));
    const int before = m_attempts;
    m_clock.Pass(100ms);
    Run();
    EXPECT_EQ(m_attempts, before + 1);
}

TEST_F(ClientRules, ARefusalIsTheReasonWhyThereIsNoConnection) {
    Connect();
    vt::ByeMessage bye;
    bye.code = EBye::NotAdmitted;
    bye.reason = S("the token is wrong");
    Say(bye);
    EXPECT_EQ(m_client->GetLastError(), S("the server refuses: the token is wrong"));
    EXPECT_TRUE(m_client->IsRefused());
    EXPECT_TRUE(m_observer.Events().empty());
    m_clock.Pass(100ms);
    Run();
    EXPECT_TRUE(m_isConnecting);
}

TEST_F(ClientRules, AConnectionThatIsNotMadeInTimeIsGivenUp) {
    m_loop->Run();
    m_clock.Pass(5000ms);
    m_loop->Run();
    EXPECT_FALSE(m_isConnecting);
    EXPECT_EQ(m_client->GetLastError(), S("no connection within 5000 ms"));
}

TEST_F(ClientRules, AWelcomeMustComeInTime) {
    Connect();
    m_clock.Pass(5000ms);
    Run();
    EXPECT_EQ(m_client->GetLastError(), S("no welcome within 5000 ms"));
}

struct TokenRow {
    const char* name;
    bool isLoopback;
    bool isEncrypted;
    const char* token;
};

class Tokens : public ClientRules, public testing::WithParamInterface<TokenRow> {};

TEST_P(Tokens, AreSentWhereNobodyElseReadsThem) {
    VtClientOptions options;
    options.user = S("ann");
    options.token = S("secret");
    Start(options);
    Connect(GetParam().isLoopback, GetParam().isEncrypted);
    EXPECT_EQ(m_server->Of<vt::HelloMessage>()[0].token, S(GetParam().token));
}

INSTANTIATE_TEST_SUITE_P(All, Tokens,
                         testing::Values(TokenRow{"OnLoopback", true, false, "secret"},
                                         TokenRow{"OverTls", false, true, "secret"},
                                         TokenRow{"NotInTheClear", false, false, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ClientRules, ASilentServerIsPingedAndThenGivenUp) {
    Establish();
    const int pings = m_server->Count<vt::PingMessage>();
    m_clock.Pass(5000ms);
    Run();
    EXPECT_EQ(m_server->Count<vt::PingMessage>(), pings + 1);
    m_clock.Pass(10000ms);
    Run();
    EXPECT_FALSE(m_client->IsConnected());
    EXPECT_EQ(m_client->GetLastError(), S("nothing heard for 15000 ms"));
    EXPECT_EQ(T()->GetState(), values::Stale);
}

TEST_F(ClientRules, ASilenceIsKnownSinceTheFirstPingWithoutAnAnswer) {
    Establish();
    const auto pong = [this] {
        vt::PongMessage message;
        message.number = m_server->Of<vt::PingMessage>().back().number;
        Say(message);
    };
    pong();
    EXPECT_EQ(m_client->GetSilence(), std::nullopt) << "nothing is waited for";
    m_clock.Pass(5000ms);
    Run();
    m_clock.Pass(1200ms);
    EXPECT_EQ(m_client->GetSilence(), 1200ms);
    m_clock.Pass(3800ms);
    Run();  // one more ping
    m_clock.Pass(100ms);
    EXPECT_EQ(m_client->GetSilence(), 5100ms) << "the first one counts";
    pong();
    EXPECT_EQ(m_client->GetSilence(), std::nullopt);
}

TEST_F(ClientRules, ThePongTellsTheLatency) {
    Establish();
    m_clock.Pass(5000ms);
    Run();
    vt::PongMessage pong;
    pong.number = m_server->Of<vt::PingMessage>().back().number;
    m_clock.Pass(3ms);
    Say(pong);
    EXPECT_EQ(m_client->GetLatency(), 3ms);
}

}  // namespace
