// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgcenter.h>

#include <tests/platform/config/configfixture.h>
#include <tests/support/tracerecorder.h>

#include <climits>

namespace {

struct Text {
    const char* name;
    QString content;
};

void PrintTo(const Text& text, std::ostream* stream) {
    *stream << text.name;
}

class TextsThatSurvive : public ConfigTest, public testing::WithParamInterface<Text> {};

TEST_P(TextsThatSurvive, BeingReadAtOnceAndByAnotherStoreAndByAnotherProcess) {
    const QString key = QStringLiteral("key");
    const QString& content = GetParam().content;
    const std::unique_ptr<ICfg> root = Root();
    root->WriteString(key, content);
    EXPECT_EQ(root->ReadString(key, QStringLiteral("absent")), content);
    root->WriteString(QStringLiteral("z"), QStringLiteral("next line"));
    ASSERT_TRUE(root->CommitKey(key));
    const std::unique_ptr<ICfg> reopened = Reopened();
    EXPECT_EQ(reopened->ReadString(key, QStringLiteral("absent")), content);
    EXPECT_EQ(reopened->ReadString(QStringLiteral("z"), QString()), QStringLiteral("next line"));
    EXPECT_EQ(ReadByAnotherProcess(key).toUtf8(), content.toUtf8());
}

QString EveryCharacter() {
    QString all;
    for (int code = 1; code <= 0xFFFF; ++code)
        if (!QChar(code).isSurrogate()) all += QChar(code);
    return all;
}

INSTANTIATE_TEST_SUITE_P(
    Config, TextsThatSurvive,
    testing::Values(Text{"empty", QString()}, Text{"blanks", QStringLiteral("   ")},
                    Text{"blanks_around", QStringLiteral("  a b  ")},
                    Text{"tabs_and_wide_blanks_around", QStringLiteral("\t\u2003a\u00A0")},
                    Text{"commas", QStringLiteral("a,b, c,,")},
                    Text{"quotes", QStringLiteral("\"a\" 'b' \"")},
                    Text{"backslashes", QStringLiteral("\\a\\\\n C:\\data\\")},
                    Text{"escapes", QStringLiteral("\\x41 \\n %20 %U0041")},
                    Text{"newlines", QStringLiteral("a\nb\r\nc\r\n\n")},
                    Text{"control_characters_before_digits", QStringLiteral("\u0001f\u001F0\u007F1\u0085")},
                    Text{"separators", QStringLiteral("=a;b=%1@;#")}, Text{"semicolon", QStringLiteral(";a")},
                    Text{"hash", QStringLiteral("#a")}, Text{"at", QStringLiteral("@")},
                    Text{"two_ats", QStringLiteral("@@a")}, Text{"type", QStringLiteral("@Invalid()")},
                    Text{"section", QStringLiteral("[General]\nkey=x")},
                    Text{"umlauts", QStringLiteral("äöüß")},
                    Text{"beyond_16_bits", QStringLiteral("a\U0001F600b\U0010FFFD")},
                    Text{"line_separators", QStringLiteral("\u2028a\u2029\uFEFF\uFFFE\uFFFF")},
                    Text{"every_character", EveryCharacter()},
                    Text{"hundred_thousand", QString(100000, QLatin1Char('x')) + QStringLiteral("end")}),
    [](const testing::TestParamInfo<Text>& text) { return text.param.name; });

class Contents : public ConfigTest {};

// They cannot be passed to a process or printed.
TEST_F(Contents, HalvesOfPairsAndNullCharactersSurvive) {
    const QString content = QString(QChar(0xD83D)) + QChar(0) + QStringLiteral("1") + QChar(0xDE00);
    Root()->WriteString(QStringLiteral("key"), content);
    EXPECT_EQ(Reopened()->ReadString(QStringLiteral("key"), QString()), content);
}

TEST_F(Contents, NumbersSurvive) {
    const std::unique_ptr<ICfg> root = Root();
    for (const int number : {0, 1, -1, INT_MAX, INT_MIN}) {
        root->WriteInt(QStringLiteral("number"), number);
        EXPECT_EQ(root->ReadInt(QStringLiteral("number"), 7), number);
        ASSERT_TRUE(root->CommitKey(QStringLiteral("number")));
        EXPECT_EQ(Reopened()->ReadInt(QStringLiteral("number"), 7), number);
        EXPECT_EQ(ReadByAnotherProcess(QStringLiteral("number")), QString::number(number));
    }
}

TEST_F(Contents, TruthSurvives) {
    const std::unique_ptr<ICfg> root = Root();
    for (const bool truth : {true, false}) {
        root->WriteBool(QStringLiteral("truth"), truth);
        EXPECT_EQ(root->ReadBool(QStringLiteral("truth"), !truth), truth);
        ASSERT_TRUE(root->CommitKey(QStringLiteral("truth")));
        EXPECT_EQ(Reopened()->ReadBool(QStringLiteral("truth"), !truth), truth);
    }
}

TEST_F(Contents, MissingKeysReadAsTheFallbackWithoutTrace) {
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> root = Root();
    EXPECT_EQ(root->ReadString(QStringLiteral("none"), QStringLiteral("text")), QStringLiteral("text"));
    EXPECT_EQ(root->ReadInt(QStringLiteral("none"), -3), -3);
    EXPECT_TRUE(root->ReadBool(QStringLiteral("none"), true));
    EXPECT_FALSE(root->ReadBool(QStringLiteral("none"), false));
    EXPECT_TRUE(traces.Records().empty());
}

TEST_F(Contents, KeyNamesAreTakenAsTheyAre) {
    const QStringList keys = {
        QStringLiteral("a"),         QStringLiteral("A"),    QStringLiteral(" a b "),
        QStringLiteral("schlüssel"), QStringLiteral("ключ"), QStringLiteral("\U0001F600"),
        QStringLiteral("a=b"),       QStringLiteral(";a"),   QStringLiteral("#a"),
        QStringLiteral("[a]"),       QStringLiteral("a\\b"), QStringLiteral("a%20b"),
        QStringLiteral("a%"),        QStringLiteral("%"),    QStringLiteral("a\nb"),
        QStringLiteral("\"a\""),     QStringLiteral("@a"),   QStringLiteral("General"),
        QStringLiteral("%General"),  QStringLiteral("-_."),  QStringLiteral("a%U0041"),
        QStringLiteral("a,b"),       QStringLiteral("]"),    QStringLiteral("\u00FF\u0100")};
    std::unique_ptr<ICfg> root = Root();
    // As keys, as sections, and as keys of sections below others.
    const auto places = [](const QString& key) {
        return QStringList{key, key + QStringLiteral("/k"), QStringLiteral("Section/") + key,
                           QStringLiteral("Section/x/") + key + QStringLiteral("/y")};
    };
    for (const QString& key : keys)
        for (const QString& place : places(key))
            root->WriteString(place, QStringLiteral("of ") + place);
    ASSERT_TRUE(root->CommitKey(QString()));
    root = Reopened();
    for (const QString& key : keys)
        for (const QString& place : places(key))
            EXPECT_EQ(root->ReadString(place, QString()), QStringLiteral("of ") + place);
}

TEST_F(Contents, AKeyWithoutANameIsRefusedWithATrace) {
    const TraceRecorder traces;
    const std::unique_ptr<ICfg> section(Root()->ProvideSection(QStringLiteral("S")));
    section->WriteString(QString(), QStringLiteral("lost"));
    Root()->WriteString(QString(), QStringLiteral("lost"));
    EXPECT_EQ(traces.Records().size(), 2U);
    EXPECT_EQ(section->ReadString(QString(), QStringLiteral("fallback")), QStringLiteral("fallback"));
    EXPECT_TRUE(section->CommitKey(QString()));
    EXPECT_EQ(FileBytes(), QByteArray());
}

TEST_F(Contents, SlashesLeadIntoSectionsHoweverMany) {
    Root()->WriteInt(QStringLiteral("/A//B/k/"), 5);
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("A/B/k"), 0), 5);
    const std::unique_ptr<ICfg> section(Reopened()->OpenSection(QStringLiteral("A/B")));
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->ReadInt(QStringLiteral("k"), 0), 5);
}

TEST_F(Contents, WhatIsWrittenIsReadAtOnceThroughAnotherSection) {
    const std::unique_ptr<ICfg> one(Root()->ProvideSection(QStringLiteral("S")));
    const std::unique_ptr<ICfg> other(Root()->ProvideSection(QStringLiteral("S")));
    one->WriteInt(QStringLiteral("k"), 8);
    EXPECT_EQ(other->ReadInt(QStringLiteral("k"), 0), 8);
    EXPECT_EQ(Root()->ReadInt(QStringLiteral("S/k"), 0), 8);
}

}  // namespace
