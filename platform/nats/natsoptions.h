// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <vector>

namespace nats {

/// A server of NATS.
struct MCS_NATS_EXPORT HostPort {
    QString host;
    int port = 0;

    QString ToText() const;  ///< "host:4222", "[::1]:4222"
};

/// Which servers of NATS to connect to, one of them at a time, and as whom. What is left empty is not used.
struct MCS_NATS_EXPORT NatsOptions {
    using Time = std::chrono::milliseconds;

    static constexpr int DefaultPort = 4222;

    std::vector<HostPort> servers;
    QString user;               ///< of NATS, not of the server that is reached over it
    QString password;           ///< of that user
    QString token;              ///< instead of a user
    QString credentialsFile;    ///< a user's JWT and seed, as tools of NATS write them
    QString nkey;               ///< public key of a user
    QString seedFile;           ///< and the file with its seed
    bool isTls = false;         ///< insist on TLS; where the server wants it, it is used anyway
    QString caFile;             ///< PEM: whom the servers' certificates must come from; empty: the system's
    QString certificateFile;    ///< PEM: our own certificate
    QString privateKeyFile;     ///< PEM: and its key
    QString name;               ///< what NATS shows of this connection to who looks after it
    Time connectTimeout{2000};  ///< for each of the servers
    Time firstRetry{100};       ///< doubles with every failure, with jitter
    Time longestRetry{5'000};
    Time deadAfter{6'000};  ///< without a word from NATS, which is asked for one in time

    /// Takes what the environment says of credentials and TLS: MCS_NATS_USER, MCS_NATS_PASSWORD,
    /// MCS_NATS_TOKEN, MCS_NATS_CREDS, MCS_NATS_NKEY, MCS_NATS_SEED, MCS_NATS_CA, MCS_NATS_CERT,
    /// MCS_NATS_KEY; MCS_NATS_TLS=1 insists on TLS. What is set already stays.
    void TakeEnvironment();
    /// Who this connection is to NATS, as one part of a subject: the user with other characters than letters,
    /// digits, "-" and "_" replaced by "_", at most 64; "-" where there is no user.
    QByteArray Who() const;
};

}  // namespace nats
