// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsexport.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QString>

#include <vector>

namespace nats {

/// Where a station is: servers of NATS, and its name there.
struct MCS_NATS_EXPORT NatsAddress {
    static constexpr int MaxLength = 1024;  ///< of an address, in UTF-16 code units
    static constexpr int MaxServers = 16;   ///< that are named in one
    static constexpr int MaxStationLength = 64;

    std::vector<HostPort> servers;
    QString station;  ///< empty where the text names none

    /// Reads "host[:port][,host[:port]...][/station]", with "nats://" in front or nothing; hosts are names or
    /// IP addresses, IPv6 in brackets. Where a host has no port, it is \a defaultPort. \return what is wrong
    /// with the text, in one line, and nothing has changed; empty if nothing is.
    QString Parse(const QString& text, int defaultPort = NatsOptions::DefaultPort);
    /// Why \a name cannot be that of a station, in one line; empty if it can.
    static QString StationFault(const QString& name);
};

}  // namespace nats
