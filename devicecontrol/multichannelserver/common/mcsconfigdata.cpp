// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <devicecontrol/multichannelserver/common/data/storedsetting.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/app/vornos.h>
#include <platform/config/cfgsave.h>
#include <platform/config/icfg.h>
#include <platform/device/stddevicedefinition.h>
#include <platform/values/fields.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>

namespace {

using fields::Content;
using fields::Field;
using fields::ItemsOf;
using fields::NotStored;
using fields::Within;
using storedsetting::Stored;

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* ConfigDataPlace = L"devicecontrol/multichannelserver/common/mcsconfigdata";

constexpr double DefaultFrequency = 30000000.0;  // Hz
constexpr int StoredScanAveragingTimeIndex = 5;  // of a store without the key (fixed: two-default-indexes)

/// An index for a selection; one that no int can hold becomes one that no selection has.
int ToIndex(long index) {
    constexpr long Highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(index, -Highest, Highest));
}

Content<QString> NameOfTheMachine(const MCSConfigData& /*config*/) {
    return {VornOS::Create()->GetMachineName() + QStringLiteral("_1")};
}

const values::ValueDescriptor& ReportIntervals() {
    return StdDeviceDefinition::g_vdReportInterval;
}

}  // namespace

struct MCSConfigData::Fields {
    using C = MCSConfigData;

    /// A setting that the tree does not have.
    template <class T>
    struct Flag {
        bool C::*member;
        fields::Places places;
        Stored<T> stored;
    };
    template <class T>
    Flag(bool C::*, fields::Places, Stored<T>) -> Flag<T>;

    static QString SaveConfigPath(const C& config) {
        return mcskeys::Join(config.m_basePath, mcskeys::SaveConfig);
    }

    // In the order of providing; the three numbers are the places in the orders of looking for, reading and
    // writing.
    // clang-format off
    static constexpr std::tuple Rows = {
        Field{&C::m_pDeviceAddress,               &C::GetDeviceAddress_ValuePath,               Content{QLatin1String("localhost", 9)},
              L"m_pDeviceAddress != NULL",               70,  {1, 1, 1},  Stored{mcskeys::DeviceAddress}},
        Field{&C::m_pDeviceName,                  &C::GetDeviceName_ValuePath,                  NameOfTheMachine,
              L"m_pDeviceName != NULL",                  76,  {2, 2, 2},  Stored{mcskeys::DeviceName}},
        Field{&C::m_pConnectOnStartup,            &C::GetConnectOnStartup_ValuePath,            Content{true},
              L"m_pConnectOnStartup != NULL",            80,  {3, 3, 3},  Stored{mcskeys::ConnectOnStartup}},
        Field{&C::m_pForceConnect,                &C::GetForceConnect_ValuePath,                Content{false},
              L"m_pForceConnect != NULL",                84,  {4, 4, 4},  Stored{mcskeys::ForceConnect}},
        Field{&C::m_pNumberOfFreqChannels,        &C::GetNumberOfFreqChannels_ValuePath,        Within{4, 0, 50},
              L"m_pNumberOfFreqChannels != NULL",        88,  {5, 5, 5},  Stored{mcskeys::NumberOfFreqChannels}},
        Field{&C::m_pMaxProtocolLevel,            &C::GetMaxProtocolLevel_ValuePath,            Content{int(MCSProtocolLevelDefault)},
              L"m_pMaxProtocolLevel != NULL",            92,  {6, 7, 6},  Stored{mcskeys::MaxProtocolLevel}},
        Field{&C::m_pSaveConfig,                  SaveConfigPath,                               Content{false},
              L"m_pSaveConfig != NULL",                  96,  {9, 0, 0}},
        Field{&C::m_pDefaultFrequencyForChannels, &C::GetDefaultFrequencyForChannels_ValuePath, Within{DefaultFrequency, 300000.0, 3000000000.0},
              L"m_pDefaultFrequencyForChannels != NULL", 100, {8, 9, 7},  Stored{mcskeys::DefaultFrequencyForChannel, int(DefaultFrequency)}},
        Field{&C::m_pDefaultScanAveragingTime,    &C::GetDefaultScanAveragingTime_ValuePath,    ItemsOf{ReportIntervals, 4},
              L"m_pDefaultScanAveragingTime != NULL",    106, {7, 10, 8}, Stored{mcskeys::DefaultScanAveragingTimeIndex, StoredScanAveragingTimeIndex}},
        Flag{&C::m_guiVisible,                                            {0, 6, 0},  Stored{mcskeys::GuiVisible}},
        Flag{&C::m_resetAfterBoot,                                        {0, 8, 0},  Stored{mcskeys::ResetAfterBoot, false}},
    };
    // clang-format on

    template <class V, class Path, class Start, class T>
    static void ReadRow(C& config, ICfg& cfg, const Field<C, V, Path, Start, Stored<T>>& row) {
        row.stored.WriteIfMissing(cfg);
        V* const value = config.*row.member;
        if (value != nullptr) storedsetting::ReadInto(cfg, row.stored.key, *value);
    }
    static void ReadRow(C& config, ICfg& cfg, const Flag<std::nullptr_t>& row) {
        config.*row.member = cfg.ReadBool(row.stored.key, config.*row.member);
    }
    static void ReadRow(C& config, ICfg& cfg, const Flag<bool>& row) {
        row.stored.WriteIfMissing(cfg);
        config.*row.member = cfg.ReadBool(row.stored.key, row.stored.ifMissing);
    }

    template <class V, class Path, class Start, class T>
    static void WriteRow(const C& config, ICfg& cfg, const Field<C, V, Path, Start, Stored<T>>& row) {
        const V* const value = config.*row.member;
        if (value != nullptr) storedsetting::Commit(cfg, row.stored.key, storedsetting::ContentOf(*value));
    }
};

MCSConfigData::MCSConfigData(const QString* basePath, bool overwrite)
    : m_basePath(basePath != nullptr ? *basePath : mcskeys::DefaultBasePath(mcskeys::Config)) {
    fields::Provide<Fields>(*this, ConfigDataPlace, overwrite, this);
}

MCSConfigData::~MCSConfigData() {
    fields::DetachAll<Fields>(*this, this);
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
    fields::Walk<Fields, &fields::Places::read>([&](const auto& row) {
        Fields::ReadRow(*this, *cfg, row);
        return self.IsAlive();
    });
    if (!self.IsAlive()) return;
    m_staticMpxORVs.clear();  // fixed: empty-static-list
    ReadDefaultPolicy(*cfg);
    m_pCfg = cfg;
    m_isReading = false;
    NotifyObservers(changecode::ContentChanged, this);
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
    fields::Walk<Fields, &fields::Places::written>([&](const auto& row) {
        Fields::WriteRow(*this, *cfg, row);
        return true;
    });
    WriteGuiVisibleTo(cfg);
    m_pCfg = cfg;
}

void MCSConfigData::WriteGuiVisibleTo(ICfg* cfg) {
    if (cfg == nullptr) cfg = m_pCfg;
    if (cfg != nullptr) storedsetting::Commit(*cfg, mcskeys::GuiVisible, m_guiVisible);
}

void MCSConfigData::TriggerSaveConfig() {
    m_pSaveConfig->SetValue(true, nullptr);
}

void MCSConfigData::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged)
        fields::ForgetIfGoingAway<Fields>(*this, source, this);
    else if (code == changecode::ContentChanged)
        OnContentChanged(source);
}

void MCSConfigData::OnContentChanged(const Observable* source) {
    if (m_pSaveConfig != nullptr && source == m_pSaveConfig) {
        if (!m_pSaveConfig->GetValue() || m_pCfg == nullptr) return;
        WriteTo(nullptr);
        m_pSaveConfig->SetValue(false, nullptr);
    } else if (source != nullptr &&
               (source == m_pDefaultScanAveragingTime || source == m_pDefaultFrequencyForChannels)) {
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
