// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertext.h>

#include <tests/apps/mcserver/requestsfixture.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

const QString MasterControlled = QStringLiteral("/MultiChannelServer/Status/McsMasterJobControlled");

class MasterTest : public RequestsTest {};

TEST_F(MasterTest, TheMasterIsShownEverywhere) {
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_TRUE(Flag(MasterControlled));
    EXPECT_TRUE(Flag(Dynamic(m_name, QStringLiteral("Status/IsMaster"))));
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Job master"));
    EXPECT_EQ(Choice(Dynamic(m_name, QStringLiteral("Status/OperationMode"))), QStringLiteral("Scan"));
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))),
              QStringLiteral("Job master, FFM 145 MHz"));
}

TEST_F(MasterTest, PushedAgainTheMasterGivesUp) {
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: is master no more"));
    EXPECT_FALSE(Flag(MasterControlled));
    EXPECT_FALSE(Flag(Dynamic(m_name, QStringLiteral("Status/IsMaster"))));
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Idle"));
}

TEST_F(MasterTest, ThereIsOneMasterAtATimeAndTheRefusalNamesIt) {
    const VtPeer other = OtherMpxOrv(m_other);
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    m_clock.Advance(60000ms);
    Push(other, m_other, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Answer(m_other), QStringLiteral("refused: MpxORVhostA_receiver is master since 14:03:22"));
    EXPECT_FALSE(Flag(Dynamic(m_other, QStringLiteral("Status/IsMaster"))));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    Push(other, m_other, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Answer(m_other), QStringLiteral("done: is master"));
}

TEST_F(MasterTest, WhoMayNotBeMasterAnyMoreIsNot) {
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    Set(Dynamic(m_name, QStringLiteral("Policy/MayBeJobMaster")), false);
    EXPECT_FALSE(Flag(MasterControlled));
    EXPECT_FALSE(Flag(Dynamic(m_name, QStringLiteral("Status/IsMaster"))));
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: needs MayBeJobMaster"));
}

TEST_F(MasterTest, IsToldWhoTakesItsMastership) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Switch(other, m_name, QStringLiteral("MayBeJobMaster"), false), QString());
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("ended: needs MayBeJobMaster, taken away by %1").arg(peertext::Name(other)));
}

TEST_F(MasterTest, WhoLosesARightIsToldWhoTookIt) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    Set(Dynamic(m_name, QStringLiteral("Policy/MayCal")), true);
    EXPECT_EQ(Switch(other, m_name, QStringLiteral("MayCal"), false), QString());
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("ended: the right MayCal, taken away by %1").arg(peertext::Name(other)));
    EXPECT_THAT(TakeLog().join(QLatin1Char('\n')).toStdString(),
                testing::HasSubstr(", by " + peertext::Name(other).toStdString()));
}

TEST_F(MasterTest, IsToldWhichMpxOrvTookIt) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    Use(other, QStringLiteral("Tower 2"));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_EQ(Switch(other, m_name, QStringLiteral("MayBeJobMaster"), false), QString());
    EXPECT_EQ(
        Answer(m_name),
        QStringLiteral("ended: needs MayBeJobMaster, taken away by Tower 2, %1").arg(peertext::Name(other)));
    Use(other, QStringLiteral("Tower 3"));
    Set(Dynamic(m_name, QStringLiteral("Policy/MayCal")), true);
    EXPECT_EQ(Switch(other, m_name, QStringLiteral("MayCal"), false), QString());
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("ended: the right MayCal, taken away by %1").arg(peertext::Name(other)))
        << "which of the two, nobody knows";
}

TEST_F(MasterTest, WhoGetsARightIsNotDisturbed) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    const QString before = Answer(m_name);
    EXPECT_EQ(Switch(other, m_name, QStringLiteral("MayCal"), true), QString());
    EXPECT_EQ(Answer(m_name), before);
}

TEST_F(MasterTest, NobodyIsNamedForAWriteThatWasAllowedAndNotMade) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    Push(m_peer, m_name, QStringLiteral("BecomeMaster"));
    EXPECT_TRUE(m_access->MayWrite(other, Dynamic(m_name, QStringLiteral("Policy/MayCal")), nullptr));
    m_clock.Turn();
    Set(Dynamic(m_name, QStringLiteral("Policy/MayBeJobMaster")), false);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: needs MayBeJobMaster"));
}

TEST_F(MasterTest, WhoLosesTheDeviceIsToldWhoLetItGo) {
    const VtPeer other = Connect(QStringLiteral("Console"));
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ((Write<values::Value<bool>>(
                  other, QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false)),
              QString());
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("ended: the ORV is not connected, let go by %1").arg(peertext::Name(other)));
}

class SlaveTest : public RequestsTest {
  protected:
    SlaveTest() {
        m_master = OtherMpxOrv(m_other);
        Push(m_master, m_other, QStringLiteral("BecomeMaster"));
        Set(Dynamic(m_name, QStringLiteral("Policy/IsSlaveToMasterJob")), true);
    }
    bool IsWatching() { return Flag(Dynamic(m_name, QStringLiteral("Status/IsWatchingMaster"))); }

    VtPeer m_master;
    const QString m_isMaster = QStringLiteral("MpxORVhostB_console is master since 14:03:22");
};

TEST_F(SlaveTest, CannotTuneWhileSomebodyIsMaster) {
    Set(Dynamic(m_name, QStringLiteral("Policy/MayReadSingleFreqFromMasterRanges")), false);
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("refused: ") + m_isMaster);
}

TEST_F(SlaveTest, CannotRestartTheMastersJob) {
    Push(m_peer, m_name, QStringLiteral("RestartJob"));
    EXPECT_EQ(Answer(m_name), QStringLiteral("refused: ") + m_isMaster);
}

TEST_F(SlaveTest, ReadsAFrequencyFromTheMastersRangeWithoutAChannelOfItsOwn) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 155e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: 155 MHz is read from the range of MpxORVhostB_console"));
    EXPECT_TRUE(IsWatching());
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
}

TEST_F(SlaveTest, ReadsNothingBeyondThatRange) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 155.001e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("refused: ") + m_isMaster +
                                  QStringLiteral(", and 155.001 MHz is not in its range"));
    EXPECT_FALSE(IsWatching());
}

TEST_F(SlaveTest, ReadsNothingFromAMasterThatIsTunedToNothing) {
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("refused: ") + m_isMaster + QStringLiteral(", and 145 MHz is not in its range"));
}

TEST_F(SlaveTest, StopsReadingWhenTheMasterTunesAway) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 145e6);
    Tune(m_master, m_other, 150e6);
    EXPECT_TRUE(IsWatching()) << "still in the range";
    Tune(m_master, m_other, 400e6);
    EXPECT_FALSE(IsWatching());
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: MpxORVhostB_console was tuned to 400 MHz"));
    EXPECT_EQ(Text(Dynamic(m_name, QStringLiteral("Status/OperationType"))), QStringLiteral("Idle"));
}

TEST_F(SlaveTest, StopsReadingWhenTheMasterGivesUp) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 145e6);
    Push(m_master, m_other, QStringLiteral("BecomeMaster"));
    EXPECT_FALSE(IsWatching());
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: MpxORVhostB_console is master no more"));
}

TEST_F(SlaveTest, StopsReadingWhenTheMasterGoes) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 145e6);
    Disconnect(m_master);
    EXPECT_FALSE(IsWatching());
}

TEST_F(SlaveTest, StopsReadingWhenItMayNotAnyMore) {
    Tune(m_master, m_other, 145e6);
    Tune(m_peer, m_name, 145e6);
    Set(Dynamic(m_name, QStringLiteral("Policy/MayReadSingleFreqFromMasterRanges")), false);
    EXPECT_FALSE(IsWatching());
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: needs MayReadSingleFreqFromMasterRanges"));
}

TEST_F(SlaveTest, TunesFreelyWhenNobodyIsMaster) {
    Push(m_master, m_other, QStringLiteral("BecomeMaster"));
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 145 MHz"));
}

TEST_F(SlaveTest, OthersTuneFreelyUnderAMaster) {
    Set(Dynamic(m_name, QStringLiteral("Policy/IsSlaveToMasterJob")), false);
    Tune(m_peer, m_name, 145e6);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 145 MHz"));
}

}  // namespace
