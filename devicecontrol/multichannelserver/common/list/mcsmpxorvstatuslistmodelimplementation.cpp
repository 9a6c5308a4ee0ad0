// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/list/mcsmpxorvstatuslistmodelimplementation.h>

#include <devicecontrol/multichannelserver/common/list/observabledeleter.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/tree.h>

#include <QtCore/QPointer>

#include <algorithm>
#include <utility>

MCSMpxORVStatusListModel::Implementation::~Implementation() {
    RemoveAll();
    m_model = nullptr;
}

// An empty path is no node, although the tree takes it for the root.
bool MCSMpxORVStatusListModel::Implementation::AddPath(const QString& path) {
    const values::Tree* const tree = values::Tree::Instance();
    values::Node* const node = !path.isEmpty() && tree != nullptr ? tree->FindNode(path) : nullptr;
    if (node == nullptr) return false;
    if (IsWatched(node)) return true;
    node->AddObserver(this);
    m_watchedNodes.push_back(node);
    Update(node, changecode::ChildrenAdded);
    return true;
}

void MCSMpxORVStatusListModel::Implementation::RemoveAll() {
    for (values::Node* const node : std::exchange(m_watchedNodes, {}))
        node->DeleteObserver(this);
    for (Row& row : m_rows)
        if (values::Node* const node = std::exchange(row.node, nullptr)) node->DeleteObserver(this);
    m_known.clear();
    m_gone.clear();
    if (m_shown + m_announced > 0) m_clearedTo = RowAt(m_shown + m_announced - 1).serial;
    Settle();
}

std::shared_ptr<MCSMpxORVStatus> MCSMpxORVStatusListModel::Implementation::GetStatus(int row) const {
    return IsShown(row) ? RowAt(row).status : nullptr;
}

QString MCSMpxORVStatusListModel::Implementation::GetPath(int row) const {
    const values::Node* const node = IsShown(row) ? RowAt(row).node : nullptr;
    return node != nullptr ? node->GetPathName() : QString();
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
            if (Settle()) RenewStatus(source);
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

int MCSMpxORVStatusListModel::Implementation::PlaceOf(const Observable* source) const {
    const auto found = m_known.find(source);
    return found != m_known.end() ? PlaceOf(found->second) : NoRow;
}

int MCSMpxORVStatusListModel::Implementation::PlaceOf(Serial serial) const {
    const int place = FirstPlaceBehind(serial) - 1;
    return place >= 0 && RowAt(place).serial == serial ? place : NoRow;
}

int MCSMpxORVStatusListModel::Implementation::FirstPlaceBehind(Serial serial) const {
    const auto found = std::upper_bound(m_rows.begin(), m_rows.end(), serial,
                                        [](Serial number, const Row& row) { return number < row.serial; });
    return static_cast<int>(found - m_rows.begin());
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
        Row row;
        row.node = subtree;
        row.serial = ++m_lastSerial;
        m_known.emplace(subtree, row.serial);
        m_rows.push_back(std::move(row));
    });
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
    const int place = PlaceOf(source);
    if (place != NoRow) LoseNode(place);
    Settle();
}

void MCSMpxORVStatusListModel::Implementation::Unwatch(values::Node* node) {
    node->DeleteObserver(this);
    m_watchedNodes.erase(std::find(m_watchedNodes.begin(), m_watchedNodes.end(), node));
    for (values::TreeItem* item = node->GetFirstChild(); item != nullptr; item = item->GetNextSibling()) {
        const int place = PlaceOf(item->GetObservable());
        if (place != NoRow) LoseNode(place);
    }
}

// A watched node may also be the node of a row. What views were not told of yet goes without a word.
void MCSMpxORVStatusListModel::Implementation::LoseNode(int place) {
    Row& row = RowAt(place);
    values::Node* const node = std::exchange(row.node, nullptr);
    if (!IsWatched(node)) node->DeleteObserver(this);
    m_known.erase(node);
    m_known.erase(row.status.get());
    if (place < m_shown + m_announced) m_gone.push_back(row.serial);
}

bool MCSMpxORVStatusListModel::Implementation::Settle() {
    const QPointer<MCSMpxORVStatusListModel> model(m_model);
    while (!m_isMoving && m_redrawDepth == 0) {  // otherwise whoever tells settles afterwards
        if (m_clearedTo != 0 || !m_gone.empty() || m_shown < static_cast<int>(m_rows.size()))
            MoveRows();
        else if (!m_redraws.empty())
            RedrawNextDue();
        else
            return true;
        if (model.isNull()) return false;
    }
    return true;
}

void MCSMpxORVStatusListModel::Implementation::MoveRows() {
    const QPointer<MCSMpxORVStatusListModel> model(m_model);
    m_isMoving = true;
    if (m_clearedTo != 0)
        RemoveCleared();
    else if (!m_gone.empty())
        RemoveNextGone();
    else if (PrepareWaiting())
        InsertWaiting();
    if (!model.isNull()) m_isMoving = false;
}

// Before the views hear of the rows: making a status may add to the tree, and whoever hears of that may add
// or delete anything. (fixed: status-before-insertion)
bool MCSMpxORVStatusListModel::Implementation::PrepareWaiting() {
    const QPointer<MCSMpxORVStatusListModel> model(m_model);
    for (int place = m_shown; place < static_cast<int>(m_rows.size()); ++place) {
        Row& row = RowAt(place);  // stays where it is: rows only come meanwhile
        if (row.node == nullptr || row.isPrepared) continue;
        std::shared_ptr<MCSMpxORVStatus> status = MakeStatus(*row.node);
        if (model.isNull()) return false;
        row.isPrepared = true;
        if (row.node == nullptr || status == nullptr) continue;
        m_known[status.get()] = row.serial;
        row.status = std::move(status);
    }
    return true;
}

void MCSMpxORVStatusListModel::Implementation::InsertWaiting() {
    m_rows.erase(std::remove_if(m_rows.begin() + m_shown, m_rows.end(),
                                [](const Row& row) { return row.node == nullptr; }),
                 m_rows.end());
    m_announced = static_cast<int>(m_rows.size()) - m_shown;
    if (m_announced == 0) return;
    m_model->beginInsertRows(QModelIndex(), m_shown, m_shown + m_announced - 1);
    m_shown += std::exchange(m_announced, 0);
    m_model->endInsertRows();
}

void MCSMpxORVStatusListModel::Implementation::RemoveCleared() {
    const int count = FirstPlaceBehind(std::exchange(m_clearedTo, 0));
    if (count == 0) return;
    m_model->beginRemoveRows(QModelIndex(), 0, count - 1);
    m_rows.erase(m_rows.begin(), m_rows.begin() + count);
    m_shown -= count;
    m_model->endRemoveRows();
}

void MCSMpxORVStatusListModel::Implementation::RemoveNextGone() {
    const int row = PlaceOf(m_gone.front());
    m_gone.pop_front();
    m_model->beginRemoveRows(QModelIndex(), row, row);
    m_rows.erase(m_rows.begin() + row);
    --m_shown;
    m_model->endRemoveRows();
}

void MCSMpxORVStatusListModel::Implementation::OnStatusChanged(const Observable* source) {
    const int place = PlaceOf(source);
    if (place != NoRow && RowAt(place).status.get() == source) Redraw(place);
}

// A row that comes is read when it has come.
void MCSMpxORVStatusListModel::Implementation::Redraw(int place) {
    if (!IsShown(place)) return;
    Row& row = RowAt(place);
    if (m_isMoving) {
        if (!std::exchange(row.isRedrawDue, true)) m_redraws.push_back(row.serial);
    } else if (TellOfContent(place)) {
        Settle();
    }
}

void MCSMpxORVStatusListModel::Implementation::RedrawNextDue() {
    const int row = PlaceOf(m_redraws.front());
    m_redraws.pop_front();
    if (row == NoRow) return;
    RowAt(row).isRedrawDue = false;
    TellOfContent(row);
}

bool MCSMpxORVStatusListModel::Implementation::TellOfContent(int row) {
    const QPointer<MCSMpxORVStatusListModel> model(m_model);
    ++m_redrawDepth;
    Q_EMIT m_model->dataChanged(m_model->index(row, 0), m_model->index(row, m_model->columnCount() - 1));
    if (model.isNull()) return false;
    --m_redrawDepth;
    return true;
}

// The node of a row got or lost children. A status whose values went shows nothing from now on, and one that
// came back shows again.
void MCSMpxORVStatusListModel::Implementation::RenewStatus(const Observable* source) {
    const int place = PlaceOf(source);
    if (place == NoRow || RowAt(place).node != source || !RowAt(place).isPrepared) return;
    const MCSMpxORVStatus* const old = RowAt(place).status.get();
    if (old != nullptr && old->GetOperationModeValue() != nullptr) return;
    const Serial serial = RowAt(place).serial;
    const QPointer<MCSMpxORVStatusListModel> model(m_model);
    std::shared_ptr<MCSMpxORVStatus> status;
    if (RowAt(place).node->FindChild(mcskeys::Status) != nullptr) status = MakeStatus(*RowAt(place).node);
    if (model.isNull()) return;
    const int now = PlaceOf(serial);
    if (now == NoRow || RowAt(now).node == nullptr) return;
    if (status != nullptr) {
        m_known.erase(RowAt(now).status.get());
        m_known[status.get()] = serial;
        std::swap(RowAt(now).status, status);
    }
    Redraw(now);
}
