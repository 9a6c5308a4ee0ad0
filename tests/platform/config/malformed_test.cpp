// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <optional>

namespace {

struct Number {
    const char* text;
    std::optional<int> number;  // none: malformed
};

class Malformed : public ConfigTest {};

TEST_F(Malformed, NumbersAreWholeAndOf32Bits) {
    const Number table[] = {{"12", 12},
                            {" -12 ", -12},
                            {"+7", 7},
                            {"007", 7},
                            {"2147483647", 2147483647},
                            {"2147483648", std::nullopt},
                            {"-2147483649", std::nullopt},
                            {"99999999999999999999", std::nullopt},
                            {"", std::nullopt},
                            {"  ", std::nullopt},
                            {"twelve", std::nullopt},
                            {"12a", std::nullopt},
                            {"1.5", std::nullopt},
                            {"1 2", std::nullopt},
                            {"0x10", std::nullopt},
                            {"true", std::nullopt}};
    for (const Number& row : table) {
        const TraceRecorder traces;
        const std::unique_ptr<ICfg> root = Reopened();
        root->WriteString(QStringLiteral("k"), QString::fromLatin1(row.text));
        EXPECT_EQ(root->ReadInt(QStringLiteral("k"), 99), row.number.value_or(99)) << row.text;
        EXPECT_EQ(traces.Records().size(), row.number ? 0U : 1U) << row.text;
    }
}

TEST_F(Malformed, TruthIsWrittenInFourWays) {
    struct Row {
        const char* text;
        std::optional<bool> truth;
    };
    const Row table[] = {{"true", true},       {"TRUE", true},        {" True ", true},
                         {"1", true},          {"false", false},      {"False", false},
                         {"0", false},         {"", std::nullopt},    {"yes", std::nullopt},
                         {"no", std::nullopt}, {"2", std::nullopt},   {"-1", std::nullopt},
                         {"on", std::nullopt}, {"tru", std::nullopt}, {"01", std::nullopt}};
    for (const Row& row : table) {
        for (const bool fallback : {true, false}) {
            const TraceRecorder traces;
            const std::unique_ptr<ICfg> root = Reopened();
            root->WriteString(QStringLiteral("k"), QString::fromLatin1(row.text));
            EXPECT_EQ(root->ReadBool(QStringLiteral("k"), fallback), row.truth.value_or(fallback))
                << row.text;
            EXPECT_EQ(traces.Records().size(), row.truth ? 0U : 1U) << row.text;
        }
    }
}

TEST_F(Malformed, ATraceNamesFileAndKeyAndTextOncePerKey) {
    WriteFile("[S]\na=%1 rubbish %2\nb=maybe\n");
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> section(Reopened()->OpenSection(QStringLiteral("S")));
    ASSERT_NE(section, nullptr);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(section->ReadInt(QStringLiteral("a"), 4), 4);
        EXPECT_TRUE(section->ReadBool(QStringLiteral("b"), true));
    }
    const std::vector<QString> expected = {
        QStringLiteral("The configuration file '") + Path() +
            QStringLiteral(
                "' holds '%1 rubbish %2' under 'S/a', where a whole number of 32 bits is needed; the "
                "default is used, and a copy of the file is kept as '") +
            Path() + QStringLiteral(".damaged-1'"),
        QStringLiteral("The configuration file '") + Path() +
            QStringLiteral(
                "' holds 'maybe' under 'S/b', where true or false is needed; the default is used")};
    EXPECT_EQ(traces.Messages(), expected);
    ASSERT_FALSE(traces.Records().empty());
    EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Trace);
    EXPECT_EQ(traces.Records()[0].file, QStringLiteral("platform/config/store/cfgstore"));
}

TEST_F(Malformed, TheFileIsCopiedBeforeTheKeyIsWrittenOver) {
    const QByteArray bytes = "; by hand\n[S]\na = many\n";
    WriteFile(bytes);
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Reopened();
    EXPECT_EQ(root->ReadInt(QStringLiteral("S/a"), 4), 4);
    EXPECT_EQ(FileBytes(), bytes);
    root->WriteInt(QStringLiteral("S/a"), 5);
    ASSERT_TRUE(root->CommitKey(QStringLiteral("S/a")));
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.damaged-1")), bytes);
    EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("S/a"), 4), 5);
    EXPECT_THAT(Names(),
                testing::ElementsAre(QStringLiteral("app.ini"), QStringLiteral("app.ini.damaged-1")));
}

TEST_F(Malformed, TheSameFileIsKeptOnceHoweverOftenItIsOpened) {
    WriteFile("a=many\n");
    const TraceRecorder traces;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("a"), 4), 4);
    EXPECT_EQ(traces.Records().size(), 3U);
    EXPECT_THAT(Names(),
                testing::ElementsAre(QStringLiteral("app.ini"), QStringLiteral("app.ini.damaged-1")));
    WriteFile("a=more\n");
    EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("a"), 4), 4);
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.damaged-1")), QByteArray("a=many\n"));
    EXPECT_EQ(FileBytes(QStringLiteral("app.ini.damaged-2")), QByteArray("a=more\n"));
}

TEST_F(Malformed, NothingIsTracedUnlessWarningsAre) {
    WriteFile("a=many\n");
    const TraceRecorder traces(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("a"), 4), 4);
    EXPECT_TRUE(traces.Records().empty());
    EXPECT_TRUE(Names().contains(QStringLiteral("app.ini.damaged-1")));
}

}  // namespace
