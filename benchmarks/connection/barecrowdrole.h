// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "roadrole.h"
#include "stopwatch.h"

namespace bench {

/// As many bare connections to NATS as there are clients in a CrowdRole, made while messages are published;
/// tells how long it took until all of them listen. Then they go. What NATS alone does to others meanwhile.
class BareCrowdRole final : public RoadRole {
  public:
    explicit BareCrowdRole(const Settings& settings);
    void Start() override;

  private:
    void Come();

    const int m_count;
    std::unique_ptr<ClientEnd> m_scout;
    bool m_hasCome = false;
    std::vector<std::unique_ptr<ClientEnd>> m_ends;
    Stopwatch m_watch;
};

}  // namespace bench
