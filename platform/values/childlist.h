// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/nameindex.h>

#include <QtCore/QString>

#include <cstdint>
#include <memory>

namespace values {

class Node;
class TreeItem;

/// The children of one node: owned, in the order in which they were added, found by name. Adding, removing
/// (from anywhere) and finding take constant time. Private to the value framework.
///
/// A child that is going away stays in the list, so that it is not lost, but is hidden: neither counted nor
/// found.
class ChildList {
  public:
    ChildList() = default;
    ~ChildList();
    ChildList(const ChildList&) = delete;
    ChildList& operator=(const ChildList&) = delete;

    TreeItem* First() const { return m_first; }  ///< hidden children included; follow with TreeItem::m_next
    TreeItem* Last() const { return m_last; }    ///< the same from the end; follow with TreeItem::m_previous
    int Count() const { return static_cast<int>(m_count); }  ///< without hidden ones
    TreeItem* Find(const NameKey& name) const {
        return m_index.IsEmpty() ? FindUnindexed(name) : m_index.Find(name);
    }  ///< null if there is none, or it is hidden

    /// \a name is made of the item's own name.
    void Append(std::unique_ptr<TreeItem> item, Node* parent, const NameKey& name);
    /// Takes \a item, which must be in this list, out of it and hands it over, detached.
    std::unique_ptr<TreeItem> Take(TreeItem* item);
    void Hide(TreeItem* item);                                             ///< \a item is in the list.
    void Rename(TreeItem* item, const QString& name, std::uint32_t hash);  ///< \a hash is the name's

  private:
    TreeItem* FindUnindexed(const NameKey& name) const;
    void AddToIndex(TreeItem* item, const NameKey& name);

    TreeItem* m_first = nullptr;
    TreeItem* m_last = nullptr;
    std::uint32_t m_count = 0;  ///< children that are not hidden
    NameIndex m_index;          ///< empty while there are few children
};

}  // namespace values
