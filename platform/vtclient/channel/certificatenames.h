// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QSslCertificate;

/// What certificates say of whose they are.
namespace vt::certificatenames {

/// The user that a client's certificate names: its common name, if it has exactly one. Empty if it has none,
/// or several, of which nobody knows which is meant.
QString UserOf(const QSslCertificate& certificate);

/// Whether a server's certificate is one of \a host, a name or an IP address. Its subject alternative names
/// tell, and nothing else: a common name is a text for people, in which anything may stand. "*" stands for
/// one whole label at the begin of a name.
bool NamesHost(const QSslCertificate& certificate, const QString& host);

}  // namespace vt::certificatenames
