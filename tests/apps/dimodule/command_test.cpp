// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/command.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <ostream>

namespace dimodule {
namespace {

using EAction = Command::EAction;

struct Line {
    const char* text;
    EAction action;
    int module;
    quint32 inputs;
};

void PrintTo(const Line& line, std::ostream* stream) {
    *stream << '"' << line.text << '"';
}

class CommandLine : public testing::TestWithParam<Line> {};

TEST_P(CommandLine, IsUnderstood) {
    Command command;
    EXPECT_EQ(Command::Parse(QString::fromUtf8(GetParam().text), &command), QString());
    EXPECT_EQ(command.action, GetParam().action);
    EXPECT_EQ(command.module, GetParam().module);
    EXPECT_EQ(command.inputs, GetParam().inputs);
}

const Line Lines[] = {
    {"", EAction::None, 0, 0},
    {"   ", EAction::None, 0, 0},
    {"# key 1", EAction::None, 0, 0},
    {"#key 1", EAction::None, 0, 0},
    {"key 0", EAction::Key, 0, 1},
    {"  key   3 11  ", EAction::Key, 0, 0x808},
    {"key 31", EAction::Key, 0, 0x80000000u},
    {"key all", EAction::Key, 0, 0xFFFFFFFFu},
    {"key 2/3 4", EAction::Key, 2, 0x18},
    {"release 1000/all", EAction::Release, 1000, 0xFFFFFFFFu},
    {"states 4095", EAction::States, 0, 4095},
    {"states 2/0xFFF", EAction::States, 2, 4095},
    {"states 0", EAction::States, 0, 0},
    {"show", EAction::Show, 0, 0},
    {"wait 0", EAction::Wait, 0, 0},
    {"repeat", EAction::Repeat, 0, 0},
    {"quit", EAction::Quit, 0, 0},
    {"fault none", EAction::Fault, 0, 0},
    {"fault 3/silence x2", EAction::Fault, 3, 0},
};

INSTANTIATE_TEST_SUITE_P(DiModule, CommandLine, testing::ValuesIn(Lines));

struct BadLine {
    const char* text;
    const char* error;
};

void PrintTo(const BadLine& line, std::ostream* stream) {
    *stream << '"' << line.text << '"';
}

class BadCommandLine : public testing::TestWithParam<BadLine> {};

TEST_P(BadCommandLine, IsRefusedAndChangesNothing) {
    Command command;
    command.inputs = 77;
    EXPECT_EQ(Command::Parse(QString::fromUtf8(GetParam().text), &command),
              QString::fromUtf8(GetParam().error));
    EXPECT_EQ(command.inputs, 77u);
}

const BadLine BadLines[] = {
    {"kee 3", "'kee' is not understood"},
    {"KEY 3", "'KEY' is not understood"},
    {"key", "there is something missing"},
    {"key 32", "'32' is no input from 0 to 31"},
    {"key -1", "'-1' is no input from 0 to 31"},
    {"key 1 x", "'x' is no input from 0 to 31"},
    {"key 1,2", "'1,2' is no input from 0 to 31"},
    {"key 1 2/3", "'2/3' is no input from 0 to 31"},
    {"key 0/3", "'0/3' is not understood"},
    {"key 1001/3", "'1001/3' is not understood"},
    {"key x/3", "'x/3' is not understood"},
    {"key 2/", "'' is no input from 0 to 31"},
    {"states", "there is something missing"},
    {"states 4294967296", "'4294967296' is no number, such as 4095 or 0xFFF"},
    {"states -1", "'-1' is no number, such as 4095 or 0xFFF"},
    {"states 1 2", "'2' is not understood"},
    {"fault", "there is something missing"},
    {"fault 2/", "'' is no fault"},
    {"fault fire", "'fire' is no fault"},
    {"show 1", "'1' is not understood"},
    {"wait", "'' is no number of ms from 0 to 86400000"},
    {"wait -1", "'-1' is no number of ms from 0 to 86400000"},
    {"wait 86400001", "'86400001' is no number of ms from 0 to 86400000"},
    {"wait 5 s", "'s' is not understood"},
    {"quit now", "'now' is not understood"},
};

INSTANTIATE_TEST_SUITE_P(DiModule, BadCommandLine, testing::ValuesIn(BadLines));

TEST(DiModuleCommand, ALineWithoutEndIsRefused) {
    Command command;
    EXPECT_EQ(Command::Parse(QString(1001, QLatin1Char(' ')), &command),
              QStringLiteral("the line is too long"));
}

}  // namespace
}  // namespace dimodule
