// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/ivthistory.h>

#include <QtCore/QString>

#include <chrono>
#include <memory>
#include <vector>

namespace vt {
class IChannel;
class IRoads;
}  // namespace vt

/// Where and how a server listens.
struct VtServerOptions {
    static constexpr int DefaultPort = 7450;
    static constexpr int DefaultMaxSessions = 2000;
    static constexpr qint64 DefaultMemoryBytes = 32 << 20;  ///< with a small server itself below 64 MiB

    QString application;                            ///< told to clients
    QString address = QStringLiteral("127.0.0.1");  ///< IP address of the interface; "0.0.0.0", "::" for all
    int port = DefaultPort;                         ///< 0: any free one
    QString certificateFile;                        ///< PEM; with it the server speaks TLS only
    QString privateKeyFile;                         ///< PEM
    QString caFile;           ///< PEM: client certificates from this authority count as credentials
    bool isInsecure = false;  ///< allow other addresses than loopback without TLS and credentials
    /// Clients at once. Some of these places are kept for operators; when only those are left, a user or a
    /// host that has more than its share makes room for others.
    int maxSessions = DefaultMaxSessions;
    /// What clients may make the server keep: what has come and is not complete, what waits for them, and
    /// what they asked for. If it is not enough, the session ends that acknowledges nothing or takes most.
    qint64 memoryBytes = DefaultMemoryBytes;
    std::chrono::milliseconds pingInterval{5000};
    std::chrono::milliseconds deadAfter{15'000};  ///< without a word from a client
};

/// What goes by shared roads, and to whom.
struct VtRoadFigures {
    int roads = 0;        ///< that there are
    int followers = 0;    ///< subscriptions that are told by one
    quint64 taken = 0;    ///< so often a client took one, behind a snapshot
    quint64 givenUp = 0;  ///< so often one was given up: its client missed what nobody kept
};

/// Serves this process's tree of values to clients. Main thread.
///
/// Every change of a subscribed subtree reaches its subscribers in order; all changes of one turn of the
/// event loop travel together. A client that does not keep up is told of the last contents when it does, and
/// delays nobody else. Nothing is written or created that the access object does not allow.
///
/// Whoever is told something, the access object and observers of values, may close and destroy the server.
class MCS_CONNECTION_EXPORT VtServer {
  public:
    /// \a access is not owned and outlives the server, as does the tree.
    explicit VtServer(IVtAccess& access);
    /// Ends all sessions. So does the end of the application object, where the server outlives that.
    ~VtServer();
    VtServer(const VtServer&) = delete;
    VtServer& operator=(const VtServer&) = delete;

    /// Whom to ask what values held before; null, as at first, for nobody. Holds from the next Listen() on.
    /// Not owned; outlives the server.
    void SetHistory(IVtHistory* history);

    /// The bus on which changes are published once for all clients that follow them there; null, as at first:
    /// each is told in its session. Holds at once. Not owned; stays until another one is set, or the server
    /// has gone.
    void SetRoads(vt::IRoads* roads);
    VtRoadFigures GetRoadFigures() const;  ///< What they had to carry so far.
    /// Somebody has lost a right: who is no client any more opens nothing of what is published from now on.
    void ChangeRoadKeys();

    /// Starts to listen. False with the reason in one line in \a error: a port in use, an address that is
    /// none, a certificate that cannot be used, an interface that needs TLS and credentials.
    bool Listen(const VtServerOptions& options, QString* error);
    /// Serves one more peer, which another transport has brought; while not listening, closes \a channel
    /// instead. What the channel says of loopback, encryption and certificate is believed.
    void Serve(std::unique_ptr<vt::IChannel> channel);
    /// Ends all sessions, telling each client \a reason, and listens no more.
    void Close(const QString& reason);

    /// Reads the files of TLS anew, for those who connect from now on. False with the reason in one line in
    /// \a error, if they cannot be used: then what was read before holds.
    bool ReadCertificates(QString* error);

    bool IsListening() const;    ///< Whether clients can come.
    QString GetAddress() const;  ///< the interface, for people
    int GetPort() const;  ///< the real one, also where any free one was asked for; 0 while not listening

    std::vector<VtPeer> GetPeers() const;  ///< All sessions, in the order in which they came.
    /// Ends one session, telling its client \a reason, and changes the keys that it knew of shared roads; an
    /// unknown number changes nothing.
    void EndSession(int session, const QString& reason);

  private:
    void End();

    struct Works;
    class Private;
    std::unique_ptr<Private> m_d;
};
