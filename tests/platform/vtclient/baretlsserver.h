// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFile>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslCipher>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslSocket>
#include <QtNetwork/QTcpServer>

/// Who speaks TLS on a free port of this machine with any certificate, also one with which none of our
/// servers starts, and says nothing after the handshake.
class BareTlsServer final : public QTcpServer {
  public:
    /// Both are files in PEM form; the key is one of elliptic curves, or else of RSA.
    BareTlsServer(const QString& certificate, const QString& privateKey) {
        m_configuration.setLocalCertificate(QSslCertificate(Read(certificate)));
        QSslKey key(Read(privateKey), QSsl::Ec);
        if (key.isNull()) key = QSslKey(Read(privateKey), QSsl::Rsa);
        m_configuration.setPrivateKey(key);
        listen(QHostAddress(QHostAddress::LocalHost));
    }
    /// From now on speaks TLS 1.2 with \a cipher only.
    void UseCipher(const char* cipher) {
        m_configuration.setProtocol(QSsl::TlsV1_2);
        m_configuration.setCiphers({QSslCipher(QString::fromLatin1(cipher))});
    }

  protected:
    void incomingConnection(qintptr descriptor) override {
        auto* const socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setSslConfiguration(m_configuration);
        socket->startServerEncryption();
    }

  private:
    static QByteArray Read(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QSslConfiguration m_configuration = QSslConfiguration::defaultConfiguration();
};
