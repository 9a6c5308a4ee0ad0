// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/paths/pathmodel.h>

#include <apps/designer/content.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/values/valuebase.h>
#include <platform/widgets/valuetext.h>

#include <utility>

namespace {

constexpr int DeepestRow = 64;       // levels; servers have less than ten
constexpr int LongestContent = 200;  // characters

}  // namespace

PathModel::PathModel(Translate toServer, Translate toLocal, QObject* parent)
    : QStandardItemModel(0, ColumnCount, parent),
      m_toServer(std::move(toServer)),
      m_toLocal(std::move(toLocal)) {
    setHorizontalHeaderLabels({tr("Name"), tr("Type"), tr("Content")});
}

void PathModel::Follow(const values::Node* top) {
    m_count = 0;
    m_isCut = false;
    if (top == nullptr)
        removeRows(0, rowCount());
    else
        FollowChildren(*invisibleRootItem(), *top, 0);
}

void PathModel::FollowChildren(QStandardItem& parent, const values::Node& node, int depth) {
    int row = 0;
    for (const values::TreeItem* item = node.GetFirstChild(); item != nullptr;
         item = item->GetNextSibling()) {
        if (m_count == MostRows || depth == DeepestRow) {
            m_isCut = true;
            break;
        }
        ++m_count;
        QStandardItem& shown = PlaceRow(parent, row++, *item);
        if (item->IsNode()) FollowChildren(shown, static_cast<const values::Node&>(*item), depth + 1);
    }
    parent.removeRows(row, parent.rowCount() - row);
}

/// Has \a item stand in that row: the rows before it stay, those that stood between are gone.
QStandardItem& PathModel::PlaceRow(QStandardItem& parent, int row, const values::TreeItem& item) {
    const unsigned kind = content::Of(&item);
    for (int old = row; old < parent.rowCount(); ++old) {
        QStandardItem* const shown = parent.child(old);
        if (shown->text() != item.GetName() || shown->data(KindRole).toUInt() != kind) continue;
        parent.removeRows(row, old - row);
        return *shown;
    }
    auto* const name = new QStandardItem(item.GetName());
    name->setData(m_toServer(item.GetPathName()), PathRole);
    name->setData(kind, KindRole);
    QList<QStandardItem*> cells{name, new QStandardItem(content::NameOf(kind)), new QStandardItem};
    for (QStandardItem* const cell : cells)
        cell->setEditable(false);
    parent.insertRow(row, cells);
    return *name;
}

QModelIndex PathModel::IndexOf(const QString& serverPath) const {
    const QStringList names = serverPath.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QStandardItem* found = invisibleRootItem();
    for (const QString& name : names) {
        const QStandardItem* child = nullptr;
        for (int row = 0; row < found->rowCount() && child == nullptr; ++row)
            if (found->child(row)->text() == name) child = found->child(row);
        if (child == nullptr) return QModelIndex();
        found = child;
    }
    return names.isEmpty() ? QModelIndex() : found->index();
}

QVariant PathModel::data(const QModelIndex& index, int role) const {
    if (index.column() == ContentColumn && role == Qt::DisplayRole) return ContentAt(index);
    return QStandardItemModel::data(index, role);
}

QVariant PathModel::ContentAt(const QModelIndex& index) const {
    const values::Tree* const tree = values::Tree::Instance();
    if (tree == nullptr) return QVariant();
    const QString path = index.sibling(index.row(), NameColumn).data(PathRole).toString();
    const auto* const value = dynamic_cast<const values::ValueBase*>(tree->FindItem(m_toLocal(path)));
    return value != nullptr ? valuetext::Shortened(valuetext::Content(*value), LongestContent) : QVariant();
}
