// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/answer.h>
#include <apps/dimodule/fault.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <ostream>

namespace dimodule {
namespace {

struct Text {
    const char* written;
    const char* error;  ///< empty: none
    const char* read;   ///< what the fault calls itself then
};

void PrintTo(const Text& text, std::ostream* stream) {
    *stream << '"' << text.written << '"';
}

class FaultText : public testing::TestWithParam<Text> {};

TEST_P(FaultText, IsUnderstoodOrRefused) {
    Fault fault;
    const QStringList words =
        QString::fromUtf8(GetParam().written).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    EXPECT_EQ(Fault::Parse(words, &fault), QString::fromUtf8(GetParam().error));
    EXPECT_EQ(fault.ToText(), QString::fromUtf8(GetParam().read));
}

const Text Texts[] = {
    {"none", "", "none"},
    {"delay", "", "delay 1000"},
    {"delay 20", "", "delay 20"},
    {"delay 20 x3", "", "delay 20 x3"},
    {"delay x3", "", "delay 1000 x3"},
    {"reset x1", "", "reset x1"},
    {"refused", "", "refused"},
    {"silence", "", "silence"},
    {"half", "", "half"},
    {"transaction", "", "transaction"},
    {"function", "", "function"},
    {"length", "", "length"},
    {"garbage x1000000", "", "garbage x1000000"},
    {"exception", "", "exception 4"},
    {"exception 255", "", "exception 255"},
    {"duplicate", "", "duplicate"},
    {"idle 50", "", "idle 50"},
    {"storm 100", "", "storm 100"},
    {"", "'' is no fault", "none"},
    {"Delay", "'Delay' is no fault", "none"},
    {"fire", "'fire' is no fault", "none"},
    {"delay soon", "'soon' is no number from 0 to 3600000", "none"},
    {"delay -1", "'-1' is no number from 0 to 3600000", "none"},
    {"delay 3600001", "'3600001' is no number from 0 to 3600000", "none"},
    {"exception 256", "'256' is no number from 0 to 255", "none"},
    {"idle 0", "'0' is no number from 1 to 3600000", "none"},
    {"storm 101", "'101' is no number from 0 to 100", "none"},
    {"silence 5", "'5' is not understood", "none"},
    {"silence x0", "'x0' is not x1 to x1000000", "none"},
    {"silence x1000001", "'x1000001' is not x1 to x1000000", "none"},
    {"silence x", "'x' is not x1 to x1000000", "none"},
    {"silence x2 x3", "'x3' is not understood", "none"},
    {"refused x2", "'refused' lasts until it is changed", "none"},
    {"idle 50 x2", "'idle' lasts until it is changed", "none"},
};

INSTANTIATE_TEST_SUITE_P(DiModule, FaultText, testing::ValuesIn(Texts));

TEST(DiModuleFault, TheHelpHasALineForEach) {
    EXPECT_EQ(Fault::Help().count(QLatin1Char('\n')), 14);
    EXPECT_TRUE(
        Fault::Help().contains(QLatin1String("  exception [NUMBER] answer with the exception NUMBER\n")));
}

/// What becomes of the answer 0xA81 to a question for twelve inputs.
class DiModuleReaction : public testing::Test {
  protected:
    Reaction ReactTo(EFault kind, int argument = 0) {
        Fault fault;
        fault.kind = kind;
        fault.argument = argument;
        return React(fault, question, answer, random);
    }

    const QByteArray question = QByteArray::fromHex("12340000000601020000000c");
    const QByteArray answer = QByteArray::fromHex("123400000005010202810a");
    std::mt19937 random{1};
};

TEST_F(DiModuleReaction, NoFaultChangesNothing) {
    const Reaction reaction = ReactTo(EFault::None);
    EXPECT_EQ(reaction.bytes, answer);
    EXPECT_EQ(reaction.delay, std::chrono::milliseconds(0));
    EXPECT_EQ(reaction.then, Reaction::EThen::Stay);
    EXPECT_EQ(ReactTo(EFault::Idle, 100).bytes, answer);
}

TEST_F(DiModuleReaction, ADelayChangesOnlyTheTime) {
    EXPECT_EQ(ReactTo(EFault::Delay, 300).bytes, answer);
    EXPECT_EQ(ReactTo(EFault::Delay, 300).delay, std::chrono::milliseconds(300));
}

TEST_F(DiModuleReaction, ResettingAndSilenceSayNothing) {
    EXPECT_EQ(ReactTo(EFault::Reset).then, Reaction::EThen::Reset);
    EXPECT_EQ(ReactTo(EFault::Reset).bytes, QByteArray());
    EXPECT_EQ(ReactTo(EFault::Silence).then, Reaction::EThen::Stay);
    EXPECT_EQ(ReactTo(EFault::Silence).bytes, QByteArray());
}

TEST_F(DiModuleReaction, WrongAnswersSayTheOppositeOfTheStates) {
    EXPECT_EQ(ReactTo(EFault::Transaction).bytes.toHex(), "1233000000050102027e05");
    EXPECT_EQ(ReactTo(EFault::Function).bytes.toHex(), "1234000000050103027e05");
    EXPECT_EQ(ReactTo(EFault::Half).bytes.toHex(), "1234000000");
}

TEST_F(DiModuleReaction, AnExceptionIsOneOfModbus) {
    EXPECT_EQ(ReactTo(EFault::Exception, 6).bytes.toHex(), "123400000003018206");
}

TEST_F(DiModuleReaction, ADuplicateIsTheAnswerTwice) {
    EXPECT_EQ(ReactTo(EFault::Duplicate).bytes, answer + answer);
}

TEST_F(DiModuleReaction, NoWrongLengthIsTheRightOne) {
    QByteArrayList kinds;
    for (int i = 0; i < 100; ++i) {
        const QByteArray bytes = ReactTo(EFault::Length).bytes;
        EXPECT_NE(bytes, answer);
        EXPECT_FALSE(bytes.startsWith(QByteArray::fromHex("123400000005010202")))
            << bytes.toHex().toStdString();
        if (!kinds.contains(bytes)) kinds += bytes;
    }
    EXPECT_EQ(kinds.size(), 4);
}

TEST_F(DiModuleReaction, GarbageIsBounded) {
    for (int i = 0; i < 300; ++i) {
        const int size = ReactTo(EFault::Garbage).bytes.size();
        EXPECT_GE(size, 1);
        EXPECT_LE(size, MaxFrameSize);
    }
}

TEST_F(DiModuleReaction, AStormHasItsShareOfRightAnswers) {
    int right = 0;
    for (int i = 0; i < 1000; ++i)
        if (ReactTo(EFault::Storm, 30).bytes == answer) ++right;
    EXPECT_GT(right, 650);  // a tenth of the faults are delays, which change no bytes
    EXPECT_LT(right, 800);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(ReactTo(EFault::Storm, 0).bytes, answer);
}

TEST_F(DiModuleReaction, AnExceptionOfItsOwnIsLeftAsItIs) {
    const QByteArray refused = Exception(question, 2);
    Fault fault;
    for (const EFault kind :
         {EFault::Transaction, EFault::Function, EFault::Half, EFault::Length, EFault::Storm}) {
        fault.kind = kind;
        fault.argument = 100;
        for (int i = 0; i < 200; ++i)
            EXPECT_LE(React(fault, question, refused, random).bytes.size(), MaxFrameSize);
    }
}

}  // namespace
}  // namespace dimodule
