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
    {"Hello", "9f 01 01 62 6d63 62 c384 62 6d65 62 7430 ff", "25ee851581b3d130"},
    {"HelloOfNobody", "9f 01 1affffffff 60 60 60 60 ff", "570602416e20fe9a"},
    {"Welcome", "9f 02 01 61 73 19012c 1b7fffffffffffffff 191388 193a98 ff", "a02b0c4c91d4a027"},
    {"WelcomeAtItsLargest", "9f 02 1affffffff 60 1a7fffffff 00 1a7fffffff 1a7fffffff ff", "3ba199beaddae713"},
    {"Bye", "9f 03 01 62 736f ff", "23d268c486768e2d"},
    {"ByeOfAClient", "9f 03 08 60 ff", "f9a4f03279df0494"},
    {"Subscribe", "9f 04 1a7fffffff 62 2f61 ff", "2c91d93adc02acef"},
    {"Unsubscribe", "9f 05 1818 ff", "a7b2799f3374765c"},
    {"Subscribed", "9f 06 01 82 62 2f61 62 2f62 ff", "be7a4abf601e2652"},
    {"SubscribedReadOnly", "9f 06 00 80 ff", "5b6b982c5f23b4c0"},
    {"Snapshot", "9f 07 01 02 9f 00 00 00 61 53 01 00 f5 ff ff", "9ac67ec03710e015"},
    {"SnapshotOfNothing", "9f 07 1affffffff 1b7fffffffffffffff ff", "a030ab7c9fc4657d"},
    {"End", "9f 08 01 03 1a00010000 ff", "6ee5e3deaa85f682"},
    {"Batch", "9f 09 01 04 f5 05 20 9f 01 06 ff 06 fb3ff8000000000000 ff", "a4198ccaa8671e1e"},
    {"BatchOfEveryChange",
     "9f 09 01 190100 f4 01 f5 9f 00 02 00 61 6e 04 01 05 20 09 ff 9f 01 02 ff "
     "9f 02 03 61 6e 02 00 09 ff 9f 03 04 00 83 61 41 fb3fe0000000000000 21 ff 9f 04 05 07 61 74 ff ff",
     "c0f207ff180ef967"},
    {"Absent", "9f 0a 01 60 ff", "15664eb2ba67ba22"},
    {"AbsentForAReason", "9f 0a 1818 62 6e6f ff", "cea19ccc9c55bac3"},
    {"Ack", "9f 0b 190100 ff", "741738f3175e9211"},
    {"WriteOfNothing", "9f 0c 01 02 03 f6 ff", "ccd97708264f38a8"},
    {"WriteOfAText", "9f 0c 1affffffff 1818 190100 64 f09f9880 ff", "d74b131eb9291534"},
    {"WriteOfAList", "9f 0c 00 00 00 82 fb3ff0000000000000 fbc000000000000000 ff", "6f609599c4925d54"},
    {"AnswerDone", "9f 0d 05 00 60 ff", "5ab994ed370faedd"},
    {"AnswerClamped", "9f 0d 05 01 60 20 ff", "20c0cbb298d15afa"},
    {"AnswerDenied", "9f 0d 1affffffff 02 62 6e6f ff", "4ade9eb904231eaf"},
    {"AnswerGone", "9f 0d 05 03 62 c384 ff", "3081d7a93ba43956"},
    {"CreateANode", "9f 0e 01 02 64 2f612f62 00 ff", "1457b3d78138cb56"},
    {"CreateAText", "9f 0e 07 01 62 2f74 03 02 62 6869 ff", "1c3f11313cf8bcf2"},
    {"CreateALimitedNumber", "9f 0e 00 00 62 2f6e 04 01 05 20 09 ff", "43f0e6670ab854d5"},
    {"CreateASelection", "9f 0e 00 00 62 2f73 06 00 00 83 61 41 fb3fe0000000000000 21 ff",
     "c36818cd20290395"},
    {"Ping", "9f 0f 00 ff", "b773649551255243"},
    {"Pong", "9f 10 1a000f4240 ff", "b318beaeacb28f63"},
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
