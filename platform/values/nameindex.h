// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/namekey.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace values {

class TreeItem;

/// Finds the children of one node by name: a hash table with open addressing and linear probing, which costs
/// one probe in the usual case and keeps no tombstones. Private to the value framework.
class NameIndex {
  public:
    bool IsEmpty() const { return m_count == 0; }  ///< without any child
    /// The index must not be empty.
    TreeItem* Find(const NameKey& name) const;
    /// \a name is made of the item's own name.
    void Insert(TreeItem* item, const NameKey& name);
    /// \a item must be in the index, under the name that it still has.
    void Remove(const TreeItem* item);
    void Clear();  ///< Forgets all, and the room for them.

  private:
    /// Holds the item's name, or where a long one is, so that comparing it does not touch the item, which is
    /// rarely cached. Never lies across two cache lines.
    struct alignas(32) Slot {
        Slot() : packed{} {}
        Slot(TreeItem* theItem, const NameKey& name);
        bool Has(const NameKey& name) const;

        TreeItem* item = nullptr;
        std::uint32_t hash = 0;
        std::uint32_t form = 0;  ///< twice the name's length, and one more if it is packed
        union {
            std::array<std::uint64_t, 2> packed;
            const QChar* text;
        };
    };

    static std::uint32_t Form(const NameKey& name);
    /// Where the search for \a hash starts. Works with any number of slots.
    std::size_t Home(std::uint32_t hash) const { return std::uint64_t(hash) * m_slots.size() >> 32; }
    std::size_t After(std::size_t place) const { return place + 1 == m_slots.size() ? 0 : place + 1; }
    /// How many steps \a place is behind the home of \a hash.
    std::size_t Distance(std::size_t place, std::uint32_t hash) const;
    void Grow();
    void Place(const Slot& slot);

    std::vector<Slot> m_slots;  ///< at most three quarters full
    std::uint32_t m_count = 0;
};

inline std::uint32_t NameIndex::Form(const NameKey& name) {
    return 2 * static_cast<std::uint32_t>(name.Text().size()) + (name.IsPacked() ? 1 : 0);
}

inline bool NameIndex::Slot::Has(const NameKey& name) const {
    if (hash != name.Hash() || form != Form(name)) return false;
    // Not as arrays: those are compared by a function call.
    if (name.IsPacked()) return packed[0] == name.Packed()[0] && packed[1] == name.Packed()[1];
    return std::memcmp(text, name.Text().data(), std::size_t(name.Text().size()) * sizeof(QChar)) == 0;
}

inline TreeItem* NameIndex::Find(const NameKey& name) const {
    for (std::size_t i = Home(name.Hash());; i = After(i)) {
        const Slot& slot = m_slots[i];
        if (slot.item == nullptr) return nullptr;
        if (slot.Has(name)) return slot.item;
    }
}

}  // namespace values
