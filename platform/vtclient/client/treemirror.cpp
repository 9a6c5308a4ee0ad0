// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/treemirror.h>

#include <platform/app/errorhandler.h>
#include <platform/values/node.h>
#include <platform/values/refusals.h>
#include <platform/values/tree.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/treemirrordetail.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/treepath.h>

#include <algorithm>

namespace vt {

using treemirrordetail::Fail;
using treemirrordetail::NodeOf;
using treemirrordetail::ValueOf;

TreeMirror::IHost::~IHost() = default;

void MirrorRecord::Update(Observable* /*source*/, TChangeCode code) {
    mirror->OnUpdate(*this, code);
}

TreeMirror::TreeMirror(QString localPath, QString remotePath, IHost& host)
    : m_localPath(std::move(localPath)), m_remotePath(std::move(remotePath)), m_host(host) {}

TreeMirror::~TreeMirror() {
    Release(nullptr);
}

MirrorRecord* TreeMirror::NewRecord(values::TreeItem* item, EItemKind kind, MirrorRecord* parent) {
    MirrorRecord* const record = m_records.Take();
    record->mirror = this;
    record->item = item;
    record->kind = kind;
    SetParent(*record, parent);
    item->GetObservable()->AddObserver(record);
    return record;
}

void TreeMirror::SetParent(MirrorRecord& record, MirrorRecord* parent) {
    record.parent = parent;
    record.pathLength =
        parent != nullptr ? parent->pathLength + 1 + record.item->GetName().size() : m_remotePath.size();
}

void TreeMirror::Number(MirrorRecord& record, quint32 id) {
    record.id = id;
    record.generation = m_generation;
    Slot& slot = m_slots.Provide(id);
    m_slots.Retain(id);
    slot.record = &record;
    slot.isKnown = true;
}

// The number stays known where the server may still speak of it.
void TreeMirror::Forget(MirrorRecord& record) {
    if (record.parent != nullptr && record.parent->lastChild == record.item)
        record.parent->lastChild = record.item->GetPreviousSibling();
    m_locals.erase(record.item);
    m_merging.erase(record.item);
    if (record.isAwaited) --m_awaited;
    if (!record.isLocal && record.generation == m_generation) {
        Slot* const slot = m_slots.Find(record.id);
        if (slot != nullptr && slot->record == &record) {
            slot->record = nullptr;
            slot->isKnown = !m_isRemoving;
            if (m_isRemoving) m_slots.Release(record.id);
        }
    }
    for (std::size_t i = 0; record.kind == EItemKind::Node && i < m_detached.size();) {
        if (m_detached[i].parent != &record) {
            ++i;
            continue;
        }
        const Detached orphan = std::move(m_detached[i]);
        m_detached.erase(m_detached.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (record.isQueued)
        for (Edit& edit : m_edits)
            if (edit.record == &record) edit.record = nullptr;
    if (record.requests != 0)
        for (auto& request : m_requests)
            if (request.second.record == &record) request.second.record = nullptr;
    if (&record == m_root) m_root = nullptr;
    m_records.Give(&record);
}

MirrorRecord* TreeMirror::RecordOf(const values::TreeItem* item) const {
    const auto local = m_locals.find(item);
    if (local != m_locals.end()) return local->second;
    const auto merging = m_merging.find(item);
    return merging != m_merging.end() ? merging->second : nullptr;
}

QString TreeMirror::RemotePathOf(const MirrorRecord& record) const {
    if (record.parent == nullptr) return m_remotePath;
    QStringList names(record.item->GetName());
    for (const MirrorRecord* above = record.parent; above->parent != nullptr; above = above->parent)
        names.prepend(above->item->GetName());
    return ChildPath(m_remotePath, names.join(QLatin1Char('/')));
}

bool TreeMirror::IsWritable(const MirrorRecord& record) const {
    if (m_isAllWritable || m_writable.isEmpty()) return m_isAllWritable;
    const QString path = RemotePathOf(record);
    return std::any_of(m_writable.begin(), m_writable.end(),
                       [&path](const QString& prefix) { return IsAtOrBelow(path, prefix); });
}

// A snapshot ------------------------------------------------------------------------------------------------

void TreeMirror::Start(const QStringList& writable, int session) {
    m_isConnected = true;
    m_isEstablished = false;
    m_session = session;
    DropDetached();
    ++m_generation;
    m_slots.Clear();
    m_merging.clear();
    const auto coversAll = [this](const QString& prefix) { return IsAtOrBelow(m_remotePath, prefix); };
    m_isAllWritable = std::any_of(writable.begin(), writable.end(), coversAll);
    m_writable.clear();
    for (const QString& prefix : writable)
        if (IsAtOrBelow(prefix, m_remotePath)) m_writable.append(prefix);
    const values::TreeItem* const existing = values::Tree::Instance()->FindItem(m_localPath);
    const bool hasChildren = existing != nullptr && existing->IsNode() &&
                             static_cast<const values::Node*>(existing)->CountChildren() != 0;
    m_isMerging = hasChildren || !m_records.IsEmpty();
    for (quint32 i = 0; i < m_records.End(); ++i) {
        MirrorRecord& record = m_records.At(i);
        if (record.IsUsed() && !record.isLocal) m_merging[record.item] = &record;
    }
}

bool TreeMirror::Apply(const TreeChange& change, QString* error) {
    if (m_isReleased) return true;
    if (change.change == EChange::Added) return ApplyAdded(change, error);
    const Slot* const slot = m_slots.Find(change.id);
    if (slot == nullptr || !slot->isKnown)
        return Fail(error, QStringLiteral("an unknown id %1").arg(change.id));
    if (change.change == EChange::Removed) return ApplyRemoved(change.id, error);
    if (slot->record == nullptr) return true;  // deleted here
    MirrorRecord& record = *slot->record;
    if (record.kind == EItemKind::Node) return Fail(error, QStringLiteral("a node with a content"));
    switch (change.change) {
        case EChange::Described:
            return ApplyDescribed(record, change, error);
        case EChange::Items:
            return ApplyItems(record, change, error);
        default:
            return ApplyContent(record, change, error);
    }
}

bool TreeMirror::EndPart(bool hasMore, QString* error) {
    return hasMore || !m_isEstablished || AttachAll(error);
}

bool TreeMirror::AttachAll(QString* error) {
    if (m_detached.empty()) return true;
    while (!m_detached.empty() && !m_isReleased) {
        Detached next = std::move(m_detached.front());
        m_detached.pop_front();
        if (!Attach(std::move(next), error)) return false;
    }
    ++m_series;
    return true;
}

bool TreeMirror::Attach(Detached detached, QString* error) {
    values::TreeItem* const item = detached.item.get();
    m_attaching = item;
    bool isAttached = false;
    if (detached.parent == nullptr) {
        const QString parentPath = m_localPath.left(m_localPath.lastIndexOf(QLatin1Char('/')) + 1);
        isAttached = values::Tree::Instance()->AddItem(parentPath, detached.item);
        if (!isAttached) *error = QStringLiteral("there is no room for it at '%1'").arg(m_localPath);
    } else {
        MirrorRecord& parent = *detached.parent;
        const values::TreeItem* const parentItem = parent.item;
        values::Node& node = NodeOf(parent);
        // Made here since the server's was announced: the server wins.
        if (values::TreeItem* const rival = node.FindChild(item->GetName())) Destroy(rival);
        isAttached = true;
        if (!m_isReleased && parent.item == parentItem) {
            isAttached = node.AddChild(detached.item);
            if (!isAttached) *error = QStringLiteral("'%1' cannot be added").arg(item->GetName());
        }
    }
    m_attaching = nullptr;
    return isAttached;
}

bool TreeMirror::Finish(QString* error) {
    if (m_root == nullptr) return Fail(error, QStringLiteral("a snapshot without its root"));
    if (!AttachAll(error)) return false;
    if (m_isMerging) {
        Sweep();
        if (!m_isReleased) AdoptLocals();
    }
    m_isMerging = false;
    m_merging.clear();
    m_isEstablished = !m_isReleased && m_root != nullptr;
    if (m_isEstablished && !m_edits.empty()) m_host.OnEdits(*this);
    return true;
}

// What the server had and has no more goes, except what this client had asked for: it asks again. What lies
// below a node that it had asked for may come back with that, and waits for the answer where it is.
void TreeMirror::Sweep() {
    for (quint32 i = 0; i < m_records.End() && !m_isReleased; ++i) {
        MirrorRecord& record = m_records.At(i);
        if (!record.IsUsed() || record.isLocal || record.generation == m_generation) continue;
        if (record.isOwnCreation && record.parent != nullptr && record.parent->IsUsed()) {
            KeepLocal(record);
            if (record.kind != EItemKind::Node) ValueOf(record).SetState(values::Valid, &record);
        } else if (IsBelowLostCreation(record)) {
            KeepLocal(record);
            record.isAwaited = true;
            ++m_awaited;
        } else {
            Destroy(record.item);
        }
    }
}

void TreeMirror::KeepLocal(MirrorRecord& record) {
    record.isLocal = true;
    m_merging.erase(record.item);
    m_locals[record.item] = &record;
}

bool TreeMirror::IsBelowLostCreation(const MirrorRecord& record) const {
    for (const MirrorRecord* above = record.parent; above != nullptr; above = above->parent) {
        if (!above->IsUsed() || above->generation == m_generation) return false;
        if (above->isOwnCreation) return true;
    }
    return false;
}

// The server has told of all that came with what was created: the rest will not come.
void TreeMirror::EndWaiting(const MirrorRecord& created) {
    if (m_awaited == 0) return;
    const RecordGuard guard(created);
    for (quint32 i = 0; i < m_records.End() && guard.IsAlive(); ++i) {
        const MirrorRecord& record = m_records.At(i);
        if (record.IsUsed() && record.isAwaited && IsWaitingFor(record, created)) Destroy(record.item);
    }
}

// Not where another creation, in between, is not answered yet.
bool TreeMirror::IsWaitingFor(const MirrorRecord& record, const MirrorRecord& created) {
    const MirrorRecord* above = record.parent;
    while (above != nullptr && above != &created && above->requests == 0 && !above->isQueued)
        above = above->parent;
    return above == &created;
}

void TreeMirror::AdoptLocals() {
    for (quint32 i = 0; i < m_records.End() && !m_isReleased; ++i) {
        MirrorRecord& record = m_records.At(i);
        if (!record.IsUsed()) continue;
        // Made by this client before: the server hears again who wants it.
        const bool isOwnNode = record.isOwnCreation && record.kind == EItemKind::Node;
        record.isRefused = false;
        if ((record.isLocal && !record.isAwaited) || isOwnNode) Queue(record, false);
        if (record.kind == EItemKind::Node && !record.isLocal) {
            record.lastChild = nullptr;
            AdoptChildren(record);
        }
    }
}

// What an earlier mirror left behind is nobody's creation.
bool TreeMirror::IsLeftOver(const values::TreeItem& item) {
    if (!item.IsNode()) return item.GetState() == values::Stale;
    const auto& node = static_cast<const values::Node&>(item);
    const values::TreeItem* child = node.GetFirstChild();
    if (child == nullptr) return false;
    for (; child != nullptr; child = child->GetNextSibling())
        if (!IsLeftOver(*child)) return false;
    return true;
}

void TreeMirror::AdoptChildren(MirrorRecord& record) {
    const RecordGuard guard(record);
    const auto next = [&record] {
        return record.lastChild != nullptr ? record.lastChild->GetNextSibling()
                                           : NodeOf(record).GetFirstChild();
    };
    for (values::TreeItem* child = next(); child != nullptr; child = next()) {
        const bool isUnknown = child != m_attaching && RecordOf(child) == nullptr;
        if (isUnknown && m_isMerging && IsLeftOver(*child)) {
            Destroy(child);
            if (m_isReleased || !guard.IsAlive()) return;
        } else {
            record.lastChild = child;
            if (isUnknown) AdoptLocal(child, record);
        }
    }
}

void TreeMirror::AdoptLocal(values::TreeItem* item, MirrorRecord& parent) {
    EItemKind kind = EItemKind::Node;
    if (!KindOf(*item, &kind)) return;
    MirrorRecord* const record = NewRecord(item, kind, &parent);
    record->isLocal = true;
    record->isRefused = parent.isRefused;
    m_locals[item] = record;
    if (kind != EItemKind::Node)
        record->isOccurring = ValueOf(*record).GetDelivery() == values::EDelivery::EveryChange;
    if (!record->isRefused) Queue(*record, false);
    if (kind == EItemKind::Node) AdoptChildren(*record);
}

// The end ---------------------------------------------------------------------------------------------------

void TreeMirror::Lose() {
    if (!m_isConnected) return;
    m_isConnected = m_isEstablished = false;
    DropDetached();
    ++m_series;
    for (quint32 i = 0; i < m_records.End() && !m_isReleased; ++i) {
        const MirrorRecord& record = m_records.At(i);
        if (record.IsUsed() && !record.isLocal && record.kind != EItemKind::Node)
            ValueOf(record).SetState(values::Stale, const_cast<MirrorRecord*>(&record));
    }
    for (quint32 i = 0; i < m_records.End() && !m_isReleased; ++i) {
        MirrorRecord& record = m_records.At(i);
        if (!record.IsUsed() || record.isLocal || (record.requests == 0 && !record.isQueued)) continue;
        const bool isEdit = record.kind != EItemKind::Node;
        record.requests = 0;
        record.isQueued = false;
        if (isEdit) TakeBack(record, QStringLiteral("the connection was lost before the server answered"));
    }
    ForgetEdits();
}

void TreeMirror::ForgetEdits() {
    m_edits.clear();
    m_requests.clear();
    for (quint32 i = 0; i < m_records.End(); ++i) {
        m_records.At(i).requests = 0;
        m_records.At(i).isQueued = false;
    }
}

void TreeMirror::Vanish() {
    m_isEstablished = m_isConnected = false;
    DropDetached();
    m_isRemoving = true;
    values::Tree* const tree = values::Tree::Instance();
    if (m_root != nullptr && m_root->item != tree->GetRoot())
        Destroy(m_root->item);
    else
        DestroyChildren();  // the root of the tree stays
    m_isRemoving = false;
    m_slots.Clear();
    ForgetEdits();
}

void TreeMirror::DestroyChildren() {
    for (quint32 i = 0; i < m_records.End() && !m_isReleased; ++i) {
        const MirrorRecord& record = m_records.At(i);
        if (record.IsUsed() && !record.isLocal && &record != m_root && record.parent == m_root)
            Destroy(record.item);
    }
}

void TreeMirror::LetGo(MirrorRecord& record) {
    values::TreeItem* const item = record.item;
    const bool isStale = !record.isLocal && record.kind != EItemKind::Node && record.series != m_series;
    item->GetObservable()->DeleteObserver(&record);
    Forget(record);
    if (isStale) static_cast<values::ValueBase*>(item)->SetState(values::Stale);
}

void TreeMirror::Release(const values::TreeItem* item) {
    const auto isBelow = [item](const values::TreeItem* below) {
        while (below != nullptr && below != item)
            below = below->GetParent();
        return below == item;
    };
    const bool isAll = item == nullptr || item == Root();
    if (isAll) {
        m_isEstablished = false;
        m_isReleased = true;
        DropDetached();
    }
    for (quint32 i = 0; i < m_records.End(); ++i) {
        MirrorRecord& record = m_records.At(i);
        if (record.IsUsed() && (isAll || isBelow(record.item))) LetGo(record);
    }
}

}  // namespace vt
