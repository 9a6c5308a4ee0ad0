// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLatin1String>
#include <QtCore/QString>

/// The key names of the server's tree and configuration. Compile-time constants: no translation unit builds
/// anything at start-up. (fixed: names)
namespace mcskeys {

namespace detail {

template <int size>
constexpr QLatin1String Key(const char (&text)[size]) {
    return QLatin1String(text, size - 1);
}

}  // namespace detail

// clang-format off
inline constexpr QLatin1String Root           = detail::Key("/MultiChannelServer");

// Nodes below the root. DynamicMpxORVs is also a section of the configuration, and DynamicMpxORVs and
// StaticMpxORVs are also counters in the status.
inline constexpr QLatin1String Config         = detail::Key("Config");
inline constexpr QLatin1String Command        = detail::Key("Command");
inline constexpr QLatin1String Status         = detail::Key("Status");
inline constexpr QLatin1String DynamicMpxORVs = detail::Key("DynamicMpxORVs");
inline constexpr QLatin1String StaticMpxORVs  = detail::Key("StaticMpxORVs");

// Configuration: values, then what only the store holds.
inline constexpr QLatin1String DeviceAddress                 = detail::Key("DeviceAddress");
inline constexpr QLatin1String DeviceName                    = detail::Key("DeviceName");
inline constexpr QLatin1String ConnectOnStartup              = detail::Key("ConnectOnStartup");
inline constexpr QLatin1String ForceConnect                  = detail::Key("ForceConnect");
inline constexpr QLatin1String NumberOfFreqChannels          = detail::Key("NumberOfFreqChannels");
inline constexpr QLatin1String MaxProtocolLevel              = detail::Key("MaxProtocolLevel");
inline constexpr QLatin1String SaveConfig                    = detail::Key("SaveConfig");
inline constexpr QLatin1String DefaultFrequencyForChannel    = detail::Key("DefaultFrequencyForChannel");
inline constexpr QLatin1String DefaultScanAveragingTimeIndex = detail::Key("DefaultScanAveragingTimeIndex");
inline constexpr QLatin1String GuiVisible                    = detail::Key("GuiVisible");
inline constexpr QLatin1String ResetAfterBoot                = detail::Key("ResetAfterBoot");

// The policies of an MpxORV: a node of switches below it, and a section below DynamicMpxORVs.
inline constexpr QLatin1String Policy                            = detail::Key("Policy");
inline constexpr QLatin1String IsSlaveToMasterJob                = detail::Key("IsSlaveToMasterJob");
inline constexpr QLatin1String MayAlterDeviceSettings            = detail::Key("MayAlterDeviceSettings");
inline constexpr QLatin1String MayAlterFreqRanges                = detail::Key("MayAlterFreqRanges");
inline constexpr QLatin1String MayAlterFreqSingle                = detail::Key("MayAlterFreqSingle");
inline constexpr QLatin1String MayBeJobMaster                    = detail::Key("MayBeJobMaster");
inline constexpr QLatin1String MayBIT                            = detail::Key("MayBIT");
inline constexpr QLatin1String MayCal                            = detail::Key("MayCal");
inline constexpr QLatin1String MayReadSingleFreqFromMasterRanges = detail::Key("MayReadSingleFreqFromMasterRanges");
inline constexpr QLatin1String MayRestartJob                     = detail::Key("MayRestartJob");
inline constexpr QLatin1String SeesMasterJobRf                   = detail::Key("SeesMasterJobRf");

// Commands.
inline constexpr QLatin1String ShallBeConnected = detail::Key("ShallBeConnected");

// Status of the server.
inline constexpr QLatin1String BootState              = detail::Key("BootState");
inline constexpr QLatin1String ConnectionState        = detail::Key("ConnectionState");
inline constexpr QLatin1String FreeFreqChannels       = detail::Key("FreeFreqChannels");
inline constexpr QLatin1String LogMessage             = detail::Key("LogMessage");
inline constexpr QLatin1String McsMasterJobControlled = detail::Key("McsMasterJobControlled");
inline constexpr QLatin1String Online                 = detail::Key("Online");
inline constexpr QLatin1String OperationMode          = detail::Key("OperationMode");
inline constexpr QLatin1String SweepTime              = detail::Key("SweepTime");
inline constexpr QLatin1String UsedFreqChannels       = detail::Key("UsedFreqChannels");

// Status of an MpxORV, below its node "Status"; it has an OperationMode too.
inline constexpr QLatin1String Comment          = detail::Key("Comment");
inline constexpr QLatin1String ConnectedClients = detail::Key("ConnectedClients");
inline constexpr QLatin1String IsMaster         = detail::Key("IsMaster");
inline constexpr QLatin1String IsWatchingMaster = detail::Key("IsWatchingMaster");
inline constexpr QLatin1String OperationType    = detail::Key("OperationType");

// fixed: unread-names. Nothing in the library reads them.
inline constexpr QLatin1String ShowIFSpectrum  = detail::Key("ShowIFSpectrum");
inline constexpr QLatin1String WatchIFSpectrum = detail::Key("WATCHIFSPECTRUM");
inline constexpr QLatin1String ToBeDefined     = detail::Key("*** TO BE DEFINED !!! ***");
// clang-format on

/// \a path + "/" + \a key (fixed: doubled-slash): a path that ends in "/" gives a doubled one.
inline QString Join(const QString& path, QLatin1String key) {
    return path + QLatin1Char('/') + key;
}

/// Root + "/" + \a key: where a node of the server is unless a base path says otherwise.
inline QString DefaultBasePath(QLatin1String key) {
    return Join(Root, key);
}

}  // namespace mcskeys
