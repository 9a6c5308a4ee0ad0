// SPDX-License-Identifier: Apache-2.0
#include <apps/common/listenaddress.h>

#include <QtNetwork/QHostAddress>

bool ListenAddress::Parse(const QString& text, QString* error) {
    constexpr int MaxPort = 65535;
    const auto fail = [&](const char* reason) {
        *error = QStringLiteral("'%1' is no address to listen on: %2").arg(text, QLatin1String(reason));
        return false;
    };
    const bool isBracketed = text.startsWith(QLatin1Char('['));
    const int bracket = text.indexOf(QLatin1Char(']'));
    if (isBracketed && bracket == -1) return fail("a bracket has no partner");
    if (!isBracketed && text.count(QLatin1Char(':')) > 1) return fail("an IPv6 address stands in brackets");
    const int end = isBracketed ? bracket + 1 : text.indexOf(QLatin1Char(':'));
    const QString rest = end == -1 ? QString() : text.mid(end);
    QString host = isBracketed ? text.mid(1, bracket - 1) : text.left(end);
    if (host == QLatin1String("localhost")) host = QStringLiteral("127.0.0.1");
    const QHostAddress parsed(host);
    const auto protocol = isBracketed ? QAbstractSocket::IPv6Protocol : QAbstractSocket::IPv4Protocol;
    if (parsed.protocol() != protocol) return fail("give the IP address of an interface");
    int number = port;
    if (!rest.isEmpty()) {
        bool isNumber = false;
        number = rest.mid(1).toInt(&isNumber);
        if (!rest.startsWith(QLatin1Char(':')) || !isNumber || number < 0 || number > MaxPort)
            return fail("a port is a number from 0 to 65535");
    }
    address = parsed.toString();
    port = number;
    return true;
}

QString ListenAddress::ToText() const {
    const bool isIPv6 = address.contains(QLatin1Char(':'));
    return (isIPv6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(address, QString::number(port));
}
