// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/certificatenames.h>

#include <QtCore/QUrl>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslCertificate>

#include <algorithm>

namespace vt::certificatenames {

namespace {

/// \a name as certificates write it; empty if it is no name of a host.
QString Normalised(QString name) {
    if (name.endsWith(QLatin1Char('.'))) name.chop(1);
    return QString::fromLatin1(QUrl::toAce(name)).toLower();
}

bool IsHost(const QString& pattern, const QString& host) {
    constexpr int WildcardLength = 2;
    if (!pattern.startsWith(QLatin1String("*."))) return Normalised(pattern) == host;
    const QString domain = Normalised(pattern.mid(WildcardLength));
    return !domain.isEmpty() && domain == host.section(QLatin1Char('.'), 1);
}

}  // namespace

QString UserOf(const QSslCertificate& certificate) {
    const QStringList names = certificate.subjectInfo(QSslCertificate::CommonName);
    return names.size() == 1 ? names.first() : QString();
}

bool NamesHost(const QSslCertificate& certificate, const QString& host) {
    const auto names = certificate.subjectAlternativeNames();
    const QHostAddress address(host);
    if (!address.isNull()) {
        const QStringList addresses = names.values(QSsl::IpAddressEntry);
        return std::any_of(addresses.begin(), addresses.end(),
                           [&](const QString& named) { return QHostAddress(named) == address; });
    }
    const QString name = Normalised(host);
    const QStringList patterns = names.values(QSsl::DnsEntry);
    return !name.isEmpty() && std::any_of(patterns.begin(), patterns.end(),
                                          [&](const QString& pattern) { return IsHost(pattern, name); });
}

}  // namespace vt::certificatenames
