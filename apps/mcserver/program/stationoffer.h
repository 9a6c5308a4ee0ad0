// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/program/stationfigures.h>

#include <platform/nats/natsoptions.h>
#include <platform/nats/natsstation.h>

#include <QtCore/QString>

#include <chrono>
#include <memory>

class ServerLog;
class VtServer;

/// Offers the server as a station at NATS, where that is wanted, and tells in the log how that goes. Main
/// thread.
class StationOffer {
  public:
    /// How long a start waits to hear that somebody else has the station.
    static constexpr std::chrono::seconds Patience{4};

    StationOffer(VtServer& server, ServerLog& log);
    ~StationOffer();

    /// Begins. False with the reason, one line, in \a error, if the options cannot be used or another server
    /// has the station: two would share its clients by chance. NATS that cannot be reached is waited for,
    /// while clients come over the network as ever.
    bool Start(const nats::NatsOptions& options, const QString& station, QString* error);
    void Stop();

  private:
    void OnState(nats::NatsStation::EState state, const QString& reason);
    bool IsUndecided() const;
    void Tell();

    VtServer& m_server;
    ServerLog& m_log;
    QString m_name;
    nats::NatsStation::EState m_state = nats::NatsStation::EState::Connecting;
    QString m_problem;  ///< why it is not offered; empty: it is
    QString m_told = QStringLiteral("nothing");
    bool m_isLogging = false;
    std::unique_ptr<nats::NatsStation> m_station;
    std::unique_ptr<StationFigures> m_figures;
};
