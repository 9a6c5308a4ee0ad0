// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/mirrorrecords.h>

#include <platform/vtclient/wire/treepath.h>

#include <QtCore/QStringList>

#include <utility>

namespace vt {

MirrorRecords::MirrorRecords(TreeMirror& mirror, QString remotePath)
    : m_mirror(mirror), m_remotePath(std::move(remotePath)) {}

MirrorRecord* MirrorRecords::Find(const values::TreeItem* item) const {
    const auto found = m_byItem.find(item);
    return found != m_byItem.end() ? found->second : nullptr;
}

QString MirrorRecords::PathOf(const MirrorRecord& record) const {
    if (record.parent == nullptr) return m_remotePath;
    QStringList names(record.item->GetName());
    for (const MirrorRecord* above = record.parent; above->parent != nullptr; above = above->parent)
        names.prepend(above->item->GetName());
    return ChildPath(m_remotePath, names.join(QLatin1Char('/')));
}

void MirrorRecords::BeginSnapshot(bool isIndexed) {
    EndSnapshot();
    ++m_generation;
    m_numbers.Clear();
    m_isIndexed = isIndexed;
    if (isIndexed)
        ForEach([](const MirrorRecord& record) { return record.IsAtServer(); },
                [this](MirrorRecord& record) { m_byItem[record.item] = &record; });
}

void MirrorRecords::EndSnapshot() {
    if (!std::exchange(m_isIndexed, false)) return;
    for (auto entry = m_byItem.begin(); entry != m_byItem.end();)
        entry = entry->second->IsAtServer() ? m_byItem.erase(entry) : std::next(entry);
}

MirrorRecord& MirrorRecords::Make(values::TreeItem* item, EItemKind kind, MirrorRecord* parent,
                                  ERecord state) {
    Q_ASSERT(state == ERecord::Known || state == ERecord::Offered || state == ERecord::Refused);
    MirrorRecord& record = m_pool.Take();
    record.mirror = &m_mirror;
    record.item = item;
    record.kind = kind;
    record.parent = parent;
    record.state = state;
    if (state != ERecord::Known) m_byItem[item] = &record;
    item->GetObservable()->AddObserver(&record);
    return record;
}

void MirrorRecords::Arrive(MirrorRecord& record, MirrorRecord* parent, quint32 id) {
    Q_ASSERT(record.IsUsed() && (parent == nullptr) == (id == 0));
    if (record.state == ERecord::Awaited) --m_awaited;
    if (!record.IsAtServer()) {
        record.state = record.state == ERecord::Offered ? ERecord::Own : ERecord::Known;
        if (!m_isIndexed) m_byItem.erase(record.item);
    }
    if (m_isIndexed) m_byItem[record.item] = &record;
    record.parent = parent;
    record.pathLength =
        parent != nullptr ? parent->pathLength + 1 + record.item->GetName().size() : m_remotePath.size();
    record.id = id;
    record.generation = m_generation;
    Numbered& numbered = m_numbers.Provide(id);
    m_numbers.Retain(id);
    numbered.record = &record;
    numbered.isKnown = true;
    if (parent == nullptr) m_root = &record;
}

void MirrorRecords::Offer(MirrorRecord& record) {
    Q_ASSERT(record.state == ERecord::Own || record.state == ERecord::Refused);
    LeaveServer(record, ERecord::Offered);
}

void MirrorRecords::Await(MirrorRecord& record) {
    Q_ASSERT(record.state == ERecord::Known);
    LeaveServer(record, ERecord::Awaited);
    ++m_awaited;
}

void MirrorRecords::Refuse(MirrorRecord& record) {
    Q_ASSERT(record.state == ERecord::Offered);
    record.state = ERecord::Refused;
}

void MirrorRecords::LeaveServer(MirrorRecord& record, ERecord state) {
    record.state = state;
    m_byItem[record.item] = &record;
}

void MirrorRecords::Forget(MirrorRecord& record, bool isGoneAtServer) {
    if (record.parent != nullptr && record.parent->lastChild == record.item)
        record.parent->lastChild = record.item->GetPreviousSibling();
    if (!m_byItem.empty()) m_byItem.erase(record.item);
    if (record.state == ERecord::Awaited) --m_awaited;
    if (record.IsAtServer() && IsCurrent(record)) {
        Numbered* const numbered = m_numbers.Find(record.id);
        if (numbered != nullptr && numbered->record == &record) {
            numbered->record = nullptr;
            numbered->isKnown = !isGoneAtServer;
            if (isGoneAtServer) m_numbers.Release(record.id);
        }
    }
    if (&record == m_root) m_root = nullptr;
    m_pool.Give(record);
}

void MirrorRecords::NoteUnseen(quint32 id) {
    Numbered& numbered = m_numbers.Provide(id);
    m_numbers.Retain(id);
    numbered.isKnown = true;
}

void MirrorRecords::DropUnseen(quint32 id) {
    m_numbers.Find(id)->isKnown = false;
    m_numbers.Release(id);
}

}  // namespace vt
