// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "roadrole.h"
#include "stopwatch.h"

#include <QtCore/QTimer>

#include <chrono>

namespace bench {

/// Changes the values one after the other, all of them in each turn of the event loop, at most so far ahead
/// of the slowest client; tells the rate and what it cost. Change number n, from 0, sets value n % values to
/// n. With "steps" it tells "step" after each turn and waits to be told to go on: it meets all that the
/// clients have answered at once, and does the same in every run.
class StreamServer final : public RoadRole {
  public:
    explicit StreamServer(const Settings& settings);
    void Start() override { m_end->Open(); }

  private:
    void TakeReport(int client, int content);
    void Rest();
    void StartStage(int changes);
    void SetAll();
    void TellRate() const;

    std::unique_ptr<ServerEnd> m_end;
    std::vector<int> m_received;  ///< how far each client has come; -1 while it is not there
    int m_farthestAhead;
    int m_warmUp;
    int m_total;
    std::chrono::milliseconds m_rest;  ///< before it begins
    bool m_isInSteps;
    bool m_isStepUnderWay = false;
    int m_stageEnd = 0;
    int m_sent = 0;
    int m_slowest = -1;
    double m_busyAtRest = 0.0;      ///< as a share of the time
    double m_busyUntilFirst = 0.0;  ///< client had everything, beyond that: what reports cost is not in it
    Stopwatch m_watch;
    QTimer m_nextTurn;
};

/// Some of the clients: each checks that every change comes, in order, and reports how far it has come. With
/// "steps" it tells "step" whenever all of them have had a turn of changes, and have sent what follows from
/// it.
class StreamClient final : public RoadRole {
  public:
    explicit StreamClient(const Settings& settings);
    void Start() override { OpenNext(); }

  private:
    struct Follower {
        std::unique_ptr<ClientEnd> end;
        int received = 0;
    };

    void OpenNext();
    void TakeChange(Follower& follower, int index, int content);
    void EndStep();
    void EndStage(int received);

    std::vector<Follower> m_followers;
    std::size_t m_opened = 0;
    int m_warmUp;
    int m_total;
    int m_reportEvery;
    bool m_isInSteps;
    int m_atStepEnd = 0;
    int m_atStageEnd = 0;
    Stopwatch m_watch;
};

}  // namespace bench
