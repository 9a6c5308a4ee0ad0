// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/soak/faultmatrix.h>
#include <tests/soak/operatorhands.h>
#include <tests/soak/plant.h>
#include <tests/soak/witness.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>
#include <random>
#include <vector>

namespace soak {

struct Settings {
    int seconds = 600;
    int modules = 12;
    int responseTimeout = 500;  ///< ms
    unsigned seed = 1;
};

/// A day at work in a short time: transmitters key, modules have one fault after the other, the power fails,
/// and an operator reconnects what is lost, or meddles with it. Everything that must not happen is a finding.
class Soak final : public QObject {
    Q_OBJECT

  public:
    /// Starts to work in the event loop. \a plant listens already, and all modules are configured.
    Soak(const Settings& settings, Plant& plant);

    /// What happened that must not, each in a line, once it is over.
    const QStringList& Findings() const { return m_findings; }
    QString Report() const;

  Q_SIGNALS:
    void Finished();

  private:
    enum class EPhase {
        Healthy,    ///< connected, and without a fault
        Faulty,     ///< has a fault that nobody did anything about yet
        Neglected,  ///< the operator does this and that, while the fault lasts
        Mending,    ///< the fault is over as soon as the module says so
        Recovering  ///< the operator has connected it anew
    };
    enum class EPower { On, Failing, Off, Returning };
    /// One module and what befalls it.
    struct Module {
        EPhase phase = EPhase::Recovering;
        int fault = 0;     ///< the row of the fault that it has, or had last
        qint64 until = 0;  ///< ms: when the phase ends, or is too long
        qint64 since = 0;  ///< of Recovering
        qint64 nextAttempt = 0;
        qint64 nextKey = 0;
        int attempts = 0;
        bool hasFailed = false;  ///< since the last of them
    };

    void Tick();
    void LookAtWarnings();
    void WorkThePlant();
    void Step(int number);
    void StepHealthy(int number);
    void StepFaulty(int number);
    void StepNeglected(int number);
    void StepMending(int number);
    void StepRecovering(int number);
    void StepPower();
    void Enter(int number, EPhase phase, qint64 forMs);
    void BeginFault(int number);
    int DrawFault();
    void EndFault(int number);
    void Connect(int number);
    void Meddle(int number);
    void OnError(int number, const QString& text);
    void OnRead(int number);
    bool AreAllHealthy() const;
    bool IsOver() const { return m_clock.elapsed() > qint64{m_settings.seconds} * 1000; }
    void Finish();
    void Find(const QString& finding);

    Module& At(int number) { return m_modules[static_cast<std::size_t>(number)]; }
    FaultRow& RowOf(int number) { return m_matrix[At(number).fault]; }
    qint64 Now() const { return m_clock.elapsed(); }
    int Roll(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }
    int RollInterval();

    const Settings m_settings;
    Plant& m_plant;
    FaultMatrix m_matrix;
    std::mt19937 m_random;
    QElapsedTimer m_clock;
    std::unique_ptr<Witness> m_witness;
    std::unique_ptr<OperatorHands> m_operator;
    std::vector<Module> m_modules;
    std::vector<int> m_deck;  ///< of faults
    QTimer m_timer;
    EPower m_power = EPower::On;
    qint64 m_nextPowerCut;
    qint64 m_nextCount = 0;
    qint64 m_signalledErrors = 0;
    qint64 m_keyings = 0;
    int m_warnings = 0;
    QStringList m_findings;
};

}  // namespace soak
