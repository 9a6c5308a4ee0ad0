// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/jobcontrol.h>

#include <apps/mcserver/device/iorvdevice.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/mpxorv/ituningguard.h>

#include <devicecontrol/multichannelserver/common/mcspolicy.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <cmath>
#include <vector>

namespace {

const MCSPolicy& PolicyFor(ERequest request) {
    switch (request) {
        case ERequest::Frequency:
            return MCSPolicy::MAYALTERFREQSINGLE;
        case ERequest::BecomeMaster:
            return MCSPolicy::MAYBEJOBMASTER;
        case ERequest::RestartJob:
            return MCSPolicy::MAYRESTARTJOB;
        case ERequest::BuiltInTest:
            return MCSPolicy::MAYBIT;
        case ERequest::Calibrate:
            return MCSPolicy::MAYCAL;
        case ERequest::ReportInterval:
            break;
    }
    return MCSPolicy::MAYALTERDEVICESETTINGS;
}

CodedText Needs(const MCSPolicy& policy, const CodedText& by = {}) {
    return {ECode::NeedsPolicy, {policy.GetName(), by}};
}

/// What the MpxORV that is so called does or has.
ServerLog::Origin Of(const MpxOrv& mpxOrv) {
    return {mpxOrv.GetName(), QString()};
}

/// With all digits down to the hertz; six, as elsewhere, would hide some.
QString TunedFrequencyText(double hz) {
    constexpr double MegaHertz = 1000000.0;
    constexpr int Digits = 10;
    return QStringLiteral("%1 MHz").arg(QString::number(hz / MegaHertz, 'g', Digits));
}

CodedText OperationTypeOf(bool isMaster, double hz) {
    const CodedText tuned = hz > 0 ? CodedText(ECode::FfmAt, {TunedFrequencyText(hz)}) : CodedText();
    if (isMaster)
        return hz > 0 ? CodedText(ECode::Both, {ECode::JobMaster, tuned}) : CodedText(ECode::JobMaster);
    return hz > 0 ? tuned : CodedText::Word(QStringLiteral("Idle"));
}

template <class V, class T>
void Set(V* value, const T& content) {
    if (value != nullptr) value->SetValue(content, nullptr);
}

}  // namespace

JobControl::JobControl(IOrvDevice& device, MCSStatus& status, ServerLog& log, IClock& clock)
    : m_device(device), m_status(status), m_log(log), m_clock(clock) {}

JobControl::Outcome JobControl::DoneUnless(const CodedText& refusal, const CodedText& text) {
    return refusal.IsEmpty() ? Done(text) : Refused(refusal);
}

void JobControl::OnRequest(MpxOrv& mpxOrv, ERequest request) {
    const Outcome outcome = CarryOut(mpxOrv, request);
    MpxOrvRequests& requests = mpxOrv.GetRequests();
    if (outcome.isDone)
        requests.Grant(request);
    else
        requests.TakeBack(request);
    const bool isUnsupervised = outcome.isDone && request == ERequest::Frequency && m_guard != nullptr &&
                                m_guard->IsUnsupervised(requests.GetFrequency());
    const ECode done = isUnsupervised ? ECode::DoneUnsupervised : ECode::Done;
    const CodedText answer(outcome.isDone ? done : ECode::Refused, {outcome.text});
    ShowStatus(mpxOrv);
    requests.Answer(answer);
    LogOutcome(mpxOrv, request, outcome, answer);
}

void JobControl::LogOutcome(const MpxOrv& mpxOrv, ERequest request, const Outcome& outcome,
                            const CodedText& answer) {
    const QString name = mpxOrv.GetName();
    if (!outcome.isDone)
        m_log.WriteFrom(name, {ECode::RequestRefused, {name, answer}}, Of(mpxOrv));
    else if (outcome.text.GetCode() == ECode::TunedTo)
        m_log.WriteFrom(name,
                        {answer.GetCode() == ECode::Done ? ECode::Tuned : ECode::TunedUnsupervised,
                         {outcome.text.GetArguments().front(), name}},
                        Of(mpxOrv));
    else if (request != ERequest::BecomeMaster)  // who is master is told by itself
        m_log.WriteFrom(name, {ECode::RequestDone, {name, answer}}, Of(mpxOrv));
}

JobControl::Outcome JobControl::CarryOut(MpxOrv& mpxOrv, ERequest request) {
    // Giving up takes no policy and no device.
    if (request == ERequest::BecomeMaster && m_master == &mpxOrv) {
        SetMaster(nullptr);
        return Done(ECode::WasMaster);
    }
    if (!mpxOrv.Has(PolicyFor(request))) return Refused(Needs(PolicyFor(request)));
    const CodedText refusal = DeviceRefusal();
    if (!refusal.IsEmpty()) return Refused(refusal);
    switch (request) {
        case ERequest::Frequency:
            return Tune(mpxOrv);
        case ERequest::BecomeMaster:
            return BecomeMaster(mpxOrv);
        case ERequest::RestartJob:
            return RestartJob(mpxOrv);
        case ERequest::BuiltInTest:
            return DoneUnless(m_device.RunBuiltInTest(), ECode::BuiltInTestStarted);
        case ERequest::Calibrate:
            return DoneUnless(m_device.Calibrate(), ECode::CalibrationStarted);
        case ERequest::ReportInterval:
            break;
    }
    return SetReportInterval(mpxOrv);
}

JobControl::Outcome JobControl::Tune(MpxOrv& mpxOrv) {
    const double hz = mpxOrv.GetRequests().GetFrequency();
    if (IsUnderMaster(mpxOrv)) return WatchMaster(mpxOrv, hz);
    return TuneChannel(mpxOrv, hz);
}

JobControl::Outcome JobControl::WatchMaster(MpxOrv& mpxOrv, double hz) {
    if (!mpxOrv.Has(MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES)) return Refused(MasterRefusal());
    if (!IsInMasterRange(hz))
        return Refused(
            {ECode::MasterSinceNotInRange, {m_master->GetName(), MasterSinceText(), TunedFrequencyText(hz)}});
    const CodedText refusal = GuardRefusal(mpxOrv, hz);
    if (!refusal.IsEmpty()) return Refused(refusal);
    Untune(mpxOrv);
    m_tunings[&mpxOrv].hz = hz;
    return Done({ECode::ReadFromMaster, {TunedFrequencyText(hz), m_master->GetName()}});
}

JobControl::Outcome JobControl::TuneChannel(MpxOrv& mpxOrv, double hz) {
    CodedText refusal = GuardRefusal(mpxOrv, hz);
    if (!refusal.IsEmpty()) return Refused(refusal);
    const auto found = m_tunings.find(&mpxOrv);
    const bool hadChannel = found != m_tunings.end() && found->second.hasChannel;
    int channel = hadChannel ? found->second.channel : 0;
    if (!hadChannel) refusal = m_device.AllocateChannel(&channel);
    if (!refusal.IsEmpty()) return Refused(refusal);
    refusal = m_device.Tune(channel, hz);
    if (!refusal.IsEmpty()) {
        if (!hadChannel) m_device.FreeChannel(channel);
        return Refused(refusal);
    }
    m_tunings[&mpxOrv] = {hz, true, channel};
    if (m_master == &mpxOrv) CheckWatchers({ECode::WasTunedTo, {mpxOrv.GetName(), TunedFrequencyText(hz)}});
    return Done({ECode::TunedTo, {TunedFrequencyText(hz)}});
}

JobControl::Outcome JobControl::BecomeMaster(MpxOrv& mpxOrv) {
    if (m_master != nullptr) return Refused(MasterRefusal());
    SetMaster(&mpxOrv);
    return Done(ECode::IsMasterNow);
}

JobControl::Outcome JobControl::RestartJob(MpxOrv& mpxOrv) {
    if (IsUnderMaster(mpxOrv)) return Refused(MasterRefusal());
    return DoneUnless(m_device.RestartJob(), ECode::JobStartsAnew);
}

JobControl::Outcome JobControl::SetReportInterval(MpxOrv& mpxOrv) {
    const std::chrono::milliseconds interval = mpxOrv.GetRequests().GetReportInterval();
    if (interval <= interval.zero()) return Refused(ECode::NoReportInterval);
    return DoneUnless(m_device.SetReportInterval(interval),
                      {ECode::ReportsEvery, {CodedText::Number(interval.count())}});
}

CodedText JobControl::DeviceRefusal(const CodedText& by) const {
    if (!m_device.IsOnline()) return {ECode::DeviceOffline, {by}};
    if (m_device.GetBootState() == BootReady) return {};
    return {ECode::DeviceNotReady, {CodedText::Word(m_status.GetBootStateAsString()), by}};
}

CodedText JobControl::GuardRefusal(MpxOrv& mpxOrv, double hz) const {
    return m_guard != nullptr ? m_guard->RefusalOf(mpxOrv, hz) : CodedText();
}

QString JobControl::MasterSinceText() const {
    return m_masterSince.toString(QStringLiteral("HH:mm:ss"));
}

CodedText JobControl::MasterRefusal() const {
    return {ECode::MasterSince, {m_master->GetName(), MasterSinceText()}};
}

bool JobControl::IsUnderMaster(const MpxOrv& mpxOrv) const {
    return m_master != nullptr && m_master != &mpxOrv && mpxOrv.Has(MCSPolicy::ISSLAVETOMASTERJOB);
}

bool JobControl::IsInMasterRange(double hz) const {
    const auto master = m_tunings.find(m_master);
    if (master == m_tunings.end()) return false;
    return std::abs(hz - master->second.hz) <= m_device.GetBandwidth() / 2.0;
}

bool JobControl::IsWatching(MpxOrv& mpxOrv) const {
    const auto tuning = m_tunings.find(&mpxOrv);
    return tuning != m_tunings.end() && !tuning->second.hasChannel;
}

void JobControl::SetMaster(MpxOrv* mpxOrv) {
    MpxOrv* const before = m_master;
    m_master = mpxOrv;
    m_masterSince = m_clock.TimeOfDay();
    m_masterFacts.Show(mpxOrv != nullptr ? mpxOrv->GetName() : QString(), m_clock);
    Set(m_status.GetMcsMasterJobControlledValue(), mpxOrv != nullptr);
    if (before != nullptr) {
        const CodedText text(ECode::IsMasterNoMore, {before->GetName()});
        m_log.WriteFrom(before->GetName(), text, Of(*before));
        ShowStatus(*before);
        CheckWatchers(text);
    }
    if (mpxOrv != nullptr)
        m_log.WriteFrom(mpxOrv->GetName(), {ECode::IsMaster, {mpxOrv->GetName()}}, Of(*mpxOrv));
}

void JobControl::Untune(MpxOrv& mpxOrv) {
    const auto tuning = m_tunings.find(&mpxOrv);
    if (tuning == m_tunings.end()) return;
    const Tuning before = tuning->second;
    m_tunings.erase(tuning);
    if (before.hasChannel) m_device.FreeChannel(before.channel);
}

void JobControl::CheckWatchers(const CodedText& reason) {
    std::vector<MpxOrv*> ended;
    for (const auto& [mpxOrv, tuning] : m_tunings)
        if (!tuning.hasChannel && (m_master == nullptr || !IsInMasterRange(tuning.hz)))
            ended.push_back(mpxOrv);
    for (MpxOrv* mpxOrv : ended) {
        Untune(*mpxOrv);
        End(*mpxOrv, reason);
    }
}

void JobControl::End(MpxOrv& mpxOrv, const CodedText& reason) {
    Tell(mpxOrv, {ECode::Ended, {reason}});
}

void JobControl::Tell(MpxOrv& mpxOrv, const CodedText& answer) {
    const bool isEnd = answer.GetCode() == ECode::Ended;
    ShowStatus(mpxOrv);
    mpxOrv.GetRequests().Answer(answer);
    m_log.WriteFrom(mpxOrv.GetName(),
                    {isEnd ? ECode::RequestEnded : ECode::RequestDone, {mpxOrv.GetName(), answer}},
                    Of(mpxOrv));
}

void JobControl::Enter(MpxOrv& mpxOrv) {
    m_mpxOrvs.insert(&mpxOrv);
    mpxOrv.GetRequests().ShowReportInterval(m_device.GetReportInterval());
}

void JobControl::Leave(MpxOrv& mpxOrv) {
    m_mpxOrvs.erase(&mpxOrv);
    Untune(mpxOrv);
    if (m_master == &mpxOrv) SetMaster(nullptr);
}

void JobControl::DeviceChanged() {
    const CodedText reason = DeviceRefusal(m_log.ByActor(ECode::LetGoBy));
    if (reason.IsEmpty()) return;
    std::map<MpxOrv*, Tuning> ended;
    ended.swap(m_tunings);
    if (m_master != nullptr) ended[m_master];
    for (const auto& [mpxOrv, tuning] : ended)
        if (tuning.hasChannel) m_device.FreeChannel(tuning.channel);
    if (m_master != nullptr) SetMaster(nullptr);
    for (const auto& [mpxOrv, tuning] : ended)
        End(*mpxOrv, reason);
}

void JobControl::OperationModeChanged() {
    if (m_master != nullptr) ShowStatus(*m_master);
}

void JobControl::GuardChanged() {
    std::vector<std::pair<MpxOrv*, CodedText>> refused;
    for (const auto& [mpxOrv, tuning] : m_tunings) {
        const CodedText refusal = GuardRefusal(*mpxOrv, tuning.hz);
        if (!refusal.IsEmpty()) refused.emplace_back(mpxOrv, refusal);
    }
    for (const auto& [mpxOrv, refusal] : refused) {
        if (m_tunings.count(mpxOrv) == 0) continue;  // it watched a master who has just lost its frequency
        EndTuning(*mpxOrv, refusal);
    }
}

void JobControl::EndTuning(MpxOrv& mpxOrv, const CodedText& reason) {
    Untune(mpxOrv);
    End(mpxOrv, reason);
    if (m_master == &mpxOrv) CheckWatchers({ECode::LostItsFrequency, {mpxOrv.GetName()}});
}

void JobControl::ChannelLost(int channel, const CodedText& reason) {
    for (const auto& [mpxOrv, tuning] : m_tunings)
        if (tuning.hasChannel && tuning.channel == channel) return EndTuning(*mpxOrv, reason);
}

// The device has one interval, whoever set it.
void JobControl::ReportIntervalChanged() {
    for (MpxOrv* mpxOrv : m_mpxOrvs)
        mpxOrv->GetRequests().ShowReportInterval(m_device.GetReportInterval());
}

void JobControl::TellTuned(ECode kind, const std::function<CodedText(double hz)>& reasonOf) {
    for (const auto& [mpxOrv, tuning] : m_tunings) {
        const CodedText reason = reasonOf(tuning.hz);
        if (!reason.IsEmpty()) Tell(*mpxOrv, {kind, {reason}});
    }
}

void JobControl::OnPoliciesChanged(MpxOrv& mpxOrv) {
    QStringList given;
    const QStringList taken = mpxOrv.TakeChangedPolicies(&given);
    LogPolicies(mpxOrv, given, taken);
    m_onSwitched(mpxOrv);
    if (EndWithoutRight(mpxOrv) || taken.isEmpty() || m_log.GetActor().isEmpty()) return;
    // Whoever uses it would notice at the next request, and not know whom to ask.
    const QString lost = taken.join(QStringLiteral(", "));
    End(mpxOrv, {ECode::RightTaken, {lost, m_log.ByActor(ECode::TakenAwayBy)}});
}

void JobControl::LogPolicies(MpxOrv& mpxOrv, const QStringList& given, const QStringList& taken) {
    const QString name = mpxOrv.GetName();
    const CodedText by = m_log.ByActor();
    m_log.WriteFrom(name, {ECode::Policies, {name, mpxOrv.GetPolicies().ToString(), by}}, Of(mpxOrv));
    for (const QString& policy : given)
        m_log.WriteFrom(name, {ECode::PolicyGiven, {name, policy, by}}, Of(mpxOrv));
    for (const QString& policy : taken)
        m_log.WriteFrom(name, {ECode::PolicyTaken, {name, policy, by}}, Of(mpxOrv));
}

bool JobControl::EndWithoutRight(MpxOrv& mpxOrv) {
    const bool endsMaster = m_master == &mpxOrv && !mpxOrv.Has(MCSPolicy::MAYBEJOBMASTER);
    const CodedText by = m_log.ByActor(ECode::TakenAwayBy);
    if (endsMaster) {
        SetMaster(nullptr);
        End(mpxOrv, Needs(MCSPolicy::MAYBEJOBMASTER, by));
    }
    const bool endsWatching = IsWatching(mpxOrv) && !mpxOrv.Has(MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES);
    if (endsWatching) {
        Untune(mpxOrv);
        End(mpxOrv, Needs(MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES, by));
    }
    return endsMaster || endsWatching;
}

void JobControl::OnBlankingSwitched(MpxOrv& mpxOrv) {
    mpxOrv.GetFacts().ShowBlankingSwitched(m_log.GetActor(), m_clock);
    const ECode code = mpxOrv.ObeysBlanking() ? ECode::ObeysBlanking : ECode::IgnoresBlanking;
    m_log.Write({code, {mpxOrv.GetName(), m_log.ByActor()}}, Of(mpxOrv));
    m_onSwitched(mpxOrv);
    if (!m_log.GetActor().isEmpty()) TellBlankingSwitched(mpxOrv);
    GuardChanged();  // last: what it ends is what people have to know
}

/// Whoever uses it would not know why a keyed frequency is granted, or not any more.
void JobControl::TellBlankingSwitched(MpxOrv& mpxOrv) {
    if (mpxOrv.ObeysBlanking())
        Tell(mpxOrv, {ECode::Done, {{ECode::ProtectionWanted, {m_log.ByActor()}}}});
    else
        Tell(mpxOrv, {ECode::Ended, {{ECode::ProtectionEnded, {m_log.ByActor(ECode::TakenAwayBy)}}}});
}

void JobControl::ShowStatus(MpxOrv& mpxOrv) {
    const auto tuning = m_tunings.find(&mpxOrv);
    const bool isTuned = tuning != m_tunings.end();
    const bool isMaster = m_master == &mpxOrv;
    MCSMpxORVStatus& status = mpxOrv.GetStatus();
    mpxOrv.GetFacts().ShowTuned(isTuned ? tuning->second.hz : 0.0, m_clock);
    if (isMaster) m_masterFacts.ShowRange(isTuned ? tuning->second.hz : 0.0, m_device.GetBandwidth());
    Set(status.GetIsMasterValue(), isMaster);
    Set(status.GetIsWatchingMasterValue(), isTuned && !tuning->second.hasChannel);
    mpxOrv.ShowOperationType(OperationTypeOf(isMaster, isTuned ? tuning->second.hz : 0.0));
    const EOperationMode mode = isTuned    ? OperationFfm
                                : isMaster ? m_device.GetOperationMode()
                                           : OperationIdle;
    if (status.GetOperationModeValue() != nullptr) status.GetOperationModeValue()->Select(mode, nullptr);
}
