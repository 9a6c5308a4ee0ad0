// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/heldbefore.h>

#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tuning.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QPointer>

using EFact = ServerFacts::EFact;

HeldBefore::HeldBefore(IClock& clock, Tuning& tuning, const Situation& situation, QObject* parent)
    : QObject(parent), m_clock(clock), m_tuning(tuning), m_situation(situation) {
    connect(&situation, &Situation::Looked, this, &HeldBefore::Look);
    connect(&tuning, &Tuning::Changed, this, &HeldBefore::LookAtRefusal);
    Look();
}

HeldBefore::Held HeldBefore::Now() const {
    const ServerFacts& facts = m_situation.GetFacts();
    return {facts.TunedFrequency(), facts.Flag(EFact::OwnIsMaster).value_or(false)};
}

bool HeldBefore::IsDeviceReady() const {
    const ServerFacts& facts = m_situation.GetFacts();
    return facts.Flag(EFact::IsOnline) != false && facts.Key(EFact::BootState) == BootReady;
}

void HeldBefore::Look() {
    const Connection& connection = m_situation.GetConnection();
    switch (connection.state) {
        case ConsoleSession::EState::Idle:
            m_now = m_gone = m_before = Held();
            m_isConnectionLost = false;
            break;
        case ConsoleSession::EState::Connecting:
            break;
        case ConsoleSession::EState::Lost:
            LookAtLoss();
            break;
        case ConsoleSession::EState::Connected:
            if (connection.mpxOrvPath.isEmpty()) break;
            m_isConnectionLost = false;
            Follow(Now());
            return;
    }
    Offer(Held());
}

void HeldBefore::LookAtLoss() {
    if (m_isConnectionLost) return;
    m_isConnectionLost = true;
    // A second loss before anything is back does not make the first one forgotten.
    if (m_now.IsAnything()) {
        m_before = m_now;
        m_lostAt = m_clock.TimeOfDay();
    }
    m_now = m_gone = Held();
}

void HeldBefore::Follow(const Held& now) {
    const bool hasGone = (m_now.hz && !now.hz) || (m_now.isMaster && !now.isMaster);
    const std::chrono::milliseconds moment = m_clock.Now();
    if (moment - m_goneAt > Together) m_gone = Held();
    if (hasGone) {
        if (m_now.hz && !now.hz) m_gone.hz = m_now.hz;
        if (m_now.isMaster && !now.isMaster) m_gone.isMaster = true;
        m_goneAt = moment;
    }
    m_now = now;
    const bool isDeviceGone = m_situation.GetFacts().Flag(EFact::IsOnline) == false;
    if (isDeviceGone && m_gone.IsAnything()) {
        if (hasGone) m_lostAt = m_clock.TimeOfDay();
        if (m_gone.hz) m_before.hz = m_gone.hz;
        m_before.isMaster = m_before.isMaster || m_gone.isMaster;
    }
    ForgetWhatIsBack(now);
    Offer(IsDeviceReady() ? m_before : Held());
    LookAtMaster();
}

/// Or what the operator has replaced by another frequency.
void HeldBefore::ForgetWhatIsBack(const Held& now) {
    if (now.hz) m_before.hz.reset();
    if (now.isMaster) m_before.isMaster = false;
}

void HeldBefore::Offer(const Held& offer) {
    if (offer == m_offer) return;
    m_offer = offer;
    Q_EMIT Changed();
}

void HeldBefore::LookAtRefusal() {
    const bool isRefused = m_tuning.GetState() == Tuning::EState::Refused && m_offer.hz &&
                           m_tuning.GetWanted().GetHz() == *m_offer.hz;
    const QString refusal = isRefused ? m_tuning.GetReason() : QString();
    if (refusal == m_refusal) return;
    m_refusal = refusal;
    Q_EMIT Changed();
}

/// While somebody else is it, it cannot be had back.
void HeldBefore::LookAtMaster() {
    const QString master = m_situation.GetFacts().Text(EFact::MasterName).value_or(QString());
    const QString other = m_offer.isMaster && !Now().isMaster ? master : QString();
    if (other == m_otherMaster) return;
    m_otherMaster = other;
    Q_EMIT Changed();
}

void HeldBefore::Dismiss() {
    m_before = Held();
    Offer(Held());
}

/// Mastership first: others may refuse frequencies to who is none.
void HeldBefore::Restore() {
    const Held offer = m_offer;
    const QPointer<HeldBefore> self(this);
    const QString path = m_situation.GetConnection().mpxOrvPath + QLatin1String("/Request/BecomeMaster");
    auto* const request = dynamic_cast<values::Value<bool>*>(values::Tree::Instance()->FindItem(path));
    // Asked for by the master it would give the mastership up.
    if (offer.isMaster && request != nullptr && !Now().isMaster) request->SetValue(true);
    if (self == nullptr || !offer.hz) return;
    m_tuning.Enter(Tuning::Shown(*offer.hz));
    m_tuning.Tune();
}
