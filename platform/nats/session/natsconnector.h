// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsoptions.h>
#include <platform/nats/session/packet.h>
#include <platform/nats/session/subjects.h>
#include <platform/vtclient/iconnector.h>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace nats {

class NatsSession;
class SessionSeal;

/// Connects to a station: to NATS, and over it to whoever offers the station there. Main thread.
class NatsConnector final : public QObject, public vt::IConnector, private INatsBus::IListener {
  public:
    /// Makes the connection to NATS, one for each attempt; null with the reason in \a problem.
    using BusMaker = std::function<std::shared_ptr<INatsBus>(QString* problem)>;

    /// \a who is what NATS knows this client as.
    NatsConnector(BusMaker makeBus, const QString& station, QByteArray who);
    ~NatsConnector() override;

    void SetListener(vt::IConnector::IListener* listener) override { m_listener = listener; }
    void Connect() override;
    void Abort() override;

  private:
    /// Whom packets are for: first the connector, then the session, which outlives it.
    struct Route {
        NatsConnector* connector = nullptr;
        std::weak_ptr<NatsSession> session;
        quint64 instance = 0;
        QTimer tick;  ///< of the session
        bool hasHeard = false;
        int silentTicks = 0;
    };

    void OnNatsState(INatsBus::EState state, const QString& reason) override;
    void OnNatsComplaint(const QString& complaint) override;
    void OnNatsUnheard(quint64 watch) override;
    void Knock();
    void OnPacket(const Packet& packet);
    void Accept(const Greeting& greeting);
    void Fail(const QString& reason);
    static void Deliver(Route& route, const NatsMessage& message);
    static void LookForRestart(Route& route, const NatsMessage& message);
    static void OnTick(Route& route);

    static constexpr quint64 KnockWatch = ~quint64(0);  ///< no session has it
    // A station says every 800 ms that it is there. Who hears not even that asks it for a word, and learns
    // from NATS if nobody listens there.
    static constexpr std::chrono::milliseconds Tick{300};
    static constexpr int TicksToAsk = 4;
    // What the server, or somebody, says of it: a server that is there answers sooner, however far it is.
    static constexpr std::chrono::milliseconds RefusalPatience{500};
    static constexpr std::chrono::milliseconds UnheardPatience{700};

    const BusMaker m_makeBus;
    const QString m_station;
    const Subjects m_subjects;
    const QByteArray m_who;
    vt::IConnector::IListener* m_listener = nullptr;
    SessionName m_name;
    std::shared_ptr<INatsBus> m_bus;  ///< of the attempt under way
    std::shared_ptr<Route> m_route;
    std::unique_ptr<SessionSeal> m_seal;
};

}  // namespace nats
