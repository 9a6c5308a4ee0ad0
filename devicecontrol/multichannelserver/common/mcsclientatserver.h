// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

/// The server's own client: creates the control subtrees of dynamic MpxORVs, one per connected client, in
/// this process's tree instead of mirroring them. Needs no value-tree client. Main thread.
///
/// A handle owns the node that it created and deletes it when it goes.
class MCS_COMMON_EXPORT MCSClientAtServer : public MultiChannelServerClient {
  public:
    MCSClientAtServer();
    MCSClientAtServer(const MCSClientAtServer& other);
    MCSClientAtServer& operator=(const MCSClientAtServer& other);
    ~MCSClientAtServer() override;

    /// Creates the MpxORV with the name set last, or else the generated one. \a localControlPath has to be a
    /// path, though nothing is created there.
    /// \return the handle, owned by this client; null, with a trace, for a name that is taken.
    MpxORVHandle* CreateAndConnectDynamicMpxORV(QString localControlPath) override;

  protected:
    MpxORVHandle* ConnectMpxORV(const QString& localControlPath, const QString& remoteBasePath,
                                const QString& name, bool ownTic) override;
};
