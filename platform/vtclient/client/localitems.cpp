// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/localitems.h>

#include <platform/vtclient/wire/itemkinds.h>

#include <QtCore/QScopedValueRollback>

namespace vt {

namespace {

bool IsLeftOver(const values::TreeItem& item) {
    if (!item.IsNode()) return item.GetState() == values::Stale;
    const values::TreeItem* child = static_cast<const values::Node&>(item).GetFirstChild();
    if (child == nullptr) return false;
    for (; child != nullptr; child = child->GetNextSibling())
        if (!IsLeftOver(*child)) return false;
    return true;
}

}  // namespace

LocalItems::LocalItems(MirrorRecords& records, MirrorItems& items, EditQueue& edits)
    : m_records(records), m_items(items), m_edits(edits) {}

void LocalItems::OfferAll() {
    const QScopedValueRollback<bool> afterSnapshot(m_isAfterSnapshot, true);
    m_records.ForEach([](const MirrorRecord& /*record*/) { return true; },
                      [this](MirrorRecord& record) { OfferAgain(record); });
}

// Of the nodes that this client made before the server hears again who wants them.
void LocalItems::OfferAgain(MirrorRecord& record) {
    if (record.state == ERecord::Refused) m_records.Offer(record);
    const bool isOwnNode = record.state == ERecord::Own && record.IsNode();
    if (record.state == ERecord::Offered || isOwnNode) m_edits.Queue(record);
    if (!record.IsNode() || !record.IsAtServer()) return;
    record.lastChild = nullptr;
    OfferChildren(record);
}

void LocalItems::OfferChildren(MirrorRecord& record) {
    const RecordGuard guard(record);
    const auto next = [&record] {
        return record.lastChild != nullptr ? record.lastChild->GetNextSibling()
                                           : record.Node().GetFirstChild();
    };
    for (values::TreeItem* child = next(); child != nullptr; child = next()) {
        const bool isUnknown = !m_items.IsAttaching(child) && m_records.Find(child) == nullptr;
        if (isUnknown && m_isAfterSnapshot && IsLeftOver(*child)) {
            m_items.Destroy(child);
            if (!guard.IsAlive()) return;
        } else {
            record.lastChild = child;
            if (isUnknown) Offer(child, record);
        }
    }
}

void LocalItems::Offer(values::TreeItem* item, MirrorRecord& parent) {
    EItemKind kind = EItemKind::Node;
    if (!KindOf(*item, &kind)) return;
    const bool isBelowRefused = parent.state == ERecord::Refused;
    MirrorRecord& record =
        m_records.Make(item, kind, &parent, isBelowRefused ? ERecord::Refused : ERecord::Offered);
    if (!record.IsNode()) record.isOccurring = record.Value().GetDelivery() == values::EDelivery::EveryChange;
    if (!isBelowRefused) m_edits.Queue(record);
    if (record.IsNode()) OfferChildren(record);
}

}  // namespace vt
