// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/answer.h>

#include <gmock/gmock.h>

#include <ostream>

namespace dimodule {
namespace {

QByteArray Hex(const char* text) {
    return QByteArray::fromHex(text);
}

Inputs Twelve() {
    Inputs inputs;
    inputs.states = 0xA81;
    return inputs;
}

struct Exchange {
    const char* name;
    const char* question;
    const char* answer;
};

void PrintTo(const Exchange& exchange, std::ostream* stream) {
    *stream << exchange.name;
}

class AnswerOfAModule : public testing::TestWithParam<Exchange> {};

TEST_P(AnswerOfAModule, IsAsModbusSays) {
    Inputs inputs = Twelve();
    inputs.start = 0x100;
    inputs.unit = 1;
    const QByteArray question = Hex(GetParam().question);
    ASSERT_EQ(FrameSize(question), question.size());
    EXPECT_EQ(Answer(question, inputs).toHex(), Hex(GetParam().answer).toHex());
}

const Exchange Exchanges[] = {
    {"DiscreteInputs", "1234 0000 0006 01 02 0100 000c", "1234 0000 0005 01 02 02 81 0a"},
    {"Coils", "0001 0000 0006 01 01 0100 000c", "0001 0000 0005 01 01 02 81 0a"},
    {"OneInput", "0001 0000 0006 01 02 0107 0001", "0001 0000 0004 01 02 01 01"},
    {"EightInputsInOneByte", "0001 0000 0006 01 02 0104 0008", "0001 0000 0004 01 02 01 a8"},
    {"LastInput", "0001 0000 0006 01 02 010b 0001", "0001 0000 0004 01 02 01 01"},
    {"OneTooMany", "0001 0000 0006 01 02 0100 000d", "0001 0000 0003 01 82 02"},
    {"OneBeforeTheFirst", "0001 0000 0006 01 02 00ff 0001", "0001 0000 0003 01 82 02"},
    {"OneAfterTheLast", "0001 0000 0006 01 02 010c 0001", "0001 0000 0003 01 82 02"},
    {"UpToTheLastAddress", "0001 0000 0006 01 02 ffff 07d0", "0001 0000 0003 01 82 02"},
    {"NoInputs", "0001 0000 0006 01 02 0100 0000", "0001 0000 0003 01 82 03"},
    {"MoreThanFitIntoAnAnswer", "0001 0000 0006 01 02 0100 07d1", "0001 0000 0003 01 82 03"},
    {"ShortQuestion", "0001 0000 0005 01 02 0100 00", "0001 0000 0003 01 82 03"},
    {"LongQuestion", "0001 0000 0007 01 02 0100 0001 00", "0001 0000 0003 01 82 03"},
    {"FunctionOnly", "0001 0000 0002 01 02", "0001 0000 0003 01 82 03"},
    {"Registers", "0001 0000 0006 01 03 0100 0001", "0001 0000 0003 01 83 01"},
    {"FunctionZero", "0001 0000 0006 01 00 0100 0001", "0001 0000 0003 01 80 01"},
    {"WritingACoil", "0001 0000 0006 01 05 0100 ff00", "0001 0000 0003 01 85 01"},
    {"AnotherUnit", "0001 0000 0006 02 02 0100 0001", "0001 0000 0003 02 82 0b"},
};

INSTANTIATE_TEST_SUITE_P(DiModule, AnswerOfAModule, testing::ValuesIn(Exchanges),
                         [](const auto& row) { return row.param.name; });

TEST(DiModuleAnswer, EveryUnitAnswersUnlessOneIsChosen) {
    for (int unit = 0; unit < 256; ++unit) {
        QByteArray question = Hex("0001 0000 0006 00 02 0000 0001");
        question[6] = static_cast<char>(unit);
        EXPECT_EQ(Answer(question, Inputs()), question.left(5) + '\4' + question.mid(6, 2) + "\1\1");
    }
}

TEST(DiModuleAnswer, ThirtyTwoInputsTakeFourBytes) {
    Inputs inputs;
    inputs.count = 32;
    inputs.states = 0x87654321;
    EXPECT_EQ(Answer(Hex("0001 0000 0006 01 02 0000 0020"), inputs).toHex(), "00010000000701020421436587");
}

TEST(DiModuleFrame, IsNoneBeforeItIsWhole) {
    const QByteArray frame = Hex("1234 0000 0006 01 02 0100 000c");
    for (int size = 0; size < frame.size(); ++size)
        EXPECT_EQ(FrameSize(frame.left(size)), 0) << size;
    EXPECT_EQ(FrameSize(frame), 12);
    EXPECT_EQ(FrameSize(frame + frame), 12);
    EXPECT_EQ(FrameSize(frame + "x"), 12);
}

TEST(DiModuleFrame, OfAnotherProtocolOrImpossibleLengthIsNone) {
    EXPECT_EQ(FrameSize(Hex("1234 0001 0006")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0100 0006")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0000 0001")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0000 0000")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0000 00ff")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0000 ffff")), -1);
    EXPECT_EQ(FrameSize(QByteArray("GET / HTTP/1.1\r\n")), -1);
    EXPECT_EQ(FrameSize(Hex("1234 0000 00fe")), 0);
    EXPECT_EQ(FrameSize(Hex("1234 0000 00fe") + QByteArray(254, 'x')), MaxFrameSize);
}

}  // namespace
}  // namespace dimodule
