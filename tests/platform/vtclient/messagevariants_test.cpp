// SPDX-License-Identifier: Apache-2.0
// Holds the form of every message: what is read, what is refused, and for which reason.
#include <tests/platform/vtclient/codecprobe.h>

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <iterator>
#include <ostream>

namespace {

/// A message as it is written, and a sum over what becomes of all that is nearly it. Other programs rely on
/// the first, so it stays; the sum differs if anything else is read, or refused, or refused for another
/// reason.
struct Row {
    const char* name;
    const char* hex;
    const char* sum;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

const Row Rows[] = {
    {"Hello", "9f 01 01 62 6d63 62 c384 62 6d65 62 7430 ff", "bc35a6bde75644db"},
    {"HelloOfNobody", "9f 01 01 60 60 60 60 ff", "ebc6ea908b00a165"},
    {"Welcome", "9f 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98 ff", "4a7156deb073c775"},
    {"WelcomeAtItsLargest", "9f 02 1affffffff 60 1a7fffffff 00 1a7fffffff 1a7fffffff ff", "32648a284a32b804"},
    {"Bye", "9f 03 01 62 736f ff", "161ef06fb59daa0e"},
    {"ByeOfAClient", "9f 03 08 60 ff", "7e03f469431de02f"},
    {"Subscribe", "9f 04 1a7fffffff 62 2f61 ff", "0a38ad06c5eb5fcf"},
    {"SubscribeToLook", "9f 04 01 62 2f61 f5 ff", "98579f0d91901c0a"},
    {"Unsubscribe", "9f 05 1818 ff", "09659b49511516a6"},
    {"Subscribed", "9f 06 01 82 62 2f61 62 2f62 ff", "6d5c5235836fd418"},
    {"SubscribedReadOnly", "9f 06 00 80 ff", "275774f2cada3cb2"},
    {"Snapshot", "9f 07 01 02 9f 00 00 00 61 53 01 00 f5 ff ff", "880fa1c0aaecc0e5"},
    {"SnapshotOfNothing", "9f 07 1affffffff 1b7fffffffffffffff ff", "6c84883302dc96ff"},
    {"End", "9f 08 01 03 1a00010000 ff", "1b7d8d853171d975"},
    {"Batch", "9f 09 01 04 f5 05 20 9f 01 06 ff 06 fb3ff8000000000000 ff", "f6681226ba40c20f"},
    {"BatchOfEveryChange",
     "9f 09 01 190100 f4 01 f5 9f 00 02 00 61 6e 04 01 05 20 09 ff 9f 01 02 ff "
     "9f 02 03 61 6e 02 00 09 ff 9f 03 04 00 83 61 41 fb3fe0000000000000 21 ff 9f 04 05 07 61 74 ff ff",
     "7f3513602b6c24cc"},
    {"Absent", "9f 0a 01 60 ff", "343f93b21bdba4e3"},
    {"AbsentForAReason", "9f 0a 1818 62 6e6f ff", "23dea02343348a55"},
    {"Ack", "9f 0b 190100 ff", "53dfe4cab9487b83"},
    {"WriteOfNothing", "9f 0c 01 02 03 f6 ff", "86fdfd05561090f0"},
    {"WriteOfAText", "9f 0c 1affffffff 1818 190100 64 f09f9880 ff", "cb75a3d967ab50dd"},
    {"WriteOfAList", "9f 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000 ff", "9967bd3b100d0b1e"},
    {"AnswerDone", "9f 0d 05 00 60 ff", "0aface71b6757515"},
    {"AnswerClamped", "9f 0d 05 01 60 20 ff", "fc2c750304d888da"},
    {"AnswerDenied", "9f 0d 1affffffff 02 62 6e6f ff", "4a1032e746c8ae19"},
    {"AnswerGone", "9f 0d 05 03 62 c384 ff", "9912a199c6bc8b13"},
    {"CreateANode", "9f 0e 01 02 64 2f612f62 00 ff", "554c22a7ed4ce7cb"},
    {"CreateAText", "9f 0e 07 01 62 2f74 03 02 62 6869 ff", "a9ee5355cdc1304c"},
    {"CreateALimitedNumber", "9f 0e 00 00 62 2f6e 04 01 05 20 09 ff", "0ddd7144778094d7"},
    {"CreateASelection", "9f 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21 ff",
     "9bc6041a451f8744"},
    {"Ping", "9f 0f 00 ff", "bfcae079a992598c"},
    {"Pong", "9f 10 1a000f4240 ff", "8141c648e2fedba5"},
};

/// What becomes of some bytes, in one line.
QByteArray Outcome(const QByteArray& bytes) {
    const DecodedMessage decoded = Decode(bytes);
    return decoded.error.isEmpty() ? ToBytes(decoded).toHex() : decoded.error.toLatin1();
}

/// Every message of which one byte is another, is missing or is too much, and those that break off. The
/// number of the message stays: what is another message has a row of its own, and may be one that is yet to
/// come.
template <class Visitor>
void VisitVariants(const QByteArray& whole, Visitor visitor) {
    constexpr char Inserted[] = {'\x00', '\x01', '\x20', '\x41', '\x60', '\x80', '\xf4', '\xf6', '\xff'};
    constexpr int AtNumber = 1;
    for (int at = 0; at < whole.size(); ++at) {
        QByteArray variant = whole;
        for (int byte = 0; byte < 256 && at != AtNumber; ++byte) {
            variant[at] = static_cast<char>(byte);
            visitor(variant);
        }
        visitor(whole.left(at));
        visitor(QByteArray(whole).remove(at, 1));
        for (const char byte : Inserted)
            visitor(QByteArray(whole).insert(at, byte));
    }
}

class MessageVariantsTest : public testing::TestWithParam<Row> {};

TEST_P(MessageVariantsTest, IsWrittenAsItWasRead) {
    const QByteArray whole = Bytes(GetParam().hex);
    EXPECT_STREQ(Outcome(whole).constData(), whole.toHex().constData());
}

TEST_P(MessageVariantsTest, WhatIsNearlyItIsTreatedAsEver) {
    QCryptographicHash sum(QCryptographicHash::Sha1);
    VisitVariants(Bytes(GetParam().hex),
                  [&sum](const QByteArray& variant) { sum.addData(Outcome(variant) + '\n'); });
    EXPECT_STREQ(sum.result().toHex().left(16).constData(), GetParam().sum);
}

INSTANTIATE_TEST_SUITE_P(All, MessageVariantsTest, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MessageVariantsTableTest, HasEveryMessage) {
    for (int type = 1; type <= static_cast<int>(vt::EMessage::Pong); ++type) {
        const auto isOfType = [type](const Row& row) { return Bytes(row.hex)[1] == static_cast<char>(type); };
        EXPECT_TRUE(std::any_of(std::begin(Rows), std::end(Rows), isOfType)) << "message " << type;
    }
}

}  // namespace
