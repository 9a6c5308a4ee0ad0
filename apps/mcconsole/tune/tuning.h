// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/common/frequencytext.h>

#include <platform/values/pathbinding.h>
#include <platform/values/refusals.h>
#include <platform/values/valuenumeric.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <chrono>
#include <optional>

class ServerAnswer;

/// Tuning one MpxORV: the frequency that the operator wants beside the one that there is. What is wanted
/// stays what it is, whatever the server says, until the operator or a granted request changes it; only
/// Tune() asks for it, or steps that have come to rest. Main thread.
class Tuning : public QObject, private PathBinding::IListener, private values::IRefusalListener {
    Q_OBJECT

  public:
    enum class EState {
        NoMpxOrv,     ///< there is nothing to tune
        Locked,       ///< not by this user
        Empty,        ///< nothing is entered
        NoFrequency,  ///< what is entered is none
        OutOfRange,   ///< of what the device can be tuned to
        NotSent,      ///< nobody has asked for what is entered
        Stepping,     ///< it will be asked for once the steps rest
        Asked,        ///< no answer yet
        Refused,      ///< see GetReason()
        Ended,        ///< it was granted and is taken away, see GetReason()
        Tuned,        ///< to what is entered
        NotTuned      ///< and nothing is entered but what was shown
    };
    /// After how long steps count as at rest.
    static constexpr std::chrono::milliseconds Rest{300};

    /// \a clock is not owned and outlives this object.
    explicit Tuning(IClock& clock, QObject* parent = nullptr);
    ~Tuning() override;

    /// Tunes the MpxORV whose node is at \a path; empty: none. What the operator wants stays, and is not
    /// sent.
    void Bind(const QString& path);

    /// The operator types \a text.
    void Enter(const QString& text);
    /// Which of all steps the operator wants; what is none of them changes nothing.
    void ChooseStep(int index);
    int GetStepIndex() const { return m_step; }
    /// The operator steps from what is entered, within the device's range.
    void Step(int count);
    /// Asks for what is entered, also once more. False if that cannot be asked for.
    bool Tune();
    /// Takes back what was entered.
    void Restore();

    EState GetState() const;
    QString GetText() const { return m_text; }
    FrequencyText GetWanted() const;
    /// What the MpxORV is tuned to, in Hz; none if it is not.
    std::optional<double> GetActual() const;
    /// What is on its way to the server, in Hz, or not answered yet; none if nothing is.
    std::optional<double> GetUnanswered() const;
    /// Whether the server says what the device can be tuned to.
    bool HasRange() const;
    /// That, in Hz; all numbers where nobody says so.
    double GetLowest() const;
    double GetHighest() const;
    /// Whether the device can be tuned to \a hz, as far as the server tells.
    bool IsInRange(double hz) const;
    /// Why it was refused, or ended, in the server's words.
    QString GetReason() const { return m_reason; }

    /// As it is shown and entered: "121.500 MHz".
    static QString Shown(double hz);

  Q_SIGNALS:
    /// Any of the above has changed.
    void Changed();
    /// The operator has chosen another step.
    void StepChosen();
    /// What the operator asked for, \a hz, is granted.
    void Granted(double hz);

  private:
    using Frequency = values::ValueNumeric<double>;

    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void OnRefused(values::TreeItem* item, const QString& path, const QString& reason) override;
    std::optional<double> OnAnswer(const ServerAnswer& answer);
    std::optional<double> OnDone(const ServerAnswer& answer);
    ServerAnswer GetAnswer() const;
    void Conclude(EState outcome, const QString& reason);
    EState StateOfEntry() const;
    EState StateOfRequest(double wanted) const;
    void Follow();
    Frequency* GetValue() const;
    void LookForWish();

    PathBinding m_frequency;
    PathBinding m_code;  ///< which says the same as the answer, and is set just before it
    PathBinding m_answer;
    PathBinding m_mode;
    ClockTimer m_rest;
    int m_step;  ///< among all of them
    QString m_text;
    bool m_isEntered = false;       ///< by the operator, and not granted
    bool m_wasAskedFor = false;     ///< by the operator
    bool m_hasWish = false;         ///< somebody wants the frequency that the MpxORV has
    std::optional<double> m_began;  ///< Hz, that it had when it was bound
    int m_unanswered = 0;           ///< requests
    /// Of the last request: Asked, Refused, or Ended; NotSent if there is nothing to say about it.
    EState m_outcome = EState::NotSent;
    double m_asked = 0;                    ///< Hz, in that request
    std::optional<double> m_actualBefore;  ///< it
    QString m_reason;
};
