// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/observedvalues.h>
#include <devicecontrol/multichannelserver/common/statusnode.h>

#include <platform/app/errorhandler.h>
#include <platform/values/valueaccess.h>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/mcsmpxorvstatus";

}  // namespace

MCSMpxORVStatus::MCSMpxORVStatus(const QString& basePath) : m_basePath(basePath) {
    SetupStatusSubtree();
}

MCSMpxORVStatus::MCSMpxORVStatus(const MCSMpxORVStatus& other) = default;

// What it had is let go of first: it would not know those values any more, and they would tell it of changes
// after its end. (fixed: assignment-lets-go)
MCSMpxORVStatus& MCSMpxORVStatus::operator=(const MCSMpxORVStatus& other) {
    if (this == &other) return *this;
    Detach();
    IObserver::operator=(other);
    Observable::operator=(other);
    m_basePath = other.m_basePath;
    m_pStaSubtree = other.m_pStaSubtree;
    ObservedValues(*this) = ObservedValues(other);
    return *this;
}

MCSMpxORVStatus::~MCSMpxORVStatus() {
    Detach();
}

void MCSMpxORVStatus::Detach() {
    if (m_pStaSubtree != nullptr) m_pStaSubtree->DeleteObserver(this);
    m_pStaSubtree = nullptr;
    observedvalues::DetachAll(ObservedValues(*this), this);
}

// Some paths are built from the node and some come from the virtual accessors, which are the class's own
// while the constructor runs.
void MCSMpxORVStatus::SetupStatusSubtree() {
    using namespace values;  // NOLINT(google-build-using-namespace): one table of types
    const ValueDescriptor& modes = StdDeviceDefinition::g_vdOperationMode;

    m_pStaSubtree = statusnode::Provide(m_basePath, this, SourcePath, 135);
    const QString nodePath = m_pStaSubtree->GetPathName();
    m_pOperationType = ProvideValue<Value<QString>>(mcskeys::Join(nodePath, mcskeys::OperationType), this);
    m_pConnectedClients = ProvideValue<ValueSelection>(mcskeys::Join(nodePath, mcskeys::ConnectedClients), 0,
                                                       nullptr, 0, false, this);
    AssertNotNull(m_pConnectedClients, L"m_pConnectedClients != NULL", SourcePath, 143);
    m_pOperationMode = ProvideValue<ValueSelection>(GetOperationMode_ValuePath(), 0, modes.SelItems(),
                                                    modes.CountSelItems(), false, this);
    AssertNotNull(m_pOperationMode, L"m_pOperationMode != NULL", SourcePath, 149);
    m_pIsMaster = ProvideValue<Value<bool>>(GetIsMaster_ValuePath(), false, false, this);
    AssertNotNull(m_pIsMaster, L"m_pIsMaster != NULL", SourcePath, 153);
    m_pIsWatchingMaster = ProvideValue<Value<bool>>(GetIsWatchingMaster_ValuePath(), false, false, this);
    AssertNotNull(m_pIsWatchingMaster, L"m_pIsWatchingMaster != NULL", SourcePath, 157);
    m_pComment = ProvideValue<Value<QString>>(mcskeys::Join(nodePath, mcskeys::Comment), this);
    AssertNotNull(m_pComment, L"m_pComment != NULL", SourcePath, 161);
}

void MCSMpxORVStatus::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::ContentChanged:
            if (observedvalues::Contains(ObservedValues(*this), source))  // fixed: told-from-own-values
                NotifyObservers(changecode::ContentChanged, this);
            break;
        case changecode::ItemsChanged:
        case changecode::ItemAdded:
        case changecode::ItemRemoved:
            if (m_pConnectedClients != nullptr && source == m_pConnectedClients)
                NotifyObservers(changecode::ContentChanged, this);
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

void MCSMpxORVStatus::AddConnectedClient(long id, const QString& name) {
    const ObservableGuard self(*this);
    m_pConnectedClients->AddItem(name, 0.0, id, nullptr);
    // Whoever heard of it may have destroyed this object or the value.
    if (self.IsAlive() && m_pConnectedClients != nullptr) m_pConnectedClients->Select(id, this);
}

void MCSMpxORVStatus::RemoveConnectedClient(long id) {
    if (values::SelectionItem* const item = m_pConnectedClients->GetItem(id))
        m_pConnectedClients->DeleteItem(item, nullptr);
}

QString MCSMpxORVStatus::GetOperationType() {
    const values::Value<QString>* const value = GetOperationTypeValue();
    return value != nullptr ? value->GetValue() : QString();
}

QString MCSMpxORVStatus::GetName() {
    const values::Node* const parent = m_pStaSubtree != nullptr ? m_pStaSubtree->GetParent() : nullptr;
    return parent != nullptr ? parent->GetName() : QString();
}

// clang-format off
void                    MCSMpxORVStatus::SetOperationType(const QString& type) const { GetOperationTypeValue()->SetValue(type, nullptr); }
values::Value<QString>* MCSMpxORVStatus::GetOperationTypeValue() const               { return m_pOperationType; }
QString                 MCSMpxORVStatus::GetOperationType_ValuePath()                { return mcskeys::Join(m_basePath, mcskeys::OperationType); }

values::ValueSelection* MCSMpxORVStatus::GetConnectedClientsValue() const            { return m_pConnectedClients; }
QString                 MCSMpxORVStatus::GetConnectedClients_ValuePath()             { return mcskeys::Join(m_basePath, mcskeys::ConnectedClients); }

EOperationMode          MCSMpxORVStatus::GetOperationMode()                          { return static_cast<EOperationMode>(GetOperationModeValue()->GetCurrentKey()); }
QString                 MCSMpxORVStatus::GetOperationModeAsString()                  { return m_pOperationMode->GetCurrentText(); }
values::ValueSelection* MCSMpxORVStatus::GetOperationModeValue() const               { return m_pOperationMode; }
QString                 MCSMpxORVStatus::GetOperationMode_ValuePath()                { return mcskeys::Join(m_basePath, mcskeys::OperationMode); }

bool                    MCSMpxORVStatus::IsMaster() const                            { return GetIsMasterValue()->GetValue(); }
values::Value<bool>*    MCSMpxORVStatus::GetIsMasterValue() const                    { return m_pIsMaster; }
QString                 MCSMpxORVStatus::GetIsMaster_ValuePath()                     { return mcskeys::Join(m_basePath, mcskeys::IsMaster); }

bool                    MCSMpxORVStatus::IsWatchingMaster() const                    { return GetIsWatchingMasterValue()->GetValue(); }
values::Value<bool>*    MCSMpxORVStatus::GetIsWatchingMasterValue() const            { return m_pIsWatchingMaster; }
QString                 MCSMpxORVStatus::GetIsWatchingMaster_ValuePath()             { return mcskeys::Join(m_basePath, mcskeys::IsWatchingMaster); }

void                    MCSMpxORVStatus::SetComment(const QString& comment) const    { GetCommentValue()->SetValue(comment, nullptr); }
QString                 MCSMpxORVStatus::GetComment()                                { return GetCommentValue()->GetValue(); }
values::Value<QString>* MCSMpxORVStatus::GetCommentValue() const                     { return m_pComment; }
QString                 MCSMpxORVStatus::GetComment_ValuePath()                      { return mcskeys::Join(m_basePath, mcskeys::Comment); }
// clang-format on
