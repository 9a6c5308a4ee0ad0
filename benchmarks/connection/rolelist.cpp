// SPDX-License-Identifier: Apache-2.0
#include "barecrowdrole.h"
#include "crowdrole.h"
#include "pacedroles.h"
#include "roadcostrole.h"
#include "role.h"
#include "roundtriproles.h"
#include "stalledrole.h"
#include "streamroles.h"
#include "treeroles.h"
#include "valueroles.h"

namespace bench {

const std::vector<RoleEntry>& AllRoles() {
    static const std::vector<RoleEntry> roles = {
        RoleEntry::Of<RoundTripServer>("roundtrip-server"),
        RoleEntry::Of<RoundTripClient>("roundtrip-client"),
        RoleEntry::Of<StreamServer>("stream-server"),
        RoleEntry::Of<StreamClient>("stream-client"),
        RoleEntry::Of<PacedServer>("paced-server"),
        RoleEntry::Of<PacedClient>("paced-client"),
        RoleEntry::Of<RoadCostServer>("roadcost-server"),
        RoleEntry::Of<TreeServer>("tree-server"),
        RoleEntry::Of<TreeClient>("tree-client"),
        RoleEntry::Of<CrowdRole>("crowd"),
        RoleEntry::Of<BareCrowdRole>("bare-crowd"),
        RoleEntry::Of<StalledClient>("stalled-client"),
        RoleEntry::Of<SetRole>("set"),
        RoleEntry::Of<FindRole>("find"),
    };
    return roles;
}

}  // namespace bench
