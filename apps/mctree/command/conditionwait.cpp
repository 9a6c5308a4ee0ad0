// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/conditionwait.h>

#include <apps/common/safetext.h>

#include <algorithm>
#include <utility>

namespace mctree {

ConditionWait::ConditionWait(const Context& context, Targets& targets, std::function<void()> onMet)
    : m_context(context), m_targets(targets), m_onMet(std::move(onMet)) {
    const auto look = [this] {
        Look();
        if (m_isMet || !m_failure.IsDone()) m_context.session.Wake();
    };
    for (std::size_t i = 0; i < targets.GetMirrors().size(); ++i)
        m_watches.push_back(
            std::make_unique<SubtreeWatch>([look](EEvent, const values::TreeItem&) { look(); }, look));
}

Outcome ConditionWait::Run() {
    Session& session = m_context.session;
    const auto& timeout = m_context.arguments.timeout;
    const QDeadlineTimer deadline =
        timeout ? QDeadlineTimer(*timeout) : QDeadlineTimer(QDeadlineTimer::Forever);
    if (Outcome outcome = session.Connect(deadline); !outcome.IsDone()) return outcome;
    const Session::EWait wait = session.WaitUntil([this] { return IsOver(); }, deadline);
    if (m_isMet || !m_failure.IsDone()) return m_failure;
    if (wait == Session::EWait::Interrupted) return Session::Interrupted(EExitCode::Refused);
    if (session.IsLost()) return session.NoConnection();
    return {EExitCode::TimedOut, QStringLiteral("what is waited for did not come about in time")};
}

bool ConditionWait::IsOver() {
    FollowTics();
    Look();
    return m_isMet || !m_failure.IsDone() || m_context.session.IsLost();
}

void ConditionWait::FollowTics() {
    for (std::size_t i = 0; i < m_watches.size(); ++i) {
        const Mirror& mirror = *m_targets.GetMirrors()[i];
        QString reason;
        if (mirror.IsRefused(&reason)) m_failure = Outcome::RefusedAt(mirror.GetRemotePath(), reason);
        if (mirror.IsEstablished() && m_watches[i]->IsEmpty()) m_watches[i]->Watch(*mirror.GetItem());
    }
}

void ConditionWait::Look() {
    if (m_isMet || !m_failure.IsDone() || !HoldsForAll()) return;
    m_isMet = true;
    m_onMet();
}

bool ConditionWait::HoldsForAll() {
    const auto& operands = m_targets.Operands();
    return std::all_of(operands.begin(), operands.end(),
                       [this](const Targets::Operand& operand) { return HoldsFor(operand); });
}

bool ConditionWait::HoldsFor(const Targets::Operand& operand) {
    bool isAny = false;
    for (const Target& target : Targets::Find(operand)) {
        if (target.item->IsNode() && operand.pattern->IsGlob()) continue;
        isAny = true;
        QString error;
        const bool isHolding = m_context.arguments.condition->Holds(*target.item, &error);
        if (!error.isEmpty())
            m_failure = {EExitCode::Usage, safetext::Escaped(target.path + QStringLiteral(": ") + error)};
        if (!isHolding) return false;
    }
    return isAny;
}

}  // namespace mctree
