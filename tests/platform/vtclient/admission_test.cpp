// SPDX-License-Identifier: Apache-2.0
// Who is turned away at the door, and that nobody who stands in it keeps others out.
#include <platform/vtclient/channel/qteventloop.h>
#include <platform/vtclient/channel/socketlistener.h>
#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>

#include <gmock/gmock.h>

#include <memory>

using namespace std::chrono_literals;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> Texts(const std::vector<QString>& lines) {
    std::vector<std::string> texts;
    for (const QString& line : lines)
        texts.push_back(line.toStdString());
    return texts;
}

constexpr int Crowd = 400;  // both ends of each are in this process, which may have 1,024 descriptors

class Admission : public SocketEnds {
  protected:
    /// A further client gets in, whatever else goes on.
    bool AnotherGetsIn() {
        IVtClient* const client = Connect();
        const bool isIn = ComesIn(client);
        Destroy(client);
        return isIn;
    }
};

/// What somebody says first, and how the server takes it.
struct FirstWord {
    const char* name;
    void (*say)(SocketPeer& peer);
    vt::EBye code;
    const char* reason;
};

class FirstWords : public Admission, public testing::WithParamInterface<FirstWord> {};

TEST_P(FirstWords, AreAnsweredWithAByeAndOneLine) {
    m_access.wantedToken = QStringLiteral("secret");
    Listen();
    SocketPeer peer(m_server.GetPort());
    ASSERT_TRUE(peer.WaitConnected());
    GetParam().say(peer);
    const vt::ByeMessage* const bye = peer.WaitFor<vt::ByeMessage>();
    ASSERT_NE(bye, nullptr);
    EXPECT_EQ(bye->code, GetParam().code);
    EXPECT_EQ(bye->reason.toStdString(), GetParam().reason);
    EXPECT_TRUE(peer.WaitClosed());
    EXPECT_EQ(peer.Received().size(), 1U);
    EXPECT_THAT(Texts(ServerLines()), ElementsAre(HasSubstr(GetParam().reason)));
    m_clientOptions.token = QStringLiteral("secret");
    EXPECT_TRUE(AnotherGetsIn());
    EXPECT_EQ(m_access.started.size(), 1U);
}

const FirstWord AllFirstWords[] = {
    {"AnotherVersion", [](SocketPeer& peer) { peer.SendHello(2, "", "secret"); }, vt::EBye::Version,
     "this server speaks version 1 of the protocol, not 2"},
    {"AWrongToken", [](SocketPeer& peer) { peer.SendHello(1, "joe", "guess"); }, vt::EBye::NotAdmitted,
     "the token of 'joe' is wrong"},
    {"NoToken", [](SocketPeer& peer) { peer.SendHello(); }, vt::EBye::NotAdmitted,
     "the token of '' is wrong"},
    {"AnythingButAHello", [](SocketPeer& peer) { peer.Subscribe(1, "/S"); }, vt::EBye::Malformed,
     "the first message must be a hello"},
    {"APing", [](SocketPeer& peer) { peer.Send(vt::PingMessage()); }, vt::EBye::Malformed,
     "the first message must be a hello"},
    {"AMessageThatIsNone", [](SocketPeer& peer) { peer.SendFrame("garbage"); }, vt::EBye::Malformed,
     "malformed message: an array was expected"},
    {"AnEmptyMessage", [](SocketPeer& peer) { peer.SendFrame(""); }, vt::EBye::Malformed,
     "malformed message: an array was expected"},
    {"AFrameThatIsTooLarge", [](SocketPeer& peer) { peer.SendFrame(QByteArray(4097, 'x')); }, vt::EBye::Limit,
     "a message of 4097 bytes, where 4096 are allowed"},
    {"AFrameThatIsTooLargeByFar", [](SocketPeer& peer) { peer.SendFrame(QByteArray(1 << 20, 'x')); },
     vt::EBye::Limit, "a message of 1048576 bytes, where 4096 are allowed"},
    {"TheAnnouncementOfALargeFrameAlone",
     [](SocketPeer& peer) { peer.SendBytes(QByteArray("\0\0\x10\1", 4)); }, vt::EBye::Limit,
     "a message of 4097 bytes, where 4096 are allowed"},
};

INSTANTIATE_TEST_SUITE_P(Admission, FirstWords, testing::ValuesIn(AllFirstWords),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Admission, AClientWithTheWrongTokenIsToldAndAsksMoreAndMoreRarely) {
    m_access.wantedToken = QStringLiteral("secret");
    m_clientOptions.user = QStringLiteral("joe");
    m_clientOptions.token = QStringLiteral("guess");
    m_clientOptions.firstRetry = 20ms;
    m_clientOptions.longestRetry = 10000ms;
    Listen();
    IVtClient* const client = Connect();
    EXPECT_TRUE(WaitUntil([this] { return ServerLines().size() >= 5; }));
    EXPECT_EQ(client->GetLastError().toStdString(), "the server refuses: the token of 'joe' is wrong");
    EXPECT_THAT(Texts(ClientLines()), ElementsAre(HasSubstr("the token of 'joe' is wrong")))
        << "the same reason again is no news";
    // Four waits of at least half of 20, 40, 80 and 160 ms lie between the five attempts.
    const auto& records = m_traces.Records();
    EXPECT_GE(records.front().time.msecsTo(records.back().time), 145);
    m_access.wantedToken = QStringLiteral("guess");
    EXPECT_TRUE(ComesIn(client));
    EXPECT_EQ(client->GetLastError(), QString());
}

TEST_F(Admission, AHelloThatDoesNotComeInTimeEndsTheConnection) {
    ManualClock clock;
    ManualLoop loop(clock);
    vt::ServerHub hub(m_access, loop, vt::ServerHub::Settings());
    vt::SocketListener listener;
    QString error;
    ASSERT_TRUE(listener.Listen(m_serverOptions, false, &error)) << error.toStdString();
    listener.SetHandler(
        [&hub](std::unique_ptr<vt::IChannel> channel) { hub.AddChannel(std::move(channel)); });
    SocketPeer silent(listener.Port());
    SocketPeer slow(listener.Port());
    ASSERT_TRUE(WaitUntil([&hub] { return hub.CountSessions() == 2; }));
    slow.SendBytes(QByteArray("\0\0\0\x20", 4));  // a beginning is no hello
    RunTurns(5);
    clock.Pass(vtlimits::HelloTimeout - 1ms);
    loop.Run();
    RunTurns(5);
    EXPECT_EQ(hub.CountSessions(), 2);
    clock.Pass(251ms);
    loop.Run();
    for (SocketPeer* const peer : {&silent, &slow}) {
        const vt::ByeMessage* const bye = peer->WaitFor<vt::ByeMessage>();
        ASSERT_NE(bye, nullptr);
        EXPECT_EQ(bye->code, vt::EBye::Silence);
        EXPECT_EQ(bye->reason, QStringLiteral("no hello in time"));
        EXPECT_TRUE(peer->WaitClosed());
    }
    loop.Run();
    EXPECT_EQ(hub.CountSessions(), 0);
}

TEST_F(Admission, TenThousandThatConnectAndSayNothingOneAfterTheOtherKeepNobodyOut) {
    Listen();
    IVtClient* const client = Connect();
    ASSERT_TRUE(ComesIn(client));
    for (int i = 0; i < 10000; ++i) {
        SocketPeer peer(m_server.GetPort());
        ASSERT_TRUE(peer.WaitConnected()) << i;
        peer.Socket().abort();
        if (i % 1000 == 0) {
            ASSERT_TRUE(AnotherGetsIn()) << i;
        }
    }
    EXPECT_TRUE(AnotherGetsIn());
    EXPECT_TRUE(client->IsConnected());
    EXPECT_TRUE(WaitUntil([this] { return m_server.GetPeers().size() == 1; }));
}

TEST_F(Admission, HundredsAtOnceThatSayNothingKeepNobodyOut) {
    Listen();
    IVtClient* const client = Connect();
    ASSERT_TRUE(ComesIn(client));
    std::vector<std::unique_ptr<SocketPeer>> peers;
    for (int i = 0; i < Crowd; ++i)
        peers.push_back(std::make_unique<SocketPeer>(m_server.GetPort()));
    EXPECT_TRUE(AnotherGetsIn());
    EXPECT_TRUE(client->IsConnected());
}

// As after a restart of the server.
TEST_F(Admission, HundredsThatComeAtOnceAndTakeTheirTimeAllGetIn) {
    Listen();
    std::vector<std::unique_ptr<SocketPeer>> peers;
    for (int i = 0; i < Crowd; ++i)
        peers.push_back(std::make_unique<SocketPeer>(m_server.GetPort()));
    for (const auto& peer : peers)
        ASSERT_TRUE(peer->WaitConnected());
    EXPECT_TRUE(AnotherGetsIn()) << "and the server has seen all who came before";
    for (const auto& peer : peers)
        peer->SendHello();
    for (const auto& peer : peers)
        ASSERT_NE(peer->WaitFor<vt::WelcomeMessage>(), nullptr);
    EXPECT_THAT(Texts(ServerLines()), IsEmpty());
}

/// A place where a server cannot listen.
struct BadPlace {
    const char* name;
    const char* address;
    int port;
    bool hasCredentials;
    const char* error;
};

class BadPlaces : public Admission, public testing::WithParamInterface<BadPlace> {};

TEST_P(BadPlaces, AreRefusedWithOneLine) {
    m_access.needsCredentials = GetParam().hasCredentials;
    m_serverOptions.address = QString::fromLatin1(GetParam().address);
    m_serverOptions.port = GetParam().port;
    QString error;
    EXPECT_FALSE(m_server.Listen(m_serverOptions, &error));
    EXPECT_EQ(error.toStdString(), GetParam().error);
    EXPECT_FALSE(m_server.IsListening());
    EXPECT_EQ(m_server.GetPort(), 0);
}

const BadPlace AllBadPlaces[] = {
    {"EverywhereWithoutTlsAndCredentials", "0.0.0.0", 0, false,
     "listening on 0.0.0.0 needs TLS and credentials (or to be allowed as insecure)"},
    {"EverywhereWithCredentialsOnly", "0.0.0.0", 0, true,
     "listening on 0.0.0.0 needs TLS and credentials (or to be allowed as insecure)"},
    {"EverywhereInVersion6", "::", 0, false,
     "listening on :: needs TLS and credentials (or to be allowed as insecure)"},
    {"AnotherInterface", "192.0.2.1", 0, false,
     "listening on 192.0.2.1 needs TLS and credentials (or to be allowed as insecure)"},
    {"AHostName", "server.invalid", 0, false, "'server.invalid' is no IP address"},
    {"NoAddress", "", 0, false, "'' is no IP address"},
    {"ANegativePort", "127.0.0.1", -1, false, "-1 is no port"},
    {"TooLargeAPort", "127.0.0.1", 65536, false, "65536 is no port"},
};

INSTANTIATE_TEST_SUITE_P(Admission, BadPlaces, testing::ValuesIn(AllBadPlaces),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Admission, APortInUseIsNamed) {
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QHostAddress::LocalHost)));
    m_serverOptions.port = other.serverPort();
    QString error;
    EXPECT_FALSE(m_server.Listen(m_serverOptions, &error));
    EXPECT_EQ(error, QStringLiteral("cannot listen on 127.0.0.1 port %1: The bound address is already in use")
                         .arg(other.serverPort()));
}

TEST_F(Admission, TwoServersDoNotShareAPort) {
    Listen();
    VtServer second(m_access);
    m_serverOptions.port = m_server.GetPort();
    QString error;
    EXPECT_FALSE(second.Listen(m_serverOptions, &error));
    EXPECT_THAT(error.toStdString(), HasSubstr("is already in use"));
    EXPECT_TRUE(AnotherGetsIn());
}

TEST_F(Admission, AnInsecureServerMayListenEverywhere) {
    m_serverOptions.address = QStringLiteral("0.0.0.0");
    m_serverOptions.isInsecure = true;
    Listen();
    EXPECT_TRUE(AnotherGetsIn());
}

TEST_F(Admission, AServerThatListensAgainTakesItsClientsAlong) {
    Listen();
    m_serverOptions.port = m_server.GetPort();
    IVtClient* const client = Connect();
    ASSERT_TRUE(ComesIn(client));
    m_server.Close(QStringLiteral("back soon"));
    EXPECT_TRUE(WaitUntil([client] { return !client->IsConnected(); }));
    EXPECT_EQ(client->GetLastError(), QStringLiteral("the server refuses: back soon"));
    EXPECT_EQ(m_access.ended.size(), m_access.started.size()) << "who is gone was said to be";
    Listen();
    EXPECT_TRUE(ComesIn(client));
}

/// An address at which no client finds a server.
struct NoServer {
    const char* name;
    const char* address;
    const char* error;
};

class NoServers : public Admission, public testing::WithParamInterface<NoServer> {};

TEST_P(NoServers, AreReportedInOneLine) {
    QTcpSocket placeholder;  // holds a port and does not listen
    ASSERT_TRUE(placeholder.bind(QHostAddress(QHostAddress::LocalHost)));
    IVtClient* const client = Connect(GetParam().address, placeholder.localPort());
    ASSERT_NE(client, nullptr);
    EXPECT_TRUE(WaitUntil([client] { return !client->GetLastError().isEmpty(); }));
    EXPECT_EQ(client->GetLastError().toStdString(), GetParam().error);
    EXPECT_THAT(Texts(ClientLines()), ElementsAre(HasSubstr(GetParam().error)));
    EXPECT_FALSE(client->IsConnected());
}

const NoServer AllNoServers[] = {
    {"NobodyListens", "127.0.0.1", "Connection refused"},
    {"NobodyListensWithTls", "mcss://127.0.0.1", "Connection refused"},
    {"ANameThatCannotBe", "x..invalid", "Host not found"},
    {"ANameThatCannotBeWithTls", "mcss://x..invalid", "Host not found"},
};

INSTANTIATE_TEST_SUITE_P(Admission, NoServers, testing::ValuesIn(AllNoServers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Admission, AHostBeyondAsciiIsGivenInLatin1AndLookedUpAsItsName) {
    Listen();
    EXPECT_TRUE(
        ComesIn(Connect("l\xba"
                        "calh\xba"
                        "st")));  // signs that stand for an "o" in names of hosts
}

/// An address that can be none, and why.
struct NoAddress {
    const char* name;
    const char* address;
    int port;
    const char* problem;
};

class NoAddresses : public Admission, public testing::WithParamInterface<NoAddress> {};

TEST_P(NoAddresses, AreRefusedWithTheReason) {
    EXPECT_EQ(VtClientCenter::Instance().CreateVtClient(GetParam().address, GetParam().port), nullptr);
    const QString address = QString::fromLatin1(GetParam().address);
    EXPECT_THAT(m_traces.Messages(),
                ElementsAre(QStringLiteral("There can be no server at address '%1', port %2: %3")
                                .arg(address, QString::number(GetParam().port),
                                     QString::fromLatin1(GetParam().problem))));
}

const NoAddress AllNoAddresses[] = {
    {"None", nullptr, 7450, "it names no host"},
    {"Empty", "", 7450, "it names no host"},
    {"SchemeAlone", "mcss://", 7450, "it names no host"},
    {"OtherScheme", "ftp://tower", 7450, "'ftp' is no scheme of servers"},
    {"Path", "tower/x", 7450, "'/' belongs to no host"},
    {"BlankBeyondAscii", "to\xa0wer", 7450, "'\xa0' belongs to no host"},
    {"BeyondLatin1", "?.example", 7450,
     "'?' belongs to no host; for a character beyond Latin-1 write the host's ACE form, which begins with "
     "xn--"},
    {"PortZero", "tower", 0, "ports are 1 to 65535"},
    {"PortTooLarge", "tower", 65536, "ports are 1 to 65535"},
};

INSTANTIATE_TEST_SUITE_P(Admission, NoAddresses, testing::ValuesIn(AllNoAddresses),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
