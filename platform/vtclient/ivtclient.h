// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/ivthistory.h>

#include <QtCore/QString>

#include <chrono>
#include <optional>

namespace values {
class Node;
}

/// The change codes of connections, which share numbers with those of nodes.
namespace connectioncode {
constexpr TChangeCode TicsChanged = 15;     ///< the established state of tics changed
constexpr TChangeCode Connected = 16;       ///< the connection is up
constexpr TChangeCode Disconnected = 17;    ///< the connection is down
constexpr TChangeCode GoingAway = 18;       ///< the connection object or the tic is going away
constexpr TChangeCode WritesAnswered = 20;  ///< the last write under way was answered
constexpr TChangeCode ChangesLost = 21;     ///< changes have passed the client by: IVtLosses says which
/// Who observes an item of the tree or a connection hears of its end by the same number.
static_assert(GoingAway == changecode::GoingAway);
}  // namespace connectioncode

/// What a tic may be added with, as its options.
namespace ticoption {
/// Looks without using: the server makes nothing because of it, and counts nobody as a client of what is
/// there.
constexpr const char* Look = "look";
}  // namespace ticoption

/// One mirrored subtree: a path of the server's tree shown at a path of this process's tree. Owned by its
/// client. Main thread.
///
/// Tells its observers connectioncode::TicsChanged (15) whenever it becomes established or ceases to be, and
/// when the server says that there is nothing (more) at its path or that it may not be read;
/// connectioncode::GoingAway (18) before it is destroyed.
class MCS_CONNECTION_EXPORT IVtTic : public Observable {
  public:
    ~IVtTic() override;

    /// True while the connection is up and the whole subtree is here.
    virtual bool IsEstablished() const = 0;
    /// True once the server has said that nothing is there, or that it may not be read, until it says
    /// something else or the connection is lost.
    virtual bool IsAbsent() const { return false; }
    virtual QString GetLocalPath() const = 0;   ///< as given to AddTic()
    virtual QString GetRemotePath() const = 0;  ///< as given to AddTic()

  protected:
    IVtTic() = default;
    IVtTic(const IVtTic&) = default;
    IVtTic& operator=(const IVtTic&) = default;
};

/// A connection to a value-tree server, and the subtrees mirrored through it. Made and destroyed by
/// VtClientCenter. Connects by itself, and again after every loss, until it is destroyed. Main thread.
///
/// Tells its observers connectioncode::Connected (16), Disconnected (17), TicsChanged (15) after tics told
/// it themselves, and GoingAway (18) before it and its tics are destroyed. On a loss all mirrored values turn
/// stale first, then 17 is told, then 15.
class MCS_CONNECTION_EXPORT IVtClient : public Observable {
  public:
    ~IVtClient() override;

    virtual bool IsConnected() const = 0;  ///< whether the server has welcomed it
    /// True while connected with every tic established, also without any tic.
    virtual bool AreAllTicsEstablished() const = 0;
    virtual QString GetServerAddress() const = 0;  ///< as given, without the scheme
    virtual int GetServerPort() const = 0;         ///< as given

    /// Mirrors a subtree. \a spec is the local path, a comma and the remote path; \a options is empty or a
    /// ticoption. Empty asks to use what is there, of which a server may make something. Tics with the same
    /// two paths share one mirror, but none that is to use is added where one looks.
    /// \return the tic, owned by this client; null, with a trace, for a spec that is not two absolute paths,
    /// for options that there are not, or if the local path lies in, around or at another mirror of this
    /// client.
    virtual IVtTic* AddTic(const QString& spec, const char* options) = 0;
    /// Ends \a tic and destroys it. The local items stay, stale. A tic of another client changes nothing.
    virtual void RemoveTic(IVtTic* tic) = 0;
    /// Lets go of the local subtree \a node: its items stay, stale, and follow the server no more. A tic that
    /// mirrors just that subtree is established no more; who observes it, or this client, is told of that in
    /// the next turn of the event loop.
    virtual void ReleaseNode(values::Node* node) = 0;

    /// Why there is no connection, in one line; empty while connected or before the first attempt ended.
    virtual QString GetLastError() const { return QString(); }
    /// True if the server refused the last attempt and will not change its mind by itself: the version or
    /// the credential. The attempts go on all the same.
    virtual bool IsRefused() const { return false; }
    virtual bool IsEncrypted() const { return false; }  ///< while connected
    /// True while writes or creations are under way to the server. When the last was answered, observers are
    /// told connectioncode::WritesAnswered (20).
    virtual bool HasUnansweredWrites() const { return false; }
    /// What the server calls itself; empty while not connected.
    virtual QString GetServerApplication() const { return QString(); }
    /// The round trip of the last ping; none while unknown.
    virtual std::optional<std::chrono::microseconds> GetLatency() const { return std::nullopt; }

    /// Asks the server for at most \a count contents that the value at \a path, absolute and the server's,
    /// had before the one with the number \a before, or the last of all for 0. Only of a server that says
    /// that it answers: others end the session. \a answer is called once, from the event loop, also if the
    /// connection is lost; not if this client ends. False, and nothing is asked, while not connected.
    virtual bool Recall(const QString& path, quint64 before, int count, const IVtHistory::Answer& answer);
    /// A number that the server has drawn at its start; 0 while not connected. So another one is another
    /// start.
    virtual quint64 GetServerEpoch() const { return 0; }

  protected:
    IVtClient() = default;
    IVtClient(const IVtClient&) = default;
    IVtClient& operator=(const IVtClient&) = default;
};
