// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/list/mcsmpxorvstatusicons.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <platform/values/observable.h>

#include <QtCore/QString>

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace values {
class Node;
}

/// The rows of the list and what they are made from. Observes the watched nodes, and the node and the status
/// of each row.
///
/// Views hear of one change at a time. What happens while they are being told, also what they do in answer,
/// is noted and made afterwards: a view that is told later than another must not hear of the second change
/// first. Whoever is told may destroy the model, except before rows come or go, which Qt cannot stand.
///
/// A row is found from what told of it in a time that hardly grows with the number of rows, also while rows
/// go: each has a serial number, rows stand in the order of their numbers, and a map leads from what is
/// observed to the number.
class MCSMpxORVStatusListModel::Implementation final : public IObserver {
  public:
    explicit Implementation(MCSMpxORVStatusListModel* model) : m_model(model) {}
    ~Implementation() override;
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    bool AddPath(const QString& path);
    void RemoveAll();

    int CountRows() const { return m_shown; }
    /// Null where no row is, or where something else has the place of its status.
    std::shared_ptr<MCSMpxORVStatus> GetStatus(int row) const;
    /// Of the row's node; empty where no row is, and for one that is about to go.
    QString GetPath(int row) const;
    const MCSMpxORVStatusIcons& GetIcons();
    bool WillMoreGo() const { return !m_gone.empty(); }

    void Update(Observable* source, TChangeCode code) override;

  private:
    using Serial = std::uint64_t;
    static constexpr int NoRow = -1;

    struct Row {
        values::Node* node = nullptr;  ///< null once it went: the row goes too, or never comes
        Serial serial = 0;
        std::shared_ptr<MCSMpxORVStatus> status;
        bool isPrepared = false;   ///< has got its status, if there can be one
        bool isRedrawDue = false;  ///< changed while views were being told of rows
    };

    bool IsWatched(const Observable* node) const;
    /// The place among m_rows, also of one that waits.
    int PlaceOf(const Observable* source) const;
    int PlaceOf(Serial serial) const;
    int FirstPlaceBehind(Serial serial) const;
    Row& RowAt(int place) { return m_rows[static_cast<std::size_t>(place)]; }
    const Row& RowAt(int place) const { return m_rows[static_cast<std::size_t>(place)]; }
    bool IsShown(int row) const { return row >= 0 && row < m_shown; }

    void AddRows(const values::Node& node);
    std::shared_ptr<MCSMpxORVStatus> MakeStatus(const values::Node& node);

    void OnGoingAway(Observable* source);
    void Unwatch(values::Node* node);
    void LoseNode(int place);

    // Of these, what returns a bool returns false if the model, and this with it, was destroyed meanwhile.
    bool Settle();
    void MoveRows();
    bool PrepareWaiting();
    void InsertWaiting();
    void RemoveCleared();
    void RemoveNextGone();

    void OnStatusChanged(const Observable* source);
    void Redraw(int place);
    void RedrawNextDue();
    bool TellOfContent(int row);
    void RenewStatus(const Observable* source);

    std::vector<values::Node*> m_watchedNodes;
    std::deque<Row> m_rows;  ///< rows go mostly at the ends, where that moves no others
    MCSMpxORVStatusListModel* m_model;

    int m_shown = 0;      ///< as many of m_rows are rows for the views, the others wait
    int m_announced = 0;  ///< as many behind those are announced to the views
    std::unordered_map<const Observable*, Serial> m_known;  ///< nodes and statuses
    Serial m_lastSerial = 0;

    bool m_isMoving = false;                        ///< views are being told of rows that come or go
    int m_redrawDepth = 0;                          ///< views are being told of content
    Serial m_clearedTo = 0;                         ///< rows up to this one go, all together
    std::deque<Serial> m_gone;                      ///< rows that go one by one, in this order
    std::deque<Serial> m_redraws;                   ///< rows that changed while rows came or went
    std::unique_ptr<MCSMpxORVStatusIcons> m_icons;  ///< made when a view asks
};
