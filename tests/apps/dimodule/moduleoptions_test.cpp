// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/moduleoptions.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <ostream>

namespace dimodule {
namespace {

ModuleOptions Parse(const QString& line) {
    QStringList words{QStringLiteral("dimodule")};
    // A word with blanks is written with underscores here.
    for (QString word : line.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words += word.replace(QLatin1Char('_'), QLatin1Char(' '));
    return ModuleOptions::Parse(words);
}

ModuleOptions Parse(const char* line) {
    return Parse(QString::fromUtf8(line));
}

TEST(DiModuleOptions, WithoutAnyThereIsOneModuleOfTwelveInputs) {
    const ModuleOptions options = Parse("");
    EXPECT_EQ(options.action, ModuleOptions::EAction::Run);
    ASSERT_EQ(options.listen.size(), 1u);
    EXPECT_EQ(options.listen[0].ToText(), QStringLiteral("127.0.0.1:1502"));
    EXPECT_EQ(options.inputs.count, 12);
    EXPECT_EQ(options.inputs.states, 0xFFFu);
    EXPECT_EQ(options.inputs.start, 0);
    EXPECT_EQ(options.inputs.unit, Inputs::AnyUnit);
    EXPECT_EQ(options.pattern.kind, Pattern::EKind::None);
    EXPECT_EQ(options.fault.kind, EFault::None);
}

TEST(DiModuleOptions, AllOfThemAreTaken) {
    const ModuleOptions options = Parse(
        "--listen 127.0.0.5:502 --inputs 6 --start 65530 --unit 255 --pattern walk:20 --script s --fault "
        "delay_5_x2 "
        "--seed 9");
    EXPECT_EQ(options.action, ModuleOptions::EAction::Run) << options.text.toStdString();
    EXPECT_EQ(options.listen[0].ToText(), QStringLiteral("127.0.0.5:502"));
    EXPECT_EQ(options.inputs.count, 6);
    EXPECT_EQ(options.inputs.states, 0x3Fu);
    EXPECT_EQ(options.inputs.start, 65530);
    EXPECT_EQ(options.inputs.unit, 255);
    EXPECT_EQ(options.pattern.interval, std::chrono::milliseconds(20));
    EXPECT_EQ(options.scriptFile, QStringLiteral("s"));
    EXPECT_EQ(options.fault.ToText(), QStringLiteral("delay 5 x2"));
    EXPECT_EQ(options.seed, 9u);
}

TEST(DiModuleOptions, ModulesStandAtOneAddressAfterTheOther) {
    const ModuleOptions options = Parse("--listen 127.0.0.254:0 --modules 3 --listen localhost");
    QStringList places;
    for (const ListenAddress& place : options.listen)
        places += place.ToText();
    EXPECT_THAT(places,
                testing::ElementsAre(QStringLiteral("127.0.0.254:0"), QStringLiteral("127.0.0.255:0"),
                                     QStringLiteral("127.0.1.0:0"), QStringLiteral("127.0.0.1:1502"),
                                     QStringLiteral("127.0.0.2:1502"), QStringLiteral("127.0.0.3:1502")));
}

struct BadOptions {
    const char* line;
    const char* text;
};

void PrintTo(const BadOptions& options, std::ostream* stream) {
    *stream << options.line;
}

class BadModuleOptions : public testing::TestWithParam<BadOptions> {};

TEST_P(BadModuleOptions, AreComplainedAboutInOneLine) {
    const ModuleOptions options = Parse(GetParam().line);
    EXPECT_EQ(options.action, ModuleOptions::EAction::Complain);
    EXPECT_EQ(options.text, QString::fromUtf8(GetParam().text));
}

const BadOptions BadLines[] = {
    {"key", "'key' is not understood"},
    {"--inputs", "Missing value after '--inputs'."},
    {"--input 6", "Unknown option 'input'."},
    {"--inputs 0", "--inputs: '0' is no number from 1 to 32"},
    {"--inputs 33", "--inputs: '33' is no number from 1 to 32"},
    {"--inputs six", "--inputs: 'six' is no number from 1 to 32"},
    {"--start -1", "--start: '-1' is no number from 0 to 65524"},
    {"--inputs 6 --start 65531", "--start: '65531' is no number from 0 to 65530"},
    {"--unit 256", "--unit: '256' is no number from 0 to 255"},
    {"--seed x", "--seed: 'x' is no number from 0 to 2147483647"},
    {"--modules 0", "--modules: '0' is no number from 1 to 1000"},
    {"--modules 1001", "--modules: '1001' is no number from 1 to 1000"},
    {"--modules 600 --listen 127.0.0.1 --listen 127.1.0.1", "--modules: there are more than 1000 modules"},
    {"--modules 2 --listen 127.255.255.255:1", "--listen: '128.0.0.0' is not within 127.0.0.0/8"},
    {"--listen 0.0.0.0:502", "--listen: '0.0.0.0' is not within 127.0.0.0/8"},
    {"--listen 192.168.0.1", "--listen: '192.168.0.1' is not within 127.0.0.0/8"},
    {"--listen [::1]:502", "--listen: '::1' is not within 127.0.0.0/8"},
    {"--listen tower:502",
     "--listen: 'tower:502' is no address to listen on: give the IP address of an interface"},
    {"--listen 127.0.0.1:65536",
     "--listen: '127.0.0.1:65536' is no address to listen on: a port is a number from 0 to 65535"},
    {"--pattern run", "--pattern: 'run' is no pattern"},
    {"--fault fire", "--fault: 'fire' is no fault"},
    {"--fault delay_x", "--fault: 'x' is not x1 to x1000000"},
    {"--script=", "--script needs a value"},
};

INSTANTIATE_TEST_SUITE_P(DiModule, BadModuleOptions, testing::ValuesIn(BadLines));

TEST(DiModuleOptions, HelpTellsOfEveryFaultAndCommand) {
    const ModuleOptions options = Parse("--help");
    EXPECT_EQ(options.action, ModuleOptions::EAction::Print);
    EXPECT_TRUE(options.text.contains(Fault::Help()));
    for (const char* const command :
         {"key ", "release ", "states ", "fault ", "show", "wait ", "repeat", "quit"})
        EXPECT_TRUE(options.text.contains(QLatin1String(command))) << command;
}

}  // namespace
}  // namespace dimodule
