// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/client/calldepth.h>
#include <platform/vtclient/client/roadgap.h>
#include <platform/vtclient/client/roadkeys.h>
#include <platform/vtclient/client/roadpile.h>
#include <platform/vtclient/client/turnrequest.h>
#include <platform/vtclient/iroads.h>

#include <QtCore/QString>

#include <chrono>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace vt {

/// A client's end of the shared road of one subscription: gives what the server says there to its host in the
/// order of its numbers, each once, and in its place among what the server says in the session. What is
/// missing it fetches; what cannot be had it gives up, and the host takes a new snapshot. Main thread.
///
/// A server puts what it says in a session in its place by saying up to which number of the road it comes
/// after. While an answer is due the road waits for that, beyond what is known to come before the answer.
class RoadFollower final : private IRoads::IListener {
  public:
    class IHost {
      public:
        virtual ~IHost();
        /// The server is to be asked for a road.
        virtual void OnRoadWanted() = 0;
        /// Something of the server's came by \a road.
        virtual void OnRoadHeard(const QString& road) = 0;
        /// What the server said, beginning with message \a number. False if none could have said that.
        virtual bool OnRoadContent(std::string_view content, quint64 number) = 0;
        /// All is applied up to where OnAt() was told that the session is.
        virtual void OnRoadReached() = 0;
        /// What has come by the road under these numbers is missing, and nobody but the server may have it.
        virtual void OnRoadMissing(quint64 from, quint64 to) = 0;
        /// The road is given up. \a wasTaken: so the mirror has lost what came by it, from \a age ago on.
        /// The session, if it waits for the road, goes on later.
        virtual void OnRoadLost(bool wasTaken, std::chrono::microseconds age) = 0;
        /// What came was handled: now is the time to send what follows from it.
        virtual void OnRoadHandled() = 0;
        /// Deadline() may be sooner than it was.
        virtual void OnRoadDeadline() = 0;
    };
    /// Of the session; outlives that.
    struct Place {
        IRoads& roads;
        IEventLoop& loop;
        CallDepth& depth;
        TurnRequest& turn;
        std::chrono::milliseconds silence;  ///< after which a road is not believed to be there
    };

    /// \a path is for people. All outlive this.
    RoadFollower(IHost& host, const QString& path);
    ~RoadFollower() override;
    RoadFollower(const RoadFollower&) = delete;
    RoadFollower& operator=(const RoadFollower&) = delete;

    /// A subscription begins, and asks for a road.
    void Start(const Place& place);
    /// The subscription is over.
    void Stop();
    /// And so is the session, whose answers will not come.
    void Lose();
    /// The server begins anew with the subscription, and offers another road.
    void Rest();

    // What comes in the session.
    void OnRoad(const QString& road, quint32 key, const QString& secret);
    /// What follows in the session comes after \a number. True if it can be handled; else OnRoadReached()
    /// tells.
    bool OnAt(quint64 number);
    /// A write or a creation was sent, or answered.
    void OnRequest();
    void OnAnswered();

    /// Goes on where time was up, or where something else was under way.
    void OnTurn();
    std::optional<std::chrono::microseconds> Deadline() const;
    void OnDeadline();

  private:
    enum class EState {
        Off,      ///< there is no session with roads, or no road for a while
        Asked,    ///< the server may offer one
        Offered,  ///< it is listened to
        Heard,    ///< and the server knows that it can be heard
        Taken     ///< all changes come by it
    };

    void OnRoadMessage(const char* data, qint64 size, bool isFetched) override;
    void OnRoadInputDone() override;
    void OnFetched() override;

    bool IsListening() const { return m_state >= EState::Offered; }
    quint64 Limit() const;
    void Receive(std::string_view message, bool isFetched);
    void Accept(quint64 number, std::string_view content, bool isContinued);
    void Apply(quint64 number, std::string_view content, bool isContinued);
    bool Join(quint64 number, std::string_view content, bool isContinued);
    void Advance();
    void AdvanceWhile(const TurnBudget& budget);
    void LookForGap();
    void DoAboutGap(RoadGap::EStep step);
    void Listen(const QString& road);
    void Unlisten();
    void GiveUp(const QString& why);
    void NoteStranger();
    std::chrono::microseconds Now() const { return m_place->loop.Now(); }

    IHost& m_host;
    const QString& m_path;
    std::optional<Place> m_place;  ///< while there is a subscription in a session with roads
    EState m_state = EState::Off;
    QString m_road;
    RoadKeys m_keys;
    RoadPile m_pile;
    RoadGap m_gap;
    std::deque<QByteArray> m_late;  ///< came in the middle of something else
    std::size_t m_lateBytes = 0;
    std::string m_joined;    ///< the beginning of something that goes on
    quint64 m_joinedAt = 0;  ///< the message in which it began
    quint64 m_applied = 0;
    quint64 m_seen = 0;     ///< the highest number of the server's
    quint64 m_missing = 0;  ///< which the gap is about
    quint64 m_at = 0;       ///< where the session was last
    quint64 m_awaited = 0;  ///< the session waits for it; 0: it does not
    int m_due = 0;          ///< answers
    quint64 m_known = 0;    ///< this came before all answers that are due
    bool m_isAdvancing = false;
    bool m_isSilent = false;
    std::chrono::microseconds m_heardAt{};  ///< the last time; at first when it was offered
    std::chrono::microseconds m_takenAt{};
    std::chrono::microseconds m_wholeAt{};  ///< when the gap that is open was none yet
    std::chrono::microseconds m_retryAt{};
    std::chrono::milliseconds m_pause{};
    int m_strangers = 0;  ///< messages that were not told of
    std::optional<std::chrono::microseconds> m_toldAt;
};

}  // namespace vt
