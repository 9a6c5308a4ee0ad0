// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtaccess.h>

#include <vector>

/// Lets in whom the test wants in, and allows those everything.
class GateAccess final : public IVtAccess {
  public:
    bool NeedsCredentials() const override { return needsCredentials; }
    bool Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) override {
        peer.user = user;
        if (!wantedToken.isEmpty() && token != wantedToken) {
            *reason = QStringLiteral("the token of '%1' is wrong").arg(user);
            return false;
        }
        if (wantsCertificate && peer.certificateName.isEmpty()) {
            *reason = QStringLiteral("a client certificate is needed");
            return false;
        }
        return true;
    }
    bool MayRead(const VtPeer& /*peer*/, const QString& path) override {
        return unreadable.isEmpty() || !path.startsWith(unreadable);
    }
    bool MayWrite(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) override {
        return true;
    }
    bool MayCreate(const VtPeer& /*peer*/, const QString& /*path*/, QString* /*reason*/) override {
        return true;
    }
    QStringList WritablePrefixes(const VtPeer& /*peer*/) override { return {QStringLiteral("/")}; }
    void SessionStarted(const VtPeer& peer) override { started.push_back(peer); }
    void SessionEnded(const VtPeer& peer) override { ended.push_back(peer); }

    bool needsCredentials = false;
    bool wantsCertificate = false;
    QString wantedToken;
    QString unreadable;
    std::vector<VtPeer> started;
    std::vector<VtPeer> ended;
};
