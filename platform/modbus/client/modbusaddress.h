// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Where an input module is: an IPv4 address and a port. Names are not taken, since looking one up may take
/// longer than any time-out, and nor is IPv6, which the modules do not speak.
struct ModbusAddress {
    static constexpr quint16 StandardPort = 502;

    quint32 ip = 0;  ///< in the order of the host
    quint16 port = 0;

    /// Reads "TCP:<ip>:<port>", of which not more is looked at than such a text can be long; \a text may be
    /// null. Blanks around the IP address mean nothing. Each number is decimal and has no leading zero, which
    /// elsewhere would make it octal.
    /// \return 0, or the error of the operating system that comes closest, with the reason in \a reason.
    unsigned Parse(const wchar_t* text, QString* reason);
    /// The reason alone why \a text cannot be right; empty if it can.
    static QString FaultOf(const QString& text);
};
