// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/changewriter.h>
#include <tests/platform/vtclient/anymessage.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>
#include <variant>
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
    if (ReadAny(reader, &decoded.message) && vt::CarriesChanges(TypeOf(decoded.message))) {
        vt::TreeChange change;
        while (reader.NextChange(&change))
            decoded.changes.push_back(change);
    }
    decoded.error = reader.Error();
    return decoded;
}

/// The same written again.
inline QByteArray ToBytes(const DecodedMessage& decoded) {
    vt::ChangeWriter writer;
    for (const vt::TreeChange& change : decoded.changes)
        writer.Write(change);
    return ToBytes(decoded.message, writer.Take());
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

template <class T>
void ExpectEqual(const T& is, const T& should) {
    EXPECT_EQ(is, should);
}

/// Every field of them.
inline void ExpectEqual(const vt::Message& is, const vt::Message& should) {
    ASSERT_EQ(TypeOf(is), TypeOf(should));
    const auto expectFields = [&is](const auto& whichever) {
        using M = std::decay_t<decltype(whichever)>;
        const auto expectField = [&](const auto& field) {
            SCOPED_TRACE(field.name);
            ExpectEqual(std::get<M>(is).*field.member, whichever.*field.member);
        };
        std::apply([&](const auto&... field) { (expectField(field), ...); }, vt::wire::FieldsOf<M>);
    };
    std::visit(expectFields, should);
}

inline void ExpectEqual(const vt::TreeChange& is, const vt::TreeChange& should) {
    EXPECT_EQ(is.change, should.change);
    EXPECT_EQ(is.id, should.id);
    EXPECT_EQ(is.parent, should.parent);
    EXPECT_EQ(is.name, should.name);
    EXPECT_EQ(is.session, should.session);
    ExpectEqual(is.item, should.item);
}
