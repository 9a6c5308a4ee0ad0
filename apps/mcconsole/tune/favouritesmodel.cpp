// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/favouritesmodel.h>

#include <apps/common/frequencytext.h>
#include <apps/mcconsole/tune/tuning.h>

#include <platform/widgets/valuetext.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int MostOfAnEntry = 30;  // characters of it in a message

}  // namespace

FavouritesModel::FavouritesModel(std::vector<FrequencyBook::Favourite> favourites, QObject* parent)
    : QAbstractTableModel(parent), m_favourites(std::move(favourites)) {}

int FavouritesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_favourites.size());
}

int FavouritesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant FavouritesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const FrequencyBook::Favourite& favourite = m_favourites[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole && index.column() == Frequency)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::EditRole) return QVariant();
    return index.column() == Name ? favourite.name : Tuning::Shown(favourite.hz);
}

QVariant FavouritesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section == Name ? tr("Name") : tr("Frequency");
}

Qt::ItemFlags FavouritesModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable : flags;
}

bool FavouritesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole || index.row() >= rowCount()) return false;
    const QString reason =
        Enter(m_favourites[static_cast<std::size_t>(index.row())], index.column(), value.toString());
    if (reason.isEmpty()) Q_EMIT dataChanged(index, index);
    Q_EMIT Entered(reason);
    return reason.isEmpty();
}

/// Why \a text cannot be taken; empty if it is.
QString FavouritesModel::Enter(FrequencyBook::Favourite& favourite, int column, const QString& text) {
    if (column == Name) {
        favourite.name = text.simplified().left(FrequencyBook::LongestName);
        return QString();
    }
    const FrequencyText typed(text, FrequencyText::EPlainNumber::MegahertzOrHertz);
    if (!typed.IsFrequency() || !FrequencyBook::IsPossible(typed.GetHz()))
        return tr("\"%1\" is no frequency that can be tuned to. Enter one such as 121.5 or 118400 kHz.")
            .arg(valuetext::Shortened(text, MostOfAnEntry));
    favourite.hz = typed.GetHz();
    return QString();
}

int FavouritesModel::Add(double hz) {
    if (rowCount() >= FrequencyBook::MostFavourites) {
        Q_EMIT Entered(tr("There are %1 favourites, and cannot be more.").arg(rowCount()));
        return -1;
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount());
    m_favourites.push_back({QString(), hz});
    endInsertRows();
    return rowCount() - 1;
}

void FavouritesModel::Remove(int row) {
    if (row < 0 || row >= rowCount()) return;
    beginRemoveRows(QModelIndex(), row, row);
    m_favourites.erase(m_favourites.begin() + row);
    endRemoveRows();
}

int FavouritesModel::Move(int row, int count) {
    const int target = row + count;
    if (count == 0 || row < 0 || row >= rowCount() || target < 0 || target >= rowCount()) return row;
    beginMoveRows(QModelIndex(), row, row, QModelIndex(), count > 0 ? target + 1 : target);
    const auto first = m_favourites.begin() + std::min(row, target);
    const auto last = m_favourites.begin() + std::max(row, target) + 1;
    if (count > 0)
        std::rotate(first, first + 1, last);
    else
        std::rotate(first, last - 1, last);
    endMoveRows();
    return target;
}
