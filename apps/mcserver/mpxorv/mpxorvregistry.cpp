// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/mpxorvregistry.h>

#include <apps/common/mpxorvname.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/mpxorv/jobcontrol.h>
#include <apps/mcserver/mpxorv/staticmpxorvsettings.h>

#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/values/tree.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

CodedText TooMany() {
    return {ECode::TooManyMpxOrvs, {CodedText::Number(MpxOrvRegistry::MaxPerSession)}};
}

}  // namespace

MpxOrvRegistry::MpxOrvRegistry(MCSConfigData& config, MCSStatus& status, JobControl& jobs, ServerLog& log,
                               IClock& clock)
    : m_config(config), m_status(status), m_jobs(jobs), m_log(log), m_removalTimer(clock) {
    for (const EMpxOrvKind kind : {EMpxOrvKind::Static, EMpxOrvKind::Dynamic})
        values::Tree::Instance()->ProvideNode(MpxOrvPath::BasePath(kind));
}

MpxOrvRegistry::~MpxOrvRegistry() {
    for (Entry& entry : m_entries) {
        m_jobs.Leave(*entry.mpxOrv);
        entry.mpxOrv.reset();
        entry.handle.reset();
    }
}

void MpxOrvRegistry::LoadStatic(ICfg& cfg) {
    std::vector<CodedText> problems;
    for (const StaticMpxOrvSettings::Entry& settings : StaticMpxOrvSettings::Read(cfg, &problems)) {
        values::Tree::Instance()->ProvideNode(MpxOrvPath::NodePath(EMpxOrvKind::Static, settings.name));
        const MpxOrv::Defaults defaults{settings.policies, settings.comment,
                                        m_config.GetDefaultFrequencyForChannels(), settings.obeysBlanking};
        m_entries.push_back(
            {nullptr, std::make_unique<MpxOrv>(EMpxOrvKind::Static, settings.name, defaults, m_jobs)});
        m_entries.back().mpxOrv->GetFacts().RestoreBlankingSwitched(settings.switchedBy,
                                                                    settings.switchedSince);
        m_jobs.Enter(*m_entries.back().mpxOrv);
    }
    ShowCounts();
    for (const CodedText& problem : problems)
        m_log.Write(problem);
}

void MpxOrvRegistry::SaveStatic(ICfg& cfg) {
    std::vector<StaticMpxOrvSettings::Entry> entries;
    for (const Entry& entry : m_entries) {
        MpxOrv& mpxOrv = *entry.mpxOrv;
        if (mpxOrv.GetKind() == EMpxOrvKind::Static)
            entries.push_back({mpxOrv.GetName(), mpxOrv.GetPolicies(), mpxOrv.GetStatus().GetComment(),
                               mpxOrv.ObeysBlanking(), mpxOrv.GetFacts().GetBlankingSwitchedBy(),
                               mpxOrv.GetFacts().GetBlankingSwitchedSince()});
    }
    if (!entries.empty()) StaticMpxOrvSettings::Write(cfg, entries);
}

MpxOrv* MpxOrvRegistry::Find(EMpxOrvKind kind, const QString& name) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.mpxOrv->GetKind() == kind && entry.mpxOrv->GetName() == name;
    });
    return found != m_entries.end() ? found->mpxOrv.get() : nullptr;
}

CodedText MpxOrvRegistry::Join(EMpxOrvKind kind, const QString& name, const Client& client) {
    MpxOrv* mpxOrv = Find(kind, name);
    if (mpxOrv != nullptr && kind == EMpxOrvKind::Dynamic && !mpxOrv->HasClients()) {
        // This one is about to be removed. A client that asks now gets a new one, with the default policies.
        RemoveAbandoned();
        mpxOrv = nullptr;
    }
    if (mpxOrv == nullptr) {
        if (CountUsedBy(client.session) >= MaxPerSession) return TooMany();
        if (kind == EMpxOrvKind::Static) return {ECode::NoStaticMpxOrv, {name}};
        CodedText refusal = CreateDynamic(name, client);
        if (!refusal.IsEmpty()) return refusal;
        mpxOrv = Find(kind, name);
    }
    CodedText refusal = JoinRefusal(*mpxOrv, client.session, client.user);
    if (!refusal.IsEmpty()) return refusal;
    if (mpxOrv->AddClient(client.session, client.application))
        m_log.WriteFrom(client.source, {ECode::Uses, {client.peer, name}}, {name, client.peer.ToEnglish()});
    return {};
}

CodedText MpxOrvRegistry::JoinRefusal(const MpxOrv& mpxOrv, int session, const QString& user) const {
    if (!mpxOrv.HasClient(session) && CountUsedBy(session) >= MaxPerSession) return TooMany();
    if (mpxOrv.GetKind() == EMpxOrvKind::Dynamic && mpxOrv.GetUser() != user)
        return {ECode::OfAnotherUser, {mpxOrv.GetName()}};
    return {};
}

QString MpxOrvRegistry::NameOfTheOneUsedBy(int session) const {
    if (CountUsedBy(session) != 1) return QString();
    const auto used = std::find_if(m_entries.begin(), m_entries.end(), [session](const Entry& entry) {
        return entry.mpxOrv->HasClient(session);
    });
    return used->mpxOrv->GetName();
}

CodedText MpxOrvRegistry::CreateDynamic(const QString& name, const Client& client) {
    if (!IsMpxOrvName(name)) return ECode::NoMpxOrvName;
    if (CountOf(EMpxOrvKind::Dynamic) >= MaxDynamic)
        return {ECode::TooManyDynamic, {CodedText::Number(MaxDynamic)}};
    m_client.SetUniqueMpxORVName(name);
    std::unique_ptr<MpxORVHandle> handle(
        m_client.CreateAndConnectDynamicMpxORV(MpxOrvPath::NodePath(EMpxOrvKind::Dynamic, name)));
    if (handle == nullptr) return {ECode::NameTaken, {name}};
    const MpxOrv::Defaults defaults{m_config.GetDefaultDynMpxORVPolicy(), QString(),
                                    m_config.GetDefaultFrequencyForChannels()};
    auto mpxOrv = std::make_unique<MpxOrv>(EMpxOrvKind::Dynamic, name, defaults, m_jobs);
    mpxOrv->SetUser(client.user);
    m_jobs.Enter(*mpxOrv);
    m_entries.push_back({std::move(handle), std::move(mpxOrv)});
    ShowCounts();
    return {};
}

void MpxOrvRegistry::Release(EMpxOrvKind kind, const QString& name, int session) {
    MpxOrv* const mpxOrv = Find(kind, name);
    if (mpxOrv != nullptr && mpxOrv->ReleaseClient(session)) RemoveAbandonedSoon();
}

void MpxOrvRegistry::RemoveSession(int session) {
    for (const Entry& entry : m_entries)
        if (entry.mpxOrv->RemoveClient(session)) RemoveAbandonedSoon();
}

void MpxOrvRegistry::RemoveAbandonedSoon() {
    if (!m_removalTimer.IsRunning()) m_removalTimer.Start(0ms, [this] { RemoveAbandoned(); });
}

void MpxOrvRegistry::RemoveAbandoned() {
    std::vector<Entry> abandoned;
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        const bool isUsed = entry->mpxOrv->GetKind() == EMpxOrvKind::Static || entry->mpxOrv->HasClients();
        if (isUsed) {
            ++entry;
            continue;
        }
        abandoned.push_back(std::move(*entry));
        entry = m_entries.erase(entry);
    }
    for (Entry& entry : abandoned) {
        const QString name = entry.mpxOrv->GetName();
        m_jobs.Leave(*entry.mpxOrv);
        entry.mpxOrv.reset();
        entry.handle.reset();
        m_log.WriteFrom(name, {ECode::MpxOrvRemoved, {name}}, {name, QString()});
    }
    ShowCounts();
}

int MpxOrvRegistry::CountOf(EMpxOrvKind kind) const {
    return int(std::count_if(m_entries.begin(), m_entries.end(),
                             [kind](const Entry& entry) { return entry.mpxOrv->GetKind() == kind; }));
}

int MpxOrvRegistry::CountUsedBy(int session) const {
    return int(std::count_if(m_entries.begin(), m_entries.end(),
                             [session](const Entry& entry) { return entry.mpxOrv->HasClient(session); }));
}

void MpxOrvRegistry::ShowCounts() {
    if (auto* const value = m_status.GetStaticMpxORVsValue())
        value->SetValue(CountOf(EMpxOrvKind::Static), nullptr);
    if (auto* const value = m_status.GetDynamicMpxORVsValue())
        value->SetValue(CountOf(EMpxOrvKind::Dynamic), nullptr);
}
