// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/device/iorvdevicelistener.h>
#include <apps/mcserver/device/receiverstatus.h>
#include <apps/mcserver/log/configchanges.h>
#include <apps/mcserver/log/savereport.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/mpxorv/jobcontrol.h>
#include <apps/mcserver/mpxorv/mpxorvregistry.h>
#include <apps/mcserver/program/savedconfig.h>

#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/device/orvdevicesettings.h>
#include <platform/values/observation.h>

#include <memory>

class CfgSave;
class ICfg;
class IOrvDevice;

/// The server: everything below "/MultiChannelServer", true to what the device and the clients do. Main
/// thread; needs the tree.
///
/// Whether it listens to anybody is not its business: it obeys the values of the tree, whoever sets them.
class McsServer : public IObserver, public IOrvDeviceListener {
  public:
    /// \a device and \a clock are not owned and outlive the server. \a sink gets each line of the log.
    McsServer(IOrvDevice& device, IClock& clock, ServerLog::Sink sink);
    ~McsServer() override;
    McsServer(const McsServer&) = delete;
    McsServer& operator=(const McsServer&) = delete;

    /// Takes the configuration from \a cfg, makes the static MpxORVs, and connects to the device if that is
    /// configured.
    void Start(std::unique_ptr<ICfg> cfg);
    /// Saves the configuration and lets go of the device.
    void Stop();
    /// Empty, or why it cannot be written, which is in the log too.
    QString SaveConfiguration();

    MpxOrvRegistry& GetMpxOrvs() { return m_mpxOrvs; }
    JobControl& GetJobs() { return m_jobs; }
    ServerLog& GetLog() { return m_log; }

    void Update(Observable* source, TChangeCode code) override;
    void OnConnectionChanged(bool isOnline, const CodedText& state) override;
    void OnBootStateChanged(EBooState state) override;
    void OnOperationModeChanged(EOperationMode mode) override;
    void OnSweepTimeChanged(std::chrono::microseconds time) override;
    void OnChannelsChanged(int free, int used) override;
    void OnReportIntervalChanged(std::chrono::milliseconds interval) override;
    void OnChannelLost(int channel, const CodedText& reason) override;
    void OnReceiverChanged(int channel, const ReceiverFacts& facts) override;
    void OnLog(const CodedText& text) override;

  private:
    void LoadConfiguration();
    /// Ends the \a save. Empty, or why what was written cannot be kept, which is in the log too.
    QString Commit(CfgSave& save);
    void SaveAsAsked();
    /// Keeps how the static MpxORVs are switched, in case the server is killed.
    void KeepSwitches();
    void ShowDevice();
    void ShowConnectionState(const CodedText& state);
    void ObeyShallBeConnected();
    OrvDeviceSettings GetDeviceSettings() const;

    IOrvDevice& m_device;
    MCSConfigData m_config;
    Observation<values::Value<QString>> m_pConnectionStateCode;  ///< in the tree before the text that it says
    MCSStatus m_status;
    ReceiverStatus m_receivers;
    MCSCommands m_commands;
    ServerLog m_log;
    JobControl m_jobs;
    MpxOrvRegistry m_mpxOrvs;
    SaveReport m_saveReport;
    SavedConfig m_savedConfig;
    IClock& m_clock;
    ConfigChanges m_configChanges;
    std::unique_ptr<ICfg> m_cfg;  ///< null until started
    ClockTimer m_keepSoon;
    Observation<values::Value<bool>> m_pShallBeConnected;
    Observation<values::Value<bool>> m_pSaveConfig;
    Observation<values::ValueSelection> m_pScanAveragingTime;
};
