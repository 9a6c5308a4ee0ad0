// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vttokenhash.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QMessageAuthenticationCode>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>
#include <QtNetwork/QPasswordDigestor>

#include <utility>

namespace {

constexpr int TokenBytes = 32;
constexpr int SaltBytes = 16;
constexpr int MaxSaltBytes = 64;
constexpr int DigestBytes = 32;

QString Scheme() {
    return QStringLiteral("hmac-sha256");
}

QString SlowScheme() {
    return QStringLiteral("pbkdf2-sha256");
}

QByteArray RandomBytes(int count) {
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return bytes;
}

QByteArray Digest(const QString& token, const QByteArray& salt, int iterations) {
    if (iterations == 0)
        return QMessageAuthenticationCode::hash(token.toUtf8(), salt, QCryptographicHash::Sha256);
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, token.toUtf8(), salt, iterations,
                                              DigestBytes);
}

/// What \a hex stands for; empty if it is no hexadecimal text.
QByteArray FromHex(const QString& hex) {
    const QByteArray text = hex.toLatin1().toLower();
    const QByteArray bytes = QByteArray::fromHex(text);
    return bytes.toHex() == text ? bytes : QByteArray();
}

}  // namespace

// Said once more, where MinGW exports them.
constexpr decltype(VtTokenHash::MinIterations) VtTokenHash::MinIterations;
constexpr decltype(VtTokenHash::MaxIterations) VtTokenHash::MaxIterations;

VtTokenHash::VtTokenHash(int iterations, QByteArray salt, QByteArray digest)
    : m_iterations(iterations), m_salt(std::move(salt)), m_digest(std::move(digest)) {}

QString VtTokenHash::CreateToken() {
    return QString::fromLatin1(
        RandomBytes(TokenBytes).toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

VtTokenHash VtTokenHash::Of(const QString& token) {
    const QByteArray salt = RandomBytes(SaltBytes);
    return VtTokenHash(0, salt, Digest(token, salt, 0));
}

std::optional<VtTokenHash> VtTokenHash::Parse(const QString& text) {
    QStringList parts = text.split(QLatin1Char('$'));
    const QString scheme = parts.takeFirst();
    int iterations = 0;
    if (scheme == SlowScheme() && parts.size() == 3) {
        bool isNumber = false;
        iterations = parts.takeFirst().toInt(&isNumber);
        if (!isNumber || iterations < MinIterations || iterations > MaxIterations) return std::nullopt;
    } else if (scheme != Scheme()) {
        return std::nullopt;
    }
    if (parts.size() != 2) return std::nullopt;
    const QByteArray salt = FromHex(parts[0]);
    const QByteArray digest = FromHex(parts[1]);
    if (salt.size() < SaltBytes || salt.size() > MaxSaltBytes || digest.size() != DigestBytes)
        return std::nullopt;
    return VtTokenHash(iterations, salt, digest);
}

QString VtTokenHash::ToText() const {
    const QString scheme = IsSlow() ? QStringLiteral("%1$%2").arg(SlowScheme()).arg(m_iterations) : Scheme();
    return QStringLiteral("%1$%2$%3")
        .arg(scheme, QString::fromLatin1(m_salt.toHex()), QString::fromLatin1(m_digest.toHex()));
}

bool VtTokenHash::Matches(const QString& token) const {
    const QByteArray digest = Digest(token, m_salt, m_iterations);
    // Without an early end, so that the time does not tell how much of it was right.
    unsigned difference = 0;
    for (int i = 0; i < DigestBytes; ++i)
        difference |= static_cast<unsigned char>(digest.at(i)) ^ static_cast<unsigned char>(m_digest.at(i));
    return difference == 0;
}
