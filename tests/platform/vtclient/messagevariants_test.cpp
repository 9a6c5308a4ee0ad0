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
    {"Hello", "9f 01 01 62 6d63 62 c384 62 6d65 62 7430 ff", "018b897f48b22e7e"},
    {"HelloOfNobody", "9f 01 01 60 60 60 60 ff", "c92208fe062674ba"},
    {"Welcome", "9f 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98 ff", "738e029d6095fa41"},
    {"WelcomeAtItsLargest", "9f 02 1affffffff 60 1a7fffffff 00 1a7fffffff 1a7fffffff ff", "3b3d5a0d01d62a18"},
    {"Bye", "9f 03 01 62 736f ff", "959adf1331a814fc"},
    {"ByeOfAClient", "9f 03 08 60 ff", "bf839b90e4414055"},
    {"Subscribe", "9f 04 1a7fffffff 62 2f61 ff", "e4df9377e91f031b"},
    {"SubscribeToLook", "9f 04 01 62 2f61 f5 ff", "e31ad7e80c07f997"},
    {"Unsubscribe", "9f 05 1818 ff", "09bcb7bb247c37a1"},
    {"Subscribed", "9f 06 01 82 62 2f61 62 2f62 ff", "611499224fc7993e"},
    {"SubscribedReadOnly", "9f 06 00 80 ff", "2b83d4f53595bfc7"},
    {"Snapshot", "9f 07 01 02 9f 00 00 00 61 53 01 00 f5 ff ff", "4912e6a58bdac557"},
    {"SnapshotOfNothing", "9f 07 1affffffff 1b7fffffffffffffff ff", "12c0b8c7d90ad5b0"},
    {"End", "9f 08 01 03 1a00010000 ff", "86da1c0010d8c6fd"},
    {"Batch", "9f 09 01 04 f5 05 20 9f 01 06 ff 06 fb3ff8000000000000 ff", "874eb8bf8a4fa88e"},
    {"BatchOfEveryChange",
     "9f 09 01 190100 f4 01 f5 9f 00 02 00 61 6e 04 01 05 20 09 ff 9f 01 02 ff "
     "9f 02 03 61 6e 02 00 09 ff 9f 03 04 00 83 61 41 fb3fe0000000000000 21 ff 9f 04 05 07 61 74 ff ff",
     "cb2736bf2a8373f0"},
    {"Absent", "9f 0a 01 60 ff", "b36b32931c92ecc8"},
    {"AbsentForAReason", "9f 0a 1818 62 6e6f ff", "0e60a0c083c0b69a"},
    {"Ack", "9f 0b 190100 ff", "8c1d06d4ddcad2e4"},
    {"WriteOfNothing", "9f 0c 01 02 03 f6 ff", "3e19c58a081b24ae"},
    {"WriteOfAText", "9f 0c 1affffffff 1818 190100 64 f09f9880 ff", "dbe9e14a9b7ed0f7"},
    {"WriteOfAList", "9f 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000 ff", "c995a3dc94b8cb08"},
    {"AnswerDone", "9f 0d 05 00 60 ff", "6de27ece67989c94"},
    {"AnswerClamped", "9f 0d 05 01 60 20 ff", "1964125438a83a1b"},
    {"AnswerDenied", "9f 0d 1affffffff 02 62 6e6f ff", "a6f506624489aae3"},
    {"AnswerGone", "9f 0d 05 03 62 c384 ff", "eb7b2ea98ed0b4af"},
    {"CreateANode", "9f 0e 01 02 64 2f612f62 00 ff", "aed7951e07845827"},
    {"CreateAText", "9f 0e 07 01 62 2f74 03 02 62 6869 ff", "d48729c11b318abb"},
    {"CreateALimitedNumber", "9f 0e 00 00 62 2f6e 04 01 05 20 09 ff", "a9679d3b1b6aab3d"},
    {"CreateASelection", "9f 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21 ff",
     "29bd2795e610e799"},
    {"Ping", "9f 0f 00 ff", "f1ac20a94551c708"},
    {"Pong", "9f 10 1a000f4240 ff", "b0c196d0d26db5c8"},
    {"Recall", "9f 11 05 62 2f61 19012c 1818 ff", "6a73c4e4d1f0d1f1"},
    {"Recalled", "9f 12 05 00 60 1818 82 61 61 61 62 ff", "42a6a30ae2f04175"},
    {"Join", "9f 13 1818 ff", "2e2d2fb3a61823b2"},
    {"Road", "9f 14 01 61 72 02 62 3066 ff", "d9c2e4e81b8c094e"},
    {"Heard", "9f 15 01 61 72 ff", "ab350f4bfe1e58c7"},
    {"At", "9f 16 01 19012c ff", "5f2e65c5901365f8"},
    {"Leave", "9f 17 01 ff", "7854fea9cbb356f4"},
    {"Again", "9f 1818 01 02 19012c ff", "309b3f789339f0b0"},
    {"RecallDenied", "9f 12 05 02 62 6e6f 00 80 ff", "00128586e8698363"},
};

/// What becomes of some bytes, in one line.
QByteArray Outcome(const QByteArray& bytes) {
    const DecodedMessage decoded = Decode(bytes);
    return decoded.error.isEmpty() ? ToBytes(decoded).toHex() : decoded.error.toLatin1();
}

/// Every message of which one byte is another, is missing or is too much, those that break off, and those of
/// which the array is said to have any length. The number of the message stays: what is another message has a
/// row of its own, or is yet to come. So a change of one message is a change of its own sums alone.
template <class Visitor>
void VisitVariants(const QByteArray& whole, Visitor visitor) {
    constexpr char Inserted[] = {'\x00', '\x01', '\x20', '\x41', '\x60', '\x80', '\xf4', '\xf6', '\xff'};
    constexpr char LongNumber = 0x18;  // in a byte behind this one
    const int firstField = whole[1] == LongNumber ? 3 : 2;
    for (int length = 0x80; length < 0x98; ++length)
        visitor(static_cast<char>(length) + whole.mid(1));
    for (int at = firstField; at < whole.size(); ++at) {
        QByteArray variant = whole;
        for (int byte = 0; byte < 256; ++byte) {
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
    for (int type = 1; type <= static_cast<int>(vt::EMessage::Again); ++type) {
        const auto isOfType = [type](const Row& row) {
            return Bytes(row.hex)[type < 24 ? 1 : 2] == static_cast<char>(type);
        };
        EXPECT_TRUE(std::any_of(std::begin(Rows), std::end(Rows), isOfType)) << "message " << type;
    }
}

}  // namespace
