// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcskeys.h>

/// Names in the server's tree that are its own, beside those of the library.
namespace serverkeys {

/// Among the commands, where the server has input modules: connects those in error anew.
inline constexpr QLatin1String ReconnectModules = mcskeys::detail::Key("ReconnectModules");

/// Below the status: the job master, as two texts, which are empty while there is none; and what it receives,
/// from and to, in Hz, both 0 while it is not tuned.
inline constexpr QLatin1String Master = mcskeys::detail::Key("Master");
inline constexpr QLatin1String MasterName = mcskeys::detail::Key("Name");
inline constexpr QLatin1String MasterSince = mcskeys::detail::Key("Since");
inline constexpr QLatin1String MasterRangeFrom = mcskeys::detail::Key("RangeFrom");
inline constexpr QLatin1String MasterRangeTo = mcskeys::detail::Key("RangeTo");

/// In the status of a server whose device is made of receivers: what is known of each, below "1", "2", ...
/// The strength is in dB above S9, the frequency in Hz.
inline constexpr QLatin1String Receivers = mcskeys::detail::Key("Receivers");
inline constexpr QLatin1String ReceiverName = mcskeys::detail::Key("Name");
inline constexpr QLatin1String ReceiverAddress = mcskeys::detail::Key("Address");
inline constexpr QLatin1String ReceiverState = mcskeys::detail::Key("State");
inline constexpr QLatin1String ReceiverStateSince = mcskeys::detail::Key("StateSince");
inline constexpr QLatin1String ReceiverReason = mcskeys::detail::Key("Reason");
inline constexpr QLatin1String ReceiverReasonCode = mcskeys::detail::Key("ReasonCode");
inline constexpr QLatin1String ReceiverFrequency = mcskeys::detail::Key("Frequency");
inline constexpr QLatin1String ReceiverMode = mcskeys::detail::Key("Mode");
inline constexpr QLatin1String ReceiverStrength = mcskeys::detail::Key("SignalStrength");

/// At an MpxORV: whether it obeys the ground transmitter suppression.
inline constexpr QLatin1String Blanking = mcskeys::detail::Key("Blanking");

/// In the status of an MpxORV: what it is tuned to (Hz, 0 for nothing), and who switched its "Blanking".
inline constexpr QLatin1String TunedFrequency = mcskeys::detail::Key("TunedFrequency");
inline constexpr QLatin1String TunedSince = mcskeys::detail::Key("TunedSince");
inline constexpr QLatin1String BlankingSwitchedBy = mcskeys::detail::Key("BlankingSwitchedBy");
inline constexpr QLatin1String BlankingSwitchedSince = mcskeys::detail::Key("BlankingSwitchedSince");

/// In the status of a dynamic MpxORV: why its own clients may not switch its policies (codedtext.h); empty if
/// they may.
inline constexpr QLatin1String PoliciesLocked = mcskeys::detail::Key("PoliciesLocked");

/// In the status: the configuration as it was saved last, under the names that it has below "Config"; and
/// when, and by whom.
inline constexpr QLatin1String SavedConfig = mcskeys::detail::Key("SavedConfig");
inline constexpr QLatin1String SavedSince = mcskeys::detail::Key("Since");
inline constexpr QLatin1String SavedBy = mcskeys::detail::Key("By");

/// In the status: the last event, as compact JSON (apps/common/event.h), and every one of them in turn.
inline constexpr QLatin1String Event = mcskeys::detail::Key("Event");

/// In the status of a server that tells them to whoever asks: how many of the last events it keeps.
inline constexpr QLatin1String EventHistory = mcskeys::detail::Key("EventHistory");

/// Beside a text that the server says, the same as a code with arguments (apps/common/codedtext.h). It is set
/// before the text: whoever is told of that looks at it.
inline constexpr QLatin1String AnswerCode = mcskeys::detail::Key("AnswerCode");
inline constexpr QLatin1String ConnectionStateCode = mcskeys::detail::Key("ConnectionStateCode");
inline constexpr QLatin1String OperationTypeCode = mcskeys::detail::Key("OperationTypeCode");

}  // namespace serverkeys
