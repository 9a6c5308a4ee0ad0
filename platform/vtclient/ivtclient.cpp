// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtclient.h>

#include <platform/vtclient/ieventloop.h>
#include <platform/vtclient/ivtaccess.h>

IVtTic::~IVtTic() = default;
IVtClient::~IVtClient() = default;

IVtAccess::~IVtAccess() = default;
void IVtAccess::SessionStarted(const VtPeer& /*peer*/) {}
void IVtAccess::SessionEnded(const VtPeer& /*peer*/) {}
void IVtAccess::ProvideNode(const VtPeer& /*peer*/, const QString& /*path*/) {}
void IVtAccess::NodeReleased(const VtPeer& /*peer*/, const QString& /*path*/) {}
void IVtAccess::ValueWritten(const VtPeer& /*peer*/, const QString& /*path*/) {}

vt::ITurnTaker::~ITurnTaker() = default;
vt::IEventLoop::~IEventLoop() = default;
