// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsstation.h>

#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>

/// "Nats" in the server's status: what the server has to do with NATS, for those who watch over it. Main
/// thread.
class StationFigures {
  public:
    /// What it tells is itself a change that goes out, so it does not tell it more often than a server with
    /// nothing to say speaks anyway.
    static constexpr std::chrono::seconds Interval{5};

    /// \a station outlives it; \a name is its own.
    StationFigures(const nats::NatsStation& station, QString name);

    /// Tells what has changed.
    void Tell() const;

  private:
    const nats::NatsStation& m_station;
    const QString m_name;
    QTimer m_timer;
};
