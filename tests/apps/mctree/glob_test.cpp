// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/glob.h>

#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

struct GlobRow {
    const char* name;
    const char* pattern;
    const char* text;
    bool isMatch;
};

class GlobTest : public testing::TestWithParam<GlobRow> {};

TEST_P(GlobTest, Matches) {
    EXPECT_EQ(glob::Matches(QString::fromUtf8(GetParam().pattern), QString::fromUtf8(GetParam().text)),
              GetParam().isMatch);
}

INSTANTIATE_TEST_SUITE_P(
    , GlobTest,
    testing::Values(
        GlobRow{"Itself", "Mine", "Mine", true}, GlobRow{"InOtherCase", "Mine", "mine", false},
        GlobRow{"ABeginning", "Mine", "Mine2", false}, GlobRow{"StarIsNothing", "Mine*", "Mine", true},
        GlobRow{"StarIsMuch", "*ORV*", "DynamicMpxORVs", true}, GlobRow{"StarAgain", "a*b*c", "abbcbc", true},
        GlobRow{"StarInVain", "a*b", "abc", false}, GlobRow{"QuestionMark", "V?n", "Van", true},
        GlobRow{"NoCharacter", "Van?", "Van", false}, GlobRow{"Set", "Van [12]", "Van 2", true},
        GlobRow{"NotInSet", "Van [12]", "Van 3", false}, GlobRow{"Range", "[a-c]x", "bx", true},
        GlobRow{"NotInRange", "[a-c]x", "dx", false}, GlobRow{"Negated", "[!a-c]x", "dx", true},
        GlobRow{"BracketInSet", "[]]", "]", true}, GlobRow{"DashInSet", "[a-]", "-", true},
        GlobRow{"SetThatDoesNotEnd", "a[b", "a[b", true}, GlobRow{"EscapedStar", "a\\*", "a*", true},
        GlobRow{"EscapedStarOnly", "a\\*", "ab", false}, GlobRow{"BackslashOfItsOwn", "a\\b", "a\\b", true},
        GlobRow{"Empty", "", "", true}, GlobRow{"OtherScripts", "\xc2\xb5?", "\xc2\xb5s", true}),
    RowName());

TEST(Glob, ATextWithoutSignsIsNone) {
    for (const char* text : {"", "Mine", "a]b", "a\\*", "a[b", "\\[a]"})
        EXPECT_FALSE(glob::IsGlob(QLatin1String(text))) << text;
    for (const char* text : {"*", "a?", "[ab]", "\\\\*"})
        EXPECT_TRUE(glob::IsGlob(QLatin1String(text))) << text;
    EXPECT_EQ(glob::Unescaped(QStringLiteral("a\\*\\b\\[")), QStringLiteral("a*\\b["));
}

TEST(Glob, ManyStarsTakeNoAges) {
    const QString pattern = QStringLiteral("a*").repeated(500) + QLatin1Char('b');
    EXPECT_FALSE(glob::Matches(pattern, QString(1000, QLatin1Char('a'))));
}

}  // namespace
