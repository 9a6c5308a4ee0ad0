// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/treemirror.h>

#include <platform/app/errorhandler.h>
#include <platform/values/node.h>
#include <platform/values/refusals.h>
#include <platform/values/tree.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/itemkinds.h>
#include <platform/vtclient/treepath.h>

#include <algorithm>

namespace vt {

namespace {

values::ValueBase& ValueOf(const MirrorRecord& record) {
    return static_cast<values::ValueBase&>(*record.item);
}

values::Node& NodeOf(const MirrorRecord& record) {
    return static_cast<values::Node&>(*record.item);
}

bool Fail(QString* error, const QString& what) {
    *error = what;
    return false;
}

/// What a write of \a value asks for: of a selection the key of its current item.
Content ContentToWrite(const values::ValueBase& value, EItemKind kind) {
    if (kind != EItemKind::Selection) return Operations(kind)->content(value);
    const auto& selection = static_cast<const values::ValueSelection&>(value);
    if (selection.GetCurrentIndex() == values::ValueSelection::NoIndex) return {};
    return qint64{selection.GetCurrentKey()};
}

}  // namespace

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
    record->parent = parent;
    item->GetObservable()->AddObserver(record);
    return record;
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
    QString path = record.item->GetName();
    for (const MirrorRecord* above = record.parent; above->parent != nullptr; above = above->parent)
        path = above->item->GetName() + QLatin1Char('/') + path;
    return ChildPath(m_remotePath, path);
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

void TreeMirror::Show(MirrorRecord& record, const Content& content) {
    Operations(record.kind)->set(ValueOf(record), content, &record);
}

// What is kept as the server's content can always be shown.
bool TreeMirror::TakeContent(MirrorRecord& record, const TreeChange& change, QString* error) {
    Content content = change.item.content;
    if (!Operations(record.kind)->accept(&content))
        return Fail(error, QStringLiteral("a content that is not of the item's kind"));
    record.server = std::move(content);
    return true;
}

bool TreeMirror::ApplyContent(MirrorRecord& record, const TreeChange& change, QString* error) {
    if (!TakeContent(record, change, error)) return false;
    if (change.change == EChange::Own && change.session == m_session) return true;  // shown already
    if (record.isOccurring && record.series == m_series) {
        const RecordGuard guard(record);
        if (!AttachAll(error)) return false;
        if (!guard.IsAlive()) return true;
    }
    // What is edited here is newer, until the server has answered.
    const bool isOlder = record.requests != 0 || record.isQueued;
    if (record.isOccurring || !isOlder) Show(record, Content(record.server));
    return true;
}

bool TreeMirror::ApplyItems(MirrorRecord& record, const TreeChange& change, QString* error) {
    if (record.kind != EItemKind::Selection)
        return Fail(error, QStringLiteral("choices of what is no selection"));
    if (!TakeContent(record, change, error)) return false;
    const RecordGuard guard(record);
    Operations(record.kind)->describe(ValueOf(record), change.item, &record);
    if (guard.IsAlive() && record.requests == 0) Show(record, Content(record.server));
    return true;
}

void TreeMirror::UpdateFlags(MirrorRecord& record, unsigned flags) {
    values::ValueBase& value = ValueOf(record);
    const RecordGuard guard(record);
    record.isOccurring = (flags & ItemDescription::EveryChange) != 0;
    record.isStaleAtServer = (flags & ItemDescription::Stale) != 0;
    const bool isStale = record.isStaleAtServer;
    value.SetDelivery(record.isOccurring ? values::EDelivery::EveryChange : values::EDelivery::LastValue);
    if (guard.IsAlive()) value.SetState(isStale ? values::Stale : values::Valid, &record);
}

// Who holds the name is either not the server's, or will lose it to one of the changes that follow.
void TreeMirror::Rename(MirrorRecord& record, const QString& name) {
    values::ValueBase& value = ValueOf(record);
    const ObservableGuard guard(value);
    const values::Node* const parent = value.GetParent();
    values::TreeItem* const holder = parent != nullptr ? parent->FindChild(name) : nullptr;
    EItemKind kind = EItemKind::Node;
    if (holder != nullptr &&
        (m_locals.count(holder) != 0 || !KindOf(*holder, &kind) || kind == EItemKind::Node))
        Destroy(holder);
    else if (holder != nullptr)
        static_cast<values::ValueBase*>(holder)->SetName(QStringLiteral("%1 (%2)").arg(name).arg(record.id));
    if (guard.IsAlive()) value.SetName(name, &record);
}

bool TreeMirror::ApplyDescribed(MirrorRecord& record, const TreeChange& change, QString* error) {
    const KindOperations& operations = *Operations(record.kind);
    ItemDescription item;
    item.minimum = change.item.minimum;
    item.maximum = change.item.maximum;
    if (operations.hasLimits && !(operations.accept(&item.minimum) && operations.accept(&item.maximum)))
        return Fail(error, QStringLiteral("limits that are not of the item's kind"));
    values::ValueBase& value = ValueOf(record);
    const RecordGuard guard(record);
    if (record.parent != nullptr && change.name != value.GetName()) Rename(record, change.name);
    if (guard.IsAlive() && operations.hasLimits) operations.describe(value, item, &record);
    if (guard.IsAlive()) UpdateFlags(record, change.item.flags);
    return true;
}

// Nobody has seen it, and nobody has deleted it.
void TreeMirror::DropDetached() {
    const bool wasRemoving = m_isRemoving;
    m_isRemoving = true;
    std::deque<Detached> dropped;
    dropped.swap(m_detached);  // first: the records of what goes look through what is still there
    dropped.clear();
    m_isRemoving = wasRemoving;
}

void TreeMirror::Destroy(values::TreeItem* item) {
    const bool wasRemoving = m_isRemoving;
    m_isRemoving = true;
    const auto isItem = [item](const Detached& detached) { return detached.item.get() == item; };
    const auto detached = std::find_if(m_detached.begin(), m_detached.end(), isItem);
    if (detached != m_detached.end()) {
        const Detached taken = std::move(*detached);
        m_detached.erase(detached);
    } else if (item->GetParent() != nullptr && item->GetState() != values::GoingAway) {
        delete item;  // wherever it is, its parent lets go of it
    }
    m_isRemoving = wasRemoving;
}

bool TreeMirror::ApplyRemoved(quint32 id, QString* error) {
    if (id == 0) return Fail(error, QStringLiteral("the root of a subscription removed"));
    Slot* const slot = m_slots.Find(id);
    if (slot->record != nullptr) {
        Destroy(slot->record->item);
        return true;
    }
    slot->isKnown = false;
    m_slots.Release(id);
    return true;
}

bool TreeMirror::ApplyAdded(const TreeChange& change, QString* error) {
    const Slot* const slot = m_slots.Find(change.id);
    if (slot != nullptr && slot->isKnown)
        return Fail(error, QStringLiteral("id %1 added twice").arg(change.id));
    if (change.id == 0) return ApplyRoot(change, error);
    const Slot* const above = m_slots.Find(change.parent);
    if (above == nullptr || !above->isKnown)
        return Fail(error, QStringLiteral("id %1 added below an unknown one").arg(change.id));
    if (above->record == nullptr) {  // deleted here, and so is what is below
        Slot& known = m_slots.Provide(change.id);
        m_slots.Retain(change.id);
        known.isKnown = true;
        return true;
    }
    MirrorRecord& parent = *above->record;
    if (parent.kind != EItemKind::Node) return Fail(error, QStringLiteral("an item added below a value"));
    if (change.name.isEmpty() || change.name.contains(QLatin1Char('/')))
        return Fail(error, QStringLiteral("'%1' is no name").arg(change.name));
    return Place(change, &parent, NodeOf(parent).FindChild(change.name), error);
}

bool TreeMirror::ApplyRoot(const TreeChange& change, QString* error) {
    values::Tree* const tree = values::Tree::Instance();
    values::TreeItem* const existing = tree->FindItem(m_localPath);
    if (existing == tree->GetRoot() && change.item.kind != EItemKind::Node)
        return Fail(error, QStringLiteral("a value cannot be shown at the root of the tree"));
    return Place(change, nullptr, existing, error);
}

// Where the server has an item of the same type, the local one stays; else the server wins.
bool TreeMirror::Place(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing,
                       QString* error) {
    if (existing == nullptr) return AddNew(change, parent, error);
    MirrorRecord* record = RecordOf(existing);
    EItemKind kind = EItemKind::Node;
    if (!KindOf(*existing, &kind) || kind != change.item.kind) {
        Destroy(existing);
        if (m_isReleased) return true;
        const Slot* const above = parent != nullptr ? m_slots.Find(change.parent) : nullptr;
        if (parent != nullptr && (above == nullptr || above->record != parent)) return true;
        return AddNew(change, parent, error);
    }
    if (record == nullptr && !m_isMerging && parent != nullptr)
        return Fail(error, QStringLiteral("the name '%1' added twice").arg(change.name));
    if (record != nullptr && !record->isLocal && record->generation == m_generation)
        return Fail(error, QStringLiteral("the name '%1' added twice").arg(change.name));
    if (record == nullptr) record = NewRecord(existing, kind, parent);
    if (parent == nullptr) m_root = record;
    Bind(*record, change);
    return true;
}

void TreeMirror::Bind(MirrorRecord& record, const TreeChange& change) {
    const bool isEdited = record.isLocal && !record.isRefused && record.isEdited;
    if (record.isLocal) {
        m_locals.erase(record.item);
        record.isOwnCreation = record.isOwnCreation || !(record.isRefused || record.isAwaited);
    }
    if (record.isAwaited) --m_awaited;
    record.isLocal = record.isRefused = record.isEdited = record.isAwaited = false;
    record.parent = change.id == 0 ? nullptr : m_slots.Find(change.parent)->record;
    Number(record, change.id);
    if (m_isMerging) m_merging[record.item] = &record;
    if (record.kind == EItemKind::Node) return;
    record.server = change.item.content;
    const KindOperations& operations = *Operations(record.kind);
    values::ValueBase& value = ValueOf(record);
    const RecordGuard guard(record);
    value.SetWritable(IsWritable(record));
    if (guard.IsAlive()) operations.describe(value, change.item, &record);
    const bool isShown = guard.IsAlive() && operations.content(value) == change.item.content;
    if (guard.IsAlive() && isEdited && !isShown)
        Queue(record, false);
    else if (guard.IsAlive() && !isShown)
        Show(record, change.item.content);
    if (guard.IsAlive()) UpdateFlags(record, change.item.flags);
}

bool TreeMirror::AddNew(const TreeChange& change, MirrorRecord* parent, QString* error) {
    const QString name =
        parent != nullptr ? change.name : m_localPath.mid(m_localPath.lastIndexOf(QLatin1Char('/')) + 1);
    std::unique_ptr<values::TreeItem> item = MakeItem(change.item, name);
    values::TreeItem* const added = item.get();
    const bool isBelowNew = parent != nullptr && parent->series == m_series;
    if (isBelowNew) {
        if (!NodeOf(*parent).AddChild(item))
            return Fail(error, QStringLiteral("the name '%1' added twice").arg(change.name));
        parent->lastChild = added;
    } else {
        m_detached.push_back({std::move(item), parent});
    }
    MirrorRecord* const record = NewRecord(added, change.item.kind, parent);
    record->series = m_series;
    record->server = change.item.content;
    record->isOccurring = (change.item.flags & ItemDescription::EveryChange) != 0;
    record->isStaleAtServer = (change.item.flags & ItemDescription::Stale) != 0;
    if (parent == nullptr) m_root = record;
    Number(*record, change.id);
    if (record->kind != EItemKind::Node) ValueOf(*record).SetWritable(IsWritable(*record));
    if (m_isMerging) m_merging[added] = record;
    return true;
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
    values::TreeItem* child =
        record.lastChild != nullptr ? record.lastChild->GetNextSibling() : NodeOf(record).GetFirstChild();
    while (child != nullptr) {
        values::TreeItem* const next = child->GetNextSibling();
        const bool isUnknown = child != m_attaching && RecordOf(child) == nullptr;
        if (isUnknown && m_isMerging && IsLeftOver(*child)) {
            Destroy(child);
            if (m_isReleased || !record.IsUsed()) return;
        } else {
            record.lastChild = child;
            if (isUnknown) AdoptLocal(child, record);
        }
        child = next;
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

// Edits -----------------------------------------------------------------------------------------------------

void TreeMirror::OnUpdate(MirrorRecord& record, TChangeCode code) {
    if (record.kind == EItemKind::Node) {
        if (code == changecode::GoingAway)
            OnGone(record);
        else if (code == changecode::ChildrenAdded && record.series != m_series && !m_isMerging)
            AdoptChildren(record);
        return;
    }
    if (code == changecode::ContentChanged)
        OnContent(record);
    else if (code == changecode::ItemsChanged && record.kind == EItemKind::List)
        OnContent(record);
    else if (code == changecode::StateChanged && record.item->GetState() == values::GoingAway)
        OnGone(record);
}

void TreeMirror::OnGone(MirrorRecord& record) {
    const bool isRoot = &record == m_root;
    record.item->GetObservable()->DeleteObserver(&record);
    Forget(record);
    if (!isRoot || m_isRemoving) return;
    m_isEstablished = false;
    m_host.OnRootDeleted(*this);
}

void TreeMirror::OnContent(MirrorRecord& record) {
    if (record.isAwaited) return TakeBack(record, QStringLiteral("the server does not have it (yet)"));
    if (record.isLocal) {
        record.isEdited = record.isEdited || (m_isConnected && !record.isQueued);
        return;
    }
    if (!m_isConnected) return TakeBack(record, QStringLiteral("there is no connection to the server"));
    Queue(record, record.isOccurring);
}

void TreeMirror::Queue(MirrorRecord& record, bool isOccurrence) {
    if (!m_isConnected) return;  // what is made meanwhile is offered after the next snapshot
    if (!isOccurrence) {
        if (record.requests != 0) record.isEdited = true;
        if (record.requests != 0 || record.isQueued) return;
    }
    const bool wasIdle = m_edits.empty();
    record.isQueued = true;
    m_edits.push_back(
        {&record, isOccurrence, isOccurrence ? ContentToWrite(ValueOf(record), record.kind) : Content()});
    if (wasIdle && m_isEstablished) m_host.OnEdits(*this);
}

void TreeMirror::SendEdits() {
    while (m_isEstablished && !m_edits.empty()) {
        const Edit edit = std::move(m_edits.front());
        m_edits.pop_front();
        if (edit.record == nullptr) continue;
        edit.record->isQueued = false;
        if (edit.record->isLocal || edit.record->kind == EItemKind::Node)
            SendCreation(*edit.record);
        else
            SendEdit(edit);
    }
}

void TreeMirror::SendEdit(const Edit& edit) {
    MirrorRecord& record = *edit.record;
    const Content shown = Operations(record.kind)->content(ValueOf(record));
    if (!edit.isOccurrence && shown == record.server) return;
    Message write = Message::Of(EMessage::Write);
    write.id = record.id;
    write.item.content = edit.isOccurrence ? edit.content : ContentToWrite(ValueOf(record), record.kind);
    record.isEdited = false;
    const quint32 request = m_host.SendRequest(*this, &write, nullptr);
    if (request == 0) return TakeBack(record, QStringLiteral("the content is too large to be sent"));
    ++record.requests;
    m_requests[request] = {&record, false, shown};
}

void TreeMirror::SendCreation(MirrorRecord& record) {
    record.isRefused = record.isRefused || (record.parent != nullptr && record.parent->isRefused);
    if (record.isRefused) return EndWaiting(record);
    if (record.requests != 0) return;
    Message create = Message::Of(EMessage::Create);
    create.path = RemotePathOf(record);
    create.item.kind = record.kind;
    record.isEdited = false;
    const quint32 request = m_host.SendRequest(*this, &create, record.item);
    if (request == 0) return RefuseCreation(record, QStringLiteral("it is too large to be sent"));
    ++record.requests;
    m_requests[request] = {&record, true, Content()};
}

void TreeMirror::OnAnswer(const Message& answer) {
    const auto found = m_requests.find(answer.req);
    if (found == m_requests.end()) return;
    const Request request = std::move(found->second);
    m_requests.erase(found);
    if (request.record == nullptr) return;  // the item has gone meanwhile
    MirrorRecord& record = *request.record;
    --record.requests;
    if (request.isCreation) return OnCreationAnswer(record, answer);
    const bool isRefused = answer.result == EResult::Denied || answer.result == EResult::Gone;
    // Of occurrences the server's echo says how they stand, and others may have come since.
    if (record.isOccurring && !isRefused) return;
    const bool isEditedAgain = record.isEdited || record.requests != 0;
    record.isEdited = false;
    if (answer.result == EResult::Done) record.server = request.content;
    if (answer.result == EResult::Clamped) {
        Content content = answer.item.content;
        if (Operations(record.kind)->accept(&content)) record.server = std::move(content);
    }
    if (isEditedAgain) {
        if (!record.isOccurring) Queue(record, false);
        if (isRefused) values::Refusals::Instance().Report(record.item, RemotePathOf(record), answer.reason);
    } else if (isRefused) {
        TakeBack(record, answer.reason);
    } else if (answer.result == EResult::Clamped) {
        Show(record, Content(record.server));
    }
}

void TreeMirror::OnCreationAnswer(MirrorRecord& record, const Message& answer) {
    if (!record.isLocal) {
        // It has come meanwhile, and what was said of its content waited for this answer.
        if (record.kind == EItemKind::Node) return EndWaiting(record);
        if (record.requests != 0) return;
        if (std::exchange(record.isEdited, false))
            Queue(record, false);
        else if (!record.isQueued)
            Show(record, Content(record.server));
        return;
    }
    if (answer.result == EResult::Done) return Destroy(record.item);  // it was there, and has gone again
    RefuseCreation(record, answer.reason);
}

void TreeMirror::RefuseCreation(MirrorRecord& record, const QString& reason) {
    record.isRefused = true;
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(QStringLiteral("'%1' is not created at the server and stays local: %2")
                     .arg(RemotePathOf(record), reason),
                 L"platform/vtclient/treemirror", __LINE__);
    EndWaiting(record);
}

// Shows the server's content, and says why.
void TreeMirror::TakeBack(MirrorRecord& record, const QString& reason) {
    const ObservableGuard guard(ValueOf(record));
    values::TreeItem* const item = record.item;
    const QString path = RemotePathOf(record);
    Show(record, Content(record.server));
    values::Refusals::Instance().Report(guard.IsAlive() ? item : nullptr, path, reason);
}

}  // namespace vt
