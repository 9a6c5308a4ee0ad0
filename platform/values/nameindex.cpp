// SPDX-License-Identifier: Apache-2.0
#include <platform/values/nameindex.h>

#include <platform/values/treeitem.h>

#include <utility>

namespace values {

TreeItem* NameIndex::Find(QStringView name, std::uint32_t hash) const {
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = m_slots[i];
        if (slot.item == nullptr) return nullptr;
        if (slot.hash == hash && QStringView(slot.name, slot.length) == name) return slot.item;
    }
}

void NameIndex::Insert(TreeItem* item) {
    if (4 * (std::size_t(m_count) + 1) > 3 * m_slots.size()) Grow();
    const QString& name = item->m_name;
    Place({item, name.constData(), static_cast<std::uint32_t>(name.size()), item->m_nameHash});
    ++m_count;
}

void NameIndex::Remove(const TreeItem* item) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t hole = item->m_nameHash & mask;
    while (m_slots[hole].item != item)
        hole = (hole + 1) & mask;
    // Close the gap: whatever follows in the run and may stand in the hole moves there.
    for (std::size_t i = (hole + 1) & mask; m_slots[i].item != nullptr; i = (i + 1) & mask) {
        const std::size_t home = m_slots[i].hash & mask;
        if (((i - home) & mask) < ((i - hole) & mask)) continue;
        m_slots[hole] = m_slots[i];
        hole = i;
    }
    m_slots[hole] = Slot();
    --m_count;
}

void NameIndex::Clear() {
    m_slots.clear();
    m_slots.shrink_to_fit();
    m_count = 0;
}

void NameIndex::Grow() {
    std::vector<Slot> old(m_slots.empty() ? 16 : 2 * m_slots.size());
    old.swap(m_slots);
    for (const Slot& slot : old)
        if (slot.item != nullptr) Place(slot);
}

void NameIndex::Place(const Slot& slot) {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t i = slot.hash & mask;
    while (m_slots[i].item != nullptr)
        i = (i + 1) & mask;
    m_slots[i] = slot;
}

}  // namespace values
