// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/emcscontroltreesegments.h>

#include <platform/values/observable.h>

#include <QtCore/QString>

#include <map>
#include <set>

class IVtClient;
class IVtTic;
class MpxORVHandle;

/// What a client of the server tells its observers.
namespace serverclientcode {
constexpr TChangeCode ConnectedToServer = 5019;        ///< on a change only
constexpr TChangeCode DisconnectedFromServer = 5020;   ///< on a change only
constexpr TChangeCode ControlTreeConnected = 5021;     ///< all requested segments; on a change only
constexpr TChangeCode ControlTreeDisconnected = 5022;  ///< on a change only
constexpr TChangeCode MpxORVConnected = 5023;          ///< one handle's control tree; on its change only
constexpr TChangeCode MpxORVDisconnected = 5024;       ///< likewise
constexpr TChangeCode AllTicsEstablished = 5025;       ///< every time that the value-tree client says so
}  // namespace serverclientcode

/// An application's connection to the multi-channel server: a value-tree client, the segments of the server's
/// control tree that are mirrored under a local path, and the handles of the MpxORVs in use. Main thread.
///
/// Owns the value-tree client that it made itself and all handles. Tells its observers the codes above; they
/// may do anything in answer, also delete handles, disconnect, or delete the client. Failures are traced and
/// leave everything as it was.
///
/// A copy is shallow and registered nowhere (fixed: copies-observe-nothing): it is not told of changes, it
/// does not delete its source's handles, but what it disconnects is disconnected for its source too, at the
/// latest when the copy is deleted. It must not outlive its source or the value-tree client.
class MCS_COMMON_EXPORT MultiChannelServerClient : public IObserver,
                                                   public Observable {  // fixed: virtual-order
  public:
    MultiChannelServerClient();
    MultiChannelServerClient(const MultiChannelServerClient& other);
    /// Lets go of what this client had, deleting its own handles and value-tree client, then copies.
    MultiChannelServerClient& operator=(const MultiChannelServerClient& other);
    ~MultiChannelServerClient() override;

    /// Disconnects, then starts to connect to the server at \a address. False if that cannot be right.
    virtual bool ConnectToServer(const QString& address, int port);
    /// Ends the connection, and the mirroring with it; without a connection nothing happens.
    virtual void DisconnectFromServer();
    /// Uses \a client, which is not owned, from now on; null for none. Ends the mirroring of segments. The
    /// handles stay for another client and are deleted for null. Observers are not told of the connection as
    /// such before \a client says something.
    virtual void UseVtClient(IVtClient* client);
    /// Its own, or the one it was told to use; null while there is neither.
    virtual IVtClient* GetVtClientToUse() const;
    /// Whether the server has welcomed it, and nothing was lost since.
    virtual bool IsConnectedToServer() const;

    /// Starts to mirror \a segments, each to localMcsBasePath + "/" + its name. One call at a time:
    /// disconnect before the next one. Observers are told when all are there.
    virtual bool ConnectToMCSControlTree(const QString& localMcsBasePath, EMCSControlTreeSegments segments);
    /// Ends the mirroring. What was mirrored stays in the local tree unless \a deleteLocalTree is set.
    virtual void DisconnectFromMCSControlTree(bool deleteLocalTree);
    /// True if all requested segments are mirrored; false if none is requested.
    virtual bool IsMCSControlTreeConnected() const;
    /// True if any of \a segments is requested.
    virtual bool AreMCSControlTreeSegmentsRequested(EMCSControlTreeSegments segments) const;
    /// True if all of \a segments are established; also for none.
    virtual bool AreMCSControlTreeSegmentsConnected(EMCSControlTreeSegments segments) const;
    /// Empty while no segments are requested.
    virtual QString GetLocalMCSBasePath();

    /// Connects to an MpxORV that the server has. \a localControlPath is empty if its segment is requested,
    /// and where to mirror it otherwise.
    /// \return the handle, owned by this client; null, with a trace, if that is not so, without a value-tree
    /// client, or if whoever heard of it has already deleted it.
    virtual MpxORVHandle* ConnectStaticMpxORV(QString localControlPath, const QString& name);
    /// The same for an MpxORV of this client's own, which the server makes on demand.
    virtual MpxORVHandle* CreateAndConnectDynamicMpxORV(QString localControlPath);
    virtual void DisconnectAllMpxORVs();  ///< Deletes all its handles.

    /// How the next dynamic MpxORVs are called; empty: MpxORVHandle::CreateUniqueMpxORVName().
    virtual void SetUniqueMpxORVName(QString name);
    virtual QString GetUniqueMpxORVName();

  protected:
    virtual MpxORVHandle* ConnectMpxORV(const QString& localControlPath, const QString& remoteBasePath,
                                        const QString& name, bool ownTic);

    void Update(Observable* source, TChangeCode code) override;

    /// True for a path that starts with "/"; nothing else is checked.
    static bool IsPathValid(const QString& path);

  private:
    friend class MpxORVHandle;

    void RegisterMpxORVHandle(MpxORVHandle* handle);
    void UnregisterMpxORVHandle(MpxORVHandle* handle);
    void NotifyMpxORVControlTreeConnection(MpxORVHandle* handle);
    void NotifyUponConnectionToServerAllTicsEstablished();
    void NotifyUponConnectionToServerChange();
    void NotifyUponMCSControlTreeConnectionChange();
    /// The name of the node of exactly one segment; empty for anything else.
    static QString GetRelativeControlTreeSegmentPath(EMCSControlTreeSegments segment);

    /// The lines that refusals are reported with.
    struct TraceLines {
        int pathForbidden;
        int pathMissing;
    };
    /// Connects to an MpxORV of \a segment, through the segment's tic if that is requested.
    MpxORVHandle* CheckPathAndConnect(EMCSControlTreeSegments segment, QString localControlPath,
                                      const QString& name, const TraceLines& lines);

    /// Whether \a segments may be connected below the path now; false with a trace.
    bool MayConnectToControlTree(const QString& localMcsBasePath, EMCSControlTreeSegments segments) const;
    bool AddSegmentTic(EMCSControlTreeSegments segment);
    class Disconnecting;
    /// All of a disconnection but telling of it. False if whoever heard of a step deleted this client.
    bool DropControlTree(bool deleteLocalTree);
    void RemoveSegmentTics();
    void CopyMembers(const MultiChannelServerClient& other);
    /// Deletes the handles and the own value-tree client, unless it is \a kept. False if whoever heard of
    /// that deleted this client.
    bool LetGoOfAllBut(const IVtClient* kept);
    /// These three tell nobody. Tics that are not removed stay with their client.
    void ForgetVtClient();
    void ForgetSegmentTics();
    void LetGo();

    IVtClient* m_pOwnVtClient = nullptr;    ///< owned, through VtClientCenter
    IVtClient* m_pVtClientToUse = nullptr;  ///< not owned; observed
    TChangeCode m_lastServerConnectionCode = serverclientcode::DisconnectedFromServer;
    QString m_localMcsBasePath;
    EMCSControlTreeSegments m_eRequestedControlTreeSegments = NoSegments;
    std::map<int, IVtTic*> m_segmentTics;  ///< by segment; owned by the value-tree client; observed
    TChangeCode m_lastControlTreeCode = serverclientcode::ControlTreeDisconnected;
    std::set<MpxORVHandle*> m_mpxORVHandles;  ///< owned
    QString m_serverAddress;
    int m_serverPort = 0;
    QString m_uniqueMpxORVName;
    // What a copy got is its source's and may be gone already when the copy lets go of it.
    bool m_areTicsCopied = false;
    bool m_areHandlesCopied = false;
    int m_disconnections = 0;  ///< of the control tree, under way
};
