// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/sessionseal.h>

#include <QtCore/QtEndian>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>

#include <algorithm>
#include <array>
#include <utility>

namespace nats {

namespace {

constexpr std::size_t NonceSize = 12;
constexpr std::size_t SealTag = SessionSeal::TagSize;

struct OpensslDeleter {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(EVP_PKEY_CTX* context) const { EVP_PKEY_CTX_free(context); }
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
template <class T>
using OpensslPointer = std::unique_ptr<T, OpensslDeleter>;

using Secret = std::array<unsigned char, SessionSeal::KeySize>;

const unsigned char* RawBytes(const char* data) {
    return reinterpret_cast<const unsigned char*>(data);
}

unsigned char* RawBytes(char* data) {
    return reinterpret_cast<unsigned char*>(data);
}

OpensslPointer<EVP_PKEY> DrawKey() {
    const OpensslPointer<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new_id(EVP_PKEY_X25519, nullptr));
    EVP_PKEY* key = nullptr;
    if (context == nullptr || EVP_PKEY_keygen_init(context.get()) != 1 ||
        EVP_PKEY_keygen(context.get(), &key) != 1)
        return nullptr;
    return OpensslPointer<EVP_PKEY>(key);
}

bool DeriveShared(EVP_PKEY* own, EVP_PKEY* peer, Secret* shared) {
    const OpensslPointer<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new(own, nullptr));
    std::size_t size = shared->size();
    return context != nullptr && EVP_PKEY_derive_init(context.get()) == 1 &&
           EVP_PKEY_derive_set_peer(context.get(), peer) == 1 &&
           EVP_PKEY_derive(context.get(), shared->data(), &size) == 1 && size == shared->size();
}

/// A key out of what both ends know, for the direction and the place that \a info names.
bool Expand(const Secret& shared, const QByteArray& salt, const QByteArray& info, Secret* key) {
    const OpensslPointer<EVP_PKEY_CTX> context(EVP_PKEY_CTX_new_id(EVP_PKEY_HKDF, nullptr));
    std::size_t size = key->size();
    return context != nullptr && EVP_PKEY_derive_init(context.get()) == 1 &&
           EVP_PKEY_CTX_set_hkdf_md(context.get(), EVP_sha256()) == 1 &&
           EVP_PKEY_CTX_set1_hkdf_salt(context.get(), RawBytes(salt.constData()), salt.size()) == 1 &&
           EVP_PKEY_CTX_set1_hkdf_key(context.get(), shared.data(), static_cast<int>(shared.size())) == 1 &&
           EVP_PKEY_CTX_add1_hkdf_info(context.get(), RawBytes(info.constData()), info.size()) == 1 &&
           EVP_PKEY_derive(context.get(), key->data(), &size) == 1;
}

/// Data and the end count together, and so do the other kinds.
std::array<unsigned char, NonceSize> NonceOf(const Packet& packet) {
    std::array<unsigned char, NonceSize> nonce{};
    const bool isOfStream = packet.kind == Packet::EKind::Data || packet.kind == Packet::EKind::End;
    nonce[0] = isOfStream ? 1 : 2;
    qToBigEndian(packet.number, nonce.data() + NonceSize - sizeof(packet.number));
    return nonce;
}

}  // namespace

struct SessionSeal::Works {
    OpensslPointer<EVP_PKEY> own = DrawKey();
    OpensslPointer<EVP_CIPHER_CTX> sealing{EVP_CIPHER_CTX_new()};
    OpensslPointer<EVP_CIPHER_CTX> opening{EVP_CIPHER_CTX_new()};
    bool isAgreed = false;
};

SessionSeal::SessionSeal() : m_works(std::make_unique<Works>()) {}

SessionSeal::~SessionSeal() {
    OPENSSL_cleanse(m_opened.data(), m_opened.size());
}

QByteArray SessionSeal::PublicKey() const {
    QByteArray key(KeySize, '\0');
    std::size_t size = KeySize;
    const bool isKey = m_works->own != nullptr &&
                       EVP_PKEY_get_raw_public_key(m_works->own.get(), RawBytes(key.data()), &size) == 1 &&
                       size == KeySize;
    return isKey ? key : QByteArray();
}

bool SessionSeal::Agree(ESide side, std::string_view peerKey, const QByteArray& place) {
    const QByteArray own = PublicKey();
    if (peerKey.size() != KeySize || own.isEmpty()) return false;
    const OpensslPointer<EVP_PKEY> peer(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_X25519, nullptr, RawBytes(peerKey.data()), KeySize));
    Secret shared{};
    if (peer == nullptr || !DeriveShared(m_works->own.get(), peer.get(), &shared)) return false;
    const QByteArray theirs(peerKey.data(), KeySize);
    const bool isClient = side == ESide::Client;
    const QByteArray salt = isClient ? own + theirs : theirs + own;
    Secret up{};
    Secret down{};
    bool isGood = Expand(shared, salt, "up " + place, &up) && Expand(shared, salt, "down " + place, &down);
    isGood = isGood &&
             EVP_EncryptInit_ex(m_works->sealing.get(), EVP_aes_256_gcm(), nullptr,
                                isClient ? up.data() : down.data(), nullptr) == 1 &&
             EVP_DecryptInit_ex(m_works->opening.get(), EVP_aes_256_gcm(), nullptr,
                                isClient ? down.data() : up.data(), nullptr) == 1;
    for (Secret* const secret : {&shared, &up, &down})
        OPENSSL_cleanse(secret->data(), secret->size());
    m_works->isAgreed = isGood;
    return isGood;
}

std::string_view SessionSeal::Seal(const Packet& packet) {
    if (!m_works->isAgreed) return {};
    m_sealed.resize(Packet::HeadSize + packet.body.size() + SealTag);
    packet.WriteHead(m_sealed.data());
    EVP_CIPHER_CTX* const cipher = m_works->sealing.get();
    const auto nonce = NonceOf(packet);
    unsigned char* const body = RawBytes(m_sealed.data()) + Packet::HeadSize;
    int written = 0;
    bool isGood =
        EVP_EncryptInit_ex(cipher, nullptr, nullptr, nullptr, nonce.data()) == 1 &&
        EVP_EncryptUpdate(cipher, nullptr, &written, RawBytes(m_sealed.data()), Packet::HeadSize) == 1;
    if (!packet.body.empty())
        isGood = isGood && EVP_EncryptUpdate(cipher, body, &written, RawBytes(packet.body.data()),
                                             static_cast<int>(packet.body.size())) == 1;
    unsigned char* const tag = body + packet.body.size();
    isGood = isGood && EVP_EncryptFinal_ex(cipher, tag, &written) == 1 &&
             EVP_CIPHER_CTX_ctrl(cipher, EVP_CTRL_GCM_GET_TAG, TagSize, tag) == 1;
    return isGood ? std::string_view(m_sealed) : std::string_view();
}

std::optional<std::string_view> SessionSeal::Open(const Packet& packet) {
    if (!m_works->isAgreed || packet.body.size() < SealTag) return std::nullopt;
    const std::size_t size = packet.body.size() - SealTag;
    std::array<char, Packet::HeadSize> head{};
    packet.WriteHead(head.data());
    std::array<unsigned char, SealTag> tag{};
    std::copy_n(RawBytes(packet.body.data()) + size, SealTag, tag.begin());
    m_opened.resize(size);
    EVP_CIPHER_CTX* const cipher = m_works->opening.get();
    const auto nonce = NonceOf(packet);
    std::array<unsigned char, SealTag> rest{};
    int written = 0;
    bool isGood = EVP_DecryptInit_ex(cipher, nullptr, nullptr, nullptr, nonce.data()) == 1 &&
                  EVP_DecryptUpdate(cipher, nullptr, &written, RawBytes(head.data()), Packet::HeadSize) == 1;
    if (size != 0)
        isGood = isGood && EVP_DecryptUpdate(cipher, RawBytes(m_opened.data()), &written,
                                             RawBytes(packet.body.data()), static_cast<int>(size)) == 1;
    isGood = isGood && EVP_CIPHER_CTX_ctrl(cipher, EVP_CTRL_GCM_SET_TAG, TagSize, tag.data()) == 1 &&
             EVP_DecryptFinal_ex(cipher, rest.data(), &written) == 1;
    return isGood ? std::optional(std::string_view(m_opened)) : std::nullopt;
}

}  // namespace nats
