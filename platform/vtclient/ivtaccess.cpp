// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtaccess.h>

// Said once more, where MinGW exports them.
constexpr decltype(IVtAccess::DefaultMaxText) IVtAccess::DefaultMaxText;
constexpr decltype(IVtAccess::ShortText) IVtAccess::ShortText;

IVtAccess::~IVtAccess() = default;
void IVtAccess::SessionStarted(const VtPeer& /*peer*/) {}
void IVtAccess::SessionEnded(const VtPeer& /*peer*/) {}
QString IVtAccess::ProvideNode(const VtPeer& /*peer*/, const QString& /*path*/) {
    return QString();
}
void IVtAccess::NodeReleased(const VtPeer& /*peer*/, const QString& /*path*/) {}
void IVtAccess::ValueWritten(const VtPeer& /*peer*/, const QString& /*path*/) {}
int IVtAccess::MaxTextLength(const VtPeer& /*peer*/, const QString& /*path*/) {
    return DefaultMaxText;
}
