// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/roadfollower.h>
#include <platform/vtclient/client/treemirror.h>
#include <platform/vtclient/ivtlosses.h>
#include <platform/vtclient/wire/messages.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <chrono>
#include <optional>
#include <string_view>
#include <vector>

namespace vt {

class ClientSession;
class MessageReader;
class VtTic;

/// A mirror, its subscription at the server, and the tics that share them. Feeds the mirror what the server
/// says in order, and takes a new snapshot where something is missing.
class ClientLink final : private TreeMirror::IHost, private RoadFollower::IHost {
  public:
    class IHost {
      public:
        virtual ~IHost();
        /// Edits or creations are under way, and wait to be sent.
        virtual void OnEdits() = 0;
        /// Something that was under way is not any more.
        virtual void OnAnswered() = 0;
        /// It may have become established, or have ceased to be.
        virtual void OnEstablished() = 0;
        /// The server has nothing there (any more), or lets nobody see it; told after OnEstablished().
        virtual void OnAbsent(ClientLink& link) = 0;
    };

    ClientLink(const QString& localPath, const QString& remotePath, bool isLook, IHost& host);
    ~ClientLink() override;
    ClientLink(const ClientLink&) = delete;
    ClientLink& operator=(const ClientLink&) = delete;

    TreeMirror& Mirror() { return m_mirror; }
    const TreeMirror& Mirror() const { return m_mirror; }
    /// Those that share it, none of them owned.
    std::vector<VtTic*>& Tics() { return m_tics; }
    bool IsAbsent() const { return m_isAbsent; }
    bool IsLook() const { return m_isLook; }
    /// Whether the mirror has become established, or ceased to be, since this was asked last.
    bool TakeChange();
    bool HasChanged() const { return m_mirror.IsEstablished() != m_wasEstablished; }
    /// What has passed it by before it became established again, told once.
    std::optional<VtLoss> TakeLoss();

    void Subscribe(ClientSession& session);
    /// Ends the subscription, if there is one. The mirror stays as it is.
    void Unsubscribe();
    /// The session has ended.
    void Lose();

    // What comes of the subscription.
    void OnSubscribed(const QStringList& writable);
    /// Changes of a snapshot, or of a batch; \a hasMore: what they add is not complete yet.
    void OnChanges(MessageReader& reader, quint64 sequence, bool hasMore);
    void OnEnd(quint64 sequence);
    void OnAbsent(const QString& reason);
    void OnAnswer(const AnswerMessage& answer);
    /// Of the shared road by which its changes may come.
    void OnRoad(const QString& road, quint32 key, const QString& secret);
    bool OnAt(quint64 number) { return m_road.OnAt(number); }
    void OnRoadTurn() { m_road.OnTurn(); }
    std::optional<std::chrono::microseconds> RoadDeadline() const { return m_road.Deadline(); }
    /// What is due of the road is done.
    void OnRoadDue() { m_road.OnDeadline(); }

  private:
    void OnEdits(TreeMirror& mirror) override;
    quint32 SendWrite(TreeMirror& mirror, WriteMessage* write) override;
    quint32 SendCreation(TreeMirror& mirror, CreateMessage* create, const values::TreeItem& item) override;
    void OnRootDeleted(TreeMirror& mirror) override;

    void OnRoadWanted() override;
    void OnRoadHeard(const QString& road) override;
    bool OnRoadContent(std::string_view content, quint64 number) override;
    void OnRoadReached() override;
    void OnRoadMissing(quint64 from, quint64 to) override;
    void OnRoadLost(bool wasTaken, std::chrono::microseconds age) override;
    void OnRoadHandled() override;
    void OnRoadDeadline() override;

    bool IsNext(quint64 sequence);
    bool Apply(MessageReader& reader, bool hasMore, QString* error);
    void OnApplied(bool isGood, const QString& error);
    void SetAbsent(bool isAbsent);
    void Miss(std::chrono::microseconds age);
    void EndRoad();
    quint32 CountRequest(quint32 request);

    IHost& m_host;
    bool m_isLook;
    TreeMirror m_mirror;
    RoadFollower m_road;
    ClientSession* m_session = nullptr;  ///< the last one that it was subscribed in; null once that has ended
    quint32 m_sub = 0;                   ///< 0: not subscribed
    quint64 m_sequence = 0;
    bool m_isReceiving = false;  ///< the subscription was answered
    bool m_isAbsent = false;
    bool m_wasEstablished = false;
    QDateTime m_missesSince;          ///< null: it misses nothing
    bool m_hasMissedSession = false;  ///< that is, or is also, because a session ended
    std::vector<VtTic*> m_tics;
};

}  // namespace vt
