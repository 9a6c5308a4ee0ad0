// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventexporter.h>
#include <apps/mcconsole/events/eventfeed.h>
#include <apps/mcconsole/events/eventmodel.h>
#include <apps/mcconsole/events/pace.h>
#include <apps/pages/page.h>

#include <platform/vtclient/ivtlosses.h>

#include <functional>

class CountLine;
class EventsTable;
class IVtClient;
class QComboBox;
class QLineEdit;
class QPushButton;

/// What happens at the server, and what happened before: a table to be filtered, searched and exported.
class EventsPage : public Page {
    Q_OBJECT

  public:
    /// The connection of now, which may be null, the address of its server, and what people call that; empty:
    /// its address.
    struct Source {
        std::function<IVtClient*()> client;
        std::function<QString()> server;
        std::function<QString()> name;
    };

    explicit EventsPage(Source source, QWidget* parent = nullptr);
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

    const EventModel& GetModel() const { return m_model; }
    /// What brings the events, for others that show them.
    const EventFeed& GetFeed() const { return m_feed; }

    /// Shows as one more event that what \a loss says has not come here.
    void TellMissed(const VtLoss& loss);

  Q_SIGNALS:
    /// The events of another server come from now on, or of none.
    void Forgotten();

  private:
    QWidget* BuildBar();
    void BuildTable();
    void Filter();
    void Follow(bool isOn);
    void OnCame(const std::vector<Event>& events);
    void OnOlderCame(const std::vector<Event>& events);
    void OnFirstRowsGone(int count);
    void OnScrolled();
    void OnRangeChanged();
    void ShowEnd();
    void ShowState();
    void Export();
    void OnExported(const QString& problem);
    bool IsAtEnd() const;

    Source m_source;
    EventModel m_model;
    EventExporter m_exporter;
    EventFeed m_feed;
    QString m_server;         ///< whose events are shown
    qint64 m_readUpTo = 0;    ///< the place in the list of the first that came while it does not follow
    Pace m_counting;          ///< nobody reads a number that changes more often
    bool m_isMoving = false;  ///< the table scrolls, and not the user
    EventsTable* m_view = nullptr;
    QComboBox* m_severity = nullptr;
    QComboBox* m_origin = nullptr;
    QLineEdit* m_search = nullptr;
    QPushButton* m_follow = nullptr;
    QPushButton* m_older = nullptr;
    QPushButton* m_export = nullptr;
    CountLine* m_state = nullptr;
};
