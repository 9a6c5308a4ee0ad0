// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>
#include <apps/mcserver/mpxorv/masterfacts.h>
#include <apps/mcserver/mpxorv/mpxorv.h>

#include <QtCore/QString>
#include <QtCore/QTime>

#include <functional>
#include <map>
#include <set>
#include <utility>

class IOrvDevice;
class ITuningGuard;
class MCSStatus;
class ServerLog;

/// Decides on what the clients ask of their MpxORVs, and has the device do it: by the policies of the MpxORV,
/// by who is job master, and by what the device can do. Every request is answered. docs/server.md holds the
/// rules. Main thread.
class JobControl : public IMpxOrvListener {
  public:
    JobControl(IOrvDevice& device, MCSStatus& status, ServerLog& log, IClock& clock);

    /// Not owned; null for none.
    void SetGuard(ITuningGuard* guard) { m_guard = guard; }
    /// \a switched is called when a policy of an MpxORV, or its "Blanking", was switched and told.
    void SetOnSwitched(std::function<void(const MpxOrv&)> switched) { m_onSwitched = std::move(switched); }
    /// Null while there is none.
    const MpxOrv* GetMaster() const { return m_master; }

    /// \a mpxOrv is there from now on.
    void Enter(MpxOrv& mpxOrv);
    /// It is going to be destroyed: gives up what it has.
    void Leave(MpxOrv& mpxOrv);
    /// The device went on- or offline, or booted: without it nobody has anything.
    void DeviceChanged();
    void OperationModeChanged();
    /// The device receives nothing by \a channel any more: whoever has it loses its frequency.
    void ChannelLost(int channel, const CodedText& reason);
    /// The guard may think otherwise from now on: who is tuned to what it refuses loses it.
    void GuardChanged();
    void ReportIntervalChanged();
    /// Tells whoever is tuned to a frequency, in Hz, that \a reasonOf has a text for, as an answer of the \a
    /// kind ECode::Ended or ECode::Done; they stay tuned.
    void TellTuned(ECode kind, const std::function<CodedText(double hz)>& reasonOf);

    void OnRequest(MpxOrv& mpxOrv, ERequest request) override;
    void OnPoliciesChanged(MpxOrv& mpxOrv) override;
    void OnBlankingSwitched(MpxOrv& mpxOrv) override;

  private:
    /// What one MpxORV is tuned to.
    struct Tuning {
        double hz = 0.0;
        bool hasChannel = false;
        int channel = 0;  ///< of the device; without one the frequency is read from the master's range
    };
    struct Outcome {
        bool isDone;
        CodedText text;
    };
    static Outcome Done(const CodedText& text) { return {true, text}; }
    static Outcome Refused(const CodedText& reason) { return {false, reason}; }
    /// Done with \a text, or refused for \a refusal if there is one.
    static Outcome DoneUnless(const CodedText& refusal, const CodedText& text);

    Outcome CarryOut(MpxOrv& mpxOrv, ERequest request);
    Outcome Tune(MpxOrv& mpxOrv);
    Outcome WatchMaster(MpxOrv& mpxOrv, double hz);
    Outcome TuneChannel(MpxOrv& mpxOrv, double hz);
    Outcome BecomeMaster(MpxOrv& mpxOrv);
    Outcome RestartJob(MpxOrv& mpxOrv);
    Outcome SetReportInterval(MpxOrv& mpxOrv);

    /// Why nothing can be asked of the device now, with \a by at its end; nothing if it is ready.
    CodedText DeviceRefusal(const CodedText& by = {}) const;
    /// Why \a mpxOrv must not be tuned to \a hz now; nothing if it may.
    CodedText GuardRefusal(MpxOrv& mpxOrv, double hz) const;
    CodedText MasterRefusal() const;
    QString MasterSinceText() const;
    bool IsUnderMaster(const MpxOrv& mpxOrv) const;
    bool IsInMasterRange(double hz) const;
    bool IsWatching(MpxOrv& mpxOrv) const;

    void SetMaster(MpxOrv* mpxOrv);
    /// Gives up the frequency of \a mpxOrv.
    void Untune(MpxOrv& mpxOrv);
    /// The same, and tells why.
    void EndTuning(MpxOrv& mpxOrv, const CodedText& reason);
    /// Ends the watching of those who may not, or whose frequency is not in the master's range any more.
    void CheckWatchers(const CodedText& reason);
    void End(MpxOrv& mpxOrv, const CodedText& reason);
    void Tell(MpxOrv& mpxOrv, const CodedText& answer);
    void TellBlankingSwitched(MpxOrv& mpxOrv);
    /// Tells in events what came of a request.
    void LogOutcome(const MpxOrv& mpxOrv, ERequest request, const Outcome& outcome, const CodedText& answer);
    void LogPolicies(MpxOrv& mpxOrv, const QStringList& given, const QStringList& taken);
    /// Ends what \a mpxOrv has and may not have any more. False if that is nothing.
    bool EndWithoutRight(MpxOrv& mpxOrv);
    void ShowStatus(MpxOrv& mpxOrv);

    IOrvDevice& m_device;
    MCSStatus& m_status;
    ServerLog& m_log;
    IClock& m_clock;
    ITuningGuard* m_guard = nullptr;
    std::function<void(const MpxOrv&)> m_onSwitched = [](const MpxOrv&) {};
    MpxOrv* m_master = nullptr;
    QTime m_masterSince;
    MasterFacts m_masterFacts;
    std::set<MpxOrv*> m_mpxOrvs;
    std::map<MpxOrv*, Tuning> m_tunings;
};
