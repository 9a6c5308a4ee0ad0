// SPDX-License-Identifier: Apache-2.0
#include <platform/values/childlist.h>

#include <platform/values/node.h>
#include <platform/values/treeitem.h>

namespace values {

namespace {

/// Up to this many children, comparing their hashes one by one is as fast as a table, and takes no memory.
constexpr std::uint32_t MaxUnindexed = 6;

}  // namespace

ChildList::~ChildList() {
    Q_ASSERT_X(m_first == nullptr, Q_FUNC_INFO, "the node destroys its children");
}

TreeItem* ChildList::FindUnindexed(const NameKey& name) const {
    for (TreeItem* item = m_first; item != nullptr; item = item->m_next)
        if (item->m_nameHash == name.Hash() && item->m_name == name.Text() && item->m_state != GoingAway)
            return item;
    return nullptr;
}

void ChildList::Append(std::unique_ptr<TreeItem> owned, Node* parent, const NameKey& name) {
    TreeItem* const item = owned.release();
    item->m_parent = parent;
    item->m_previous = m_last;
    (m_last != nullptr ? m_last->m_next : m_first) = item;
    m_last = item;
    ++m_count;
    AddToIndex(item, name);
}

void ChildList::AddToIndex(TreeItem* item, const NameKey& name) {
    if (!m_index.IsEmpty()) {
        m_index.Insert(item, name);
    } else if (m_count > MaxUnindexed) {
        for (TreeItem* child = m_first; child != nullptr; child = child->m_next)
            if (child->m_state != GoingAway) m_index.Insert(child, NameKey(child->m_name));
    }
}

std::unique_ptr<TreeItem> ChildList::Take(TreeItem* item) {
    if (item->m_state != GoingAway) Hide(item);
    (item->m_previous != nullptr ? item->m_previous->m_next : m_first) = item->m_next;
    (item->m_next != nullptr ? item->m_next->m_previous : m_last) = item->m_previous;
    item->m_previous = item->m_next = nullptr;
    item->m_parent = nullptr;
    return std::unique_ptr<TreeItem>(item);
}

void ChildList::Hide(TreeItem* item) {
    if (!m_index.IsEmpty()) m_index.Remove(item);
    if (--m_count == 0) m_index.Clear();
}

void ChildList::Rename(TreeItem* item, const QString& name, std::uint32_t hash) {
    const bool isIndexed = !m_index.IsEmpty();
    if (isIndexed) m_index.Remove(item);
    item->m_name = name;
    item->m_nameHash = hash;
    if (isIndexed) m_index.Insert(item, NameKey(item->m_name));
}

}  // namespace values
