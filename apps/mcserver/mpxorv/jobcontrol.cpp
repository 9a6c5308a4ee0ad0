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

QString Needs(const MCSPolicy& policy) {
    return QStringLiteral("needs %1").arg(policy.GetName());
}

/// With all digits down to the hertz; six, as elsewhere, would hide some.
QString FrequencyText(double hz) {
    constexpr double MegaHertz = 1000000.0;
    constexpr int Digits = 10;
    return QStringLiteral("%1 MHz").arg(QString::number(hz / MegaHertz, 'g', Digits));
}

template <class V, class T>
void Set(V* value, const T& content) {
    if (value != nullptr) value->SetValue(content, nullptr);
}

}  // namespace

JobControl::JobControl(IOrvDevice& device, MCSStatus& status, ServerLog& log, IClock& clock)
    : m_device(device), m_status(status), m_log(log), m_clock(clock) {}

JobControl::Outcome JobControl::DoneUnless(const QString& refusal, const QString& text) {
    return refusal.isEmpty() ? Done(text) : Refused(refusal);
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
    const QString done = isUnsupervised ? QStringLiteral("done, not supervised: ") : QStringLiteral("done: ");
    const QString answer = (outcome.isDone ? done : QStringLiteral("refused: ")) + outcome.text;
    ShowStatus(mpxOrv);
    requests.Answer(answer);
    if (!outcome.isDone)
        m_log.WriteFrom(mpxOrv.GetName(), QStringLiteral("%1: %2").arg(mpxOrv.GetName(), answer));
}

JobControl::Outcome JobControl::CarryOut(MpxOrv& mpxOrv, ERequest request) {
    // Giving up takes no policy and no device.
    if (request == ERequest::BecomeMaster && m_master == &mpxOrv) {
        SetMaster(nullptr);
        return Done(QStringLiteral("is master no more"));
    }
    if (!mpxOrv.Has(PolicyFor(request))) return Refused(Needs(PolicyFor(request)));
    const QString refusal = DeviceRefusal();
    if (!refusal.isEmpty()) return Refused(refusal);
    switch (request) {
        case ERequest::Frequency:
            return Tune(mpxOrv);
        case ERequest::BecomeMaster:
            return BecomeMaster(mpxOrv);
        case ERequest::RestartJob:
            return RestartJob(mpxOrv);
        case ERequest::BuiltInTest:
            return DoneUnless(m_device.RunBuiltInTest(), QStringLiteral("built-in test started"));
        case ERequest::Calibrate:
            return DoneUnless(m_device.Calibrate(), QStringLiteral("calibration started"));
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
            QStringLiteral("%1, and %2 is not in its range").arg(MasterRefusal(), FrequencyText(hz)));
    const QString refusal = GuardRefusal(mpxOrv, hz);
    if (!refusal.isEmpty()) return Refused(refusal);
    Untune(mpxOrv);
    m_tunings[&mpxOrv].hz = hz;
    return Done(
        QStringLiteral("%1 is read from the range of %2").arg(FrequencyText(hz), m_master->GetName()));
}

JobControl::Outcome JobControl::TuneChannel(MpxOrv& mpxOrv, double hz) {
    QString refusal = GuardRefusal(mpxOrv, hz);
    if (!refusal.isEmpty()) return Refused(refusal);
    const auto found = m_tunings.find(&mpxOrv);
    const bool hadChannel = found != m_tunings.end() && found->second.hasChannel;
    int channel = hadChannel ? found->second.channel : 0;
    if (!hadChannel) refusal = m_device.AllocateChannel(&channel);
    if (!refusal.isEmpty()) return Refused(refusal);
    refusal = m_device.Tune(channel, hz);
    if (!refusal.isEmpty()) {
        if (!hadChannel) m_device.FreeChannel(channel);
        return Refused(refusal);
    }
    m_tunings[&mpxOrv] = {hz, true, channel};
    if (m_master == &mpxOrv)
        CheckWatchers(QStringLiteral("%1 was tuned to %2").arg(mpxOrv.GetName(), FrequencyText(hz)));
    return Done(QStringLiteral("tuned to %1").arg(FrequencyText(hz)));
}

JobControl::Outcome JobControl::BecomeMaster(MpxOrv& mpxOrv) {
    if (m_master != nullptr) return Refused(MasterRefusal());
    SetMaster(&mpxOrv);
    return Done(QStringLiteral("is master"));
}

JobControl::Outcome JobControl::RestartJob(MpxOrv& mpxOrv) {
    if (IsUnderMaster(mpxOrv)) return Refused(MasterRefusal());
    return DoneUnless(m_device.RestartJob(), QStringLiteral("the job starts anew"));
}

JobControl::Outcome JobControl::SetReportInterval(MpxOrv& mpxOrv) {
    const std::chrono::milliseconds interval = mpxOrv.GetRequests().GetReportInterval();
    if (interval <= interval.zero()) return Refused(QStringLiteral("no report interval was chosen"));
    return DoneUnless(m_device.SetReportInterval(interval),
                      QStringLiteral("reports every %1 ms").arg(interval.count()));
}

QString JobControl::DeviceRefusal() const {
    if (!m_device.IsOnline()) return QStringLiteral("the ORV is not connected");
    if (m_device.GetBootState() == BootReady) return QString();
    return QStringLiteral("the ORV is not ready: %1").arg(m_status.GetBootStateAsString());
}

QString JobControl::GuardRefusal(MpxOrv& mpxOrv, double hz) const {
    return m_guard != nullptr ? m_guard->RefusalOf(mpxOrv, hz) : QString();
}

QString JobControl::MasterRefusal() const {
    return QStringLiteral("%1 is master since %2")
        .arg(m_master->GetName(), m_masterSince.toString(QStringLiteral("HH:mm:ss")));
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
        const QString text = QStringLiteral("%1 is master no more").arg(before->GetName());
        m_log.WriteFrom(before->GetName(), text);
        ShowStatus(*before);
        CheckWatchers(text);
    }
    if (mpxOrv != nullptr)
        m_log.WriteFrom(mpxOrv->GetName(), QStringLiteral("%1 is master").arg(mpxOrv->GetName()));
}

void JobControl::Untune(MpxOrv& mpxOrv) {
    const auto tuning = m_tunings.find(&mpxOrv);
    if (tuning == m_tunings.end()) return;
    const Tuning before = tuning->second;
    m_tunings.erase(tuning);
    if (before.hasChannel) m_device.FreeChannel(before.channel);
}

void JobControl::CheckWatchers(const QString& reason) {
    std::vector<MpxOrv*> ended;
    for (const auto& [mpxOrv, tuning] : m_tunings)
        if (!tuning.hasChannel && (m_master == nullptr || !IsInMasterRange(tuning.hz)))
            ended.push_back(mpxOrv);
    for (MpxOrv* mpxOrv : ended) {
        Untune(*mpxOrv);
        End(*mpxOrv, reason);
    }
}

void JobControl::End(MpxOrv& mpxOrv, const QString& reason) {
    ShowStatus(mpxOrv);
    mpxOrv.GetRequests().Answer(QStringLiteral("ended: ") + reason);
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
    if (DeviceRefusal().isEmpty()) return;
    const QString reason = DeviceRefusal() + m_log.ByActor(QStringLiteral("let go"));
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
    std::vector<std::pair<MpxOrv*, QString>> refused;
    for (const auto& [mpxOrv, tuning] : m_tunings) {
        const QString refusal = GuardRefusal(*mpxOrv, tuning.hz);
        if (!refusal.isEmpty()) refused.emplace_back(mpxOrv, refusal);
    }
    for (const auto& [mpxOrv, refusal] : refused) {
        if (m_tunings.count(mpxOrv) == 0) continue;  // it watched a master who has just lost its frequency
        Untune(*mpxOrv);
        End(*mpxOrv, refusal);
        if (m_master == mpxOrv) CheckWatchers(QStringLiteral("%1 lost its frequency").arg(mpxOrv->GetName()));
    }
}

// The device has one interval, whoever set it.
void JobControl::ReportIntervalChanged() {
    for (MpxOrv* mpxOrv : m_mpxOrvs)
        mpxOrv->GetRequests().ShowReportInterval(m_device.GetReportInterval());
}

void JobControl::OnPoliciesChanged(MpxOrv& mpxOrv) {
    m_log.WriteFrom(mpxOrv.GetName(),
                    QStringLiteral("policies of %1: %2%3")
                        .arg(mpxOrv.GetName(), mpxOrv.GetPolicies().ToString(), m_log.ByActor()));
    const QString lost = mpxOrv.TakeLostPolicies();
    if (EndWithoutRight(mpxOrv) || lost.isEmpty() || m_log.GetActor().isEmpty()) return;
    // Whoever uses it would notice at the next request, and not know whom to ask.
    End(mpxOrv, QStringLiteral("the right %1%2").arg(lost, m_log.ByActor(QStringLiteral("taken away"))));
}

bool JobControl::EndWithoutRight(MpxOrv& mpxOrv) {
    const bool endsMaster = m_master == &mpxOrv && !mpxOrv.Has(MCSPolicy::MAYBEJOBMASTER);
    const QString by = m_log.ByActor(QStringLiteral("taken away"));
    if (endsMaster) {
        SetMaster(nullptr);
        End(mpxOrv, Needs(MCSPolicy::MAYBEJOBMASTER) + by);
    }
    const bool endsWatching = IsWatching(mpxOrv) && !mpxOrv.Has(MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES);
    if (endsWatching) {
        Untune(mpxOrv);
        End(mpxOrv, Needs(MCSPolicy::MAYREADSINGLEFREQFROMMASTERRANGES) + by);
    }
    return endsMaster || endsWatching;
}

void JobControl::OnBlankingSwitched(MpxOrv& mpxOrv) {
    const QString does = mpxOrv.ObeysBlanking() ? QStringLiteral("obeys the blanking")
                                                : QStringLiteral("ignores the blanking");
    mpxOrv.GetFacts().ShowBlankingSwitched(m_log.GetActor(), m_clock);
    m_log.Write(QStringLiteral("%1 %2%3").arg(mpxOrv.GetName(), does, m_log.ByActor()));
    GuardChanged();
}

void JobControl::ShowStatus(MpxOrv& mpxOrv) {
    const auto tuning = m_tunings.find(&mpxOrv);
    const bool isTuned = tuning != m_tunings.end();
    const bool isMaster = m_master == &mpxOrv;
    QStringList parts;
    if (isMaster) parts << QStringLiteral("Job master");
    if (isTuned) parts << QStringLiteral("FFM %1").arg(FrequencyText(tuning->second.hz));
    MCSMpxORVStatus& status = mpxOrv.GetStatus();
    mpxOrv.GetFacts().ShowTuned(isTuned ? tuning->second.hz : 0.0, m_clock);
    Set(status.GetIsMasterValue(), isMaster);
    Set(status.GetIsWatchingMasterValue(), isTuned && !tuning->second.hasChannel);
    Set(status.GetOperationTypeValue(),
        parts.isEmpty() ? QStringLiteral("Idle") : parts.join(QStringLiteral(", ")));
    const EOperationMode mode = isTuned    ? OperationFfm
                                : isMaster ? m_device.GetOperationMode()
                                           : OperationIdle;
    if (status.GetOperationModeValue() != nullptr) status.GetOperationModeValue()->Select(mode, nullptr);
}
