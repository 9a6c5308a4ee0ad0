// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventexport.h>

#include <QtCore/QObject>
#include <QtCore/QSaveFile>
#include <QtCore/QTimer>

#include <vector>

/// Writes the events that a table shows into a file, some in each turn of the event loop, so that many of
/// them hold up nothing. What comes meanwhile is not in it; what goes before it is written is neither. The
/// file is there when it is whole. GUI thread.
class EventExporter : public QObject {
    Q_OBJECT

  public:
    static constexpr int RowsPerTurn = 500;

    /// \a model is not owned and outlives the exporter.
    explicit EventExporter(const EventModel& model);

    /// \a server and \a now are told in lines of text.
    void Start(const QString& file, eventexport::EFormat format, const QString& server, const QDateTime& now);
    bool IsRunning() const { return m_turns.isActive(); }
    /// How many events the last export has passed so far.
    int CountPassed() const { return static_cast<int>(m_next); }

  Q_SIGNALS:
    /// The system's reason why it could not be written; empty if it was.
    void Ended(const QString& problem);

  private:
    void HaveTurn();
    void End(bool isWritten);

    const EventModel& m_model;
    eventexport::EFormat m_format = eventexport::EFormat::Csv;
    std::vector<qint64> m_places;  ///< in the list, the oldest first
    std::size_t m_next = 0;
    QSaveFile m_file;
    QTimer m_turns;
};
