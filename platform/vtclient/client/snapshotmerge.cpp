// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/snapshotmerge.h>

namespace vt {

SnapshotMerge::SnapshotMerge(MirrorRecords& records, MirrorItems& items, LocalItems& locals)
    : m_records(records), m_items(items), m_locals(locals) {}

void SnapshotMerge::Begin(const values::TreeItem* existing) {
    const bool hasChildren = existing != nullptr && existing->IsNode() &&
                             static_cast<const values::Node*>(existing)->CountChildren() != 0;
    m_phase = hasChildren || !m_records.IsEmpty() ? EPhase::Receiving : EPhase::None;
    m_records.BeginSnapshot(IsUnderWay());
}

void SnapshotMerge::Finish() {
    if (!IsUnderWay()) return;
    m_records.ForEach(
        [this](const MirrorRecord& record) { return record.IsAtServer() && !m_records.IsCurrent(record); },
        [this](MirrorRecord& record) { EndLost(record); });
    m_phase = EPhase::Finishing;
    m_locals.OfferAll();
    m_phase = EPhase::None;
    m_records.EndSnapshot();
}

// What this client had asked for it asks for again. What lies below may come back with that, and waits for
// the answer where it is.
void SnapshotMerge::EndLost(MirrorRecord& record) {
    if (record.state == ERecord::Own && record.parent != nullptr) {
        m_records.Offer(record);
        if (!record.IsNode()) record.Value().SetState(values::Valid, &record);
    } else if (IsBelowLostCreation(record)) {
        m_records.Await(record);
    } else {
        m_items.Destroy(record.item);
    }
}

bool SnapshotMerge::IsBelowLostCreation(const MirrorRecord& record) const {
    for (const MirrorRecord* above = record.parent; above != nullptr; above = above->parent) {
        if (!above->IsUsed() || m_records.IsCurrent(*above)) return false;
        if (above->state == ERecord::Own || above->state == ERecord::Offered) return true;
    }
    return false;
}

}  // namespace vt
