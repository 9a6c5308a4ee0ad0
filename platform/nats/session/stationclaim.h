// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsstation.h>
#include <platform/nats/session/presence.h>
#include <platform/nats/session/subjects.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>
#include <memory>

namespace nats {

/// Sees to it that one server offers a station. Who wants it asks all who listen for it, and has it if nobody
/// objects in time; of two who ask at once the one with the smaller number has it. Whoever is killed objects
/// to nothing, so its successor has it at once. Main thread.
class StationClaim final : public QObject, private INatsBus::IListener {
  public:
    static constexpr std::chrono::milliseconds ObjectionTime{
        600};                                                     ///< there and back, twice, over a slow link
    static constexpr std::chrono::seconds AskAgain{3};            ///< while it is taken
    static constexpr std::chrono::milliseconds ShowEvery{800};    ///< that it is there
    static constexpr std::chrono::milliseconds ShowSoonest{200};  ///< however often it is asked

    StationClaim(std::shared_ptr<INatsBus> bus, const QString& station,
                 const NatsStation::Description& description, NatsStation::Handler onState);
    ~StationClaim() override;

    void Start();
    quint64 Instance() const { return m_self.instance; }

  private:
    void OnNatsState(INatsBus::EState state, const QString& reason) override;
    void OnNatsComplaint(const QString& complaint) override;
    void Claim();
    void Win();
    void Yield(const Presence& other);
    void OnClaim(const NatsMessage& message);
    void OnShown(const NatsMessage& message);
    void Show();
    void Say(const QByteArray& subject, Presence::EWhat what);
    void SetState(NatsStation::EState state, const QString& reason);

    const std::shared_ptr<INatsBus> m_bus;
    const Subjects m_subjects;
    const NatsStation::Handler m_onState;
    const std::function<NatsStation::State()> m_describeState;
    Presence m_self;
    NatsStation::EState m_state = NatsStation::EState::Connecting;
    QString m_lastComplaint;  ///< of NATS, which is told once
    int m_claims = 0;         ///< subscriptions
    int m_shown = 0;
    int m_asked = 0;
    QTimer m_timer;  ///< of the state
    QTimer m_show;
    QTimer m_showSoon;  ///< somebody has asked
};

}  // namespace nats
