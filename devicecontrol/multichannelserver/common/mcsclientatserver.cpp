// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsclientatserver.h>

#include <devicecontrol/multichannelserver/common/connection/serverclientdetail.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

using serverclientdetail::TraceFailure;

MCSClientAtServer::MCSClientAtServer() = default;
MCSClientAtServer::MCSClientAtServer(const MCSClientAtServer& other) = default;
MCSClientAtServer& MCSClientAtServer::operator=(const MCSClientAtServer& other) = default;
MCSClientAtServer::~MCSClientAtServer() = default;

MpxORVHandle* MCSClientAtServer::CreateAndConnectDynamicMpxORV(QString localControlPath) {
    const QString uniqueName = GetUniqueMpxORVName();
    const QString name = uniqueName.isEmpty() ? MpxORVHandle::CreateUniqueMpxORVName() : uniqueName;
    const QString remoteBasePath = mcskeys::DefaultBasePath(mcskeys::DynamicMpxORVs);
    if (serverclientdetail::FindNode(remoteBasePath + QLatin1Char('/') + name) != nullptr) {
        TraceFailure("A DynMpx subtree for client id %1 already exists.", name, 528);
        return nullptr;
    }
    return ConnectMpxORV(localControlPath, remoteBasePath, name, false);
}

// What it reports names the base class, and its file. (fixed: base-class-texts)
MpxORVHandle* MCSClientAtServer::ConnectMpxORV(const QString& localControlPath, const QString& remoteBasePath,
                                               const QString& name, bool ownTic) {
    if (!IsPathValid(localControlPath)) {
        TraceFailure(serverclientdetail::InvalidLocalPath, 541);
        return nullptr;
    }
    if (!IsPathValid(remoteBasePath)) {
        TraceFailure(serverclientdetail::InvalidRemotePath, 546);
        return nullptr;
    }
    auto* const handle = new MpxORVHandle(*this, ownTic);  // owned by the set in which it registers
    const std::weak_ptr<const bool> life = handle->GetLife();
    handle->ConnectMpxORVControlTreeLocal(localControlPath, remoteBasePath, name, ownTic);
    return life.expired() ? nullptr : handle;
}
