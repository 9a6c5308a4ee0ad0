// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/watcher.h>

namespace mctree {

Outcome RunWatch(const Context& context) {
    Session& session = context.session;
    Targets targets(session, context.arguments.patterns, EPurpose::Look);
    const auto& timeout = context.arguments.timeout;
    const QDeadlineTimer deadline =
        timeout ? QDeadlineTimer(*timeout) : QDeadlineTimer(QDeadlineTimer::Forever);
    if (const Outcome outcome = targets.Settle(deadline); !outcome.IsDone()) return outcome;
    // What is not there yet is waited for. What nobody lets us see is not.
    Report report(context.tell);
    bool isAny = false;
    for (const auto& mirror : targets.GetMirrors()) {
        QString reason;
        if (mirror->IsRefused(&reason))
            report.Add(Outcome::RefusedAt(mirror->GetRemotePath(), reason));
        else
            isAny = true;
    }
    if (!isAny) return report.Result();
    const Watcher watcher(context, targets);
    // Without a count of changes the user ends the command by interrupting it: that is no failure.
    session.WaitUntil([&] { return watcher.IsDone() || session.IsLost(); },
                      QDeadlineTimer(QDeadlineTimer::Forever));
    if (!watcher.IsDone() && session.IsLost()) return session.NoConnection();
    return report.Result();
}

}  // namespace mctree
