// SPDX-License-Identifier: Apache-2.0
// The console's page of events: what one costs that comes while the page is shown, and what holds up the
// window once as many are kept as there may be.
#include "eventrunner.h"
#include "scenario.h"
#include "stopwatch.h"
#include "turnmonitor.h"

#include <apps/mcconsole/events/eventexporter.h>
#include <apps/mcconsole/events/eventspage.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>

#include <vector>

namespace {

constexpr int EventsPerSecond = 1000;
constexpr int AlonePerSecond = 3;  // nothing of one is left to be done when the next one comes
constexpr int RowHeight = 24;
constexpr int AtOnce = 2000;  // events that come in one turn while the page is filled

/// The events of a server, and a page of them.
class Events {
  public:
    Events()
        : m_event(new values::Value<QString>()),
          m_page({[] { return nullptr; }, [] { return QStringLiteral("bench"); }, [] { return QString(); }}) {
        m_event->SetName(QStringLiteral("Event"));
        m_event->SetDelivery(values::EDelivery::EveryChange);
        values::Tree::Instance()->AddValue(QStringLiteral("/Bench/Status"), m_event);
        m_page.Bind(QStringLiteral("/Bench"), AllSegments);
        m_page.resize(1000, 600);
        m_page.show();
        bench::DrawAll();
    }
    ~Events() { values::Tree::Instance()->Delete(m_event); }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;

    void Tell(const QString& text) { m_event->SetValue(text); }
    void Happen() { Tell(Text(++m_last)); }
    std::vector<QString> MakeNext(int count) {
        std::vector<QString> texts;
        for (int i = 0; i < count; ++i)
            texts.push_back(Text(++m_last));
        return texts;
    }
    void Fill() {
        while (!m_page.GetModel().GetList().IsFull()) {
            for (int i = 0; i < AtOnce; ++i)
                Happen();
            const bench::Stopwatch watch;
            while (watch.Seconds() < 3 * std::chrono::duration<double>(EventFeed::BatchTime).count())
                QApplication::processEvents();
        }
    }
    EventsPage& Page() { return m_page; }
    template <class W>
    W* Find(const char* name) const {
        return m_page.findChild<W*>(QString::fromLatin1(name));
    }
    QScrollBar* Bar() const { return Find<QTableView>("EventsTable")->verticalScrollBar(); }
    bool IsFiltering() const { return m_page.GetModel().IsFiltering(); }

  private:
    /// As a server tells it that tunes MpxORVs.
    static QString Text(int number) {
        static const QDateTime begin(QDate(2026, 11, 22), QTime(14, 3, 21), Qt::UTC);
        Event event;
        event.number = number;
        event.time = begin.addMSecs(number * qint64(100));
        event.severity = number % 4 == 0 ? EEventSeverity::Notice : EEventSeverity::Info;
        event.source = QStringLiteral("MpxORV West %1").arg(number % 5);
        event.who = QStringLiteral("mcconsole on t%1 (192.0.2.7:50123)").arg(number % 7);
        const QString frequency = QStringLiteral("%1.25 MHz").arg(118 + number % 18);
        event.said = CodedText(ECode::Tuned,
                               {CodedText(frequency), CodedText(QStringLiteral("West %1").arg(number % 5))});
        event.text = event.said.ToEnglish();
        return event.ToJson();
    }

    values::Value<QString>* m_event;  ///< owned by the tree
    EventsPage m_page;
    int m_last = 0;
};

/// The least that showing a line costs: a window with nothing in it draws one.
class BareLine final : public QWidget {
  public:
    BareLine() {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(1000, 600);
        show();
        bench::DrawAll();
    }
    void Tell(const QString& text) {
        m_text = text;
        update(0, height() - RowHeight, width(), RowHeight);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.fillRect(event->rect(), palette().base());
        painter.drawText(4, height() - RowHeight / 4, m_text);
    }

  private:
    QString m_text;
};

/// Of the processor. What the events are made of is ready before.
template <class Shown>
double SecondsPerText(Shown& shown, const std::vector<QString>& texts, double seconds, int perSecond) {
    std::size_t count = 0;
    const bench::Stopwatch watch;
    bench::RunAtRate(seconds, perSecond, [&] {
        if (count < texts.size()) shown.Tell(texts[count++]);
    });
    bench::DrawAll();
    return watch.BusySeconds() / static_cast<double>(count);
}

double SecondsPerEvent(Events& events, double seconds, int perSecond) {
    const auto texts = events.MakeNext(static_cast<int>(perSecond * (seconds + 1.0)));
    return SecondsPerText(events, texts, seconds, perSecond);
}

/// As long as an event of the bench is on its row.
double SecondsPerBareLine(double seconds, int perSecond) {
    BareLine line;
    std::vector<QString> texts;
    for (int i = 0; i < static_cast<int>(perSecond * (seconds + 1.0)); ++i)
        texts.push_back(QStringLiteral("Info 2026-11-22 14:03:%1.100 MpxORV West 1 "
                                       "mcconsole on t1 (192.0.2.7:50123) 121.25 MHz is held by West 1")
                            .arg(10 + i % 50));
    return SecondsPerText(line, texts, seconds, perSecond);
}

void AddLongestTurn(bench::Scoreboard& scoreboard, const char* key, double seconds, int perSecond,
                    const std::function<void()>& act) {
    bench::TurnMonitor monitor;
    monitor.Start();
    bench::RunAtRate(seconds, perSecond, act);
    scoreboard.Add(QString::fromLatin1(key), monitor.LongestBusySeconds() * 1e3);
}

/// What an operator does while many events are kept.
void PlayFull(bench::Scoreboard& scoreboard, Events& events, double seconds) {
    AddLongestTurn(scoreboard, "events.come", seconds, 100, [&] { events.Happen(); });
    int step = 0;
    AddLongestTurn(scoreboard, "events.scroll", seconds, 50, [&] {
        QScrollBar* const bar = events.Bar();
        bar->setValue(++step % 10 == 0 ? bar->maximum() * (step / 10 % 7) / 7 : bar->value() - 72);
    });
    auto* const follow = events.Find<QPushButton>("EventsFollow");
    AddLongestTurn(scoreboard, "events.follow", seconds, 10, [&] { follow->toggle(); });
    const QTemporaryDir directory;
    EventExporter exporter(events.Page().GetModel());
    AddLongestTurn(scoreboard, "events.export", seconds, 10, [&] {
        if (!exporter.IsRunning())
            exporter.Start(directory.filePath(QStringLiteral("events")), eventexport::EFormat::Csv, QString(),
                           QDateTime());
    });
    const QString typed = QStringLiteral("west 3");
    int letters = 0;
    AddLongestTurn(scoreboard, "events.search", 2 * seconds, 10, [&] {
        events.Find<QLineEdit>("EventsSearch")->setText(typed.left(letters++ % (typed.size() + 1)));
    });
}

void PlayRound(bench::Scoreboard& scoreboard, bool isQuick) {
    const double seconds = isQuick ? 1.0 : 3.0;
    Events events;
    scoreboard.Add(QStringLiteral("events.event"), SecondsPerEvent(events, seconds, EventsPerSecond));
    scoreboard.Add(QStringLiteral("events.alone"), SecondsPerEvent(events, 2 * seconds, AlonePerSecond));
    scoreboard.Add(QStringLiteral("events.bare"), SecondsPerBareLine(2 * seconds, AlonePerSecond));
    events.Fill();
    PlayFull(scoreboard, events, seconds);
}

bench::Row EventRow(const char* title, const char* key, double scale, const char* unit, double bound) {
    bench::Row row;
    row.title = QString::fromLatin1(title);
    row.unit = QString::fromLatin1(unit);
    row.scale = scale;
    row.ours = QString::fromLatin1(key);
    row.limit = bound > 0.0 ? bench::Row::AtMost : bench::Row::Information;
    row.bound = bound;
    return row;
}

bench::Row AloneRow() {
    bench::Row row = EventRow("  3/s, each drawn alone: CPU", "events.alone", 1e6, "us", 4.0);
    row.peerName = QStringLiteral("a window of one line");
    row.peer = QStringLiteral("events.bare");
    return row;
}

}  // namespace

bench::Scenario bench::EventsScenario() {
    return {
        QStringLiteral("events"),
        3,
        PlayRound,
        {EventRow("event with the page shown, 1,000/s: CPU", "events.event", 1e6, "us", 100.0), AloneRow(),
         EventRow("20,000 events kept, 100 more a second, longest turn", "events.come", 1.0, "ms", 16.0),
         EventRow("  scrolled, longest turn", "events.scroll", 1.0, "ms", 16.0),
         EventRow("  followed and not, longest turn", "events.follow", 1.0, "ms", 16.0),
         EventRow("  exported, longest turn", "events.export", 1.0, "ms", 16.0),
         EventRow("  a search typed letter by letter, longest turn", "events.search", 1.0, "ms", 16.0)}};
}
