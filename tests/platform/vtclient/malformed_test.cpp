// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/codecprobe.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <ostream>
#include <random>

namespace {

struct Row {
    const char* name;
    const char* hex;
    const char* reason;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

constexpr const char* NotArray = "an array was expected";
constexpr const char* NotUnsigned = "an unsigned integer was expected";
constexpr const char* NotInteger = "an integer was expected";
constexpr const char* NotText = "a text was expected";
constexpr const char* NotBoolean = "a boolean was expected";
constexpr const char* NoContent = "no content that a value can have";
constexpr const char* WrongKind = "the content is not of the item's kind";
constexpr const char* OutOfRange = "a number is out of range";
constexpr const char* TooLarge = "an integer is out of range";
constexpr const char* NotCbor = "not well-formed CBOR";
constexpr const char* BadText = "a text is not well-formed";
constexpr const char* TooMany = "more elements than expected";
constexpr const char* LeftOver = "bytes left over";

const Row Rows[] = {
    // Messages
    {"NothingAtAll", "", NotArray},
    {"NoArray", "01", NotArray},
    {"AMapInsteadOfAnArray", "a1 01 01", NotArray},
    {"ATaggedArray", "c0 82 0f 00", NotArray},
    {"AnEmptyArray", "80", NotUnsigned},
    {"AnEmptyOpenArray", "9f ff", NotUnsigned},
    {"ATextInsteadOfANumber", "82 61 61 00", NotUnsigned},
    {"MessageZero", "81 00", "there is no such message"},
    {"AMessageBeyondTheLast", "82 1819 00", OutOfRange},
    {"ANegativeMessage", "82 20 00", NotUnsigned},
    {"APingOfNothing", "81 0f", NotUnsigned},
    {"APingOfTwo", "83 0f 00 00", TooMany},
    {"AnOpenPingOfTwo", "9f 0f 00 00 ff", TooMany},
    {"TwoMessages", "82 0f 00 82 0f 00", LeftOver},
    {"AnArrayThatIsNotClosed", "9f 0f 00", NotCbor},
    {"AnArrayThatPromisesMore", "9a ffffffff 0f 00", NotCbor},
    {"AnArrayOf2To64Elements", "9b ffffffffffffffff 0f 00", NotCbor},
    {"AReservedLength", "9c 0f 00", NotArray},
    {"ABreakInADefiniteArray", "82 0f ff", NotCbor},
    // Numbers
    {"APingAbove63Bits", "82 0f 1b8000000000000000", OutOfRange},
    {"ASubscriptionAbove32Bits", "82 05 1b0000000100000000", OutOfRange},
    {"ASessionAbove31Bits", "87 02 01 60 1a80000000 00 00 00", OutOfRange},
    {"APingIntervalAbove31Bits", "87 02 01 60 01 00 1a80000000 00", OutOfRange},
    {"AnEpochAbove63Bits", "87 02 01 60 01 1b8000000000000000 00 00", OutOfRange},
    {"AFloatingPointNumberInsteadOfAnInteger", "82 0f fb3ff0000000000000", NotUnsigned},
    {"ANumberWithoutItsBytes", "82 0f 1b0000", NotCbor},
    {"ABigNumber", "82 0f c2 49 010000000000000000", NotUnsigned},
    // Texts
    {"ATextThatIsNotUtf8", "83 04 01 61 ff", BadText},
    {"ATextThatIsAnOverlongNul", "83 04 01 62 c080", BadText},
    {"ATextWithHalfACharacter", "83 04 01 63 eda080", BadText},
    {"ATextInPartsThatAreNotUtf8", "83 04 01 7f 61 c3 61 84 ff", BadText},
    {"BytesInsteadOfAText", "83 04 01 41 61", NotText},
    {"ATextOfPartsThatAreBytes", "83 04 01 7f 41 61 ff", BadText},
    {"ATextOfPartsInParts", "83 04 01 7f 7f 61 61 ff ff", BadText},
    {"ATextThatIsNotClosed", "83 04 01 7f 61 61", BadText},
    {"ATextShorterThanItSays", "83 04 01 64 2f61", BadText},
    {"ATextOf2GigabytesThatIsNotThere", "83 04 01 7a7fffffff 61", BadText},
    {"ATextOf4GigabytesThatIsNotThere", "83 04 01 7affffffff 61", BadText},
    {"ATextOf2To63BytesThatIsNotThere", "83 04 01 7b7fffffffffffffff 61", BadText},
    {"ATextOf2To64BytesThatIsNotThere", "83 04 01 7bffffffffffffffff 61", BadText},
    {"APartOf2GigabytesThatIsNotThere", "83 04 01 7f 7a7fffffff 61 ff", BadText},
    {"ANumberInsteadOfAText", "83 04 01 00", NotText},
    {"NullInsteadOfAText", "83 0a 01 f6", NotText},
    // Fields
    {"AByeForNoReason", "83 03 00 60", "there is no such reason"},
    {"AByeForAnUnknownReason", "83 03 09 60", OutOfRange},
    {"AByeWithoutItsText", "82 03 01", NotText},
    {"PrefixesThatAreNoArray", "83 06 01 60", NotArray},
    {"APrefixThatIsNoText", "83 06 01 82 60 01", NotText},
    {"PrefixesThatAreNotClosed", "83 06 01 9f 60", NotCbor},
    {"MoreThatIsNoBoolean", "84 09 01 02 00", NotBoolean},
    {"AnAnswerWithAnUnknownResult", "84 0d 01 04 60", OutOfRange},
    {"AnAnswerThatLacksItsContent", "84 0d 01 01 60", NoContent},
    {"AnAnswerWithAContentThatHasNone", "85 0d 01 00 60 01", TooMany},
    {"AWriteOfAMap", "85 0c 01 02 03 a0", NoContent},
    {"AWriteOfBytes", "85 0c 01 02 03 41 00", NoContent},
    {"AWriteOfATaggedNumber", "85 0c 01 02 03 c1 00", NoContent},
    {"AWriteOfUndefined", "85 0c 01 02 03 f7", NoContent},
    {"AWriteOfAnotherSimpleValue", "85 0c 01 02 03 e0", NoContent},
    {"AWriteAbove63Bits", "85 0c 01 02 03 1b8000000000000000", TooLarge},
    {"AWriteBelow63Bits", "85 0c 01 02 03 3b8000000000000000", TooLarge},
    {"AWriteOfTheLowestOfAll", "85 0c 01 02 03 3bffffffffffffffff", TooLarge},
    {"AWriteOfAListOfTexts", "85 0c 01 02 03 81 61 61", NotInteger},
    {"AWriteOfAListOfLists", "85 0c 01 02 03 81 81 00", NotInteger},
    {"AWriteOfAListThatHoldsNull", "85 0c 01 02 03 81 f6", NotInteger},
    {"AWriteOfAListNestedDeeply",
     "85 0c 01 02 03 8181818181818181818181818181818181818181818181818181818181818100", NotInteger},
    {"AListThatPromisesMore", "85 0c 01 02 03 9a7fffffff 00", NotCbor},
    // Items
    {"CreationOfAnUnknownKind", "86 0e 01 02 60 08 00", OutOfRange},
    {"CreationWithUnknownFlags", "87 0e 01 02 60 01 04 f5", OutOfRange},
    {"CreationOfANodeWithAContent", "86 0e 01 02 60 00 00", TooMany},
    {"CreationOfABooleanThatIsANumber", "87 0e 01 02 60 01 00 01", WrongKind},
    {"CreationOfAnIntegerThatIsAFloat", "87 0e 01 02 60 02 00 f93c00", WrongKind},
    {"CreationOfAnIntegerAbove31Bits", "87 0e 01 02 60 02 00 1a80000000", WrongKind},
    {"CreationOfAnIntegerBelow31Bits", "87 0e 01 02 60 02 00 3a80000000", WrongKind},
    {"CreationOfATextThatIsNull", "87 0e 01 02 60 03 00 f6", WrongKind},
    {"CreationOfALimitedNumberWithoutLimits", "87 0e 01 02 60 04 00 05", NoContent},
    {"CreationOfALimitedNumberWithOneLimit", "88 0e 01 02 60 04 00 05 00", NoContent},
    {"CreationOfALimitedNumberWithALimitThatIsNone", "89 0e 01 02 60 04 00 05 00 f6", WrongKind},
    {"CreationOfANumberThatIsNone", "89 0e 01 02 60 05 00 f97e00 00 01", WrongKind},
    {"CreationOfANumberWithAMinimumThatIsNone", "89 0e 01 02 60 05 00 00 fa7fc00000 01", WrongKind},
    {"CreationOfANumberWithAMaximumThatIsNone", "89 0e 01 02 60 05 00 00 01 fb7ff8000000000000", WrongKind},
    {"CreationOfAListThatHoldsNaN", "87 0e 01 02 60 07 00 82 00 f97e00", WrongKind},
    {"CreationOfASelectionWithoutChoices", "87 0e 01 02 60 06 00 00", NotArray},
    {"CreationOfASelectionByName", "88 0e 01 02 60 06 00 61 61 80", WrongKind},
    {"AChoiceWithoutItsKey", "88 0e 01 02 60 06 00 00 82 60 00", NotInteger},
    {"AChoiceWithoutItsNumber", "88 0e 01 02 60 06 00 00 81 60", NotInteger},
    {"AChoiceWithAKeyThatIsNone", "88 0e 01 02 60 06 00 00 83 60 00 f93c00", NotInteger},
    {"AChoiceWithAKeyAbove63Bits", "88 0e 01 02 60 06 00 00 83 60 00 1b8000000000000000", TooLarge},
    {"AChoiceWithoutText", "88 0e 01 02 60 06 00 00 83 00 00 00", NotText},
    // Changes
    {"AnIdWithoutAContent", "84 07 01 01 05", NoContent},
    {"AContentWithoutAnId", "84 07 01 01 f5", NotUnsigned},
    {"AnIdAbove32Bits", "85 07 01 01 1b0000000100000000 f5", OutOfRange},
    {"ANegativeId", "85 07 01 01 20 f5", NotUnsigned},
    {"AnEmptyChange", "84 07 01 01 80", NotUnsigned},
    {"AnUnknownChange", "84 07 01 01 82 05 01", OutOfRange},
    {"AContentInAnArray", "84 07 01 01 83 05 01 f5", OutOfRange},
    {"AChangeInAnArrayTooMuch", "84 07 01 01 81 82 01 01", NotUnsigned},
    {"ARemovalOfTwo", "84 07 01 01 83 01 01 02", TooMany},
    {"ARemovalOfNothing", "84 07 01 01 81 01", NotUnsigned},
    {"AnAdditionWithoutAName", "84 07 01 01 84 00 01 00 00", NotText},
    {"AnAdditionWithoutAKind", "84 07 01 01 84 00 01 00 60", NotUnsigned},
    {"AnAdditionToNothing", "84 07 01 01 82 00 01", NotUnsigned},
    {"ADescriptionWithoutFlags", "84 07 01 01 83 02 01 60", NotUnsigned},
    {"ADescriptionWithOneLimit", "84 07 01 01 85 02 01 60 00 00", NoContent},
    {"ADescriptionWithThreeLimits", "84 07 01 01 87 02 01 60 00 00 00 00", TooMany},
    {"ItemsWithoutAList", "84 07 01 01 83 03 01 00", NotArray},
    {"AnOwnChangeOfNoSession", "84 07 01 01 84 04 01 f6 f5", NotUnsigned},
    {"AnOwnChangeOfASessionAbove31Bits", "84 07 01 01 84 04 01 1a80000000 f5", OutOfRange},
    {"AnOwnChangeWithoutAContent", "84 07 01 01 83 04 01 01", NoContent},
    {"ABadChangeAfterAGoodOne", "86 07 01 01 01 f5 02 a0", NoContent},
    {"BytesAfterTheChanges", "85 07 01 01 01 f5 00", LeftOver},
    {"ChangesThatAreNotClosed", "9f 07 01 01 01 f5", NotCbor},
};

class MalformedTest : public testing::TestWithParam<Row> {};

TEST_P(MalformedTest, IsRefusedForItsReason) {
    EXPECT_EQ(Decode(Bytes(GetParam().hex)).error, QString::fromUtf8(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(All, MalformedTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

/// A text longer than it may be, by one character.
struct LongRow {
    const char* name;
    const char* before;  ///< the text, and what comes after it in the message
    const char* after;
    int maximum;
};

void PrintTo(const LongRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LongTextTest : public testing::TestWithParam<LongRow> {
  protected:
    static QByteArray Message(int length) {
        const QByteArray utf8 = QString(length, QChar(u'\u20ac')).toUtf8();
        QByteArray text = Bytes("79 0000");
        text[1] = static_cast<char>(utf8.size() >> 8);
        text[2] = static_cast<char>(utf8.size());
        return Bytes(GetParam().before) + text + utf8 + Bytes(GetParam().after);
    }
};

TEST_P(LongTextTest, IsReadAtItsLongest) {
    EXPECT_EQ(Decode(Message(GetParam().maximum)).error, QString());
}

TEST_P(LongTextTest, IsRefusedBeyond) {
    EXPECT_EQ(Decode(Message(GetParam().maximum + 1)).error, QStringLiteral("a text is too long"));
}

const LongRow LongRows[] = {
    {"Application", "86 01 01", "60 60 60", vtlimits::MaxHelloText},
    {"Machine", "86 01 01 60", "60 60", vtlimits::MaxHelloText},
    {"User", "86 01 01 60 60", "60", vtlimits::MaxHelloText},
    {"Token", "86 01 01 60 60 60", "", vtlimits::MaxHelloText},
    {"ServerApplication", "87 02 01", "01 00 00 00", vtlimits::MaxHelloText},
    {"Path", "83 04 01", "", vtlimits::MaxPathLength},
    {"Prefix", "83 06 01 81", "", vtlimits::MaxPathLength},
    {"ByeReason", "83 03 01", "", vtlimits::MaxReasonLength},
    {"AbsentReason", "83 0a 01", "", vtlimits::MaxReasonLength},
    {"AnswerReason", "84 0d 01 02", "", vtlimits::MaxReasonLength},
    {"PathToCreate", "85 0e 01 02", "00", vtlimits::MaxPathLength},
    {"NameAdded", "84 07 01 01 85 00 01 00", "00", vtlimits::MaxNameLength},
    {"NameDescribed", "84 07 01 01 84 02 01", "00", vtlimits::MaxNameLength},
};

INSTANTIATE_TEST_SUITE_P(All, LongTextTest, testing::ValuesIn(LongRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RandomMessageTest, IsReadOrRefusedForAReason) {
    constexpr int Rounds = 200000;
    std::mt19937 random(20261120);
    int read = 0;
    for (int round = 0; round < Rounds; ++round) {
        QByteArray bytes(static_cast<int>(random() % 48), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        // As a message begins, or none of them would get anywhere.
        if (bytes.size() > 2 && round % 8 != 0) bytes[0] = static_cast<char>(0x9f);
        if (bytes.size() > 2 && round % 8 != 0) bytes[1] = static_cast<char>(1 + random() % 16);
        vt::MessageReader reader(bytes.constData(), bytes.size());
        vt::Message message;
        const bool isRead = ReadAny(reader, &message);
        vt::TreeChange change;
        while (isRead && CarriesChanges(TypeOf(message)) && reader.NextChange(&change)) {
        }
        ASSERT_TRUE(isRead || !reader.Error().isEmpty()) << bytes.toHex(' ').toStdString();
        if (isRead && reader.Error().isEmpty()) ++read;
    }
    EXPECT_GT(read, 0);
}

/// Messages of which one byte was changed, as a broken peer or a fault on the way would.
TEST(RandomMessageTest, WithOneByteChangedIsReadOrRefusedForAReason) {
    const QByteArray whole = Bytes(
        "9f 07 01 02 88 00 01 02 61 76 06 00 00 86 61 41 fb3fe0000000000000 21 61 42 01 02 "
        "89 00 02 00 61 77 04 01 05 20 09 84 03 01 f6 80 84 04 02 01 07 01 f6 82 01 02 ff");
    for (int at = 0; at < whole.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            QByteArray bytes = whole;
            bytes[at] = static_cast<char>(byte);
            vt::MessageReader reader(bytes.constData(), bytes.size());
            vt::Message message;
            const bool isRead = ReadAny(reader, &message);
            ASSERT_TRUE(isRead || !reader.Error().isEmpty()) << bytes.toHex(' ').toStdString();
            vt::TreeChange change;
            int changes = 0;
            while (isRead && CarriesChanges(TypeOf(message)) && reader.NextChange(&change))
                ++changes;
            ASSERT_LE(changes, whole.size());
        }
    }
}

}  // namespace
