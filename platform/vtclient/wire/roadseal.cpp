// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/roadseal.h>

#include <platform/vtclient/iroads.h>

#include <QtCore/QtEndian>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace vt {

namespace {

constexpr char WholeForm = 1;
constexpr char ContinuedForm = 2;
constexpr std::size_t NonceSize = 12;

const unsigned char* ToBytes(const char* data) {
    return reinterpret_cast<const unsigned char*>(data);
}

unsigned char* ToBytes(char* data) {
    return reinterpret_cast<unsigned char*>(data);
}

void WriteHead(quint32 key, quint64 number, bool isContinued, char* head) {
    head[0] = isContinued ? ContinuedForm : WholeForm;
    qToBigEndian(key, head + 1);
    qToBigEndian(number, head + 1 + sizeof(key));
}

/// Never twice under one key, since no number is.
std::array<unsigned char, NonceSize> NonceOf(quint64 number) {
    std::array<unsigned char, NonceSize> nonce{};
    qToBigEndian(number, nonce.data() + NonceSize - sizeof(number));
    return nonce;
}

}  // namespace

std::optional<RoadEnvelope> RoadEnvelope::Of(const char* data, qint64 size) {
    if (size < HeadSize + TagSize || size > MaxRoadMessage) return std::nullopt;
    if (data[0] != WholeForm && data[0] != ContinuedForm) return std::nullopt;
    RoadEnvelope envelope;
    envelope.isContinued = data[0] == ContinuedForm;
    envelope.key = qFromBigEndian<quint32>(data + 1);
    envelope.number = qFromBigEndian<quint64>(data + 1 + sizeof(envelope.key));
    envelope.sealed = {data + HeadSize, static_cast<std::size_t>(size - HeadSize)};
    if (envelope.key == 0 || envelope.number == 0) return std::nullopt;
    return envelope;
}

/// What OpenSSL keeps of a key. Making it anew for each message would cost more than a small message.
struct RoadSeal::Cipher {
    Cipher(const QString& road, const QByteArray& key)
        : sealing(EVP_CIPHER_CTX_new()), opening(EVP_CIPHER_CTX_new()), place(road.toUtf8()) {
        const bool isLong = key.size() == KeySize;
        isUsable =
            isLong && sealing != nullptr && opening != nullptr &&
            EVP_EncryptInit_ex(sealing, EVP_aes_256_gcm(), nullptr, ToBytes(key.constData()), nullptr) == 1 &&
            EVP_DecryptInit_ex(opening, EVP_aes_256_gcm(), nullptr, ToBytes(key.constData()), nullptr) == 1;
    }
    ~Cipher() {
        EVP_CIPHER_CTX_free(sealing);
        EVP_CIPHER_CTX_free(opening);
    }
    Cipher(const Cipher&) = delete;
    Cipher& operator=(const Cipher&) = delete;

    EVP_CIPHER_CTX* sealing;
    EVP_CIPHER_CTX* opening;
    QByteArray place;  ///< proved with every message, and not sent
    bool isUsable = false;
};

RoadSeal::RoadSeal(const QString& road, quint32 keyNumber, const QByteArray& key)
    : m_keyNumber(keyNumber), m_cipher(std::make_unique<Cipher>(road, key)) {}

RoadSeal::~RoadSeal() {
    OPENSSL_cleanse(m_room.data(), static_cast<std::size_t>(m_room.size()));
}

std::string_view RoadSeal::Seal(quint64 number, std::initializer_list<std::string_view> parts,
                                bool isContinued) {
    Q_ASSERT(number > m_lastSealed);
    if (!m_cipher->isUsable || number <= m_lastSealed) return {};
    m_lastSealed = number;
    std::size_t size = RoadEnvelope::HeadSize + RoadEnvelope::TagSize;
    for (const std::string_view part : parts)
        size += part.size();
    m_room.resize(static_cast<int>(size));
    char* const head = m_room.data();
    WriteHead(m_keyNumber, number, isContinued, head);
    EVP_CIPHER_CTX* const cipher = m_cipher->sealing;
    const auto nonce = NonceOf(number);
    int written = 0;
    bool isGood = EVP_EncryptInit_ex(cipher, nullptr, nullptr, nullptr, nonce.data()) == 1 &&
                  EVP_EncryptUpdate(cipher, nullptr, &written, ToBytes(m_cipher->place.constData()),
                                    m_cipher->place.size()) == 1 &&
                  EVP_EncryptUpdate(cipher, nullptr, &written, ToBytes(head), RoadEnvelope::HeadSize) == 1;
    unsigned char* at = ToBytes(head) + RoadEnvelope::HeadSize;
    for (const std::string_view part : parts) {
        if (part.empty()) continue;
        isGood = isGood && EVP_EncryptUpdate(cipher, at, &written, ToBytes(part.data()),
                                             static_cast<int>(part.size())) == 1;
        at += part.size();
    }
    isGood = isGood && EVP_EncryptFinal_ex(cipher, at, &written) == 1 &&
             EVP_CIPHER_CTX_ctrl(cipher, EVP_CTRL_GCM_GET_TAG, RoadEnvelope::TagSize, at) == 1;
    return isGood ? std::string_view(head, size) : std::string_view();
}

std::optional<std::string_view> RoadSeal::Open(const RoadEnvelope& envelope) {
    if (!m_cipher->isUsable || envelope.key != m_keyNumber) return std::nullopt;
    const auto size = static_cast<int>(envelope.sealed.size()) - RoadEnvelope::TagSize;
    std::array<char, RoadEnvelope::HeadSize> head;
    WriteHead(envelope.key, envelope.number, envelope.isContinued, head.data());
    std::array<unsigned char, RoadEnvelope::TagSize> tag;
    std::copy_n(envelope.sealed.end() - RoadEnvelope::TagSize, tag.size(), tag.begin());
    if (m_room.size() < size) m_room.resize(size);
    unsigned char* const opened = ToBytes(m_room.data());
    EVP_CIPHER_CTX* const cipher = m_cipher->opening;
    const auto nonce = NonceOf(envelope.number);
    int written = 0;
    const bool isTrue =
        EVP_DecryptInit_ex(cipher, nullptr, nullptr, nullptr, nonce.data()) == 1 &&
        EVP_DecryptUpdate(cipher, nullptr, &written, ToBytes(m_cipher->place.constData()),
                          m_cipher->place.size()) == 1 &&
        EVP_DecryptUpdate(cipher, nullptr, &written, ToBytes(head.data()), RoadEnvelope::HeadSize) == 1 &&
        EVP_DecryptUpdate(cipher, opened, &written, ToBytes(envelope.sealed.data()), size) == 1 &&
        EVP_CIPHER_CTX_ctrl(cipher, EVP_CTRL_GCM_SET_TAG, RoadEnvelope::TagSize, tag.data()) == 1 &&
        EVP_DecryptFinal_ex(cipher, opened + size, &written) == 1;
    if (!isTrue) return std::nullopt;
    return std::string_view(m_room.constData(), static_cast<std::size_t>(size));
}

QByteArray RoadSeal::NewKey() {
    QByteArray key(KeySize, Qt::Uninitialized);
    return RAND_priv_bytes(ToBytes(key.data()), KeySize) == 1 ? key : QByteArray();
}

QString RoadPlace(const IRoads& roads, const QString& road) {
    return roads.Station() + QLatin1Char('/') + road;
}

}  // namespace vt
