// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/codecprobe.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <functional>
#include <ostream>

using namespace std::chrono_literals;

namespace {

using vt::EMessage;
using vt::Message;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// A message and its bytes: as they are written here, and with arrays of definite length.
struct Row {
    const char* name;
    EMessage type;
    std::function<void(Message&)> fill;
    const char* hex;
    const char* definite;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

const Row Rows[] = {
    {"Hello", EMessage::Hello,
     [](Message& m) {
         m.version = 1;
         m.application = S("mc");
         m.machine = S("\u00c4");
         m.user = S("me");
         m.token = S("t0");
     },
     "9f 01 01 62 6d63 62 c384 62 6d65 62 7430 ff", "86 01 01 62 6d63 62 c384 62 6d65 62 7430"},
    {"HelloWithoutCredential", EMessage::Hello,
     [](Message& m) {
         m.version = 1;
         m.application = S("a");
         m.machine = S("b");
     },
     "9f 01 01 61 61 61 62 60 60 ff", "86 01 01 61 61 61 62 60 60"},
    {"Welcome", EMessage::Welcome,
     [](Message& m) {
         m.version = 1;
         m.application = S("s");
         m.session = 300;
         m.epoch = 0x7fffffffffffffff;
         m.ping = 5000ms;
         m.dead = 15000ms;
     },
     "9f 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98 ff",
     "87 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98"},
    {"Bye", EMessage::Bye,
     [](Message& m) {
         m.code = vt::EBye::ClientEnds;
         m.reason = S("so");
     },
     "9f 03 08 62 736f ff", "83 03 08 62 736f"},
    {"Subscribe", EMessage::Subscribe,
     [](Message& m) {
         m.sub = 0x7fffffff;
         m.path = S("/a");
     },
     "9f 04 1a7fffffff 62 2f61 ff", "83 04 1a7fffffff 62 2f61"},
    {"Unsubscribe", EMessage::Unsubscribe, [](Message& m) { m.sub = 24; }, "9f 05 1818 ff", "82 05 1818"},
    {"Subscribed", EMessage::Subscribed,
     [](Message& m) {
         m.sub = 1;
         m.prefixes = QStringList{S("/a"), S("/b")};
     },
     "9f 06 01 82 62 2f61 62 2f62 ff", "83 06 01 82 62 2f61 62 2f62"},
    {"SubscribedReadOnly", EMessage::Subscribed, [](Message& m) { m.sub = 1; }, "9f 06 01 80 ff",
     "83 06 01 80"},
    {"EmptySnapshot", EMessage::Snapshot,
     [](Message& m) {
         m.sub = 1;
         m.seq = 2;
     },
     "9f 07 01 02 ff", "83 07 01 02"},
    {"End", EMessage::End,
     [](Message& m) {
         m.sub = 1;
         m.seq = 3;
         m.epoch = 65536;
     },
     "9f 08 01 03 1a00010000 ff", "84 08 01 03 1a00010000"},
    {"EmptyBatch", EMessage::Batch,
     [](Message& m) {
         m.sub = 1;
         m.seq = 4;
         m.more = true;
     },
     "9f 09 01 04 f5 ff", "84 09 01 04 f5"},
    {"Absent", EMessage::Absent, [](Message& m) { m.sub = 1; }, "9f 0a 01 60 ff", "83 0a 01 60"},
    {"AbsentForAReason", EMessage::Absent,
     [](Message& m) {
         m.sub = 1;
         m.reason = S("no");
     },
     "9f 0a 01 62 6e6f ff", "83 0a 01 62 6e6f"},
    {"Ack", EMessage::Ack, [](Message& m) { m.seq = 256; }, "9f 0b 190100 ff", "82 0b 190100"},
    {"WriteOfNothing", EMessage::Write,
     [](Message& m) {
         m.req = 1;
         m.sub = 2;
         m.id = 3;
     },
     "9f 0c 01 02 03 f6 ff", "85 0c 01 02 03 f6"},
    {"WriteOfABoolean", EMessage::Write,
     [](Message& m) {
         m.req = 0xffffffff;
         m.item.content = false;
     },
     "9f 0c 1affffffff 00 00 f4 ff", "85 0c 1affffffff 00 00 f4"},
    {"WriteOfTheLowestInteger", EMessage::Write,
     [](Message& m) { m.item.content = std::numeric_limits<qint64>::min(); },
     "9f 0c 00 00 00 3b7fffffffffffffff ff", "85 0c 00 00 00 3b7fffffffffffffff"},
    {"WriteOfTheHighestInteger", EMessage::Write,
     [](Message& m) { m.item.content = std::numeric_limits<qint64>::max(); },
     "9f 0c 00 00 00 1b7fffffffffffffff ff", "85 0c 00 00 00 1b7fffffffffffffff"},
    {"WriteOfANumber", EMessage::Write, [](Message& m) { m.item.content = -1.5; },
     "9f 0c 00 00 00 fbbff8000000000000 ff", "85 0c 00 00 00 fbbff8000000000000"},
    {"WriteOfAText", EMessage::Write, [](Message& m) { m.item.content = S("\U0001f600"); },
     "9f 0c 00 00 00 64 f09f9880 ff", "85 0c 00 00 00 64 f09f9880"},
    {"WriteOfAList", EMessage::Write,
     [](Message& m) {
         m.item.content = QVector<double>{1.0, -2.0};
     },
     "9f 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000 ff",
     "85 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000"},
    {"AnswerDone", EMessage::Answer, [](Message& m) { m.req = 5; }, "9f 0d 05 00 60 ff", "84 0d 05 00 60"},
    {"AnswerClamped", EMessage::Answer,
     [](Message& m) {
         m.req = 5;
         m.result = vt::EResult::Clamped;
         m.item.content = qint64{-1};
     },
     "9f 0d 05 01 60 20 ff", "85 0d 05 01 60 20"},
    {"AnswerDenied", EMessage::Answer,
     [](Message& m) {
         m.req = 5;
         m.result = vt::EResult::Denied;
         m.reason = S("no");
     },
     "9f 0d 05 02 62 6e6f ff", "84 0d 05 02 62 6e6f"},
    {"AnswerGone", EMessage::Answer,
     [](Message& m) {
         m.req = 5;
         m.result = vt::EResult::Gone;
     },
     "9f 0d 05 03 60 ff", "84 0d 05 03 60"},
    {"CreateANode", EMessage::Create,
     [](Message& m) {
         m.req = 1;
         m.sub = 2;
         m.path = S("/a/b");
     },
     "9f 0e 01 02 64 2f612f62 00 ff", "85 0e 01 02 64 2f612f62 00"},
    {"CreateALimitedNumber", EMessage::Create,
     [](Message& m) {
         m.path = S("/n");
         m.item.kind = vt::EItemKind::NumericInt;
         m.item.flags = vt::ItemDescription::EveryChange;
         m.item.content = qint64{5};
         m.item.minimum = qint64{-1};
         m.item.maximum = qint64{9};
     },
     "9f 0e 00 00 62 2f6e 04 01 05 20 09 ff", "89 0e 00 00 62 2f6e 04 01 05 20 09"},
    {"CreateASelection", EMessage::Create,
     [](Message& m) {
         m.path = S("/s");
         m.item.kind = vt::EItemKind::Selection;
         m.item.content = qint64{0};
         m.item.choices = {{S("A"), 0.5, -2}};
     },
     "9f 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21 ff",
     "88 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21"},
    {"Ping", EMessage::Ping, [](Message& m) { m.seq = 0; }, "9f 0f 00 ff", "82 0f 00"},
    {"Pong", EMessage::Pong, [](Message& m) { m.seq = 1000000; }, "9f 10 1a000f4240 ff", "82 10 1a000f4240"},
};

class MessageTest : public testing::TestWithParam<Row> {
  protected:
    MessageTest() : m_message(Message::Of(GetParam().type)) { GetParam().fill(m_message); }

    Message m_message;
};

TEST_P(MessageTest, IsWrittenAsDocumented) {
    EXPECT_EQ(Encode(m_message).toHex(' '), Bytes(GetParam().hex).toHex(' '));
}

TEST_P(MessageTest, IsReadWithAnArrayOfIndefiniteLength) {
    const DecodedMessage decoded = Decode(Bytes(GetParam().hex));
    EXPECT_EQ(decoded.error, QString());
    ExpectEqual(decoded.message, m_message);
}

TEST_P(MessageTest, IsReadWithAnArrayOfDefiniteLength) {
    const DecodedMessage decoded = Decode(Bytes(GetParam().definite));
    EXPECT_EQ(decoded.error, QString());
    ExpectEqual(decoded.message, m_message);
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

/// What follows is no field of the message; where changes can follow, it is no change.
TEST_P(MessageTest, IsRefusedWithAFieldTooMany) {
    QByteArray bytes = Bytes(GetParam().hex);
    bytes.insert(bytes.size() - 1, Bytes("f6"));
    EXPECT_EQ(Decode(bytes).error, CarriesChanges(GetParam().type) ? S("an unsigned integer was expected")
                                                                   : S("more elements than expected"));
}

INSTANTIATE_TEST_SUITE_P(All, MessageTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MessageTextTest, TextsMayComeInParts) {
    // subscribe 1 "/abc", the path as "/a" and "bc"
    const DecodedMessage decoded = Decode(Bytes("83 04 01 7f 62 2f61 60 62 6263 ff"));
    EXPECT_EQ(decoded.error, QString());
    EXPECT_EQ(decoded.message.path, S("/abc"));
}

TEST(MessageTextTest, ATextMayHoldANul) {
    const DecodedMessage decoded = Decode(Bytes("83 04 01 63 2f0061"));
    EXPECT_EQ(decoded.error, QString());
    EXPECT_EQ(decoded.message.path.size(), 3);
}

TEST(MessageTextTest, HalfACharacterIsWrittenAsSomethingThatCanBeRead) {
    Message message = Message::Of(EMessage::Subscribe);
    message.path = QString(QChar(0xd800U));
    EXPECT_EQ(Decode(Encode(message)).error, QString());
}

TEST(MessageTextTest, TextsHaveTheirFullLength) {
    Message hello = Message::Of(EMessage::Hello);
    hello.application = hello.machine = hello.user = hello.token =
        QString(vtlimits::MaxHelloText, QChar(u'\u20ac'));
    const QByteArray bytes = Encode(hello);
    EXPECT_LE(bytes.size(), static_cast<int>(vtlimits::MaxFrameBeforeWelcome));
    EXPECT_EQ(Decode(bytes).error, QString());
    Message subscribe = Message::Of(EMessage::Subscribe);
    subscribe.path = QString(vtlimits::MaxPathLength, QChar(u'\u20ac'));
    EXPECT_EQ(Decode(Encode(subscribe)).error, QString());
}

TEST(MessageTextTest, AReasonIsShortenedToWhatMayBeSent) {
    for (const EMessage type : {EMessage::Bye, EMessage::Absent, EMessage::Answer}) {
        Message message = Message::Of(type);
        message.reason = QString(vtlimits::MaxPathLength, QChar(u'\u20ac'));
        const QByteArray bytes = Encode(message);
        EXPECT_LE(bytes.size(), static_cast<int>(vtlimits::MaxFrameBeforeWelcome));
        const DecodedMessage decoded = Decode(bytes);
        EXPECT_EQ(decoded.error, QString());
        EXPECT_EQ(decoded.message.reason, message.reason.left(vtlimits::MaxReasonLength));
    }
}

}  // namespace
