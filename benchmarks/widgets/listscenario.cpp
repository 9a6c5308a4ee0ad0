// SPDX-License-Identifier: Apache-2.0
// The table of MpxORVs with many rows: changes at a high rate, a burst of them, and rows that come and go.
#include "eventrunner.h"
#include "scenario.h"
#include "stopwatch.h"
#include "turnmonitor.h"

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>

#include <platform/values/tree.h>

#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int Rows = 10000;
constexpr int ChangesPerSecond = 10000;
constexpr double LongestTurn = 16.0;      // ms: a frame of the screen
constexpr double MostForSingles = 500.0;  // ms: more if each is looked for among all
constexpr double MostForAllGoing = 80.0;  // ms: more if somebody looks at all for each

const QString Parent = QStringLiteral("/MultiChannelServer/DynamicMpxORVs");

/// The MpxORVs of a server, and what it writes of them.
class Server {
  public:
    Server() {
        for (int i = 0; i < Rows; ++i)
            m_statuses.push_back(
                std::make_unique<MCSMpxORVStatus>(Parent + QStringLiteral("/Client%1/Status").arg(i)));
    }

    /// Anything of any MpxORV, so that most are not to be seen and some are.
    void ChangeOne() {
        MCSMpxORVStatus& status = *m_statuses[m_random() % m_statuses.size()];
        const int number = ++m_changes;
        switch (number % 3) {
            case 0:
                status.GetOperationModeValue()->SelectIndex(
                    (status.GetOperationModeValue()->GetCurrentIndex() + 1) % 8);
                break;
            case 1:
                status.SetOperationType(QStringLiteral("Wideband %1").arg(number));
                break;
            default:
                status.SetComment(QStringLiteral("since %1").arg(number));
                break;
        }
    }

    void RemoveAll() {
        m_statuses.clear();
        values::Tree* const tree = values::Tree::Instance();
        tree->Delete(tree->FindItem(Parent));
    }

  private:
    std::vector<std::unique_ptr<MCSMpxORVStatus>> m_statuses;
    std::minstd_rand m_random{1};
    int m_changes = 0;
};

void MeasureBusyMilliseconds(bench::Scoreboard& scoreboard, const char* key,
                             const std::function<void()>& act) {
    const bench::Stopwatch watch;
    act();
    scoreboard.Add(QString::fromLatin1(key), watch.BusySeconds() * 1e3);
}

void PlayRound(bench::Scoreboard& scoreboard, bool isQuick) {
    Server server;
    MCSMpxORVStatusListDisplay display;
    display.resize(1000, 700);
    display.show();
    MeasureBusyMilliseconds(scoreboard, "list.come", [&] { display.AddMpxORVs_ValuePath(Parent); });
    bench::DrawAll();

    bench::TurnMonitor monitor;
    monitor.Start();
    const double rate =
        bench::RunAtRate(isQuick ? 2.0 : 5.0, ChangesPerSecond, [&server] { server.ChangeOne(); });
    scoreboard.Add(QStringLiteral("list.rate"), rate);
    scoreboard.Add(QStringLiteral("list.busy"), monitor.LongestBusySeconds() * 1e3);
    scoreboard.Add(QStringLiteral("list.wall"), monitor.LongestSeconds() * 1e3);

    MeasureBusyMilliseconds(scoreboard, "list.burst", [&server] {
        for (int i = 0; i < ChangesPerSecond; ++i)
            server.ChangeOne();
        bench::DrawAll();
    });
    MeasureBusyMilliseconds(scoreboard, "list.go", [&server] {
        server.RemoveAll();
        bench::DrawAll();
    });
    values::Tree::Instance()->ProvideNode(Parent);
    display.AddMpxORVs_ValuePath(Parent);
    MeasureBusyMilliseconds(scoreboard, "list.single", [] {
        for (int i = 0; i < Rows; ++i)
            values::Tree::Instance()->ProvideNode(Parent + QStringLiteral("/Client%1").arg(i));
        bench::DrawAll();
    });
    server.RemoveAll();
}

bench::Row TurnRow(const char* title, const char* key, bench::Row::ELimit limit, double bound = LongestTurn) {
    bench::Row row;
    row.title = QString::fromLatin1(title);
    row.unit = QStringLiteral("ms");
    row.ours = QString::fromLatin1(key);
    row.limit = limit;
    row.bound = bound;
    return row;
}

}  // namespace

bench::Scenario bench::ListScenario() {
    Row rate;
    rate.title = QStringLiteral("list of 10,000 MpxORVs, changes a second");
    rate.ours = QStringLiteral("list.rate");
    rate.limit = Row::AtLeast;
    rate.bound = 0.99 * ChangesPerSecond;
    return {QStringLiteral("list of MpxORVs"),
            3,
            PlayRound,
            {rate, TurnRow("  longest turn, processor", "list.busy", Row::AtMost),
             TurnRow("  longest turn, clock", "list.wall", Row::Information),
             TurnRow("  10,000 changes in one turn", "list.burst", Row::Information),
             TurnRow("  all rows come at once", "list.come", Row::Information),
             TurnRow("  all rows come one by one", "list.single", Row::AtMost, MostForSingles),
             TurnRow("  all go with their parent", "list.go", Row::AtMost, MostForAllGoing)}};
}
