// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/pathpattern.h>

#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

PathPattern Pattern(const char* text) {
    PathPattern pattern;
    EXPECT_EQ(pattern.Parse(QString::fromUtf8(text), PathPattern::EReading::Globs), QString());
    return pattern;
}

struct PatternRow {
    const char* name;
    const char* pattern;
    const char* path;
    bool matches;
    bool matchesAtOrAbove;
    bool mayMatchBelow;
};

class PathPatternTest : public testing::TestWithParam<PatternRow> {};

TEST_P(PathPatternTest, KnowsWhatItMeans) {
    const PathPattern pattern = Pattern(GetParam().pattern);
    const QString path = QString::fromUtf8(GetParam().path);
    EXPECT_EQ(pattern.Matches(path), GetParam().matches);
    EXPECT_EQ(pattern.MatchesAtOrAbove(path), GetParam().matchesAtOrAbove);
    EXPECT_EQ(pattern.MayMatchBelow(path), GetParam().mayMatchBelow);
}

INSTANTIATE_TEST_SUITE_P(
    , PathPatternTest,
    testing::Values(PatternRow{"ThePath", "/a/b", "/a/b", true, true, true},
                    PatternRow{"BelowThePath", "/a/b", "/a/b/c", false, true, false},
                    PatternRow{"AboveThePath", "/a/b", "/a", false, false, true},
                    PatternRow{"BesideThePath", "/a/b", "/a/c", false, false, false},
                    PatternRow{"TheRootIsAboveAll", "/", "/a/b", false, true, false},
                    PatternRow{"StarIsOneName", "/a/*", "/a/b", true, true, true},
                    PatternRow{"StarIsNotTwoNames", "/a/*", "/a/b/c", false, true, false},
                    PatternRow{"StarIsNotNoName", "/a/*", "/a", false, false, true},
                    PatternRow{"StarInTheMiddle", "/a/*/c", "/a/b/c", true, true, true},
                    PatternRow{"WrongAfterStar", "/a/*/c", "/a/b/d", false, false, false},
                    PatternRow{"TwoStarsAreNoName", "/a/**/c", "/a/c", true, true, true},
                    PatternRow{"TwoStarsAreManyNames", "/a/**/c", "/a/x/y/c", true, true, true},
                    PatternRow{"TwoStarsAndMore", "/a/**/c", "/a/x/y", false, false, true},
                    PatternRow{"TwoStarsAtTheEnd", "/a/**", "/a/x/y", true, true, true},
                    PatternRow{"TwoStarsAtTheEndAreNotTheItself", "/a/**", "/a", false, false, true},
                    PatternRow{"TwoStarsTwice", "/**/b/**/c", "/a/b/b/x/c", true, true, true},
                    PatternRow{"EscapedStar", "/a/\\*", "/a/*", true, true, true}),
    RowName());

struct FixedRow {
    const char* name;
    const char* pattern;
    const char* fixedPath;
};

class FixedPathTest : public testing::TestWithParam<FixedRow> {};

TEST_P(FixedPathTest, IsInFrontOfTheFirstGlob) {
    EXPECT_EQ(Pattern(GetParam().pattern).FixedPath(), QLatin1String(GetParam().fixedPath));
}

INSTANTIATE_TEST_SUITE_P(, FixedPathTest,
                         testing::Values(FixedRow{"Root", "/", "/"}, FixedRow{"NoGlob", "a//b/", "/a/b"},
                                         FixedRow{"AtTheEnd", "/a/b*", "/a"}, FixedRow{"First", "/*/b", "/"},
                                         FixedRow{"InTheMiddle", "/a/?/b", "/a"},
                                         FixedRow{"Escaped", "/a/\\*/b*", "/a/*"}),
                         RowName());

TEST(PathPattern, AsItStandsNothingIsAGlob) {
    PathPattern pattern;
    EXPECT_EQ(pattern.Parse(QStringLiteral("/a/\\*/**"), PathPattern::EReading::AsItStands), QString());
    EXPECT_FALSE(pattern.IsGlob());
    EXPECT_EQ(pattern.FixedPath(), QStringLiteral("/a/\\*/**"));
    EXPECT_TRUE(pattern.Matches(QStringLiteral("/a/\\*/**")));
}

}  // namespace
