// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/message.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <vector>

/// Bytes as people write them: pairs of hexadecimal digits, spaces as one likes.
inline QByteArray Bytes(const char* hex) {
    return QByteArray::fromHex(hex);
}

/// A message read whole.
struct DecodedMessage {
    vt::Message message;
    std::vector<vt::TreeChange> changes;
    QString error;  ///< empty if nothing is wrong
};

inline DecodedMessage Decode(const QByteArray& bytes) {
    DecodedMessage decoded;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    if (reader.ReadHeader(&decoded.message) && vt::CarriesChanges(decoded.message.type)) {
        vt::TreeChange change;
        while (reader.NextChange(&change))
            decoded.changes.push_back(change);
    }
    decoded.error = reader.Error();
    return decoded;
}

/// The same written again.
inline QByteArray Encode(const DecodedMessage& decoded) {
    vt::ChangeWriter writer;
    for (const vt::TreeChange& change : decoded.changes)
        writer.Write(change);
    return vt::Encode(decoded.message, writer.Take());
}

inline void ExpectEqual(const vt::ItemDescription& is, const vt::ItemDescription& should) {
    EXPECT_EQ(is.kind, should.kind);
    EXPECT_EQ(is.flags, should.flags);
    EXPECT_EQ(is.content, should.content);
    EXPECT_EQ(is.minimum, should.minimum);
    EXPECT_EQ(is.maximum, should.maximum);
    ASSERT_EQ(is.choices.size(), should.choices.size());
    for (std::size_t i = 0; i < is.choices.size(); ++i) {
        EXPECT_EQ(is.choices[i].text, should.choices[i].text);
        EXPECT_EQ(is.choices[i].number, should.choices[i].number);
        EXPECT_EQ(is.choices[i].key, should.choices[i].key);
    }
}

inline void ExpectEqual(const vt::Message& is, const vt::Message& should) {
    EXPECT_EQ(is.type, should.type);
    EXPECT_EQ(is.version, should.version);
    EXPECT_EQ(is.application, should.application);
    EXPECT_EQ(is.machine, should.machine);
    EXPECT_EQ(is.user, should.user);
    EXPECT_EQ(is.token, should.token);
    EXPECT_EQ(is.session, should.session);
    EXPECT_EQ(is.epoch, should.epoch);
    EXPECT_EQ(is.ping, should.ping);
    EXPECT_EQ(is.dead, should.dead);
    EXPECT_EQ(is.code, should.code);
    EXPECT_EQ(is.reason, should.reason);
    EXPECT_EQ(is.sub, should.sub);
    EXPECT_EQ(is.seq, should.seq);
    EXPECT_EQ(is.path, should.path);
    EXPECT_EQ(is.prefixes, should.prefixes);
    EXPECT_EQ(is.more, should.more);
    EXPECT_EQ(is.req, should.req);
    EXPECT_EQ(is.id, should.id);
    EXPECT_EQ(is.result, should.result);
    ExpectEqual(is.item, should.item);
}

inline void ExpectEqual(const vt::TreeChange& is, const vt::TreeChange& should) {
    EXPECT_EQ(is.change, should.change);
    EXPECT_EQ(is.id, should.id);
    EXPECT_EQ(is.parent, should.parent);
    EXPECT_EQ(is.name, should.name);
    EXPECT_EQ(is.session, should.session);
    ExpectEqual(is.item, should.item);
}
