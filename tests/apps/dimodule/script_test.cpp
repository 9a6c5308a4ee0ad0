// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/pattern.h>
#include <apps/dimodule/script.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <ostream>

namespace dimodule {
namespace {

TEST(DiModuleScript, HoldsTheCommandsInTheirOrder) {
    Script script;
    QString error;
    ASSERT_TRUE(script.Parse("# a transmitter\r\nkey 3\n\nwait 500\n  release 3\nwait 500\nrepeat\n",
                             QStringLiteral("s"), &error))
        << error.toStdString();
    ASSERT_EQ(script.commands.size(), 5u);
    EXPECT_EQ(script.commands[0].action, Command::EAction::Key);
    EXPECT_EQ(script.commands[1].time, std::chrono::milliseconds(500));
    EXPECT_EQ(script.commands[4].action, Command::EAction::Repeat);
}

struct BadScript {
    const char* text;
    const char* error;
};

void PrintTo(const BadScript& script, std::ostream* stream) {
    *stream << script.error;
}

class BadScripts : public testing::TestWithParam<BadScript> {};

TEST_P(BadScripts, AreRefusedWithTheLine) {
    Script script;
    QString error;
    EXPECT_FALSE(script.Parse(GetParam().text, QStringLiteral("s"), &error));
    EXPECT_EQ(error, QString::fromUtf8(GetParam().error));
    EXPECT_TRUE(script.commands.empty());
}

const BadScript Scripts[] = {
    {"key 1\nkee 2\n", "s:2: 'kee' is not understood"},
    {"key 1\nrepeat\n", "s:2: what is repeated has to wait somewhere"},
    {"wait 0\nrepeat\n", "s:2: what is repeated has to wait somewhere"},
    {"wait 5\nrepeat\n# a comment may\nkey 1\n", "s:4: nothing comes after 'repeat'"},
};

INSTANTIATE_TEST_SUITE_P(DiModule, BadScripts, testing::ValuesIn(Scripts));

TEST(DiModuleScript, HasABoundedNumberOfCommands) {
    Script script;
    QString error;
    EXPECT_TRUE(
        script.Parse(QByteArray("key 1\n").repeated(Script::MaxCommands), QStringLiteral("s"), &error));
    EXPECT_FALSE(
        script.Parse(QByteArray("key 1\n").repeated(Script::MaxCommands + 1), QStringLiteral("s"), &error));
    EXPECT_EQ(error, QStringLiteral("s:10001: there are more than 10000 commands"));
}

TEST(DiModuleScript, ThatIsNoFileIsRefused) {
    Script script;
    QString error;
    EXPECT_FALSE(script.Load(QStringLiteral("/nowhere/script"), &error));
    EXPECT_TRUE(error.contains(QLatin1String("/nowhere/script"))) << error.toStdString();
}

TEST(DiModulePattern, WalksOverAllInputs) {
    Pattern pattern;
    ASSERT_EQ(Pattern::Parse(QStringLiteral("walk:50"), &pattern), QString());
    EXPECT_EQ(pattern.interval, std::chrono::milliseconds(50));
    std::mt19937 random;
    EXPECT_EQ(pattern.StatesAt(0, Inputs(), random), 0xFFEu);
    EXPECT_EQ(pattern.StatesAt(11, Inputs(), random), 0x7FFu);
    EXPECT_EQ(pattern.StatesAt(12, Inputs(), random), 0xFFEu);
}

TEST(DiModulePattern, BlinksAllInputs) {
    Pattern pattern;
    ASSERT_EQ(Pattern::Parse(QStringLiteral("blink"), &pattern), QString());
    EXPECT_EQ(pattern.interval, std::chrono::milliseconds(500));
    std::mt19937 random;
    EXPECT_EQ(pattern.StatesAt(0, Inputs(), random), 0u);
    EXPECT_EQ(pattern.StatesAt(1, Inputs(), random), 0xFFFu);
}

TEST(DiModulePattern, ByChanceIsTheSameForTheSameSeed) {
    Pattern pattern;
    ASSERT_EQ(Pattern::Parse(QStringLiteral("random:1"), &pattern), QString());
    std::mt19937 first(5);
    std::mt19937 second(5);
    quint32 seen = 0;
    for (int step = 0; step < 100; ++step) {
        const quint32 states = pattern.StatesAt(step, Inputs(), first);
        EXPECT_EQ(states, pattern.StatesAt(step, Inputs(), second));
        EXPECT_LE(states, 0xFFFu);
        seen |= states;
    }
    EXPECT_EQ(seen, 0xFFFu);
}

TEST(DiModulePattern, ThatIsNoneIsRefused) {
    Pattern pattern;
    EXPECT_EQ(Pattern::Parse(QStringLiteral("run"), &pattern), QStringLiteral("'run' is no pattern"));
    EXPECT_EQ(Pattern::Parse(QString(), &pattern), QStringLiteral("'' is no pattern"));
    EXPECT_EQ(Pattern::Parse(QStringLiteral("walk:0"), &pattern),
              QStringLiteral("'0' is no number of ms from 1 to 3600000"));
    EXPECT_EQ(Pattern::Parse(QStringLiteral("walk:"), &pattern),
              QStringLiteral("'' is no number of ms from 1 to 3600000"));
    EXPECT_EQ(Pattern::Parse(QStringLiteral("walk:1s"), &pattern),
              QStringLiteral("'1s' is no number of ms from 1 to 3600000"));
    EXPECT_EQ(pattern.kind, Pattern::EKind::None);
}

}  // namespace
}  // namespace dimodule
