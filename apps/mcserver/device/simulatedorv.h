// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/common/iclock.h>
#include <apps/mcserver/device/iorvdevice.h>
#include <apps/mcserver/device/orvscript.h>

#include <chrono>
#include <set>

/// A direction finder that is not there: boots through its states, then scans, reports its sweep time, and
/// accepts what a real one would. A script makes it change modes, fail, recover and log by itself.
class SimulatedOrv : public IOrvDevice {
  public:
    using Time = std::chrono::milliseconds;

    static constexpr Time BootTime{1500};  ///< from Connect until it is ready
    static constexpr Time BuiltInTestTime{1000};
    static constexpr Time CalibrationTime{2000};
    static constexpr Time RetryTime{1000};         ///< between attempts to get an occupied device
    static constexpr double Bandwidth = 20000000;  ///< Hz

    explicit SimulatedOrv(IClock& clock);
    ~SimulatedOrv() override;

    /// Starts to do what \a script says, its times counted from now.
    void RunScript(const OrvScript& script);

    void SetListener(IOrvDeviceListener* listener) override { m_listener = listener; }
    void Connect(const OrvDeviceSettings& settings) override;
    void Disconnect() override;
    void ChangeSettings(const OrvDeviceSettings& settings) override;
    bool IsOnline() const override { return m_isOnline; }
    EBooState GetBootState() const override { return m_bootState; }
    EOperationMode GetOperationMode() const override { return m_mode; }
    double GetBandwidth() const override { return Bandwidth; }
    CodedText AllocateChannel(int* channel) override;
    void FreeChannel(int channel) override;
    CodedText Tune(int channel, double hz) override;
    CodedText RestartJob() override;
    CodedText RunBuiltInTest() override;
    CodedText Calibrate() override;
    Time GetReportInterval() const override { return m_reportInterval; }
    CodedText SetReportInterval(Time interval) override;

  private:
    void RunNextStep();
    void RunStep(const OrvScript::Step& step);
    void Fail(const QString& reason);
    void Recover();
    void TryToConnect();
    void BootOn(int stage);
    void GoOffline(EBooState state, const CodedText& connectionState);
    void SetConnection(bool isOnline, const CodedText& state);
    void SetBootState(EBooState state);
    void SetMode(EOperationMode mode);
    /// Why it cannot do anything now; empty if it can.
    CodedText Obstacle() const;
    CodedText RunFor(Time time, EOperationMode mode);
    void ReportSweep();
    void ReportChannels();
    void Log(const CodedText& text);

    IOrvDeviceListener* m_listener = nullptr;
    ClockTimer m_bootTimer;
    ClockTimer m_taskTimer;
    ClockTimer m_sweepTimer;
    ClockTimer m_scriptTimer;
    OrvDeviceSettings m_settings;
    bool m_isHeld = false;  ///< Connect was called last
    bool m_isOnline = false;
    bool m_hasFailed = false;
    CodedText m_failure;
    QString m_occupant;
    CodedText m_connectionState;
    EBooState m_bootState = BootUnknown;
    EOperationMode m_mode = OperationIdle;
    std::set<int> m_usedChannels;
    Time m_reportInterval{500};
    int m_sweeps = 0;
    OrvScript m_script;
    std::size_t m_nextStep = 0;
    Time m_scriptTime{};  ///< that has passed in it
};
