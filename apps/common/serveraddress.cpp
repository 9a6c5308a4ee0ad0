// SPDX-License-Identifier: Apache-2.0
#include <apps/common/serveraddress.h>

#include <platform/nats/natsaddress.h>

#include <QtCore/QUrl>

#include <algorithm>

namespace {

constexpr int LongestHost = 253;  // of a name in the DNS

QString ReadPort(const QString& text, int* port) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > 65535)
        return QStringLiteral("\"%1\" is no port from 1 to 65535").arg(text);
    *port = number;
    return QString();
}

/// Addresses are passed on in Latin-1.
bool IsLatin1(const QString& host) {
    return std::all_of(host.begin(), host.end(), [](QChar character) { return character.unicode() <= 0xff; });
}

bool CanBeHost(const QString& host) {
    return std::all_of(host.begin(), host.end(), [](QChar character) {
        return character.isPrint() && !character.isSpace() &&
               !QStringLiteral("/,[]\\@?#<>\"").contains(character);
    });
}

/// Takes "mcs://" or "mcss://" off the front of \a server.
QString WithoutScheme(const QString& server, bool* isEncrypted) {
    if (server.startsWith(QLatin1String("mcs://"))) return server.mid(6);
    if (!server.startsWith(QLatin1String("mcss://"))) return server;
    *isEncrypted = true;
    return server.mid(7);
}

bool IsOverNats(const QString& text) {
    return text.startsWith(QLatin1String("nats://")) || text.startsWith(QLatin1String("natss://"));
}

/// The same for NATS.
QString ParseNats(const QString& text, ServerAddress* address) {
    const bool isTls = text.startsWith(QLatin1String("natss"));
    const QString rest = text.mid(text.indexOf(QLatin1String("://")) + 3);
    nats::NatsAddress read;
    QString fault = read.Parse(rest);
    if (fault.isEmpty() && read.station.isEmpty()) fault = QStringLiteral("it names no station");
    if (!fault.isEmpty()) return QStringLiteral("\"%1\" is no station at NATS: %2").arg(text, fault);
    address->host = rest;
    address->port = ServerAddress::DefaultNatsPort;
    address->isEncrypted = address->isEncrypted || isTls;
    address->isOverNats = true;
    return QString();
}

/// This machine has several names for itself, and names no cases.
QString OneName(const QString& host) {
    const QString name = host.toLower();
    const bool isThisMachine = name == QLatin1String("localhost") || name == QLatin1String("::1");
    return isThisMachine ? QStringLiteral("127.0.0.1") : name;
}

/// Splits \a server, without its scheme, into the host and what comes behind it. Empty, or what is wrong with
/// %1.
QString SplitHost(const QString& server, QString* host, QString* rest) {
    *host = server;
    if (server.startsWith(QLatin1Char('['))) {
        const int end = server.indexOf(QLatin1Char(']'));
        if (end < 0) return QStringLiteral("\"%1\" lacks a ]");
        *host = server.mid(1, end - 1);
        *rest = server.mid(end + 1);
        if (!rest->isEmpty() && !rest->startsWith(QLatin1Char(':')))
            return QStringLiteral("\"%1\" is no HOST:PORT");
    } else if (server.count(QLatin1Char(':')) == 1) {
        *host = server.section(QLatin1Char(':'), 0, 0);
        *rest = server.mid(host->size());
    }
    return QString();
}

}  // namespace

QString ServerAddress::Parse(const QString& text) {
    if (IsOverNats(text)) return ParseNats(text, this);
    ServerAddress read = *this;
    if (read.isOverNats) read = {QString(), DefaultPort, read.isEncrypted, false};
    QString rest;
    const QString error = SplitHost(WithoutScheme(text, &read.isEncrypted), &read.host, &rest);
    if (!error.isEmpty()) return error.arg(text);
    if (read.host.isEmpty()) return QStringLiteral("\"%1\" names no host").arg(text);
    if (read.host.size() > LongestHost) return QStringLiteral("the name of the host is too long");
    if (const QString ace = AceFormOf(text); !ace.isEmpty())
        return QStringLiteral("\"%1\" has characters beyond Latin-1: write %2").arg(read.host, ace);
    if (!IsLatin1(read.host) || !CanBeHost(read.host))
        return QStringLiteral("\"%1\" can be no host").arg(read.host);
    if (!rest.isEmpty()) {
        const QString portError = ReadPort(rest.mid(1), &read.port);
        if (!portError.isEmpty()) return portError;
    }
    *this = read;
    return QString();
}

QString ServerAddress::AceFormOf(const QString& text) {
    if (IsOverNats(text)) return QString();
    bool isEncrypted = false;
    QString host, rest;
    if (!SplitHost(WithoutScheme(text, &isEncrypted), &host, &rest).isEmpty() || IsLatin1(host))
        return QString();
    const QString ace = QString::fromLatin1(QUrl::toAce(host));
    return CanBeHost(ace) ? ace : QString();
}

bool ServerAddress::IsSameAs(const ServerAddress& other) const {
    if (isOverNats != other.isOverNats) return false;
    if (!isOverNats) return port == other.port && OneName(host) == OneName(other.host);
    nats::NatsAddress mine, theirs;
    if (!mine.Parse(host).isEmpty() || !theirs.Parse(other.host).isEmpty() || mine.station != theirs.station)
        return false;
    return std::any_of(mine.servers.begin(), mine.servers.end(), [&](const nats::HostPort& one) {
        return std::any_of(theirs.servers.begin(), theirs.servers.end(), [&](const nats::HostPort& another) {
            return one.port == another.port && OneName(one.host) == OneName(another.host);
        });
    });
}

QStringList ServerAddress::Hosts() const {
    if (!isOverNats) return {host};
    nats::NatsAddress address;
    address.Parse(host);
    QStringList hosts;
    for (const nats::HostPort& server : address.servers)
        hosts << server.host;
    return hosts;
}

QString ServerAddress::ToText() const {
    if (isOverNats) return ToVtAddress();
    const bool isIpv6 = host.contains(QLatin1Char(':'));
    return QStringLiteral("%1%2:%3").arg(isEncrypted ? QStringLiteral("mcss://") : QString(),
                                         isIpv6 ? QStringLiteral("[%1]").arg(host) : host,
                                         QString::number(port));
}

QString ServerAddress::ToVtAddress() const {
    const QString scheme = isOverNats ? QStringLiteral("nats") : QStringLiteral("mcs");
    return scheme + (isEncrypted ? QStringLiteral("s://") : QStringLiteral("://")) + host;
}
