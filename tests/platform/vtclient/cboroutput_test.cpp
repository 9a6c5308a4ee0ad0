// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/cboroutput.h>
#include <tests/platform/vtclient/codecprobe.h>

#include <functional>
#include <limits>
#include <ostream>

namespace {

using vt::CborOutput;

struct Row {
    const char* name;
    std::function<void(CborOutput&)> write;
    const char* hex;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

std::function<void(CborOutput&)> Unsigned(quint64 number) {
    return [number](CborOutput& output) { output.Unsigned(number); };
}
std::function<void(CborOutput&)> Integer(qint64 number) {
    return [number](CborOutput& output) { output.Integer(number); };
}
std::function<void(CborOutput&)> Double(double number) {
    return [number](CborOutput& output) { output.Double(number); };
}
std::function<void(CborOutput&)> Text(const QString& text) {
    return [text](CborOutput& output) { output.Text(text); };
}

const Row Rows[] = {
    {"Zero", Unsigned(0), "00"},
    {"TheLastInOneByte", Unsigned(23), "17"},
    {"TheFirstInTwo", Unsigned(24), "1818"},
    {"TheLastInTwo", Unsigned(0xff), "18ff"},
    {"TheFirstInThree", Unsigned(0x100), "190100"},
    {"TheLastInThree", Unsigned(0xffff), "19ffff"},
    {"TheFirstInFive", Unsigned(0x10000), "1a00010000"},
    {"TheLastInFive", Unsigned(0xffffffff), "1affffffff"},
    {"TheFirstInNine", Unsigned(0x100000000), "1b0000000100000000"},
    {"TheHighest", Unsigned(std::numeric_limits<quint64>::max()), "1bffffffffffffffff"},
    {"MinusOne", Integer(-1), "20"},
    {"TheLastNegativeInOneByte", Integer(-24), "37"},
    {"TheFirstNegativeInTwo", Integer(-25), "3818"},
    {"TheLowest", Integer(std::numeric_limits<qint64>::min()), "3b7fffffffffffffff"},
    {"TheHighestInteger", Integer(std::numeric_limits<qint64>::max()), "1b7fffffffffffffff"},
    {"ADouble", Double(-1.5), "fbbff8000000000000"},
    {"ADoubleThatAShorterFloatCouldHold", Double(0.0), "fb0000000000000000"},
    {"MinusZero", Double(-0.0), "fb8000000000000000"},
    {"AnInfinity", Double(std::numeric_limits<double>::infinity()), "fb7ff0000000000000"},
    {"False", [](CborOutput& output) { output.Boolean(false); }, "f4"},
    {"True", [](CborOutput& output) { output.Boolean(true); }, "f5"},
    {"Nothing", [](CborOutput& output) { output.Null(); }, "f6"},
    {"NoText", Text(QString()), "60"},
    {"AText", Text(QStringLiteral("IETF")), "6449455446"},
    {"ATextWithANul", Text(QString(QChar(0))), "6100"},
    {"ATextThatIsNotAscii", Text(QStringLiteral("a\u00fc")), "63 61c3bc"},
    {"ACharacterOfTwoUnits", Text(QStringLiteral("\U0001f600")), "64 f09f9880"},
    {"HalfACharacter", Text(QString(QChar(0xd83dU))), "61 3f"},
    {"ADefiniteArray",
     [](CborOutput& output) {
         output.Array(2);
         output.Array(0);
         output.Unsigned(1);
     },
     "82 80 01"},
    {"AnOpenArray",
     [](CborOutput& output) {
         output.OpenArray();
         output.Unsigned(1);
         output.CloseArray();
     },
     "9f 01 ff"},
};

class CborOutputTest : public testing::TestWithParam<Row> {};

TEST_P(CborOutputTest, IsWrittenInItsShortestForm) {
    CborOutput output;
    GetParam().write(output);
    EXPECT_EQ(output.Take().toHex(), Bytes(GetParam().hex).toHex());
}

INSTANTIATE_TEST_SUITE_P(All, CborOutputTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CborOutputTextTest, IsUtf8AtEveryLength) {
    for (const ushort last : {u'x', u'\u00e4', u'\u20ac'}) {
        for (int size = 1; size < 600; ++size) {
            QString text(size, QLatin1Char('x'));
            text[size - 1] = QChar(last);
            CborOutput output;
            output.Text(text);
            const QByteArray written = output.Take();
            const QByteArray utf8 = text.toUtf8();
            ASSERT_TRUE(written.endsWith(utf8)) << size;
            ASSERT_EQ(written.size() - utf8.size(), utf8.size() < 24 ? 1 : utf8.size() < 256 ? 2 : 3) << size;
        }
    }
}

TEST(CborOutputTextTest, LeavesNothingBehindOfAnAttempt) {
    CborOutput output;
    output.Unsigned(1);
    output.Text(QString(30, QChar(u'\u20ac')));
    output.Unsigned(2);
    EXPECT_EQ(output.Size(), 1 + 2 + 90 + 1);
}

}  // namespace
