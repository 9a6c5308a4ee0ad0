// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/value.h>
#include <platform/values/valuelist.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

#include <type_traits>

namespace values {

namespace visitdetail {

template <class Type, class Item, class Visitor>
bool VisitAs(Item& item, Visitor& visitor) {
    using Real = std::conditional_t<std::is_const_v<Item>, const Type, Type>;
    auto* const real = dynamic_cast<Real*>(&item);
    if (real != nullptr) visitor(*real);
    return real != nullptr;
}

template <class Item, class Visitor, class... Types>
bool VisitAny(Item& item, Visitor& visitor) {
    return (VisitAs<Types>(item, visitor) || ...);
}

}  // namespace visitdetail

/// Calls the overload of \a visitor for what \a item is: a node or one of the types of value. False, and
/// nothing called, if it is none of them. \a Item is TreeItem, const or not.
template <class Item, class Visitor>
bool Visit(Item& item, Visitor&& visitor) {
    return visitdetail::VisitAny<Item, Visitor, Node, Value<bool>, Value<int>, Value<QString>,
                                 ValueNumeric<int>, ValueNumeric<double>, ValueSelection, ValueList<double>>(
        item, visitor);
}

/// Whether \a item is of the Type.
template <class Type>
bool Is(const TreeItem& item) {
    return dynamic_cast<const Type*>(&item) != nullptr;
}

/// Makes one visitor of several function objects.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

}  // namespace values
