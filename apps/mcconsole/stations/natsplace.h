// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>

#include <platform/nats/natsoptions.h>

#include <QtCore/QString>

#include <vector>

/// Where NATS is, as people write it: the hosts, without a station.
struct NatsPlace {
    QString hosts;  ///< "hub:4222,[::1]", as they were written
    bool isEncrypted = false;
    std::vector<nats::HostPort> servers;

    /// Reads "HOST[:PORT][,HOST...]" with "nats://" or "natss://" (TLS) in front or nothing; a station behind
    /// it is passed over. False, and nothing has changed, if the text is no such thing.
    bool Parse(const QString& text);
    /// What Parse() reads: "hub", "natss://hub:4333".
    QString ToText() const;
    /// The server that is \a station there.
    ServerAddress AddressOf(const QString& station) const;
};
