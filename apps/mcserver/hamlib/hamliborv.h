// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/device/iorvdevice.h>
#include <apps/mcserver/device/receiverfacts.h>
#include <apps/mcserver/hamlib/receiver.h>

#include <memory>
#include <vector>

/// A device made of receivers, each of which is a frequency channel. It is online while one of them answers;
/// who is tuned to one that is lost loses it. docs/devices.md holds the rules. Main thread.
class HamlibOrv : public IOrvDevice, private Receiver::IListener {
  public:
    using Time = std::chrono::milliseconds;

    static constexpr Time ShortestReportInterval{100};

    /// \a name is what people call the kind of receivers.
    HamlibOrv(const QString& name, IClock& clock);
    ~HamlibOrv() override;

    /// Before Connect.
    void AddReceiver(const QString& port, std::unique_ptr<IRig> rig);

    void SetListener(IOrvDeviceListener* listener) override;
    void Connect(const OrvDeviceSettings& settings) override;
    void Disconnect() override;
    void ChangeSettings(const OrvDeviceSettings& settings) override;
    bool IsOnline() const override { return m_isOnline; }
    EBooState GetBootState() const override { return m_bootState; }
    EOperationMode GetOperationMode() const override { return m_mode; }
    double GetBandwidth() const override;
    CodedText AllocateChannel(int* channel) override;
    void FreeChannel(int channel) override;
    CodedText Tune(int channel, double hz) override;
    CodedText RestartJob() override;
    CodedText RunBuiltInTest() override;
    CodedText Calibrate() override;
    Time GetReportInterval() const override { return m_reportInterval; }
    CodedText SetReportInterval(Time interval) override;

  private:
    /// One channel: a receiver, and what it is there for.
    struct Channel {
        std::unique_ptr<Receiver> receiver;
        bool isUsed = false;
        bool wasLost = false;
        CodedText firstReason;  ///< for which it was lost; others may follow, and are not told by themselves
        double wantedHz = 0.0;  ///< 0: none
        ReceiverFacts facts;
    };

    void OnReceiverReady(Receiver& receiver) override;
    void OnReceiverLost(Receiver& receiver, const CodedText& reason) override;
    void OnTuningFailed(Receiver& receiver, const CodedText& reason) override;
    void OnReading(Receiver& receiver, const RigReading& reading) override;

    Channel& ChannelOf(const Receiver& receiver) { return m_channels[std::size_t(receiver.GetChannel())]; }
    /// "2 (host:4532)": as it is called in what people read.
    static QString NameOf(const Receiver& receiver);
    void AskAll();
    int CountReady() const;
    bool IsAnyOpening() const;
    /// Tells what the receivers, taken together, come to.
    void ShowState();
    void SetState(bool isOnline, const CodedText& state, EBooState bootState, EOperationMode mode);
    void ShowFacts(Channel& channel);
    void ReportChannels();
    void Tell(const CodedText& event);

    const QString m_name;
    IClock& m_clock;
    IOrvDeviceListener* m_listener = nullptr;
    OrvDeviceSettings m_settings;
    bool m_isHeld = false;
    bool m_isOnline = false;
    CodedText m_connectionState;
    EBooState m_bootState = BootUnknown;
    EOperationMode m_mode = OperationIdle;
    Time m_reportInterval{500};
    ClockTimer m_reportTimer;
    std::vector<Channel> m_channels;
};
