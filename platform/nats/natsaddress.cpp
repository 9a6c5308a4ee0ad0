// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsaddress.h>

#include <QtCore/QStringList>

#include <algorithm>

namespace nats {

namespace {

constexpr int MaxHostLength = 253;  // of a name in the DNS

bool BelongsToNoHost(QChar character) {
    return character.unicode() > 0x7e || character.unicode() <= 0x20 ||
           QStringLiteral("/,[]\\@?#<>\"%").contains(character);
}

QString ReadPort(const QString& text, int* port) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > 65535)
        return QStringLiteral("'%1' is no port from 1 to 65535").arg(text);
    *port = number;
    return QString();
}

/// Splits \a text into a host and what stands behind it.
QString SplitServer(const QString& text, QString* host, QString* rest) {
    const bool isBracketed = text.startsWith(QLatin1Char('['));
    const int bracket = text.indexOf(QLatin1Char(']'));
    if (isBracketed && bracket == -1) return QStringLiteral("'%1' lacks a ]").arg(text);
    if (!isBracketed && text.count(QLatin1Char(':')) > 1)
        return QStringLiteral("'%1': an IPv6 address stands in brackets").arg(text);
    const int end = isBracketed ? bracket + 1 : text.indexOf(QLatin1Char(':'));
    *host = isBracketed ? text.mid(1, bracket - 1) : text.left(end);
    *rest = end == -1 ? QString() : text.mid(end);
    if (!rest->isEmpty() && !rest->startsWith(QLatin1Char(':')))
        return QStringLiteral("'%1' is no HOST:PORT").arg(text);
    return QString();
}

QString ReadServer(const QString& text, HostPort* server) {
    QString rest;
    const QString fault = SplitServer(text, &server->host, &rest);
    if (!fault.isEmpty()) return fault;
    const QString& host = server->host;
    if (host.isEmpty()) return QStringLiteral("it names no host");
    if (host.size() > MaxHostLength) return QStringLiteral("the host's name is too long");
    const auto* const wrong = std::find_if(host.cbegin(), host.cend(), BelongsToNoHost);
    if (wrong != host.cend()) return QStringLiteral("'%1' belongs to no host").arg(*wrong);
    return rest.isEmpty() ? QString() : ReadPort(rest.mid(1), &server->port);
}

}  // namespace

QString NatsAddress::StationFault(const QString& name) {
    const auto isLetterOrDigit = [](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber();
    };
    if (name.isEmpty()) return QStringLiteral("it names no station");
    if (name.size() > MaxStationLength)
        return QStringLiteral("a station's name has at most %1 characters").arg(MaxStationLength);
    const bool isName = std::all_of(name.begin(), name.end(), [&](QChar character) {
        return isLetterOrDigit(character) || character == QLatin1Char('-') || character == QLatin1Char('_');
    });
    if (!isName || !isLetterOrDigit(name.front()))
        return QStringLiteral(
                   "'%1' is no station's name: letters, digits, - and _, a letter or a digit first")
            .arg(name);
    return QString();
}

QString NatsAddress::Parse(const QString& text, int defaultPort) {
    const QString scheme = QStringLiteral("nats://");
    const QString rest = text.startsWith(scheme) ? text.mid(scheme.size()) : text;
    if (rest.size() > MaxLength) return QStringLiteral("the address is too long");
    if (rest.contains(QLatin1Char('@')))
        return QStringLiteral("credentials do not stand in the address but in files or the environment");
    NatsAddress read;
    const int slash = rest.indexOf(QLatin1Char('/'));
    if (slash != -1) {
        read.station = rest.mid(slash + 1);
        const QString fault = StationFault(read.station);
        if (!fault.isEmpty()) return fault;
    }
    for (const QString& part : rest.left(slash).split(QLatin1Char(','))) {
        if (read.servers.size() == MaxServers)
            return QStringLiteral("an address names at most %1 hosts").arg(MaxServers);
        HostPort server{QString(), defaultPort};
        const QString fault = ReadServer(part, &server);
        if (!fault.isEmpty()) return fault;
        read.servers.push_back(server);
    }
    *this = read;
    return QString();
}

}  // namespace nats
