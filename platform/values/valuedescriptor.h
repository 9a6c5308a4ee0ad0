// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/selitemdesc.h>

class IObserver;

namespace values {

class Node;

/// Describes a kind of selection by a fixed table of its items. Descriptors are compile-time constants.
class MCS_PLATFORM_EXPORT ValueDescriptor {
  public:
    /** Of an array that stays. */ template <int count>
    explicit constexpr ValueDescriptor(const SelItemDesc (&items)[count]) : m_items(items), m_count(count) {}

    const SelItemDesc* SelItems() const { return m_items; }  ///< CountSelItems() of them
    int CountSelItems() const { return m_count; }            ///< how many

    /// The node at \a path, created with any missing ancestors, with \a observer (may be null) attached.
    /// Null, and nothing created, without a tree or where a value stands in the way.
    static Node* CreateNodeAbsolute(const QString& path, IObserver* observer);

  private:
    const SelItemDesc* m_items;
    int m_count;
};

}  // namespace values
