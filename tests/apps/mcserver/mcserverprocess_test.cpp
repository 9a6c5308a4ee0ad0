// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QSettings>

namespace {

QStringList Words(const char* text) {
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

TEST(ServerProcessTest, TellsItsVersion) {
    ServerProcess server;
    EXPECT_EQ(server.Run(Words("--version")), 0);
    EXPECT_TRUE(server.Output().startsWith(QStringLiteral("mcserver "))) << server.Output().toStdString();
    EXPECT_EQ(server.Errors(), QString());
}

TEST(ServerProcessTest, MakesATokenThatItsAccessFileAdmits) {
    ServerProcess server;
    EXPECT_EQ(server.Run(Words("--make-token alice operator")), 0);
    const QStringList lines = server.Output().split(QLatin1Char('\n'));
    ASSERT_GE(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("token: ")));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("access file: user alice operator hmac-sha256$")));
}

struct Failure {
    const char* name;
    const char* arguments;
    int code;
    const char* complaint;  ///< %d: the directory of the files
};

void PrintTo(const Failure& failure, std::ostream* stream) {
    *stream << failure.arguments;
}

class ServerProcessFailures : public testing::TestWithParam<Failure> {};

TEST_P(ServerProcessFailures, AreOneLineAndAnExitCode) {
    ServerProcess server;
    server.WriteFile(QStringLiteral("access"), "allow operator read /\nnonsense\n");
    server.WriteFile(QStringLiteral("script"), "after x fail\n");
    const auto place = [&server](const char* text) {
        return QString::fromUtf8(text).replace(QStringLiteral("%d"), server.Directory());
    };
    QStringList arguments = place(GetParam().arguments).split(QLatin1Char(' '));
    arguments << QStringLiteral("--config") << server.ConfigPath();
    EXPECT_EQ(server.Run(arguments), GetParam().code);
    EXPECT_EQ(server.Errors(),
              QStringLiteral("mcserver: ") + place(GetParam().complaint) + QLatin1Char('\n'));
    EXPECT_EQ(server.Output(), QString());
}

const Failure Failures[] = {
    {"UnknownOption", "--lisen x", 2, "Unknown option 'lisen'. (see --help)"},
    {"AccessFile", "--access %d/access", 1, "%d/access:2: 'nonsense' is neither 'allow' nor 'user'"},
    {"Script", "--script %d/script", 1, "%d/script:1: 'x' is no number of ms from 0 to 604800000"},
    {"BeyondThisMachine", "--listen 0.0.0.0:0", 1,
     "listening on 0.0.0.0 needs TLS and credentials (or to be allowed as insecure)"},
};

INSTANTIATE_TEST_SUITE_P(, ServerProcessFailures, testing::ValuesIn(Failures),
                         [](const testing::TestParamInfo<Failure>& row) {
                             return std::string(row.param.name);
                         });

TEST(ServerProcessTest, APortInUseIsTold) {
    ServerProcess first;
    ASSERT_NO_FATAL_FAILURE(first.Start());
    ServerProcess second;
    const QString where = QStringLiteral("127.0.0.1:%1").arg(first.Port());
    EXPECT_EQ(
        second.Run({QStringLiteral("--listen"), where, QStringLiteral("--config"), second.ConfigPath()}), 1);
    EXPECT_EQ(second.Errors(),
              QStringLiteral("mcserver: cannot listen on 127.0.0.1 port %1: The bound address is "
                             "already in use\n")
                  .arg(first.Port()));
}

#ifdef Q_OS_UNIX
TEST(ServerProcessTest, EndsCleanlyOnRequestWithTheConfigurationSaved) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(Words("--headless")));
    EXPECT_EQ(server.Terminate(), 0) << server.Errors().toStdString();
    EXPECT_TRUE(server.Output().contains(QStringLiteral("the server ends")));
    EXPECT_EQ(server.Errors(), QString());
    const QSettings saved(server.ConfigPath(), QSettings::IniFormat);
    EXPECT_EQ(saved.value(QStringLiteral("NumberOfFreqChannels")).toInt(), 4);
}
#endif

}  // namespace
