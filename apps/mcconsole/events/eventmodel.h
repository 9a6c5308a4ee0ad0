// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventfilter.h>
#include <apps/mcconsole/events/eventlist.h>
#include <apps/pages/eventlook.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QTimer>

#include <deque>
#include <vector>

/// The events as a table, as far as the filter takes them: the newest last. GUI thread.
///
/// It filters by itself, in slices from the newest on, each in a turn of the event loop of its own: so a
/// filter over all that is kept holds up nothing. What comes meanwhile is shown at once.
class EventModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { SeverityColumn, TimeColumn, SourceColumn, WhoColumn, TextColumn, ColumnCount };
    static constexpr int RowsPerSlice = 1000;

    explicit EventModel(QObject* parent = nullptr);

    /// Each inserts rows in one go, however many there are.
    void Append(std::vector<Event> events);
    void Prepend(std::vector<Event> events);
    void Clear();
    void SetFilter(const EventFilter& filter);
    const EventFilter& GetFilter() const { return m_filter; }

    const EventList& GetList() const { return m_list; }
    const EventList::Line& LineOf(int row) const { return m_list.At(m_shown[static_cast<std::size_t>(row)]); }
    /// Where in the list the rows are, which stays so while others come and go.
    std::vector<qint64> GetPlaces() const { return {m_shown.begin(), m_shown.end()}; }
    /// How many rows are those of \a place in the list, and behind it.
    int CountFrom(qint64 place) const;
    /// Whether rows are still looked for.
    bool IsFiltering() const { return m_slices.isActive(); }
    /// How many events a filter has looked at, since ever.
    qint64 CountLookedAt() const { return m_lookedAt; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// A text for each column of \a line, whole.
    static QString TextOf(const EventList::Line& line, int column);
    /// The source on the wire in the language of the application.
    static QString WordForSource(const QString& source);

  Q_SIGNALS:
    /// So many rows are there no more that were the first ones.
    void FirstRowsGone(int count);

  private:
    void Show(const std::vector<qint64>& places, bool isAtEnd);
    void DropGone();
    void FilterSlice();
    bool Takes(qint64 place);
    std::vector<qint64> Taken(qint64 from, qint64 to);

    EventList m_list;
    EventFilter m_filter;
    std::deque<qint64> m_shown;  ///< the places in the list, rising
    qint64 m_filteredFrom = 0;   ///< the place from which on the filter has looked at all
    qint64 m_lookedAt = 0;
    QTimer m_slices;
    eventlook::Icons m_icons;
};
