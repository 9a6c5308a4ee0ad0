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

/// Takes \a files into \a configuration. False with a one-line \a error that names the file.
bool LoadTlsFiles(const TlsFiles& files, QSslConfiguration* configuration, QString* error);

}  // namespace vt
