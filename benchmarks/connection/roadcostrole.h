// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "roadrole.h"
#include "stopwatch.h"

#include <QtCore/QTimer>

#include <vector>

namespace bench {

/// What it costs a server to have clients and to tell them by a shared road: at rest, with so many changes in
/// a second, and as fast as the slowest client allows. Clients report how far they are by the road's numbers.
class RoadCostServer final : public RoadRole {
  public:
    explicit RoadCostServer(const Settings& settings);
    void Start() override { m_end->Open(); }

  private:
    enum class EStage { Gathering, Resting, Pacing, Draining, Flooding, Ending, Over };

    /// What was done in a stage, and what that took.
    struct Cost {
        double changes = 0.0;
        double seconds = 0.0;
        double busy = 0.0;

        double PerMillion(double loadAtRest) const { return (busy - loadAtRest * seconds) / changes * 1e6; }
    };

    void TakeReport(int client, int number);
    void OnAllThere();
    void StartTurns(EStage stage, int turns, int interval);
    void OnTurn();
    void EndTurns();
    bool IsFarAhead() const;
    bool IsAllHeard() const;
    void GoOnIfHeard();
    void Tell();

    std::unique_ptr<ServerEnd> m_end;
    std::vector<int> m_heard;  ///< the numbers that each client reported last; -1: it is not there
    const int m_reportEvery;
    const int m_interval;  ///< ms, while it keeps a pace
    const int m_pacedTurns;
    const int m_floodTurns;
    const int m_farthestAhead;  ///< turns, of the slowest client
    EStage m_stage = EStage::Gathering;
    double m_loadAtRest = 0.0;  ///< as a share of the time
    Cost m_paced, m_flood;
    int m_turn = 0;
    int m_turns = 0;
    int m_numberAtStart = 0;  ///< of the road, and of the stage
    int m_content = 0;
    Stopwatch m_watch;
    QTimer m_nextTurn;
};

}  // namespace bench
