// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/valuedescriptor.h>

/// How far a device has booted. The numbers are the keys of StdDeviceDefinition::g_vdBooState.
enum EBooState : int {
    BootUnknown = 0,
    BootPowerOn = 1,
    BootLoading = 2,
    BootSelfTest = 4,
    BootCalibrating = 8,
    BootReady = 16,
    BootFailed = 32
};

/// What a device is doing. The numbers are the keys of StdDeviceDefinition::g_vdOperationMode.
enum EOperationMode : int {
    OperationIdle = 0,
    OperationFfm = 1,  ///< fixed frequency
    OperationAudio = 2,
    OperationSearch = 3,
    OperationScan = 4,  ///< sweeps
    OperationCalibration = 5,
    OperationBuiltInTest = 6,
    OperationMemoryScan = 7  ///< sweeps
};

/// The device type that has no fixed-frequency channels.
constexpr int DeviceTypeWithoutFreqChannels = 3;

/// The choices that all devices share, as compile-time constants.
struct MCS_PLATFORM_EXPORT StdDeviceDefinition {
    static const values::ValueDescriptor g_vdBooState;    // fixed: boo-state
    static const values::ValueDescriptor& g_vdBootState;  ///< the same descriptor under its proper name
    static const values::ValueDescriptor g_vdOperationMode;
    static const values::ValueDescriptor g_vdReportInterval;  ///< number and key of an item: milliseconds
};
