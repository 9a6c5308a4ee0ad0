// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/access/serveraccess.h>

#include <apps/mcserver/log/peertext.h>
#include <apps/mcserver/log/savereport.h>
#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <algorithm>

using ERight = VtAccessFile::ERight;

namespace {

// Checks of tokens that take milliseconds: a tenth of the main thread's time at most.
constexpr std::chrono::milliseconds SlowCheckInterval(100);
constexpr int SlowCheckBurst = 20;

/// Where the ground transmitter suppression publishes what it reads.
QString SuppressionPath() {
    return QStringLiteral("/ORVServer");
}

CodedText NoRule() {
    return ECode::NoRule;
}

/// Puts \a refusal into \a reason. True if there is none.
bool IsAllowed(const CodedText& refusal, QString* reason) {
    if (reason != nullptr) *reason = refusal.ToEnglish();
    return refusal.IsEmpty();
}

}  // namespace

ServerAccess::ServerAccess(MpxOrvRegistry& mpxOrvs, ServerLog& log, IClock& clock)
    : m_mpxOrvs(mpxOrvs), m_log(log), m_clock(clock), m_actorEnd(clock), m_limiter([&clock] {
          return clock.Now();
      }) {}

std::vector<int> ServerAccess::UseFile(const VtAccessFile& file) {
    m_file = file;
    std::vector<int> changed;
    for (const auto& [session, admission] : m_admissions)
        if (m_file->GetTextOf(admission.user) != admission.text) changed.push_back(session);
    return changed;
}

bool ServerAccess::Admit(VtPeer& peer, const QString& user, const QString& token, QString* reason) {
    if (!m_file) {
        AdmitWithoutFile(peer);
        return true;
    }
    CodedText refusal;
    if (AdmitByFile(peer, user, token, &refusal)) return true;
    Log(peer, {ECode::NotAdmitted, {peertext::Coded(peer), InDetail(refusal, user)}});
    return IsAllowed(refusal, reason);
}

/// \a refusal of \a user as the administrator is told, who has to know whose token does not fit; whoever
/// guesses is not told which users there are. What is none of them may be a token in the wrong field.
CodedText ServerAccess::InDetail(const CodedText& refusal, const QString& user) const {
    if (refusal.GetCode() != ECode::WrongToken) return refusal;
    if (user.isEmpty()) return ECode::NoUser;
    if (m_file->GetTextOf(user).isEmpty()) return ECode::UnknownUser;
    return {ECode::WrongTokenOf, {user}};
}

bool ServerAccess::AdmitByFile(VtPeer& peer, const QString& user, const QString& token, CodedText* reason) {
    const bool isByCertificate = user.isEmpty() && token.isEmpty() && !peer.certificateName.isEmpty();
    const std::optional<QString> role = isByCertificate ? m_file->FindRoleOfCertificate(peer.certificateName)
                                                        : FindRole(peer, user, token, reason);
    if (!role) {
        if (isByCertificate) *reason = ECode::UnknownCertificate;
        return false;
    }
    peer.user = isByCertificate ? VtAccessFile::CertificateUser(peer.certificateName) : user;
    peer.role = *role;
    peer.isOperator = peer.role == OperatorRole();
    return true;
}

// A right token gets in whatever others tried from its address. Where a check takes long there are few: by
// address and user, and in all, since there are many addresses.
std::optional<QString> ServerAccess::FindRole(const VtPeer& peer, const QString& user, const QString& token,
                                              CodedText* reason) {
    const bool isSlow = m_file->IsSlow(user);
    if (isSlow) {
        const auto wait = std::chrono::ceil<std::chrono::seconds>(m_limiter.WaitOf(peer.address, user));
        if (wait > wait.zero()) {
            *reason = {ECode::WaitAfterFailures, {CodedText::Number(wait.count())}};
            return std::nullopt;
        }
        if (!MaySlowlyCheck()) {
            *reason = ECode::TooManyChecks;
            return std::nullopt;
        }
    }
    std::optional<QString> role = m_file->FindRole(user, token);
    if (!role) *reason = ECode::WrongToken;
    if (isSlow && role) m_limiter.Succeeded(peer.address, user);
    if (isSlow && !role) m_limiter.Failed(peer.address, user);
    return role;
}

bool ServerAccess::MaySlowlyCheck() {
    const auto until = std::max(m_clock.Now(), m_slowChecksUntil) + SlowCheckInterval;
    if (until > m_clock.Now() + SlowCheckBurst * SlowCheckInterval) return false;
    m_slowChecksUntil = until;
    return true;
}

void ServerAccess::AdmitWithoutFile(VtPeer& peer) {
    peer.role = peer.isLoopback ? OperatorRole() : ClientRole();
    peer.user = peer.role;
    peer.hasShare = !peer.isLoopback;
    peer.isOperator = peer.isLoopback;
}

QStringList ServerAccess::PrefixesOf(const VtPeer& peer, ERight right) const {
    if (m_file) return m_file->GetPrefixes(peer.role, right);
    const bool isOperator = peer.role == OperatorRole();
    const QString dynamic = MpxOrvPath::BasePath(EMpxOrvKind::Dynamic);
    const QString fixed = MpxOrvPath::BasePath(EMpxOrvKind::Static);
    switch (right) {
        case ERight::Read:
            return {QStringLiteral("/")};
        case ERight::Create:
            return {dynamic};
        case ERight::OwnPolicies:
            return {};
        case ERight::Write:
            break;
    }
    if (!isOperator) return {fixed};
    return {mcskeys::DefaultBasePath(mcskeys::Command), mcskeys::DefaultBasePath(mcskeys::Config), dynamic,
            fixed};
}

bool ServerAccess::Allows(const VtPeer& peer, ERight right, const QString& path) const {
    const QStringList prefixes = PrefixesOf(peer, right);
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&path](const QString& prefix) { return VtAccessFile::IsBelow(path, prefix); });
}

bool ServerAccess::MayRead(const VtPeer& peer, const QString& path) {
    return Allows(peer, ERight::Read, path);
}

bool ServerAccess::MayWrite(const VtPeer& peer, const QString& path, QString* reason) {
    const CodedText refusal = WriteRefusal(peer, path);
    if (!refusal.IsEmpty())
        Log(peer, {ECode::MayNotWrite, {peertext::Coded(peer), peertext::Shown(path), refusal}});
    if (refusal.IsEmpty()) {
        m_log.SetActor(peer,
                       [this, session = peer.session] { return m_mpxOrvs.NameOfTheOneUsedBy(session); });
        m_actorEnd.Start(std::chrono::milliseconds::zero(), [this] { m_log.SetActor({}); });
    }
    return IsAllowed(refusal, reason);
}

CodedText ServerAccess::WriteRefusal(const VtPeer& peer, const QString& path) const {
    if (VtAccessFile::IsBelow(path, mcskeys::DefaultBasePath(mcskeys::Status)))
        return ECode::StatusIsTheServers;
    if (path == mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Config), SaveReport::AnswerName()))
        return ECode::OnlyServerWrites;
    // A written input would blank, or release, what no transmitter does.
    if (VtAccessFile::IsBelow(path, SuppressionPath())) return ECode::OnlyServerWrites;
    if (const std::optional<MpxOrvPath> target = MpxOrvPath::Parse(path))
        return MpxOrvWriteRefusal(peer, path, *target);
    return Allows(peer, ERight::Write, path) ? CodedText() : NoRule();
}

bool ServerAccess::IsRequest(const MpxOrvPath& target) {
    return target.below.size() > 1 && target.below[0] == MpxOrvRequests::NodeName() &&
           target.below[1] != MpxOrvRequests::AnswerName() &&
           target.below[1] != MpxOrvRequests::AnswerCodeName();
}

CodedText ServerAccess::MpxOrvWriteRefusal(const VtPeer& peer, const QString& path,
                                           const MpxOrvPath& target) const {
    const QString part = target.below.value(0);
    const bool isBlanking = target.below == QStringList{MpxOrv::BlankingName()};
    if (part == mcskeys::Policy || isBlanking) return PolicyRefusal(peer, path, target);
    const bool isRequest = IsRequest(target);
    const bool isComment = target.below == QStringList{mcskeys::Status, mcskeys::Comment};
    if (!isRequest && !isComment) return ECode::OnlyServerWrites;
    const MpxOrv* const mpxOrv = m_mpxOrvs.Find(target.kind, target.name);
    const bool isGoing =
        mpxOrv != nullptr && mpxOrv->GetKind() == EMpxOrvKind::Dynamic && !mpxOrv->HasClients();
    if (mpxOrv == nullptr || isGoing) return ECode::NoSuchMpxOrv;
    if (mpxOrv->HasClient(peer.session)) return {};
    if (!isRequest) return ECode::OnlyClientsComment;
    const CodedText refusal = UseRefusal(peer, target);
    return refusal.IsEmpty() ? m_mpxOrvs.JoinRefusal(*mpxOrv, peer.session, peer.user) : refusal;
}

CodedText ServerAccess::PolicyRefusal(const VtPeer& peer, const QString& path,
                                      const MpxOrvPath& target) const {
    if (peer.role != OperatorRole()) return ECode::OnlyOperatorsSwitch;
    const MpxOrv* const mpxOrv = m_mpxOrvs.Find(target.kind, target.name);
    if (mpxOrv != nullptr && IsUsedByUserOf(peer, *mpxOrv) && !Allows(peer, ERight::OwnPolicies, path))
        return m_file ? CodedText(ECode::NotOwnPolicies, {peertext::Shown(peer.user)})
                      : CodedText(ECode::NotPoliciesInUse);
    return Allows(peer, ERight::Write, path) ? CodedText() : NoRule();
}

// Without a file there are no users to tell apart: the sessions of this machine are all of the same.
bool ServerAccess::IsUsedByUserOf(const VtPeer& peer, const MpxOrv& mpxOrv) const {
    if (mpxOrv.HasClient(peer.session)) return true;
    return std::any_of(m_admissions.begin(), m_admissions.end(), [&](const auto& admitted) {
        return admitted.second.user == peer.user && mpxOrv.HasClient(admitted.first);
    });
}

CodedText ServerAccess::UseRefusal(const VtPeer& peer, const MpxOrvPath& target) const {
    const ERight right = target.kind == EMpxOrvKind::Static ? ERight::Write : ERight::Create;
    return Allows(peer, right, MpxOrvPath::NodePath(target.kind, target.name)) ? CodedText() : NoRule();
}

CodedText ServerAccess::Join(const VtPeer& peer, const MpxOrvPath& target) {
    MpxOrvRegistry::Client client;
    client.session = peer.session;
    client.application =
        peer.application.isEmpty() ? QStringLiteral("a client") : peertext::Shown(peer.application);
    client.user = peer.user;
    client.peer = peertext::Coded(peer);
    client.source = VtAttemptLimiter::HostOf(peer.address);
    CodedText refusal = m_mpxOrvs.Join(target.kind, target.name, client);
    if (refusal.IsEmpty()) ShowPoliciesLocked(peer, target);
    return refusal;
}

// Whoever looks at them sees beforehand what would be refused. The clients of a dynamic one are all of one
// user.
void ServerAccess::ShowPoliciesLocked(const VtPeer& peer, const MpxOrvPath& target) const {
    MpxOrv* const mpxOrv = m_mpxOrvs.Find(target.kind, target.name);
    if (mpxOrv == nullptr || target.kind != EMpxOrvKind::Dynamic) return;
    const QString policies = mcskeys::Join(MpxOrvPath::NodePath(target.kind, target.name), mcskeys::Policy);
    mpxOrv->GetFacts().ShowPoliciesLocked(PolicyRefusal(peer, policies, target));
}

bool ServerAccess::MayCreate(const VtPeer& peer, const QString& path, QString* reason) {
    CodedText refusal;
    if (VtAccessFile::IsBelow(path, mcskeys::Root))
        refusal = {ECode::IsTheServers, {mcskeys::Root}};
    else if (VtAccessFile::IsBelow(path, SuppressionPath()))
        refusal = {ECode::IsTheServers, {SuppressionPath()}};
    else if (!Allows(peer, ERight::Create, path))
        refusal = NoRule();
    if (!refusal.IsEmpty())
        Log(peer, {ECode::MayNotCreate, {peertext::Coded(peer), peertext::Shown(path), refusal}});
    return IsAllowed(refusal, reason);
}

// Told in advance and for whole subtrees, so it tells more than there will be: what lies within and is not
// for this peer is refused when it writes.
QStringList ServerAccess::WritablePrefixes(const VtPeer& peer) {
    QStringList prefixes = PrefixesOf(peer, ERight::Write);
    const QString dynamic = MpxOrvPath::BasePath(EMpxOrvKind::Dynamic);
    for (const QString& prefix : PrefixesOf(peer, ERight::Create)) {
        if (VtAccessFile::IsBelow(prefix, dynamic))
            prefixes << prefix;
        else if (VtAccessFile::IsBelow(dynamic, prefix))
            prefixes << dynamic;
    }
    prefixes.removeDuplicates();
    return prefixes;
}

void ServerAccess::SessionStarted(const VtPeer& peer) {
    if (m_file) m_admissions[peer.session] = {peer.user, m_file->GetTextOf(peer.user)};
    Log(peer, {ECode::Connected, {peertext::Coded(peer), peertext::Shown(peer.role)}});
}

void ServerAccess::SessionEnded(const VtPeer& peer) {
    m_admissions.erase(peer.session);
    m_mpxOrvs.RemoveSession(peer.session);
    Log(peer, {ECode::Gone, {peertext::Coded(peer)}});
}

QString ServerAccess::ProvideNode(const VtPeer& peer, const QString& path) {
    const std::optional<MpxOrvPath> target = MpxOrvPath::Parse(path);
    if (!target || !target->below.isEmpty()) return QString();
    CodedText refusal = UseRefusal(peer, *target);
    if (refusal.IsEmpty()) refusal = Join(peer, *target);
    if (!refusal.IsEmpty())
        Log(peer, {ECode::MayNotUse, {peertext::Coded(peer), peertext::Shown(target->name), refusal}});
    return refusal.ToEnglish();
}

void ServerAccess::NodeReleased(const VtPeer& peer, const QString& path) {
    const std::optional<MpxOrvPath> target = MpxOrvPath::Parse(path);
    if (target && target->below.isEmpty()) m_mpxOrvs.Release(target->kind, target->name, peer.session);
}

void ServerAccess::ValueWritten(const VtPeer& peer, const QString& path) {
    m_actorEnd.Stop();
    m_log.SetActor({});
    const std::optional<MpxOrvPath> target = MpxOrvPath::Parse(path);
    if (!target || !IsRequest(*target)) return;
    const MpxOrv* const mpxOrv = m_mpxOrvs.Find(target->kind, target->name);
    if (mpxOrv != nullptr && !mpxOrv->HasClient(peer.session)) Join(peer, *target);
}

int ServerAccess::MaxTextLength(const VtPeer& /*peer*/, const QString& path) {
    const std::optional<MpxOrvPath> target = MpxOrvPath::Parse(path);
    const bool isComment = target && target->below == QStringList{mcskeys::Status, mcskeys::Comment};
    return isComment ? m_textLimits.comment : m_textLimits.text;
}

void ServerAccess::Log(const VtPeer& peer, const CodedText& text) {
    m_log.WriteFrom(VtAttemptLimiter::HostOf(peer.address), text, {QString(), peertext::Name(peer)});
}
