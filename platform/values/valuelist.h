// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/valuebase.h>

#include <vector>

namespace values {

/// A list of numbers. Every change tells ItemsChanged; one that leaves the list as it is tells nothing,
/// unless every change is delivered. NaN is refused. SetItems replaces the whole list as one change, where
/// Clear and Add would show observers every step.
template <class T>
class ValueList : public ValueBase {
  public:
    ValueList() = default;
    ValueList(const ValueList& other) = default;
    ~ValueList() override { SayGoodbye(); }

    int Count() const { return static_cast<int>(m_items.size()); }  ///< how many items
    /// The item at \a index, 0 beyond the list.
    T GetItem(int index) const;
    const std::vector<T>& GetItems() const { return m_items; }  ///< in their order
    void Clear(IObserver* originator = nullptr) { SetItems({}, originator); }
    void Add(T item, IObserver* originator = nullptr);                     ///< at the end
    void SetItems(std::vector<T> items, IObserver* originator = nullptr);  ///< none, if one is NaN

  protected:
    std::unique_ptr<TreeItem> CopyItem() const override { return std::make_unique<ValueList>(*this); }

  private:
    std::vector<T> m_items;
};

MCS_PLATFORM_DECLARE_INSTANCE(ValueList<double>);

}  // namespace values
