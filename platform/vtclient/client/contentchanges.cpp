// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/contentchanges.h>

#include <platform/values/valueselection.h>
#include <platform/vtclient/client/changeerror.h>
#include <platform/vtclient/wire/itemkinds.h>

namespace vt {

namespace {

// What is kept as the server's content can always be shown.
bool TakeContent(MirrorRecord& record, const TreeChange& change, QString* error) {
    return Operations(record.kind)->take(change.item.content, &record.server) ||
           FailChange(error, QStringLiteral("a content that is not of the item's kind"));
}

}  // namespace

bool ContentChanges::Apply(MirrorRecord& record, const TreeChange& change, QString* error) {
    if (record.IsNode()) return FailChange(error, QStringLiteral("a node with a content"));
    if (change.change == EChange::Described) return ApplyDescription(record, change, error);
    if (change.change == EChange::Items) return ApplyChoices(record, change, error);
    if (!TakeContent(record, change, error)) return false;
    if (change.change == EChange::Own && change.session == m_session) return true;
    if (record.isOccurring) return ApplyOccurrence(record, error);
    if (!record.IsUnderWay()) record.ShowServerContent();
    return true;
}

// Each is told, of what is new too: that is attached first.
bool ContentChanges::ApplyOccurrence(MirrorRecord& record, QString* error) {
    if (m_items.IsNew(record)) {
        const RecordGuard guard(record);
        if (!m_items.AttachAll(error)) return false;
        if (!guard.IsAlive()) return true;
    }
    record.ShowServerContent();
    return true;
}

bool ContentChanges::ApplyChoices(MirrorRecord& record, const TreeChange& change, QString* error) {
    if (record.kind != EItemKind::Selection)
        return FailChange(error, QStringLiteral("choices of what is no selection"));
    if (!TakeContent(record, change, error)) return false;
    auto& selection = static_cast<values::ValueSelection&>(record.Value());
    const bool hadCurrent = selection.GetCurrentIndex() != values::ValueSelection::NoIndex;
    const RecordGuard guard(record);
    Operations(record.kind)->describe(selection, change.item, &record);
    if (!guard.IsAlive() || record.HasRequests()) return true;
    // What was selected here and is not sent yet is newer, if it is still there.
    const bool isLost = hadCurrent && selection.GetCurrentIndex() == values::ValueSelection::NoIndex;
    if (!record.IsQueued() || isLost) record.ShowServerContent();
    return true;
}

bool ContentChanges::ApplyDescription(MirrorRecord& record, const TreeChange& change, QString* error) {
    const KindOperations& operations = *Operations(record.kind);
    ItemDescription item;
    item.minimum = change.item.minimum;
    item.maximum = change.item.maximum;
    if (operations.hasLimits && !(operations.Accept(&item.minimum) && operations.Accept(&item.maximum)))
        return FailChange(error, QStringLiteral("limits that are not of the item's kind"));
    values::ValueBase& value = record.Value();
    const RecordGuard guard(record);
    if (record.parent != nullptr && change.name != value.GetName()) Rename(record, change.name);
    if (guard.IsAlive() && operations.hasLimits) operations.describe(value, item, &record);
    // A content that came before its limits may have met the old ones.
    if (guard.IsAlive() && operations.hasLimits && !record.IsUnderWay() &&
        operations.content(value) != record.server)
        record.ShowServerContent();
    if (guard.IsAlive()) ShowFlags(record, change.item.flags);
    return true;
}

void ContentChanges::ShowFlags(MirrorRecord& record, unsigned flags) {
    values::ValueBase& value = record.Value();
    const RecordGuard guard(record);
    record.isOccurring = (flags & ItemDescription::EveryChange) != 0;
    value.SetDelivery(record.isOccurring ? values::EDelivery::EveryChange : values::EDelivery::LastValue);
    const bool isStale = (flags & ItemDescription::Stale) != 0;
    if (guard.IsAlive()) value.SetState(isStale ? values::Stale : values::Valid, &record);
}

// Who holds the name is either not the server's, or will lose it to one of the changes that follow.
void ContentChanges::Rename(MirrorRecord& record, const QString& name) {
    values::ValueBase& value = record.Value();
    const ObservableGuard guard(value);
    const values::Node* const parent = value.GetParent();
    values::TreeItem* const holder = parent != nullptr ? parent->FindChild(name) : nullptr;
    if (holder != nullptr) {
        const MirrorRecord* const other = m_records.Find(holder);
        EItemKind kind = EItemKind::Node;
        const bool isLocal = other != nullptr && !other->IsAtServer();
        if (isLocal || !KindOf(*holder, &kind) || kind == EItemKind::Node)
            m_items.Destroy(holder);
        else
            static_cast<values::ValueBase*>(holder)->SetName(
                QStringLiteral("%1 (%2)").arg(name).arg(record.id));
    }
    if (guard.IsAlive()) value.SetName(name, &record);
}

}  // namespace vt
