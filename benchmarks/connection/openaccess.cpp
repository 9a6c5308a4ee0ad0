// SPDX-License-Identifier: Apache-2.0
#include "openaccess.h"

namespace bench {

bool OpenAccess::Admit(VtPeer& /*peer*/, const QString& /*user*/, const QString& /*token*/,
                       QString* /*reason*/) {
    return true;
}

bool OpenAccess::MayRead(const VtPeer& /*peer*/, const QString& /*path*/) {
    return true;
}

bool OpenAccess::MayWrite(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) {
    return true;
}

bool OpenAccess::MayCreate(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) {
    return true;
}

QStringList OpenAccess::WritablePrefixes(const VtPeer& /*peer*/) {
    return {QStringLiteral("/")};
}

}  // namespace bench
