// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serveroptions.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

using EAction = ServerOptions::EAction;

ServerOptions Parse(const char* arguments) {
    QStringList words = QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    words.prepend(QStringLiteral("mcserver"));
    return ServerOptions::Parse(words);
}

TEST(ServerOptions, WithoutAnyTheServerRunsForThisMachine) {
    const ServerOptions options = Parse("");
    EXPECT_EQ(options.action, EAction::Run);
    EXPECT_EQ(options.listen.address, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(options.listen.port, 7450);
    EXPECT_EQ(options.name, QStringLiteral("mcserver"));
    EXPECT_FALSE(options.isInsecure);
    EXPECT_EQ(options.memoryMiB, 32);
    EXPECT_EQ(options.maxSessions, 2000);
    EXPECT_EQ(options.textLimits.text, 4096);
    EXPECT_EQ(options.textLimits.comment, 1024);
    EXPECT_FALSE(options.makesToken);
}

TEST(ServerOptions, AllAreTaken) {
    const ServerOptions options = Parse(
        "--listen 0.0.0.0:0 --tls-cert c.pem --tls-key k.pem --tls-ca a.pem --insecure --access rules "
        "--config s.ini --memory 64 --sessions 50 --text-length 2000 --comment-length 1500 --script night "
        "--name north --headless");
    EXPECT_EQ(options.action, EAction::Run) << options.text.toStdString();
    EXPECT_EQ(options.listen.address, QStringLiteral("0.0.0.0"));
    EXPECT_EQ(options.listen.port, 0);
    EXPECT_EQ(options.certificateFile, QStringLiteral("c.pem"));
    EXPECT_EQ(options.privateKeyFile, QStringLiteral("k.pem"));
    EXPECT_EQ(options.caFile, QStringLiteral("a.pem"));
    EXPECT_TRUE(options.isInsecure);
    EXPECT_EQ(options.accessFile, QStringLiteral("rules"));
    EXPECT_EQ(options.configFile, QStringLiteral("s.ini"));
    EXPECT_EQ(options.memoryMiB, 64);
    EXPECT_EQ(options.maxSessions, 50);
    EXPECT_EQ(options.textLimits.text, 2000);
    EXPECT_EQ(options.textLimits.comment, 1500);
    EXPECT_EQ(options.scriptFile, QStringLiteral("night"));
    EXPECT_EQ(options.name, QStringLiteral("north"));
}

TEST(ServerOptions, NamesThatFilesCanHaveAreTaken) {
    for (const char* const name : {"north-1", "console", "com10", "nul-tower", "Tür", ".north"})
        EXPECT_EQ(Parse((std::string("--name ") + name).c_str()).action, EAction::Run) << name;
    const std::string longest(100, 'x');
    EXPECT_EQ(Parse(("--name " + longest).c_str()).action, EAction::Run);
    EXPECT_EQ(Parse(("--name x" + longest).c_str()).text,
              QStringLiteral("--name has at most 100 characters"));
}

TEST(ServerOptions, ATokenIsMadeForAUserAndARole) {
    const ServerOptions options = Parse("--make-token alice operator");
    EXPECT_EQ(options.action, EAction::Run) << options.text.toStdString();
    EXPECT_TRUE(options.makesToken);
    EXPECT_EQ(options.user, QStringLiteral("alice"));
    EXPECT_EQ(options.role, QStringLiteral("operator"));
}

TEST(ServerOptions, AServiceIsGivenAllOfThemWithFilesByTheirWholePaths) {
    const ServerOptions options = Parse(
        "--install-service --config kept/s.ini --sessions 50 --insecure --name north "
        "--listen 0.0.0.0:0 --headless");
    const QString file = QDir::toNativeSeparators(QFileInfo(QStringLiteral("kept/s.ini")).absoluteFilePath());
    const QStringList expected{
        QStringLiteral("--service"),  QStringLiteral("--listen"),  QStringLiteral("0.0.0.0:0"),
        QStringLiteral("--insecure"), QStringLiteral("--config"),  file,
        QStringLiteral("--sessions"), QStringLiteral("50"),        QStringLiteral("--name"),
        QStringLiteral("north"),      QStringLiteral("--headless")};
    EXPECT_EQ(options.service, ServerOptions::EService::Install);
    EXPECT_EQ(options.serviceArguments, expected);
    EXPECT_TRUE(options.isHeadless);
}

TEST(ServerOptions, HelpNamesEveryOption) {
    const ServerOptions options = Parse("--help");
    EXPECT_EQ(options.action, EAction::Print);
    for (const char* const name :
         {"--listen", "--tls-cert", "--tls-key", "--tls-ca", "--insecure", "--access", "--config", "--memory",
          "--script", "--name", "--headless", "--make-token", "--version"})
        EXPECT_TRUE(options.text.contains(QLatin1String(name))) << name;
}

struct Wrong {
    const char* name;
    const char* arguments;
    const char* complaint;
};

class ServerOptionsErrors : public testing::TestWithParam<Wrong> {};

TEST_P(ServerOptionsErrors, AreToldInOneLine) {
    const ServerOptions options = Parse(GetParam().arguments);
    EXPECT_EQ(options.action, EAction::Complain);
    EXPECT_EQ(options.text, QLatin1String(GetParam().complaint));
}

const Wrong WrongOptions[] = {
    {"Unknown", "--lisen x", "Unknown option 'lisen'."},
    {"ValueMissing", "--listen", "Missing value after '--listen'."},
    {"ValueEmpty", "--config=", "--config needs a value"},
    {"Word", "start", "'start' is not understood"},
    {"HostName", "--listen example.org",
     "'example.org' is no address to listen on: give the IP address of an interface"},
    {"BareIPv6", "--listen ::1", "'::1' is no address to listen on: an IPv6 address stands in brackets"},
    {"OpenBracket", "--listen [::1", "'[::1' is no address to listen on: a bracket has no partner"},
    {"PortNoNumber", "--listen 127.0.0.1:x",
     "'127.0.0.1:x' is no address to listen on: a port is a number from 0 to 65535"},
    {"PortTooHigh", "--listen 127.0.0.1:65536",
     "'127.0.0.1:65536' is no address to listen on: a port is a number from 0 to 65535"},
    {"PortMissing",
     "--listen 127.0.0.1:", "'127.0.0.1:' is no address to listen on: a port is a number from 0 to 65535"},
    {"BehindBracket", "--listen [::1]7450",
     "'[::1]7450' is no address to listen on: a port is a number from 0 to 65535"},
    {"IPv4InBrackets", "--listen [127.0.0.1]",
     "'[127.0.0.1]' is no address to listen on: give the IP address of an interface"},
    {"CertificateWithoutKey", "--tls-cert c", "--tls-cert and --tls-key need each other"},
    {"KeyWithoutCertificate", "--tls-key k", "--tls-cert and --tls-key need each other"},
    {"AuthorityAlone", "--tls-ca a", "--tls-ca needs --tls-cert"},
    {"TokenForNobody", "--make-token", "--make-token needs a user and a role"},
    {"TokenWithoutRole", "--make-token alice", "--make-token needs a user and a role"},
    {"TokenForACertificate", "--make-token certificate:x operator", "a user by certificate has no token"},
    {"TokenForAQuote", "--make-token a\"b operator", "'a\"b' can be no user and no role"},
    {"TextTooShort", "--text-length 1023", "--text-length: '1023' is no number from 1024 to 65536"},
    {"CommentTooLong", "--comment-length 65537", "--comment-length: '65537' is no number from 1024 to 65536"},
    {"NameWithASlash", "--name ../x", "--name cannot hold a slash"},
    {"NameWithABackslash", "--name ..\\x", "--name cannot hold a slash"},
    {"NameWithAColon", "--name tower:1",
     "--name cannot hold what file names cannot: : * ? \" < > | and what cannot be printed"},
    {"NameWithATabulator", "--name tower\t1",
     "--name cannot hold what file names cannot: : * ? \" < > | and what cannot be printed"},
    {"NameOfADevice", "--name NUL", "--name cannot be NUL, which is a device on some systems"},
    {"NameOfADeviceWithAnExtension", "--name com1.tower",
     "--name cannot be com1.tower, which is a device on some systems"},
    {"NameWithADotAtItsEnd", "--name ..", "--name cannot have blanks around it or a dot at its end"},
};

INSTANTIATE_TEST_SUITE_P(, ServerOptionsErrors, testing::ValuesIn(WrongOptions),
                         [](const testing::TestParamInfo<Wrong>& row) {
                             return std::string(row.param.name);
                         });

struct Address {
    const char* name;
    const char* text;
    const char* address;
    int port;
    const char* shown;
};

class ListenAddressForms : public testing::TestWithParam<Address> {};

TEST_P(ListenAddressForms, AreUnderstood) {
    ListenAddress listen{QString(), 7450};
    QString error;
    EXPECT_TRUE(listen.Parse(QLatin1String(GetParam().text), &error)) << error.toStdString();
    EXPECT_EQ(listen.address, QLatin1String(GetParam().address));
    EXPECT_EQ(listen.port, GetParam().port);
    EXPECT_EQ(listen.ToText(), QLatin1String(GetParam().shown));
}

const Address Addresses[] = {
    {"IPv4", "10.0.0.1", "10.0.0.1", 7450, "10.0.0.1:7450"},
    {"IPv4WithPort", "10.0.0.1:9000", "10.0.0.1", 9000, "10.0.0.1:9000"},
    {"IPv6", "[::1]", "::1", 7450, "[::1]:7450"},
    {"IPv6WithAZone", "[fe80::1%2]", "fe80::1%2", 7450, "[fe80::1%2]:7450"},
    {"IPv6WithPort", "[::]:0", "::", 0, "[::]:0"},
    {"ThisMachine", "localhost:0", "127.0.0.1", 0, "127.0.0.1:0"},
};

INSTANTIATE_TEST_SUITE_P(, ListenAddressForms, testing::ValuesIn(Addresses),
                         [](const testing::TestParamInfo<Address>& row) {
                             return std::string(row.param.name);
                         });

}  // namespace
