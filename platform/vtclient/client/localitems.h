// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/editqueue.h>
#include <platform/vtclient/client/mirroritems.h>
#include <platform/vtclient/client/mirrorrecords.h>

namespace vt {

/// Offers to the server what only this process has. What an earlier mirror has left behind is nobody's
/// creation: where a snapshot meets it, it goes.
class LocalItems {
  public:
    LocalItems(MirrorRecords& records, MirrorItems& items, EditQueue& edits);
    LocalItems(const LocalItems&) = delete;
    LocalItems& operator=(const LocalItems&) = delete;

    /// A snapshot is here: offers all that it did not hold, also what was refused before.
    void OfferAll();
    /// Offers the children of \a record that have come since it was looked through.
    void OfferChildren(MirrorRecord& record);

  private:
    void OfferAgain(MirrorRecord& record);
    void Offer(values::TreeItem* item, MirrorRecord& parent);

    MirrorRecords& m_records;
    MirrorItems& m_items;
    EditQueue& m_edits;
    bool m_isAfterSnapshot = false;  ///< what is stale was left behind
};

}  // namespace vt
