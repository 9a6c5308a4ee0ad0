// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>

namespace mctree {

/// Calls \a visit(item, depth) for \a top, at depth 0, and all that is below it, parents before their
/// children. Not a recursion: how deep a tree is is up to the server. The tree must stay as it is meanwhile.
template <class Function>
void Walk(values::TreeItem& top, Function&& visit) {
    int depth = 0;
    values::TreeItem* item = &top;
    while (item != nullptr) {
        visit(*item, depth);
        values::TreeItem* next = nullptr;
        if (const auto* const node = dynamic_cast<values::Node*>(item)) next = node->GetFirstChild();
        if (next != nullptr) ++depth;
        while (next == nullptr && item != &top) {
            next = item->GetNextSibling();
            if (next != nullptr) break;
            item = item->GetParent();
            --depth;
        }
        item = next;
    }
}

}  // namespace mctree
