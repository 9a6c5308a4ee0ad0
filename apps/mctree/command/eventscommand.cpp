// SPDX-License-Identifier: Apache-2.0
#include <apps/common/event.h>
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/mirror/mirror.h>
#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QDateTime>

#include <algorithm>
#include <memory>

namespace mctree {

namespace {

const QLatin1String StatusPath("/MultiChannelServer/Status");
const QLatin1String EventPath("/MultiChannelServer/Status/Event");
const QLatin1String HistoryPath("/MultiChannelServer/Status/EventHistory");
constexpr int DefaultCount = 20;
constexpr int PageCount = 100;

EColour ColourOf(EEventSeverity severity) {
    return severity >= EEventSeverity::Warning ? EColour::Warning : EColour::Plain;
}

/// Prints events, each once.
class EventPrinter : public IObserver {
  public:
    explicit EventPrinter(const Context& context) : m_context(context), m_event(*this) {}

    void Print(const QString& json) {
        const std::optional<Event> event = Event::FromJson(json);
        if (!event || event->number <= m_last) return;
        m_last = event->number;
        Printer& printer = m_context.printer;
        if (m_context.arguments.isJson) return printer.WriteLine(json);
        const QString time = event->time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        const QString severity =
            QString(eventcodes::SeverityName(event->severity)).leftJustified(7, QLatin1Char(' '));
        const QString what = QStringLiteral("%1: %2").arg(event->source, event->text);
        printer.WriteLine(printer.Painted(time, EColour::Faint) + QLatin1Char(' ') +
                          printer.Painted(severity, ColourOf(event->severity)) + QLatin1Char(' ') +
                          safetext::Escaped(what));
    }
    void Follow(values::Value<QString>* value) { m_event.Begin(value); }

    void Update(Observable* source, TChangeCode code) override {
        if (m_event.EndIfGoingAway(source, code) || code != changecode::ContentChanged) return;
        Print(m_event->GetValue());
        m_context.printer.Flush();
    }

  private:
    const Context& m_context;
    Observation<values::Value<QString>> m_event;
    qint64 m_last = 0;
};

/// The last \a count events, the oldest first.
Outcome CollectEvents(const Context& context, int count, QStringList* texts) {
    Session& session = context.session;
    quint64 before = 0;
    while (texts->size() < count) {
        // Shared, since an answer may still come when nobody waits any more.
        const auto page = std::make_shared<std::optional<VtHistoryPage>>();
        const auto take = [page, &session](const VtHistoryPage& answer) {
            *page = answer;
            session.Wake();
        };
        const int wanted = std::min(PageCount, count - texts->size());
        if (!session.Client().Recall(EventPath, before, wanted, take)) return session.NoConnection();
        session.WaitUntil([&page] { return page->has_value(); }, QDeadlineTimer(QDeadlineTimer::Forever));
        if (!*page) return Session::Interrupted(EExitCode::NoConnection);
        if (!session.Client().IsConnected()) return session.NoConnection();
        if (!(*page)->refusal.isEmpty()) return Outcome::RefusedAt(EventPath, (*page)->refusal);
        *texts = (*page)->texts + *texts;
        before = (*page)->next;
        if (before == 0) break;
    }
    return Outcome();
}

}  // namespace

Outcome RunEvents(const Context& context) {
    Session& session = context.session;
    Mirrors mirrors;
    mirrors.push_back(std::make_unique<Mirror>(session, StatusPath, EPurpose::Look));
    Outcome outcome = Settle(session, mirrors, QDeadlineTimer(context.arguments.Timeout()));
    const Mirror& status = *mirrors.front();
    if (outcome.IsDone() && !status.IsEstablished()) outcome = NotHere(status);
    if (!outcome.IsDone()) return outcome;
    // A server that does not say so would end the session of whoever asks.
    if (status.ItemAt(HistoryPath) == nullptr)
        return {EExitCode::Refused, QStringLiteral("this server keeps no events")};
    EventPrinter printer(context);
    QStringList texts;
    const int count = context.arguments.count;
    outcome = CollectEvents(context, count > 0 ? count : DefaultCount, &texts);
    if (!outcome.IsDone()) return outcome;
    for (const QString& text : texts)
        printer.Print(text);
    context.printer.Flush();
    if (!context.arguments.isFollowing) return outcome;
    printer.Follow(dynamic_cast<values::Value<QString>*>(status.ItemAt(EventPath)));
    session.WaitUntil([&session] { return !session.Client().IsConnected(); },
                      QDeadlineTimer(QDeadlineTimer::Forever));
    return session.IsInterrupted() ? Outcome() : session.NoConnection();
}

}  // namespace mctree
