// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/device/stddevicedefinition.h>

#include <QtCore/QString>

/// Is told what a device does. Main thread.
class IOrvDeviceListener {
  public:
    virtual ~IOrvDeviceListener() = default;

    /// \a state is for people: "connected to localhost".
    virtual void OnConnectionChanged(bool isOnline, const QString& state) = 0;
    virtual void OnBootStateChanged(EBooState state) = 0;
    virtual void OnOperationModeChanged(EOperationMode mode) = 0;
    /// How long a sweep takes, in ms; 0 while the device does not sweep.
    virtual void OnSweepTimeChanged(int ms) = 0;
    /// How many frequency channels are free and used; none of either while the device is not ready.
    virtual void OnChannelsChanged(int free, int used) = 0;
    /// How often the device reports, in ms.
    virtual void OnReportIntervalChanged(int ms) = 0;
    virtual void OnLog(const QString& text) = 0;
};
