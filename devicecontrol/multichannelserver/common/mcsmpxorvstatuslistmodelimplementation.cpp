// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodelimplementation.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/observabledeleter.h>

#include <platform/values/tree.h>

#include <QtCore/QMetaObject>
#include <QtCore/QScopedValueRollback>

#include <algorithm>
#include <utility>

MCSMpxORVStatusListModel::Implementation::~Implementation() {
    RemoveAll();
    m_model = nullptr;
}

bool MCSMpxORVStatusListModel::Implementation::AddPath(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    values::Node* const node = tree != nullptr ? tree->FindNode(path) : nullptr;
    if (node == nullptr) return false;
    if (IsWatched(node)) return true;
    node->AddObserver(this);
    m_watchedNodes.push_back(node);
    Update(node, changecode::ChildrenAdded);
    return true;
}

void MCSMpxORVStatusListModel::Implementation::RemoveAll() {
    for (Row& row : m_announced)
        DropAnnounced(row);
    if (!m_rows.empty()) {
        m_model->beginRemoveRows(QModelIndex(), 0, CountRows() - 1);
        std::deque<Row> gone;
        gone.swap(m_rows);
        m_known.clear();
        for (Row& row : gone) {
            row.node->DeleteObserver(this);
            Retire(std::move(row.status));
        }
        m_model->endRemoveRows();
    }
    for (values::Node* const node : m_watchedNodes)
        node->DeleteObserver(this);
    m_watchedNodes.clear();
}

std::shared_ptr<MCSMpxORVStatus> MCSMpxORVStatusListModel::Implementation::GetStatus(int row) const {
    return row >= 0 && row < CountRows() ? RowAt(row).status : nullptr;
}

QString MCSMpxORVStatusListModel::Implementation::GetPath(int row) const {
    return row >= 0 && row < CountRows() ? RowAt(row).node->GetPathName() : QString();
}

const MCSMpxORVStatusIcons& MCSMpxORVStatusListModel::Implementation::GetIcons() {
    if (m_icons == nullptr) m_icons = std::make_unique<MCSMpxORVStatusIcons>();
    return *m_icons;
}

void MCSMpxORVStatusListModel::Implementation::Update(Observable* source, TChangeCode code) {
    switch (code) {
        case changecode::ContentChanged:
            OnStatusChanged(source);
            break;
        case changecode::ChildrenAdded:
            if (IsWatched(source)) AddRows(*static_cast<values::Node*>(source));
            RenewStatus(source);
            break;
        case changecode::ChildrenRemoved:
            RenewStatus(source);
            break;
        case changecode::GoingAway:
            OnGoingAway(source);
            break;
        default:
            break;
    }
}

bool MCSMpxORVStatusListModel::Implementation::IsWatched(const Observable* node) const {
    return std::find(m_watchedNodes.begin(), m_watchedNodes.end(), node) != m_watchedNodes.end();
}

int MCSMpxORVStatusListModel::Implementation::RowOf(const Observable* source) const {
    const auto found = m_known.find(source);
    return found != m_known.end() ? RowOf(found->second) : NoRow;
}

int MCSMpxORVStatusListModel::Implementation::RowOf(Serial serial) const {
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), serial,
                                        [](const Row& row, Serial number) { return row.serial < number; });
    return found != m_rows.end() && found->serial == serial ? static_cast<int>(found - m_rows.begin())
                                                            : NoRow;
}

// Children are added at the end only: those that are not known yet stand behind all that are.
void MCSMpxORVStatusListModel::Implementation::AddRows(const values::Node& node) {
    std::vector<values::Node*> fresh;
    for (values::TreeItem* item = node.GetLastChild(); item != nullptr; item = item->GetPreviousSibling()) {
        if (!item->IsNode()) continue;
        auto* const subtree = static_cast<values::Node*>(item);
        if (m_known.count(subtree) != 0) break;
        fresh.push_back(subtree);
    }
    std::for_each(fresh.rbegin(), fresh.rend(), [this](values::Node* subtree) {
        subtree->AddObserver(this);
        m_known.emplace(subtree, Announced);
        m_announced.push_back({nullptr, subtree, Announced});
    });
    if (!m_isInserting) InsertAnnounced();
}

// Making a status may add to the tree, and whoever hears of that may add or delete anything: so all are made
// first, and what is announced or goes meanwhile counts. (fixed: status-before-insertion)
void MCSMpxORVStatusListModel::Implementation::InsertAnnounced() {
    const QScopedValueRollback<bool> inserting(m_isInserting, true);
    for (std::size_t i = 0; i < m_announced.size(); ++i) {
        if (m_announced[i].node == nullptr) continue;
        std::shared_ptr<MCSMpxORVStatus> status = MakeStatus(*m_announced[i].node);
        m_announced[i].status = std::move(status);
    }
    std::vector<Row> rows;
    rows.swap(m_announced);
    rows.erase(std::remove_if(rows.begin(), rows.end(), [](const Row& row) { return row.node == nullptr; }),
               rows.end());
    if (rows.empty()) return;
    const int count = CountRows();
    m_model->beginInsertRows(QModelIndex(), count, count + static_cast<int>(rows.size()) - 1);
    for (Row& row : rows) {
        row.serial = ++m_lastSerial;
        m_known[row.node] = row.serial;
        if (row.status != nullptr) m_known[row.status.get()] = row.serial;
        m_rows.push_back(std::move(row));
    }
    m_model->endInsertRows();
}

// Where something else has the place of the status, or a node above is already going away, there is none.
std::shared_ptr<MCSMpxORVStatus> MCSMpxORVStatusListModel::Implementation::MakeStatus(
    const values::Node& node) {
    const QString path = node.GetPathName();
    const values::TreeItem* const place = node.FindChild(mcskeys::Status);
    if (place != nullptr && !place->IsNode()) return nullptr;
    if (values::Tree::Instance()->FindNode(path) != &node) return nullptr;
    return ObservableDeleter::Share(new MCSMpxORVStatus(mcskeys::Join(path, mcskeys::Status)), this);
}

void MCSMpxORVStatusListModel::Implementation::OnGoingAway(Observable* source) {
    if (IsWatched(source)) Unwatch(static_cast<values::Node*>(source));
    const int row = RowOf(source);
    if (row != NoRow) RemoveRow(row);
    for (Row& announced : m_announced)
        if (announced.node == source) DropAnnounced(announced);
}

void MCSMpxORVStatusListModel::Implementation::Unwatch(values::Node* node) {
    node->DeleteObserver(this);
    std::vector<Serial> serials;
    for (values::TreeItem* item = node->GetFirstChild(); item != nullptr; item = item->GetNextSibling()) {
        const auto found = m_known.find(item->GetObservable());
        if (found != m_known.end()) serials.push_back(found->second);
    }
    for (const Serial serial : serials) {
        const int row = RowOf(serial);
        if (row != NoRow) RemoveRow(row);
    }
    m_watchedNodes.erase(std::remove(m_watchedNodes.begin(), m_watchedNodes.end(), node),
                         m_watchedNodes.end());
}

void MCSMpxORVStatusListModel::Implementation::RemoveRow(int row) {
    m_model->beginRemoveRows(QModelIndex(), row, row);
    Row gone = std::move(RowAt(row));
    m_rows.erase(m_rows.begin() + row);
    Detach(*gone.node);
    if (gone.status != nullptr) m_known.erase(gone.status.get());
    Retire(std::move(gone.status));
    m_model->endRemoveRows();
}

void MCSMpxORVStatusListModel::Implementation::DropAnnounced(Row& row) {
    if (row.node != nullptr) Detach(*row.node);
    row.node = nullptr;
}

// A watched node may also be the node of a row.
void MCSMpxORVStatusListModel::Implementation::Detach(values::Node& node) {
    m_known.erase(&node);
    if (!IsWatched(&node)) node.DeleteObserver(this);
}

void MCSMpxORVStatusListModel::Implementation::OnStatusChanged(const Observable* source) {
    const int row = RowOf(source);
    if (row == NoRow || RowAt(row).status.get() != source) return;
    ++m_tellingDepth;
    Redraw(row);
    if (--m_tellingDepth > 0 || m_retired.empty()) return;
    QMetaObject::invokeMethod(
        m_model, [this] { ReleaseRetired(); }, Qt::QueuedConnection);
}

void MCSMpxORVStatusListModel::Implementation::Redraw(int row) {
    Q_EMIT m_model->dataChanged(m_model->index(row, 0), m_model->index(row, m_model->columnCount() - 1));
}

// The node of a row got or lost children. A status whose values went shows nothing from now on, and one that
// came back shows again.
void MCSMpxORVStatusListModel::Implementation::RenewStatus(const Observable* source) {
    int row = RowOf(source);
    if (row == NoRow || RowAt(row).node != source) return;
    const MCSMpxORVStatus* const old = RowAt(row).status.get();
    if (old != nullptr && old->GetOperationModeValue() != nullptr) return;
    std::shared_ptr<MCSMpxORVStatus> status;
    if (RowAt(row).node->FindChild(mcskeys::Status) != nullptr) status = MakeStatus(*RowAt(row).node);
    row = RowOf(source);
    if (row == NoRow) return;
    if (status != nullptr) {
        m_known.erase(RowAt(row).status.get());
        m_known[status.get()] = RowAt(row).serial;
        std::swap(RowAt(row).status, status);
        Retire(std::move(status));
    }
    Redraw(row);
}

// Whoever is told of a change by a status must not destroy it.
void MCSMpxORVStatusListModel::Implementation::Retire(std::shared_ptr<MCSMpxORVStatus> status) {
    if (m_tellingDepth > 0 && status != nullptr) m_retired.push_back(std::move(status));
}

void MCSMpxORVStatusListModel::Implementation::ReleaseRetired() {
    if (m_tellingDepth == 0) m_retired.clear();
}
