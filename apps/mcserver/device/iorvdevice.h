// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/device/orvdevicesettings.h>
#include <platform/device/stddevicedefinition.h>

#include <chrono>

class IOrvDeviceListener;

/// The one physical direction finder that the server shares out. What is asked of it is accepted or refused
/// at once; what comes of it is told to the listener. Main thread.
///
/// A request answers with the reason for which it is refused, or says nothing.
class IOrvDevice {
  public:
    virtual ~IOrvDevice() = default;

    /// Not owned; one at most, null for none.
    virtual void SetListener(IOrvDeviceListener* listener) = 0;

    /// Holds the connection from now on, also after it was lost, until Disconnect.
    virtual void Connect(const OrvDeviceSettings& settings) = 0;
    virtual void Disconnect() = 0;
    /// The settings changed while the connection is held: takes over what it can.
    virtual void ChangeSettings(const OrvDeviceSettings& settings) = 0;

    virtual bool IsOnline() const = 0;
    virtual EBooState GetBootState() const = 0;
    virtual EOperationMode GetOperationMode() const = 0;
    /// How many Hz around a frequency channel's frequency it receives.
    virtual double GetBandwidth() const = 0;

    /// Reserves a frequency channel, and puts its number in \a channel.
    virtual CodedText AllocateChannel(int* channel) = 0;
    virtual void FreeChannel(int channel) = 0;
    virtual CodedText Tune(int channel, double hz) = 0;
    virtual CodedText RestartJob() = 0;
    virtual CodedText RunBuiltInTest() = 0;
    virtual CodedText Calibrate() = 0;
    /// How long the device waits from one report to the next.
    virtual std::chrono::milliseconds GetReportInterval() const = 0;
    virtual CodedText SetReportInterval(std::chrono::milliseconds interval) = 0;
};
