// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lightsession.h"
#include "sharedbus.h"

#include <platform/nats/roads/natsroads.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

namespace bench {

/// One connection to NATS with several sessions. What comes by their shared road comes once for all of them,
/// is not opened, and counted by its numbers, of which none may be missing.
class LightConnection final : private nats::INatsBus::IListener, private vt::IRoads::IListener {
  public:
    class IHost {
      public:
        virtual ~IHost() = default;
        virtual void OnTaken() = 0;  ///< a session follows the road
        virtual void OnRoadNumber() = 0;
    };
    struct Setup {
        int port = 0;
        int sessions = 0;
        QString reportPath;  ///< for the first session; empty: it reports nothing
    };

    LightConnection(const Setup& setup, IHost& host);
    ~LightConnection() override;

    /// Of the last message that came by the road.
    int Number() const { return static_cast<int>(m_number); }
    void Report(int number) { m_sessions.front()->Report(number); }

  private:
    void OnNatsState(nats::INatsBus::EState state, const QString& reason) override;
    void OnRoadMessage(const char* data, qint64 size, bool isFetched) override;
    void OnRoadInputDone() override;
    void OnFetched() override {}
    void OpenNext();
    void OpenNextSoon();
    void Listen(LightSession& session, const QString& road);

    const Setup m_setup;
    IHost& m_host;
    std::shared_ptr<nats::INatsBus> m_bus;
    std::unique_ptr<nats::NatsRoads> m_roads;
    std::vector<std::unique_ptr<LightSession>> m_sessions;
    QString m_road;
    std::vector<LightSession*> m_listening;  ///< those that have not said that they hear it
    quint64 m_number = 0;
    QObject m_timers;
};

}  // namespace bench
