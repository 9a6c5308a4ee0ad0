// SPDX-License-Identifier: Apache-2.0
#include <platform/values/node.h>

#include <platform/values/mainthread.h>
#include <platform/values/namekey.h>
#include <platform/values/valuebase.h>

namespace values {

Node::Node(const QString& name) : TreeItem(name) {
    m_isNode = true;
}

Node::~Node() {
    MCS_ASSERT_MAIN_THREAD();
    SayGoodbye();
    DestroyChildren();
}

void Node::NotifyGoingAway() {
    NotifyObservers(changecode::GoingAway);
}

// A loop, not a recursion: a path may be as deep as whoever made it liked.
void Node::DestroyChildren() {
    Node* node = this;
    for (;;) {
        TreeItem* const child = node->m_children.First();
        if (child == nullptr) {
            if (node == this) return;
            Node* const parent = node->m_parent;
            parent->m_children.Take(node).reset();
            node = parent;
        } else if (child->m_state == GoingAway) {
            // An observer of the child deletes us, its parent: the deletion under way finishes the child.
            static_cast<void>(node->m_children.Take(child).release());
        } else {
            child->SayGoodbye();
            if (child->m_isNode)
                node = static_cast<Node*>(child);
            else
                node->m_children.Take(child).reset();
        }
    }
}

std::vector<TreeItem*> Node::GetTreeItems() const {
    std::vector<TreeItem*> items;
    items.reserve(static_cast<std::size_t>(m_children.Count()));
    for (TreeItem* item = m_children.First(); item != nullptr; item = item->m_next)
        if (item->m_state != GoingAway) items.push_back(item);
    return items;
}

TreeItem* Node::GetFirstChild() const {
    TreeItem* const first = m_children.First();
    return first == nullptr || first->m_state != GoingAway ? first : first->GetNextSibling();
}

TreeItem* Node::GetLastChild() const {
    TreeItem* const last = m_children.Last();
    return last == nullptr || last->m_state != GoingAway ? last : last->GetPreviousSibling();
}

TreeItem* Node::FindChild(const QString& name) const {
    const NameKey key(name);
    return key.Text().size() == name.size() ? m_children.Find(key) : nullptr;  // no name has a slash
}

bool Node::MayAdd(const TreeItem& child, const NameKey& name) const {
    const bool hasSlash = name.Text().size() != child.m_name.size();  // where a key ends
    if (GetState() == GoingAway || child.m_name.isEmpty() || hasSlash) return false;
    if (m_children.Find(name) != nullptr) return false;
    if (!child.m_isNode || static_cast<const Node&>(child).m_children.First() == nullptr)
        return &child != this;
    for (const TreeItem* item = this; item != nullptr; item = item->m_parent)
        if (item == &child) return false;
    return true;
}

bool Node::AddChild(std::unique_ptr<TreeItem>& child) {
    MCS_ASSERT_MAIN_THREAD();
    Q_ASSERT_X(child && child->m_parent == nullptr, Q_FUNC_INFO, "a child is detached before it is added");
    const NameKey name(child->m_name);
    if (!MayAdd(*child, name)) return false;
    m_children.Append(std::move(child), this, name);
    NotifyStructure(changecode::ChildrenAdded);
    return true;
}

ValueBase* Node::CreateChild(const ValueBase& prototype, const QString& name) {
    std::unique_ptr<TreeItem> child = prototype.CopyItem();
    if (!child || !child->Rename(name)) return nullptr;
    auto* const value = static_cast<ValueBase*>(child.get());
    const ObservableGuard guard(*value);
    return AddChild(child) && guard.IsAlive() ? value : nullptr;
}

bool Node::RenameChild(TreeItem* child, const QString& name) {
    if (name == child->m_name) return true;
    const NameKey key(name);
    if (name.isEmpty() || m_children.Find(key) != nullptr || child->m_state == GoingAway) return false;
    m_children.Rename(child, name, key.Hash());
    return true;
}

void Node::ForgetChild(TreeItem* child) {
    static_cast<void>(m_children.Take(child).release());  // the child's destructor called this
    NotifyStructure(changecode::ChildrenRemoved);
}

void Node::NotifyStructure(TChangeCode code) {
    const ObservableGuard self(*this);
    NotifyObservers(code);
    if (!self.IsAlive()) return;
    for (Node* node = this; node != nullptr; node = node->m_parent) {
        const ObservableGuard guard(*node);
        node->NotifyObservers(changecode::StructureChanged);
        if (!guard.IsAlive()) return;  // an observer destroyed the node, which told the ancestors itself
    }
}

std::unique_ptr<TreeItem> Node::CopyItem() const {
    return std::make_unique<Node>(GetName());
}

Node* Node::DeepCopy() const {
    auto copy = std::make_unique<Node>(GetName());
    const Node* source = this;
    Node* target = copy.get();
    const TreeItem* item = m_children.First();
    for (;;) {
        if (item == nullptr) {
            if (source == this) return copy.release();
            item = source->m_next;
            source = source->m_parent;
            target = target->m_parent;
            continue;
        }
        std::unique_ptr<TreeItem> child = item->m_state == GoingAway ? nullptr : item->CopyItem();
        TreeItem* const added = child.get();
        if (added != nullptr) target->m_children.Append(std::move(child), target, NameKey(added->m_name));
        if (added != nullptr && item->m_isNode) {
            source = static_cast<const Node*>(item);
            target = static_cast<Node*>(added);
            item = source->m_children.First();
        } else {
            item = item->m_next;
        }
    }
}

}  // namespace values
