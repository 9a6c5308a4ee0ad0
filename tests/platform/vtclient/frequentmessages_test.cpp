// SPDX-License-Identifier: Apache-2.0
// The frequent messages by themselves are the same on the wire as by way of a Message.
#include <platform/vtclient/wire/frequentmessages.h>

#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/codecprobe.h>

namespace {

using vt::AckMessage;
using vt::AnswerMessage;
using vt::ChangesHead;
using vt::Content;
using vt::EMessage;
using vt::EResult;
using vt::Message;
using vt::WriteMessage;

QByteArray Copy(std::string_view bytes) {
    return {bytes.data(), static_cast<int>(bytes.size())};
}

/// Reads \a bytes, which are such a message, as \a read; what is wrong with them.
template <class Frequent>
QString Read(const QByteArray& bytes, Frequent* read) {
    vt::MessageReader reader(bytes.constData(), bytes.size());
    EMessage type = EMessage::Hello;
    if (reader.ReadType(&type)) reader.ReadRest(read);
    return reader.Error();
}

const Content Contents[] = {
    Content(), true, qint64{-70000}, 1.5, QStringLiteral("\u00e4"), QVector<double>{1.0, 2.0}};

TEST(FrequentMessageTest, AnAcknowledgement) {
    Message message = Message::Of(EMessage::Ack);
    message.seq = 0x7fffffffffffffff;
    const QByteArray bytes = Copy(Encode(AckMessage{message.seq}));
    EXPECT_EQ(bytes.toHex(), Encode(message).toHex());
    AckMessage ack;
    EXPECT_EQ(Read(bytes, &ack), QString());
    EXPECT_EQ(ack.count, message.seq);
}

TEST(FrequentMessageTest, AWrite) {
    for (const Content& content : Contents) {
        Message message = Message::Of(EMessage::Write);
        message.req = 0xffffffff;
        message.sub = 2;
        message.id = 70000;
        message.item.content = content;
        const QByteArray bytes = Copy(Encode(WriteMessage{message.req, message.sub, message.id, content}));
        EXPECT_EQ(bytes.toHex(), Encode(message).toHex());
        WriteMessage write;
        EXPECT_EQ(Read(bytes, &write), QString());
        EXPECT_EQ(write.req, message.req);
        EXPECT_EQ(write.sub, message.sub);
        EXPECT_EQ(write.id, message.id);
        EXPECT_EQ(write.content, content);
    }
}

TEST(FrequentMessageTest, AnAnswer) {
    for (const EResult result : {EResult::Done, EResult::Clamped, EResult::Denied, EResult::Gone}) {
        for (const Content& content : Contents) {
            Message message = Message::Of(EMessage::Answer);
            message.req = 300;
            message.result = result;
            message.reason = QStringLiteral("because");
            message.item.content = content;
            const AnswerMessage answer{message.req, result, message.reason, content};
            const QByteArray bytes = Copy(Encode(answer));
            EXPECT_EQ(bytes.toHex(), Encode(message).toHex());
            AnswerMessage read;
            EXPECT_EQ(Read(bytes, &read), QString());
            EXPECT_EQ(read.req, answer.req);
            EXPECT_EQ(read.result, answer.result);
            EXPECT_EQ(read.reason, answer.reason);
            EXPECT_EQ(read.content, result == EResult::Clamped ? content : Content());
        }
    }
}

TEST(FrequentMessageTest, TheReasonOfAnAnswerIsShortened) {
    AnswerMessage answer;
    answer.reason = QString(2 * vtlimits::MaxReasonLength, QLatin1Char('x'));
    AnswerMessage read;
    EXPECT_EQ(Read(Copy(Encode(answer)), &read), QString());
    EXPECT_EQ(read.reason.size(), vtlimits::MaxReasonLength);
}

TEST(FrequentMessageTest, WhatStandsAroundChanges) {
    for (const EMessage type : {EMessage::Snapshot, EMessage::Batch}) {
        Message message = Message::Of(type);
        message.sub = 3;
        message.seq = 1 << 20;
        message.more = true;
        const QByteArray changes = Bytes("01 02 8201 03");
        const QByteArray head = Copy(EncodeHead(ChangesHead{type, message.sub, message.seq, message.more}));
        const QByteArray bytes = head + changes + Copy(vt::ChangesEnd);
        EXPECT_EQ(bytes.toHex(), Encode(message, changes).toHex());
        vt::MessageReader reader(bytes.constData(), bytes.size());
        ChangesHead read;
        ASSERT_TRUE(reader.ReadType(&read.type));
        ASSERT_TRUE(reader.ReadRest(&read));
        EXPECT_EQ(read.type, type);
        EXPECT_EQ(read.sub, message.sub);
        EXPECT_EQ(read.seq, message.seq);
        EXPECT_EQ(read.more, type == EMessage::Batch);
        vt::TreeChange change;
        EXPECT_TRUE(reader.NextChange(&change));
        EXPECT_EQ(change.item.content, Content(qint64{2}));
        EXPECT_TRUE(reader.NextChange(&change));
        EXPECT_EQ(change.change, vt::EChange::Removed);
        EXPECT_FALSE(reader.NextChange(&change));
        EXPECT_EQ(reader.Error(), QString());
    }
}

/// Whatever is wrong with one is found by either way, and is the same.
template <class Frequent>
void ExpectSameFaults(const QByteArray& good) {
    for (int size = 0; size < good.size(); ++size) {
        Frequent read;
        EXPECT_EQ(Read(good.left(size), &read), Decode(good.left(size)).error) << size;
    }
    for (int at = 2; at < good.size(); ++at) {
        for (const char wrong :
             {'\x00', '\x20', '\x41', '\x60', '\x80', '\xa0', '\xc0', '\xf6', '\xff', '\x1c'}) {
            QByteArray bad = good;
            bad[at] = wrong;
            Frequent read;
            EXPECT_EQ(Read(bad, &read), Decode(bad).error) << bad.toHex().toStdString();
        }
    }
    Frequent read;
    EXPECT_EQ(Read(good + '\0', &read), QStringLiteral("bytes left over"));
}

TEST(FrequentMessageTest, FaultsAreFoundAsInAMessage) {
    ExpectSameFaults<AckMessage>(Copy(Encode(AckMessage{300})));
    ExpectSameFaults<WriteMessage>(Copy(Encode(WriteMessage{1, 2, 300, QStringLiteral("text")})));
    ExpectSameFaults<AnswerMessage>(
        Copy(Encode(AnswerMessage{1, EResult::Clamped, QStringLiteral("no"), qint64{300}})));
}

}  // namespace
