// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/ignoringmodel.h>

#include <apps/common/whotext.h>
#include <apps/pages/agetext.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

namespace {

constexpr QLatin1String BlankingSwitch = mcskeys::detail::Key("Blanking");

QString StatusTextOf(const values::Node& mpxOrv, QLatin1String key) {
    const auto* const status = dynamic_cast<const values::Node*>(mpxOrv.FindChild(mcskeys::Status));
    const auto* const text =
        status != nullptr ? dynamic_cast<const values::Value<QString>*>(status->FindChild(key)) : nullptr;
    return text != nullptr ? text->GetValue() : QString();
}

}  // namespace

IgnoringModel::IgnoringModel(QObject* parent) : QAbstractTableModel(parent) {}

void IgnoringModel::Collect(const QString& path, std::vector<Row>* rows) {
    const values::Node* const parent = values::Tree::Instance()->FindNode(path);
    for (values::TreeItem* item = parent != nullptr ? parent->GetFirstChild() : nullptr; item != nullptr;
         item = item->GetNextSibling()) {
        if (!item->IsNode()) continue;
        const auto& mpxOrv = static_cast<const values::Node&>(*item);
        const auto* const obeys = dynamic_cast<const values::Value<bool>*>(mpxOrv.FindChild(BlankingSwitch));
        if (obeys == nullptr || obeys->GetValue()) continue;
        rows->push_back({item->GetName(),
                         whotext::Translated(StatusTextOf(mpxOrv, serverkeys::BlankingSwitchedBy)),
                         agetext::Moment(StatusTextOf(mpxOrv, serverkeys::BlankingSwitchedSince))});
    }
}

void IgnoringModel::Look(const QString& staticPath, const QString& dynamicPath) {
    std::vector<Row> rows;
    m_isPartial = staticPath.isEmpty() || dynamicPath.isEmpty();
    for (const QString& path : {staticPath, dynamicPath})
        if (!path.isEmpty()) Collect(path, &rows);
    if (rows == m_rows) return;
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int IgnoringModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int IgnoringModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant IgnoringModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || role != Qt::DisplayRole) return QVariant();
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
        case Name:
            return row.name;
        case SwitchedBy:
            return row.switchedBy;
        default:
            return row.since;
    }
}

QVariant IgnoringModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    const QString titles[] = {tr("Ignores the suppression"), tr("Switched by"), tr("Since")};
    return section >= 0 && section < ColumnCount ? titles[section] : QString();
}
