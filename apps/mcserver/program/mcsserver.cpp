// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/mcsserver.h>

#include <apps/mcserver/device/iorvdevice.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>
#include <platform/values/valueaccess.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

/// Whoever switches again and again has the file written ten times a second at most.
constexpr std::chrono::milliseconds KeepDelay(100);

const QString* CommandPath() {
    static const QString path = mcskeys::DefaultBasePath(mcskeys::Command);
    return &path;
}

/// Makes the sections that MCSConfigData and people look for, so that people find all keys.
void ProvideSections(ICfg& cfg) {
    const std::unique_ptr<ICfg> dynamic(cfg.ProvideSection(mcskeys::DynamicMpxORVs));
    const std::unique_ptr<ICfg> policy(dynamic->ProvideSection(mcskeys::Policy));
}

}  // namespace

McsServer::McsServer(IOrvDevice& device, IClock& clock, ServerLog::Sink sink)
    : m_device(device),
      m_config(nullptr, false),
      m_pConnectionStateCode(*this, values::ProvideValue<values::Value<QString>>(
                                        mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status),
                                                      serverkeys::ConnectionStateCode),
                                        QString(), true, nullptr)),
      m_status(mcskeys::DefaultBasePath(mcskeys::Status)),
      m_receivers(clock),
      m_commands(CommandPath()),
      m_log(m_status, clock, std::move(sink)),
      m_jobs(device, m_status, m_log, clock),
      m_mpxOrvs(m_config, m_status, m_jobs, m_log, clock),
      m_saveReport(m_config, m_log),
      m_savedConfig(m_config.GetBasePath()),
      m_clock(clock),
      m_configChanges(m_log),
      m_keepSoon(clock),
      m_pShallBeConnected(*this),
      m_pSaveConfig(*this),
      m_pScanAveragingTime(*this) {}

McsServer::~McsServer() {
    m_device.SetListener(nullptr);
    m_config.DeleteObserver(this);
}

void McsServer::Start(std::unique_ptr<ICfg> cfg) {
    m_cfg = std::move(cfg);
    LoadConfiguration();
    m_saveReport.Begin(*m_cfg);
    m_configChanges.Begin(m_config.GetBasePath());
    m_device.SetListener(this);
    ShowDevice();

    m_config.AddObserver(this);
    m_pSaveConfig.Begin(values::FindValue<values::Value<bool>>(
        mcskeys::Join(m_config.GetBasePath(), mcskeys::SaveConfig), nullptr, nullptr));
    // Told before MCSConfigData, which saves too and then sets the value back to false.
    if (m_pSaveConfig) m_pSaveConfig->MakeFirstObserver(this);
    // MCSConfigData does not tell its observers of this value, since it saves it itself.
    m_pScanAveragingTime.Begin(values::FindValue<values::ValueSelection>(
        m_config.GetDefaultScanAveragingTime_ValuePath(), nullptr, nullptr));
    m_commands.GetShallBeConnectedValue()->SetValue(m_config.GetConnectOnStartup(), nullptr);
    m_pShallBeConnected.Begin(m_commands.GetShallBeConnectedValue());
    ObeyShallBeConnected();
    m_jobs.SetOnSwitched([this](const MpxOrv& mpxOrv) {
        if (mpxOrv.GetKind() == EMpxOrvKind::Static && !m_keepSoon.IsRunning())
            m_keepSoon.Start(KeepDelay, [this] { KeepSwitches(); });
    });
}

void McsServer::Stop() {
    m_keepSoon.Stop();  // all of it is saved now
    SaveConfiguration();
    m_log.Write(ECode::ServerEnds);
    m_device.Disconnect();
}

void McsServer::LoadConfiguration() {
    CfgSave save;
    ProvideSections(*m_cfg);
    m_config.ReadFrom(m_cfg.get());
    m_mpxOrvs.LoadStatic(*m_cfg);
    m_mpxOrvs.SaveStatic(*m_cfg);  // so that missing keys appear
    Commit(save);
    m_savedConfig.Show(QString(), QString());
}

QString McsServer::SaveConfiguration() {
    CfgSave save;
    m_mpxOrvs.SaveStatic(*m_cfg);
    m_config.WriteTo(m_cfg.get());
    QString problem = Commit(save);
    if (problem.isEmpty()) m_savedConfig.Show(m_clock.UtcText(), m_log.GetActor());
    return problem;
}

/// The rest of the configuration waits until somebody has it saved.
void McsServer::KeepSwitches() {
    CfgSave save;
    m_mpxOrvs.SaveStatic(*m_cfg);
    Commit(save);
}

QString McsServer::Commit(CfgSave& save) {
    m_cfg->CommitKey(mcskeys::DeviceAddress);
    save.End();
    m_saveReport.LogFailure(save.GetProblem());
    return save.GetProblem();
}

void McsServer::SaveAsAsked() {
    const QString problem = SaveConfiguration();
    if (problem.isEmpty()) m_log.Write(ECode::ConfigSaved);
    m_saveReport.Answer(problem);
}

void McsServer::ShowDevice() {
    m_status.GetBootStateValue()->Select(m_device.GetBootState(), nullptr);
    m_status.GetOperationModeValue()->Select(m_device.GetOperationMode(), nullptr);
    m_status.GetOnlineValue()->SetValue(m_device.IsOnline(), nullptr);
    ShowConnectionState(ECode::DeviceLetGo);
}

void McsServer::ShowConnectionState(const CodedText& state) {
    if (m_pConnectionStateCode) m_pConnectionStateCode->SetValue(state.ToJsonText());
    m_status.GetConnectionStateValue()->SetValue(state.ToEnglish(), nullptr);
}

void McsServer::Update(Observable* source, TChangeCode code) {
    if (m_pConnectionStateCode.EndIfGoingAway(source, code) ||
        m_pShallBeConnected.EndIfGoingAway(source, code) || m_pSaveConfig.EndIfGoingAway(source, code) ||
        m_pScanAveragingTime.EndIfGoingAway(source, code) || code != changecode::ContentChanged)
        return;
    if (source == &m_config || m_pScanAveragingTime.Is(source)) m_device.ChangeSettings(GetDeviceSettings());
    if (m_pShallBeConnected.Is(source)) ObeyShallBeConnected();
    if (m_pSaveConfig.Is(source) && m_pSaveConfig->GetValue()) SaveAsAsked();
}

void McsServer::ObeyShallBeConnected() {
    if (!m_log.GetActor().isEmpty())
        m_log.Write({m_pShallBeConnected->GetValue() ? ECode::DeviceWanted : ECode::DeviceNotWanted,
                     {m_log.ByActor()}});
    if (m_pShallBeConnected->GetValue())
        m_device.Connect(GetDeviceSettings());
    else
        m_device.Disconnect();
}

OrvDeviceSettings McsServer::GetDeviceSettings() const {
    OrvDeviceSettings settings;
    settings.address = m_config.GetDeviceAddress();
    settings.name = m_config.GetDeviceName();
    settings.force = m_config.GetForceConnect();
    settings.channels = m_config.GetNumberOfFreqChannels();
    settings.maxProtocolLevel = m_config.GetMaxProtocolLevel();
    if (m_pScanAveragingTime && m_pScanAveragingTime->GetCurrentKey() > 0)
        settings.scanAveragingTime = std::chrono::milliseconds(m_pScanAveragingTime->GetCurrentKey());
    return settings;
}

void McsServer::OnConnectionChanged(bool isOnline, const CodedText& state) {
    ShowConnectionState(state);
    m_status.GetOnlineValue()->SetValue(isOnline, nullptr);
    const bool isLost = state.GetCode() == ECode::DeviceLost;
    const ECode offline = isLost ? ECode::ConnectionLost : ECode::DeviceNotConnected;
    m_log.Write({isOnline ? ECode::DeviceConnected : offline, {state}});
    m_jobs.DeviceChanged();
}

void McsServer::OnBootStateChanged(EBooState state) {
    m_status.GetBootStateValue()->Select(state, nullptr);
    m_log.Write({ECode::DeviceBoot, {CodedText::Word(m_status.GetBootStateAsString())}});
    m_jobs.DeviceChanged();
}

void McsServer::OnOperationModeChanged(EOperationMode mode) {
    m_status.GetOperationModeValue()->Select(mode, nullptr);
    m_log.Write({ECode::DeviceMode, {CodedText::Word(MCSTools::OperationModeAsString(mode))}});
    m_jobs.OperationModeChanged();
}

void McsServer::OnSweepTimeChanged(std::chrono::microseconds time) {
    constexpr std::chrono::microseconds::rep Longest = std::numeric_limits<int>::max();
    m_status.GetSweepTimeValue()->SetValue(static_cast<int>(std::min(time.count(), Longest)), nullptr);
}

void McsServer::OnChannelsChanged(int free, int used) {
    m_status.GetFreeFreqChannelsValue()->SetValue(free, nullptr);
    m_status.GetUsedFreqChannelsValue()->SetValue(used, nullptr);
}

void McsServer::OnReportIntervalChanged(std::chrono::milliseconds /*interval*/) {
    m_jobs.ReportIntervalChanged();
}

void McsServer::OnChannelLost(int channel, const CodedText& reason) {
    m_jobs.ChannelLost(channel, reason);
}

void McsServer::OnReceiverChanged(int channel, const ReceiverFacts& facts) {
    m_receivers.Show(channel, facts);
}

void McsServer::OnLog(const CodedText& text) {
    const bool isEvent = text.GetCode() < ECode::FirstPart;
    m_log.Write(isEvent ? text : CodedText(ECode::DeviceLog, {text}));
}
