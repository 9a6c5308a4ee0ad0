// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <devicecontrol/multichannelserver/common/data/currentkey.h>
#include <devicecontrol/multichannelserver/common/data/operationmodes.h>
#include <devicecontrol/multichannelserver/common/data/statusnode.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/fields.h>

namespace {

using fields::Content;
using fields::Field;
using fields::ItemsOf;
using fields::TypesOwn;

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* StatusPlace = L"devicecontrol/multichannelserver/common/mcsstatus";

constexpr fields::Within Counter = {0, 0, 1000};
constexpr fields::Within SweepTime = {0, 0, 100000000};  // µs

const values::ValueDescriptor& BootStates() {
    return StdDeviceDefinition::g_vdBooState;
}
}  // namespace

struct MCSStatus::Fields {
    using S = MCSStatus;
    // clang-format off
    static constexpr std::tuple Rows = {
        // member                      path                                     starts with                 asserted as                          line  looked for: the mode is fourth (fixed: search-order)
        Field{&S::m_pBootState,              &S::GetBootState_ValuePath,              ItemsOf{BootStates, BootReady}, L"m_pBootState != NULL",              116, {1}},
        Field{&S::m_pOperationMode,          &S::GetOperationMode_ValuePath,          ItemsOf{operationmodes::Get, 0},     L"m_pOperationMode != NULL",          122, {4}},
        Field{&S::m_pFreeFreqChannels,       &S::GetFreeFreqChannels_ValuePath,       Counter,                        L"m_pFreeFreqChannels != NULL",       126, {2}},
        Field{&S::m_pUsedFreqChannels,       &S::GetUsedFreqChannels_ValuePath,       Counter,                        L"m_pUsedFreqChannels != NULL",       130, {3}},
        Field{&S::m_pMcsMasterJobControlled, &S::GetMcsMasterJobControlled_ValuePath, Content{false},                 L"m_pMcsMasterJobControlled != NULL", 134, {5}},
        Field{&S::m_pSweepTime,              &S::GetSweepTime_ValuePath,              SweepTime,                      L"m_pSweepTime != NULL",              138, {6}},
        Field{&S::m_pOnline,                 &S::GetOnline_ValuePath,                 Content{false},                 L"m_pOnline != NULL",                 142, {7}},
        Field{&S::m_pConnectionState,        &S::GetConnectionState_ValuePath,        Content{QLatin1String()},       L"m_pConnectionState != NULL",        146, {8}},
        Field{&S::m_pStaticMpxORVs,          &S::GetStaticMpxORVs_ValuePath,          Counter,                        L"m_pStaticMpxORVs != NULL",          150, {9}},
        Field{&S::m_pDynamicMpxORVs,         &S::GetDynamicMpxORVs_ValuePath,         Counter,                        L"m_pDynamicMpxORVs != NULL",         154, {10}},
        Field{&S::m_pLogMessage,             &S::GetLogMessage_ValuePath,             TypesOwn{},                     L"m_pLogMessage != NULL",             157, {11}},
    };
    // clang-format on
};

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
    fields::Share<Fields>(*this, other);
    return *this;
}

MCSStatus::~MCSStatus() {
    Detach();
}

void MCSStatus::Detach() {
    if (m_pStaSubtree != nullptr) m_pStaSubtree->DeleteObserver(this);
    m_pStaSubtree = nullptr;
    fields::DetachAll<Fields>(*this, this);
}

// The paths come from the virtual accessors. While the constructor runs these are the class's own: what a
// derived class overrides holds only afterwards.
void MCSStatus::SetupStatusSubtree() {
    m_pStaSubtree = statusnode::Provide(m_basePath, this, StatusPlace, 109);
    fields::Provide<Fields>(*this, StatusPlace, false, this);
    // Each log message is an occurrence: the same text twice is two messages. (fixed: log-occurrences)
    if (m_pLogMessage != nullptr) m_pLogMessage->SetDelivery(values::EDelivery::EveryChange);
}

void MCSStatus::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::ContentChanged:
            NotifyObservers(changecode::ContentChanged, this);  // fixed: told-from-any-source
            break;
        case changecode::StateChanged:
            fields::ForgetIfGoingAway<Fields>(*this, source, this);
            break;
        case changecode::GoingAway:
            if (m_pStaSubtree != nullptr && source == m_pStaSubtree) m_pStaSubtree = nullptr;
            break;
        default:
            break;
    }
}

// clang-format off
EBooState                  MCSStatus::GetBootState()                         { return CurrentKeyAs<EBooState>(*GetBootStateValue()); }
QString                    MCSStatus::GetBootStateAsString()                 { return m_pBootState->GetCurrentText(); }
values::ValueSelection*    MCSStatus::GetBootStateValue() const              { return m_pBootState; }
QString                    MCSStatus::GetBootState_ValuePath()               { return mcskeys::Join(m_basePath, mcskeys::BootState); }

EOperationMode             MCSStatus::GetOperationMode()                     { return CurrentKeyAs<EOperationMode>(*GetOperationModeValue()); }
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
