// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsbusmaker.h>
#include <platform/nats/stationlist.h>

#include <QtCore/QObject>

#include <functional>
#include <memory>

/// Asks at NATS which stations are there, and goes on listening, and trying where NATS is not there. Main
/// thread.
class StationFinder : public QObject, private nats::INatsBus::IListener {
    Q_OBJECT

  public:
    enum class EState {
        Idle,        ///< nothing was asked for
        Connecting,  ///< to NATS; with a problem, it goes on trying
        Open,        ///< whoever is there is heard
        Impossible   ///< it is not even tried
    };
    using MakeBus =
        std::function<std::shared_ptr<nats::INatsBus>(const nats::NatsOptions& options, QString* problem)>;

    explicit StationFinder(MakeBus makeBus, QObject* parent = nullptr);
    ~StationFinder() override;

    /// Looks where \a options say, in place of where it looked before.
    void Look(const nats::NatsOptions& options);
    void Stop();

    EState GetState() const { return m_state; }
    /// Why it is not open, or what NATS refuses, in one line, in English; empty if nothing is wrong.
    const QString& GetProblem() const { return m_problem; }

  Q_SIGNALS:
    /// The state or the problem is another one.
    void Changed();
    /// One says that it is there.
    void Heard(const nats::StationInfo& station);

  private:
    void OnNatsState(nats::INatsBus::EState state, const QString& reason) override;
    void OnNatsComplaint(const QString& complaint) override;
    void Tell(EState state, const QString& problem);

    const MakeBus m_makeBus;
    std::shared_ptr<nats::INatsBus> m_bus;
    std::unique_ptr<nats::StationList> m_list;
    EState m_state = EState::Idle;
    QString m_problem;
};
