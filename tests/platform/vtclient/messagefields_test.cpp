// SPDX-License-Identifier: Apache-2.0
// What a message consists of is said once: whatever is written is read, and the compiler sees what is
// forgotten.
#include <platform/vtclient/wire/messagefields.h>

#include <tests/platform/vtclient/codecprobe.h>
#include <tests/platform/vtclient/filledmessage.h>
#include <tests/support/allocationcounter.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <map>

namespace {

using namespace vt::wire;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

// Messages as somebody may declare them.

struct WithoutFault {
    quint32 one = 0;
    QString two;
    vt::Content three;
    vt::ItemDescription four;
    bool five = false;

    static constexpr auto Fields() {
        return std::tuple(Field{"one", &WithoutFault::one}, Field{"two", &WithoutFault::two, TextUpTo{3}},
                          Field{"three", &WithoutFault::three}, Field{"four", &WithoutFault::four},
                          OptionalField{"five", &WithoutFault::five});
    }
};

struct Forgetful {
    quint32 one = 0;
    QString forgotten;

    static constexpr auto Fields() { return std::tuple(Field{"one", &Forgetful::one}); }
};

struct Repetitive {
    quint32 one = 0;
    quint32 forgotten = 0;

    static constexpr auto Fields() {
        return std::tuple(Field{"one", &Repetitive::one}, Field{"again", &Repetitive::one});
    }
};

struct Ambiguous {
    quint32 one = 0;
    quint32 two = 0;

    static constexpr auto Fields() {
        return std::tuple(OptionalField{"one", &Ambiguous::one}, Field{"two", &Ambiguous::two});
    }
};

template <class... M>
constexpr bool AreWhollyDescribed(const std::variant<M...>* /*any*/) {
    return (IsWhollyDescribed<M>() && ...);
}

TEST(MessageFieldsTest, EachMemberHasItsOwnRow) {
    EXPECT_TRUE(AreWhollyDescribed(static_cast<const vt::Message*>(nullptr)));
    EXPECT_TRUE(IsWhollyDescribed<WithoutFault>());
    EXPECT_FALSE(IsWhollyDescribed<Forgetful>()) << "nothing would write or read a member";
    EXPECT_FALSE(IsWhollyDescribed<Repetitive>()) << "one is there twice, the other is not";
    EXPECT_FALSE(IsWhollyDescribed<Ambiguous>()) << "nobody knew which of them is missing";
}

// Each message, with something in each of its fields.

class AnyMessageTest : public testing::TestWithParam<unsigned> {};

TEST_P(AnyMessageTest, SaysInEachFieldWhatWasSaid) {
    Filling filling;
    filling.number = 1;  // an enumeration has that too; of an answer it is the result that has a content
    filling.flag = true;
    filling.text = S("text");
    filling.item.kind = vt::EItemKind::Text;
    filling.item.flags = vt::ItemDescription::EveryChange;
    filling.item.content = S("content");
    const vt::Message message = Filled(GetParam(), filling);
    const DecodedMessage decoded = Decode(ToBytes(message));
    EXPECT_EQ(decoded.error, QString());
    ExpectEqual(decoded.message, message);
}

INSTANTIATE_TEST_SUITE_P(All, AnyMessageTest, testing::Range(1U, MessageCount + 1),
                         [](const auto& number) { return std::to_string(number.param); });

// A field that may be missing.

template <class M>
QByteArray Write(const M& message) {
    vt::CborOutput output;
    output.OpenArray();
    WriteFields(output, message);
    output.CloseArray();
    return output.Take();
}

template <class M>
QString Read(const QByteArray& bytes, M* message) {
    vt::CborInput input(bytes.constData(), bytes.size());
    if (input.Enter() && ReadFields(input, message) && input.Leave()) input.Finish();
    return input.Error();
}

struct Extended {
    quint32 sub = 0;
    quint32 added = 7;

    static constexpr auto Fields() {
        return std::tuple(Field{"sub", &Extended::sub}, OptionalField{"added", &Extended::added});
    }
};

TEST(OptionalFieldTest, IsNotWrittenIfItIsWhatItIsByDefault) {
    EXPECT_STREQ(Write(Extended{1, 7}).toHex(' ').constData(), "9f 01 ff");
    EXPECT_STREQ(Write(Extended{1, 0}).toHex(' ').constData(), "9f 01 00 ff");
}

TEST(OptionalFieldTest, IsWhatItIsByDefaultIfItIsMissing) {
    for (const char* hex : {"9f 01 ff", "81 01"}) {
        Extended read;
        EXPECT_EQ(Read(Bytes(hex), &read), QString());
        EXPECT_EQ(read.sub, 1U);
        EXPECT_EQ(read.added, 7U);
    }
}

TEST(OptionalFieldTest, IsWhatIsThere) {
    for (const char* hex : {"9f 01 05 ff", "82 01 05"}) {
        Extended read;
        EXPECT_EQ(Read(Bytes(hex), &read), QString());
        EXPECT_EQ(read.added, 5U);
    }
}

TEST(OptionalFieldTest, IsRefusedIfItIsWrong) {
    Extended read;
    EXPECT_EQ(Read(Bytes("9f 01 60 ff"), &read), S("an unsigned integer was expected"));
    EXPECT_EQ(Read(Bytes("9f 01 05 05 ff"), &read), S("more elements than expected"));
    EXPECT_EQ(Read(Bytes("9f 01"), &read), S("not well-formed CBOR"));
    EXPECT_EQ(Read(Bytes("82 01"), &read), S("not well-formed CBOR"));
}

// What runs per change.

template <class M>
class FrequentMessageTest : public testing::Test {};
using TFrequentMessages =
    testing::Types<vt::AckMessage, vt::WriteMessage, vt::AnswerMessage, vt::PingMessage>;
TYPED_TEST_SUITE(FrequentMessageTest, TFrequentMessages, );

TYPED_TEST(FrequentMessageTest, IsWrittenAndReadWithoutAnyAllocation) {
    Filling filling;
    filling.number = 1;
    filling.item.content = 0.5;
    const auto message = Filled<TypeParam>(filling);
    const QByteArray bytes = ToBytes(vt::Message(message));
    int read = 0;
    const AllocationCounter counter;
    const std::string_view written = Encode(message);
    vt::MessageReader reader(written.data(), static_cast<qint64>(written.size()));
    reader.Read([&read](const auto& whichever) {
        read += std::is_same_v<std::decay_t<decltype(whichever)>, TypeParam>;
    });
    const std::size_t allocations = AllocationCounter::Count();
    EXPECT_EQ(read, 1);
    EXPECT_EQ(allocations, 0U);
    EXPECT_EQ(ToBytes(written), bytes);
}

TEST(FrequentMessageTest, WhatStandsBeforeChangesIsWrittenWithoutAnyAllocation) {
    const AllocationCounter counter;
    const std::string_view head = EncodeHead(vt::BatchMessage{0xffffffff, 0x7fffffffffffffff, true});
    EXPECT_EQ(AllocationCounter::Count(), 0U);
    EXPECT_STREQ(ToBytes(head).toHex(' ').constData(), "9f 09 1a ff ff ff ff 1b 7f ff ff ff ff ff ff ff f5");
}

// The page from which others make their clients.

/// How docs/protocol.md shows a field.
template <class M, class T, class Rule>
QString Shown(const Field<M, T, Rule>& field) {
    QString name = S(field.name);
    if constexpr (std::is_same_v<Rule, TextsUpTo>) return S("[%1 ...]").arg(name);
    if constexpr (std::is_same_v<Rule, WholeItem>) return S("%1 ...").arg(name);
    return name;
}
template <class M, class T, class Rule>
QString Shown(const OptionalField<M, T, Rule>& field) {
    return S("(%1)").arg(S(field.name));
}
/// Not in the array: what it depends on stands beside it.
template <class M, class T, class Rule>
QString Shown(const FieldIf<M, T, Rule>& /*field*/) {
    return QString();
}

template <class M>
QString ShownArray() {
    QStringList elements{QString::number(static_cast<int>(M::Type))};
    std::apply([&elements](const auto&... field) { (elements.append(Shown(field)), ...); }, FieldsOf<M>);
    if (vt::CarriesChanges(M::Type)) elements.append(S("change ..."));
    elements.removeAll(QString());
    return S("[%1]").arg(elements.join(S(", ")));
}

struct Documented {
    QString array;
    QString sender;
};

/// The rows of the page's table, by the number of the message.
std::map<int, Documented> DocumentedMessages() {
    QFile page(S(PROTOCOL_PAGE));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QRegularExpression row(S("^\\| \\w+ \\| `(\\[(\\d+),[^`]*)`[^|]*\\| (\\w+)"),
                                 QRegularExpression::MultilineOption);
    std::map<int, Documented> rows;
    auto matches = row.globalMatch(QString::fromUtf8(page.readAll()));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        // That a text may be empty is for people to know.
        rows[match.captured(2).toInt()] = {match.captured(1).remove(QLatin1Char('?')), match.captured(3)};
    }
    return rows;
}

TEST(ProtocolPageTest, ShowsEveryMessageAsItIs) {
    const std::map<int, Documented> rows = DocumentedMessages();
    EXPECT_EQ(rows.size(), MessageCount);
    const auto expectRow = [&rows](const auto& message) {
        using M = std::decay_t<decltype(message)>;
        const auto row = rows.find(static_cast<int>(M::Type));
        ASSERT_NE(row, rows.end()) << "message " << static_cast<int>(M::Type);
        EXPECT_EQ(row->second.array, ShownArray<M>());
        const char* const senders[] = {"client", "server", "either"};
        EXPECT_EQ(row->second.sender, S(senders[static_cast<int>(M::Sender)])) << "message " << row->first;
    };
    for (unsigned number = 1; number <= MessageCount; ++number)
        std::visit(expectRow, Filled(number, Filling()));
}

}  // namespace
