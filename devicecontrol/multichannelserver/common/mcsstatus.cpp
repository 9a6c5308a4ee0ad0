// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/observedvalues.h>
#include <devicecontrol/multichannelserver/common/statusnode.h>

#include <platform/app/errorhandler.h>
#include <platform/values/valueaccess.h>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/mcsstatus";

constexpr int MaxCount = 1000;
constexpr int MaxSweepTime = 100000000;

}  // namespace

MCSStatus::MCSStatus(const QString& basePath) : m_basePath(basePath) {
    SetupStatusSubtree();
}

MCSStatus::MCSStatus(const MCSStatus& other) = default;

// What it had is let go of first: it would not know those values any more, and they would tell it of changes
// after its end. (fixed: assignment-lets-go)
MCSStatus& MCSStatus::operator=(const MCSStatus& other) {
    if (this == &other) return *this;
    Detach();
    IObserver::operator=(other);
    Observable::operator=(other);
    m_basePath = other.m_basePath;
    m_pStaSubtree = other.m_pStaSubtree;
    ObservedValues(*this) = ObservedValues(other);
    return *this;
}

MCSStatus::~MCSStatus() {
    Detach();
}

void MCSStatus::Detach() {
    if (m_pStaSubtree != nullptr) m_pStaSubtree->DeleteObserver(this);
    m_pStaSubtree = nullptr;
    observedvalues::DetachAll(ObservedValues(*this), this);
}

// The paths come from the virtual accessors. While the constructor runs these are the class's own: what a
// derived class overrides holds only afterwards.
void MCSStatus::SetupStatusSubtree() {
    using namespace values;  // NOLINT(google-build-using-namespace): one table of types
    const auto provideSelection = [this](const QString& path, int defaultIndex,
                                         const ValueDescriptor& descriptor) {
        return ProvideValue<ValueSelection>(path, defaultIndex, descriptor.SelItems(),
                                            descriptor.CountSelItems(), false, this);
    };
    const auto provideNumber = [this](const QString& path, int maximum) {
        return ProvideValue<ValueNumeric<int>>(path, 0, 0, maximum, false, this);
    };
    const auto provideFlag = [this](const QString& path) {
        return ProvideValue<Value<bool>>(path, false, false, this);
    };

    m_pStaSubtree = statusnode::Provide(m_basePath, this, SourcePath, 109);
    m_pBootState = provideSelection(GetBootState_ValuePath(), BootReady, StdDeviceDefinition::g_vdBooState);
    AssertNotNull(m_pBootState, L"m_pBootState != NULL", SourcePath, 116);
    m_pOperationMode =
        provideSelection(GetOperationMode_ValuePath(), 0, StdDeviceDefinition::g_vdOperationMode);
    AssertNotNull(m_pOperationMode, L"m_pOperationMode != NULL", SourcePath, 122);
    m_pFreeFreqChannels = provideNumber(GetFreeFreqChannels_ValuePath(), MaxCount);
    AssertNotNull(m_pFreeFreqChannels, L"m_pFreeFreqChannels != NULL", SourcePath, 126);
    m_pUsedFreqChannels = provideNumber(GetUsedFreqChannels_ValuePath(), MaxCount);
    AssertNotNull(m_pUsedFreqChannels, L"m_pUsedFreqChannels != NULL", SourcePath, 130);
    m_pMcsMasterJobControlled = provideFlag(GetMcsMasterJobControlled_ValuePath());
    AssertNotNull(m_pMcsMasterJobControlled, L"m_pMcsMasterJobControlled != NULL", SourcePath, 134);
    m_pSweepTime = provideNumber(GetSweepTime_ValuePath(), MaxSweepTime);
    AssertNotNull(m_pSweepTime, L"m_pSweepTime != NULL", SourcePath, 138);
    m_pOnline = provideFlag(GetOnline_ValuePath());
    AssertNotNull(m_pOnline, L"m_pOnline != NULL", SourcePath, 142);
    m_pConnectionState = ProvideValue<Value<QString>>(GetConnectionState_ValuePath(), QString(), false, this);
    AssertNotNull(m_pConnectionState, L"m_pConnectionState != NULL", SourcePath, 146);
    m_pStaticMpxORVs = provideNumber(GetStaticMpxORVs_ValuePath(), MaxCount);
    AssertNotNull(m_pStaticMpxORVs, L"m_pStaticMpxORVs != NULL", SourcePath, 150);
    m_pDynamicMpxORVs = provideNumber(GetDynamicMpxORVs_ValuePath(), MaxCount);
    AssertNotNull(m_pDynamicMpxORVs, L"m_pDynamicMpxORVs != NULL", SourcePath, 154);
    m_pLogMessage = ProvideValue<Value<QString>>(GetLogMessage_ValuePath(), this);
    AssertNotNull(m_pLogMessage, L"m_pLogMessage != NULL", SourcePath, 157);
    // Each log message is an occurrence: the same text twice is two messages. (fixed: log-occurrences)
    if (m_pLogMessage != nullptr) m_pLogMessage->SetDelivery(EDelivery::EveryChange);
}

void MCSStatus::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::ContentChanged:
            NotifyObservers(changecode::ContentChanged, this);  // fixed: told-from-any-source
            break;
        case changecode::StateChanged:
            observedvalues::ForgetIfGoingAway(ObservedValues(*this), source, this);
            break;
        case changecode::GoingAway:
            if (m_pStaSubtree != nullptr && source == m_pStaSubtree) m_pStaSubtree = nullptr;
            break;
        default:
            break;
    }
}

// clang-format off
EBooState                  MCSStatus::GetBootState()                         { return static_cast<EBooState>(GetBootStateValue()->GetCurrentKey()); }
QString                    MCSStatus::GetBootStateAsString()                 { return m_pBootState->GetCurrentText(); }
values::ValueSelection*    MCSStatus::GetBootStateValue() const              { return m_pBootState; }
QString                    MCSStatus::GetBootState_ValuePath()               { return mcskeys::Join(m_basePath, mcskeys::BootState); }

EOperationMode             MCSStatus::GetOperationMode()                     { return static_cast<EOperationMode>(GetOperationModeValue()->GetCurrentKey()); }
QString                    MCSStatus::GetOperationModeAsString()             { return m_pOperationMode->GetCurrentText(); }
values::ValueSelection*    MCSStatus::GetOperationModeValue() const          { return m_pOperationMode; }
QString                    MCSStatus::GetOperationMode_ValuePath()           { return mcskeys::Join(m_basePath, mcskeys::OperationMode); }

int                        MCSStatus::GetFreeFreqChannels() const            { return GetFreeFreqChannelsValue()->GetValue(); }
values::ValueNumeric<int>* MCSStatus::GetFreeFreqChannelsValue() const       { return m_pFreeFreqChannels; }
QString                    MCSStatus::GetFreeFreqChannels_ValuePath()        { return mcskeys::Join(m_basePath, mcskeys::FreeFreqChannels); }

int                        MCSStatus::GetUsedFreqChannels() const            { return GetUsedFreqChannelsValue()->GetValue(); }
values::ValueNumeric<int>* MCSStatus::GetUsedFreqChannelsValue() const       { return m_pUsedFreqChannels; }
QString                    MCSStatus::GetUsedFreqChannels_ValuePath()        { return mcskeys::Join(m_basePath, mcskeys::UsedFreqChannels); }

bool                       MCSStatus::IsMcsMasterJobControlled() const       { return GetMcsMasterJobControlledValue()->GetValue(); }
values::Value<bool>*       MCSStatus::GetMcsMasterJobControlledValue() const { return m_pMcsMasterJobControlled; }
QString                    MCSStatus::GetMcsMasterJobControlled_ValuePath()  { return mcskeys::Join(m_basePath, mcskeys::McsMasterJobControlled); }

int                        MCSStatus::GetSweepTime() const                   { return GetSweepTimeValue()->GetValue(); }
values::ValueNumeric<int>* MCSStatus::GetSweepTimeValue() const              { return m_pSweepTime; }
QString                    MCSStatus::GetSweepTime_ValuePath()               { return mcskeys::Join(m_basePath, mcskeys::SweepTime); }

bool                       MCSStatus::IsOnline() const                       { return GetOnlineValue()->GetValue(); }
values::Value<bool>*       MCSStatus::GetOnlineValue() const                 { return m_pOnline; }
QString                    MCSStatus::GetOnline_ValuePath()                  { return mcskeys::Join(m_basePath, mcskeys::Online); }

QString                    MCSStatus::GetConnectionState()                   { return GetConnectionStateValue()->GetValue(); }
values::Value<QString>*    MCSStatus::GetConnectionStateValue() const        { return m_pConnectionState; }
QString                    MCSStatus::GetConnectionState_ValuePath()         { return mcskeys::Join(m_basePath, mcskeys::ConnectionState); }

int                        MCSStatus::GetStaticMpxORVs() const               { return GetStaticMpxORVsValue()->GetValue(); }
values::ValueNumeric<int>* MCSStatus::GetStaticMpxORVsValue() const          { return m_pStaticMpxORVs; }
QString                    MCSStatus::GetStaticMpxORVs_ValuePath()           { return mcskeys::Join(m_basePath, mcskeys::StaticMpxORVs); }

int                        MCSStatus::GetDynamicMpxORVs() const              { return GetDynamicMpxORVsValue()->GetValue(); }
values::ValueNumeric<int>* MCSStatus::GetDynamicMpxORVsValue() const         { return m_pDynamicMpxORVs; }
QString                    MCSStatus::GetDynamicMpxORVs_ValuePath()          { return mcskeys::Join(m_basePath, mcskeys::DynamicMpxORVs); }

QString                    MCSStatus::GetLogMessage()                        { return GetLogMessageValue()->GetValue(); }
values::Value<QString>*    MCSStatus::GetLogMessageValue() const             { return m_pLogMessage; }
QString                    MCSStatus::GetLogMessage_ValuePath()              { return mcskeys::Join(m_basePath, mcskeys::LogMessage); }
// clang-format on
