// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>
#include <platform/modbus/client/modbusmessage.h>

#include <gmock/gmock.h>

#include <ostream>
#include <vector>

namespace {

using Bytes = std::vector<quint8>;

constexpr unsigned Untouched = 0xABCD;

ModbusQuestion TwelveInputs() {
    ModbusQuestion question;
    question.transaction = 0x1234;
    question.unit = 1;
    question.function = 2;
    question.start = 0;
    question.count = 12;
    return question;
}

unsigned Check(const ModbusQuestion& question, const Bytes& answer, unsigned* bits) {
    return question.CheckAnswer(answer.data(), static_cast<int>(answer.size()), bits);
}

TEST(ModbusQuestionTest, IsTwelveBytesMostSignificantFirst) {
    ModbusQuestion question = TwelveInputs();
    question.start = 0x0A0B;
    question.unit = 0xFE;
    EXPECT_THAT(question.ToBytes(), testing::ElementsAre(0x12, 0x34, 0, 0, 0, 6, 0xFE, 2, 0x0A, 0x0B, 0, 12));
}

TEST(ModbusQuestionTest, InputIIsBitI) {
    unsigned bits = 0;
    EXPECT_EQ(Check(TwelveInputs(), {0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A}, &bits), 0u);
    EXPECT_EQ(bits, 0xA81u);
}

TEST(ModbusQuestionTest, EveryCountHasItsBytesAndItsBits) {
    for (quint16 count = 1; count <= 32; ++count) {
        ModbusQuestion question = TwelveInputs();
        question.count = count;
        const unsigned all = 0xFFFFFFFFu >> (32 - count);
        const int byteCount = (count + 7) / 8;
        Bytes answer{
            0x12, 0x34, 0, 0, 0, static_cast<quint8>(3 + byteCount), 1, 2, static_cast<quint8>(byteCount)};
        for (int i = 0; i < byteCount; ++i)
            answer.push_back(static_cast<quint8>(all >> (8 * i)));
        unsigned bits = 0;
        EXPECT_EQ(Check(question, answer, &bits), 0u) << count;
        EXPECT_EQ(bits, all) << count;
        if (count % 8 == 0) continue;
        answer.back() = static_cast<quint8>(answer.back() | 1 << (count % 8));
        EXPECT_EQ(Check(question, answer, &bits), modbuserror::InvalidAnswer) << count;
    }
}

TEST(ModbusQuestionTest, TheHeaderSaysHowLongAnAnswerIs) {
    struct Row {
        quint8 high, low;
        int size;
    };
    const Row rows[] = {{0, 5, 11}, {0, 3, 9}, {0, 4, 0}, {0, 6, 0}, {0, 0, 0}, {1, 5, 0}, {0xFF, 0xFF, 0}};
    for (const Row& row : rows) {
        const Bytes header{0x12, 0x34, 0, 0, row.high, row.low};
        EXPECT_EQ(TwelveInputs().AnswerSize(header.data()), row.size) << int{row.high} << ' ' << int{row.low};
    }
    ModbusQuestion question = TwelveInputs();
    question.count = ModbusQuestion::MaxCount;
    const Bytes longest{0, 0, 0, 0, 0, 7};
    EXPECT_EQ(question.AnswerSize(longest.data()), ModbusQuestion::MaxAnswerSize);
}

TEST(ModbusQuestionTest, EveryByteBesideTheStatesMatters) {
    const Bytes good{0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A};
    const std::size_t states = 9;
    for (std::size_t at = 0; at < states; ++at)
        for (int value = 0; value < 256; ++value) {
            if (value == good[at]) continue;
            Bytes bad = good;
            bad[at] = static_cast<quint8>(value);
            unsigned bits = Untouched;
            EXPECT_NE(Check(TwelveInputs(), bad, &bits), 0u) << at << " " << value;
            EXPECT_EQ(bits, Untouched) << at << " " << value;
        }
}

struct Case {
    const char* name;
    Bytes answer;
    unsigned error;
};

void PrintTo(const Case& c, std::ostream* stream) {
    *stream << c.name;
}

class WrongAnswer : public testing::TestWithParam<Case> {};

TEST_P(WrongAnswer, IsNoReading) {
    unsigned bits = Untouched;
    EXPECT_EQ(Check(TwelveInputs(), GetParam().answer, &bits), GetParam().error);
    EXPECT_EQ(bits, Untouched);
}

INSTANTIATE_TEST_SUITE_P(
    ModbusQuestionTest, WrongAnswer,
    testing::Values(
        Case{"Nothing", {}, modbuserror::InvalidAnswer},
        Case{"HeaderOnly", {0x12, 0x34, 0, 0, 0, 1, 1}, modbuserror::InvalidAnswer},
        Case{"OneByteShort", {0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81}, modbuserror::InvalidAnswer},
        Case{"ShortWithMatchingLengths", {0x12, 0x34, 0, 0, 0, 4, 1, 2, 1, 0x81}, modbuserror::InvalidAnswer},
        Case{"LongWithMatchingLengths",
             {0x12, 0x34, 0, 0, 0, 6, 1, 2, 3, 0x81, 0x0A, 0},
             modbuserror::InvalidAnswer},
        Case{"OneByteMore", {0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A, 0}, modbuserror::InvalidAnswer},
        Case{"OneByteMoreThanTheByteCount",
             {0x12, 0x34, 0, 0, 0, 6, 1, 2, 2, 0x81, 0x0A, 0},
             modbuserror::InvalidAnswer},
        Case{
            "PreviousTransaction", {0x12, 0x33, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A}, modbuserror::InvalidAnswer},
        Case{"ForeignProtocolInOneByteOnly",
             {0x12, 0x34, 0, 1, 0, 5, 1, 2, 2, 0x81, 0x0A},
             modbuserror::InvalidAnswer},
        Case{"ForeignUnit", {0x12, 0x34, 0, 0, 0, 5, 2, 2, 2, 0x81, 0x0A}, modbuserror::ForeignUnit},
        Case{"FunctionOfCoils", {0x12, 0x34, 0, 0, 0, 5, 1, 1, 2, 0x81, 0x0A}, modbuserror::InvalidAnswer},
        Case{"BitsBeyondTheLastInput",
             {0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x1A},
             modbuserror::InvalidAnswer},
        Case{"IllegalFunction", {0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 1}, modbuserror::Base + 1},
        Case{"GatewayTarget", {0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 11}, modbuserror::Base + 11},
        Case{"ExceptionZero", {0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 0}, modbuserror::UnknownException},
        Case{"ExceptionNine", {0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 9}, modbuserror::UnknownException},
        Case{"ExceptionThatWouldBeAnErrorOfOurs",
             {0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 13},
             modbuserror::UnknownException},
        Case{"ExceptionToAnotherFunction", {0x12, 0x34, 0, 0, 0, 3, 1, 0x81, 1}, modbuserror::InvalidAnswer},
        Case{"ExceptionOfAnotherTransaction",
             {0x12, 0x35, 0, 0, 0, 3, 1, 0x82, 1},
             modbuserror::InvalidAnswer},
        Case{"ExceptionWithMoreBehindIt",
             {0x12, 0x34, 0, 0, 0, 4, 1, 0x82, 1, 0},
             modbuserror::InvalidAnswer}),
    [](const auto& row) { return row.param.name; });

}  // namespace
