// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natskeeper.h>
#include <platform/nats/roads/keptmessages.h>
#include <platform/vtclient/iroads.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <map>
#include <memory>

namespace nats {

/// Shared roads of one station over NATS. Each message has a subject of its own, which ends with its number,
/// so that it is found again where JetStream keeps it. Main thread.
class NatsRoads final : public vt::IRoads, private INatsBus::IListener {
  public:
    enum class ERole {
        Server,  ///< has what is published kept, where there is JetStream
        Client
    };

    NatsRoads(std::shared_ptr<INatsBus> bus, const QString& station, ERole role);
    ~NatsRoads() override;
    NatsRoads(const NatsRoads&) = delete;
    NatsRoads& operator=(const NatsRoads&) = delete;

    QString Station() const override { return m_station; }
    bool Publish(const QString& road, std::string_view message) override;
    void Listen(const QString& road, IRoads::IListener* listener) override;
    void Unlisten(IRoads::IListener* listener) override;
    bool Fetch(IRoads::IListener* listener, quint64 from, quint64 to) override;
    int MaxMessage() const override;
    void Flush() override { m_bus->Flush(); }

    bool IsKept() const { return m_isKept; }  ///< by JetStream
    quint64 Published() const { return m_published; }
    quint64 PublishedBytes() const { return m_publishedBytes; }
    quint64 Lost() const { return m_lost; }  ///< messages that were not published

  private:
    struct Listening {
        QByteArray subject;  ///< without the number
        int subscription = 0;
        std::shared_ptr<KeptMessages> fetched;
        bool hasInput = false;  ///< and was not told that this is done
    };

    void OnNatsState(INatsBus::EState state, const QString& reason) override;
    void HaveKept();
    void OnKept(const QString& why);
    bool HasRoom();
    void TellOfRoom();
    void OnMessage(IRoads::IListener* listener, const NatsMessage& message);
    void TellInputDone();
    QByteArray SubjectOf(const QString& road) const { return m_root + road.toLatin1() + '.'; }

    const std::shared_ptr<INatsBus> m_bus;
    const QString m_station;
    const ERole m_role;
    const QByteArray m_root;  ///< of all subjects
    NatsKeeper m_keeper;
    QString m_road;         ///< that was published on last: mostly the next one is the same
    QByteArray m_subject;   ///< of that
    bool m_isFull = false;  ///< NATS does not take what we publish
    bool m_isKept = false;
    quint64 m_published = 0;
    quint64 m_publishedBytes = 0;
    quint64 m_lost = 0;
    quint64 m_lostBefore = 0;  ///< it was full
    std::map<IRoads::IListener*, Listening> m_listening;
    QTimer m_done;
    QTimer m_keepAgain;
    int m_keepFailures = 0;                                       ///< in a row
    const std::shared_ptr<int> m_life = std::make_shared<int>();  ///< what is answered later looks for it
};

}  // namespace nats
