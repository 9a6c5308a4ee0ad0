// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/targets.h>

#include <QtCore/QJsonObject>

#include <apps/mctree/text/description.h>

namespace mctree {

namespace {

/// Tells, once each time, that all is held, or that it is not any more.
class HoldLines {
  public:
    HoldLines(const Context& context, const Targets& targets) : m_context(context), m_targets(targets) {}

    void Follow() {
        bool isHeld = true;
        for (const auto& mirror : m_targets.GetMirrors())
            isHeld = isHeld && mirror->IsEstablished();
        if (isHeld == m_isHeld) return;
        m_isHeld = isHeld;
        for (const auto& mirror : m_targets.GetMirrors())
            Print(mirror->GetRemotePath());
        m_context.printer.Flush();
    }

  private:
    void Print(const QString& path) {
        const QString event = m_isHeld ? QStringLiteral("held") : QStringLiteral("lost");
        if (m_context.arguments.isJson)
            return m_context.printer.WriteLine(
                ToLine({{QStringLiteral("path"), path}, {QStringLiteral("event"), event}}));
        m_context.printer.WriteLine(event + QLatin1Char(' ') + safetext::Escaped(path));
    }

    const Context& m_context;
    const Targets& m_targets;
    bool m_isHeld = false;
};

}  // namespace

Outcome RunHold(const Context& context) {
    Session& session = context.session;
    Targets targets(session, context.arguments.patterns, EPurpose::Use);
    const auto& timeout = context.arguments.timeout;
    Outcome outcome =
        targets.Settle(timeout ? QDeadlineTimer(*timeout) : QDeadlineTimer(QDeadlineTimer::Forever));
    if (!outcome.IsDone()) return outcome;
    for (const auto& mirror : targets.GetMirrors())
        if (!mirror->IsEstablished()) return NotHere(*mirror);

    HoldLines lines(context, targets);
    const auto isOver = [&] {
        lines.Follow();
        for (const auto& mirror : targets.GetMirrors()) {
            QString reason;
            if (mirror->IsRefused(&reason)) outcome = Outcome::RefusedAt(mirror->GetRemotePath(), reason);
        }
        if (session.IsLost()) outcome = session.NoConnection();
        return !outcome.IsDone() || !context.printer.IsOpen();
    };
    session.WaitUntil(isOver, QDeadlineTimer(QDeadlineTimer::Forever));
    return outcome;
}

}  // namespace mctree
