// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringView>

#include <cstdint>
#include <vector>

namespace values {

class TreeItem;

/// Finds the children of one node by name: a hash table with open addressing and linear probing, which costs
/// one probe in the usual case and keeps no tombstones. Private to the value framework.
class NameIndex {
  public:
    bool IsEmpty() const { return m_count == 0; }
    TreeItem* Find(QStringView name, std::uint32_t hash) const;
    void Insert(TreeItem* item);
    /// \a item must be in the index, under the name that it still has.
    void Remove(const TreeItem* item);
    void Clear();

  private:
    /// Holds where the item's name is, so that comparing it does not touch the item, which is rarely cached.
    struct Slot {
        TreeItem* item = nullptr;
        const QChar* name = nullptr;
        std::uint32_t length = 0;
        std::uint32_t hash = 0;
    };

    void Grow();
    void Place(const Slot& slot);

    std::vector<Slot> m_slots;  ///< a power of two, at most three quarters full
    std::uint32_t m_count = 0;
};

}  // namespace values
