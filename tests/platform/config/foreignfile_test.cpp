// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

namespace {

class ForeignFile : public ConfigTest {
  protected:
    static QString Of(const char* key) {
        return Root()->ReadString(QString::fromUtf8(key), QStringLiteral("absent"));
    }
};

TEST_F(ForeignFile, WhatIsWrittenByHandIsReadAsItIsMeant) {
    WriteFile(
        "\xEF\xBB\xBF; a comment\r\n"
        "# another = one\r\n"
        "root = 1\r\n"
        "\r\n"
        "[ Section ]\r\n"
        "  plain key = one, two ; said by hand\r\n"
        "text=\xF0\x9F\x98\x80\r\n"
        "path=C:\\\\data\\\\dir\r\n"
        "quoted=\"  a \\\"b\\\" \"  \r\n"
        "nothing=\r\n"
        "[A/B]\r\n"
        "c\\d=1\r\n"
        "[GENERAL]\r\n"
        "late=2\r\n"
        "late=3");
    const TraceRecorder traces;
    EXPECT_EQ(Of("root"), QStringLiteral("1"));
    EXPECT_EQ(Of("Section/plain key"), QStringLiteral("one, two"));
    EXPECT_EQ(Of("Section/text"), QStringLiteral("\U0001F600"));
    EXPECT_EQ(Of("Section/path"), QStringLiteral("C:\\data\\dir"));
    EXPECT_EQ(Of("Section/quoted"), QStringLiteral("  a \"b\" "));
    EXPECT_EQ(Of("Section/nothing"), QString());
    EXPECT_EQ(Of("A/B/c/d"), QStringLiteral("1"));
    EXPECT_EQ(Of("late"), QStringLiteral("3"));
    EXPECT_TRUE(traces.Records().empty());
}

TEST_F(ForeignFile, WhatIsThereOutlivesACommitOfSomethingElse) {
    WriteFile("[S]\nlist=a, b\nother=B\xC3\xBCro\n[general]\nroot=x\n[%General]\nin=y\n");
    const std::unique_ptr<ICfg> root = Root();
    root->WriteInt(QStringLiteral("new"), 1);
    ASSERT_TRUE(root->CommitKey(QStringLiteral("new")));
    Reopened();
    EXPECT_EQ(Of("S/list"), QStringLiteral("a, b"));
    EXPECT_EQ(Of("S/other"), QStringLiteral("Büro"));
    EXPECT_EQ(Of("root"), QStringLiteral("x"));
    EXPECT_EQ(Of("General/in"), QStringLiteral("y"));
    EXPECT_EQ(Of("new"), QStringLiteral("1"));
}

}  // namespace
