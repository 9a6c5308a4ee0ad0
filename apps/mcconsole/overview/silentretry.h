// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>

#include <QtCore/QObject>

#include <chrono>
#include <optional>

class Situation;
class Tuning;

/// Asks for the wanted frequency once more as soon as nobody is keyed on it, as far as all of its inputs are
/// watched: one time, and only if an operator said so beforehand. Main thread.
class SilentRetry : public QObject {
    Q_OBJECT

  public:
    enum class EState {
        Idle,     ///< the wanted frequency is not keyed, or there already
        Offered,  ///< it is keyed: waiting makes sense
        Waiting
    };

    /// Why nobody waits any more.
    enum class EReason {
        NotTold,  ///< whether it is silent: the connection is lost, or the server has ceased to say so
        NoMpxOrv  ///< that could be tuned, though there is a connection
    };
    Q_ENUM(EReason)

    /// For so long a frequency is silent before it is asked for: what changes together is told one after the
    /// other, and who pauses while talking is not done.
    static constexpr std::chrono::milliseconds SilentTime{500};

    /// None is owned; all outlive the retry.
    SilentRetry(IClock& clock, Tuning& tuning, const Situation& situation, QObject* parent = nullptr);

    EState GetState() const { return m_state; }
    /// What is waited for, in Hz.
    double GetFrequency() const { return m_hz; }
    /// Begins to wait, if that is offered.
    void Wait();
    void Cancel();

  Q_SIGNALS:
    void Changed();
    /// Nobody waits any more until \a hz is silent, though nobody has cancelled that.
    void GivenUp(double hz, SilentRetry::EReason why);

  private:
    void Look();
    void Ask();
    void Become(EState state);
    std::optional<double> Wanted() const;
    bool IsConnected() const;
    bool CanTune() const;
    bool IsKeyed(double hz) const;
    bool IsUnsupervised(double hz) const;
    bool CanWait() const;
    bool IsAskedFor() const;

    Tuning& m_tuning;
    const Situation& m_situation;
    EState m_state = EState::Idle;
    double m_hz = 0;
    ClockTimer m_silent;  ///< while it is
};
