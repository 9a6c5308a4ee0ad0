// SPDX-License-Identifier: Apache-2.0
#include <apps/common/serveraddress.h>

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

bool CanBeHost(const QString& host) {
    return std::all_of(host.begin(), host.end(), [](QChar character) {
        const char16_t code = character.unicode();
        return code > ' ' && code <= '~' && !QStringLiteral("/,[]\\@?#<>\"").contains(character);
    });
}

/// Takes "mcs://" or "mcss://" off the front of \a server.
QString WithoutScheme(const QString& server, bool* isEncrypted) {
    if (server.startsWith(QLatin1String("mcs://"))) return server.mid(6);
    if (!server.startsWith(QLatin1String("mcss://"))) return server;
    *isEncrypted = true;
    return server.mid(7);
}

}  // namespace

QString ServerAddress::Parse(const QString& text) {
    ServerAddress read = *this;
    const QString server = WithoutScheme(text, &read.isEncrypted);
    QString rest;
    read.host = server;
    if (server.startsWith(QLatin1Char('['))) {
        const int end = server.indexOf(QLatin1Char(']'));
        if (end < 0) return QStringLiteral("\"%1\" lacks a ]").arg(text);
        read.host = server.mid(1, end - 1);
        rest = server.mid(end + 1);
        if (!rest.isEmpty() && !rest.startsWith(QLatin1Char(':')))
            return QStringLiteral("\"%1\" is no HOST:PORT").arg(text);
    } else if (server.count(QLatin1Char(':')) == 1) {
        read.host = server.section(QLatin1Char(':'), 0, 0);
        rest = server.mid(read.host.size());
    }
    if (read.host.isEmpty()) return QStringLiteral("\"%1\" names no host").arg(text);
    if (read.host.size() > LongestHost) return QStringLiteral("the name of the host is too long");
    if (!CanBeHost(read.host)) return QStringLiteral("\"%1\" can be no host").arg(read.host);
    if (!rest.isEmpty()) {
        const QString error = ReadPort(rest.mid(1), &read.port);
        if (!error.isEmpty()) return error;
    }
    *this = read;
    return QString();
}

QString ServerAddress::ToText() const {
    const bool isIpv6 = host.contains(QLatin1Char(':'));
    return QStringLiteral("%1%2:%3").arg(isEncrypted ? QStringLiteral("mcss://") : QString(),
                                         isIpv6 ? QStringLiteral("[%1]").arg(host) : host,
                                         QString::number(port));
}

QString ServerAddress::ToVtAddress() const {
    return (isEncrypted ? QStringLiteral("mcss://") : QStringLiteral("mcs://")) + host;
}
