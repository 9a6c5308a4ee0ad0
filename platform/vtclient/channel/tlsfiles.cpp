// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/tlsfiles.h>

#include <QtCore/QFile>
#include <QtNetwork/QSslCertificate>
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

}  // namespace

bool LoadTlsFiles(const TlsFiles& files, QSslConfiguration* configuration, QString* error) {
    if (!QSslSocket::supportsSsl()) {
        *error = QStringLiteral("TLS is not available: Qt finds no OpenSSL library");
        return false;
    }
    configuration->setProtocol(QSsl::TlsV1_2OrLater);
    QList<QSslCertificate> certificates;
    if (!files.authorities.isEmpty()) {
        if (!ReadCertificates(files.authorities, &certificates, error)) return false;
        configuration->setCaCertificates(certificates);
    }
    if (files.certificate.isEmpty()) return true;
    if (!ReadCertificates(files.certificate, &certificates, error)) return false;
    QSslKey key;
    if (!ReadKey(files.privateKey, &key, error)) return false;
    configuration->setLocalCertificateChain(certificates);
    configuration->setPrivateKey(key);
    return true;
}

}  // namespace vt
