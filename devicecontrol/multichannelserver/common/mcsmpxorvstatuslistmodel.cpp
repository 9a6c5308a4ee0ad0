// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <devicecontrol/multichannelserver/common/list/listcolumns.h>
#include <devicecontrol/multichannelserver/common/list/mcsmpxorvstatuslistmodelimplementation.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QStringList>
#include <QtGui/QPixmap>

namespace {

QString ClientsOf(const MCSMpxORVStatus& status) {
    const values::ValueSelection* const clients = status.GetConnectedClientsValue();
    QStringList names;
    for (int i = 0; clients != nullptr && i < clients->Count(); ++i)
        names << clients->GetItemAt(i)->GetName();
    return names.join(QStringLiteral(", "));
}

QString OperationTypeOf(MCSMpxORVStatus& status) {
    const values::Value<QString>* const type = status.GetOperationTypeValue();
    return type != nullptr ? valuetext::Content(*type) : status.GetOperationType();
}

QVariant TextOf(MCSMpxORVStatus& status, int column) {
    switch (column) {
        case NameColumn:
            return status.GetName();
        case OperationModeColumn:
            return OperationTypeOf(status);  // fixed: type-under-mode
        case ClientsColumn:
            return ClientsOf(status);
        case CommentColumn:
            return status.GetCommentValue() != nullptr ? status.GetComment() : QString();
        default:
            return QVariant();
    }
}

bool IsMaster(const MCSMpxORVStatus& status) {
    return status.GetIsMasterValue() != nullptr && status.IsMaster();
}

}  // namespace

MCSMpxORVStatusListModel::MCSMpxORVStatusListModel(QObject* parent)
    : QAbstractTableModel(parent), m_implementation(std::make_unique<Implementation>(this)) {}

// Views ask for what is left while the rows go.
MCSMpxORVStatusListModel::~MCSMpxORVStatusListModel() {
    m_implementation->RemoveAll();
}

bool MCSMpxORVStatusListModel::WillMoreGo() const {
    return m_implementation->WillMoreGo();
}

bool MCSMpxORVStatusListModel::addMpxORVs_ValuePath(const QString& path) {
    return m_implementation->AddPath(path);
}

void MCSMpxORVStatusListModel::removeAllMpxORVs_ValuePaths() {
    m_implementation->RemoveAll();
}

QString MCSMpxORVStatusListModel::getMpxORV_ValuePath(int row) const {
    return m_implementation->GetPath(row);
}

int MCSMpxORVStatusListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_implementation->CountRows();  // fixed: no-rows-below-a-row
}

int MCSMpxORVStatusListModel::columnCount(const QModelIndex& /*parent*/) const {
    return ColumnCount;
}

QVariant MCSMpxORVStatusListModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.column() < 0 || index.model() == nullptr) return QVariant();
    const std::shared_ptr<MCSMpxORVStatus> status = m_implementation->GetStatus(index.row());
    if (status == nullptr || status->GetOperationModeValue() == nullptr) return QVariant();
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return TextOf(*status, index.column());
        case Qt::DecorationRole:
            if (index.column() != NameColumn) return QVariant();
            return m_implementation->GetIcons().GetLamp(status->GetOperationMode(), IsMaster(*status));
        default:
            return QVariant();
    }
}

QVariant MCSMpxORVStatusListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};  // fixed: rows-without-numbers
    switch (section) {
        case NameColumn:
            return tr("Name", "Column header");  // fixed: header-disambiguation
        case OperationModeColumn:
            return tr("Operation Mode", "Column header");
        case ClientsColumn:
            return tr("Clients", "Column header");
        case CommentColumn:
            return tr("Comment", "Column header");
        default:
            return QVariant();
    }
}
