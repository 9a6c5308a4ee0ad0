// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/itemchanges.h>

#include <platform/values/tree.h>
#include <platform/vtclient/client/changeerror.h>
#include <platform/vtclient/client/contentchanges.h>
#include <platform/vtclient/client/snapshotmerge.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>

namespace vt {

ItemChanges::ItemChanges(const TreeMirror& mirror, MirrorRecords& records, MirrorItems& items,
                         EditQueue& edits, const SnapshotMerge& merge)
    : m_mirror(mirror), m_records(records), m_items(items), m_edits(edits), m_merge(merge) {}

void ItemChanges::SetWritable(const QStringList& prefixes) {
    const QString& remotePath = m_mirror.RemotePath();
    const auto coversAll = [&remotePath](const QString& prefix) { return IsAtOrBelow(remotePath, prefix); };
    m_isAllWritable = std::any_of(prefixes.begin(), prefixes.end(), coversAll);
    m_writable.clear();
    for (const QString& prefix : prefixes)
        if (IsAtOrBelow(prefix, remotePath)) m_writable.append(prefix);
}

bool ItemChanges::IsWritable(const MirrorRecord& record) const {
    if (m_isAllWritable || m_writable.isEmpty()) return m_isAllWritable;
    const QString path = m_records.PathOf(record);
    return std::any_of(m_writable.begin(), m_writable.end(),
                       [&path](const QString& prefix) { return IsAtOrBelow(path, prefix); });
}

bool ItemChanges::ApplyRemoved(quint32 id, QString* error) {
    if (id == 0) return FailChange(error, QStringLiteral("the root of a subscription removed"));
    if (MirrorRecord* const record = m_records.Find(id)->record)
        m_items.Destroy(record->item);
    else
        m_records.DropUnseen(id);
    return true;
}

bool ItemChanges::ApplyAdded(const TreeChange& change, QString* error) {
    if (m_records.Find(change.id) != nullptr)
        return FailChange(error, QStringLiteral("id %1 added twice").arg(change.id));
    if (change.id == 0) return ApplyRoot(change, error);
    const MirrorRecords::Numbered* const above = m_records.Find(change.parent);
    if (above == nullptr)
        return FailChange(error, QStringLiteral("id %1 added below an unknown one").arg(change.id));
    if (above->record == nullptr) {
        m_records.NoteUnseen(change.id);
        return true;
    }
    MirrorRecord& parent = *above->record;
    if (!parent.IsNode()) return FailChange(error, QStringLiteral("an item added below a value"));
    if (change.name.isEmpty() || change.name.contains(QLatin1Char('/')))
        return FailChange(error, QStringLiteral("'%1' is no name").arg(change.name));
    if (parent.pathLength + 1 + change.name.size() > vtlimits::MaxPathLength)
        return FailChange(error, QStringLiteral("id %1 lies deeper than a path is long").arg(change.id));
    return Place(change, &parent, parent.Node().FindChild(change.name), error);
}

bool ItemChanges::ApplyRoot(const TreeChange& change, QString* error) {
    values::Tree* const tree = values::Tree::Instance();
    values::TreeItem* const existing = tree->FindItem(m_mirror.LocalPath());
    if (existing == tree->GetRoot() && change.item.kind != EItemKind::Node)
        return FailChange(error, QStringLiteral("a value cannot be shown at the root of the tree"));
    return Place(change, nullptr, existing, error);
}

bool ItemChanges::Place(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing,
                        QString* error) {
    if (existing == nullptr) return Make(change, parent, error);
    EItemKind kind = EItemKind::Node;
    if (!KindOf(*existing, &kind) || kind != change.item.kind)
        return Replace(change, parent, existing, error);
    MirrorRecord* record = m_records.Find(existing);
    const bool isStranger = record == nullptr && parent != nullptr && !m_merge.IsUnderWay();
    const bool isToldOf = record != nullptr && record->IsAtServer() && m_records.IsCurrent(*record);
    if (isStranger || isToldOf)
        return FailChange(error, QStringLiteral("the name '%1' added twice").arg(change.name));
    if (record == nullptr) record = &m_records.Make(existing, kind, parent, ERecord::Known);
    Bind(*record, parent, change);
    return true;
}

bool ItemChanges::Replace(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing,
                          QString* error) {
    m_items.Destroy(existing);
    if (m_mirror.IsReleased()) return true;
    // Whoever was told of it may have deleted the node that it lay in.
    const MirrorRecords::Numbered* const above = parent != nullptr ? m_records.Find(change.parent) : nullptr;
    if (parent != nullptr && (above == nullptr || above->record != parent)) return true;
    return Make(change, parent, error);
}

bool ItemChanges::Make(const TreeChange& change, MirrorRecord* parent, QString* error) {
    const MirrorRecord* const record = m_items.Make(change, parent, error);
    if (record == nullptr) return false;
    if (!record->IsNode()) record->Value().SetWritable(IsWritable(*record));
    return true;
}

void ItemChanges::Bind(MirrorRecord& record, MirrorRecord* parent, const TreeChange& change) {
    const bool isEdited = record.state == ERecord::Offered && record.isEdited;
    record.isEdited = false;
    m_records.Arrive(record, parent, change.id);
    if (record.IsNode()) return;
    record.server = change.item.content;
    const KindOperations& operations = *Operations(record.kind);
    values::ValueBase& value = record.Value();
    const RecordGuard guard(record);
    value.SetWritable(IsWritable(record));
    if (guard.IsAlive()) operations.describe(value, change.item, &record);
    const bool isShown = guard.IsAlive() && operations.content(value) == change.item.content;
    if (guard.IsAlive() && isEdited && !isShown)
        m_edits.Queue(record);
    else if (guard.IsAlive() && !isShown)
        record.ShowServerContent();
    if (guard.IsAlive()) ContentChanges::ShowFlags(record, change.item.flags);
}

}  // namespace vt
