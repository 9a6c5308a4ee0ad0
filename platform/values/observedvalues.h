// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/values/treeitem.h>

#include <tuple>

/// The tree values that a data object observes, as references to its member pointers, in the order in which
/// the object looks through them: a std::tie written once per object, and walked by all that it does with
/// them.
namespace observedvalues {

namespace detail {

inline const Observable* AddressOf(const Observable* value) {
    return value;
}

/// True if \a value is the source of the change. Forgets it if it is going away.
template <class V>
bool IsForgotten(V*& value, Observable* source, IObserver* self) {
    if (value == nullptr || AddressOf(value) != source) return false;
    if (value->GetState() == values::GoingAway) {
        value->DeleteObserver(self);
        value = nullptr;
    }
    return true;
}

template <class V>
void Detach(V*& value, IObserver* self) {
    if (value != nullptr) value->DeleteObserver(self);
    value = nullptr;
}

}  // namespace detail

/// True if \a source is one of the values.
template <class... V>
bool Contains(const std::tuple<V*&...>& members, const Observable* source) {
    if (source == nullptr) return false;
    return std::apply([&](V*&... value) { return ((detail::AddressOf(value) == source) || ...); }, members);
}

/// A change of state came from \a source: the first value that is the source, if it is going away, is
/// detached from and its pointer nulled.
template <class... V>
void ForgetIfGoingAway(const std::tuple<V*&...>& members, Observable* source, IObserver* self) {
    std::apply([&](V*&... value) { (detail::IsForgotten(value, source, self) || ...); }, members);
}

/// Detaches from every value that is still there and nulls its pointer, in order.
template <class... V>
void DetachAll(const std::tuple<V*&...>& members, IObserver* self) {
    std::apply([&](V*&... value) { (detail::Detach(value, self), ...); }, members);
}

}  // namespace observedvalues
