// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcskeys.h>

/// The key names of the ground transmitter suppression, in the tree and in the configuration. (fixed: names)
namespace gtskeys {

// clang-format off
// The tree: the node of the suppression, and the values of each module's node below it.
inline constexpr QLatin1String Server               = mcskeys::detail::Key("/ORVServer/");
inline constexpr QLatin1String Gts                  = mcskeys::detail::Key("GTS");  // a section of the configuration too
inline constexpr QLatin1String InputDiscretes       = mcskeys::detail::Key("InputDiscretes");
inline constexpr QLatin1String Index                = mcskeys::detail::Key("Index");  // of a module's section too
inline constexpr QLatin1String FrequencyAssignments = mcskeys::detail::Key("FrequencyAssignments");
inline constexpr QLatin1String Error                = mcskeys::detail::Key("ERROR");
inline constexpr QLatin1String Configured           = mcskeys::detail::Key("CONFIGURED");

// The configuration: the section "GTS", in it a section for each module, and in that the section of its
// assignments.
inline constexpr QLatin1String ModuleCount     = mcskeys::detail::Key("ModuleCount");
inline constexpr QLatin1String Module          = mcskeys::detail::Key("Module%1");
inline constexpr QLatin1String NotLoaded       = mcskeys::detail::Key("NotLoaded");
inline constexpr QLatin1String Name            = mcskeys::detail::Key("Name");
inline constexpr QLatin1String Address         = mcskeys::detail::Key("Address");
inline constexpr QLatin1String PollInterval    = mcskeys::detail::Key("PollInterval");
inline constexpr QLatin1String Assignments     = mcskeys::detail::Key("Assignments");
inline constexpr QLatin1String AssignmentCount = mcskeys::detail::Key("AssignmentCount");
inline constexpr QLatin1String Input           = mcskeys::detail::Key("DI_%1");
inline constexpr QLatin1String Label           = mcskeys::detail::Key("Label");
inline constexpr QLatin1String Labels          = mcskeys::detail::Key("Labels");  // a section like that of assignments
// clang-format on

/// The path of the node below which the data modules publish themselves.
inline QString NodePath() {
    return Server + Gts;
}

}  // namespace gtskeys
