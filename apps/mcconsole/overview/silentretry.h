// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

#include <optional>

class Situation;
class Tuning;

/// Asks for the wanted frequency once more as soon as nobody is keyed on it: one time, and only if an
/// operator said so beforehand. Main thread.
class SilentRetry : public QObject {
    Q_OBJECT

  public:
    enum class EState {
        Idle,     ///< the wanted frequency is not keyed, or there already
        Offered,  ///< it is keyed: waiting makes sense
        Waiting
    };

    /// Neither is owned; both outlive the retry.
    SilentRetry(Tuning& tuning, const Situation& situation, QObject* parent = nullptr);

    EState GetState() const { return m_state; }
    /// What is waited for, in Hz.
    double GetFrequency() const { return m_hz; }
    /// Begins to wait, if that is offered.
    void Wait();
    void Cancel();

  Q_SIGNALS:
    void Changed();

  private:
    void Look();
    void Become(EState state);
    std::optional<double> Wanted() const;
    bool IsKeyed(double hz) const;
    bool CanWait() const;

    Tuning& m_tuning;
    const Situation& m_situation;
    EState m_state = EState::Idle;
    double m_hz = 0;
};
