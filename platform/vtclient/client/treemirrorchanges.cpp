// SPDX-License-Identifier: Apache-2.0
// How a mirror applies what the server tells.
#include <platform/vtclient/client/treemirror.h>

#include <platform/values/tree.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/treemirrordetail.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>

namespace vt {

using treemirrordetail::Fail;
using treemirrordetail::NodeOf;
using treemirrordetail::ValueOf;

// Whoever is told may end the record, and with it the content.
void TreeMirror::Show(MirrorRecord& record) {
    Operations(record.kind)->set(ValueOf(record), record.server, &record);
}

// What is kept as the server's content can always be shown.
bool TreeMirror::TakeContent(MirrorRecord& record, const TreeChange& change, QString* error) {
    return Operations(record.kind)->take(change.item.content, &record.server) ||
           Fail(error, QStringLiteral("a content that is not of the item's kind"));
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
    if (record.isOccurring || !isOlder) Show(record);
    return true;
}

bool TreeMirror::ApplyItems(MirrorRecord& record, const TreeChange& change, QString* error) {
    if (record.kind != EItemKind::Selection)
        return Fail(error, QStringLiteral("choices of what is no selection"));
    if (!TakeContent(record, change, error)) return false;
    auto& selection = static_cast<values::ValueSelection&>(ValueOf(record));
    const bool hadCurrent = selection.GetCurrentIndex() != values::ValueSelection::NoIndex;
    const RecordGuard guard(record);
    Operations(record.kind)->describe(selection, change.item, &record);
    if (!guard.IsAlive() || record.requests != 0) return true;
    // What was selected here and is not sent yet is newer, if it is still there.
    const bool isLost = hadCurrent && selection.GetCurrentIndex() == values::ValueSelection::NoIndex;
    if (!record.isQueued || isLost) Show(record);
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
    if (operations.hasLimits && !(operations.Accept(&item.minimum) && operations.Accept(&item.maximum)))
        return Fail(error, QStringLiteral("limits that are not of the item's kind"));
    values::ValueBase& value = ValueOf(record);
    const RecordGuard guard(record);
    if (record.parent != nullptr && change.name != value.GetName()) Rename(record, change.name);
    if (guard.IsAlive() && operations.hasLimits) operations.describe(value, item, &record);
    // A content that came before its limits may have met the old ones.
    const bool isEdited = record.requests != 0 || record.isQueued;
    if (guard.IsAlive() && operations.hasLimits && !isEdited && operations.content(value) != record.server)
        Show(record);
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
    if (parent.pathLength + 1 + change.name.size() > vtlimits::MaxPathLength)
        return Fail(error, QStringLiteral("id %1 lies deeper than a path is long").arg(change.id));
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
    SetParent(record, change.id == 0 ? nullptr : m_slots.Find(change.parent)->record);
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
        Show(record);
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

}  // namespace vt
