// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

#include <memory>
#include <new>
#include <type_traits>

/// Finding, creating and providing values by path: one template each for the six types of value that data
/// objects are made of. Another type does not compile.
namespace values {

/// How a type of value is initialised.
enum class EValueKind { Plain, Numeric, Selection };

/// The types that can be accessed by path, and the kind of each.
template <class V>
struct ValueTraits;
// clang-format off
template <> struct ValueTraits<Value<bool>>          { static constexpr EValueKind Kind = EValueKind::Plain; };
template <> struct ValueTraits<Value<int>>           { static constexpr EValueKind Kind = EValueKind::Plain; };
template <> struct ValueTraits<Value<QString>>       { static constexpr EValueKind Kind = EValueKind::Plain; };
template <> struct ValueTraits<ValueNumeric<int>>    { static constexpr EValueKind Kind = EValueKind::Numeric; };
template <> struct ValueTraits<ValueNumeric<double>> { static constexpr EValueKind Kind = EValueKind::Numeric; };
template <> struct ValueTraits<ValueSelection>       { static constexpr EValueKind Kind = EValueKind::Selection; };
// clang-format on

namespace detail {

/// Enables an overload for the types of one kind only.
template <class V, EValueKind kind>
using EnableForKind = std::enable_if_t<ValueTraits<V>::Kind == kind, bool>;

/// Gives \a value the name at the end of \a path and adds it to the tree. Where the tree refuses it, that is
/// traced, and the value is left to the caller. False if an observer destroyed the value at once.
MCS_PLATFORM_EXPORT bool AddAtPath(const QString& path, ValueBase* value);

}  // namespace detail

/// The value of type V at \a path with \a observer (may be null) attached, which is first detached from
/// \a oldValue if both are given. Null without a tree, and where nothing or an item of another type is.
template <class V>
V* FindValue(const QString& path, V* oldValue, IObserver* observer) {
    static_assert(sizeof(ValueTraits<V>) != 0, "not a type of value that is accessed by path");
    if (oldValue != nullptr && observer != nullptr) oldValue->DeleteObserver(observer);
    Tree* const tree = Tree::Instance();
    V* const value = tree != nullptr ? dynamic_cast<V*>(tree->FindItem(path)) : nullptr;
    if (value != nullptr) value->AddObserver(observer);
    return value;
}

/// The value of type V at \a path, created where absent, with \a observer (may be null) attached. Where an
/// item of another type holds the name, or the name is empty, the new value works all the same but is not in
/// the tree and belongs to nobody (fixed: leaked-value), which is traced. Needs a tree; null if memory runs
/// out.
template <class V>
V* CreateValue(const QString& path, IObserver* observer) {
    if (V* const found = FindValue<V>(path, nullptr, observer)) return found;
    V* const value = new (std::nothrow) V();
    if (value == nullptr || !detail::AddAtPath(path, value)) return nullptr;
    value->AddObserver(observer);
    return value;
}

namespace detail {

/// Finds or creates the value; \a initialise runs on one that is new, and on any if \a overwrite is set.
template <class V, class Initialise>
V* Provide(const QString& path, bool overwrite, IObserver* observer, Initialise initialise) {
    V* value = FindValue<V>(path, nullptr, observer);
    const bool isNew = value == nullptr;
    if (isNew) value = CreateValue<V>(path, observer);
    if (value == nullptr || !(isNew || overwrite)) return value;
    const ObservableGuard guard(*value);
    initialise(*value, guard);
    return guard.IsAlive() ? value : nullptr;
}

}  // namespace detail

/// Finds or creates a value that has no initial content: a new one keeps the type's own.
template <class V>
V* ProvideValue(const QString& path, IObserver* observer) {
    return detail::Provide<V>(path, false, observer, [](V&, const ObservableGuard&) {});
}

/// Finds or creates a plain value; a new one, or any if \a overwrite is set, gets \a defaultContent.
template <class V, class T, detail::EnableForKind<V, EValueKind::Plain> = true>
V* ProvideValue(const QString& path, const T& defaultContent, bool overwrite, IObserver* observer) {
    return detail::Provide<V>(path, overwrite, observer, [&](V& value, const ObservableGuard&) {
        value.SetValue(defaultContent, nullptr);
    });
}

/// Finds or creates a number; a new one, or any if \a overwrite is set, gets the limits, then the content.
template <class V, class T, detail::EnableForKind<V, EValueKind::Numeric> = true>
V* ProvideValue(const QString& path, const T& defaultContent, const T& minimum, const T& maximum,
                bool overwrite, IObserver* observer) {
    return detail::Provide<V>(path, overwrite, observer, [&](V& value, const ObservableGuard& guard) {
        value.SetMin(minimum, nullptr);
        if (guard.IsAlive()) value.SetMax(maximum, nullptr);
        if (guard.IsAlive()) value.SetValue(defaultContent, nullptr);
    });
}

/// Finds or creates a selection; a new one, or any if \a overwrite is set, gets the items. The default index
/// is not applied (fixed: index-not-applied): nothing is selected, the owner selects later.
template <class V, detail::EnableForKind<V, EValueKind::Selection> = true>
V* ProvideValue(const QString& path, [[maybe_unused]] int defaultIndex, const SelItemDesc* items,
                int itemCount, bool overwrite, IObserver* observer) {
    return detail::Provide<V>(path, overwrite, observer, [&](V& value, const ObservableGuard&) {
        SelItemDesc::AddItems(items, itemCount, &value);
    });
}

/// Tells \a observer of \a item as if all of it had just changed: state, description, items (of a selection)
/// and content, in this order. So a display fills at once. Null arguments, and an item without an observable,
/// do nothing. A call that destroys the item ends it, and so does one after which \a observer does not
/// observe the item any more, if it did.
MCS_PLATFORM_EXPORT void NotifyInitially(TreeItem* item, IObserver* observer);

}  // namespace values
