// SPDX-License-Identifier: Apache-2.0
// Who gets in to the server over TLS, and what each may do there: mctree tells, with an exit code and one
// line.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/platform/vtclient/baretlsserver.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

#include <QtCore/QMap>

// Enough to connect, also by Wine, and to be waited for in vain.
#ifdef Q_OS_WIN
#define MOMENT "5000"
#else
#define MOMENT "300"
#endif

namespace {

using testing::HasSubstr;

constexpr const char* Rules = R"(allow operator read   /
allow operator write  /MultiChannelServer
allow viewer   read   /MultiChannelServer/Status
allow receiver read   /MultiChannelServer
allow receiver create /MultiChannelServer/DynamicMpxORVs
user "certificate:client" viewer
)";

constexpr const char* Status = "/MultiChannelServer/Status/ConnectionState";
constexpr const char* Channels = "/MultiChannelServer/Config/NumberOfFreqChannels";

QString S(const char* text) {
    return QString::fromUtf8(text);
}

QString File(const char* name, const char* suffix) {
    return Certificates::Instance().File((std::string(name) + suffix).c_str());
}

/// The server with certificates and rules, and the programs that ask it.
class TlsServer : public testing::Test, protected ProgramRunner {
  protected:
    void StartServer(const char* certificate, bool takesClientCertificates) {
        ASSERT_EQ(Certificates::Instance().Error(), QString());
        QByteArray rules = Rules;
        for (const char* user : {"olga operator", "vera viewer", "rene receiver"})
            ASSERT_NO_FATAL_FAILURE(AddUser(S(user).split(QLatin1Char(' ')), &rules));
        server.WriteFile(S("access"), rules);
        QStringList arguments{S("--tls-cert"), File(certificate, ".pem"),
                              S("--tls-key"),  File(certificate, ".key"),
                              S("--access"),   server.Path(S("access"))};
        if (takesClientCertificates) arguments << S("--tls-ca") << File("authority", ".pem");
        ASSERT_NO_FATAL_FAILURE(server.Start(arguments));
    }
    /// Runs mctree as \a user; with another token if \a token is given.
    int RunAs(const char* user, const QStringList& words, const char* token = nullptr) {
        StartAs(user, words, token);
        return WaitForEnd();
    }
    void StartAs(const char* user, const QStringList& words, const char* token = nullptr) {
        StartAsking(server.Port(),
                    QStringList{S("--tls"), S("--ca"), File("authority", ".pem"), S("--user"), S(user),
                                S("--token"), token != nullptr ? S(token) : m_tokens.value(S(user))} +
                        words);
    }
    int Ask(const QStringList& words) { return Ask(server.Port(), words); }
    int Ask(int port, const QStringList& words) {
        StartAsking(port, words);
        return WaitForEnd();
    }
    void StartAsking(int port, const QStringList& words) {
        environment.remove(S("MCS_TOKEN"));
        environment.remove(S("MCS_TRACE"));
        StartProgram(S(MCTREE), QStringList{S("--connect"), S("127.0.0.1:%1").arg(port)} + words);
    }

    ServerProcess server;

  private:
    /// As an operator does: prints a token, and puts its line into the file.
    void AddUser(const QStringList& userAndRole, QByteArray* rules) {
        ServerProcess maker;
        ASSERT_EQ(maker.Run(QStringList{S("--make-token")} + userAndRole), 0);
        const QStringList lines = maker.Output().split(QLatin1Char('\n'));
        m_tokens[userAndRole[0]] = lines.value(0).section(S(": "), 1);
        *rules += lines.value(1).section(S(": "), 1).toUtf8() + '\n';
    }

    QMap<QString, QString> m_tokens;
};

struct Attempt {
    const char* name;
    const char* user;
    const char* token;  ///< null: the right one
    const char* words;  ///< of mctree
    int code;
    const char* output;
    const char* error;  ///< a part of the line; empty: none
};

void PrintTo(const Attempt& attempt, std::ostream* stream) {
    *stream << attempt.name;
}

class Rights : public TlsServer, public testing::WithParamInterface<Attempt> {};

TEST_P(Rights, AreWhatTheFileSays) {
    ASSERT_NO_FATAL_FAILURE(StartServer("server", false));
    const Attempt& attempt = GetParam();
    const QString words =
        S(attempt.words).replace(S("%status"), S(Status)).replace(S("%channels"), S(Channels));
    EXPECT_EQ(RunAs(attempt.user, words.split(QLatin1Char(' ')), attempt.token), attempt.code);
    EXPECT_THAT(output.toStdString(), HasSubstr(attempt.output));
    EXPECT_THAT(errors.toStdString(), HasSubstr(attempt.error));
    EXPECT_EQ(errors.count('\n'), *attempt.error == '\0' ? 0 : 1) << errors.constData();
}

const Attempt Attempts[] = {
    {"ReadingByAnOperator", "olga", nullptr, "get %status", 0, "connected to", ""},
    {"WritingByAnOperator", "olga", nullptr, "set %channels 9", 0, "", ""},
    {"WritingTheStatusByAnOperator", "olga", nullptr, "set %status x", 1, "",
     "mctree: /MultiChannelServer/Status/ConnectionState: the status is the server's own"},
    {"ReadingByAViewer", "vera", nullptr, "get %status", 0, "connected to", ""},
    {"ReadingMoreByAViewer", "vera", nullptr, "get %channels", 1, "",
     "'/MultiChannelServer/Config/NumberOfFreqChannels' may not be read by 'vera'"},
    {"WritingByAReceiver", "rene", nullptr, "set %channels 9", 1, "",
     "mctree: /MultiChannelServer/Config/NumberOfFreqChannels: no rule of this server allows it"},
    {"LookingForAnMpxOrvThatNobodyUsesByAReceiver", "rene", nullptr,
     "ls /MultiChannelServer/DynamicMpxORVs/Van --timeout " MOMENT, 1, "",
     "mctree: not found: /MultiChannelServer/DynamicMpxORVs/Van"},
    {"AWrongToken", "olga", "guessed", "get %status", 3, "", "the server refuses: user or token is wrong"},
    {"AnUnknownUser", "nobody", "guessed", "get %status", 3, "",
     "the server refuses: user or token is wrong"},
};

INSTANTIATE_TEST_SUITE_P(, Rights, testing::ValuesIn(Attempts),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(TlsServer, LendsMpxOrvsToWhomTheFileAllowsIt) {
    ASSERT_NO_FATAL_FAILURE(StartServer("server", false));
    StartAs("rene", {S("hold"), S("/MultiChannelServer/DynamicMpxORVs/Van")});
    EXPECT_TRUE(WaitUntil([this] { return output.contains("held ") || !IsRunning(); }));
    EXPECT_TRUE(IsRunning()) << errors.constData();
    Kill();
    // Not the same one: it is there until the server has noticed that its holder was killed.
    EXPECT_EQ(RunAs("olga", {S("hold"), S("/MultiChannelServer/DynamicMpxORVs/Bus")}), 1);
    EXPECT_THAT(errors.toStdString(),
                HasSubstr("/MultiChannelServer/DynamicMpxORVs/Bus: no rule of this server allows it"));
}

// It was in force when the server started.
TEST_F(TlsServer, WhoseCertificateIsOverIsNotTrusted) {
    ASSERT_EQ(Certificates::Instance().Error(), QString());
    const BareTlsServer expired(File("server.expired", ".pem"), File("server.expired", ".key"));
    EXPECT_EQ(Ask(expired.serverPort(),
                  {S("--tls"), S("--ca"), File("authority", ".pem"), S("--no-retry"), S("get"), S(Status)}),
              3);
    EXPECT_THAT(errors.toStdString(), HasSubstr("the server's certificate: The certificate has expired"));
    EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
}

TEST_F(TlsServer, DoesNotStartWithACertificateThatIsOver) {
    ASSERT_EQ(Certificates::Instance().Error(), QString());
    EXPECT_EQ(server.Run({S("--listen"), S("127.0.0.1:0"), S("--tls-cert"), File("server.expired", ".pem"),
                          S("--tls-key"), File("server.expired", ".key")}),
              1);
    EXPECT_EQ(server.Errors(), S("mcserver: the certificate '%1' expired on 2021-01-01T00:00:00Z\n")
                                   .arg(File("server.expired", ".pem")));
}

TEST_F(TlsServer, TakesClientCertificatesThatHoldAndWhoseNameItKnows) {
    ASSERT_NO_FATAL_FAILURE(StartServer("server", true));
    const auto askWith = [this](const char* certificate, const char* path) {
        return Ask({S("--ca"), File("authority", ".pem"), S("--cert"), File(certificate, ".pem"), S("--key"),
                    File(certificate, ".key"), S("--no-retry"), S("get"), S(path)});
    };
    EXPECT_EQ(askWith("client", Status), 0) << errors.constData();
    EXPECT_EQ(askWith("client", Channels), 1);
    EXPECT_THAT(errors.toStdString(), HasSubstr("may not be read by 'certificate:client'"));
    EXPECT_EQ(askWith("server", Status), 3);
    EXPECT_THAT(errors.toStdString(), HasSubstr("the certificate's name is not known here"));
    EXPECT_EQ(askWith("client.expired", Status), 3);
    EXPECT_THAT(errors.toStdString(), HasSubstr("the client certificate: The certificate has expired"));
}

}  // namespace
