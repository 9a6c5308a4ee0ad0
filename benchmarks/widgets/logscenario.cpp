// SPDX-License-Identifier: Apache-2.0
// The log display: many lines at once, lines at a rate, and lines that are far too long.
#include "eventrunner.h"
#include "scenario.h"
#include "stopwatch.h"
#include "turnmonitor.h"

#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

namespace {

constexpr int LinesPerSecond = 200;

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
    /// Of usual length, one in four with markup.
    void WriteUsual() {
        const int number = ++m_lines;
        const QString text = QStringLiteral(
                                 "%1 tuning channel 3 of client West to 30.150 MHz, attenuation 0 dB, "
                                 "averaging 100 ms, requested by the job master")
                                 .arg(number);
        Write(number % 4 == 0 ? QStringLiteral("<b>Warning</b> <font color=\"#c00000\">%1</font>").arg(text)
                              : text);
    }

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

void PlayRound(bench::Scoreboard& scoreboard, bool isQuick) {
    const double seconds = isQuick ? 2.0 : 6.0;  // long enough to reach the limit of lines
    Log log;
    const bench::Stopwatch watch;
    for (int i = 0; i < 1000; ++i)
        log.WriteUsual();
    bench::DrawAll();
    scoreboard.Add(QStringLiteral("log.lines"), watch.Seconds() * 1e3);

    PlayRate(scoreboard, "log.rate", seconds, [&log] { log.WriteUsual(); });
    const QString endless = QStringLiteral("far too long ").repeated(80000);
    PlayRate(scoreboard, "log.endless", seconds, [&log, &endless] { log.Write(endless); });
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
            {LimitRow("log, 1,000 lines until they are drawn", "log.lines", 1000.0),
             LimitRow("  200 lines a second, longest turn", "log.rate", 16.0),
             LimitRow("  200 lines of a megabyte a second, longest turn", "log.endless", 50.0)}};
}
