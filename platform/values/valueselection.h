// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/selitemdesc.h>
#include <platform/values/valuebase.h>

#include <memory>
#include <utility>
#include <vector>

namespace values {

/// One choice of a selection, owned by it: a text, a number and a key.
class SelectionItem {
  public:
    SelectionItem(QString name, double value, SelectionKey key)
        : m_name(std::move(name)), m_value(value), m_key(key) {}  ///< keys and texts may repeat

    QString GetName() const { return m_name; }     ///< for people
    double GetValue() const { return m_value; }    ///< of what the choice means
    SelectionKey GetKey() const { return m_key; }  ///< by which it is selected

  private:
    QString m_name;
    double m_value;
    SelectionKey m_key;
};

/// A list of choices of which one, or none, is current.
///
/// The content is the current item: changing it tells ContentChanged. Items that come and go tell ItemAdded
/// and ItemRemoved, a change of the list as a whole ItemsChanged. When the current item is deleted none is
/// current, which tells ContentChanged after ItemRemoved; deleting another item leaves the current one
/// current.
class MCS_PLATFORM_EXPORT ValueSelection : public ValueBase {
  public:
    static constexpr int NoIndex = -1;
    static constexpr SelectionKey NoKey = -1;

    ValueSelection() = default;
    ValueSelection(const ValueSelection& other);
    ~ValueSelection() override;

    /// Adds an item at the end. Keys and texts may repeat; lookups find the first.
    /// \return the item; null if an observer that heard of it removed it at once.
    SelectionItem* AddItem(const QString& text, double value, SelectionKey key,
                           IObserver* originator = nullptr);
    /// Deletes \a item. Null and an item of another selection change nothing.
    void DeleteItem(SelectionItem* item, IObserver* originator = nullptr);
    /// Replaces the list. The current item stays current if an item with its key is among \a items.
    void SetItems(const std::vector<SelectionItem>& items, IObserver* originator = nullptr);

    int Count() const { return static_cast<int>(m_items.size()); }  ///< how many choices there are
    SelectionItem* GetItem(SelectionKey key) const;                 ///< null for an unknown key
    SelectionItem* GetItemAt(int index) const;                      ///< null beyond the list

    /// Makes the first item with \a key current. An unknown key is refused with a trace.
    void Select(SelectionKey key, IObserver* originator = nullptr);
    /// Makes the item at \a index current, or none for NoIndex. Another index is refused with a trace.
    void SelectIndex(int index, IObserver* originator = nullptr);
    int GetCurrentIndex() const { return m_current; }  ///< NoIndex while none is current
    SelectionKey GetCurrentKey() const;                ///< NoKey while none is current
    QString GetCurrentText() const;                    ///< empty while none is current

  protected:
    std::unique_ptr<TreeItem> CopyItem() const override;

  private:
    bool Contains(const SelectionItem* item) const;
    int IndexOfKey(SelectionKey key) const;

    std::vector<std::unique_ptr<SelectionItem>> m_items;
    int m_current = NoIndex;
};

}  // namespace values
