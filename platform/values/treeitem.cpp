// SPDX-License-Identifier: Apache-2.0
#include <platform/values/treeitem.h>

#include <platform/values/namekey.h>
#include <platform/values/node.h>

#include <algorithm>

namespace values {

TreeItem::TreeItem(const QString& name) : m_name(name), m_nameHash(NameKey(m_name).Hash()) {}

TreeItem::TreeItem(const TreeItem& other) : m_name(other.m_name), m_nameHash(other.m_nameHash) {}

TreeItem::~TreeItem() {
    if (m_parent != nullptr) m_parent->ForgetChild(this);
}

QString TreeItem::GetPathName() const {
    if (m_parent == nullptr) return m_name.isEmpty() ? QStringLiteral("/") : m_name;
    int length = m_name.size();
    for (const TreeItem* item = m_parent; item != nullptr; item = item->m_parent)
        length += item->m_name.size() + 1;
    QString path(length, Qt::Uninitialized);
    QChar* end = path.data() + length;
    for (const TreeItem* item = this; item != nullptr; item = item->m_parent) {
        end = std::copy_backward(item->m_name.cbegin(), item->m_name.cend(), end);
        if (item->m_parent != nullptr) *--end = QLatin1Char('/');
    }
    return path;
}

TreeItem* TreeItem::GetPreviousSibling() const {
    TreeItem* item = m_previous;
    while (item != nullptr && item->m_state == GoingAway)
        item = item->m_previous;
    return item;
}

TreeItem* TreeItem::GetNextSibling() const {
    TreeItem* item = m_next;
    while (item != nullptr && item->m_state == GoingAway)
        item = item->m_next;
    return item;
}

bool TreeItem::Rename(const QString& name) {
    if (name.contains(QLatin1Char('/'))) return false;
    if (m_parent != nullptr) return m_parent->RenameChild(this, name);
    m_name = name;
    m_nameHash = NameKey(name).Hash();
    return true;
}

void TreeItem::SayGoodbye() {
    if (m_state == GoingAway) return;
    if (m_parent != nullptr) m_parent->HideChild(this);
    m_state = GoingAway;
    NotifyGoingAway();
}

}  // namespace values
