// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/localitems.h>
#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>

namespace vt {

/// A snapshot that comes where items are already, from its beginning to its end: then what it did not hold
/// goes, unless this client asks for it again, and what only this process has is offered.
class SnapshotMerge {
  public:
    SnapshotMerge(MirrorRecords& records, MirrorItems& items, LocalItems& locals);
    SnapshotMerge(const SnapshotMerge&) = delete;
    SnapshotMerge& operator=(const SnapshotMerge&) = delete;

    /// \a existing is at the mirror's local path, or null.
    void Begin(const values::TreeItem* existing);
    void Finish();
    bool IsUnderWay() const { return m_phase != EPhase::None; }
    /// The snapshot is not all here: what only this process has cannot be told from the rest.
    bool IsReceiving() const { return m_phase == EPhase::Receiving; }

  private:
    enum class EPhase { None, Receiving, Finishing };

    void EndLost(MirrorRecord& record);
    bool IsBelowLostCreation(const MirrorRecord& record) const;

    MirrorRecords& m_records;
    MirrorItems& m_items;
    LocalItems& m_locals;
    EPhase m_phase = EPhase::None;
};

}  // namespace vt
