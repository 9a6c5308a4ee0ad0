// SPDX-License-Identifier: Apache-2.0
#include <platform/values/value.h>

#include <algorithm>
#include <utility>

namespace values {

template <class T>
ValueNumeric<T>::ValueNumeric(T content, T minimum, T maximum) {
    SetMin(minimum);
    SetMax(maximum);
    SetValue(content);
}

template <class T>
void ValueNumeric<T>::SetMin(T minimum, IObserver* originator) {
    if (IsNan(minimum)) return TraceRefusal("minimum NaN");
    SetLimits(minimum, std::max(minimum, m_maximum), originator);
}

template <class T>
void ValueNumeric<T>::SetMax(T maximum, IObserver* originator) {
    if (IsNan(maximum)) return TraceRefusal("maximum NaN");
    SetLimits(std::min(m_minimum, maximum), maximum, originator);
}

template <class T>
void ValueNumeric<T>::SetLimits(T minimum, T maximum, IObserver* originator) {
    if (minimum == m_minimum && maximum == m_maximum) return;
    m_minimum = minimum;
    m_maximum = maximum;
    const T content = Clamped(m_content);
    const bool hasMoved = content != m_content;
    m_content = content;
    const ObservableGuard guard(*this);
    NotifyObservers(changecode::DescriptionChanged, originator);
    if (hasMoved && guard.IsAlive()) NotifyObservers(changecode::ContentChanged, originator);
}

template <class T>
T ValueList<T>::GetItem(int index) const {
    return index >= 0 && index < Count() ? m_items[static_cast<std::size_t>(index)] : T();
}

template <class T>
void ValueList<T>::Add(T item, IObserver* originator) {
    if (item != item) return TraceRefusal("item NaN");
    m_items.push_back(item);
    NotifyObservers(changecode::ItemsChanged, originator);
}

template <class T>
void ValueList<T>::SetItems(std::vector<T> items, IObserver* originator) {
    const bool hasNan = std::any_of(items.begin(), items.end(), [](T item) { return item != item; });
    if (hasNan) return TraceRefusal("item NaN");
    if (IsNoChange(items == m_items)) return;
    m_items = std::move(items);
    NotifyObservers(changecode::ItemsChanged, originator);
}

template class MCS_PLATFORM_DEFINE_INSTANCE Value<bool>;
template class MCS_PLATFORM_DEFINE_INSTANCE Value<int>;
template class MCS_PLATFORM_DEFINE_INSTANCE Value<QString>;
template class MCS_PLATFORM_DEFINE_INSTANCE ValueNumeric<int>;
template class MCS_PLATFORM_DEFINE_INSTANCE ValueNumeric<double>;
template class MCS_PLATFORM_DEFINE_INSTANCE ValueList<double>;

}  // namespace values
