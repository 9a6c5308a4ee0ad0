// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vttokenhash.h>

#include <QtCore/QCryptographicHash>
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
    return QStringLiteral("pbkdf2-sha256");
}

QByteArray RandomBytes(int count) {
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return bytes;
}

QByteArray Digest(const QString& token, const QByteArray& salt, int iterations) {
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

VtTokenHash::VtTokenHash(int iterations, QByteArray salt, QByteArray digest)
    : m_iterations(iterations), m_salt(std::move(salt)), m_digest(std::move(digest)) {}

QString VtTokenHash::CreateToken() {
    return QString::fromLatin1(
        RandomBytes(TokenBytes).toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

VtTokenHash VtTokenHash::Of(const QString& token) {
    const QByteArray salt = RandomBytes(SaltBytes);
    return VtTokenHash(Iterations, salt, Digest(token, salt, Iterations));
}

std::optional<VtTokenHash> VtTokenHash::Parse(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('$'));
    if (parts.size() != 4 || parts[0] != Scheme()) return std::nullopt;
    bool isNumber = false;
    const int iterations = parts[1].toInt(&isNumber);
    if (!isNumber || iterations < MinIterations || iterations > MaxIterations) return std::nullopt;
    const QByteArray salt = FromHex(parts[2]);
    const QByteArray digest = FromHex(parts[3]);
    if (salt.size() < SaltBytes || salt.size() > MaxSaltBytes || digest.size() != DigestBytes)
        return std::nullopt;
    return VtTokenHash(iterations, salt, digest);
}

QString VtTokenHash::ToText() const {
    return QStringLiteral("%1$%2$%3$%4")
        .arg(Scheme())
        .arg(m_iterations)
        .arg(QString::fromLatin1(m_salt.toHex()), QString::fromLatin1(m_digest.toHex()));
}

bool VtTokenHash::Matches(const QString& token) const {
    const QByteArray digest = Digest(token, m_salt, m_iterations);
    // Without an early end, so that the time does not tell how much of it was right.
    unsigned difference = 0;
    for (int i = 0; i < DigestBytes; ++i)
        difference |= static_cast<unsigned char>(digest.at(i)) ^ static_cast<unsigned char>(m_digest.at(i));
    return difference == 0;
}
