// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtaccess.h>

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

/// Who may do what at a server of a test: everybody may do everything, unless the test says otherwise. Notes
/// who came and went, and what was asked for.
class TestAccess final : public IVtAccess {
  public:
    bool NeedsCredentials() const override { return needsCredentials; }
    bool Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) override {
        lastUser = user;
        lastToken = token;
        peer.user = user.isEmpty() ? QStringLiteral("guest") : user;
        peer.role = QStringLiteral("all");
        peer.hasShare = !isShareless;
        peer.isOperator = user.startsWith(QLatin1String("operator"));
        *reason = refusal;
        if (reason->isEmpty() && !wantedToken.isEmpty() && token != wantedToken)
            *reason = QStringLiteral("the token of '%1' is wrong").arg(user);
        if (reason->isEmpty() && wantsCertificate && peer.certificateName.isEmpty())
            *reason = QStringLiteral("a client certificate is needed");
        return reason->isEmpty();
    }
    bool MayRead(const VtPeer& /*peer*/, const QString& path) override { return !Holds(unreadable, path); }
    bool MayWrite(const VtPeer& /*peer*/, const QString& path, QString* reason) override {
        *reason = writeRefusal;
        return !Holds(unwritable, path);
    }
    bool MayCreate(const VtPeer& /*peer*/, const QString& path, QString* reason) override {
        *reason = createRefusal;
        return path.startsWith(creatable) && !Holds(uncreatable, path);
    }
    QStringList WritablePrefixes(const VtPeer& /*peer*/) override { return prefixes; }
    void SessionStarted(const VtPeer& peer) override { started.push_back(peer); }
    void SessionEnded(const VtPeer& peer) override {
        ended.push_back(peer);
        if (onEnded) onEnded(peer);
    }
    QString ProvideNode(const VtPeer& /*peer*/, const QString& path) override {
        provided.push_back(path);
        if (onProvide) onProvide(path);
        return Holds(unprovidable, path) ? provideRefusal : QString();
    }
    void NodeReleased(const VtPeer& /*peer*/, const QString& path) override { released.push_back(path); }
    void ValueWritten(const VtPeer& /*peer*/, const QString& path) override { written.push_back(path); }

    int MaxTextLength(const VtPeer& /*peer*/, const QString& /*path*/) override { return maxText; }

    // Who comes in.
    bool needsCredentials = false;
    bool wantsCertificate = false;
    bool isShareless = false;  ///< nobody's user or host has a bound of its own
    QString wantedToken;       ///< empty: any
    QString refusal;           ///< with which nobody comes in

    // What is forbidden: these, and all below.
    std::set<QString> unreadable, unwritable, uncreatable, unprovidable;
    QString creatable = QStringLiteral("/");  ///< with which a path begins that may be created
    int maxText = 1 << 20;                    ///< that is written; many a test writes what is long
    QString writeRefusal = QStringLiteral("not for you");
    QString createRefusal = QStringLiteral("nothing is created here");
    QString provideRefusal = QStringLiteral("nothing comes here");
    QStringList prefixes{QStringLiteral("/")};

    // What happened.
    QString lastUser, lastToken;
    std::vector<VtPeer> started, ended;
    std::vector<QString> provided, released, written;
    std::function<void(const VtPeer&)> onEnded;
    std::function<void(const QString&)> onProvide;

  private:
    static bool Holds(const std::set<QString>& paths, const QString& path) {
        return std::any_of(paths.begin(), paths.end(), [&path](const QString& above) {
            return path == above || above == QLatin1String("/") || path.startsWith(above + QLatin1Char('/'));
        });
    }
};
