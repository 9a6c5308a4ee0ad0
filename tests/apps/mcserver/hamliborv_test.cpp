// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamliborv.h>

#include <tests/apps/mcserver/fakerig.h>
#include <tests/apps/mcserver/requestsfixture.h>
#include <tests/support/waituntil.h>

#include <QtCore/QElapsedTimer>

using namespace std::chrono_literals;

namespace {

const RigOutcome Broken{RigOutcome::EFault::NoConnection, QStringLiteral("IO error")};

/// A server over two receivers, and a client that may do anything.
class AServerWithReceivers : public ServerTest {
  protected:
    AServerWithReceivers() : m_receivers(std::make_unique<HamlibOrv>(QStringLiteral("Fake"), m_clock)) {
        for (int i = 0; i < 2; ++i) {
            m_rigs.push_back(std::make_shared<FakeRigState>());
            m_receivers->AddReceiver(QStringLiteral("rig%1:4532").arg(i + 1),
                                     std::make_unique<FakeRig>(m_rigs.back()));
        }
        Own(*m_receivers);
    }
    ~AServerWithReceivers() override {
        for (const auto& rig : m_rigs)
            rig->Hang(false);
        m_access.reset();
        m_server.reset();
    }
    void StartAndConnect() {
        Start(false);
        Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), true);
    }
    void StartUntilReady() {
        StartAndConnect();
        ASSERT_TRUE(WaitUntil([] { return Free() == 2; })) << Free();
        ASSERT_TRUE(WaitUntil([] { return IsRead(1) && IsRead(2); }));
        m_peer = Connect(QStringLiteral("Receiver"));
        for (const QString& name : {m_a, m_b, m_c}) {
            Use(m_peer, name);
            for (const char* const policy : AllPolicies)
                Set(Dynamic(name, QStringLiteral("Policy/") + QLatin1String(policy)),
                    QLatin1String(policy) != QLatin1String("IsSlaveToMasterJob"));
        }
        TakeLog();
    }
    static int Free() { return Count(QStringLiteral("FreeFreqChannels")); }
    static int Used() { return Count(QStringLiteral("UsedFreqChannels")); }
    static QString Of(int receiver, const char* key) {
        return QStringLiteral("/MultiChannelServer/Status/Receivers/%1/%2")
            .arg(receiver)
            .arg(QLatin1String(key));
    }
    static bool WaitForState(int receiver, const char* state) {
        return WaitUntil([=] { return Text(Of(receiver, "State")) == QLatin1String(state); });
    }
    bool WaitForAnswer(const QString& mpxOrv, const char* text) {
        return WaitUntil([&] { return Answer(mpxOrv).contains(QLatin1String(text)); });
    }
    bool IsLogged(const char* text) {
        return TakeLog().join(QLatin1Char('\n')).contains(QLatin1String(text));
    }
    static bool IsRead(int receiver) { return Number(Of(receiver, "Frequency")) != 0.0; }
    /// Lets a report become due, and waits until \a condition holds.
    bool WaitForReport(const std::function<bool()>& condition) {
        m_clock.Advance(500ms);
        return WaitUntil(condition);
    }

    std::vector<std::shared_ptr<FakeRigState>> m_rigs;
    std::unique_ptr<HamlibOrv> m_receivers;
    VtPeer m_peer;
    const QString m_a = QStringLiteral("A");
    const QString m_b = QStringLiteral("B");
    const QString m_c = QStringLiteral("C");
};

TEST_F(AServerWithReceivers, TunesThem) {
    StartUntilReady();
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("2 of 2 receivers answer (Fake)"));
    EXPECT_EQ(Tune(m_peer, m_a, 121.5e6), QString());
    EXPECT_EQ(Answer(m_a), QStringLiteral("done: tuned to 121.5 MHz"));
    EXPECT_TRUE(WaitUntil([&] { return m_rigs[0]->GetTunings() == std::vector<double>{121.5e6}; }));
    EXPECT_TRUE(WaitUntil([&] { return Number(Of(1, "Frequency")) == 121.5e6; }));
    EXPECT_EQ(Tune(m_peer, m_b, 243e6), QString());
    EXPECT_TRUE(WaitUntil([&] { return m_rigs[1]->GetTunings() == std::vector<double>{243e6}; }));
    EXPECT_EQ(Tune(m_peer, m_c, 130e6), QString());
    EXPECT_EQ(Answer(m_c), QStringLiteral("refused: no frequency channel is free, 2 are in use"));
    EXPECT_EQ(Used(), 2);
}

TEST_F(AServerWithReceivers, ShowsWhatTheySay) {
    StartUntilReady();
    EXPECT_EQ(Text(Of(1, "Name")), QStringLiteral("Fake"));
    EXPECT_EQ(Text(Of(2, "Address")), QStringLiteral("rig2:4532"));
    m_rigs[1]->SetReading({118e6, QStringLiteral("FM"), -31});
    EXPECT_TRUE(WaitForReport([] { return Number(Of(2, "Frequency")) == 118e6; }));
    EXPECT_EQ(Text(Of(2, "Mode")), QStringLiteral("FM"));
    const auto strength = [] {
        return values::FindValue<values::ValueNumeric<int>>(Of(2, "SignalStrength"), nullptr, nullptr)
            ->GetValue();
    };
    EXPECT_EQ(strength(), -31);
    m_rigs[1]->SetReading({118e6, QStringLiteral("FM"), std::nullopt});
    EXPECT_TRUE(WaitForReport([&] { return strength() == ReceiverFacts::NoStrength; }));
}

TEST_F(AServerWithReceivers, RefusesWhatTheyCannotDo) {
    StartUntilReady();
    Push(m_peer, m_a, QStringLiteral("BuiltInTest"));
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: the ORV has no built-in test"));
    Push(m_peer, m_a, QStringLiteral("Calibrate"));
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: the ORV cannot be calibrated"));
    EXPECT_EQ(Tune(m_peer, m_a, 400e6), QString());
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: receiver 1 (rig1:4532) receives 30-300 MHz only"));
    EXPECT_EQ(Used(), 0);
    EXPECT_EQ(m_receivers->SetReportInterval(50ms).ToEnglish(),
              QStringLiteral("the ORV reports every 100 ms at most"));
    EXPECT_EQ(m_receivers->GetReportInterval(), 500ms);
}

TEST_F(AServerWithReceivers, TakesAChannelAwayWithItsReceiver) {
    StartUntilReady();
    Tune(m_peer, m_a, 121.5e6);
    Tune(m_peer, m_b, 243e6);
    ASSERT_TRUE(WaitUntil([] { return Number(Of(1, "Frequency")) == 121.5e6; }));
    m_rigs[0]->Fail(Broken);
    EXPECT_TRUE(WaitForReport([&] { return Answer(m_a).startsWith(QStringLiteral("ended")); }));
    EXPECT_EQ(Answer(m_a), QStringLiteral("ended: receiver 1 (rig1:4532) is lost: no connection"));
    EXPECT_EQ(Answer(m_b), QStringLiteral("done: tuned to 243 MHz"));
    EXPECT_EQ(Text(Of(1, "State")), QStringLiteral("Error"));
    EXPECT_EQ(Text(Of(1, "Reason")), QStringLiteral("no connection"));
    EXPECT_EQ(Number(Of(1, "Frequency")), 0.0);
    EXPECT_TRUE(Flag(QStringLiteral("/MultiChannelServer/Status/Online")));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("1 of 2 receivers answer (Fake)"));
    EXPECT_TRUE(IsLogged("ORV: receiver 1 (rig1:4532) is lost: no connection"));
    Tune(m_peer, m_a, 130e6);
    EXPECT_EQ(Answer(m_a),
              QStringLiteral("refused: no frequency channel is free, 1 are in use and 1 are lost"));
    EXPECT_EQ(Free(), 0);

    m_rigs[0]->Fail({});
    m_clock.Advance(Receiver::RetryTime);
    EXPECT_TRUE(WaitForState(1, "Connected"));
    EXPECT_TRUE(IsLogged("ORV: receiver 1 (rig1:4532) answers again"));
    EXPECT_EQ(Free(), 1);
    Tune(m_peer, m_a, 130e6);
    EXPECT_EQ(Answer(m_a), QStringLiteral("done: tuned to 130 MHz"));
}

TEST_F(AServerWithReceivers, TellsOnceThatOneIsLostWhateverElseBecomesOfIt) {
    StartUntilReady();
    m_rigs[0]->Fail(Broken);
    EXPECT_TRUE(WaitForReport([] { return Text(Of(1, "State")) == QStringLiteral("Error"); }));
    EXPECT_TRUE(IsLogged("ORV: receiver 1 (rig1:4532) is lost: no connection"));
    m_rigs[0]->Fail({RigOutcome::EFault::NoAnswer, QString()});
    m_clock.Advance(Receiver::RetryTime);
    EXPECT_TRUE(
        WaitUntil([] { return Text(Of(1, "Reason")) == QStringLiteral("the device does not answer"); }));
    EXPECT_FALSE(IsLogged("is lost"));
}

TEST_F(AServerWithReceivers, IsOfflineWhenAllAreLost) {
    StartUntilReady();
    Tune(m_peer, m_b, 121.5e6);
    ASSERT_TRUE(WaitUntil([] { return Number(Of(1, "Frequency")) == 121.5e6; }));
    for (const auto& rig : m_rigs)
        rig->Fail({RigOutcome::EFault::NoAnswer, QString()});
    EXPECT_TRUE(WaitForReport([] { return !Flag(QStringLiteral("/MultiChannelServer/Status/Online")); }));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("connection lost: the device does not answer"));
    Tune(m_peer, m_a, 130e6);
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: the ORV is not connected"));
    for (const auto& rig : m_rigs)
        rig->Fail({});
    m_clock.Advance(Receiver::RetryTime);
    EXPECT_TRUE(WaitUntil([] { return Free() == 2; }));
    EXPECT_TRUE(Flag(QStringLiteral("/MultiChannelServer/Status/Online")));
}

TEST_F(AServerWithReceivers, EndsAFrequencyThatTheReceiverDoesNotTake) {
    StartUntilReady();
    m_rigs[0]->RejectTuning(true);
    Tune(m_peer, m_a, 121.5e6);
    EXPECT_TRUE(WaitForAnswer(m_a, "ended: the receiver does not take it: Command rejected by the rig"));
    EXPECT_EQ(Free(), 2);
    EXPECT_EQ(Text(Of(1, "State")), QStringLiteral("Connected"));
}

TEST_F(AServerWithReceivers, GoesOnWhileOneHangs) {
    StartUntilReady();
    m_rigs[0]->Hang(true);
    Tune(m_peer, m_a, 121.5e6);
    EXPECT_EQ(Answer(m_a), QStringLiteral("done: tuned to 121.5 MHz"));
    ASSERT_TRUE(WaitUntil([&] { return m_rigs[0]->IsHanging(); }));
    Tune(m_peer, m_b, 243e6);
    EXPECT_TRUE(WaitUntil([] { return Number(Of(2, "Frequency")) == 243e6; }));
    m_clock.Advance(Receiver::AnswerTime);
    EXPECT_EQ(Answer(m_a),
              QStringLiteral("ended: receiver 1 (rig1:4532) is lost: the device does not answer"));
    EXPECT_EQ(Text(Of(1, "State")), QStringLiteral("Error"));
    m_rigs[0]->Hang(false);
    EXPECT_TRUE(WaitForState(1, "Connected"));
    EXPECT_EQ(Free(), 1);
}

TEST_F(AServerWithReceivers, TellsAHangingOneOnlyTheNewestFrequency) {
    StartUntilReady();
    m_rigs[0]->Hang(true);
    Tune(m_peer, m_a, 100e6);
    ASSERT_TRUE(WaitUntil([&] { return m_rigs[0]->IsHanging(); }));
    for (double hz = 110e6; hz <= 120e6; hz += 1e6)
        Tune(m_peer, m_a, hz);
    m_rigs[0]->Hang(false);
    EXPECT_TRUE(WaitUntil([&] {
        return m_rigs[0]->GetTunings() == std::vector<double>{100e6, 120e6};
    })) << testing::PrintToString(m_rigs[0]->GetTunings());
    EXPECT_TRUE(WaitUntil([] { return Number(Of(1, "Frequency")) == 120e6; }));
}

TEST_F(AServerWithReceivers, EndsInTimeThoughTheyHang) {
    StartUntilReady();
    for (const auto& rig : m_rigs)
        rig->Hang(true);
    m_clock.Advance(500ms);
    ASSERT_TRUE(WaitUntil([&] { return m_rigs[0]->IsHanging() && m_rigs[1]->IsHanging(); }));
    m_server->Stop();
    m_access.reset();
    m_server.reset();
    QElapsedTimer timer;
    timer.start();
    m_receivers.reset();
    EXPECT_LT(timer.elapsed(), 2 * ReceiverWorker::EndTime.count() - 100);  // not one after the other
}

TEST_F(AServerWithReceivers, LetsGoOfThemAndTakesThemAgain) {
    StartUntilReady();
    Tune(m_peer, m_a, 121.5e6);
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")), QStringLiteral("not connected"));
    EXPECT_EQ(Text(Of(1, "State")), QStringLiteral("Disconnected"));
    EXPECT_TRUE(Answer(m_a).startsWith(QStringLiteral("ended: the ORV is not connected")));
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), true);
    EXPECT_TRUE(WaitUntil([] { return Free() == 2; }));
    EXPECT_EQ(m_rigs[0]->CountOpenings(), 2);
}

TEST_F(AServerWithReceivers, HasNoConnectionUntilOneAnswers) {
    for (const auto& rig : m_rigs)
        rig->Hang(true);
    StartAndConnect();
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("connecting to receivers (Fake)"));
    EXPECT_FALSE(Flag(QStringLiteral("/MultiChannelServer/Status/Online")));
    m_clock.Advance(Receiver::AnswerTime);
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("connection lost: the device does not answer"));
    m_rigs[1]->Hang(false);
    EXPECT_TRUE(WaitForState(2, "Connected"));
    EXPECT_TRUE(Flag(QStringLiteral("/MultiChannelServer/Status/Online")));
}

TEST_F(AServerWithReceivers, OffersNoMoreOfThemThanItIsTold) {
    StartUntilReady();
    values::FindValue<values::ValueNumeric<int>>(
        QStringLiteral("/MultiChannelServer/Config/NumberOfFreqChannels"), nullptr, nullptr)
        ->SetValue(1);
    EXPECT_EQ(Free(), 1);
    Tune(m_peer, m_a, 121.5e6);
    Tune(m_peer, m_b, 130e6);
    EXPECT_EQ(Answer(m_b), QStringLiteral("refused: no frequency channel is free, 1 are in use"));
}

TEST_F(AServerWithReceivers, SetsAllFrequenciesAnewWithTheJob) {
    StartUntilReady();
    Tune(m_peer, m_a, 121.5e6);
    ASSERT_TRUE(WaitUntil([&] { return m_rigs[0]->GetTunings().size() == 1; }));
    Push(m_peer, m_a, QStringLiteral("RestartJob"));
    EXPECT_EQ(Answer(m_a), QStringLiteral("done: the job starts anew"));
    EXPECT_TRUE(WaitUntil([&] { return m_rigs[0]->GetTunings() == std::vector<double>{121.5e6, 121.5e6}; }));
}

}  // namespace
