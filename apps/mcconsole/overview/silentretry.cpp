// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/silentretry.h>

#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tuning.h>

SilentRetry::SilentRetry(IClock& clock, Tuning& tuning, const Situation& situation, QObject* parent)
    : QObject(parent), m_tuning(tuning), m_situation(situation), m_silent(clock) {
    connect(&tuning, &Tuning::Changed, this, &SilentRetry::Look);
    connect(&situation, &Situation::Looked, this, &SilentRetry::Look);
    Look();
}

void SilentRetry::Wait() {
    if (m_state != EState::Offered || !CanWait()) return;
    m_hz = *Wanted();
    Become(EState::Waiting);
}

void SilentRetry::Cancel() {
    if (m_state == EState::Waiting) Become(CanWait() ? EState::Offered : EState::Idle);
}

/// What the operator wants and does not have; none while it cannot be asked for.
std::optional<double> SilentRetry::Wanted() const {
    const Tuning::EState state = m_tuning.GetState();
    const bool canBeAsked = state == Tuning::EState::NotSent || state == Tuning::EState::Refused ||
                            state == Tuning::EState::Ended;
    return canBeAsked && CanTune() ? std::make_optional(m_tuning.GetWanted().GetHz()) : std::nullopt;
}

bool SilentRetry::IsConnected() const {
    return m_situation.GetConnection().state == ConsoleSession::EState::Connected;
}

bool SilentRetry::CanTune() const {
    return IsConnected() && m_tuning.GetState() != Tuning::EState::NoMpxOrv;
}

bool SilentRetry::IsKeyed(double hz) const {
    return m_situation.GetFacts().Has(ServerFacts::EFact::KeyedFrequencies, hz);
}

bool SilentRetry::IsUnsupervised(double hz) const {
    return m_situation.GetFacts().Has(ServerFacts::EFact::UnsupervisedFrequencies, hz);
}

bool SilentRetry::CanWait() const {
    const std::optional<double> wanted = Wanted();
    return wanted && IsKeyed(*wanted);
}

/// The operator asks for it by hand meanwhile: if that is refused too, the waiting goes on.
bool SilentRetry::IsAskedFor() const {
    return IsConnected() && m_tuning.GetState() == Tuning::EState::Asked &&
           m_tuning.GetWanted().GetHz() == m_hz;
}

void SilentRetry::Look() {
    if (m_state == EState::Waiting && IsAskedFor()) return m_silent.Stop();
    const std::optional<double> wanted = Wanted();
    const bool isWaiting = m_state == EState::Waiting && wanted == m_hz;
    if (!isWaiting) {
        const bool isGivenUp = m_state == EState::Waiting && !CanTune();
        Become(CanWait() ? EState::Offered : EState::Idle);
        // To give it back ends the connection for a moment.
        const bool isGivenBack = IsConnected() || !m_situation.GetConnection().isMpxOrvUsed;
        if (isGivenUp) Q_EMIT GivenUp(m_hz, isGivenBack ? EReason::NoMpxOrv : EReason::NotTold);
        return;
    }
    // A transmitter that nobody watches any more may still be on the air.
    if (IsKeyed(m_hz) || IsUnsupervised(m_hz)) return m_silent.Stop();
    // Where the server has ceased to tell who is keyed, nobody knows that it is silent.
    if (m_situation.GetFacts().List(ServerFacts::EFact::KeyedFrequencies) == nullptr) {
        Become(EState::Idle);
        Q_EMIT GivenUp(m_hz, EReason::NotTold);
    } else if (!m_silent.IsRunning()) {
        m_silent.Start(SilentTime, [this] { Ask(); });
    }
}

void SilentRetry::Ask() {
    Become(EState::Idle);  // first: the answer may come at once
    m_tuning.Tune();
}

void SilentRetry::Become(EState state) {
    if (state != EState::Waiting) m_silent.Stop();
    if (state == m_state) return;
    m_state = state;
    Q_EMIT Changed();
}
