// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/tlsfiles.h>

#include <platform/vtclient/channel/certificatekey.h>

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslCipher>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslSocket>

namespace vt {

namespace {

constexpr qint64 MaxFileSize = 1 << 20;  // a chain of certificates is a few KiB

bool ReadFile(const QString& name, QByteArray* content, QString* error) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read '%1': %2").arg(name, file.errorString());
        return false;
    }
    *content = file.read(MaxFileSize);
    return true;
}

bool ReadCertificates(const QString& name, QList<QSslCertificate>* certificates, QString* error) {
    QByteArray content;
    if (!ReadFile(name, &content, error)) return false;
    *certificates = QSslCertificate::fromData(content, QSsl::Pem);
    if (!certificates->isEmpty()) return true;
    *error = QStringLiteral("'%1' holds no certificate in PEM form").arg(name);
    return false;
}

bool ReadKey(const QString& name, QSslKey* key, QString* error) {
    QByteArray content;
    if (!ReadFile(name, &content, error)) return false;
    for (const QSsl::KeyAlgorithm algorithm : {QSsl::Rsa, QSsl::Ec}) {
        *key = QSslKey(content, algorithm, QSsl::Pem);
        if (!key->isNull()) return true;
    }
    *error = QStringLiteral("'%1' holds no private key in PEM form without a password").arg(name);
    return false;
}

/// Those of TLS 1.3, and of 1.2 those by elliptic curves, which like them have forward secrecy: who records a
/// connection and gets hold of the key later can read none of it. Those by primes have it too, but Qt brings
/// primes of 1024 bits, which are too few.
QList<QSslCipher> CiphersWithForwardSecrecy() {
    QList<QSslCipher> chosen;
    for (const QSslCipher& cipher : QSslConfiguration::supportedCiphers()) {
        const bool isEphemeral = cipher.keyExchangeMethod() == QLatin1String("ECDH");
        const bool isAuthentic = cipher.authenticationMethod() != QLatin1String("None");
        if (cipher.protocol() == QSsl::TlsV1_3 || (isEphemeral && isAuthentic)) chosen << cipher;
    }
    return chosen;
}

}  // namespace

bool LoadTlsFiles(const TlsFiles& files, QSslConfiguration* configuration, QString* error) {
    if (!QSslSocket::supportsSsl()) {
        *error = QStringLiteral("TLS is not available: Qt finds no OpenSSL library");
        return false;
    }
    configuration->setProtocol(QSsl::TlsV1_2OrLater);
    configuration->setCiphers(CiphersWithForwardSecrecy());
    QList<QSslCertificate> certificates;
    if (!files.authorities.isEmpty()) {
        if (!ReadCertificates(files.authorities, &certificates, error)) return false;
        configuration->setCaCertificates(certificates);
    }
    if (files.certificate.isEmpty()) return true;
    if (!ReadCertificates(files.certificate, &certificates, error)) return false;
    QSslKey key;
    if (!ReadKey(files.privateKey, &key, error)) return false;
    if (!FitsCertificate(key, certificates.first())) {
        *error = QStringLiteral("the key '%1' does not fit the certificate '%2'")
                     .arg(files.privateKey, files.certificate);
        return false;
    }
    configuration->setLocalCertificateChain(certificates);
    configuration->setPrivateKey(key);
    return true;
}

bool IsInForce(const QString& name, const QSslConfiguration& configuration, QString* error) {
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const QSslCertificate& certificate : configuration.localCertificateChain()) {
        const bool isOver = certificate.expiryDate() < now;
        if (!isOver && certificate.effectiveDate() <= now) continue;
        const QDateTime date = isOver ? certificate.expiryDate() : certificate.effectiveDate();
        const QString reason = isOver ? QStringLiteral("the certificate '%1' expired on %2")
                                      : QStringLiteral("the certificate '%1' holds from %2 on only");
        *error = reason.arg(name, date.toUTC().toString(Qt::ISODate));
        return false;
    }
    return true;
}

}  // namespace vt
