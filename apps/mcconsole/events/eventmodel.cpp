// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventmodel.h>

#include <QtCore/QDateTime>

#include <algorithm>
#include <utility>

namespace {

/// Without the address, which a tool tip has: the room is for what happened.
QString NameOf(const QString& who) {
    return who.left(who.lastIndexOf(QLatin1String(" (")));
}

}  // namespace

EventModel::EventModel(QObject* parent) : QAbstractTableModel(parent) {
    m_slices.setInterval(0);
    connect(&m_slices, &QTimer::timeout, this, &EventModel::FilterSlice);
}

bool EventModel::Takes(qint64 place) {
    ++m_lookedAt;
    return m_filter.Takes(m_list.At(place));
}

std::vector<qint64> EventModel::Taken(qint64 from, qint64 to) {
    std::vector<qint64> taken;
    for (qint64 place = from; place < to; ++place)
        if (Takes(place)) taken.push_back(place);
    return taken;
}

void EventModel::Append(std::vector<Event> events) {
    if (events.empty()) return;
    const qint64 end = m_list.End();
    m_list.Append(std::move(events));
    DropGone();
    Show(Taken(std::max(end, m_list.First()), m_list.End()), true);
}

void EventModel::Prepend(std::vector<Event> events) {
    const qint64 first = m_list.First();
    m_list.Prepend(std::move(events));
    // A filter that is at it comes to these as well.
    if (IsFiltering()) return;
    m_filteredFrom = m_list.First();
    Show(Taken(m_list.First(), first), false);
}

void EventModel::Show(const std::vector<qint64>& places, bool isAtEnd) {
    if (places.empty()) return;
    const int at = isAtEnd ? rowCount() : 0;
    beginInsertRows(QModelIndex(), at, at + static_cast<int>(places.size()) - 1);
    m_shown.insert(isAtEnd ? m_shown.end() : m_shown.begin(), places.begin(), places.end());
    endInsertRows();
}

void EventModel::DropGone() {
    m_filteredFrom = std::max(m_filteredFrom, m_list.First());
    const auto kept = std::lower_bound(m_shown.begin(), m_shown.end(), m_list.First());
    const auto count = static_cast<int>(std::distance(m_shown.begin(), kept));
    if (count == 0) return;
    beginRemoveRows(QModelIndex(), 0, count - 1);
    m_shown.erase(m_shown.begin(), kept);
    endRemoveRows();
    Q_EMIT FirstRowsGone(count);
}

void EventModel::Clear() {
    beginResetModel();
    m_slices.stop();
    m_list.Clear();
    m_shown.clear();
    m_filteredFrom = m_list.First();
    endResetModel();
}

void EventModel::SetFilter(const EventFilter& filter) {
    if (filter == m_filter) return;
    m_filter = filter;
    beginResetModel();
    m_shown.clear();
    endResetModel();
    m_filteredFrom = m_list.End();
    m_slices.start();
    FilterSlice();
}

void EventModel::FilterSlice() {
    const qint64 from = std::max(m_list.First(), m_filteredFrom - RowsPerSlice);
    const qint64 to = std::exchange(m_filteredFrom, from);
    Show(Taken(from, to), false);
    if (m_filteredFrom <= m_list.First()) m_slices.stop();
}

int EventModel::CountFrom(qint64 place) const {
    const auto first = std::lower_bound(m_shown.begin(), m_shown.end(), place);
    return static_cast<int>(std::distance(first, m_shown.end()));
}

int EventModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int EventModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant EventModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return QVariant();
    const EventList::Line& line = LineOf(index.row());
    if (role == Qt::DisplayRole)
        return index.column() == WhoColumn ? NameOf(line.who) : TextOf(line, index.column());
    if (role == Qt::ToolTipRole && index.column() >= WhoColumn)
        return TextOf(line, index.column()).toHtmlEscaped();
    if (role == Qt::DecorationRole && index.column() == SeverityColumn)
        return m_icons.Of(eventlook::Of(line.event));
    return QVariant();
}

QString EventModel::TextOf(const EventList::Line& line, int column) {
    switch (column) {
        case SeverityColumn:
            return eventlook::Word(line.event);
        case TimeColumn:
            return line.event.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        case SourceColumn:
            return WordForSource(line.event.source);
        case WhoColumn:
            return line.who;
        default:
            return line.text;
    }
}

QString EventModel::WordForSource(const QString& source) {
    if (source == QLatin1String("server")) return tr("Server");
    if (source == QLatin1String("access")) return tr("Access");
    if (source == QLatin1String("device")) return tr("Device");
    if (source == QLatin1String("config")) return tr("Configuration");
    if (source == QLatin1String("suppression")) return tr("Suppression");
    return source;
}

QVariant EventModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    const QString titles[] = {tr("Severity"), tr("Time"), tr("Source"), tr("Who"), tr("What")};
    return section < ColumnCount ? titles[section] : QVariant();
}
