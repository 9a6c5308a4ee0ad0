// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/observedvalues.h>

#include <platform/app/errorhandler.h>
#include <platform/app/vornos.h>
#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>
#include <platform/device/stddevicedefinition.h>
#include <platform/values/valueaccess.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/mcsconfigdata";

constexpr double DefaultFrequency = 30000000.0;  // Hz
constexpr double MinFrequency = 300000.0;
constexpr double MaxFrequency = 3000000000.0;
constexpr int DefaultScanAveragingTimeIndex = 4;
constexpr int StoredScanAveragingTimeIndex = 5;  // of a store without the key (fixed: two-default-indexes)

/// Truncates toward zero; what does not fit is the lowest number. (fixed: frequency-of-32-bits)
int ToInt32(double number) {
    constexpr double Beyond = 2147483648.0;
    const bool fits = number > -Beyond - 1.0 && number < Beyond;
    return fits ? static_cast<int>(number) : std::numeric_limits<int>::min();
}

/// An index for a selection; one that no int can hold becomes one that no selection has.
int ToIndex(long index) {
    constexpr long Highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(index, -Highest, Highest));
}

// A missing key reads as whatever default is asked for.
bool IsIntMissing(ICfg& cfg, const QString& key) {
    const int content = cfg.ReadInt(key, 0);
    return content != cfg.ReadInt(key, 1);
}

bool IsBoolMissing(ICfg& cfg, const QString& key) {
    const bool content = cfg.ReadBool(key, false);
    return content != cfg.ReadBool(key, true);
}

void Commit(ICfg& cfg, const QString& key, const QString& text) {
    cfg.WriteString(key, text);
    cfg.CommitKey(key);
}

void Commit(ICfg& cfg, const QString& key, int number) {
    cfg.WriteInt(key, number);
    cfg.CommitKey(key);
}

void Commit(ICfg& cfg, const QString& key, bool flag) {
    cfg.WriteBool(key, flag);
    cfg.CommitKey(key);
}

QString Read(ICfg& cfg, const QString& key, const QString& fallback) {
    return cfg.ReadString(key, fallback);
}

bool Read(ICfg& cfg, const QString& key, bool fallback) {
    return cfg.ReadBool(key, fallback);
}

int Read(ICfg& cfg, const QString& key, int fallback) {
    return cfg.ReadInt(key, fallback);
}

/// Sets \a value, unless it is gone, to what the store has. False if somebody who heard of it destroyed the
/// \a owner of the pointer.
template <typename ValueType>
bool ReadValue(ICfg& cfg, const QString& key, ValueType* value, const ObservableGuard& owner) {
    if (value != nullptr) value->SetValue(Read(cfg, key, value->GetValue()), nullptr);
    return owner.IsAlive();
}

}  // namespace

MCSConfigData::MCSConfigData(const QString* basePath, bool overwrite)
    : m_basePath(basePath != nullptr ? *basePath : mcskeys::DefaultBasePath(mcskeys::Config)) {
    ProvideValues(overwrite);
}

MCSConfigData::~MCSConfigData() {
    observedvalues::DetachAll(ObservedValues(), this);
}

void MCSConfigData::ProvideValues(bool overwrite) {
    using namespace values;  // NOLINT(google-build-using-namespace): one table of types
    const ValueDescriptor& intervals = StdDeviceDefinition::g_vdReportInterval;
    const QString deviceName = VornOS::Create()->GetMachineName() + QStringLiteral("_1");

    m_pDeviceAddress = ProvideValue<Value<QString>>(GetDeviceAddress_ValuePath(), QStringLiteral("localhost"),
                                                    overwrite, this);
    AssertNotNull(m_pDeviceAddress, L"m_pDeviceAddress != NULL", SourcePath, 70);
    m_pDeviceName = ProvideValue<Value<QString>>(GetDeviceName_ValuePath(), deviceName, overwrite, this);
    AssertNotNull(m_pDeviceName, L"m_pDeviceName != NULL", SourcePath, 76);
    m_pConnectOnStartup = ProvideValue<Value<bool>>(GetConnectOnStartup_ValuePath(), true, overwrite, this);
    AssertNotNull(m_pConnectOnStartup, L"m_pConnectOnStartup != NULL", SourcePath, 80);
    m_pForceConnect = ProvideValue<Value<bool>>(GetForceConnect_ValuePath(), false, overwrite, this);
    AssertNotNull(m_pForceConnect, L"m_pForceConnect != NULL", SourcePath, 84);
    m_pNumberOfFreqChannels =
        ProvideValue<ValueNumeric<int>>(GetNumberOfFreqChannels_ValuePath(), 4, 0, 50, overwrite, this);
    AssertNotNull(m_pNumberOfFreqChannels, L"m_pNumberOfFreqChannels != NULL", SourcePath, 88);
    m_pMaxProtocolLevel = ProvideValue<Value<int>>(GetMaxProtocolLevel_ValuePath(),
                                                   int(MCSProtocolLevelDefault), overwrite, this);
    AssertNotNull(m_pMaxProtocolLevel, L"m_pMaxProtocolLevel != NULL", SourcePath, 92);
    m_pSaveConfig =
        ProvideValue<Value<bool>>(mcskeys::Join(m_basePath, mcskeys::SaveConfig), false, overwrite, this);
    AssertNotNull(m_pSaveConfig, L"m_pSaveConfig != NULL", SourcePath, 96);
    m_pDefaultFrequencyForChannels =
        ProvideValue<ValueNumeric<double>>(GetDefaultFrequencyForChannels_ValuePath(), DefaultFrequency,
                                           MinFrequency, MaxFrequency, overwrite, this);
    AssertNotNull(m_pDefaultFrequencyForChannels, L"m_pDefaultFrequencyForChannels != NULL", SourcePath, 100);
    m_pDefaultScanAveragingTime =
        ProvideValue<ValueSelection>(GetDefaultScanAveragingTime_ValuePath(), DefaultScanAveragingTimeIndex,
                                     intervals.SelItems(), intervals.CountSelItems(), overwrite, this);
    AssertNotNull(m_pDefaultScanAveragingTime, L"m_pDefaultScanAveragingTime != NULL", SourcePath, 106);
}

bool MCSConfigData::DoesStaticMpxORVExist(const QString& name) const {
    return std::any_of(m_staticMpxORVs.begin(), m_staticMpxORVs.end(),
                       [&name](const StaticMpxORV& entry) { return entry.name == name; });
}

// Whoever hears of a setting may destroy this object, or the value of another setting.
void MCSConfigData::ReadFrom(ICfg* cfg) {
    if (cfg == nullptr) cfg = m_pCfg;
    if (cfg == nullptr) return;
    const CfgSave save;  // of the keys that are missing
    const ObservableGuard self(*this);
    m_isReading = true;
    if (!ReadSettings(*cfg, self) || !ReadDefaultsForJobs(*cfg, self)) return;
    m_staticMpxORVs.clear();  // fixed: empty-static-list
    ReadDefaultPolicy(*cfg);
    m_pCfg = cfg;
    m_isReading = false;
    NotifyObservers(changecode::ContentChanged, this);
}

bool MCSConfigData::ReadSettings(ICfg& cfg, const ObservableGuard& self) {
    const bool isAlive = ReadValue(cfg, mcskeys::DeviceAddress, m_pDeviceAddress, self) &&
                         ReadValue(cfg, mcskeys::DeviceName, m_pDeviceName, self) &&
                         ReadValue(cfg, mcskeys::ConnectOnStartup, m_pConnectOnStartup, self) &&
                         ReadValue(cfg, mcskeys::ForceConnect, m_pForceConnect, self) &&
                         ReadValue(cfg, mcskeys::NumberOfFreqChannels, m_pNumberOfFreqChannels, self);
    if (!isAlive) return false;
    m_guiVisible = cfg.ReadBool(mcskeys::GuiVisible, m_guiVisible);
    if (!ReadValue(cfg, mcskeys::MaxProtocolLevel, m_pMaxProtocolLevel, self)) return false;
    if (IsBoolMissing(cfg, mcskeys::ResetAfterBoot)) Commit(cfg, mcskeys::ResetAfterBoot, false);
    m_resetAfterBoot = cfg.ReadBool(mcskeys::ResetAfterBoot, false);
    return true;
}

bool MCSConfigData::ReadDefaultsForJobs(ICfg& cfg, const ObservableGuard& self) {
    const QString frequencyKey = mcskeys::DefaultFrequencyForChannel;
    if (IsIntMissing(cfg, frequencyKey)) Commit(cfg, frequencyKey, ToInt32(DefaultFrequency));
    if (m_pDefaultFrequencyForChannels != nullptr) {
        const int frequency = cfg.ReadInt(frequencyKey, ToInt32(GetDefaultFrequencyForChannels()));
        m_pDefaultFrequencyForChannels->SetValue(frequency, nullptr);
        if (!self.IsAlive()) return false;
    }
    const QString indexKey = mcskeys::DefaultScanAveragingTimeIndex;
    if (IsIntMissing(cfg, indexKey)) Commit(cfg, indexKey, StoredScanAveragingTimeIndex);
    if (m_pDefaultScanAveragingTime != nullptr) {
        const int index = cfg.ReadInt(indexKey, m_pDefaultScanAveragingTime->GetCurrentIndex());
        m_pDefaultScanAveragingTime->SelectIndex(index, nullptr);
    }
    return self.IsAlive();
}

void MCSConfigData::ReadDefaultPolicy(ICfg& cfg) {
    const std::unique_ptr<ICfg> dynamic(cfg.OpenSection(mcskeys::DynamicMpxORVs));
    const std::unique_ptr<ICfg> policy(dynamic ? dynamic->OpenSection(mcskeys::Policy) : nullptr);
    m_defaultDynMpxORVPolicy.SetToDefaultPolicy();
    m_defaultDynMpxORVPolicy.ReadFromCfg(policy.get());
    m_defaultDynMpxORVPolicy.WriteToCfg(policy.get());  // so that missing keys appear
}

void MCSConfigData::WriteTo(ICfg* cfg) {
    if (cfg == nullptr) cfg = m_pCfg;
    if (cfg == nullptr) return;
    const CfgSave save;
    Commit(*cfg, mcskeys::DeviceAddress, GetDeviceAddress());
    Commit(*cfg, mcskeys::DeviceName, GetDeviceName());
    Commit(*cfg, mcskeys::ConnectOnStartup, GetConnectOnStartup());
    Commit(*cfg, mcskeys::ForceConnect, GetForceConnect());
    Commit(*cfg, mcskeys::NumberOfFreqChannels, GetNumberOfFreqChannels());
    Commit(*cfg, mcskeys::MaxProtocolLevel, int(GetMaxProtocolLevel()));
    Commit(*cfg, mcskeys::DefaultFrequencyForChannel, ToInt32(GetDefaultFrequencyForChannels()));
    Commit(*cfg, mcskeys::DefaultScanAveragingTimeIndex, m_pDefaultScanAveragingTime->GetCurrentIndex());
    WriteGuiVisibleTo(cfg);
    m_pCfg = cfg;
}

void MCSConfigData::WriteGuiVisibleTo(ICfg* cfg) {
    if (cfg == nullptr) cfg = m_pCfg;
    if (cfg != nullptr) Commit(*cfg, mcskeys::GuiVisible, m_guiVisible);
}

void MCSConfigData::TriggerSaveConfig() {
    m_pSaveConfig->SetValue(true, nullptr);
}

void MCSConfigData::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged)
        observedvalues::ForgetIfGoingAway(ObservedValues(), source, this);
    else if (code == changecode::ContentChanged)
        OnContentChanged(source);
}

void MCSConfigData::OnContentChanged(const Observable* source) {
    if (m_pSaveConfig != nullptr && source == m_pSaveConfig) {
        if (!m_pSaveConfig->GetValue() || m_pCfg == nullptr) return;
        WriteTo(nullptr);
        m_pSaveConfig->SetValue(false, nullptr);
    } else if (observedvalues::Contains(std::tie(m_pDefaultScanAveragingTime, m_pDefaultFrequencyForChannels),
                                        source)) {
        if (m_pCfg != nullptr) WriteTo(nullptr);  // fixed: saves-while-reading
    } else if (!m_isReading) {
        NotifyObservers(changecode::ContentChanged, this);
    }
}

// clang-format off
QString          MCSConfigData::GetDeviceAddress() const                         { return m_pDeviceAddress->GetValue(); }
void             MCSConfigData::SetDeviceAddress(const QString& address)         { m_pDeviceAddress->SetValue(address, nullptr); }
QString          MCSConfigData::GetDeviceAddress_ValuePath() const               { return mcskeys::Join(m_basePath, mcskeys::DeviceAddress); }

QString          MCSConfigData::GetDeviceName() const                            { return m_pDeviceName->GetValue(); }
void             MCSConfigData::SetDeviceName(const QString& name)               { m_pDeviceName->SetValue(name, nullptr); }
QString          MCSConfigData::GetDeviceName_ValuePath() const                  { return mcskeys::Join(m_basePath, mcskeys::DeviceName); }

bool             MCSConfigData::GetConnectOnStartup() const                      { return m_pConnectOnStartup->GetValue(); }
void             MCSConfigData::SetConnectOnStartup(bool connect)                { m_pConnectOnStartup->SetValue(connect, nullptr); }
QString          MCSConfigData::GetConnectOnStartup_ValuePath() const            { return mcskeys::Join(m_basePath, mcskeys::ConnectOnStartup); }

bool             MCSConfigData::GetForceConnect() const                          { return m_pForceConnect->GetValue(); }
void             MCSConfigData::SetForceConnect(bool force)                      { m_pForceConnect->SetValue(force, nullptr); }
QString          MCSConfigData::GetForceConnect_ValuePath() const                { return mcskeys::Join(m_basePath, mcskeys::ForceConnect); }

int              MCSConfigData::GetNumberOfFreqChannels() const                  { return m_pNumberOfFreqChannels->GetValue(); }
void             MCSConfigData::SetNumberOfFreqChannels(int number)              { m_pNumberOfFreqChannels->SetValue(number, nullptr); }
QString          MCSConfigData::GetNumberOfFreqChannels_ValuePath() const        { return mcskeys::Join(m_basePath, mcskeys::NumberOfFreqChannels); }

MCSProtocolLevel MCSConfigData::GetMaxProtocolLevel() const                      { return static_cast<MCSProtocolLevel>(m_pMaxProtocolLevel->GetValue()); }
void             MCSConfigData::SetMaxProtocolLevel(MCSProtocolLevel level)      { m_pMaxProtocolLevel->SetValue(level, nullptr); }
QString          MCSConfigData::GetMaxProtocolLevel_ValuePath() const            { return mcskeys::Join(m_basePath, mcskeys::MaxProtocolLevel); }

double           MCSConfigData::GetDefaultFrequencyForChannels() const           { return m_pDefaultFrequencyForChannels->GetValue(); }
void             MCSConfigData::SetDefaultFrequencyForChannels(double hz)        { m_pDefaultFrequencyForChannels->SetValue(hz, nullptr); }
QString          MCSConfigData::GetDefaultFrequencyForChannels_ValuePath() const { return mcskeys::Join(m_basePath, mcskeys::DefaultFrequencyForChannel); }

long             MCSConfigData::GetDefaultScanAveragingTime() const              { return m_pDefaultScanAveragingTime->GetCurrentIndex(); }
void             MCSConfigData::SetDefaultScanAveragingTime(long index)          { m_pDefaultScanAveragingTime->SelectIndex(ToIndex(index), nullptr); }
QString          MCSConfigData::GetDefaultScanAveragingTime_ValuePath() const    { return mcskeys::Join(m_basePath, mcskeys::DefaultScanAveragingTimeIndex); }

bool             MCSConfigData::GetGuiVisible() const                            { return m_guiVisible; }
void             MCSConfigData::SetGuiVisible(bool visible)                      { m_guiVisible = visible; }
QString          MCSConfigData::GetGuiVisible_ValuePath() const                  { return mcskeys::Join(m_basePath, mcskeys::GuiVisible); }
bool             MCSConfigData::GetResetAfterBoot() const                        { return m_resetAfterBoot; }

QString          MCSConfigData::GetBasePath() const                              { return m_basePath; }
ICfg*            MCSConfigData::GetICfg() const                                  { return m_pCfg; }
MCSPolicySet     MCSConfigData::GetDefaultDynMpxORVPolicy() const                { return m_defaultDynMpxORVPolicy; }
// clang-format on

QList<MCSConfigData::StaticMpxORV> MCSConfigData::GetStaticMpxORVs() const {
    return m_staticMpxORVs;
}
