// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

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
constexpr const wchar_t* MpxORVStatusPlace = L"devicecontrol/multichannelserver/common/mcsmpxorvstatus";

}  // namespace

// Some paths are built from the node, and some come from the virtual accessors, which are the class's own
// while the constructor runs.
struct MCSMpxORVStatus::Fields {
    using S = MCSMpxORVStatus;
    struct BelowNode {
        QLatin1String key;
        QString operator()(const S& status) const {
            return mcskeys::Join(status.m_pStaSubtree->GetPathName(), key);
        }
    };
    // clang-format off
    static constexpr std::tuple Rows = {
        // member                      path                                     starts with                 asserted as                    line  looked for
        Field{&S::m_pOperationType,    BelowNode{mcskeys::OperationType},       TypesOwn{},                 nullptr,                         0, {1}},
        Field{&S::m_pConnectedClients, BelowNode{mcskeys::ConnectedClients},    ItemsOf{nullptr, 0},        L"m_pConnectedClients != NULL",  143, {2}},
        Field{&S::m_pOperationMode,    &S::GetOperationMode_ValuePath,          ItemsOf{operationmodes::Get, 0}, L"m_pOperationMode != NULL",     149, {3}},
        Field{&S::m_pIsMaster,         &S::GetIsMaster_ValuePath,               Content{false},             L"m_pIsMaster != NULL",          153, {4}},
        Field{&S::m_pIsWatchingMaster, &S::GetIsWatchingMaster_ValuePath,       Content{false},             L"m_pIsWatchingMaster != NULL",  157, {5}},
        Field{&S::m_pComment,          BelowNode{mcskeys::Comment},             TypesOwn{},                 L"m_pComment != NULL",           161, {6}},
    };
    // clang-format on
};

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
    fields::Share<Fields>(*this, other);
    return *this;
}

MCSMpxORVStatus::~MCSMpxORVStatus() {
    Detach();
}

void MCSMpxORVStatus::Detach() {
    if (m_pStaSubtree != nullptr) m_pStaSubtree->DeleteObserver(this);
    m_pStaSubtree = nullptr;
    fields::DetachAll<Fields>(*this, this);
}

void MCSMpxORVStatus::SetupStatusSubtree() {
    m_pStaSubtree = statusnode::Provide(m_basePath, this, MpxORVStatusPlace, 135);
    fields::Provide<Fields>(*this, MpxORVStatusPlace, false, this);
}

void MCSMpxORVStatus::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::ContentChanged:
            if (fields::Contains<Fields>(*this, source))  // fixed: told-from-own-values
                NotifyObservers(changecode::ContentChanged, this);
            break;
        case changecode::ItemsChanged:
        case changecode::ItemAdded:
        case changecode::ItemRemoved:
            if (m_pConnectedClients != nullptr && source == m_pConnectedClients)
                NotifyObservers(changecode::ContentChanged, this);
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

EOperationMode          MCSMpxORVStatus::GetOperationMode()                          { return CurrentKeyAs<EOperationMode>(*GetOperationModeValue()); }
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
