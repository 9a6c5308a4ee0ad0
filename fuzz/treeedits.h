// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/script.h>

namespace values {
class TreeItem;
}

#include <functional>

/// What the program that owns a tree may do with it.
namespace treeedits {

/// Does one thing, as the script wants it, at or below the item at \a base.
void Edit(const QString& base, Script& script);
/// One of the items at and below \a base; null if there is none.
values::TreeItem* Choose(const QString& base, Script& script);
/// Calls \a visit for \a item and, parents first, for all below it.
void ForEach(values::TreeItem* item, const std::function<void(values::TreeItem&)>& visit);

}  // namespace treeedits
