// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valueselection.h>

#include <algorithm>

namespace values {

namespace {

bool operator==(const SelectionItem& a, const SelectionItem& b) {
    return a.GetKey() == b.GetKey() && a.GetValue() == b.GetValue() && a.GetName() == b.GetName();
}

}  // namespace

// Said once more, where MinGW exports them.
constexpr decltype(ValueSelection::NoIndex) ValueSelection::NoIndex;
constexpr decltype(ValueSelection::NoKey) ValueSelection::NoKey;

ValueSelection::ValueSelection(const ValueSelection& other) : ValueBase(other), m_current(other.m_current) {
    m_items.reserve(other.m_items.size());
    for (const auto& item : other.m_items)
        m_items.push_back(std::make_unique<SelectionItem>(*item));
}

ValueSelection::~ValueSelection() {
    SayGoodbye();
}

std::unique_ptr<TreeItem> ValueSelection::CopyItem() const {
    return std::make_unique<ValueSelection>(*this);
}

SelectionItem* ValueSelection::AddItem(const QString& text, double value, SelectionKey key,
                                       IObserver* originator) {
    m_items.push_back(std::make_unique<SelectionItem>(text, value, key));
    SelectionItem* const item = m_items.back().get();
    const ObservableGuard guard(*this);
    NotifyObservers(changecode::ItemAdded, originator);
    return guard.IsAlive() && Contains(item) ? item : nullptr;
}

void ValueSelection::DeleteItem(SelectionItem* item, IObserver* originator) {
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [item](const auto& i) { return i.get() == item; });
    if (found == m_items.end()) return;
    const int index = static_cast<int>(found - m_items.begin());
    m_items.erase(found);
    const bool wasCurrent = index == m_current;
    if (wasCurrent)
        m_current = NoIndex;
    else if (index < m_current)
        --m_current;
    const ObservableGuard guard(*this);
    NotifyObservers(changecode::ItemRemoved, originator);
    if (wasCurrent && guard.IsAlive()) NotifyObservers(changecode::ContentChanged, originator);
}

void ValueSelection::SetItems(const std::vector<SelectionItem>& items, IObserver* originator) {
    const bool isEqual = std::equal(items.begin(), items.end(), m_items.begin(), m_items.end(),
                                    [](const SelectionItem& a, const auto& b) { return a == *b; });
    if (IsNoChange(isEqual)) return;
    const bool hadCurrent = m_current != NoIndex;
    const SelectionKey key = GetCurrentKey();
    m_items.clear();
    m_items.reserve(items.size());
    for (const SelectionItem& item : items)
        m_items.push_back(std::make_unique<SelectionItem>(item));
    m_current = hadCurrent ? IndexOfKey(key) : NoIndex;
    const bool lostCurrent = hadCurrent && m_current == NoIndex;
    const ObservableGuard guard(*this);
    NotifyObservers(changecode::ItemsChanged, originator);
    if (lostCurrent && guard.IsAlive()) NotifyObservers(changecode::ContentChanged, originator);
}

bool ValueSelection::Contains(const SelectionItem* item) const {
    return std::any_of(m_items.begin(), m_items.end(), [item](const auto& i) { return i.get() == item; });
}

int ValueSelection::IndexOfKey(SelectionKey key) const {
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [key](const auto& item) { return item->GetKey() == key; });
    return found == m_items.end() ? NoIndex : static_cast<int>(found - m_items.begin());
}

SelectionItem* ValueSelection::GetItem(SelectionKey key) const {
    return GetItemAt(IndexOfKey(key));
}

SelectionItem* ValueSelection::GetItemAt(int index) const {
    return index >= 0 && index < Count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

void ValueSelection::Select(SelectionKey key, IObserver* originator) {
    const int index = IndexOfKey(key);
    if (index == NoIndex) return TraceRefusal("selecting an unknown key");
    SelectIndex(index, originator);
}

void ValueSelection::SelectIndex(int index, IObserver* originator) {
    if (index != NoIndex && GetItemAt(index) == nullptr)
        return TraceRefusal("selecting an index beyond the list");
    if (IsNoChange(index == m_current)) return;
    m_current = index;
    NotifyObservers(changecode::ContentChanged, originator);
}

SelectionKey ValueSelection::GetCurrentKey() const {
    const SelectionItem* const item = GetItemAt(m_current);
    return item != nullptr ? item->GetKey() : NoKey;
}

QString ValueSelection::GetCurrentText() const {
    const SelectionItem* const item = GetItemAt(m_current);
    return item != nullptr ? item->GetName() : QString();
}

void SelItemDesc::AddItems(const SelItemDesc* items, int count, ValueSelection* selection) {
    std::vector<SelectionItem> all;
    const int had = selection->Count();
    all.reserve(static_cast<std::size_t>(had) + static_cast<std::size_t>(count));
    for (int i = 0; i < had; ++i)
        all.push_back(*selection->GetItemAt(i));
    for (int i = 0; i < count; ++i) {
        const SelectionItem item(items[i].String(), items[i].Value(), items[i].Key());
        const auto end = all.begin() + had;
        const auto same =
            std::find_if(all.begin(), end, [&](const auto& a) { return a.GetKey() == item.GetKey(); });
        if (same != end)
            *same = item;
        else
            all.push_back(item);
    }
    selection->SetItems(all);
}

}  // namespace values
