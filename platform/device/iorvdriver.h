// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/device/orvdevicesettings.h>
#include <platform/device/stddevicedefinition.h>

#include <QtCore/QString>

#include <chrono>

/// Is told by a driver what its device does. The server's; main thread. It may call the driver while it is
/// told.
class IOrvDriverListener {
  public:
    virtual ~IOrvDriverListener() = default;

    /// \a state is for people: "connected to antenna 2", or why there is no connection.
    virtual void OnConnectionChanged(bool isOnline, const QString& state) = 0;
    virtual void OnBootStateChanged(EBooState state) = 0;          ///< How far the device has got.
    virtual void OnOperationModeChanged(EOperationMode mode) = 0;  ///< What it does.
    /// How long a sweep takes; 0 while the device does not sweep.
    virtual void OnSweepTimeChanged(std::chrono::microseconds time) = 0;
    /// How many frequency channels are free and used; none of either while the device is not ready.
    virtual void OnChannelsChanged(int free, int used) = 0;
    /// How long it waits from one report to the next.
    virtual void OnReportIntervalChanged(std::chrono::milliseconds interval) = 0;
    /// What \a channel was tuned to is not received any more: whoever has it loses it, and the channel is
    /// freed.
    virtual void OnChannelLost(int channel, const QString& reason) = 0;
    /// A line of the server's log.
    virtual void OnLog(const QString& text) = 0;
};

/// The one device that the server owns, driven by a plugin. docs/devices.md says what each call has to do.
/// All calls come in the main thread, must return at once, and must not throw.
///
/// What is asked is accepted, which an empty text says, or refused with the reason: one line for people.
/// The order of the operations is the interface: another order, or one more, is another version.
class IOrvDriver {
  public:
    virtual ~IOrvDriver() = default;

    /// Not owned; one at most, null for none.
    virtual void SetListener(IOrvDriverListener* listener) = 0;

    /// Holds the connection from now on, also after it was lost, until Disconnect.
    virtual void Connect(const OrvDeviceSettings& settings) = 0;
    virtual void Disconnect() = 0;  ///< Ends the connection, and tells OnConnectionChanged.
    /// The settings changed: takes over what it can. Also while there is no connection.
    virtual void ChangeSettings(const OrvDeviceSettings& /*settings*/) {}

    virtual bool IsOnline() const = 0;                    ///< Whether it has the connection.
    virtual EBooState GetBootState() const = 0;           ///< As it was told last.
    virtual EOperationMode GetOperationMode() const = 0;  ///< As it was told last.
    /// How many Hz around a frequency channel's frequency it receives.
    virtual double GetBandwidth() const = 0;

    /// Reserves a frequency channel, and puts its number in \a channel.
    virtual QString AllocateChannel(int* channel) = 0;
    virtual void FreeChannel(int channel) = 0;  ///< Gives back a channel of AllocateChannel.
    /// \a hz is from 300 kHz to 3 GHz.
    virtual QString Tune(int channel, double hz) = 0;
    /// Begins the job anew; unless overridden there is none.
    virtual QString RestartJob() { return QStringLiteral("the ORV has no job"); }
    /// Starts it; unless overridden there is none.
    virtual QString RunBuiltInTest() { return QStringLiteral("the ORV has no built-in test"); }
    /// Starts it; unless overridden there is none.
    virtual QString Calibrate() { return QStringLiteral("the ORV cannot be calibrated"); }
    /// How long the device waits from one report to the next.
    virtual std::chrono::milliseconds GetReportInterval() const { return std::chrono::milliseconds(500); }
    virtual QString SetReportInterval(std::chrono::milliseconds /*interval*/) {
        return QStringLiteral("the ORV has one report interval only");
    }
};
