// SPDX-License-Identifier: Apache-2.0
// What the reader itself decides; what messages make of it is in message_test, change_test and
// malformed_test.
#include <platform/vtclient/wire/cborinput.h>

#include <platform/values/value.h>
#include <tests/platform/vtclient/codecprobe.h>
#include <tests/support/allocationcounter.h>

#include <cmath>
#include <cstring>
#include <ostream>

namespace {

using vt::CborInput;
using vt::Content;

/// An id and a content, behind the head of an array: whether they are read in one go, and as what.
struct Row {
    const char* name;
    const char* hex;
    bool isRead;
    Content content;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

const Row Rows[] = {
    {"AnInteger", "9f 07 18ff ff", true, qint64{255}},
    {"AnIntegerBeforeAnotherElement", "9f 07 00 01 ff", true, qint64{0}},
    {"ANegativeInteger", "9f 07 390100 ff", true, qint64{-257}},
    {"TheHighestInteger", "9f 07 1b7fffffffffffffff ff", true, std::numeric_limits<qint64>::max()},
    {"TheLowestInteger", "9f 07 3b7fffffffffffffff ff", true, std::numeric_limits<qint64>::min()},
    {"ADouble", "9f 07 fbbff8000000000000 ff", true, -1.5},
    {"AnIntegerTooHigh", "9f 07 1b8000000000000000 ff", false, {}},
    {"AnIntegerTooLow", "9f 07 3b8000000000000000 ff", false, {}},
    {"AShorterFloat", "9f 07 fa3fc00000 ff", false, {}},
    {"ABoolean", "9f 07 f5 ff", false, {}},
    {"AText", "9f 07 61 61 ff", false, {}},
    {"AList", "9f 07 80 ff", false, {}},
    {"AChangeThatIsWrapped", "9f 82 01 07 ff", false, {}},
    {"AnIdThatIsTooHigh", "9f 1b0000000100000000 00 ff", false, {}},
    {"AnIdThatIsNegative", "9f 20 00 ff", false, {}},
    {"AnArrayOfKnownLength", "82 07 00", false, {}},
    {"AnArrayOfKnownLengthThatGoesOn", "84 07 00 08 00", false, {}},
    {"NothingBehindTheId", "9f 07", false, {}},
    {"TheEndBehindTheId", "9f 07 ff", false, {}},
    {"AnIntegerThatBreaksOff", "9f 07 19ff", false, {}},
    {"NothingBehindTheContent", "9f 07 00", false, {}},
    {"NoElementBehindTheContent", "9f 07 00 1c ff", false, {}},
};

class NumberChangeTest : public testing::TestWithParam<Row> {};

TEST_P(NumberChangeTest, IsReadInOneGoOrNotAtAll) {
    const QByteArray bytes = Bytes(GetParam().hex);
    CborInput input(bytes.constData(), bytes.size());
    ASSERT_TRUE(input.Enter());
    quint32 id = 0;
    Content content;
    EXPECT_EQ(input.NumberChange(&id, &content), GetParam().isRead);
    EXPECT_EQ(content, GetParam().content);
    if (GetParam().isRead) {
        EXPECT_EQ(id, 7U);
        EXPECT_EQ(input.HasNext(), bytes.size() > 4 && bytes.endsWith(Bytes("00 01 ff")));
    }
}

/// Whatever it refuses is left where it was.
TEST_P(NumberChangeTest, TheSameIsReadElementByElement) {
    const QByteArray bytes = Bytes(GetParam().hex);
    const auto read = [&bytes](bool isTried, quint32* id, Content* content) {
        CborInput input(bytes.constData(), bytes.size());
        input.Enter();
        if (!(isTried && input.NumberChange(id, content))) {
            input.Id(id);
            input.ReadContent(content);
        }
        return input.Error();
    };
    quint32 ids[2] = {0, 0};
    Content contents[2];
    EXPECT_EQ(read(true, &ids[0], &contents[0]), read(false, &ids[1], &contents[1]));
    EXPECT_EQ(ids[0], ids[1]);
    EXPECT_EQ(contents[0], contents[1]);
}

INSTANTIATE_TEST_SUITE_P(All, NumberChangeTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

QString TextOf(const QByteArray& bytes, int maximum, QString* error) {
    CborInput input(bytes.constData(), bytes.size());
    QString text = QStringLiteral("before");
    input.Text(maximum, &text);
    if (!input.HasFailed()) input.Finish();
    *error = input.Error();
    return text;
}

TEST(CborTextTest, IsReadWhereverItsOtherCharactersStand) {
    // Every length around that of a word, with a character that is none of ASCII at every place.
    for (int size = 0; size < 40; ++size) {
        for (int other = -1; other < size; ++other) {
            QString text(size, QLatin1Char('x'));
            if (other >= 0) text[other] = QChar(u'\u00e4');
            const QByteArray utf8 = text.toUtf8();
            QString error;
            const QByteArray head = Bytes("78") + static_cast<char>(utf8.size());
            EXPECT_EQ(TextOf(head + utf8, 1000, &error), text) << size << " " << other;
            EXPECT_EQ(error, QString());
        }
    }
}

TEST(CborTextTest, MayBeAsLongAsIsAllowedAndNoLonger) {
    QString error;
    EXPECT_EQ(TextOf(Bytes("63 616263"), 3, &error), QStringLiteral("abc"));
    EXPECT_EQ(error, QString());
    for (const char* hex : {"63 616263", "63 61c3a4 61", "7f 61 61 61 62 61 63 ff"}) {
        TextOf(Bytes(hex), 1, &error);
        EXPECT_EQ(error, QStringLiteral("a text is too long")) << hex;
    }
}

TEST(CborTextTest, ReplacesWhatWasThereAlsoByNothing) {
    QString error;
    EXPECT_EQ(TextOf(Bytes("60"), 3, &error), QString());
    EXPECT_EQ(TextOf(Bytes("7f ff"), 3, &error), QString());
    EXPECT_EQ(error, QString());
}

TEST(CborTextTest, WithAnythingButAnElementBehindItIsRefused) {
    for (const char* hex : {"9f 61 61 1c ff", "9f 61 61", "9f 62 c3a4 1c ff", "82 61 61 ff", "9f 7f ff"}) {
        const QByteArray bytes = Bytes(hex);
        CborInput input(bytes.constData(), bytes.size());
        QString text;
        EXPECT_TRUE(input.Enter());
        EXPECT_FALSE(input.Text(10, &text)) << hex;
        EXPECT_EQ(input.Error(), QStringLiteral("not well-formed CBOR")) << hex;
    }
}

TEST(CborFloatTest, KeepsEveryBitOfADouble) {
    const QByteArray bytes = Bytes("fb 7ff4000000000001");
    CborInput input(bytes.constData(), bytes.size());
    double number = 0.0;
    ASSERT_TRUE(input.Double(&number));
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    EXPECT_EQ(bits, 0x7ff4000000000001U);
}

TEST(CborFloatTest, TakesShorterOnesAndIntegers) {
    for (const char* hex : {"f9 3e00", "fa 3fc00000", "fb 3ff8000000000000"}) {
        const QByteArray bytes = Bytes(hex);
        CborInput input(bytes.constData(), bytes.size());
        double number = 0.0;
        EXPECT_TRUE(input.Double(&number)) << hex;
        EXPECT_EQ(number, 1.5) << hex;
    }
    const QByteArray bytes = Bytes("f9 8001");
    CborInput input(bytes.constData(), bytes.size());
    double number = 0.0;
    EXPECT_TRUE(input.Double(&number));
    EXPECT_EQ(number, -std::ldexp(1.0, -24)) << "the smallest there is";
}

TEST(CborErrorTest, TheFirstThingWrongIsWhatIsTold) {
    const QByteArray bytes = Bytes("01");
    CborInput input(bytes.constData(), bytes.size());
    EXPECT_FALSE(input.Fail("the first"));
    EXPECT_FALSE(input.Enter());
    EXPECT_FALSE(input.Fail("the second"));
    quint64 number = 0;
    EXPECT_FALSE(input.Unsigned(10, &number));
    EXPECT_EQ(input.Error(), QStringLiteral("the first"));
}

TEST(CborAllocationTest, NumbersAreReadWithoutAny) {
    constexpr int Count = 1000;
    vt::ChangeWriter writer;
    const values::ValueNumeric<int> integer(-70000, -100000, 100000);
    const values::ValueNumeric<double> real(0.1, -1e9, 1e9);
    for (quint32 i = 0; i < Count; ++i) {
        writer.Changed(i, integer, vt::EItemKind::NumericInt);
        writer.Changed(i, real, vt::EItemKind::NumericDouble);
    }
    const QByteArray bytes = ToBytes(vt::BatchMessage(), writer.Take());
    vt::TreeChange change;
    int count = 0;
    const AllocationCounter counter;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    reader.Read([](const auto& /*message*/) {});
    while (reader.NextChange(&change))
        ++count;
    const std::size_t allocations = AllocationCounter::Count();
    EXPECT_EQ(count, 2 * Count);
    EXPECT_EQ(allocations, 0U);
}

TEST(CborAllocationTest, NumbersAreWrittenWithoutAnyOnceThereWasRoom) {
    vt::ChangeWriter writer;
    const values::ValueNumeric<int> integer(-70000, -100000, 100000);
    const values::ValueNumeric<double> real(0.1, -1e9, 1e9);
    const auto write = [&] {
        for (quint32 i = 0; i < 1000; ++i) {
            writer.Changed(i, integer, vt::EItemKind::NumericInt);
            writer.Changed(i, real, vt::EItemKind::NumericDouble);
        }
    };
    write();
    writer.Take();
    const AllocationCounter counter;
    write();
    EXPECT_EQ(AllocationCounter::Count(), 0U);
}

}  // namespace
