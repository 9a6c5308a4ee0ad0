// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/arguments.h>

#include <tests/apps/mctree/commandfixture.h>
#include <tests/support/systemtext.h>

#include <cerrno>

using namespace mctree;

namespace {

Outcome Parse(const QStringList& words, Arguments* arguments) {
    return ParseArguments(words, {QStringLiteral("from the environment"), QString()}, arguments);
}

QStringList Paths(const Arguments& arguments) {
    QStringList paths;
    for (const PathPattern& pattern : arguments.patterns)
        paths += pattern.Text();
    return paths;
}

TEST(Arguments, WithoutOptionsItIsTheLocalServer) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"ls"}), &arguments).IsDone());
    EXPECT_EQ(arguments.command, ECommand::List);
    EXPECT_EQ(Paths(arguments), QStringList(QStringLiteral("/")));
    EXPECT_EQ(arguments.server.host, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(arguments.server.port, 7450);
    EXPECT_EQ(arguments.Timeout(), std::chrono::milliseconds(5000));
    EXPECT_EQ(arguments.server.ToVtAddress(), QStringLiteral("mcs://127.0.0.1"));
    EXPECT_FALSE(arguments.isJson);
    EXPECT_FALSE(arguments.isRecursive);
    EXPECT_EQ(arguments.count, 0);
}

TEST(Arguments, OptionsMayStandAnywhereAndTakeTheirValueEitherWay) {
    Arguments arguments;
    ASSERT_TRUE(
        Parse(Words({"--timeout=250", "watch", "/a", "--json", "/b", "--count", "3"}), &arguments).IsDone());
    EXPECT_EQ(arguments.command, ECommand::Watch);
    EXPECT_EQ(Paths(arguments), Words({"/a", "/b"}));
    EXPECT_EQ(arguments.Timeout(), std::chrono::milliseconds(250));
    EXPECT_EQ(arguments.client.connectTimeout, std::chrono::milliseconds(250));
    EXPECT_EQ(arguments.count, 3);
    EXPECT_TRUE(arguments.isJson);
}

TEST(Arguments, PathsAreNormalised) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"watch", "a//b/", "/a/b", "//"}), &arguments).IsDone());
    EXPECT_EQ(Paths(arguments), Words({"/a/b", "/"}));
}

TEST(Arguments, ANegativeNumberIsAValue) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"set", "/a", "-5"}), &arguments).IsDone());
    EXPECT_EQ(arguments.value, QStringLiteral("-5"));
    ASSERT_TRUE(Parse(Words({"set", "/a", "-.5"}), &arguments).IsDone());
    EXPECT_EQ(arguments.value, QStringLiteral("-.5"));
}

TEST(Arguments, AfterTwoDashesNothingIsAnOption) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"--json", "set", "/a", "--", "--json"}), &arguments).IsDone());
    EXPECT_EQ(arguments.value, QStringLiteral("--json"));
}

TEST(Arguments, AValueKeepsItsSlashesAndMayBeEmpty) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"set", "/a", "//x/"}), &arguments).IsDone());
    EXPECT_EQ(arguments.value, QStringLiteral("//x/"));
    ASSERT_TRUE(Parse(Words({"set", "/a", ""}), &arguments).IsDone());
    EXPECT_EQ(arguments.value, QString());
}

TEST(Arguments, TheTokenComesFromTheEnvironmentUnlessGiven) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"info", "--user", "anna"}), &arguments).IsDone());
    EXPECT_EQ(arguments.client.user, QStringLiteral("anna"));
    EXPECT_EQ(arguments.client.token, QStringLiteral("from the environment"));
    ASSERT_TRUE(Parse(Words({"info", "--token", "given"}), &arguments).IsDone());
    EXPECT_EQ(arguments.client.token, QStringLiteral("given"));
}

TEST(Arguments, FilesOfTlsAskForTls) {
    Arguments arguments;
    ASSERT_TRUE(
        Parse(Words({"info", "--ca", "ca.pem", "--cert", "c.pem", "--key", "k.pem"}), &arguments).IsDone());
    EXPECT_TRUE(arguments.server.isEncrypted);
    EXPECT_EQ(arguments.server.ToVtAddress(), QStringLiteral("mcss://127.0.0.1"));
    EXPECT_EQ(arguments.client.caFile, QStringLiteral("ca.pem"));
    EXPECT_EQ(arguments.client.certificateFile, QStringLiteral("c.pem"));
    EXPECT_EQ(arguments.client.privateKeyFile, QStringLiteral("k.pem"));
}

TEST(Arguments, HelpAndVersionNeedNothingElse) {
    for (const char* word : {"-h", "--help", "help"}) {
        Arguments arguments;
        EXPECT_TRUE(Parse(Words({word}), &arguments).IsDone()) << word;
        EXPECT_EQ(arguments.command, ECommand::Help) << word;
    }
    for (const char* word : {"-V", "--version"}) {
        Arguments arguments;
        EXPECT_TRUE(Parse(Words({word}), &arguments).IsDone()) << word;
        EXPECT_EQ(arguments.command, ECommand::Version) << word;
    }
}

struct ServerRow {
    const char* name;
    const char* given;
    const char* host;
    int port;
    bool isEncrypted;
};

class ArgumentsServerTest : public testing::TestWithParam<ServerRow> {};

TEST_P(ArgumentsServerTest, IsTakenApart) {
    Arguments arguments;
    ASSERT_TRUE(Parse(Words({"info", "--connect", GetParam().given}), &arguments).IsDone());
    EXPECT_EQ(arguments.server.host, QLatin1String(GetParam().host));
    EXPECT_EQ(arguments.server.port, GetParam().port);
    EXPECT_EQ(arguments.server.isEncrypted, GetParam().isEncrypted);
}

INSTANTIATE_TEST_SUITE_P(, ArgumentsServerTest,
                         testing::Values(ServerRow{"HostAlone", "df7", "df7", 7450, false},
                                         ServerRow{"HostAndPort", "df7:99", "df7", 99, false},
                                         ServerRow{"PlainScheme", "mcs://df7:99", "df7", 99, false},
                                         ServerRow{"TlsScheme", "mcss://df7", "df7", 7450, true},
                                         ServerRow{"Ip6Alone", "::1", "::1", 7450, false},
                                         ServerRow{"Ip6InBrackets", "[::1]", "::1", 7450, false},
                                         ServerRow{"Ip6AndPort", "[::1]:99", "::1", 99, false}),
                         RowName());

struct WrongRow {
    const char* name;
    std::vector<const char*> words;
    const char* message;
};

class ArgumentsWrongTest : public testing::TestWithParam<WrongRow> {};

TEST_P(ArgumentsWrongTest, IsSaidInOneLine) {
    QStringList words;
    for (const char* word : GetParam().words)
        words += QString::fromUtf8(word);
    Arguments arguments;
    const Outcome outcome = Parse(words, &arguments);
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message,
              QString::fromUtf8(GetParam().message)
                  .replace(QLatin1String("NO SUCH FILE"), SystemText(ENOENT, WindowsHasNoSuchPath)));
}

const std::string longName(1025, 'x');

INSTANTIATE_TEST_SUITE_P(
    , ArgumentsWrongTest,
    testing::Values(
        WrongRow{"Nothing", {}, "no command"}, WrongRow{"UnknownCommand", {"list"}, "unknown command list"},
        WrongRow{"UnknownOption", {"ls", "--all"}, "unknown option --all"},
        WrongRow{"UnknownShortOption", {"ls", "-x"}, "unknown option -x"},
        WrongRow{"ControlCharacters", {"\033[2J"}, "unknown command \\x1b[2J"},
        WrongRow{"ValueMissing", {"ls", "--connect"}, "--connect needs a value"},
        WrongRow{"ValueTooMany", {"ls", "--json=yes"}, "--json takes no value"},
        WrongRow{"GetWithoutPath", {"get"}, "get needs a path"},
        WrongRow{"HoldWithoutPath", {"hold"}, "hold needs a path"},
        WrongRow{"SetWithFileAndPath", {"set", "-f", "x", "/a"}, "-f takes the place of paths and value"},
        WrongRow{"NoCondition",
                 {"get", "/a", "--wait", "Ready"},
                 "--wait: \"Ready\" is no condition: \"exists\", or = != < <= > >= ~ with a content, as "
                 "\"=Ready\""},
        WrongRow{"WaitOfList", {"ls", "--wait", "Ready"}, "--wait belongs to get"},
        WrongRow{"FileOfGet", {"get", "-f", "x"}, "-f belongs to set"},
        WrongRow{"ChangesOfGet", {"get", "/a", "--changes-only"}, "--changes-only belongs to watch"},
        WrongRow{"HelpOfNothing", {"help", "list"}, "unknown command list"},
        WrongRow{"NoTokenFile",
                 {"info", "--token-file", "/nowhere/token"},
                 "--token-file: /nowhere/token: NO SUCH FILE"},
        WrongRow{"NoProfile",
                 {"info", "-s", "tower", "--profiles", "/nowhere/servers"},
                 "no server \"tower\" in /nowhere/servers, which has none"},
        WrongRow{"SetWithoutValue", {"set", "/a"}, "set needs a path and a value"},
        WrongRow{"WatchWithoutPath", {"watch"}, "watch needs a path"},
        WrongRow{"StationsNowhere", {"stations"}, "stations needs nats://HOST"},
        WrongRow{"StationsOfAServer", {"stations", "tower"}, "\"tower\" does not begin with nats://"},
        WrongRow{"StationsOfNoHost",
                 {"stations", "nats://"},
                 "\"nats://\" leads to no stations: it names no host"},
        WrongRow{"InfoWithPath", {"info", "/a"}, "info: too many arguments"},
        WrongRow{"NoHost", {"info", "--connect", ":99"}, "--connect: \":99\" names no host"},
        WrongRow{"NoPort", {"info", "--connect", "df7:"}, "--connect: \"\" is no port from 1 to 65535"},
        WrongRow{"PortTooGreat",
                 {"info", "--connect", "df7:65536"},
                 "--connect: \"65536\" is no port from 1 to 65535"},
        WrongRow{
            "PortNoNumber", {"info", "--connect", "df7:x"}, "--connect: \"x\" is no port from 1 to 65535"},
        WrongRow{"BracketOpen", {"info", "--connect", "[::1"}, "--connect: \"[::1\" lacks a ]"},
        WrongRow{"AfterBracket", {"info", "--connect", "[::1]9"}, "--connect: \"[::1]9\" is no HOST:PORT"},
        WrongRow{
            "TimeoutZero", {"info", "--timeout", "0"}, "--timeout: \"0\" is no time from 1 to 3600000 ms"},
        WrongRow{
            "CountNegative", {"watch", "/a", "--count", "-1"}, "--count: \"-1\" is no number of changes"},
        WrongRow{"CertificateAlone", {"info", "--cert", "c.pem"}, "--cert and --key belong together"},
        WrongRow{"KeyAlone", {"info", "--key", "k.pem"}, "--cert and --key belong together"},
        WrongRow{"RecursiveGet", {"get", "/a", "-r"}, "-r belongs to ls"},
        WrongRow{"CountOfGet", {"get", "/a", "--count", "1"}, "--count belongs to watch and events"},
        WrongRow{"LongName", {"get", longName.c_str()}, "a path is too long"}),
    RowName());

TEST(Arguments, APathIsBounded) {
    QString path;
    for (int i = 0; i < 5; ++i)
        path += QLatin1Char('/') + QString(1000, QLatin1Char('x'));
    Arguments arguments;
    EXPECT_EQ(Parse({QStringLiteral("get"), path}, &arguments).message, QStringLiteral("a path is too long"));
}

}  // namespace
