// SPDX-License-Identifier: Apache-2.0
#include <apps/common/childprogram.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <sys/types.h>
#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr std::chrono::seconds Patience(20);

QStringList Script(const char* text) {
    return {QStringLiteral("-c"), QString::fromUtf8(text)};
}

class ChildProgramTest : public testing::Test {
  protected:
    void Start(const char* script) { ASSERT_TRUE(child.Start(QStringLiteral("/bin/sh"), Script(script))); }
    std::string WaitForLine(const char* beginning) {
        return child.WaitForLine(QString::fromUtf8(beginning), Patience).toStdString();
    }

    ChildProgram child;
};

struct End {
    const char* name;
    const char* script;
    int code;
};

void PrintTo(const End& end, std::ostream* stream) {
    *stream << end.name;
}

class ChildProgramEnd : public testing::TestWithParam<End> {};

TEST_P(ChildProgramEnd, IsToldByItsCodeHoweverItIsWaitedFor) {
    ChildProgram child;
    child.Start(QStringLiteral("/bin/sh"), Script(GetParam().script));
    EXPECT_EQ(child.WaitForEnd(Patience), GetParam().code);
    EXPECT_FALSE(child.IsRunning());
    EXPECT_EQ(child.Run(QStringLiteral("/bin/sh"), Script(GetParam().script), Patience).code,
              GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Ends, ChildProgramEnd,
                         testing::Values(End{"Good", "exit 0", 0}, End{"Failure", "exit 3", 3},
                                         End{"Killed", "kill -9 $$", -1}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ChildProgramTest, OneThatIsNotThereIsNotStarted) {
    EXPECT_FALSE(child.Start(QStringLiteral("/nowhere/program"), {}));
    EXPECT_NE(child.GetErrors(), QByteArray()) << "says why";
    EXPECT_EQ(child.WaitForEnd(Patience), -1);
    EXPECT_EQ(child.Run(QStringLiteral("/nowhere/program"), {}, Patience).code, -1);
}

TEST_F(ChildProgramTest, WhatItSaysIsKeptApartFromItsErrors) {
    Start("echo one; echo wrong >&2; echo two");
    EXPECT_EQ(child.WaitForEnd(Patience), 0);
    EXPECT_EQ(child.GetOutput(), QByteArray("one\ntwo\n"));
    EXPECT_EQ(child.GetErrors(), QByteArray("wrong\n"));
    ASSERT_NO_FATAL_FAILURE(Start("echo three"));
    EXPECT_EQ(child.WaitForEnd(Patience), 0);
    EXPECT_EQ(child.GetOutput(), QByteArray("three\n"));
    EXPECT_EQ(child.GetErrors(), QByteArray());
}

TEST_F(ChildProgramTest, ErrorsMayComeWithTheOutput) {
    ChildProgram both(ChildProgram::EErrors::WithOutput);
    EXPECT_EQ(both.Run(QStringLiteral("/bin/sh"), Script("echo one; echo two >&2"), Patience).output,
              QByteArray("one\ntwo\n"));
}

TEST_F(ChildProgramTest, LinesAreTakenInOrderUpToTheWantedOne) {
    Start("echo a; echo; echo ' b 1 '; echo b 2; read word; echo b $word");
    EXPECT_EQ(WaitForLine("b"), "b 1");
    EXPECT_EQ(WaitForLine("b"), "b 2");
    child.Say("3");
    EXPECT_EQ(WaitForLine("b"), "b 3");
}

TEST_F(ChildProgramTest, AnEmptyLineIsALine) {
    Start("echo; echo a");
    EXPECT_FALSE(child.WaitForLine(QString(), Patience).isNull());
    EXPECT_EQ(WaitForLine(""), "a");
}

TEST_F(ChildProgramTest, NobodyWaitsForALineOfAProgramThatHasEnded) {
    Start("echo a; exit 0");
    EXPECT_TRUE(child.WaitForLine(QStringLiteral("b"), std::chrono::hours(1)).isNull());
    EXPECT_FALSE(child.IsRunning());
}

TEST_F(ChildProgramTest, TheEndOfALineIsPatience) {
    Start("read word");
    EXPECT_TRUE(child.WaitForLine(QStringLiteral("b"), std::chrono::milliseconds(1)).isNull());
    EXPECT_TRUE(child.IsRunning());
}

TEST_F(ChildProgramTest, AHandlerIsGivenEachLineAndNothingIsKept) {
    std::vector<std::string> lines;
    child.SetLineHandler([&lines](const QString& line) { lines.push_back(line.toStdString()); });
    Start("printf 'a\\nb'; printf 'c\\n'");
    EXPECT_EQ(child.WaitForEnd(Patience), 0);
    EXPECT_THAT(lines, ElementsAre("a", "bc"));
    EXPECT_EQ(child.GetOutput(), QByteArray());
}

TEST_F(ChildProgramTest, AHandlerMayKillIt) {
    std::vector<std::string> lines;
    child.SetLineHandler([&](const QString& line) {
        lines.push_back(line.toStdString());
        child.Kill();
    });
    Start("echo a; echo b; read word");
    EXPECT_EQ(child.WaitForEnd(Patience), -1);
    EXPECT_EQ(lines.front(), "a");
}

TEST_F(ChildProgramTest, WhatIsDroppedIsNotKept) {
    Start("echo a; read word; echo b; exit 4");
    EXPECT_EQ(WaitForLine("a"), "a");
    child.DropOutput();
    child.Say("go");
    EXPECT_EQ(child.WaitForEnd(Patience), 4);
    EXPECT_EQ(child.GetOutput(), QByteArray("a\n"));
}

TEST_F(ChildProgramTest, WhatWasTypedHasLeftWithoutAnEvent) {
    Start("read word; exit $word");
    child.Say("5");
    EXPECT_TRUE(child.Flush(Patience));
    EXPECT_EQ(child.WaitForEnd(Patience), 5);
}

struct Way {
    const char* name;
    std::function<int(ChildProgram&)> end;
    int code;
};

void PrintTo(const Way& way, std::ostream* stream) {
    *stream << way.name;
}

class WayToEnd : public testing::TestWithParam<Way> {};

TEST_P(WayToEnd, EndsIt) {
    ChildProgram child;
    ASSERT_TRUE(
        child.Start(QStringLiteral("/bin/sh"), Script("trap 'exit 6' TERM; echo ready; read word; exit 7")));
    ASSERT_FALSE(child.WaitForLine(QStringLiteral("ready"), Patience).isNull());
    EXPECT_EQ(GetParam().end(child), GetParam().code);
    EXPECT_FALSE(child.IsRunning());
}

INSTANTIATE_TEST_SUITE_P(
    Ways, WayToEnd,
    testing::Values(Way{"Asked", [](ChildProgram& child) { return child.Terminate(Patience); }, 6},
                    Way{"EndOfInput", [](ChildProgram& child) { return child.EndInput(Patience); }, 7},
                    Way{"OutOfPatience",
                        [](ChildProgram& child) { return child.WaitForEnd(std::chrono::milliseconds(1)); },
                        -1}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ChildProgramTest, DiesWithItsObject) {
    auto other = std::make_unique<ChildProgram>();
    ASSERT_TRUE(other->Start(QStringLiteral("/bin/sh"), Script("read word")));
    const auto id = static_cast<pid_t>(other->GetProcessId());
    EXPECT_EQ(::kill(id, 0), 0);
    other.reset();
    EXPECT_NE(::kill(id, 0), 0);
}

}  // namespace
