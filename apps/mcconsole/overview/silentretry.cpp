// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/silentretry.h>

#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tuning.h>

SilentRetry::SilentRetry(Tuning& tuning, const Situation& situation, QObject* parent)
    : QObject(parent), m_tuning(tuning), m_situation(situation) {
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
    const bool isConnected = m_situation.GetConnection().state == ConsoleSession::EState::Connected;
    return canBeAsked && isConnected ? std::make_optional(m_tuning.GetWanted().GetHz()) : std::nullopt;
}

bool SilentRetry::IsKeyed(double hz) const {
    return m_situation.GetFacts().Has(ServerFacts::EFact::KeyedFrequencies, hz);
}

bool SilentRetry::CanWait() const {
    const std::optional<double> wanted = Wanted();
    return wanted && IsKeyed(*wanted);
}

void SilentRetry::Look() {
    const bool isWaiting = m_state == EState::Waiting && Wanted() == m_hz;
    if (!isWaiting) return Become(CanWait() ? EState::Offered : EState::Idle);
    if (IsKeyed(m_hz)) return;
    Become(EState::Idle);  // first: the answer may come at once
    // Where the server has ceased to tell who is keyed, nobody knows that it is silent.
    const bool isKnown = m_situation.GetFacts().List(ServerFacts::EFact::KeyedFrequencies) != nullptr;
    if (isKnown) m_tuning.Tune();
}

void SilentRetry::Become(EState state) {
    if (state == m_state) return;
    m_state = state;
    Q_EMIT Changed();
}
