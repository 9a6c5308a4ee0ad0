// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/pagedtable.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QByteArray>

#include <deque>
#include <functional>
#include <vector>

namespace values {
class Node;
class TreeItem;
}  // namespace values

namespace vt {

/// Observes an item of the local tree with all below it, numbers the items, and yields what changes, in
/// order. Knows no connection and no client. Main thread.
///
/// Numbers only grow, and an item gets its own when the watcher first sees it: parents before their children,
/// children in their order. So whoever has been told of all numbers below some number n lacks exactly those
/// from n on: that is all that a reader has to remember of the structure, whether it is taking its first look
/// or has fallen behind.
///
/// A large tree is taken in over several turns (TakeIn); what it holds by then counts.
class TreeWatcher {
  public:
    class IListener {
      public:
        virtual ~IListener();
        /// There is something to fetch. Told once until NextPart() has given everything.
        virtual void OnChanges(TreeWatcher& watcher) = 0;
        /// The watched item is going away, or got another name; the watcher is empty from now on.
        virtual void OnRootGone(TreeWatcher& watcher) = 0;
    };

    /// A change in the order in which it happened. Contents are those of the moment at which they are
    /// written, except of occurrences, which were written when they happened.
    struct Entry {
        Entry(EChange itsChange, quint32 itsId, quint32 itsSize = 0, bool isOneOfThose = false)
            : change(itsChange), isOccurrence(isOneOfThose), id(itsId), size(itsSize) {}

        EChange change;
        bool isOccurrence;
        quint32 id;
        quint32 size;  ///< bytes of an occurrence; how many numbers of items added, from id on
    };

    /// A run of changes, written.
    struct Part {
        QByteArray changes;
        std::vector<Entry> entries;  ///< without what was added
        QByteArray occurrences;      ///< bytes of the entries that are occurrences, one after the other
        quint32 firstNew = 0;        ///< numbers from here on are new in this part
        quint32 endNew = 0;          ///< and end here
        bool hasMore = false;        ///< what is new continues

        /// Lets go of what it holds, and keeps room for as many entries as most parts have.
        void Clear();
    };

    /// \a root is an item of the tree; \a listener outlives the watcher.
    TreeWatcher(values::TreeItem* root, IListener& listener);
    ~TreeWatcher();
    TreeWatcher(const TreeWatcher&) = delete;
    TreeWatcher& operator=(const TreeWatcher&) = delete;

    /// Numbers items that were not seen yet, until \a isTimeUp. True when none is left.
    bool TakeIn(const std::function<bool()>& isTimeUp);
    bool IsTakenIn() const { return m_unfinished.empty(); }

    /// Numbers below were in parts that were fetched, or belong to items that had gone by then.
    quint32 EndOfNumbers() const { return m_announced; }
    bool HasChanges() const { return m_read < m_entries.size(); }
    /// Moves the next changes into \a part, about vtlimits::BatchTarget bytes of them. \a isWritten false
    /// leaves them unwritten: nobody is in step. False if there are none.
    bool NextPart(bool isWritten, Part* part);

    /// Writes item \a id as it is now, added. False, and nothing written, if there is none (any more).
    bool WriteAdded(quint32 id, ChangeWriter* writer);
    /// Writes what \a change says of item \a id as it is now. Likewise.
    bool WriteNow(EChange change, quint32 id, ChangeWriter* writer);

    values::TreeItem* Find(quint32 id);
    EItemKind KindOfItem(quint32 id);

    /// A write of \a session, which came for this watcher's item \a id. While it lives the first change of
    /// that item counts as caused by the write; what else happens to it is the server's doing. The watcher
    /// may go meanwhile.
    class WriteScope {
      public:
        WriteScope(TreeWatcher& watcher, quint32 id, int session);
        ~WriteScope();
        WriteScope(const WriteScope&) = delete;
        WriteScope& operator=(const WriteScope&) = delete;

      private:
        friend class TreeWatcher;

        TreeWatcher* m_watcher;  ///< null: it has gone
        WriteScope* m_outer;     ///< in the middle of which this one came
        quint32 m_id;
        int m_session;
        bool m_isTold = false;
    };

  private:
    class Record final : public IObserver {
      public:
        Record() = default;
        bool IsUsed() const { return item != nullptr; }
        void Update(Observable* /*source*/, TChangeCode code) override {
            if (isOccurring && code == changecode::ContentChanged) return watcher->OnOccurrence(*this);
            watcher->OnUpdate(*this, code);
        }

        TreeWatcher* watcher = nullptr;
        values::TreeItem* item = nullptr;       ///< null: not in use
        values::TreeItem* lastChild = nullptr;  ///< of a node: the last child that has a number
        quint32 id = 0;
        quint32 parent = 0;
        int pathLength = 0;
        EItemKind kind = EItemKind::Node;
        bool isContentDirty = false;
        bool isDescriptionDirty = false;
        bool areItemsDirty = false;
        bool isOccurring = false;   ///< every change of its content counts
        bool isUnsent = false;      ///< of a type, or under a name, that does not travel
        bool isOversized = false;   ///< its content does not fit a message
        bool wasOversized = false;  ///< some client may have been told so
        bool isUnfinished = false;  ///< a node with children that have no number yet
    };

    Q_NEVER_INLINE void OnUpdate(Record& record, TChangeCode code);
    void OnContent(Record& record);
    void OnDirty(const Record& record, EChange change, bool* flag);
    void OnOccurrence(Record& record);
    Q_NEVER_INLINE void OnWritten(Record& record);
    Q_NEVER_INLINE void FinishOccurrence(Record& record, int before);
    void LoseOccurrence(Record& record, int before);
    void OnOversized(Record& record, bool isOversized);
    void OnGoingAway(Record& record);
    void OnChildrenAdded(Record& record);
    bool TakeInChildren(Record& record, const std::function<bool()>& isTimeUp);
    bool MaySend(const values::TreeItem& item, Record* record);
    const Record& Take(values::TreeItem* item, quint32 parent);
    void Drop(Record& record);
    void DropAll();
    void Push(EChange change, quint32 id, quint32 size = 0);
    void TellChanges();
    void PushAdded(quint32 id);
    void FetchAdded(Entry* range, bool isWritten);
    void FetchEntry(const Entry& entry, bool isWritten);
    void FetchOccurrences(bool isWritten, Part* part);
    bool FetchAll(bool isWritten, Part* part);
    void ForgetFetched();
    void WriteContentOf(Record& record, EChange change, ChangeWriter* writer);
    static void SetOversized(Record& record, bool isOversized);
    void ClearFlag(const Entry& entry);
    unsigned FlagsOf(const Record& record) const;
    static void TraceUnsent(const char* what, const values::TreeItem& item);
    static void TraceOversized(const Record& record);

    IListener& m_listener;
    QString m_rootName;
    PagedTable<Record> m_records;
    quint32 m_nextId = 0;
    std::deque<quint32> m_unfinished;  ///< nodes with children that have no number yet
    std::vector<Entry> m_entries;
    std::size_t m_read = 0;  ///< entries before were fetched
    quint32 m_announced = 0;
    ChangeWriter m_occurrences;  ///< bytes of the occurrences among the entries
    int m_occurrenceRead = 0;    ///< bytes before were fetched
    std::size_t m_others = 0;    ///< entries to be fetched that are no occurrences
    bool m_isTold = false;       ///< the listener knows that there are some
    ChangeWriter m_writer;
    WriteScope* m_write = nullptr;  ///< the innermost that is under way
    bool m_isGone = false;
};

}  // namespace vt
