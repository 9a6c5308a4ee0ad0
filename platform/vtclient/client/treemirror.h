// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/treechange.h>

#include <platform/values/observable.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace values {
class TreeItem;
}

namespace vt {

class MirrorRecord;

/// Shows a subtree of a server in the local tree: applies the server's changes, and hands out what is edited
/// or created locally. Knows no connection. Main thread.
///
/// What is new is built detached and attached whole. Local items that are there already stay in place where
/// the server has one of the same name and type; what only this process has is offered to the server. After a
/// loss everything turns stale and stays; the next snapshot brings it up to date in place.
///
/// Observers of the items may do anything while they are told, also end this mirror; whoever owns it destroys
/// it only when no call of it is under way.
class TreeMirror {
  public:
    class IHost {
      public:
        virtual ~IHost();
        /// There are edits to send; told once until SendEdits().
        virtual void OnEdits(TreeMirror& mirror) = 0;
        /// Sends a write, or the creation of \a item, completed by request and subscription.
        /// \return the number of the request; 0, and nothing sent, if no server would accept it: too large.
        virtual quint32 SendWrite(TreeMirror& mirror, WriteMessage* write) = 0;
        virtual quint32 SendCreation(TreeMirror& mirror, CreateMessage* create,
                                     const values::TreeItem& item) = 0;
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
    /// A snapshot comes, or is here.
    bool IsConnected() const { return m_state == EState::Receiving || m_state == EState::Established; }
    bool IsEstablished() const { return m_state == EState::Established; }
    bool IsReleased() const { return m_state == EState::Released; }
    values::TreeItem* Root() const;

    /// A snapshot begins. \a writable are the server's paths at and below which may be written.
    void Start(const QStringList& writable, int session);
    /// Applies one change. False with \a error if no server could have sent it.
    bool Apply(const TreeChange& change, QString* error);
    /// The changes of one message were applied. What is new is attached unless \a hasMore.
    bool EndPart(bool hasMore, QString* error);
    /// The snapshot is complete. False with \a error if it cannot be shown at the local path.
    bool Finish(QString* error);

    /// The connection is gone: everything turns stale and stays, edits under way are taken back.
    void Lose();
    /// The server's item is gone, and so are its local items.
    void Vanish();
    /// Ends the mirroring of \a item and all below it (null: of everything): it stays, stale.
    void Release(const values::TreeItem* item);

    void SendEdits();
    void OnAnswer(const AnswerMessage& answer);
    /// Whether edits or creations are under way.
    bool HasUnanswered() const;
    /// Whether some of them wait for SendEdits().
    bool HasEdits() const;

    // For records.
    void OnUpdate(MirrorRecord& record, TChangeCode code);

  private:
    enum class EState { Lost, Receiving, Established, Released };
    struct Parts;

    void OnGone(MirrorRecord& record);
    void Forget(MirrorRecord& record);

    QString m_localPath;
    QString m_remotePath;
    IHost& m_host;
    EState m_state = EState::Lost;
    const std::unique_ptr<Parts> m_parts;
};

}  // namespace vt
