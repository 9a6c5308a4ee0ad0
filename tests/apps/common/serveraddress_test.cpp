// SPDX-License-Identifier: Apache-2.0
#include <apps/common/serveraddress.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

struct Good {
    const char* name;
    const char* text;
    const char* host;
    int port;
    bool isEncrypted;
    const char* written;
};

class GoodServerAddress : public testing::TestWithParam<Good> {};

TEST_P(GoodServerAddress, IsReadAndWritten) {
    ServerAddress address;
    EXPECT_EQ(address.Parse(QString::fromLatin1(GetParam().text)), QString());
    EXPECT_EQ(address.host, QString::fromLatin1(GetParam().host));
    EXPECT_EQ(address.port, GetParam().port);
    EXPECT_EQ(address.isEncrypted, GetParam().isEncrypted);
    EXPECT_EQ(address.ToText(), QString::fromLatin1(GetParam().written));
    ServerAddress again;
    EXPECT_EQ(again.Parse(address.ToText()), QString());
    EXPECT_EQ(again.ToText(), address.ToText());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, GoodServerAddress,
    testing::Values(
        Good{"HostAlone", "tower", "tower", 7450, false, "tower:7450"},
        Good{"HostAndPort", "tower:8000", "tower", 8000, false, "tower:8000"},
        Good{"Ipv4", "10.0.0.1:1", "10.0.0.1", 1, false, "10.0.0.1:1"},
        Good{"Ipv6Alone", "::1", "::1", 7450, false, "[::1]:7450"},
        Good{"Ipv6InBrackets", "[fe80::1]", "fe80::1", 7450, false, "[fe80::1]:7450"},
        Good{"Ipv6AndPort", "[::1]:65535", "::1", 65535, false, "[::1]:65535"},
        Good{"Ipv6WithAZone", "fe80::1%2", "fe80::1%2", 7450, false, "[fe80::1%2]:7450"},
        Good{"BeyondAscii", "t\xfcrm.example:9", "t\xfcrm.example", 9, false, "t\xfcrm.example:9"},
        Good{"PlainScheme", "mcs://tower", "tower", 7450, false, "tower:7450"},
        Good{"TlsScheme", "mcss://tower:9", "tower", 9, true, "mcss://tower:9"},
        Good{"OverNats", "nats://hub/tower", "hub/tower", 4222, false, "nats://hub/tower"},
        Good{"OverNatsWithTls", "natss://a:1,b/tower", "a:1,b/tower", 4222, true, "natss://a:1,b/tower"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Same {
    const char* name;
    const char* one;
    const char* other;
    bool isSame;
};

class SameServer : public testing::TestWithParam<Same> {};

TEST_P(SameServer, IsKnownByItsAddress) {
    ServerAddress one, other;
    ASSERT_EQ(one.Parse(QLatin1String(GetParam().one)), QString());
    ASSERT_EQ(other.Parse(QLatin1String(GetParam().other)), QString());
    EXPECT_EQ(one.IsSameAs(other), GetParam().isSame);
    EXPECT_EQ(other.IsSameAs(one), GetParam().isSame);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SameServer,
    testing::Values(Same{"TheSameText", "tower", "tower:7450", true},
                    Same{"EncryptedToo", "tower", "mcss://Tower", true},
                    Same{"ThisMachineByAnyName", "localhost:1", "[::1]:1", true},
                    Same{"AnotherPort", "tower:1", "tower:2", false},
                    Same{"AnotherHost", "tower", "mast", false},
                    Same{"AStation", "nats://hub/tower", "natss://hub:4222/tower", true},
                    Same{"AStationByOneOfItsHosts", "nats://a,b/tower", "nats://b,c/tower", true},
                    Same{"AnotherStation", "nats://hub/tower", "nats://hub/mast", false},
                    Same{"AStationOfThatNameElsewhere", "nats://hub/tower", "nats://hill/tower", false},
                    Same{"AStationAndAHost", "nats://hub/tower", "hub", false}),
    [](const auto& row) { return std::string(row.param.name); });

struct Bad {
    const char* name;
    const char* text;
};

class BadServerAddress : public testing::TestWithParam<Bad> {};

TEST_P(BadServerAddress, IsRefusedAndChangesNothing) {
    ServerAddress address = {QStringLiteral("before"), 5, true};
    EXPECT_NE(address.Parse(QString::fromLatin1(GetParam().text)), QString());
    EXPECT_EQ(address.ToText(), QStringLiteral("mcss://before:5"));
}

INSTANTIATE_TEST_SUITE_P(Texts, BadServerAddress,
                         testing::Values(Bad{"Empty", ""}, Bad{"SchemeAlone", "mcs://"},
                                         Bad{"NoStation", "nats://hub"}, Bad{"BadStation", "nats://hub/a.b"},
                                         Bad{"PortAlone", ":7450"}, Bad{"NoPortBehindColon", "tower:"},
                                         Bad{"PortZero", "tower:0"}, Bad{"PortTooLarge", "tower:65536"},
                                         Bad{"PortNegative", "tower:-1"}, Bad{"PortNoNumber", "tower:x"},
                                         Bad{"BracketOpen", "[::1"}, Bad{"BehindBracket", "[::1]x"},
                                         Bad{"NothingInBrackets", "[]:7450"}, Bad{"Blank", "to wer"},
                                         Bad{"LineBreak", "tower\n"}, Bad{"Markup", "<b>tower"},
                                         Bad{"Path", "tower/x"}, Bad{"OtherScheme", "http://tower"},
                                         Bad{"BlankBeyondAscii", "to\xa0wer"},
                                         Bad{"SoftHyphen", "to\xadwer"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct BeyondLatin1 {
    const char* name;
    const char* text;
    const char* ace;  ///< empty: it has none
    const char* problem;
};

class ServerAddressBeyondLatin1 : public testing::TestWithParam<BeyondLatin1> {};

TEST_P(ServerAddressBeyondLatin1, IsRefusedWithTheFormThatWorks) {
    ServerAddress address;
    const QString text = QString::fromUtf8(GetParam().text);
    EXPECT_EQ(address.Parse(text), QString::fromUtf8(GetParam().problem));
    EXPECT_EQ(ServerAddress::AceFormOf(text), QString::fromLatin1(GetParam().ace));
    const bool hasForm = GetParam().ace[0] != '\0';
    EXPECT_EQ(address.Parse(QString::fromLatin1(GetParam().ace)).isEmpty(), hasForm);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ServerAddressBeyondLatin1,
    testing::Values(BeyondLatin1{"Greek", "\xcf\x80.example", "xn--1xa.example",
                                 "\"\xcf\x80.example\" has characters beyond Latin-1: write xn--1xa.example"},
                    BeyondLatin1{"GreekWithSchemeAndPort", "mcss://\xcf\x80.example:9", "xn--1xa.example",
                                 "\"\xcf\x80.example\" has characters beyond Latin-1: write xn--1xa.example"},
                    BeyondLatin1{"WithAnEmptyName", "\xcf\x80..example", "",
                                 "\"\xcf\x80..example\" can be no host"},
                    BeyondLatin1{"OneThatIsNoLetter", "\xe2\x80\xa8.example", "",
                                 "\"\xe2\x80\xa8.example\" can be no host"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ServerAddress, HasNoOtherFormWhereNoneIsNeeded) {
    EXPECT_EQ(ServerAddress::AceFormOf(QStringLiteral("tower:7450")), QString());
    EXPECT_EQ(ServerAddress::AceFormOf(QString::fromLatin1("t\xfcrm")), QString());
}

TEST(ServerAddress, RefusesAHostThatIsTooLongForAName) {
    ServerAddress address;
    EXPECT_NE(address.Parse(QString(254, QLatin1Char('a'))), QString());
    EXPECT_EQ(address.Parse(QString(253, QLatin1Char('a'))), QString());
}

TEST(ServerAddress, GivesTheSchemeAndTheBareHostToTheConnection) {
    ServerAddress address;
    ASSERT_EQ(address.Parse(QStringLiteral("[::1]:7450")), QString());
    EXPECT_EQ(address.ToVtAddress(), QStringLiteral("mcs://::1"));
    address.isEncrypted = true;
    EXPECT_EQ(address.ToVtAddress(), QStringLiteral("mcss://::1"));
}

}  // namespace
