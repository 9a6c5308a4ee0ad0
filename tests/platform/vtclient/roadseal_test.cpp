// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/roadseal.h>

#include <platform/vtclient/iroads.h>

#include <gtest/gtest.h>

#include <set>

namespace {

const QByteArray Key(vt::RoadSeal::KeySize, '\7');
const QString Place = QStringLiteral("tower/1f-1");

QByteArray Sealed(vt::RoadSeal& seal, quint64 number, std::string_view content) {
    const std::string_view sealed = seal.Seal(number, {content.substr(0, 1), content.substr(1), {}});
    return {sealed.data(), static_cast<int>(sealed.size())};
}

QByteArray Opened(vt::RoadSeal& seal, const QByteArray& message) {
    const auto envelope = vt::RoadEnvelope::Of(message.constData(), message.size());
    const auto opened = envelope ? seal.Open(*envelope) : std::nullopt;
    return opened ? QByteArray(opened->data(), static_cast<int>(opened->size())) : QByteArray("closed");
}

TEST(RoadSealTest, OpensWhatWasSealed) {
    vt::RoadSeal writer(Place, 3, Key);
    vt::RoadSeal reader(Place, 3, Key);
    const QByteArray first = Sealed(writer, 1, "first");
    const QByteArray second = Sealed(writer, 2, QByteArray(1 << 16, 'x').constData());
    EXPECT_EQ(Opened(reader, second), QByteArray(1 << 16, 'x'));
    EXPECT_EQ(Opened(reader, first), "first") << "in any order";
    EXPECT_EQ(vt::NumberOnRoad(second.constData(), second.size()), 2U);
}

TEST(RoadSealTest, LooksAsItIsDocumented) {
    vt::RoadSeal writer(Place, 3, Key);
    const QByteArray message = Sealed(writer, 258, "content");
    EXPECT_EQ(message.left(13).toHex(' '), "01 00 00 00 03 00 00 00 00 00 00 01 02");
    EXPECT_EQ(message.size(), 13 + 7 + 16);
    // By another implementation of AES-256-GCM, from the same key, place and number.
    EXPECT_EQ(message.mid(13).toHex(), "510e68dc19aef23d59dc055129edb37ee69c351ae76bdc");
}

TEST(RoadSealTest, ProvesThatTheNextMessageGoesOn) {
    vt::RoadSeal writer(Place, 3, Key);
    vt::RoadSeal reader(Place, 3, Key);
    for (const bool isContinued : {false, true}) {
        const std::string_view sealed = writer.Seal(isContinued ? 2 : 1, {"content"}, isContinued);
        QByteArray message(sealed.data(), static_cast<int>(sealed.size()));
        const auto envelope = vt::RoadEnvelope::Of(message.constData(), message.size());
        ASSERT_TRUE(envelope);
        EXPECT_EQ(envelope->isContinued, isContinued);
        EXPECT_EQ(Opened(reader, message), "content");
        message[0] = isContinued ? '\1' : '\2';
        EXPECT_EQ(Opened(reader, message), "closed") << "somebody has turned it round";
    }
}

TEST(RoadSealTest, OpensNothingThatWasChangedAnywhere) {
    vt::RoadSeal writer(Place, 3, Key);
    vt::RoadSeal reader(Place, 3, Key);
    const QByteArray message = Sealed(writer, 258, "content");
    for (int at = 0; at < message.size(); ++at) {
        QByteArray other = message;
        other[at] = static_cast<char>(other[at] ^ 0x40);
        EXPECT_EQ(Opened(reader, other), "closed") << at;
        EXPECT_EQ(Opened(reader, message.left(at)), "closed") << at;
    }
    EXPECT_EQ(Opened(reader, message), "content");
}

TEST(RoadSealTest, OpensNothingOfAnotherPlaceOrKey) {
    vt::RoadSeal writer(Place, 3, Key);
    const QByteArray message = Sealed(writer, 1, "content");
    vt::RoadSeal elsewhere(QStringLiteral("another/1f-1"), 3, Key);
    EXPECT_EQ(Opened(elsewhere, message), "closed");
    vt::RoadSeal otherKey(Place, 3, vt::RoadSeal::NewKey());
    EXPECT_EQ(Opened(otherKey, message), "closed");
    vt::RoadSeal otherNumber(Place, 4, Key);
    EXPECT_EQ(Opened(otherNumber, message), "closed");
}

TEST(RoadSealTest, SealsNothingWithoutAKey) {
    vt::RoadSeal writer(Place, 3, QByteArray("short"));
    EXPECT_TRUE(Sealed(writer, 1, "content").isEmpty());
}

TEST(RoadSealTest, HasAnotherKeyEachTime) {
    std::set<QByteArray> keys;
    for (int i = 0; i < 100; ++i)
        keys.insert(vt::RoadSeal::NewKey());
    EXPECT_EQ(keys.size(), 100U);
    EXPECT_EQ(keys.begin()->size(), vt::RoadSeal::KeySize);
}

}  // namespace
