// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

struct TextRow {
    const char* name;
    QString text;
    QString escaped;
};

class SafeTextTest : public testing::TestWithParam<TextRow> {};

TEST_P(SafeTextTest, IsHarmless) {
    EXPECT_EQ(safetext::Escaped(GetParam().text), GetParam().escaped);
}

INSTANTIATE_TEST_SUITE_P(
    , SafeTextTest,
    testing::Values(TextRow{"Nothing", QString(), QString()},
                    TextRow{"PlainTextStays", QStringLiteral("C:\\x a \"b\""),
                            QStringLiteral("C:\\x a \"b\"")},
                    TextRow{"OtherScriptsStay", QStringLiteral(u"\u00b5\u6f22\U0001F4E1"),
                            QStringLiteral(u"\u00b5\u6f22\U0001F4E1")},
                    TextRow{"LineEnds", QStringLiteral("a\r\nb\tc"), QStringLiteral("a\\r\\nb\\tc")},
                    TextRow{"EscapeSequence", QStringLiteral("\x1b[31mred"), QStringLiteral("\\x1b[31mred")},
                    TextRow{"NullCharacter", QString(QChar(0)), QStringLiteral("\\x00")},
                    TextRow{"Delete", QStringLiteral("\x7f"), QStringLiteral("\\x7f")},
                    TextRow{"ControlOfEightBits", QString(QChar(0x9b)), QStringLiteral("\\x9b")},
                    TextRow{"LineSeparator", QString(QChar(0x2028)), QStringLiteral("\\u2028")},
                    TextRow{"WritingDirection", QString(QChar(0x202e)), QStringLiteral("\\u202e")},
                    TextRow{"DirectionIsolate", QString(QChar(0x2066)), QStringLiteral("\\u2066")},
                    TextRow{"FirstHalf", QString(QChar(0xd83d)), QStringLiteral("\\ud83d")},
                    TextRow{"SecondHalf", QStringLiteral("x") + QChar(0xdce1), QStringLiteral("x\\udce1")}),
    [](const auto& row) { return row.param.name; });

TEST(SafeText, InJsonEverythingIsOfFourDigits) {
    EXPECT_EQ(safetext::EscapedJson(QStringLiteral("{\"a\":\"") + QChar(0x9b) + QChar(0x202e) +
                                    QStringLiteral("\"}")),
              QStringLiteral("{\"a\":\"\\u009b\\u202e\"}"));
}

}  // namespace
