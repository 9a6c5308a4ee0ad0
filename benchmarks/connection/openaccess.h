// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtaccess.h>

namespace bench {

/// Lets everybody do everything: what access rules cost is not measured here.
class OpenAccess final : public IVtAccess {
  public:
    bool NeedsCredentials() const override { return false; }
    bool Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) override;
    bool MayRead(const VtPeer& peer, const QString& path) override;
    bool MayWrite(const VtPeer& peer, const QString& path, QString* reason) override;
    bool MayCreate(const VtPeer& peer, const QString& path, QString* reason) override;
    QStringList WritablePrefixes(const VtPeer& peer) override;
};

}  // namespace bench
