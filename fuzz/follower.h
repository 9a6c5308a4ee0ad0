// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messagereader.h>
#include <platform/vtclient/wire/roadseal.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class MemoryBus;

/// A client as docs/protocol.md has it, as far as it listens: holds every message of a server to the rules,
/// and keeps what it was told, so that it can be compared with what is.
class Follower {
  public:
    /// By \a bus come the shared roads; it outlives this.
    explicit Follower(const MemoryBus& bus) : m_bus(bus) {}

    /// What was sent to the server, as it came to it.
    void OnSent(const QByteArray& bytes);
    /// What the server sent.
    void OnReceived(const QByteArray& bytes);

    bool IsWelcome() const { return m_isWelcome; }
    bool HasEnded() const { return m_hasEnded; }
    /// How many messages the server has sent that are to be acknowledged.
    quint64 CountToAck() const { return m_toAck; }
    /// Numbers of subscriptions that are complete.
    std::vector<quint32> Complete() const;
    /// Compares everything that was told with the tree, once the server has told everything.
    void CompareWithTree();
    /// The road that was offered for \a sub; empty: none was.
    QString RoadOf(quint32 sub) const;

  private:
    struct Item {
        quint32 parent = 0;
        QString name;
        vt::ItemDescription item;
        std::vector<quint32> children;
    };
    struct Subscription {
        QString path;
        bool isFollowing = false;  ///< subscribed was answered
        bool isComplete = false;
        bool hasMore = false;
        quint64 sequence = 0;
        std::map<quint32, Item> items;
        quint32 nextId = 0;
        QString road;
        std::map<quint32, std::shared_ptr<vt::RoadSeal>> keys;
        bool isOnRoad = false;  ///< what changes comes by it
        quint64 applied = 0;    ///< number on the road
        std::string joined;     ///< a batch of which a part has come
        quint64 joinedAt = 0;
    };

    // What a client sends.
    void OnSentMessage(const vt::SubscribeMessage& subscribe);
    void OnSentMessage(const vt::UnsubscribeMessage& unsubscribe);
    void OnSentMessage(const vt::WriteMessage& write) { m_requests.insert(write.req); }
    void OnSentMessage(const vt::CreateMessage& create) { m_requests.insert(create.req); }
    void OnSentMessage(const vt::RecallMessage& recall) { m_recalls.insert(recall.req); }
    template <class M>
    void OnSentMessage(const M& /*other*/) {}
    // What a server sends to one that it has welcomed.
    void On(const vt::WelcomeMessage& welcome, vt::MessageReader& reader);
    void On(const vt::ByeMessage& bye, vt::MessageReader& reader);
    void On(const vt::SubscribedMessage& subscribed, vt::MessageReader& reader);
    void On(const vt::SnapshotMessage& snapshot, vt::MessageReader& reader);
    void On(const vt::EndMessage& end, vt::MessageReader& reader);
    void On(const vt::BatchMessage& batch, vt::MessageReader& reader);
    void On(const vt::AbsentMessage& absent, vt::MessageReader& reader);
    void On(const vt::AnswerMessage& answer, vt::MessageReader& reader);
    void On(const vt::PingMessage& /*ping*/, vt::MessageReader& /*reader*/) {}
    void On(const vt::PongMessage& /*pong*/, vt::MessageReader& /*reader*/) {}
    void On(const vt::RecalledMessage& recalled, vt::MessageReader& reader);
    void On(const vt::RoadMessage& road, vt::MessageReader& reader);
    void On(const vt::AtMessage& at, vt::MessageReader& reader);
    Subscription* Find(quint32 sub);
    static void CheckNext(Subscription& subscription, quint64 seq);
    static void OnChanges(Subscription& subscription, vt::MessageReader& reader);
    static void Apply(Subscription& subscription, const vt::TreeChange& change);
    static void ApplyAdded(Subscription& subscription, const vt::TreeChange& change);
    static void Remove(Subscription& subscription, quint32 id);
    /// Applies what has come by the road up to that number.
    void ReadRoad(Subscription& subscription, quint64 last) const;
    static void ApplyBatch(Subscription& subscription);
    static void Compare(const Subscription& subscription);

    const MemoryBus& m_bus;
    bool m_isHelloSent = false;
    bool m_isWelcome = false;
    bool m_hasEnded = false;
    quint64 m_toAck = 0;
    std::map<quint32, Subscription> m_subscriptions;
    std::set<quint32> m_over;  ///< numbers of subscriptions that were ended; the server may not know yet
    std::multiset<quint32> m_requests;
    std::multiset<quint32> m_recalls;
};
