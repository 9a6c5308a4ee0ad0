// SPDX-License-Identifier: Apache-2.0
// The program is asked to read its files anew.
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <sys/types.h>
#include <csignal>
#include <vector>

namespace {

const char* const Rules = "allow operator read /\nallow viewer read /\n";

class ReadAnew : public testing::Test {
  protected:
    ~ReadAnew() override {
        for (IVtClient* const client : m_clients)
            VtClientCenter::Instance().DestroyVtClient(client);
    }

    QByteArray Line(const char* user, const char* role) const {
        return QByteArray("user ") + user + ' ' + role + ' ' + VtTokenHash::Of(m_token).ToText().toUtf8() +
               '\n';
    }
    void Start(const QByteArray& lines) {
        m_server.WriteFile(QStringLiteral("access"), Rules + lines);
        m_server.Start({QStringLiteral("--access"), m_server.Path(QStringLiteral("access"))});
    }
    /// The line of the log that tells what came of it.
    QString ReadAnewWith(const QByteArray& text) {
        m_server.WriteFile(QStringLiteral("access"), text);
        const int before = m_server.Output().size();
        ::kill(static_cast<pid_t>(m_server.ProcessId()), SIGHUP);
        QString line;
        ServerProcess::WaitFor([&] {
            const QStringList lines = m_server.Output().mid(before).split(QLatin1Char('\n'));
            for (int i = 0; i + 1 < lines.size() && line.isEmpty(); ++i)
                if (lines[i].startsWith(QLatin1String("access file"))) line = lines[i];
            return !line.isEmpty();
        });
        return line;
    }
    IVtClient* Connect(const char* user) {
        VtClientOptions options;
        options.user = QLatin1String(user);
        options.token = m_token;
        VtClientCenter::Instance().SetOptions(options);
        IVtClient* const client = VtClientCenter::Instance().CreateVtClient("127.0.0.1", m_server.Port());
        VtClientCenter::Instance().SetOptions(VtClientOptions());
        m_clients.push_back(client);
        return client;
    }
    bool ComesIn(IVtClient* client) {
        return ServerProcess::WaitFor([client] { return client->IsConnected(); });
    }

    const QString m_token = VtTokenHash::CreateToken();
    ServerProcess m_server;
    std::vector<IVtClient*> m_clients;
};

TEST_F(ReadAnew, SessionsEndWhoseUserTheFileKnowsOtherwiseAndNoOthers) {
    const QByteArray alice = Line("alice", "operator");
    ASSERT_NO_FATAL_FAILURE(Start(alice + Line("bob", "operator") + Line("carol", "operator")));
    IVtClient* const aliceClient = Connect("alice");
    IVtClient* const bobClient = Connect("bob");
    IVtClient* const carolClient = Connect("carol");
    ASSERT_TRUE(ComesIn(aliceClient) && ComesIn(bobClient) && ComesIn(carolClient));
    EXPECT_EQ(ReadAnewWith(Rules + alice + Line("carol", "viewer")),
              QStringLiteral("access file and certificates are read anew"));
    ASSERT_TRUE(
        ServerProcess::WaitFor([this] { return m_server.Output().count(QStringLiteral(" has gone")) == 2; }));
    EXPECT_TRUE(ServerProcess::WaitFor([bobClient] {
        return bobClient->GetLastError().contains(QLatin1String("user or token is wrong"));
    })) << bobClient->GetLastError().toStdString();
    EXPECT_TRUE(ServerProcess::WaitFor(
        [this] { return m_server.Output().contains(QLatin1String("is connected as viewer")); }));
    EXPECT_FALSE(bobClient->IsConnected());
    EXPECT_TRUE(aliceClient->IsConnected());
    EXPECT_EQ(m_server.Output().count(QStringLiteral(" has gone")), 2);
    EXPECT_EQ(m_server.Terminate(), 0);
}

TEST_F(ReadAnew, AFileThatCannotBeUsedChangesNothing) {
    ASSERT_NO_FATAL_FAILURE(Start(Line("alice", "operator")));
    IVtClient* const client = Connect("alice");
    ASSERT_TRUE(ComesIn(client));
    const QString line = ReadAnewWith("allow operator read /\nusers alice\n");
    EXPECT_TRUE(line.startsWith(QLatin1String("access file and certificates stay as they were: ")))
        << line.toStdString();
    EXPECT_TRUE(line.contains(QLatin1String(":2: "))) << line.toStdString();
    EXPECT_TRUE(ComesIn(Connect("alice")));
    EXPECT_TRUE(client->IsConnected());
    EXPECT_EQ(m_server.Terminate(), 0);
}

}  // namespace
