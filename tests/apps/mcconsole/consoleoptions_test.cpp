// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consoleoptions.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

ConsoleOptions Parse(QStringList words, const QString& token = QString()) {
    words.prepend(QStringLiteral("mcconsole"));
    return ConsoleOptions::Parse(words, token);
}

TEST(ConsoleOptions, AskForTheServerUnlessItIsGiven) {
    const ConsoleOptions options = Parse({});
    EXPECT_EQ(options.action, ConsoleOptions::EAction::Run);
    EXPECT_TRUE(options.servers.empty());
    EXPECT_EQ(options.client.token, QString());
}

TEST(ConsoleOptions, TakeTheServerFromTheCommandLine) {
    const ConsoleOptions options = Parse({QStringLiteral("--connect"), QStringLiteral("mcss://tower:8000")});
    ASSERT_EQ(options.servers.size(), 1U);
    EXPECT_EQ(options.servers.front().ToText(), QStringLiteral("mcss://tower:8000"));
}

TEST(ConsoleOptions, TakeSeveralServersInTheirOrder) {
    const ConsoleOptions options = Parse({QStringLiteral("--connect"), QStringLiteral("tower"),
                                          QStringLiteral("--connect"), QStringLiteral("nats://hub/mast")});
    ASSERT_EQ(options.servers.size(), 2U);
    EXPECT_EQ(options.servers[0].ToText(), QStringLiteral("tower:7450"));
    EXPECT_EQ(options.servers[1].ToText(), QStringLiteral("nats://hub/mast"));
}

TEST(ConsoleOptions, TakeNoMoreServersThanHaveTabs) {
    QStringList words;
    for (int i = 0; i < 17; ++i)
        words << QStringLiteral("--connect") << QStringLiteral("tower%1").arg(i);
    EXPECT_EQ(Parse(words).text, QStringLiteral("--connect: 16 stations at most"));
}

TEST(ConsoleOptions, TakeTheTokenFromTheEnvironmentUnlessItIsGiven) {
    EXPECT_EQ(Parse({}, QStringLiteral("secret")).client.token, QStringLiteral("secret"));
    const QStringList words{QStringLiteral("--token"), QStringLiteral("other")};
    EXPECT_EQ(Parse(words, QStringLiteral("secret")).client.token, QStringLiteral("other"));
}

struct Encrypting {
    const char* name;
    const char* options;
};

class EncryptingOptions : public testing::TestWithParam<Encrypting> {};

TEST_P(EncryptingOptions, MeanTls) {
    QStringList words = QString::fromLatin1(GetParam().options).split(QLatin1Char(' '));
    words << QStringLiteral("--connect") << QStringLiteral("tower");
    const ConsoleOptions options = Parse(words);
    ASSERT_EQ(options.servers.size(), 1U) << options.text.toStdString();
    EXPECT_TRUE(options.servers.front().isEncrypted);
}

INSTANTIATE_TEST_SUITE_P(Options, EncryptingOptions,
                         testing::Values(Encrypting{"Tls", "--tls"}, Encrypting{"Authority", "--ca ca.pem"},
                                         Encrypting{"Certificate", "--cert c.pem --key k.pem"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ConsoleOptions, AskForEncryptionAlsoOfAServerThatIsAskedFor) {
    EXPECT_TRUE(Parse({QStringLiteral("--tls")}).isEncrypted);
    EXPECT_FALSE(Parse({}).isEncrypted);
}

struct Wrong {
    const char* name;
    const char* options;
    const char* complaint;
};

class WrongOptions : public testing::TestWithParam<Wrong> {};

TEST_P(WrongOptions, AreAnsweredInOneLine) {
    const ConsoleOptions options = Parse(QString::fromLatin1(GetParam().options).split(QLatin1Char(' ')));
    EXPECT_EQ(options.action, ConsoleOptions::EAction::Complain);
    EXPECT_EQ(options.text, QString::fromLatin1(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongOptions,
    testing::Values(Wrong{"UnknownOption", "--colour", "Unknown option 'colour'."},
                    Wrong{"Word", "tower", "'tower' is not understood"},
                    Wrong{"NoServer", "--connect=", "--connect: \"\" names no host"},
                    Wrong{"NoPort", "--connect tower:x", "--connect: \"x\" is no port from 1 to 65535"},
                    Wrong{"EmptyName", "--name=", "--name needs a value"},
                    Wrong{"NoNameOfAnMpxOrv", "--name a/b",
                          "--name: 128 characters at most, without / , < > and blanks around"},
                    Wrong{"KeyAlone", "--key k.pem", "--cert and --key belong together"},
                    Wrong{"PicturesOfNothing", "--screenshot dir", "--screenshot needs --connect"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ConsoleOptions, TellAboutThemselves) {
    const ConsoleOptions help = Parse({QStringLiteral("--help")});
    EXPECT_EQ(help.action, ConsoleOptions::EAction::Print);
    for (const char* option : {"--connect", "--tls", "--ca", "--user", "--token", "--name", "--config",
                               "--locale", "--dark", "--screenshot"})
        EXPECT_TRUE(help.text.contains(QLatin1String(option))) << option;
    const ConsoleOptions version = Parse({QStringLiteral("--version")});
    EXPECT_EQ(version.action, ConsoleOptions::EAction::Print);
    EXPECT_TRUE(version.text.startsWith(QStringLiteral("mcconsole")));
}

}  // namespace
