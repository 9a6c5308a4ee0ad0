// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/mpxorv/ituningguard.h>

#include <tests/apps/mcserver/requestsfixture.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <tuple>
#include <vector>

using namespace std::chrono_literals;

namespace {

using testing::Contains;

const QString MasterControlled = QStringLiteral("/MultiChannelServer/Status/McsMasterJobControlled");

struct Rule {
    const char* request;
    const char* policy;
    const char* done;
};

void PrintTo(const Rule& rule, std::ostream* stream) {
    *stream << rule.request;
}

const Rule Rules[] = {
    {"Frequency", "MayAlterFreqSingle", "done: tuned to 145 MHz"},
    {"BecomeMaster", "MayBeJobMaster", "done: is master"},
    {"RestartJob", "MayRestartJob", "done: the job starts anew"},
    {"BuiltInTest", "MayBIT", "done: built-in test started"},
    {"Calibrate", "MayCal", "done: calibration started"},
    {"ReportInterval", "MayAlterDeviceSettings", "done: reports every 1000 ms"},
};

/// Each request with each policy as the only one.
class RequestByPolicy : public RequestsTest,
                        public testing::WithParamInterface<std::tuple<Rule, const char*>> {};

TEST_P(RequestByPolicy, IsDoneByItsPolicyAlone) {
    const auto [rule, policy] = GetParam();
    HaveOnly(m_name, {QLatin1String(policy)});
    const QString expected = QLatin1String(policy) == QLatin1String(rule.policy)
                                 ? QString(QLatin1String(rule.done))
                                 : QStringLiteral("refused: needs ") + QLatin1String(rule.policy);
    EXPECT_EQ(Request(m_name, QLatin1String(rule.request)), expected);
}

INSTANTIATE_TEST_SUITE_P(, RequestByPolicy,
                         testing::Combine(testing::ValuesIn(Rules), testing::ValuesIn(AllPolicies)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).request) + "With" +
                                    std::get<1>(row.param);
                         });

class RequestByRule : public RequestsTest, public testing::WithParamInterface<Rule> {
  protected:
    RequestByRule() {
        for (const char* const policy : AllPolicies)
            Set(Dynamic(m_name, QStringLiteral("Policy/") + QLatin1String(policy)), true);
        TakeLog();
    }
    QString Ask() { return Request(m_name, QLatin1String(GetParam().request)); }
};

TEST_P(RequestByRule, IsRefusedWithoutItsPolicyHoweverManyOthersThereAre) {
    Set(Dynamic(m_name, QStringLiteral("Policy/") + QLatin1String(GetParam().policy)), false);
    EXPECT_EQ(Ask(), QStringLiteral("refused: needs ") + QLatin1String(GetParam().policy));
    EXPECT_THAT(TakeLog(),
                Contains(m_name + QStringLiteral(": refused: needs ") + QLatin1String(GetParam().policy)));
}

TEST_P(RequestByRule, IsRefusedWhileTheDeviceIsNotConnected) {
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(Ask(), QStringLiteral("refused: the ORV is not connected"));
}

TEST_P(RequestByRule, IsRefusedWhileTheDeviceBoots) {
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), true);
    m_clock.Advance(800ms);
    EXPECT_EQ(Ask(), QStringLiteral("refused: the ORV is not ready: Self Test"));
}

TEST_P(RequestByRule, IsRefusedByABusyDeviceUnlessItNeedsNone) {
    Request(m_name, QStringLiteral("Calibrate"));
    const bool needsDevice = QLatin1String(GetParam().request) != QLatin1String("BecomeMaster");
    EXPECT_EQ(Ask(), needsDevice ? QStringLiteral("refused: the ORV is busy: Calibration")
                                 : QStringLiteral("done: is master"));
}

TEST_P(RequestByRule, ThatIsRefusedChangesNothing) {
    Set(Dynamic(m_name, QStringLiteral("Policy/") + QLatin1String(GetParam().policy)), false);
    const QString interval = Choice(IntervalPath(m_name));
    Ask();
    EXPECT_EQ(Number(Dynamic(m_name, QStringLiteral("Request/Frequency"))), 30e6);
    EXPECT_EQ(Choice(IntervalPath(m_name)), interval);
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
    EXPECT_EQ(Choice(QStringLiteral("/MultiChannelServer/Status/OperationMode")), QStringLiteral("Scan"));
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Idle"));
    EXPECT_FALSE(Flag(MasterControlled));
}

INSTANTIATE_TEST_SUITE_P(, RequestByRule, testing::ValuesIn(Rules),
                         [](const auto& row) { return std::string(row.param.request); });

TEST_F(RequestsTest, TuningTakesOneChannelAndShowsInTheStatus) {
    Tune(m_peer, m_name, 145.4125e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 145.4125 MHz"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
    EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), 3);
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))),
              QStringLiteral("FFM 145.4125 MHz"));
    EXPECT_EQ(Choice(Dynamic(m_name, QStringLiteral("Status/OperationMode"))), QStringLiteral("FFM"));
    Tune(m_peer, m_name, 146e6);
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1) << "the channel is kept";
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("FFM 146 MHz"));
}

TEST_F(RequestsTest, TheFrequencyThatIsShownAlreadyCanBeAskedFor) {
    Tune(m_peer, m_name, 30e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 30 MHz"));
}

TEST_F(RequestsTest, ARefusedFrequencyGivesWayToTheOneThatHolds) {
    Tune(m_peer, m_name, 145e6);
    Set(Dynamic(m_name, QStringLiteral("Policy/MayAlterFreqSingle")), false);
    Tune(m_peer, m_name, 146e6);
    EXPECT_EQ(Number(Dynamic(m_name, QStringLiteral("Request/Frequency"))), 145e6);
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("FFM 145 MHz"));
}

TEST_F(RequestsTest, FrequenciesAreLimited) {
    Tune(m_peer, m_name, 5e9);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 3000 MHz"));
    Tune(m_peer, m_name, 1.0);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 0.3 MHz"));
}

TEST_F(RequestsTest, WithoutAFreeChannelNobodyIsTuned) {
    for (int i = 0; i < 5; ++i) {
        Use(m_peer, QStringLiteral("Name%1").arg(i));
        Tune(m_peer, QStringLiteral("Name%1").arg(i), 145e6);
    }
    EXPECT_EQ(Answer(QStringLiteral("Name3")), QStringLiteral("done: tuned to 145 MHz"));
    EXPECT_EQ(Answer(QStringLiteral("Name4")),
              QStringLiteral("refused: no frequency channel is free, 4 are in use"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 4);
    Release(m_peer, QStringLiteral("Name0"));
    Tune(m_peer, QStringLiteral("Name4"), 145e6);
    EXPECT_EQ(Answer(QStringLiteral("Name4")), QStringLiteral("done: tuned to 145 MHz"));
}

TEST_F(RequestsTest, LosingTheDeviceEndsWhatEverybodyHas) {
    Tune(m_peer, m_name, 145e6);
    const VtPeer other = OtherMpxOrv(m_other);
    Push(other, m_other, QStringLiteral("BecomeMaster"));
    Use(m_peer, QStringLiteral("Idler"));
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: the ORV is not connected"));
    EXPECT_EQ(Answer(m_other), QStringLiteral("ended: the ORV is not connected"));
    EXPECT_EQ(Answer(QStringLiteral("Idler")), QString());
    EXPECT_FALSE(Flag(MasterControlled));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Idle"));
}

TEST_F(RequestsTest, TheBuiltInTestEndsByItselfAndTheJobGoesOn) {
    HaveOnly(m_name, {QStringLiteral("MayBIT")});
    Push(m_peer, m_name, QStringLiteral("BuiltInTest"));
    const QString mode = QStringLiteral("/MultiChannelServer/Status/OperationMode");
    EXPECT_EQ(Choice(mode), QStringLiteral("Built-in Test"));
    m_clock.Advance(SimulatedOrv::BuiltInTestTime);
    EXPECT_EQ(Choice(mode), QStringLiteral("Scan"));
    EXPECT_THAT(TakeLog(), Contains(QStringLiteral("ORV: Built-in Test passed")));
}

TEST_F(RequestsTest, EveryMpxOrvShowsTheReportIntervalThatTheDeviceHas) {
    EXPECT_EQ(Choice(IntervalPath(m_name)), QStringLiteral("500 ms"));
    Set(Dynamic(m_name, QStringLiteral("Policy/MayAlterDeviceSettings")), true);
    OtherMpxOrv(m_other);
    SelectInterval(m_name, 5000);
    EXPECT_EQ(Choice(IntervalPath(m_other)), QStringLiteral("5 s"));
    EXPECT_EQ(Answer(m_other), QString()) << "it asked for nothing";
    Use(m_peer, QStringLiteral("Later"));
    EXPECT_EQ(Choice(IntervalPath(QStringLiteral("Later"))), QStringLiteral("5 s"));
}

TEST_F(RequestsTest, TheReportIntervalIsObeyed) {
    HaveOnly(m_name, {QStringLiteral("MayAlterDeviceSettings")});
    SelectInterval(m_name, 5000);
    const int before = Count(QStringLiteral("SweepTime"));
    m_clock.Advance(4999ms);
    EXPECT_EQ(Count(QStringLiteral("SweepTime")), before);
    m_clock.Advance(1ms);
    EXPECT_NE(Count(QStringLiteral("SweepTime")), before);
}

class ForbiddingGuard : public ITuningGuard {
  public:
    CodedText RefusalOf(MpxOrv& mpxOrv, double hz) override {
        const bool isBlanked = std::find(blanked.begin(), blanked.end(), hz) != blanked.end();
        return isBlanked && mpxOrv.ObeysBlanking() ? QStringLiteral("blanked for %1").arg(mpxOrv.GetName())
                                                   : QString();
    }
    bool IsUnsupervised(double) const override { return false; }
    std::vector<double> blanked = {145e6};
};

TEST_F(RequestsTest, TheGuardHasASayInTuning) {
    ForbiddingGuard guard;
    m_server->GetJobs().SetGuard(&guard);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("refused: blanked for MpxORVhostA_receiver"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
    Tune(m_peer, m_name, 146e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 146 MHz"));
    m_server->GetJobs().SetGuard(nullptr);
}

TEST_F(RequestsTest, WhatTheGuardRefusesLaterIsLost) {
    ForbiddingGuard guard;
    m_server->GetJobs().SetGuard(&guard);
    Tune(m_peer, m_name, 146e6);
    m_server->GetJobs().GuardChanged();
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 146 MHz"));
    guard.blanked = {146e6};
    m_server->GetJobs().GuardChanged();
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: blanked for MpxORVhostA_receiver"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
    m_server->GetJobs().SetGuard(nullptr);
}

TEST_F(RequestsTest, AnMpxOrvThatIgnoresTheGuardIsTunedAllTheSameAndLosesItWhenItIsToObey) {
    ForbiddingGuard guard;
    m_server->GetJobs().SetGuard(&guard);
    MpxOrv* const mpxOrv = m_server->GetMpxOrvs().Find(EMpxOrvKind::Dynamic, m_name);
    ASSERT_NE(mpxOrv, nullptr);
    mpxOrv->SetObeysBlanking(false);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 145 MHz"));
    mpxOrv->SetObeysBlanking(true);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: blanked for MpxORVhostA_receiver"));
    m_server->GetJobs().SetGuard(nullptr);
}

TEST_F(RequestsTest, EveryAnswerIsToldAlsoTheSameAgain) {
    HaveOnly(m_name, {});
    auto* const answer = values::FindValue<values::Value<QString>>(
        Dynamic(m_name, QStringLiteral("Request/Answer")), nullptr, nullptr);
    class Counter : public IObserver {
      public:
        void Update(Observable* /*source*/, TChangeCode code) override {
            if (code == changecode::ContentChanged) ++count;
        }
        int count = 0;
    } counter;
    answer->AddObserver(&counter);
    Push(m_peer, m_name, QStringLiteral("Calibrate"));
    Push(m_peer, m_name, QStringLiteral("Calibrate"));
    answer->DeleteObserver(&counter);
    EXPECT_EQ(counter.count, 2);
}

TEST_F(RequestsTest, RefusalsDoNotFillTheLog) {
    HaveOnly(m_name, {});
    TakeLog();
    for (int i = 0; i < 1000; ++i)
        Push(m_peer, m_name, QStringLiteral("Calibrate"));
    EXPECT_EQ(TakeLog().size(), 1);
}

}  // namespace
