// SPDX-License-Identifier: Apache-2.0
#include <platform/values/nameindex.h>

#include <platform/values/treeitem.h>

#include <algorithm>

namespace values {

namespace {

constexpr std::size_t FewestSlots = 16;

}  // namespace

NameIndex::Slot::Slot(TreeItem* theItem, const NameKey& name)
    : item(theItem), hash(name.Hash()), form(Form(name)), packed{} {
    if (name.IsPacked())
        packed = name.Packed();
    else
        text = name.Text().data();
}

void NameIndex::Insert(TreeItem* item, const NameKey& name) {
    if (4 * (std::size_t(m_count) + 1) > 3 * m_slots.size()) Grow();
    Place(Slot(item, name));
    ++m_count;
}

void NameIndex::Remove(const TreeItem* item) {
    std::size_t hole = Home(item->m_nameHash);
    while (m_slots[hole].item != item)
        hole = After(hole);
    // Close the gap: whatever follows in the run and may stand in the hole moves there.
    for (std::size_t i = After(hole); m_slots[i].item != nullptr; i = After(i)) {
        const std::size_t back = i >= hole ? i - hole : i + m_slots.size() - hole;
        if (Distance(i, m_slots[i].hash) < back) continue;
        m_slots[hole] = m_slots[i];
        hole = i;
    }
    m_slots[hole] = Slot();
    --m_count;
}

std::size_t NameIndex::Distance(std::size_t place, std::uint32_t hash) const {
    const std::size_t home = Home(hash);
    return place >= home ? place - home : place + m_slots.size() - home;
}

void NameIndex::Clear() {
    m_slots.clear();
    m_slots.shrink_to_fit();
    m_count = 0;
}

// By half, not to the double: slots are large, and more of them would be empty.
void NameIndex::Grow() {
    std::vector<Slot> old(std::max(FewestSlots, m_slots.size() + m_slots.size() / 2));
    old.swap(m_slots);
    for (const Slot& slot : old)
        if (slot.item != nullptr) Place(slot);
}

void NameIndex::Place(const Slot& slot) {
    std::size_t i = Home(slot.hash);
    while (m_slots[i].item != nullptr)
        i = After(i);
    m_slots[i] = slot;
}

}  // namespace values
