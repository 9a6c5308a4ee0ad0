// SPDX-License-Identifier: Apache-2.0
// Who gets in over TLS and who does not, and what each side then says: one clear line.
#include <tests/platform/vtclient/baretlsserver.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslCipher>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

std::vector<std::string> Texts(const std::vector<QString>& lines) {
    std::vector<std::string> texts;
    for (const QString& line : lines)
        texts.push_back(line.toStdString());
    return texts;
}

class TlsEnds : public SocketEnds {
  protected:
    void SetUp() override { ASSERT_EQ(Certificates::Instance().Error(), QString()); }
    void UseServerCertificate(const char* name) {
        m_serverOptions.certificateFile = Pem(name);
        m_serverOptions.privateKeyFile = Key(name);
    }
    void UseClientCertificate(const char* name) {
        m_clientOptions.certificateFile = Pem(name);
        m_clientOptions.privateKeyFile = Key(name);
    }
    static QString Pem(const char* name) {
        return Certificates::Instance().File((std::string(name) + ".pem").c_str());
    }
    static QString Key(const char* name) {
        return Certificates::Instance().File((std::string(name) + ".key").c_str());
    }
};

/// One meeting of a server and a client. An empty certificate is none; an empty server certificate means a
/// port without TLS.
struct Meeting {
    const char* name;
    const char* server;
    bool wantsClientCertificate;
    const char* address;  ///< what the client connects to
    const char* client;
    const char* clientSays;  ///< a part of it; empty: it gets in
    const char* serverSays;
};

class Meetings : public TlsEnds, public testing::WithParamInterface<Meeting> {};

/// What the server says of a client that breaks off where it may be told first that the handshake is over.
const char* OtherWords(const Meeting& meeting) {
#ifdef Q_OS_WIN
    if (QByteArray(meeting.serverSays).startsWith("broke off")) return "ends: the peer closed the connection";
#endif
    return meeting.serverSays;
}

TEST_P(Meetings, EndWell) {
    const Meeting& meeting = GetParam();
    if (*meeting.server != '\0') UseServerCertificate(meeting.server);
    if (meeting.wantsClientCertificate) m_serverOptions.caFile = Pem("authority");
    m_access.wantsCertificate = meeting.wantsClientCertificate;
    m_clientOptions.caFile = Pem("authority");
    if (*meeting.client != '\0') UseClientCertificate(meeting.client);
    m_clientOptions.firstRetry = m_clientOptions.longestRetry = 100s;
    Listen();
    IVtClient* const client = Connect(meeting.address);
    ASSERT_NE(client, nullptr);
    const bool isGood = *meeting.clientSays == '\0';
    ASSERT_TRUE(WaitUntil([&] {
        return isGood ? client->IsConnected() : !client->GetLastError().isEmpty() && !ServerLines().empty();
    })) << "client: "
        << client->GetLastError().toStdString() << ", server lines: " << ServerLines().size();
    RunTurns(20);
    EXPECT_EQ(client->IsConnected(), isGood);
    if (isGood) {
        EXPECT_THAT(m_traces.Messages(), IsEmpty());
        ASSERT_EQ(m_server.GetPeers().size(), 1U);
        EXPECT_EQ(m_server.GetPeers().front().certificateName, S(meeting.client));
        EXPECT_EQ(m_server.GetPeers().front().isEncrypted, *meeting.server != '\0');
        return;
    }
    const std::string error = client->GetLastError().toStdString();
    EXPECT_THAT(error, HasSubstr(meeting.clientSays));
    EXPECT_THAT(error, testing::Not(HasSubstr("\n")));
    EXPECT_THAT(Texts(ClientLines()), ElementsAre(HasSubstr(meeting.clientSays)));
    ASSERT_THAT(Texts(ServerLines()),
                ElementsAre(testing::AnyOf(HasSubstr(meeting.serverSays), HasSubstr(OtherWords(meeting)))));
    EXPECT_EQ(SourceOfServerLine(), S("127.0.0.1")) << "so that a host cannot fill a stream";
    EXPECT_THAT(m_server.GetPeers(), IsEmpty());
}

constexpr const char* Local = "mcss://127.0.0.1";

const Meeting AllMeetings[] = {
    {"AServerWithAGoodCertificate", "server", false, Local, "", "", ""},
    {"AServerOfAnUnknownAuthority", "server.stranger", false, Local, "",
     "the server's certificate: The issuer certificate", "broke off the TLS handshake (does it trust"},
    {"AServerWithAKeyOfRsa", "server.rsa", false, Local, "", "", ""},
    {"AServerUnderAnotherName", "server", false, "mcss://localhost", "",
     "the server's certificate: The host name did not match", "broke off the TLS handshake (does it trust"},
    {"AServerThatIsTheHostByItsCommonNameOnly", "server.localhost", false, "mcss://localhost", "",
     "the server's certificate: 'localhost' is not among its subject alternative names",
     "broke off the TLS handshake (does it trust our certificate?)"},
    {"AServerThatIsTheHostByItsAlternativeNameAndHasAnotherCommonName", "server.localhost", false, Local, "",
     "", ""},
    {"AClientWithAGoodCertificate", "server", true, Local, "client", "", ""},
    {"AClientWhoseCertificateIsOver", "server", true, Local, "client.expired",
     "the server refuses: the client certificate: The certificate has expired",
     "is refused: the client certificate: The certificate has expired"},
    {"AClientOfAnUnknownAuthority", "server", true, Local, "client.stranger",
     "the server refuses: the client certificate: The issuer certificate",
     "is refused: the client certificate: The issuer certificate"},
    {"AClientWhoseCertificateHasTwoCommonNames", "server", true, Local, "client.twonames",
     "the server refuses: the client certificate: It has not exactly one common name",
     "is refused: the client certificate: It has not exactly one common name, and so names no user"},
    {"AClientWhoseCertificateHasNoCommonName", "server", true, Local, "client.nameless",
     "the server refuses: the client certificate: It has not exactly one common name",
     "is refused: the client certificate: It has not exactly one common name, and so names no user"},
    {"AClientWithoutTheCertificateItNeeds", "server", true, Local, "",
     "the server refuses: a client certificate is needed", "ends: a client certificate is needed"},
    {"APlainClientAtATlsPort", "server", false, "127.0.0.1", "",
     "closed the connection before it welcomed us (does it want TLS?)", "TLS failed (does it speak TLS?)"},
    {"ATlsClientAtAPlainPort", "", false, Local, "", "TLS failed (does the server speak TLS?)",
     "ends: the peer speaks TLS, this port does not"},
    {"APlainClientAtAPlainPort", "", false, "mcs://127.0.0.1", "", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Tls, Meetings, testing::ValuesIn(AllMeetings),
                         [](const auto& row) { return std::string(row.param.name); });

/// Files with which no server starts.
struct Unusable {
    const char* name;
    const char* certificate;
    const char* key;
    const char* error;  ///< "%1" stands for the certificate's file, "%2" for the key's
};

class UnusableFiles : public TlsEnds, public testing::WithParamInterface<Unusable> {};

TEST_P(UnusableFiles, KeepAServerFromStarting) {
    m_serverOptions.certificateFile = Pem(GetParam().certificate);
    m_serverOptions.privateKeyFile = Key(GetParam().key);
    QString error;
    EXPECT_FALSE(m_server.Listen(m_serverOptions, &error));
    const QString expected = S(GetParam().error)
                                 .replace(S("%1"), m_serverOptions.certificateFile)
                                 .replace(S("%2"), m_serverOptions.privateKeyFile);
    EXPECT_EQ(error, expected);
    EXPECT_FALSE(m_server.IsListening());
}

const Unusable AllUnusable[] = {
    {"ACertificateThatIsOver", "server.expired", "server.expired",
     "the certificate '%1' expired on 2021-01-01T00:00:00Z"},
    {"ACertificateThatDoesNotHoldYet", "server.future", "server.future",
     "the certificate '%1' holds from 2099-01-01T00:00:00Z on only"},
    {"TheKeyOfAnotherCertificate", "server", "client", "the key '%2' does not fit the certificate '%1'"},
    {"AKeyOfAnotherKind", "server", "server.rsa", "the key '%2' does not fit the certificate '%1'"},
    {"AKeyOfAnotherKindThanRsa", "server.rsa", "server", "the key '%2' does not fit the certificate '%1'"},
};

INSTANTIATE_TEST_SUITE_P(Tls, UnusableFiles, testing::ValuesIn(AllUnusable),
                         [](const auto& row) { return std::string(row.param.name); });

// It was in force when the server started.
TEST_F(TlsEnds, AServerWhoseCertificateIsOverIsNotTrusted) {
    const BareTlsServer server(Pem("server.expired"), Key("server.expired"));
    m_clientOptions.caFile = Pem("authority");
    IVtClient* const client = Connect(Local, server.serverPort());
    EXPECT_TRUE(WaitUntil([client] { return !client->GetLastError().isEmpty(); }));
    EXPECT_THAT(client->GetLastError().toStdString(),
                HasSubstr("the server's certificate: The certificate has expired"));
}

TEST_F(TlsEnds, AClientWithTheKeyOfAnotherCertificateSaysSo) {
    UseServerCertificate("server");
    m_clientOptions.caFile = Pem("authority");
    m_clientOptions.certificateFile = Pem("client");
    m_clientOptions.privateKeyFile = Key("server");
    Listen();
    IVtClient* const client = Connect(Local);
    EXPECT_TRUE(WaitUntil([client] { return !client->GetLastError().isEmpty(); }));
    EXPECT_THAT(client->GetLastError().toStdString(), HasSubstr("' does not fit the certificate '"));
}

/// What two ends agree on for TLS 1.2, if they may.
struct Cipher {
    const char* name;
    const char* cipher;
    bool isTaken;
};

class Ciphers : public TlsEnds, public testing::WithParamInterface<Cipher> {};

constexpr Cipher AllCiphers[] = {
    {"WithForwardSecrecy", "ECDHE-RSA-AES128-GCM-SHA256", true},
    {"WithForwardSecrecyAndChaining", "ECDHE-RSA-AES256-SHA384", true},
    {"WithTheKeyOfTheCertificate", "AES128-GCM-SHA256", false},
    {"WithTheKeyOfTheCertificateAndChaining", "AES256-SHA256", false},
};

TEST_P(Ciphers, AreTakenByAServerIfTheyHaveForwardSecrecy) {
    UseServerCertificate("server.rsa");
    Listen();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2);
    configuration.setCiphers({QSslCipher(S(GetParam().cipher))});
    ASSERT_EQ(configuration.ciphers().size(), 1);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    QSslSocket peer;
    peer.setSslConfiguration(configuration);
    bool isOver = false;
    QObject::connect(&peer, &QAbstractSocket::errorOccurred, [&isOver] { isOver = true; });
    peer.connectToHostEncrypted(S("127.0.0.1"), static_cast<quint16>(m_server.GetPort()));
    EXPECT_TRUE(WaitUntil([&] { return peer.isEncrypted() || isOver; }));
    EXPECT_EQ(peer.isEncrypted(), GetParam().isTaken) << peer.errorString().toStdString();
}

TEST_P(Ciphers, AreTakenByAClientIfTheyHaveForwardSecrecy) {
    BareTlsServer server(Pem("server.rsa"), Key("server.rsa"));
    server.UseCipher(GetParam().cipher);
    m_clientOptions.caFile = Pem("authority");
    m_clientOptions.firstRetry = m_clientOptions.longestRetry = 100s;
    IVtClient* const client = Connect(Local, server.serverPort());
    const auto isEncrypted = [&server] {
        const auto sockets = server.findChildren<QSslSocket*>();
        return !sockets.isEmpty() && sockets.front()->isEncrypted();
    };
    EXPECT_TRUE(WaitUntil([&] { return isEncrypted() || !client->GetLastError().isEmpty(); }));
    EXPECT_EQ(isEncrypted(), GetParam().isTaken) << client->GetLastError().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Tls, Ciphers, testing::ValuesIn(AllCiphers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TlsEnds, HundredsThatConnectAndSayNothingKeepNobodyOut) {
    constexpr int Crowd = 400;
    UseServerCertificate("server");
    m_clientOptions.caFile = Pem("authority");
    Listen();
    IVtClient* const client = Connect(Local);
    ASSERT_TRUE(ComesIn(client)) << client->GetLastError().toStdString();
    std::vector<std::unique_ptr<SocketPeer>> peers;
    for (int i = 0; i < Crowd; ++i)
        peers.push_back(std::make_unique<SocketPeer>(m_server.GetPort()));
    EXPECT_TRUE(ComesIn(Connect(Local)));
    EXPECT_TRUE(client->IsConnected());
    EXPECT_THAT(m_traces.Messages(), IsEmpty());
}

// The first byte of a handshake may come long before the second.
TEST_F(TlsEnds, AHandshakeThatStopsAfterItsFirstByteKeepsNobodyOut) {
    UseServerCertificate("server");
    m_clientOptions.caFile = Pem("authority");
    Listen();
    SocketPeer peer(m_server.GetPort());
    ASSERT_TRUE(peer.WaitConnected());
    peer.SendBytes(QByteArray(1, '\x16'));
    IVtClient* const client = Connect(Local);
    EXPECT_TRUE(ComesIn(client)) << client->GetLastError().toStdString();
}

class ChangedCertificates : public TlsEnds {
  protected:
    /// Puts the certificate \a name where the server reads its own.
    void Put(const char* name) {
        for (const QString& file : {m_serverOptions.certificateFile, m_serverOptions.privateKeyFile})
            QFile::remove(file);
        ASSERT_TRUE(QFile::copy(Pem(name), m_serverOptions.certificateFile));
        ASSERT_TRUE(QFile::copy(Key(name), m_serverOptions.privateKeyFile));
    }
    /// What a client that comes now says; empty if it gets in.
    QString Visit() {
        IVtClient* const client = Connect(Local);
        EXPECT_TRUE(
            WaitUntil([client] { return client->IsConnected() || !client->GetLastError().isEmpty(); }));
        return client->IsConnected() ? QString() : client->GetLastError();
    }

    QTemporaryDir m_directory;
};

TEST_F(ChangedCertificates, AreReadAnewForThoseWhoConnectThenIfTheyCanBeUsed) {
    m_serverOptions.certificateFile = m_directory.filePath(QStringLiteral("pem"));
    m_serverOptions.privateKeyFile = m_directory.filePath(QStringLiteral("key"));
    m_clientOptions.caFile = Pem("authority");
    m_clientOptions.firstRetry = m_clientOptions.longestRetry = 100s;
    ASSERT_NO_FATAL_FAILURE(Put("server"));
    Listen();
    IVtClient* const first = Connect(Local);
    ASSERT_TRUE(ComesIn(first)) << first->GetLastError().toStdString();
    ASSERT_NO_FATAL_FAILURE(Put("server.stranger"));
    EXPECT_EQ(Visit(), QString()) << "nobody has asked for it to be read";
    QString error;
    EXPECT_TRUE(m_server.ReadCertificates(&error)) << error.toStdString();
    EXPECT_THAT(Visit().toStdString(), HasSubstr("The issuer certificate"));
    ASSERT_NO_FATAL_FAILURE(Put("server.expired"));
    EXPECT_FALSE(m_server.ReadCertificates(&error));
    EXPECT_THAT(error.toStdString(), HasSubstr("' expired on 2021-01-01"));
    ASSERT_NO_FATAL_FAILURE(Put("server"));
    EXPECT_TRUE(QFile::remove(m_serverOptions.privateKeyFile));
    EXPECT_FALSE(m_server.ReadCertificates(&error));
    EXPECT_THAT(error.toStdString(), HasSubstr(m_serverOptions.privateKeyFile.toStdString()));
    EXPECT_THAT(Visit().toStdString(), HasSubstr("The issuer certificate")) << "what was read before";
    EXPECT_TRUE(first->IsConnected());
}

/// What somebody sends who speaks something else.
struct Foreign {
    const char* name;
    bool isTls;
    const char* bytes;
    const char* serverSays;
};

class Foreigners : public TlsEnds, public testing::WithParamInterface<Foreign> {};

TEST_P(Foreigners, AreTurnedAwayAndOthersGoOn) {
    if (GetParam().isTls) UseServerCertificate("server");
    m_clientOptions.caFile = Pem("authority");
    Listen();
    IVtClient* const client = Connect(GetParam().isTls ? "mcss://127.0.0.1" : "127.0.0.1");
    ASSERT_TRUE(ComesIn(client));
    SocketPeer foreigner(m_server.GetPort());
    ASSERT_TRUE(foreigner.WaitConnected());
    foreigner.SendBytes(GetParam().bytes);
    EXPECT_TRUE(foreigner.WaitClosed());
    if (!GetParam().isTls) {
        EXPECT_EQ(foreigner.Socket().bytesAvailable(), 0) << "there is no bye for them";
    }
    EXPECT_TRUE(WaitUntil([this] { return !ServerLines().empty(); }));
    EXPECT_THAT(Texts(ServerLines()), ElementsAre(HasSubstr(GetParam().serverSays)));
    EXPECT_TRUE(client->IsConnected());
    EXPECT_TRUE(ComesIn(Connect(GetParam().isTls ? "mcss://127.0.0.1" : "127.0.0.1")));
}

const Foreign AllForeigners[] = {
    {"ABrowserAtAPlainPort", false, "GET / HTTP/1.1\r\nHost: server\r\n\r\n",
     "the peer does not speak this protocol: it begins with 'GET '"},
    {"ABrowserAtATlsPort", true, "GET / HTTP/1.1\r\nHost: server\r\n\r\n", "TLS failed (does it speak TLS?)"},
    {"GarbageAtAPlainPort", false, "\xff\xfe\x01 garbage garbage garbage",
     "the peer does not speak this protocol: it begins with '... '"},
    {"GarbageAtATlsPort", true, "\xff\xfe\x01 garbage garbage garbage", "TLS failed (does it speak TLS?)"},
    {"TlsAtAPlainPort", false, "\x16\x03\x01\x02", "the peer speaks TLS, this port does not"},
};

INSTANTIATE_TEST_SUITE_P(Tls, Foreigners, testing::ValuesIn(AllForeigners),
                         [](const auto& row) { return std::string(row.param.name); });

/// A server that speaks something else, and what a client says of it.
struct ForeignServer {
    const char* name;
    const char* address;
    const char* bytes;
    const char* clientSays;
};

class ForeignServers : public TlsEnds, public testing::WithParamInterface<ForeignServer> {};

TEST_P(ForeignServers, AreNamedForWhatTheySay) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress(QHostAddress::LocalHost)));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server] {
        QTcpSocket* const socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write(GetParam().bytes);
        });
    });
    m_clientOptions.firstRetry = m_clientOptions.longestRetry = 100s;
    IVtClient* const client = Connect(GetParam().address, server.serverPort());
    ASSERT_NE(client, nullptr);
    EXPECT_TRUE(WaitUntil([client] { return !client->GetLastError().isEmpty(); }));
    EXPECT_THAT(client->GetLastError().toStdString(), HasSubstr(GetParam().clientSays));
    EXPECT_THAT(ClientLines(), testing::SizeIs(1));
}

const ForeignServer AllForeignServers[] = {
    {"APlainClientAtAWebServer", "127.0.0.1", "HTTP/1.1 400 Bad Request\r\n\r\n",
     "the peer does not speak this protocol: it begins with 'HTTP'"},
    {"ATlsClientAtAWebServer", Local, "HTTP/1.1 400 Bad Request\r\n\r\n",
     "TLS failed (does the server speak TLS?)"},
    {"APlainClientAtAMailServer", "127.0.0.1", "220 mail ESMTP\r\n", "it begins with '220 '"},
    {"APlainClientAtOneWhoSaysNothingSensible", "127.0.0.1", "\x01\x01\x01\x01\x01", "begins with '....'"},
};

INSTANTIATE_TEST_SUITE_P(Tls, ForeignServers, testing::ValuesIn(AllForeignServers),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
