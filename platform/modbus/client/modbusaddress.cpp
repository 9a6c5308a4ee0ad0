// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbusaddress.h>

#include <platform/modbus/modbussystem.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <optional>

using modbussystem::EError;

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

/// Whether \a text is made of what IPv4 addresses are made of. Anything else is meant as a name.
bool IsNumeric(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return character == QLatin1Char('.') ||
               (character >= QLatin1Char('0') && character <= QLatin1Char('9'));
    });
}

/// What is wrong with an address, and the error of the operating system that comes closest.
struct Fault {
    EError error = EError::InvalidArgument;
    QString reason;
};
using MaybeFault = std::optional<Fault>;

MaybeFault ParseNumericIp(const QString& text, quint32* ip) {
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return Fault{EError::AddressNotAvailable, QStringLiteral("an IPv4 address has four numbers")};
    *ip = 0;
    for (const QString& part : parts) {
        unsigned octet = 0;
        if (!ParseNumber(part, 255, &octet))
            return Fault{EError::AddressNotAvailable,
                         QStringLiteral("'%1' is no number from 0 to 255 without leading zeros").arg(part)};
        *ip = *ip << 8 | octet;
    }
    // "This network", multicast and broadcast. The system takes the first for this machine.
    const unsigned first = *ip >> 24;
    if (first != 0 && first < 224) return std::nullopt;
    return Fault{EError::AddressNotAvailable, QStringLiteral("no module can have this address")};
}

MaybeFault ParseIp(const QString& text, quint32* ip) {
    if (text.isEmpty()) return Fault{EError::NoAddress, QStringLiteral("it has no IP address")};
    const int colon = text.indexOf(QLatin1Char(':'));
    const bool isPort = text.count(QLatin1Char(':')) == 1 || text.lastIndexOf(QLatin1Char('.'), colon) >= 0;
    if (colon >= 0 && isPort)
        return Fault{EError::AddressNotAvailable, QStringLiteral("the port does not belong to it")};
    if (colon >= 0) return Fault{EError::NoSuchFamily, QStringLiteral("modules have no IPv6 addresses")};
    if (!IsNumeric(text))
        return Fault{EError::NoAddress,
                     QStringLiteral("names are not resolved: give the IPv4 address of the module")};
    return ParseNumericIp(text, ip);
}

MaybeFault ParseWhole(const QString& whole, quint32* ip, unsigned* port) {
    const auto fault = [](const char* reason) {
        return Fault{EError::InvalidArgument, QString::fromUtf8(reason)};
    };
    const QString prefix = QStringLiteral("TCP:");
    if (whole.size() > MaxLength) return fault("it is too long");
    if (!whole.startsWith(prefix)) return fault("it does not begin with TCP:");
    const int colon = whole.lastIndexOf(QLatin1Char(':'));
    if (colon < prefix.size()) return fault("it has no port");
    // Blanks around it came along when it was typed or pasted, and mean nothing.
    if (MaybeFault ipFault = ParseIp(whole.mid(prefix.size(), colon - prefix.size()).trimmed(), ip))
        return ipFault;
    if (!ParseNumber(whole.mid(colon + 1), 65535, port) || *port == 0)
        return fault("a port is a number from 1 to 65535");
    return std::nullopt;
}

}  // namespace

unsigned ModbusAddress::Parse(const wchar_t* text, QString* reason) {
    const QString whole = BoundedText(text);
    quint32 parsedIp = 0;
    unsigned parsedPort = 0;
    if (const MaybeFault fault = ParseWhole(whole, &parsedIp, &parsedPort)) {
        *reason = QStringLiteral("'%1' is no address of a Modbus module: %2").arg(whole, fault->reason);
        return modbussystem::CodeOf(fault->error);
    }
    ip = parsedIp;
    port = static_cast<quint16>(parsedPort);
    return 0;
}

QString ModbusAddress::FaultOf(const QString& text) {
    quint32 ip = 0;
    unsigned port = 0;
    const MaybeFault fault = ParseWhole(text.left(MaxLength + 1), &ip, &port);
    return fault ? fault->reason : QString();
}
