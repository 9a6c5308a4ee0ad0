// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/observable.h>

#include <QtCore/QString>

#include <cstdint>
#include <memory>

namespace values {

class Node;

/// The state of an item of the tree.
enum TValueState : std::uint8_t {
    Valid = 0,
    GoingAway = 1,  ///< about to be destroyed: whoever observes it forgets it
    Stale = 2       ///< mirrored, and the connection is down: the content is the last one known
};

/// Anything that has a name and a place in the tree: a node or a value. Owned by its parent node, or by
/// whoever made it while it has none. Main thread.
///
/// Whoever destroys an item, and however, its observers are told first that it is going away.
class MCS_PLATFORM_EXPORT TreeItem {
  public:
    virtual ~TreeItem();
    TreeItem& operator=(const TreeItem&) = delete;

    virtual bool IsNode() const { return false; }  ///< else it is a value
    /// What observers of this item attach to. An item that only wraps another one answers with the wrapped
    /// item's observable, or null.
    virtual Observable* GetObservable() = 0;

    QString GetName() const { return m_name; }  ///< without its path
    /// "/" and the names from the root on, joined by "/". A detached item's path starts with its topmost
    /// ancestor's name; the root's is "/".
    QString GetPathName() const;
    /// Null for the root and for a detached item. An item that is going away still knows its parent.
    Node* GetParent() const { return m_parent; }
    TValueState GetState() const { return m_state; }  ///< Valid at first

    /// The sibling before or after this one, in the order in which they were added; those that are going away
    /// do not count. Null at the end and for a detached item.
    TreeItem* GetPreviousSibling() const;
    TreeItem* GetNextSibling() const;  ///< The one after.

  protected:
    explicit TreeItem(const QString& name = QString());
    TreeItem(const TreeItem& other);  ///< copies the name; the copy is detached and valid

    /// A detached copy of the item itself, without children; null for a kind of item that cannot be copied.
    virtual std::unique_ptr<TreeItem> CopyItem() const { return nullptr; }
    /// Says goodbye, once: marks the item as going away, hides it from lookups and calls NotifyGoingAway(). A
    /// class whose NotifyGoingAway() needs more than its bases calls this in its destructor.
    void SayGoodbye();
    /// Tells the observers that the item is going away.
    virtual void NotifyGoingAway() = 0;

    /// Renames the item. False, and no change, for a name with "/" in it, and for an attached item also for
    /// an empty name or one that a sibling has.
    bool Rename(const QString& name);
    void StoreState(TValueState state) { m_state = state; }

  private:
    friend class ChildList;
    friend class NameIndex;
    friend class Node;
    friend class Tree;

    QString m_name;
    Node* m_parent = nullptr;
    TreeItem* m_previous = nullptr;  ///< siblings, in the order in which they were added
    TreeItem* m_next = nullptr;
    std::uint32_t m_nameHash;
    TValueState m_state = Valid;
    bool m_isNode = false;  ///< IsNode() without the virtual call: lookups test it at every segment
};

}  // namespace values
