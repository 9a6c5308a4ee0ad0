// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/node.h>

#include <memory>

namespace values {

/// The process's tree of values. The application creates it, one at a time, before anything that uses it and
/// destroys it after. Owns everything in it. Main thread.
///
/// A path is a text of names separated by "/", from the root; empty segments do not count, so "/a//b/" is
/// "/a/b", "a" is "/a", and "" is "/", the root. An item that is going away is not found any more.
class MCS_PLATFORM_EXPORT Tree {
  public:
    Tree();
    ~Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// Null while there is no tree.
    static Tree* Instance() { return s_instance; }

    Node* GetRoot() { return &m_root; }  ///< never null; the path is "/"
    /// Null where nothing is. Costs one hash per segment and allocates nothing.
    TreeItem* FindItem(const QString& path) const;
    /// Null where nothing or a value is.
    Node* FindNode(const QString& path) const;

    /// Adds \a value under the node at \a parentPath, which is created with any missing ancestors; all that
    /// is new comes as one change. Takes ownership if it returns true. False, and nothing changed, if the
    /// name is empty, holds "/" or is taken, or if the path leads through a value.
    bool AddValue(const QString& parentPath, ValueBase* value);
    /// The same for any detached item, above all a subtree that was built first; takes ownership, and empties
    /// the pointer, if it returns true.
    bool AddItem(const QString& parentPath, std::unique_ptr<TreeItem>& item);
    /// The node at \a path, created with any missing ancestors; null where a value stands in the way.
    Node* ProvideNode(const QString& path);
    /// Destroys \a item with all that is below it. The root stays; null and an item that is already going
    /// away change nothing.
    void Delete(TreeItem* item);

  private:
    static Tree* s_instance;

    Node m_root;
};

}  // namespace values
