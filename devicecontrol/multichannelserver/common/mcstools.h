// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/device/stddevicedefinition.h>

#include <QtCore/QString>

/// Texts that the server and its clients show alike. The units are translated in the context "MCSTools";
/// numbers have six significant digits.
class MCS_COMMON_EXPORT MCSTools {
  public:
    MCSTools() = delete;

    /// A frequency in Hz as "999.5 Hz", "2.5 kHz" or "30 MHz".
    static QString FormatFrequency(double hz);
    /// A range in Hz as "30 - 88 MHz", or with a unit at each end where they differ. The ends are not sorted;
    /// equal ends are one frequency.
    static QString FormatFrequencyRange(double from, double to);
    /// The text of StdDeviceDefinition::g_vdOperationMode for \a mode; empty for an unknown one.
    static QString OperationModeAsString(EOperationMode mode);
};
