// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/childlist.h>
#include <platform/values/treeitem.h>

#include <memory>
#include <vector>

namespace values {

class ValueBase;

/// A named branch of the tree. Owns its children. Main thread.
///
/// Tells its observers: ChildrenAdded and ChildrenRemoved of its own children, StructureChanged of anything
/// that came or went at or below it, ChildRenamed when a child of it has another name, GoingAway before it is
/// destroyed, while its children are still there.
/// A subtree that is built detached and then added comes as one change.
class MCS_PLATFORM_EXPORT Node : public TreeItem, public Observable {
  public:
    explicit Node(const QString& name = QString());  ///< a detached one
    ~Node() override;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    bool IsNode() const override { return true; }
    Observable* GetObservable() override { return this; }

    /// The children in the order in which they were added, without those that are going away.
    std::vector<TreeItem*> GetTreeItems() const;
    /// The first of them, from which TreeItem::GetNextSibling() leads on; null without children. For walks
    /// that would rather not copy a long list.
    TreeItem* GetFirstChild() const;
    /// The last of them, from which TreeItem::GetPreviousSibling() leads back; null without children.
    TreeItem* GetLastChild() const;
    int CountChildren() const { return m_children.Count(); }  ///< but those going away
    TreeItem* FindChild(const QString& name) const;           ///< null if there is none

    /// Adds \a child and takes ownership; the pointer is then empty. False, and nothing changed, if the name
    /// is empty, holds "/" or is taken, if the node is going away, or if \a child is this node or contains
    /// it.
    bool AddChild(std::unique_ptr<TreeItem>& child);
    /// Adds a copy of \a prototype (type, content, limits, items, delivery) under \a name.
    /// \return the new child, owned by this node; null where AddChild refuses.
    ValueBase* CreateChild(const ValueBase& prototype, const QString& name);

    /// A detached copy with all that is below: names, contents, limits, items, delivery and order, no
    /// observers and no stale state. The caller owns it.
    Node* DeepCopy() const;

  protected:
    std::unique_ptr<TreeItem> CopyItem() const override;
    void NotifyGoingAway() override;

  private:
    friend class Tree;
    friend class TreeItem;

    void ForgetChild(TreeItem* child);
    void HideChild(TreeItem* child) { m_children.Hide(child); }
    bool RenameChild(TreeItem* child, const QString& name);
    bool MayAdd(const TreeItem& child, const NameKey& name) const;
    void NotifyStructure(TChangeCode code);
    void DestroyChildren();

    ChildList m_children;
};

}  // namespace values
