// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcskeys.h>

/// Names in the server's tree that are its own, beside those of the library.
namespace serverkeys {

/// Among the commands, where the server has input modules: connects those in error anew.
inline constexpr QLatin1String ReconnectModules = mcskeys::detail::Key("ReconnectModules");

}  // namespace serverkeys
