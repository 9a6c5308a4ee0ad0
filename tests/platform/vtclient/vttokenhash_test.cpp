// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vttokenhash.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <set>

namespace {

// The known answers for "password", computed with other implementations.
const char* const KnownHash =
    "hmac-sha256$73616c7473616c7473616c7473616c74$"
    "f0183ec3963c18db030773092b4a25b0d3feb2a4bdc1e133a59d22cf3e7022e2";
const char* const KnownSlowHash =
    "pbkdf2-sha256$4096$73616c7473616c7473616c7473616c74$"
    "16e35b12b41f465ca64d069578d750059775ccad5df3ad53d6b204acb122d1ee";

TEST(VtTokenHash, ATokenIsKnownAgainAndNoOtherOne) {
    const QString token = VtTokenHash::CreateToken();
    const VtTokenHash hash = VtTokenHash::Of(token);
    EXPECT_TRUE(hash.Matches(token));
    EXPECT_FALSE(hash.Matches(token + QLatin1Char('x')));
    EXPECT_FALSE(hash.Matches(token.left(token.size() - 1)));
    EXPECT_FALSE(hash.Matches(token.toLower()));
    EXPECT_FALSE(hash.Matches(QString()));
}

TEST(VtTokenHash, TokensAre43CharactersAndNeverTheSame) {
    std::set<QString> tokens;
    for (int i = 0; i < 100; ++i) {
        const QString token = VtTokenHash::CreateToken();
        EXPECT_EQ(token.size(), 43);
        tokens.insert(token);
    }
    EXPECT_EQ(tokens.size(), 100U);
}

TEST(VtTokenHash, TheSameTokenHashesDifferentlyEachTime) {
    EXPECT_NE(VtTokenHash::Of(QStringLiteral("secret")).ToText(),
              VtTokenHash::Of(QStringLiteral("secret")).ToText());
}

TEST(VtTokenHash, SurvivesBeingWritten) {
    const QString token = QString::fromUtf8("gr\xc3\xbcn");
    const QString text = VtTokenHash::Of(token).ToText();
    const auto hash = VtTokenHash::Parse(text);
    ASSERT_TRUE(hash.has_value());
    EXPECT_EQ(hash->ToText(), text);
    EXPECT_TRUE(hash->Matches(token));
    EXPECT_FALSE(hash->Matches(QStringLiteral("grun")));
}

TEST(VtTokenHash, AgreesWithOtherImplementations) {
    for (const char* const known : {KnownHash, KnownSlowHash}) {
        const auto hash = VtTokenHash::Parse(QLatin1String(known));
        ASSERT_TRUE(hash.has_value());
        EXPECT_EQ(hash->ToText(), QLatin1String(known));
        EXPECT_EQ(hash->IsSlow(), known == KnownSlowHash);
        EXPECT_TRUE(hash->Matches(QStringLiteral("password")));
        EXPECT_FALSE(hash->Matches(QStringLiteral("Password")));
    }
}

struct Malformed {
    const char* name;
    const char* text;
};

class VtTokenHashMalformed : public testing::TestWithParam<Malformed> {};

TEST_P(VtTokenHashMalformed, IsRefused) {
    EXPECT_FALSE(VtTokenHash::Parse(QLatin1String(GetParam().text)).has_value());
}

#define SALT "73616c7473616c7473616c7473616c74"
#define DIGEST "00112233445566778899aabbccddeeff00112233445566778899aabbccddeeff"
const Malformed MalformedTexts[] = {
    {"Empty", ""},
    {"NoParts", "pbkdf2-sha256"},
    {"NoPartsEither", "hmac-sha256"},
    {"IterationsWhereNoneAre", "hmac-sha256$4096$" SALT "$" DIGEST},
    {"ShortSaltOfTheQuickForm", "hmac-sha256$7361$" DIGEST},
    {"AnotherScheme", "md5$4096$" SALT "$" DIGEST},
    {"TooFewParts", "pbkdf2-sha256$4096$" SALT},
    {"TooManyParts", "pbkdf2-sha256$4096$" SALT "$" DIGEST "$"},
    {"NoNumber", "pbkdf2-sha256$many$" SALT "$" DIGEST},
    {"TooFewIterations", "pbkdf2-sha256$999$" SALT "$" DIGEST},
    {"TooManyIterations", "pbkdf2-sha256$200001$" SALT "$" DIGEST},
    {"NegativeIterations", "pbkdf2-sha256$-4096$" SALT "$" DIGEST},
    {"IterationsBeyondInt", "pbkdf2-sha256$99999999999$" SALT "$" DIGEST},
    {"ShortSalt", "pbkdf2-sha256$4096$7361$" DIGEST},
    {"LongSalt", "pbkdf2-sha256$4096$" SALT SALT SALT SALT "00$" DIGEST},
    {"SaltIsNoHex", "pbkdf2-sha256$4096$7361xx7473616c7473616c7473616c74$" DIGEST},
    {"ShortDigest", "pbkdf2-sha256$4096$" SALT "$0011"},
    {"LongDigest", "pbkdf2-sha256$4096$" SALT "$" DIGEST "00"},
    {"OddDigest", "pbkdf2-sha256$4096$" SALT "$" DIGEST "0"},
};
#undef SALT
#undef DIGEST

INSTANTIATE_TEST_SUITE_P(, VtTokenHashMalformed, testing::ValuesIn(MalformedTexts),
                         [](const testing::TestParamInfo<Malformed>& row) {
                             return std::string(row.param.name);
                         });

}  // namespace
