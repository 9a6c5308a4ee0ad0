// SPDX-License-Identifier: Apache-2.0
// From a keyed transmitter to the answer that its frequency is blanked, beside a bare polling loop. The
// modules are simulated in another process: its pipe and its event loop are part of each time, for both.
#include "edges.h"
#include "libmodbuspoller.h"
#include "ownpoller.h"
#include "plant.h"
#include "scenariochoice.h"
#include "scoreboard.h"
#include "statistics.h"

#include <QtCore/QLocale>
#include <QtWidgets/QApplication>

#include <vector>

namespace {

constexpr int Rounds = 3;
constexpr int Edges = 300;
constexpr int QuickEdges = 100;

template <class P>
void Play(bench::Scoreboard& scoreboard, const QString& who, int edges, unsigned seed) {
    bench::SimulatedModules modules;
    if (!modules.Start()) return scoreboard.Fail(QStringLiteral("the simulated modules do not start"));
    P poller;
    if (!poller.Start(modules.Port()))
        return scoreboard.Fail(who + QStringLiteral(": not all modules answer. ") + poller.Error());
    const bench::EdgeFigures figures = bench::PlayEdges(modules, poller, edges, seed);
    if (!figures.error.isEmpty()) return scoreboard.Fail(who + QStringLiteral(": ") + figures.error);
    scoreboard.Add(who + QStringLiteral(" p50"), bench::Median(figures.latencies));
    scoreboard.Add(who + QStringLiteral(" p99"), bench::Quantile(figures.latencies, 0.99));
    scoreboard.Add(who + QStringLiteral(" cpu"), figures.busyShare);
    scoreboard.Add(who + QStringLiteral(" heap"), figures.heapGrowth);
}

void PlayRound(bench::Scoreboard& scoreboard, int round, int edges) {
    const auto seed = static_cast<unsigned>(round) + 1;
    const auto playOurs = [&] { Play<bench::OwnPoller>(scoreboard, QStringLiteral("ours"), edges, seed); };
    const auto playPeer = [&] {
        Play<bench::LibmodbusPoller>(scoreboard, QStringLiteral("peer"), edges, seed);
    };
    // Neither always has the machine as the other left it.
    if (round % 2 == 0) playOurs();
    playPeer();
    if (round % 2 != 0) playOurs();
}

bench::Row RowOf(const char* title, const char* unit, double scale, const char* figure) {
    bench::Row row;
    row.title = QLatin1String(title);
    row.unit = QLatin1String(unit);
    row.scale = scale;
    row.ours = QStringLiteral("ours ") + QLatin1String(figure);
    return row;
}

bench::Row Limited(bench::Row row, double bound) {
    row.limit = bench::Row::AtMost;
    row.bound = bound;
    return row;
}

bench::Row Beside(bench::Row row, const char* figure) {
    row.peerName = QStringLiteral("libmodbus loop");
    row.peer = QStringLiteral("peer ") + QLatin1String(figure);
    return row;
}

// A poll may have just missed the edge; the rest is for the pipe, the network and the way to the GUI thread.
std::vector<bench::Row> Rows() {
    constexpr double Slack = 5.0;        // ms
    constexpr double HighestShare = 40;  // %
    constexpr double Noise = 8;          // KiB: less than one small block per edge
    const bench::Row median = RowOf("32 modules at 10 ms: keyed to blanked, p50", "ms", 1e3, "p50");
    const bench::Row late = RowOf("32 modules at 10 ms: keyed to blanked, p99", "ms", 1e3, "p99");
    const bench::Row cpu = RowOf("32 modules at 10 ms: CPU, of one core", "%", 100, "cpu");
    const bench::Row heap = RowOf("32 modules at 10 ms: growth of the heap", "KiB", 1.0 / 1024, "heap");
    return {Beside(median, "p50"), Limited(late, bench::plant::PollInterval + Slack),
            Beside(late, "p99"),   Limited(cpu, HighestShare),
            Beside(cpu, "cpu"),    Limited(heap, Noise)};
}

int Run(const bench::ScenarioChoice& choice) {
    const std::vector<bench::Row> rows = Rows();
    const QString name = QStringLiteral("suppression");
    if (!choice.Has(name, rows)) return 0;
    bench::Scoreboard scoreboard;
    choice.PlayRounds(name, Rounds, [&](int round) {
        PlayRound(scoreboard, round, choice.IsQuick() ? QuickEdges : Edges);
    });
    return scoreboard.Print(rows) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Modules that wait for their threads at the end of a round say so.
    if (qEnvironmentVariableIsEmpty("MCS_TRACE")) qputenv("MCS_TRACE", "2");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());

    return Run(
        bench::ScenarioChoice(QStringLiteral("Measures how fast a keyed transmitter blanks its frequency.")));
}
