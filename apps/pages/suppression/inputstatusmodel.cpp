// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/inputstatusmodel.h>

#include <apps/common/frequencytext.h>
#include <apps/pages/agetext.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// \a all are whole hertz.
bool IsIn(const std::vector<double>& all, double hz) {
    return std::find(all.begin(), all.end(), std::floor(hz)) != all.end();
}

}  // namespace

InputStatusModel::InputStatusModel(QObject* parent) : QAbstractTableModel(parent) {}

void InputStatusModel::Show(const SuppressionState& state) {
    std::vector<Row> rows;
    for (const ModuleStatusView& module : state.modules)
        for (const InputStatus& input : module.inputs)
            rows.push_back(
                {module.name, state.isLive && module.IsLive(), IsIn(state.unsupervised, input.hz), input});
    const bool isOther = rows.size() != m_rows.size();
    if (isOther) beginResetModel();
    std::swap(m_rows, rows);
    if (isOther) return endResetModel();
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (!(m_rows[i] == rows[i])) {
            const int row = static_cast<int>(i);
            Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
        }
}

int InputStatusModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int InputStatusModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

lamplook::ELamp InputStatusModel::LampOf(const Row& row) {
    if (row.isLive) return row.input.isKeyed ? lamplook::ELamp::Keyed : lamplook::ELamp::Silent;
    return row.isUnsupervised ? lamplook::ELamp::Unsupervised : lamplook::ELamp::Unknown;
}

QString InputStatusModel::TextOf(const Row& row, int column) {
    switch (column) {
        case Module:
            return row.module;
        case Input:
            return row.input.name;
        case Lamp:
            return lamplook::Text(LampOf(row));
        case Frequency:
            return row.input.hz > 0.0 ? FrequencyText::InMegahertz(row.input.hz) : QString();
        case KeyedSince:
            return agetext::Moment(row.input.keyedSince);
        case LastBlanked:
            return row.input.lastBlanked;
        default:
            return QString();
    }
}

QVariant InputStatusModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == SortRole && index.column() == Frequency) return row.input.hz;
    if (role == Qt::DisplayRole || role == SortRole) return TextOf(row, index.column());
    if (role == Qt::TextAlignmentRole && index.column() == Frequency)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return index.column() == Lamp ? lamplook::Look(LampOf(row), role) : QVariant();
}

QVariant InputStatusModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    const QString titles[] = {tr("Module"),          tr("Input"),       tr("Transmitter"),
                              tr("Frequency (MHz)"), tr("Keyed since"), tr("Blanked last")};
    return section >= 0 && section < ColumnCount ? titles[section] : QString();
}
