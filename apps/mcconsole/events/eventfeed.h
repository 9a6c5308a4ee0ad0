// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/event.h>
#include <apps/mcconsole/events/pace.h>

#include <platform/values/pathbinding.h>
#include <platform/vtclient/ivthistory.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <functional>
#include <vector>

class IVtClient;

/// Brings the events of the server, each once and in order: those that happen, and of those that happened
/// before the last ones at once, what was missed while the connection was lost, and older ones on request.
/// Main thread.
class EventFeed : public QObject, private PathBinding::IListener {
    Q_OBJECT

  public:
    static constexpr int FirstCount = 200;    ///< events from before, at once
    static constexpr int PageCount = 100;     ///< that are asked for in one go
    static constexpr int MissedCount = 2000;  ///< events that a server keeps: no more can be missed and found
    /// Who reads sees no more than so many changes a second. The first event is told at once, and what
    /// comes so soon after others were told waits for it, and is told together.
    static constexpr std::chrono::milliseconds BatchTime{50};

    /// \a client is asked for the connection of now, which may be null.
    explicit EventFeed(std::function<IVtClient*()> client, QObject* parent = nullptr);

    /// Looks at the server's status below \a path; empty: at none.
    void Bind(const QString& path);
    /// Another server is meant from now on, or none.
    void Forget();
    /// Asks for older ones than those that were told.
    void AskForOlder();
    /// Whether the server may have some, and none are on their way.
    bool HasOlder() const { return m_older != 0 && !m_isAsking; }
    /// Whether the server tells events at all, as far as one knows.
    bool IsOffered() const;

  Q_SIGNALS:
    /// Between what was told and what comes now some are missing: what was told has to go, or older ones than
    /// what comes now would have no place.
    void Restarted();
    /// Newer ones than all before; in front of those before which some are missing that nobody has any more,
    /// one that says so.
    void Came(const std::vector<Event>& events);
    /// Older ones than all before.
    void OlderCame(const std::vector<Event>& events);
    /// HasOlder or IsOffered may be another.
    void StateChanged();

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    quint64 EpochOfNow() const;
    void NoteEpoch();
    void Begin();
    void Ask(quint64 before, void (EventFeed::*answered)(const VtHistoryPage&));
    void OnFirst(const VtHistoryPage& page);
    void OnOlder(const VtHistoryPage& page);
    void Take();
    void MarkMissing();
    void Tell(const std::vector<Event>& events);
    void TellBatch();

    std::function<IVtClient*()> m_client;
    PathBinding m_event;
    PathBinding m_offer;
    QString m_eventPath;     ///< at the server
    quint64 m_epoch = 0;     ///< of the server whose events were told
    qint64 m_last = 0;       ///< number of the newest that was told
    quint64 m_older = 0;     ///< before which there are older ones; 0: none
    quint64 m_run = 0;       ///< answers of another are too late
    bool m_isBegun = false;  ///< with this connection
    bool m_isAsking = false;
    bool m_isFirst = false;       ///< what is before is being asked for
    bool m_hasTold = false;       ///< anything
    std::vector<Event> m_before;  ///< found so far, the oldest first
    QStringList m_batch;          ///< came, and not told yet
    Pace m_pace;
};
