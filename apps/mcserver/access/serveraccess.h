// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/access/textlimits.h>
#include <apps/mcserver/mpxorv/mpxorvregistry.h>

#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/vtaccessfile.h>
#include <platform/vtclient/vtattemptlimiter.h>

#include <map>
#include <optional>
#include <vector>

class ServerLog;

/// Who may come in to the server, and what each may do: by the access file where there is one, and by the
/// server's own rules on top, which no file can switch off. docs/server.md tells both. Main thread.
///
/// Without an access file, peers of this machine come in as operators. Peers of other machines, who get that
/// far only if the server was told to be insecure, may use MpxORVs and nothing else.
class ServerAccess : public IVtAccess {
  public:
    ServerAccess(MpxOrvRegistry& mpxOrvs, ServerLog& log, IClock& clock);

    /// From now on. \return the sessions of which it says something else than what they were admitted by.
    std::vector<int> UseFile(const VtAccessFile& file);

    bool NeedsCredentials() const override { return m_file.has_value(); }
    bool Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) override;
    bool MayRead(const VtPeer& peer, const QString& path) override;
    bool MayWrite(const VtPeer& peer, const QString& path, QString* reason) override;
    bool MayCreate(const VtPeer& peer, const QString& path, QString* reason) override;
    QStringList WritablePrefixes(const VtPeer& peer) override;
    void SessionStarted(const VtPeer& peer) override;
    void SessionEnded(const VtPeer& peer) override;
    QString ProvideNode(const VtPeer& peer, const QString& path) override;
    void NodeReleased(const VtPeer& peer, const QString& path) override;
    /// From MayWrite, which says yes, until this the peer is who does what happens.
    ///
    /// Writing a request of an MpxORV makes the peer a client of it, as asking for its node does: a peer that
    /// mirrors all MpxORVs has no other way to say that it uses one.
    void ValueWritten(const VtPeer& peer, const QString& path) override;
    int MaxTextLength(const VtPeer& peer, const QString& path) override;
    void SetTextLimits(const TextLimits& limits) { m_textLimits = limits; }

    /// The role that switches policies.
    static QString OperatorRole() { return QStringLiteral("operator"); }
    /// The role of peers of other machines without an access file.
    static QString ClientRole() { return QStringLiteral("client"); }

  private:
    CodedText InDetail(const CodedText& refusal, const QString& user) const;
    bool AdmitByFile(VtPeer& peer, const QString& user, const QString& token, CodedText* reason);
    std::optional<QString> FindRole(const VtPeer& peer, const QString& user, const QString& token,
                                    CodedText* reason);
    bool MaySlowlyCheck();
    void AdmitWithoutFile(VtPeer& peer);
    /// Whether file, or what holds without one, allows it.
    bool Allows(const VtPeer& peer, VtAccessFile::ERight right, const QString& path) const;
    QStringList PrefixesOf(const VtPeer& peer, VtAccessFile::ERight right) const;

    // Why a peer may not; nothing if it may.
    CodedText WriteRefusal(const VtPeer& peer, const QString& path) const;
    CodedText MpxOrvWriteRefusal(const VtPeer& peer, const QString& path, const MpxOrvPath& target) const;
    CodedText PolicyRefusal(const VtPeer& peer, const QString& path, const MpxOrvPath& target) const;
    bool IsUsedByUserOf(const VtPeer& peer, const MpxOrv& mpxOrv) const;
    CodedText UseRefusal(const VtPeer& peer, const MpxOrvPath& target) const;
    CodedText Join(const VtPeer& peer, const MpxOrvPath& target);
    void ShowPoliciesLocked(const VtPeer& peer, const MpxOrvPath& target) const;
    static bool IsRequest(const MpxOrvPath& target);

    void Log(const VtPeer& peer, const CodedText& text);

    MpxOrvRegistry& m_mpxOrvs;
    ServerLog& m_log;
    IClock& m_clock;
    TextLimits m_textLimits;
    ClockTimer m_actorEnd;  ///< for a write that was allowed, and then not made
    VtAttemptLimiter m_limiter;
    std::chrono::milliseconds m_slowChecksUntil{};  ///< when those that were allowed count no more
    std::optional<VtAccessFile> m_file;
    /// By session, what the file said of its user when it came.
    struct Admission {
        QString user;
        QString text;
    };
    std::map<int, Admission> m_admissions;
};
