// SPDX-License-Identifier: Apache-2.0
#include <platform/values/tree.h>

#include <platform/app/trace.h>
#include <platform/values/mainthread.h>
#include <platform/values/paths/pathsegments.h>
#include <platform/values/valuebase.h>

#include <vector>

namespace values {

Tree* Tree::s_instance = nullptr;

Tree::Tree() {
    MCS_ASSERT_MAIN_THREAD();
    Q_ASSERT_X(s_instance == nullptr, Q_FUNC_INFO, "one tree at a time");
    s_instance = this;
}

Tree::~Tree() {
    s_instance = nullptr;
}

TreeItem* Tree::FindItem(const QString& path) const {
    const TreeItem* item = &m_root;
    PathSegments segments(path);
    while (segments.Next()) {
        if (!item->m_isNode) return nullptr;
        item = static_cast<const Node*>(item)->m_children.Find(segments.Take());
        if (item == nullptr) return nullptr;
    }
    return const_cast<TreeItem*>(item);
}

Node* Tree::FindNode(const QString& path) const {
    TreeItem* const item = FindItem(path);
    return item != nullptr && item->m_isNode ? static_cast<Node*>(item) : nullptr;
}

bool Tree::AddValue(const QString& parentPath, ValueBase* value) {
    std::unique_ptr<TreeItem> item(value);
    const bool isAdded = AddItem(parentPath, item);
    static_cast<void>(item.release());  // the tree refused it: the caller still owns it
    return isAdded;
}

bool Tree::AddItem(const QString& parentPath, std::unique_ptr<TreeItem>& item) {
    MCS_ASSERT_MAIN_THREAD();
    if (m_root.m_state == GoingAway) return false;
    // As far as the path exists, then the names that are missing.
    Node* parent = &m_root;
    std::vector<QStringView> missing;
    PathSegments segments(parentPath);
    while (segments.Next()) {
        const NameKey name = segments.Take();
        TreeItem* const child = missing.empty() ? parent->m_children.Find(name) : nullptr;
        if (child == nullptr) {
            missing.push_back(name.Text());
        } else if (child->m_isNode) {
            parent = static_cast<Node*>(child);
        } else {
            return false;
        }
    }
    // From the bottom up, so that all that is new is attached as one whole.
    std::unique_ptr<Node> top;
    for (auto name = missing.rbegin(); name != missing.rend(); ++name) {
        auto node = std::make_unique<Node>(name->toString());
        std::unique_ptr<TreeItem> below = top ? std::unique_ptr<TreeItem>(std::move(top)) : std::move(item);
        const bool isAdded = node->AddChild(below);
        if (!isAdded) {
            item = std::move(below);  // only the item itself can be refused, and it is the first
            return false;
        }
        top = std::move(node);
    }
    if (!top) return parent->AddChild(item);
    std::unique_ptr<TreeItem> subtree = std::move(top);
    return parent->AddChild(subtree);
}

Node* Tree::ProvideNode(const QString& path) {
    if (TreeItem* const item = FindItem(path)) return item->m_isNode ? static_cast<Node*>(item) : nullptr;
    int end = path.size();
    while (path.at(end - 1) == QLatin1Char('/'))
        --end;
    const int slash = path.lastIndexOf(QLatin1Char('/'), end - 1);
    std::unique_ptr<TreeItem> node = std::make_unique<Node>(path.mid(slash + 1, end - slash - 1));
    if (!AddItem(path.left(slash + 1), node)) return nullptr;
    return FindNode(path);  // whoever heard of the new node may have deleted it
}

void Tree::Delete(TreeItem* item) {
    MCS_ASSERT_MAIN_THREAD();
    if (item == nullptr || item->m_state == GoingAway) return;
    if (item == &m_root) {
        MCS_TRACE(QStringLiteral("The root of the tree cannot be deleted"));
        return;
    }
    delete item;  // its parent lets go of it and tells of it
}

}  // namespace values
