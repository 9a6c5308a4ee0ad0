// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace vt {

/// A table from numbers that only ever grow to entries that come and go: constant time, nothing moves, and
/// pages without an entry in use take no memory. T is default-constructed and tells by IsUsed() whether it is
/// an entry.
template <class T>
class PagedTable {
  public:
    static constexpr quint32 PageSize = 256;

    /// The entry \a number; null if its page has never had one or has none any more.
    T* Find(quint32 number) {
        const quint32 page = number / PageSize;
        if (page >= m_pages.size() || !m_pages[page]) return nullptr;
        return &m_pages[page]->entries[number % PageSize];
    }
    /// The entry \a number, its page made where missing.
    T& Provide(quint32 number) {
        const quint32 page = number / PageSize;
        if (page >= m_pages.size()) m_pages.resize(page + 1);
        if (!m_pages[page]) m_pages[page] = std::make_unique<Page>();
        return m_pages[page]->entries[number % PageSize];
    }
    /// Counts entry \a number as in use, or not any more; the page of the last one goes, unless it is still
    /// being filled.
    void Retain(quint32 number) { ++m_pages[number / PageSize]->used; }
    void Release(quint32 number) {
        const quint32 page = number / PageSize;
        if (--m_pages[page]->used == 0 && page + 1 < m_pages.size()) m_pages[page].reset();
    }
    void Clear() { m_pages.clear(); }

  private:
    struct Page {
        std::array<T, PageSize> entries{};
        quint32 used = 0;
    };

    std::vector<std::unique_ptr<Page>> m_pages;
};

}  // namespace vt
