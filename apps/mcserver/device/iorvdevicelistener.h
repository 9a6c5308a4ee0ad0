// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/device/stddevicedefinition.h>

#include <chrono>

struct ReceiverFacts;

/// Is told what a device does. Main thread.
class IOrvDeviceListener {
  public:
    virtual ~IOrvDeviceListener() = default;

    /// \a state is for people: "connected to localhost".
    virtual void OnConnectionChanged(bool isOnline, const CodedText& state) = 0;
    virtual void OnBootStateChanged(EBooState state) = 0;
    virtual void OnOperationModeChanged(EOperationMode mode) = 0;
    /// How long a sweep takes; 0 while the device does not sweep.
    virtual void OnSweepTimeChanged(std::chrono::microseconds time) = 0;
    /// How many frequency channels are free and used; none of either while the device is not ready.
    virtual void OnChannelsChanged(int free, int used) = 0;
    /// How long the device waits from one report to the next.
    virtual void OnReportIntervalChanged(std::chrono::milliseconds interval) = 0;
    /// What \a channel was tuned to is not received any more.
    virtual void OnChannelLost(int channel, const CodedText& reason) = 0;
    /// Of a device that is made of receivers: what is known of that of \a channel.
    virtual void OnReceiverChanged(int channel, const ReceiverFacts& facts) = 0;
    /// \a text is a whole event of the device, or a line of its own.
    virtual void OnLog(const CodedText& text) = 0;
};
