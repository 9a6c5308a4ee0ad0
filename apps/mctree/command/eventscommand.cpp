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
constexpr int MostMissed = 2000;  // a server keeps no more

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
        if (CountMissing() > 0) return m_context.session.Wake();
        Print(m_event->GetValue());
        m_context.printer.Flush();
    }

    /// How many events are missing before the one that came last. While there are some none is printed.
    qint64 CountMissing() const {
        const std::optional<Event> event = m_event ? Event::FromJson(m_event->GetValue()) : std::nullopt;
        return event && m_last != 0 ? event->number - m_last - 1 : 0;
    }
    /// Prints \a texts, which end with the newest; what is still missing then nobody has any more.
    void Fill(const QStringList& texts) {
        const std::optional<Event> first = texts.isEmpty() ? std::nullopt : Event::FromJson(texts.front());
        const qint64 lost = first ? first->number - m_last - 1 : CountMissing();
        if (lost > 0)
            m_context.tell(QStringLiteral("%1 events are lost: the server does not keep so many").arg(lost));
        for (const QString& text : texts)
            Print(text);
        if (m_event) Print(m_event->GetValue());
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
    // What was missed although the connection held is asked for.
    while (!session.IsInterrupted() && session.Client().IsConnected()) {
        session.WaitUntil([&] { return !session.Client().IsConnected() || printer.CountMissing() > 0; },
                          QDeadlineTimer(QDeadlineTimer::Forever));
        const qint64 missing = printer.CountMissing();
        if (missing <= 0 || session.IsInterrupted()) break;
        texts.clear();
        outcome = CollectEvents(context, static_cast<int>(std::min<qint64>(missing + 1, MostMissed)), &texts);
        if (!outcome.IsDone()) return outcome;
        printer.Fill(texts);
    }
    return session.IsInterrupted() ? Outcome() : session.NoConnection();
}

}  // namespace mctree
