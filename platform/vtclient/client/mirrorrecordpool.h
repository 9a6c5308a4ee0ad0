// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/mirrorrecord.h>

#include <array>
#include <memory>
#include <vector>

namespace vt {

/// Records that stay where they are, in pages, and are used again.
class MirrorRecordPool {
  public:
    MirrorRecord& Take() {
        if (m_free.empty()) Grow();
        const quint32 index = m_free.back();
        m_free.pop_back();
        MirrorRecord& record = At(index);
        record.index = index;
        ++m_used;
        return record;
    }
    void Give(MirrorRecord& record) {
        const quint32 index = record.index;
        record = MirrorRecord();
        m_free.push_back(index);
        --m_used;
    }
    quint32 End() const { return static_cast<quint32>(m_pages.size()) * PageSize; }
    MirrorRecord& At(quint32 index) { return (*m_pages[index / PageSize])[index % PageSize]; }
    bool IsEmpty() const { return m_used == 0; }

  private:
    static constexpr quint32 PageSize = 256;

    void Grow() {
        const quint32 first = End();
        m_pages.push_back(std::make_unique<std::array<MirrorRecord, PageSize>>());
        for (quint32 i = PageSize; i > 0; --i)
            m_free.push_back(first + i - 1);
    }

    std::vector<std::unique_ptr<std::array<MirrorRecord, PageSize>>> m_pages;
    std::vector<quint32> m_free;
    quint32 m_used = 0;
};

}  // namespace vt
