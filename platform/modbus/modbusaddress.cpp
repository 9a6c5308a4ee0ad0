// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/modbusaddress.h>

#include <platform/modbus/nativesocket.h>

#include <QtCore/QStringList>

using nativesocket::EError;

namespace {

constexpr int MaxLength = 64;  // the longest address has 25; IPv6 is still told from nonsense

QString BoundedText(const wchar_t* text) {
    int length = 0;
    while (text != nullptr && length <= MaxLength && text[length] != L'\0')
        ++length;
    return QString::fromWCharArray(text, length);
}

/// A decimal number up to \a maximum without sign, blanks and leading zeros.
bool ParseNumber(const QString& text, unsigned maximum, unsigned* number) {
    constexpr int MaxDigits = 5;
    if (text.isEmpty() || text.size() > MaxDigits) return false;
    if (text.size() > 1 && text[0] == QLatin1Char('0')) return false;
    *number = 0;
    for (const QChar digit : text) {
        if (digit < QLatin1Char('0') || digit > QLatin1Char('9')) return false;
        *number = *number * 10 + (digit.unicode() - unsigned{'0'});
    }
    return *number <= maximum;
}

bool ParseIp(const QString& text, quint32* ip) {
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4) return false;
    *ip = 0;
    for (const QString& part : parts) {
        unsigned octet = 0;
        if (!ParseNumber(part, 255, &octet)) return false;
        *ip = *ip << 8 | octet;
    }
    // "This network", multicast and broadcast are no module. The system takes the first for this machine.
    const unsigned first = *ip >> 24;
    return first != 0 && first < 224;
}

}  // namespace

unsigned ModbusAddress::Parse(const wchar_t* text, QString* reason) {
    const QString whole = BoundedText(text);
    const auto fail = [&](EError error, const char* why) {
        *reason =
            QStringLiteral("'%1' is no address of a Modbus module: %2").arg(whole, QString::fromUtf8(why));
        return nativesocket::CodeOf(error);
    };
    const QString prefix = QStringLiteral("TCP:");
    if (whole.size() > MaxLength) return fail(EError::InvalidArgument, "it is too long");
    if (!whole.startsWith(prefix)) return fail(EError::InvalidArgument, "it does not begin with TCP:");
    const int colon = whole.lastIndexOf(QLatin1Char(':'));
    if (colon < prefix.size()) return fail(EError::InvalidArgument, "it has no port");
    const QString host = whole.mid(prefix.size(), colon - prefix.size());
    if (host.isEmpty()) return fail(EError::NoAddress, "it has no IP address");
    if (host.contains(QLatin1Char(':'))) return fail(EError::NoSuchFamily, "modules have no IPv6 addresses");
    quint32 parsedIp = 0;
    if (!ParseIp(host, &parsedIp)) return fail(EError::InvalidArgument, "give the IPv4 address of a module");
    unsigned parsedPort = 0;
    if (!ParseNumber(whole.mid(colon + 1), 65535, &parsedPort) || parsedPort == 0)
        return fail(EError::InvalidArgument, "a port is a number from 1 to 65535");
    ip = parsedIp;
    port = static_cast<quint16>(parsedPort);
    return 0;
}
