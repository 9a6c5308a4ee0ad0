// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/mirrorrecord.h>
#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/wire/message.h>
#include <platform/vtclient/wire/pagedtable.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <deque>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace values {
class Node;
class TreeItem;
class ValueBase;
}  // namespace values

namespace vt {

/// Shows a subtree of a server in the local tree: applies the server's changes, and hands out what is edited
/// or created locally. Knows no connection. Main thread.
///
/// What is new is built detached and attached whole. Local items that are there already stay in place where
/// the server has one of the same name and type; what only this process has is offered to the server. After a
/// loss everything turns stale and stays; the next snapshot brings it up to date in place.
///
/// Observers of the items may do anything while they are told, also end this mirror; whoever owns it destroys
/// it only when no call of it is under way.
class MCS_CONNECTION_EXPORT TreeMirror {
  public:
    class IHost {
      public:
        virtual ~IHost();
        /// There are edits to send; told once until SendEdits().
        virtual void OnEdits(TreeMirror& mirror) = 0;
        /// Sends a write, or the creation of \a item, completed by request and subscription.
        /// \return the number of the request; 0, and nothing sent, if no server would accept it: too large.
        virtual quint32 SendWrite(TreeMirror& mirror, WriteMessage* write) = 0;
        virtual quint32 SendCreation(TreeMirror& mirror, Message* create, const values::TreeItem& item) = 0;
        /// The application deleted the local root.
        virtual void OnRootDeleted(TreeMirror& mirror) = 0;
    };

    /// Paths are normalised. \a host outlives the mirror.
    TreeMirror(QString localPath, QString remotePath, IHost& host);
    ~TreeMirror();
    TreeMirror(const TreeMirror&) = delete;
    TreeMirror& operator=(const TreeMirror&) = delete;

    const QString& LocalPath() const { return m_localPath; }
    const QString& RemotePath() const { return m_remotePath; }
    bool IsEstablished() const { return m_isEstablished; }
    values::TreeItem* Root() const { return m_root != nullptr ? m_root->item : nullptr; }

    /// A snapshot begins. \a writable are the server's paths at and below which may be written.
    void Start(const QStringList& writable, int session);
    /// Applies one change. False with \a error if no server could have sent it.
    bool Apply(const TreeChange& change, QString* error);
    /// The changes of one message were applied. What is new is attached unless \a hasMore.
    bool EndPart(bool hasMore, QString* error);
    /// The snapshot is complete. False with \a error if it cannot be shown at the local path.
    bool Finish(QString* error);
    /// The connection is gone: everything turns stale, edits under way are taken back.
    void Lose();
    /// The server's item is gone, and so is its local mirror.
    void Vanish();
    /// Lets go of \a item and all below it (null: of everything): it stays, stale.
    void Release(const values::TreeItem* item);
    bool IsReleased() const { return m_isReleased; }

    void SendEdits();
    void OnAnswer(const AnswerMessage& answer);
    bool HasUnanswered() const { return !m_requests.empty() || !m_edits.empty(); }
    bool HasEdits() const { return !m_edits.empty(); }

    // For records.
    void OnUpdate(MirrorRecord& record, TChangeCode code);

  private:
    struct Slot {
        MirrorRecord* record = nullptr;
        bool isKnown = false;  ///< without a record: the application deleted the item
        bool IsUsed() const { return isKnown; }
    };
    /// Something new, and where it will go; no parent: the root.
    struct Detached {
        std::unique_ptr<values::TreeItem> item;
        MirrorRecord* parent;
    };
    /// Something edited; a content only of occurrences, others are sent as they are by then.
    struct Edit {
        MirrorRecord* record;
        bool isOccurrence;
        Content content;
    };
    struct Request {
        MirrorRecord* record;  ///< null: the item has gone meanwhile
        bool isCreation;
        Content content;  ///< of a write, as asked for
    };

    static bool TakeContent(MirrorRecord& record, const TreeChange& change, QString* error);
    bool ApplyContent(MirrorRecord& record, const TreeChange& change, QString* error);
    bool ApplyAdded(const TreeChange& change, QString* error);
    bool ApplyRoot(const TreeChange& change, QString* error);
    bool ApplyRemoved(quint32 id, QString* error);
    bool ApplyDescribed(MirrorRecord& record, const TreeChange& change, QString* error);
    void Rename(MirrorRecord& record, const QString& name);
    bool ApplyItems(MirrorRecord& record, const TreeChange& change, QString* error);
    bool Place(const TreeChange& change, MirrorRecord* parent, values::TreeItem* existing, QString* error);
    void Bind(MirrorRecord& record, const TreeChange& change);
    static void Show(MirrorRecord& record);
    bool AddNew(const TreeChange& change, MirrorRecord* parent, QString* error);
    bool AttachAll(QString* error);
    bool Attach(Detached detached, QString* error);
    void Sweep();
    bool IsBelowLostCreation(const MirrorRecord& record) const;
    void KeepLocal(MirrorRecord& record);
    void EndWaiting(const MirrorRecord& created);
    static bool IsWaitingFor(const MirrorRecord& record, const MirrorRecord& created);
    void AdoptLocals();
    void AdoptChildren(MirrorRecord& record);
    static bool IsLeftOver(const values::TreeItem& item);
    void AdoptLocal(values::TreeItem* item, MirrorRecord& parent);

    void OnContent(MirrorRecord& record);
    void OnGone(MirrorRecord& record);
    void ForgetEdits();
    void Queue(MirrorRecord& record, bool isOccurrence);
    void SendEdit(const Edit& edit);
    void SendCreation(MirrorRecord& record);
    void TakeBack(MirrorRecord& record, const QString& reason);
    void RefuseCreation(MirrorRecord& record, const QString& reason);
    void OnCreationAnswer(MirrorRecord& record, const AnswerMessage& answer);

    MirrorRecord* NewRecord(values::TreeItem* item, EItemKind kind, MirrorRecord* parent);
    void SetParent(MirrorRecord& record, MirrorRecord* parent);
    void Number(MirrorRecord& record, quint32 id);
    void Forget(MirrorRecord& record);
    void LetGo(MirrorRecord& record);
    MirrorRecord* RecordOf(const values::TreeItem* item) const;
    void Destroy(values::TreeItem* item);
    void DestroyChildren();
    void DropDetached();
    QString RemotePathOf(const MirrorRecord& record) const;
    bool IsWritable(const MirrorRecord& record) const;
    void UpdateFlags(MirrorRecord& record, unsigned flags);

    QString m_localPath;
    QString m_remotePath;
    IHost& m_host;
    bool m_isConnected = false;
    bool m_isEstablished = false;
    bool m_isReleased = false;
    bool m_isMerging = false;   ///< the snapshot meets local items
    bool m_isRemoving = false;  ///< what goes away goes because of the server
    int m_session = 0;
    quint32 m_generation = 0;
    quint32 m_series = 1;
    bool m_isAllWritable = false;
    QStringList m_writable;  ///< the prefixes below the remote path
    MirrorRecordPool m_records;
    MirrorRecord* m_root = nullptr;
    PagedTable<Slot> m_slots;
    std::deque<Detached> m_detached;
    const values::TreeItem* m_attaching = nullptr;
    std::unordered_map<const values::TreeItem*, MirrorRecord*> m_locals;   ///< those that are isLocal
    std::unordered_map<const values::TreeItem*, MirrorRecord*> m_merging;  ///< the others, while merging
    quint32 m_awaited = 0;                                                 ///< how many records are isAwaited
    std::deque<Edit> m_edits;
    std::unordered_map<quint32, Request> m_requests;
};

}  // namespace vt
