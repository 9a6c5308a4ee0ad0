// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "road.h"
#include "role.h"

namespace bench {

/// A role at one end of the road that its settings name.
class RoadRole : public Role {
  protected:
    explicit RoadRole(const Settings& settings);

    const RoadSetup& GetSetup() const { return m_setup; }
    /// This server's end of the road, not yet open.
    std::unique_ptr<ServerEnd> MakeServerEnd() const;
    /// The end of client number \a client, not yet open.
    std::unique_ptr<ClientEnd> MakeClientEnd(int client) const;

  private:
    RoadSetup m_setup;
    const Road* m_road;
};

}  // namespace bench
