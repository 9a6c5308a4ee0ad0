// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

namespace values {
class Node;
class TreeItem;
}  // namespace values

/// Operations on items of the value tree. Never instantiated. Main thread.
class MCS_COMMON_EXPORT TreeTools {
  public:
    /// A detached copy of \a source with all that is below it, owned by the caller; null for null.
    static values::Node* DeepCopyOf(const values::Node* source);
    /// Traces path and address of \a item and of all that is below it, as run-time traces.
    static void DebugPrintTreeItemAddr(values::TreeItem* item);

  private:
    TreeTools() = default;
    ~TreeTools() = default;
};
