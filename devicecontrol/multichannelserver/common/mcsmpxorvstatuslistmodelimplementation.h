// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatusicons.h>
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

    int CountRows() const { return static_cast<int>(m_rows.size()); }
    /// Null where no row is, or where something else has the place of its status.
    std::shared_ptr<MCSMpxORVStatus> GetStatus(int row) const;
    /// Of the row's node; empty where no row is.
    QString GetPath(int row) const;
    const MCSMpxORVStatusIcons& GetIcons();

    void Update(Observable* source, TChangeCode code) override;

  private:
    using Serial = std::uint64_t;
    static constexpr Serial Announced = 0;  ///< the number of what is about to become a row
    static constexpr int NoRow = -1;

    struct Row {
        std::shared_ptr<MCSMpxORVStatus> status;
        values::Node* node = nullptr;  ///< null only if it went before it became a row
        Serial serial = Announced;
    };

    bool IsWatched(const Observable* node) const;
    int RowOf(const Observable* source) const;
    int RowOf(Serial serial) const;
    Row& RowAt(int row) { return m_rows[static_cast<std::size_t>(row)]; }
    const Row& RowAt(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    void AddRows(const values::Node& node);
    void InsertAnnounced();
    std::shared_ptr<MCSMpxORVStatus> MakeStatus(const values::Node& node);

    void OnGoingAway(Observable* source);
    void Unwatch(values::Node* node);
    void RemoveRow(int row);
    void DropAnnounced(Row& row);
    void Detach(values::Node& node);

    void OnStatusChanged(const Observable* source);
    void Redraw(int row);
    void RenewStatus(const Observable* source);
    void Retire(std::shared_ptr<MCSMpxORVStatus> status);
    void ReleaseRetired();

    std::vector<values::Node*> m_watchedNodes;
    std::deque<Row> m_rows;  ///< rows go mostly at the ends, where that moves no others
    MCSMpxORVStatusListModel* m_model;

    std::unordered_map<const Observable*, Serial> m_known;  ///< the nodes and the statuses of rows
    std::vector<Row> m_announced;
    Serial m_lastSerial = Announced;
    bool m_isInserting = false;
    int m_tellingDepth = 0;                                   ///< statuses that are telling of a change
    std::vector<std::shared_ptr<MCSMpxORVStatus>> m_retired;  ///< their rows went meanwhile
    std::unique_ptr<MCSMpxORVStatusIcons> m_icons;            ///< made when a view asks
};
