// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/treeitem.h>
#include <platform/vtclient/wire/content.h>

#include <array>
#include <memory>
#include <vector>

namespace vt {

class TreeMirror;

/// What a mirror knows of one local item. Hears of the item's changes and passes them on to its mirror.
class MirrorRecord final : public IObserver {
  public:
    MirrorRecord() = default;
    bool IsUsed() const { return item != nullptr; }
    void Update(Observable* source, TChangeCode code) override;

    TreeMirror* mirror = nullptr;
    values::TreeItem* item = nullptr;  ///< null: not in use
    MirrorRecord* parent = nullptr;
    values::TreeItem* lastChild = nullptr;  ///< of a node: the last child that has a record
    Content server;                         ///< the server's content, whatever is shown
    int pathLength = 0;                     ///< of the path at the server
    quint32 index = 0;                      ///< in the pool
    quint32 id = 0;                         ///< the server's number, unless isLocal
    quint32 generation = 0;                 ///< of the snapshot that last held it
    quint32 series = 0;                     ///< in which it was made, detached; 0: in place
    quint32 requests = 0;                   ///< how many writes and creations are under way
    EItemKind kind = EItemKind::Node;
    bool isLocal = false;          ///< the server does not have it (yet)
    bool isRefused = false;        ///< and will not
    bool isAwaited = false;        ///< local, stale: goes unless it comes with the node asked for above it
    bool isOwnCreation = false;    ///< the server has it because this client asked for it
    bool isEdited = false;         ///< was edited after its creation, or its last write, was sent
    bool isQueued = false;         ///< an edit waits to be sent
    bool isOccurring = false;      ///< every change counts
    bool isStaleAtServer = false;  ///< the server itself shows it as stale
};

/// Tells whether a record still stands for its item after observers were told something: they may have
/// deleted the item or ended the mirror, and the record may be another's by now.
class RecordGuard {
  public:
    explicit RecordGuard(const MirrorRecord& record)
        : m_record(record), m_item(record.item), m_guard(*record.item->GetObservable()) {}
    bool IsAlive() const { return m_guard.IsAlive() && m_record.item == m_item; }

  private:
    const MirrorRecord& m_record;
    const values::TreeItem* m_item;
    ObservableGuard m_guard;
};

/// Records that stay where they are, in pages, and are used again.
class MirrorRecordPool {
  public:
    MirrorRecord* Take() {
        if (m_free.empty()) Grow();
        const quint32 index = m_free.back();
        m_free.pop_back();
        MirrorRecord& record = At(index);
        record.index = index;
        ++m_used;
        return &record;
    }
    void Give(MirrorRecord* record) {
        const quint32 index = record->index;
        *record = MirrorRecord();
        m_free.push_back(index);
        --m_used;
    }
    quint32 End() const { return static_cast<quint32>(m_pages.size()) * PageSize; }
    MirrorRecord& At(quint32 index) { return (*m_pages[index / PageSize])[index % PageSize]; }
    bool IsEmpty() const { return m_used == 0; }
    quint32 Count() const { return m_used; }

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
