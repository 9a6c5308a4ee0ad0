// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcskeys.h>

/// What the server publishes of its suppression, in a node of its status. docs/suppression.md says what each
/// means.
namespace suppressionkeys {

// clang-format off
inline constexpr QLatin1String Suppression             = mcskeys::detail::Key("Suppression");
inline constexpr QLatin1String ModuleCount             = mcskeys::detail::Key("ModuleCount");
inline constexpr QLatin1String AnsweringModules        = mcskeys::detail::Key("AnsweringModules");
inline constexpr QLatin1String KeyedFrequencies        = mcskeys::detail::Key("KeyedFrequencies");
inline constexpr QLatin1String UnsupervisedFrequencies = mcskeys::detail::Key("UnsupervisedFrequencies");
inline constexpr QLatin1String Modules                 = mcskeys::detail::Key("Modules");

// Of a module, and "Name" of an input too.
inline constexpr QLatin1String Name                    = mcskeys::detail::Key("Name");
inline constexpr QLatin1String Type                    = mcskeys::detail::Key("Type");
inline constexpr QLatin1String Address                 = mcskeys::detail::Key("Address");
inline constexpr QLatin1String PollInterval            = mcskeys::detail::Key("PollInterval");
inline constexpr QLatin1String State                   = mcskeys::detail::Key("State");
inline constexpr QLatin1String Reason                  = mcskeys::detail::Key("Reason");
inline constexpr QLatin1String StateSince              = mcskeys::detail::Key("StateSince");
inline constexpr QLatin1String AnswersAgainSince       = mcskeys::detail::Key("AnswersAgainSince");
inline constexpr QLatin1String LastAnswer              = mcskeys::detail::Key("LastAnswer");
inline constexpr QLatin1String Inputs                  = mcskeys::detail::Key("Inputs");

// Of an input.
inline constexpr QLatin1String Frequency               = mcskeys::detail::Key("Frequency");
inline constexpr QLatin1String Keyed                   = mcskeys::detail::Key("Keyed");
inline constexpr QLatin1String KeyedSince              = mcskeys::detail::Key("KeyedSince");
inline constexpr QLatin1String LastBlanked             = mcskeys::detail::Key("LastBlanked");

// What "State" says.
inline constexpr QLatin1String Connected               = mcskeys::detail::Key("Connected");
inline constexpr QLatin1String Disconnected            = mcskeys::detail::Key("Disconnected");
inline constexpr QLatin1String Error                   = mcskeys::detail::Key("Error");
// clang-format on

/// The path of the node.
inline QString NodePath() {
    return mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), Suppression);
}

}  // namespace suppressionkeys
