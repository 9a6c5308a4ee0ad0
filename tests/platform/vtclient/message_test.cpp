// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/codecprobe.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <ostream>

using namespace std::chrono_literals;

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// A message and its bytes: as they are written here, and with arrays of definite length.
struct Row {
    const char* name;
    vt::Message message;
    const char* hex;
    const char* definite;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

const Row Rows[] = {
    {"Hello", vt::HelloMessage{1, S("mc"), S("\u00c4"), S("me"), S("t0")},
     "9f 01 01 62 6d63 62 c384 62 6d65 62 7430 ff", "86 01 01 62 6d63 62 c384 62 6d65 62 7430"},
    {"HelloWithoutCredential", vt::HelloMessage{1, S("a"), S("b"), {}, {}}, "9f 01 01 61 61 61 62 60 60 ff",
     "86 01 01 61 61 61 62 60 60"},
    {"Welcome", vt::WelcomeMessage{1, S("s"), 300, 0x7fffffffffffffff, 5000ms, 15000ms},
     "9f 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98 ff",
     "87 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98"},
    {"Bye", vt::ByeMessage{vt::EBye::ClientEnds, S("so")}, "9f 03 08 62 736f ff", "83 03 08 62 736f"},
    {"Subscribe", vt::SubscribeMessage{0x7fffffff, S("/a")}, "9f 04 1a7fffffff 62 2f61 ff",
     "83 04 1a7fffffff 62 2f61"},
    {"SubscribeToLook", vt::SubscribeMessage{1, S("/a"), true}, "9f 04 01 62 2f61 f5 ff",
     "84 04 01 62 2f61 f5"},
    {"Unsubscribe", vt::UnsubscribeMessage{24}, "9f 05 1818 ff", "82 05 1818"},
    {"Subscribed", vt::SubscribedMessage{1, QStringList{S("/a"), S("/b")}}, "9f 06 01 82 62 2f61 62 2f62 ff",
     "83 06 01 82 62 2f61 62 2f62"},
    {"SubscribedReadOnly", vt::SubscribedMessage{1, {}}, "9f 06 01 80 ff", "83 06 01 80"},
    {"EmptySnapshot", vt::SnapshotMessage{1, 2}, "9f 07 01 02 ff", "83 07 01 02"},
    {"End", vt::EndMessage{1, 3, 65536}, "9f 08 01 03 1a00010000 ff", "84 08 01 03 1a00010000"},
    {"EmptyBatch", vt::BatchMessage{1, 4, true}, "9f 09 01 04 f5 ff", "84 09 01 04 f5"},
    {"Absent", vt::AbsentMessage{1, {}}, "9f 0a 01 60 ff", "83 0a 01 60"},
    {"AbsentForAReason", vt::AbsentMessage{1, S("no")}, "9f 0a 01 62 6e6f ff", "83 0a 01 62 6e6f"},
    {"Ack", vt::AckMessage{256}, "9f 0b 190100 ff", "82 0b 190100"},
    {"WriteOfNothing", vt::WriteMessage{1, 2, 3, {}}, "9f 0c 01 02 03 f6 ff", "85 0c 01 02 03 f6"},
    {"WriteOfABoolean", vt::WriteMessage{0xffffffff, 0, 0, false}, "9f 0c 1affffffff 00 00 f4 ff",
     "85 0c 1affffffff 00 00 f4"},
    {"WriteOfTheLowestInteger", vt::WriteMessage{0, 0, 0, std::numeric_limits<qint64>::min()},
     "9f 0c 00 00 00 3b7fffffffffffffff ff", "85 0c 00 00 00 3b7fffffffffffffff"},
    {"WriteOfTheHighestInteger", vt::WriteMessage{0, 0, 0, std::numeric_limits<qint64>::max()},
     "9f 0c 00 00 00 1b7fffffffffffffff ff", "85 0c 00 00 00 1b7fffffffffffffff"},
    {"WriteOfANumber", vt::WriteMessage{0, 0, 0, -1.5}, "9f 0c 00 00 00 fbbff8000000000000 ff",
     "85 0c 00 00 00 fbbff8000000000000"},
    {"WriteOfAText", vt::WriteMessage{0, 0, 0, S("\U0001f600")}, "9f 0c 00 00 00 64 f09f9880 ff",
     "85 0c 00 00 00 64 f09f9880"},
    {"WriteOfAList", vt::WriteMessage{0, 0, 0, QVector<double>{1.0, -2.0}},
     "9f 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000 ff",
     "85 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000"},
    {"AnswerDone", vt::AnswerMessage{5, vt::EResult::Done, {}, {}}, "9f 0d 05 00 60 ff", "84 0d 05 00 60"},
    {"AnswerClamped", vt::AnswerMessage{5, vt::EResult::Clamped, {}, qint64{-1}}, "9f 0d 05 01 60 20 ff",
     "85 0d 05 01 60 20"},
    {"AnswerDenied", vt::AnswerMessage{5, vt::EResult::Denied, S("no"), {}}, "9f 0d 05 02 62 6e6f ff",
     "84 0d 05 02 62 6e6f"},
    {"AnswerGone", vt::AnswerMessage{5, vt::EResult::Gone, {}, {}}, "9f 0d 05 03 60 ff", "84 0d 05 03 60"},
    {"CreateANode", vt::CreateMessage{1, 2, S("/a/b"), {}}, "9f 0e 01 02 64 2f612f62 00 ff",
     "85 0e 01 02 64 2f612f62 00"},
    {"CreateALimitedNumber",
     vt::CreateMessage{
         0,
         0,
         S("/n"),
         {vt::EItemKind::NumericInt, vt::ItemDescription::EveryChange, qint64{5}, qint64{-1}, qint64{9}, {}}},
     "9f 0e 00 00 62 2f6e 04 01 05 20 09 ff", "89 0e 00 00 62 2f6e 04 01 05 20 09"},
    {"CreateASelection",
     vt::CreateMessage{0, 0, S("/s"), {vt::EItemKind::Selection, 0, qint64{0}, {}, {}, {{S("A"), 0.5, -2}}}},
     "9f 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21 ff",
     "88 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21"},
    {"Ping", vt::PingMessage{0}, "9f 0f 00 ff", "82 0f 00"},
    {"Pong", vt::PongMessage{1000000}, "9f 10 1a000f4240 ff", "82 10 1a000f4240"},
    {"Recall", vt::RecallMessage{5, S("/a"), 300, 24}, "9f 11 05 62 2f61 19012c 1818 ff",
     "85 11 05 62 2f61 19012c 1818"},
    {"Recalled", vt::RecalledMessage{5, vt::EResult::Done, {}, 24, QStringList{S("a"), S("b")}},
     "9f 12 05 00 60 1818 82 61 61 61 62 ff", "86 12 05 00 60 1818 82 61 61 61 62"},
    {"RecallDenied", vt::RecalledMessage{5, vt::EResult::Denied, S("no"), 0, {}},
     "9f 12 05 02 62 6e6f 00 80 ff", "86 12 05 02 62 6e6f 00 80"},
    {"Join", vt::JoinMessage{24}, "9f 13 1818 ff", "82 13 1818"},
    {"Road", vt::RoadMessage{1, S("r"), 2, S("0f")}, "9f 14 01 61 72 02 62 3066 ff",
     "85 14 01 61 72 02 62 3066"},
    {"Heard", vt::HeardMessage{1, S("r")}, "9f 15 01 61 72 ff", "83 15 01 61 72"},
    {"At", vt::AtMessage{1, 300}, "9f 16 01 19012c ff", "83 16 01 19012c"},
    {"Leave", vt::LeaveMessage{1}, "9f 17 01 ff", "82 17 01"},
    {"Again", vt::AgainMessage{1, 2, 300}, "9f 1818 01 02 19012c ff", "84 1818 01 02 19012c"},
};

class MessageTest : public testing::TestWithParam<Row> {};

TEST_P(MessageTest, IsWrittenAsDocumented) {
    EXPECT_EQ(ToBytes(GetParam().message).toHex(' '), Bytes(GetParam().hex).toHex(' '));
}

TEST_P(MessageTest, IsReadWithAnArrayOfIndefiniteLength) {
    const DecodedMessage decoded = Decode(Bytes(GetParam().hex));
    EXPECT_EQ(decoded.error, QString());
    ExpectEqual(decoded.message, GetParam().message);
}

TEST_P(MessageTest, IsReadWithAnArrayOfDefiniteLength) {
    const DecodedMessage decoded = Decode(Bytes(GetParam().definite));
    EXPECT_EQ(decoded.error, QString());
    ExpectEqual(decoded.message, GetParam().message);
}

TEST_P(MessageTest, IsRefusedWhereverItBreaksOff) {
    for (const char* hex : {GetParam().hex, GetParam().definite}) {
        const QByteArray whole = Bytes(hex);
        for (int size = 0; size < whole.size(); ++size)
            EXPECT_NE(Decode(whole.left(size)).error, QString()) << size << " bytes of " << hex;
    }
}

TEST_P(MessageTest, IsRefusedWithAByteTooMany) {
    EXPECT_EQ(Decode(Bytes(GetParam().hex) + '\0').error, S("bytes left over"));
    EXPECT_EQ(Decode(Bytes(GetParam().definite) + '\0').error, S("bytes left over"));
}

/// What is said of a null behind \a message: where a change or another field can follow it is none.
QString ErrorOfNullBehind(const vt::Message& message) {
    if (CarriesChanges(TypeOf(message))) return S("an unsigned integer was expected");
    const auto* const subscribe = std::get_if<vt::SubscribeMessage>(&message);
    if (subscribe != nullptr && !subscribe->look) return S("a boolean was expected");
    return S("more elements than expected");
}

TEST_P(MessageTest, IsRefusedWithAFieldTooMany) {
    QByteArray bytes = Bytes(GetParam().hex);
    bytes.insert(bytes.size() - 1, Bytes("f6"));
    EXPECT_EQ(Decode(bytes).error, ErrorOfNullBehind(GetParam().message));
}

TEST(MessageTextTest, ALookMayBeDenied) {
    const DecodedMessage decoded = Decode(Bytes("84 04 01 62 2f61 f4"));
    EXPECT_EQ(decoded.error, QString());
    EXPECT_FALSE(std::get<vt::SubscribeMessage>(decoded.message).look);
}

INSTANTIATE_TEST_SUITE_P(All, MessageTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MessageTextTest, TextsMayComeInParts) {
    // subscribe 1 "/abc", the path as "/a" and "bc"
    const DecodedMessage decoded = Decode(Bytes("83 04 01 7f 62 2f61 60 62 6263 ff"));
    EXPECT_EQ(decoded.error, QString());
    EXPECT_EQ(std::get<vt::SubscribeMessage>(decoded.message).path, S("/abc"));
}

TEST(MessageTextTest, ATextMayHoldANul) {
    const DecodedMessage decoded = Decode(Bytes("83 04 01 63 2f0061"));
    EXPECT_EQ(decoded.error, QString());
    EXPECT_EQ(std::get<vt::SubscribeMessage>(decoded.message).path.size(), 3);
}

TEST(MessageTextTest, HalfACharacterIsWrittenAsSomethingThatCanBeRead) {
    EXPECT_EQ(Decode(ToBytes(vt::SubscribeMessage{1, QString(QChar(0xd800U))})).error, QString());
}

TEST(MessageTextTest, TextsHaveTheirFullLength) {
    const QString text(vtlimits::MaxHelloText, QChar(u'\u20ac'));
    const QByteArray hello = ToBytes(vt::HelloMessage{1, text, text, text, text});
    EXPECT_LE(hello.size(), static_cast<int>(vtlimits::MaxFrameBeforeWelcome));
    EXPECT_EQ(Decode(hello).error, QString());
    const QString path(vtlimits::MaxPathLength, QChar(u'\u20ac'));
    EXPECT_EQ(Decode(ToBytes(vt::SubscribeMessage{1, path})).error, QString());
}

template <class M>
class ReasonTest : public testing::Test {};
using TReasonMessages = testing::Types<vt::ByeMessage, vt::AbsentMessage, vt::AnswerMessage>;
TYPED_TEST_SUITE(ReasonTest, TReasonMessages, );

TYPED_TEST(ReasonTest, IsShortenedToWhatMayBeSent) {
    TypeParam message;
    message.reason = QString(vtlimits::MaxPathLength, QChar(u'\u20ac'));
    const QByteArray bytes = ToBytes(message);
    EXPECT_LE(bytes.size(), static_cast<int>(vtlimits::MaxFrameBeforeWelcome));
    const DecodedMessage decoded = Decode(bytes);
    EXPECT_EQ(decoded.error, QString());
    EXPECT_EQ(std::get<TypeParam>(decoded.message).reason, message.reason.left(vtlimits::MaxReasonLength));
}

}  // namespace
