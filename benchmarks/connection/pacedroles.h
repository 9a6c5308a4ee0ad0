// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "roadrole.h"

#include <QtCore/QTimer>

namespace bench {

/// Changes some of the values every millisecond, each content being the time, and tells how much its heap has
/// grown at most meanwhile. One value more than the setting says ends the measurement when it changes.
class PacedServer final : public RoadRole {
  public:
    explicit PacedServer(const Settings& settings);
    void Start() override;

  private:
    void TakeReport();
    void SetSome();

    std::unique_ptr<ServerEnd> m_end;
    QTimer m_timer;
    const int m_interval;  ///< ms
    int m_present = 0;
    int m_turns;
    int m_turn = 0;
    int m_next = 0;
    std::size_t m_heapAtStart = 0;
    std::size_t m_highestHeap = 0;
};

/// Some of the clients; tells how long changes took to them.
class PacedClient final : public RoadRole {
  public:
    explicit PacedClient(const Settings& settings);
    void Start() override;

  private:
    void TakeChange(int index, int content);

    std::vector<std::unique_ptr<ClientEnd>> m_ends;
    std::vector<double> m_microseconds;
    std::size_t m_ended = 0;
};

}  // namespace bench
