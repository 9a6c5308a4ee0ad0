// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../role.h"
#include "lightconnection.h"

#include <memory>
#include <vector>

namespace bench {

/// Many light clients, on few connections to NATS. The first one reports 0 when all of them follow the shared
/// road, and then how far all have come, by the road's numbers.
class LightClients final : public Role, public LightConnection::IHost {
  public:
    explicit LightClients(const Settings& settings);
    void Start() override;

  private:
    void OnTaken() override;
    void OnRoadNumber() override;
    int Number() const;
    void PlanReport();

    const int m_sessions;
    const int m_connectionCount;
    const int m_reportEvery;  ///< numbers
    const int m_enough;       ///< the number with which the work of these clients is done
    std::vector<std::unique_ptr<LightConnection>> m_connections;
    int m_taken = 0;
    int m_nextReport = 0;  ///< 0: none yet
    bool m_isOver = false;
};

}  // namespace bench
