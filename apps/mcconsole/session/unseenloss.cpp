// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/unseenloss.h>

#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/session/situation.h>

#include <QtCore/QCoreApplication>

namespace {

struct UnseenLossTexts {
    Q_DECLARE_TR_FUNCTIONS(UnseenLoss)
};

}  // namespace

void UnseenLoss::Look(const Situation& situation, bool isInFront) {
    if (isInFront) m_lost = m_held = Held();
    const ServerFacts& facts = situation.GetFacts();
    const std::optional<bool> isMaster = facts.Flag(ServerFacts::EFact::OwnIsMaster);
    // During a loss nobody knows what there will be after it.
    const bool isKnown = situation.GetConnection().state == ConsoleSession::EState::Connected && isMaster;
    if (!isKnown) return;
    const std::optional<double> hz = facts.TunedFrequency();
    m_lost.isMaster = m_held.isMaster && !*isMaster;
    m_held.isMaster = m_held.isMaster || *isMaster;
    // Another frequency is what was asked for last: an answer, or a step, may come after its user has left.
    if (hz) m_held.hz = hz;
    m_lost.hz = hz ? std::nullopt : m_held.hz;
}

QString UnseenLoss::GetText() const {
    const QString frequency = m_lost.hz ? judgement::Frequency(*m_lost.hz) : QString();
    if (m_lost.isMaster && m_lost.hz) return UnseenLossTexts::tr("LOST mastership, %1").arg(frequency);
    if (m_lost.isMaster) return UnseenLossTexts::tr("LOST mastership");
    return m_lost.hz ? UnseenLossTexts::tr("LOST %1").arg(frequency) : QString();
}
