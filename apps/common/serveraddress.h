// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Where a server is, as people write it.
struct ServerAddress {
    static constexpr int DefaultPort = 7450;
    static constexpr int DefaultNatsPort = 4222;

    QString host;  ///< without the brackets of an IPv6 address; over NATS "HOST[:PORT][,HOST...]/STATION"
    int port = DefaultPort;
    bool isEncrypted = false;
    bool isOverNats = false;

    /// Reads HOST, HOST:PORT, [IPV6]:PORT, [IPV6] or an IPv6 address alone, with "mcs://" or "mcss://" (TLS)
    /// in front or nothing; or "nats://HOST[:PORT][,HOST...]/STATION", "natss://" with TLS. What the text
    /// does not say stays as it is.
    /// \return what is wrong with the text, in one line, and nothing has changed; empty if nothing is.
    QString Parse(const QString& text);
    /// The form ("xn--...") that the host of \a text is to be written in if it has characters beyond Latin-1,
    /// which Parse() refuses; empty for other hosts, and for those that have no such form.
    static QString AceFormOf(const QString& text);
    /// Whether \a other leads to the same server, as far as the addresses tell: encrypted or not, by
    /// whichever name this machine has for itself, over whichever of the same servers of NATS.
    bool IsSameAs(const ServerAddress& other) const;
    /// The host, or those of NATS.
    QStringList Hosts() const;
    /// What Parse() reads: "host:7450", "mcss://[::1]:7450", "nats://host/tower".
    QString ToText() const;
    /// What VtClientCenter takes: the scheme and the host.
    QString ToVtAddress() const;
};
