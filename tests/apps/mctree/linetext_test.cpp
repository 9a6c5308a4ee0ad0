// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/linetext.h>

#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

struct LineRow {
    const char* name;
    const char* line;
    const char* path;
    const char* content;
};

class LineTextTest : public testing::TestWithParam<LineRow> {};

TEST_P(LineTextTest, IsSplit) {
    const linetext::Pair pair = linetext::Split(QString::fromUtf8(GetParam().line));
    EXPECT_EQ(pair.error, QString());
    EXPECT_EQ(pair.path, QString::fromUtf8(GetParam().path));
    EXPECT_EQ(pair.content, QString::fromUtf8(GetParam().content));
}

INSTANTIATE_TEST_SUITE_P(, LineTextTest,
                         testing::Values(LineRow{"Tab", "/Van 1/x\t a ", "/Van 1/x", " a "},
                                         LineRow{"NothingBehindATab", "/x\t", "/x", ""},
                                         LineRow{"Blank", "  /x  5 MHz ", "/x", "5 MHz"},
                                         LineRow{"Equals", "/x = 5 MHz", "/x", "5 MHz"},
                                         LineRow{"NothingBehindEquals", "/x =", "/x", ""},
                                         LineRow{"Quoted", "\"/Van 1/x\" = a", "/Van 1/x", "a"},
                                         LineRow{"Escapes", "/x\ta\\nb\\tc\\\\d\\x1b\\u202e\\r", "/x",
                                                 "a\nb\tc\\d\x1b\xe2\x80\xae\r"},
                                         LineRow{"NoEscapes", "/x\t\\q\\x1\\u12", "/x", "\\q\\x1\\u12"}),
                         RowName());

TEST(LineText, WhatIsJoinedIsSplitAgain) {
    const QString path = QStringLiteral("/a\\n/b\tc");
    const QString content = QStringLiteral("x\\ny\n\tz\x1b\\");
    const QString line = linetext::Joined(path, content);
    EXPECT_FALSE(line.contains(QLatin1Char('\n')));
    EXPECT_EQ(linetext::Split(line).path, path);
    EXPECT_EQ(linetext::Split(line).content, content);
}

TEST(LineText, ALineWithoutAPairIsWrong) {
    EXPECT_EQ(linetext::Split(QStringLiteral("/x")).error, QStringLiteral("a path and a value are needed"));
    EXPECT_EQ(linetext::Split(QStringLiteral("\"/x 5")).error,
              QStringLiteral("the path lacks a \" at its end"));
}

TEST(LineText, CommentsAndEmptyLinesAreNone) {
    for (const char* line : {"", "  ", "# x", "  #"})
        EXPECT_TRUE(linetext::IsComment(QLatin1String(line))) << line;
    EXPECT_FALSE(linetext::IsComment(QStringLiteral("/a #")));
}

}  // namespace
