// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/device/orvscript.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

using EAction = OrvScript::EAction;

TEST(OrvScript, HoldsWhatTheFileSaysInTheOrderOfTime) {
    OrvScript script;
    QString error;
    ASSERT_TRUE(
        script.Parse("# A night at the mast.\n"
                     "\n"
                     "after 5000 fail  antenna torn off \r\n"
                     "  after 2000 mode memory scan\n"
                     "after 8000 recover\n"
                     "after 8000 log it's back # really\n"
                     "after 0 occupy site B\n"
                     "after 1 vacate\n"
                     "after 9000 fail",
                     QStringLiteral("script"), &error))
        << error.toStdString();
    const auto& steps = script.GetSteps();
    ASSERT_EQ(steps.size(), 7U);
    EXPECT_EQ(steps[0].action, EAction::Occupy);
    EXPECT_EQ(steps[0].text, QStringLiteral("site B"));
    EXPECT_EQ(steps[1].action, EAction::Vacate);
    EXPECT_EQ(steps[2].time, std::chrono::seconds(2));
    EXPECT_EQ(steps[2].action, EAction::Mode);
    EXPECT_EQ(steps[2].mode, OperationMemoryScan);
    EXPECT_EQ(steps[3].action, EAction::Fail);
    EXPECT_EQ(steps[3].text, QStringLiteral("antenna torn off"));
    EXPECT_EQ(steps[4].action, EAction::Recover);
    EXPECT_EQ(steps[5].action, EAction::Log);
    EXPECT_EQ(steps[5].text, QStringLiteral("it's back # really"));
    EXPECT_EQ(steps[6].text, QString());
}

TEST(OrvScript, AnErrorKeepsWhatItHeld) {
    OrvScript script;
    QString error;
    ASSERT_TRUE(script.Parse("after 1 recover", QStringLiteral("script"), &error));
    EXPECT_FALSE(script.Parse("after 1 recover\nnonsense", QStringLiteral("script"), &error));
    EXPECT_EQ(script.GetSteps().size(), 1U);
}

struct Wrong {
    const char* name;
    QByteArray text;
    const char* error;
};

class OrvScriptErrors : public testing::TestWithParam<Wrong> {};

TEST_P(OrvScriptErrors, NameFileAndLine) {
    OrvScript script;
    QString error;
    EXPECT_FALSE(script.Parse(GetParam().text, QStringLiteral("script"), &error));
    EXPECT_EQ(error, QLatin1String(GetParam().error));
}

const Wrong WrongScripts[] = {
    {"NoAfter", "\n2000 mode Scan", "script:2: a line is 'after <ms> <action> [argument]'"},
    {"AfterAlone", "after", "script:1: '' is no number of ms from 0 to 604800000"},
    {"NoNumber", "after soon fail", "script:1: 'soon' is no number of ms from 0 to 604800000"},
    {"Negative", "after -1 fail", "script:1: '-1' is no number of ms from 0 to 604800000"},
    {"BeyondAWeek", "after 604800001 fail", "script:1: '604800001' is no number of ms from 0 to 604800000"},
    {"Fraction", "after 1.5 fail", "script:1: '1.5' is no number of ms from 0 to 604800000"},
    {"NoAction", "after 1", "script:1: '' is no action"},
    {"UnknownAction", "# x\n\nafter 1 explode", "script:3: 'explode' is no action"},
    {"ActionInCapitals", "after 1 FAIL", "script:1: 'FAIL' is no action"},
    {"UnknownMode", "after 1 mode Sleep", "script:1: 'Sleep' is no operation mode"},
    {"NoMode", "after 1 mode", "script:1: '' is no operation mode"},
    {"LogNothing", "after 1 log", "script:1: 'log' needs an argument"},
    {"OccupyByNobody", "after 1 occupy", "script:1: 'occupy' needs an argument"},
    {"RecoverWhat", "after 1 recover now", "script:1: 'recover' takes no argument"},
    {"NoUtf8", "after 1 log \xff", "script:1: is not UTF-8 text"},
    {"TooMany", QByteArray("after 1 fail\n").repeated(OrvScript::MaxSteps + 1),
     "script:10001: there are more than 10000 steps"},
};

INSTANTIATE_TEST_SUITE_P(, OrvScriptErrors, testing::ValuesIn(WrongScripts),
                         [](const testing::TestParamInfo<Wrong>& row) {
                             return std::string(row.param.name);
                         });

TEST(OrvScript, SaysWhichFileIsMissing) {
    OrvScript script;
    QString error;
    EXPECT_FALSE(script.Load(QStringLiteral("/nowhere/at/all"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("/nowhere/at/all: "))) << error.toStdString();
}

}  // namespace
