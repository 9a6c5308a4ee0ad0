// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/mirrorrecordpool.h>
#include <platform/vtclient/wire/pagedtable.h>

#include <QtCore/QString>

#include <unordered_map>

namespace vt {

/// The records of a mirror: makes them, finds them by item and by the server's number, walks over them, and
/// has all that changes how one stands with the server. Tells nobody anything.
///
///     made -> Known ------------- lost below what this client asked for -> Awaited
///     made -> Offered - arrives -> Own - lost -> Offered
///             Offered - refused -> Refused - a new snapshot -> Offered
///             Refused, Awaited - arrive -> Known
class MirrorRecords {
  public:
    /// What a number of the server's stands for.
    struct Numbered {
        MirrorRecord* record = nullptr;  ///< null: the application deleted the item
        bool isKnown = false;
        bool IsUsed() const { return isKnown; }
    };

    MirrorRecords(TreeMirror& mirror, QString remotePath);
    MirrorRecords(const MirrorRecords&) = delete;
    MirrorRecords& operator=(const MirrorRecords&) = delete;

    MirrorRecord* Root() const { return m_root; }
    bool IsEmpty() const { return m_pool.IsEmpty(); }
    /// Null for a number that the server has not given away, or has taken back.
    const Numbered* Find(quint32 id) {
        const Numbered* const found = m_numbers.Find(id);
        return found != nullptr && found->isKnown ? found : nullptr;
    }
    /// The record of an item that the server does not have; between BeginSnapshot() and EndSnapshot() of any.
    MirrorRecord* Find(const values::TreeItem* item) const;
    /// Whether the present snapshot, or what came after it, has told of \a record.
    bool IsCurrent(const MirrorRecord& record) const { return record.generation == m_generation; }
    bool HasAwaited() const { return m_awaited != 0; }
    /// The path at the server.
    QString PathOf(const MirrorRecord& record) const;
    /// Visits every record for which \a which is true then. A visit may tell observers, who may do anything:
    /// what they end is not visited any more; what they begin may be left out.
    template <class Which, class Visit>
    void ForEach(const Which& which, const Visit& visit) {
        for (quint32 i = 0; i < m_pool.End(); ++i) {
            MirrorRecord& record = m_pool.At(i);
            if (record.IsUsed() && which(record)) visit(record);
        }
    }

    /// A snapshot begins: no number means anything any more. \a isIndexed if items are to be found by Find().
    void BeginSnapshot(bool isIndexed);
    void EndSnapshot();

    /// A record of \a item, which observes it. \a state is Known, Offered or Refused.
    MirrorRecord& Make(values::TreeItem* item, EItemKind kind, MirrorRecord* parent, ERecord state);
    /// The server has the item, below \a parent and as \a id.
    void Arrive(MirrorRecord& record, MirrorRecord* parent, quint32 id);
    /// The server has it no more, or refused it before: this client asks for it (again).
    void Offer(MirrorRecord& record);
    /// The server has it no more, but may have it again with what is asked for above it.
    void Await(MirrorRecord& record);
    void Refuse(MirrorRecord& record);
    /// The record ends. The server's number stays known if the server may still speak of it.
    void Forget(MirrorRecord& record, bool isGoneAtServer);

    /// The server adds something below what the application deleted; and removes such a thing.
    void NoteUnseen(quint32 id);
    void DropUnseen(quint32 id);

  private:
    void LeaveServer(MirrorRecord& record, ERecord state);

    TreeMirror& m_mirror;
    QString m_remotePath;
    MirrorRecordPool m_pool;
    MirrorRecord* m_root = nullptr;
    PagedTable<Numbered> m_numbers;
    std::unordered_map<const values::TreeItem*, MirrorRecord*> m_byItem;
    bool m_isIndexed = false;  ///< m_byItem holds what the server has, too
    quint32 m_generation = 0;
    quint32 m_awaited = 0;  ///< how many are Awaited
};

}  // namespace vt
