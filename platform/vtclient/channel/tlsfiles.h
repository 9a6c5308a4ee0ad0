// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtNetwork/QSslConfiguration>

namespace vt {

/// The files of one end of a TLS connection, PEM all. Empty ones are left out.
struct TlsFiles {
    QString certificate;  ///< with its chain
    QString privateKey;
    QString authorities;  ///< whom the peer's certificate must come from
};

/// Takes \a files into \a configuration, which from then on speaks TLS 1.3, or 1.2 with forward secrecy.
/// False with a one-line \a error that names the file: one that cannot be used, or a key of another
/// certificate.
bool LoadTlsFiles(const TlsFiles& files, QSslConfiguration* configuration, QString* error);

/// Whether the own certificates of \a configuration, from the file \a name, hold at this time. If not, \a
/// error tells since or until when, in one line.
bool IsInForce(const QString& name, const QSslConfiguration& configuration, QString* error);

}  // namespace vt
