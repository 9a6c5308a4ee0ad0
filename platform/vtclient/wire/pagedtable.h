// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace vt {

/// A table from numbers that mostly grow to entries that come and go: constant time, nothing moves. It takes
/// room for the pages that have entries in use and no other, so that a number costs the same whatever it is:
/// it may be the peer's. T is default-constructed and tells by IsUsed() whether it is an entry.
template <class T>
class PagedTable {
  public:
    static constexpr quint32 PageSize = 64;

    PagedTable() = default;
    PagedTable(const PagedTable&) = delete;
    PagedTable& operator=(const PagedTable&) = delete;

    /// The entry \a number; null if its page has never had one or has none any more.
    T* Find(quint32 number) {
        Page* const page = FindPage(number / PageSize);
        return page != nullptr ? &page->entries[number % PageSize] : nullptr;
    }
    /// The entry \a number, its page made where missing.
    T& Provide(quint32 number) {
        const quint32 index = number / PageSize;
        Page* page = FindPage(index);
        if (page == nullptr) {
            page = (m_pages[index] = std::make_unique<Page>()).get();
            m_highest = std::max(m_highest, index);
        }
        return page->entries[number % PageSize];
    }
    /// Counts entry \a number as in use, or not any more; the page of the last one goes, unless it is still
    /// being filled.
    void Retain(quint32 number) { ++FindPage(number / PageSize)->used; }
    void Release(quint32 number) {
        const quint32 index = number / PageSize;
        if (--FindPage(index)->used != 0 || index == m_highest) return;
        m_last = nullptr;
        m_pages.erase(index);
    }
    /// Calls \a visit for every entry in use, in no particular order; it must not change the table.
    template <class Visit>
    void ForEach(const Visit& visit) {
        for (auto& page : m_pages)
            for (T& entry : page.second->entries)
                if (entry.IsUsed()) visit(entry);
    }
    void Clear() {
        m_last = nullptr;
        m_highest = 0;
        m_pages.clear();
    }

  private:
    struct Page {
        std::array<T, PageSize> entries{};
        quint32 used = 0;
    };

    // Numbers that are asked for one after the other lie close together.
    Page* FindPage(quint32 index) {
        if (m_last != nullptr && m_lastIndex == index) return m_last;
        const auto found = m_pages.find(index);
        if (found == m_pages.end()) return nullptr;
        m_lastIndex = index;
        return m_last = found->second.get();
    }

    std::unordered_map<quint32, std::unique_ptr<Page>> m_pages;
    quint32 m_highest = 0;
    Page* m_last = nullptr;
    quint32 m_lastIndex = 0;
};

}  // namespace vt
