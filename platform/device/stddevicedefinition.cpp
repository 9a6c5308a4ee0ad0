// SPDX-License-Identifier: Apache-2.0
#include <platform/device/stddevicedefinition.h>

using values::SelItemDesc;
using values::ValueDescriptor;

namespace {

constexpr SelItemDesc BootStates[] = {
    {"Unknown", 0.0, BootUnknown},    {"Power On", 1.0, BootPowerOn},        {"Loading", 2.0, BootLoading},
    {"Self Test", 4.0, BootSelfTest}, {"Calibrating", 8.0, BootCalibrating}, {"Ready", 16.0, BootReady},
    {"Failed", 32.0, BootFailed},
};

constexpr SelItemDesc OperationModes[] = {
    {"Idle", 0.0, OperationIdle},
    {"FFM", 1.0, OperationFfm},
    {"Audio", 2.0, OperationAudio},
    {"Search", 3.0, OperationSearch},
    {"Scan", 4.0, OperationScan},
    {"Calibration", 5.0, OperationCalibration},
    {"Built-in Test", 6.0, OperationBuiltInTest},
    {"Memory Scan", 7.0, OperationMemoryScan},
};

constexpr SelItemDesc ReportIntervals[] = {
    {"50 ms", 50.0, 50},   {"100 ms", 100.0, 100}, {"200 ms", 200.0, 200}, {"500 ms", 500.0, 500},
    {"1 s", 1000.0, 1000}, {"2 s", 2000.0, 2000},  {"5 s", 5000.0, 5000},  {"10 s", 10000.0, 10000},
};

}  // namespace

// Constant-initialised, so that any static initialiser may use them.
const ValueDescriptor StdDeviceDefinition::g_vdBooState(BootStates);
const ValueDescriptor& StdDeviceDefinition::g_vdBootState = StdDeviceDefinition::g_vdBooState;
const ValueDescriptor StdDeviceDefinition::g_vdOperationMode(OperationModes);
const ValueDescriptor StdDeviceDefinition::g_vdReportInterval(ReportIntervals);
