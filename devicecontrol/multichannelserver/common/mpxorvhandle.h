// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/values/observable.h>

#include <QtCore/QString>

#include <memory>

class IVtTic;
class MCSPolicySet;
class MultiChannelServerClient;

namespace values {
class Node;
}

/// One multiplexed device of the server that an application uses: where its control subtree is, whether that
/// is connected, and its policies. Main thread.
///
/// Made by a MultiChannelServerClient, which owns it; the application may delete it earlier. Deleting it ends
/// what it mirrors or created. Whether its control tree is connected is told to the client's observers, but
/// not that it ends with the handle. (fixed: silent-handle)
///
/// A copy shares tic, node and policies with its source and is neither known to the client nor told of
/// changes (fixed: copies-observe-nothing). It must not outlive its source or what the source has connected,
/// and deleting it disconnects both.
class MCS_COMMON_EXPORT MpxORVHandle : public IObserver {  // fixed: virtual-order
  public:
    MpxORVHandle(const MpxORVHandle& other);
    MpxORVHandle& operator=(const MpxORVHandle&) = delete;
    ~MpxORVHandle() override;

    /// Where the control subtree is in this process's tree. At the server this is the path of the MpxORV's
    /// parent.
    virtual QString GetLocalControlPath();
    /// The node at the local control path; null while there is none.
    virtual values::Node* GetControlNode() const;
    virtual QString GetName();  ///< The name of the MpxORV at the server, without a path.
    /// True while the handle's tic is established. Without one, whenever the subtree is to come from a
    /// server: through the tic of its segment; but also where a tic of the handle's own was refused, which is
    /// traced, and nothing will come at all. (fixed: connected-without-a-tic)
    virtual bool IsControlTreeConnected() const;
    /// "/" and the name, not the remote base path. (fixed: remote-path-is-the-name)
    virtual QString GetRemoteMpxORVBasePath();
    /// The policies, shown in the tree as switches below the local control path from the first call on. Owned
    /// by the handle. Should whoever hears of the switches delete the handle, an empty set that is nobody's.
    virtual MCSPolicySet& GetPolicySet();

    /// "MpxORV", the machine's name, "_" and the application's name.
    static QString CreateUniqueMpxORVName();

  protected:
    /// Registers the handle with \a client, which must outlive it. \a ownTic: the handle mirrors its subtree
    /// through a tic of its own, and deletes its local subtree in the end.
    MpxORVHandle(MultiChannelServerClient& client, bool ownTic);

    void Update(Observable* source, TChangeCode code) override;

    /// Connects at a client: mirrors remoteBasePath + "/" + name to the local path, or relies on another tic
    /// that does.
    void ConnectMpxORVControlTreeRemote(const QString& localControlPath, const QString& remoteBasePath,
                                        const QString& name, bool ownTic);
    /// Connects at the server: creates the node localBasePath + "/" + name. The local control path and the
    /// flag are not read.
    void ConnectMpxORVControlTreeLocal(const QString& localControlPath, const QString& localBasePath,
                                       const QString& name, bool ownTic);
    void DisconnectMpxORVControlTree();

  private:
    friend class MCSClientAtServer;
    friend class MultiChannelServerClient;

    /// Expires when the handle is deleted: whoever is told of a change may do that.
    std::weak_ptr<const bool> GetLife() const { return m_life; }
    void AddControlTic(const QString& ticText);
    void RemoveControlTic();
    void DeleteControlNode();

    MultiChannelServerClient& m_MCSClient;
    QString m_localControlPath;
    QString m_remoteBasePath;  ///< empty if connected locally
    QString m_name;
    IVtTic* m_pControlTic = nullptr;         ///< owned by the value-tree client
    values::Node* m_pControlNode = nullptr;  ///< made by a local connection; deleted by the handle
    bool m_hasOwnTic;
    TChangeCode m_lastControlTreeCode;
    std::shared_ptr<MCSPolicySet> m_policySet;  ///< null until asked for; shared with copies
    std::shared_ptr<const bool> m_life;         ///< never shared
};
