// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/session/openings.h>
#include <platform/nats/session/packet.h>
#include <platform/nats/session/subjects.h>
#include <platform/vtclient/ichannel.h>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace nats {

class NatsSession;

/// Takes the sessions that clients begin with a station, and hands them on as channels. Main thread.
class NatsListener final : public QObject {
  public:
    using Handler = std::function<void(std::unique_ptr<vt::IChannel>)>;

    /// \a instance is this start of the server.
    NatsListener(std::shared_ptr<INatsBus> bus, const QString& station, quint64 instance, Handler handler);
    /// Sessions are lost, but for their last words.
    ~NatsListener() override;

    /// While it is not sure that the station is this server's, sessions go on, and who begins one waits.
    void SetOpen(bool isOpen);

    int CountSessions() const { return m_sessions.size(); }
    quint64 CountLost() const { return m_lost; }  ///< sessions that were cut, since ever

  private:
    void OnMessage(const NatsMessage& message);
    void BeginSome();
    void OnStranger(const SessionName& name, const Packet& packet);
    void Begin(const SessionName& name, const Greeting& greeting);
    void Refuse(const SessionName& name, const QString& reason);
    void Complain(const QByteArray& who, const QString& complaint) const;

    static constexpr int MaxRefusals = 100;  ///< a second: who is told nothing finds out by himself
    static constexpr quint32 LeastWindow = 4096;
    static constexpr int BegunPerTurn = 4;  ///< of the event loop: then others have theirs

    const std::shared_ptr<INatsBus> m_bus;
    const Subjects m_subjects;
    const quint64 m_instance;
    const Handler m_handler;
    const int m_subscription;
    QHash<QByteArray, std::weak_ptr<NatsSession>> m_sessions;
    bool m_isOpen = true;
    Openings m_openings;  ///< that wait for their turn, or for the door to open
    int m_begun = 0;      ///< in this turn
    QTimer m_nextTurn;
    int m_refusals = 0;  ///< within this second
    quint64 m_lost = 0;
    QTimer m_second;
};

}  // namespace nats
