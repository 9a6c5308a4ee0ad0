// SPDX-License-Identifier: Apache-2.0
// The log display: many lines at once, lines at a rate, lines that are far too long, and messages that are
// hard to show.
#include "eventrunner.h"
#include "scenario.h"
#include "stopwatch.h"
#include "turnmonitor.h"

#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtWidgets/QTextEdit>

#include <algorithm>
#include <vector>

namespace {

constexpr int LinesPerSecond = 200;
constexpr int ManyLinesPerSecond = 1000;
constexpr int MostLines = 1000;  // as the display has it
constexpr int MessageLength = 65536;

/// Of usual length, one in four with markup.
QString UsualLine(int number) {
    const QString text = QStringLiteral(
                             "%1 tuning channel 3 of client West to 30.150 MHz, attenuation 0 dB, "
                             "averaging 100 ms, requested by the job master")
                             .arg(number);
    return number % 4 == 0 ? QStringLiteral("<b>Warning</b> <font color=\"#c00000\">%1</font>").arg(text)
                           : text;
}

/// The log message of a server, and a display of it.
class Log {
  public:
    Log() : m_message(new values::Value<QString>()) {
        m_message->SetName(QStringLiteral("LogMessage"));
        m_message->SetDelivery(values::EDelivery::EveryChange);
        values::Tree::Instance()->AddValue(QStringLiteral("/MultiChannelServer/Status"), m_message);
        m_display.SetLogMessage_ValuePath(m_message->GetPathName());
        m_display.resize(1000, 700);
        m_display.show();
        bench::DrawAll();
    }
    ~Log() { values::Tree::Instance()->Delete(m_message); }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    void Write(const QString& line) { m_message->SetValue(line); }
    void WriteUsual() { Write(UsualLine(++m_lines)); }
    /// Draws what has come.
    void Draw() { m_display.findChild<QTextEdit*>()->viewport()->repaint(); }

  private:
    values::Value<QString>* m_message;  ///< owned by the tree
    MCSLogDisplay m_display;
    int m_lines = 0;
};

void PlayRate(bench::Scoreboard& scoreboard, const char* key, double seconds,
              const std::function<void()>& write) {
    bench::TurnMonitor monitor;
    monitor.Start();
    bench::RunAtRate(seconds, LinesPerSecond, write);
    scoreboard.Add(QString::fromLatin1(key), monitor.LongestBusySeconds() * 1e3);
}

/// Seconds of the processor that a line takes which comes while the page is shown.
double SecondsPerLine(double seconds, const std::function<void()>& write) {
    int lines = 0;
    const bench::Stopwatch watch;
    bench::RunAtRate(seconds, ManyLinesPerSecond, [&] {
        write();
        ++lines;
    });
    bench::DrawAll();
    return watch.BusySeconds() / lines;
}

/// Each line in a text area as it is, drawn at once.
double SecondsPerPlainLine(double seconds) {
    QTextEdit area;
    area.setReadOnly(true);
    area.setUndoRedoEnabled(false);
    area.setWordWrapMode(QTextOption::NoWrap);
    area.resize(1000, 700);
    area.show();
    bench::DrawAll();
    int lines = 0;
    return SecondsPerLine(seconds, [&] {
        area.append(UsualLine(++lines));
        if (area.document()->blockCount() > MostLines) area.clear();
        area.viewport()->repaint();
    });
}

/// Messages of full length that are hard to show, each in its own way.
std::vector<QString> HardMessages() {
    const auto filled = [](const char* text) {
        const QString unit = QString::fromUtf8(text);
        return unit.repeated(MessageLength / unit.size());
    };
    return {filled("tuning channel 3 of client West, "),
            filled("\n"),
            filled("x\xE2\x80\xA8"),
            filled("\xE0\xB8\x81"),
            filled("\xE0\xB8\x81\xCE\xB1\xE2\x80\xA8"),
            filled("a\xD7\x90"),
            filled("x\t"),
            QLatin1Char('a') + filled("\xCC\x81").mid(1),
            filled("<b>x"),
            filled("<b>x</b> "),
            filled("x<br>"),
            filled("<p>x"),
            filled("<img src=x>"),
            filled("<ul><li>x"),
            filled("<table><tr><td>x</table>"),
            QStringLiteral("<table><tr><td>").repeated(12) + filled("word "),
            QStringLiteral("<table>") + QStringLiteral("<td>x").repeated(30) +
                (QStringLiteral("<tr>") + QStringLiteral("<td>x").repeated(30)).repeated(29)};
}

/// The longest time of the processor for a message, until it is drawn.
double LongestSeconds() {
    double longest = 0.0;
    for (const QString& message : HardMessages()) {
        Log log;
        log.Write(message.left(100));  // the fonts are found
        log.Draw();
        const bench::Stopwatch watch;
        log.Write(message.left(MessageLength));
        log.Draw();
        longest = std::max(longest, watch.BusySeconds());
    }
    return longest;
}

void PlayRound(bench::Scoreboard& scoreboard, bool isQuick) {
    const double seconds = isQuick ? 2.0 : 6.0;  // long enough to reach the limit of lines
    {
        Log log;
        const bench::Stopwatch watch;
        for (int i = 0; i < MostLines; ++i)
            log.WriteUsual();
        bench::DrawAll();
        scoreboard.Add(QStringLiteral("log.lines"), watch.Seconds() * 1e3);

        PlayRate(scoreboard, "log.rate", seconds, [&log] { log.WriteUsual(); });
        const QString endless = QStringLiteral("far too long ").repeated(80000);
        PlayRate(scoreboard, "log.endless", seconds, [&log, &endless] { log.Write(endless); });
    }
    {
        Log log;
        scoreboard.Add(QStringLiteral("log.line"), SecondsPerLine(seconds, [&log] { log.WriteUsual(); }));
    }
    scoreboard.Add(QStringLiteral("log.plain line"), SecondsPerPlainLine(seconds));
    scoreboard.Add(QStringLiteral("log.hard"), LongestSeconds() * 1e3);
}

bench::Row LimitRow(const char* title, const char* key, double bound) {
    bench::Row row;
    row.title = QString::fromLatin1(title);
    row.unit = QStringLiteral("ms");
    row.ours = QString::fromLatin1(key);
    row.limit = bench::Row::AtMost;
    row.bound = bound;
    return row;
}

}  // namespace

bench::Scenario bench::LogScenario() {
    return {QStringLiteral("log"),
            3,
            PlayRound,
            {{QStringLiteral("log line with the page shown, 1,000/s: CPU"), QStringLiteral("us"), 1e6,
              QStringLiteral("log.line"), QStringLiteral("append and repaint"),
              QStringLiteral("log.plain line"), Row::AtMost, 0.15},
             LimitRow("log, 1,000 lines until they are drawn", "log.lines", 1000.0),
             LimitRow("  200 lines a second, longest turn", "log.rate", 16.0),
             LimitRow("  200 lines of a megabyte a second, longest turn", "log.endless", 50.0),
             LimitRow("  the hardest message of 64 KiB until it is drawn", "log.hard", 250.0)}};
}
