// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/device/iorvdevice.h>

#include <platform/device/iorvdriver.h>

#include <QtCore/QObject>
#include <QtCore/QScopedValueRollback>

#include <functional>
#include <memory>
#include <vector>

/// A device by somebody else's driver, whose texts are shown as they are. What the driver tells while it is
/// asked for something is heard a turn of the event loop later: until then whoever asks has to note what
/// became of it. Main thread.
class PluginOrv : public IOrvDevice, private IOrvDriverListener {
    // Before its uses, which need its type.
    template <class Call>
    auto Ask(const Call& call) {
        const QScopedValueRollback<bool> asking(m_isAsking, true);
        return call();
    }

  public:
    explicit PluginOrv(std::unique_ptr<IOrvDriver> driver);
    ~PluginOrv() override;

    void SetListener(IOrvDeviceListener* listener) override { m_listener = listener; }
    void Connect(const OrvDeviceSettings& settings) override;
    void Disconnect() override;
    void ChangeSettings(const OrvDeviceSettings& settings) override { m_driver->ChangeSettings(settings); }
    bool IsOnline() const override { return m_driver->IsOnline(); }
    EBooState GetBootState() const override { return m_driver->GetBootState(); }
    EOperationMode GetOperationMode() const override { return m_driver->GetOperationMode(); }
    double GetBandwidth() const override;
    CodedText AllocateChannel(int* channel) override {
        return Ask([&] { return m_driver->AllocateChannel(channel); });
    }
    void FreeChannel(int channel) override {
        Ask([&] { m_driver->FreeChannel(channel); });
    }
    CodedText Tune(int channel, double hz) override {
        return Ask([&] { return m_driver->Tune(channel, hz); });
    }
    CodedText RestartJob() override {
        return Ask([&] { return m_driver->RestartJob(); });
    }
    CodedText RunBuiltInTest() override {
        return Ask([&] { return m_driver->RunBuiltInTest(); });
    }
    CodedText Calibrate() override {
        return Ask([&] { return m_driver->Calibrate(); });
    }
    std::chrono::milliseconds GetReportInterval() const override { return m_driver->GetReportInterval(); }
    CodedText SetReportInterval(std::chrono::milliseconds interval) override {
        return Ask([&] { return m_driver->SetReportInterval(interval); });
    }

  private:
    using Notice = std::function<void(IOrvDeviceListener&)>;

    void Tell(const Notice& notice);
    void TellWhatWaits();

    void OnConnectionChanged(bool isOnline, const QString& state) override;
    void OnBootStateChanged(EBooState state) override;
    void OnOperationModeChanged(EOperationMode mode) override;
    void OnSweepTimeChanged(std::chrono::microseconds time) override;
    void OnChannelsChanged(int free, int used) override;
    void OnReportIntervalChanged(std::chrono::milliseconds interval) override;
    void OnChannelLost(int channel, const QString& reason) override;
    void OnLog(const QString& text) override;

    std::unique_ptr<IOrvDriver> m_driver;
    IOrvDeviceListener* m_listener = nullptr;
    bool m_isHeld = false;
    bool m_wasOnline = false;
    bool m_isAsking = false;
    std::vector<Notice> m_waiting;
    QObject m_context;  ///< of the turn in which they are told
};
