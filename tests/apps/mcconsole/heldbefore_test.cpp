// SPDX-License-Identifier: Apache-2.0
// What was held before a loss, offered when all is back.
#include <apps/mcconsole/overview/heldbefore.h>

#include <tests/apps/mcconsole/overviewfixture.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class HeldBeforeTest : public OverviewTest {
  protected:
    HeldBeforeTest() : held(clock, tuning, *situation) {}

    void Hold() {
        Tune("127.5");
        Grant();
        BeMaster(true);
    }
    void LoseConnection() {
        Be(EState::Lost);
        tuning.Bind(QString());
        clock.Advance(10s);
    }
    /// With a new MpxORV, as the server has made it.
    void ComeBack() {
        server.Tune(0);
        BeMaster(false);
        Be(EState::Connected);
        tuning.Bind(ServerTree::OwnPath());
    }

    HeldBefore held;
};

TEST_F(HeldBeforeTest, OffersWhatALostConnectionHadOnceItIsBack) {
    Hold();
    EXPECT_FALSE(held.GetOffer().IsAnything());
    LoseConnection();
    EXPECT_FALSE(held.GetOffer().IsAnything()) << "nobody can be asked";
    ComeBack();
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
    EXPECT_TRUE(held.GetOffer().isMaster);
    held.Restore();
    EXPECT_TRUE(AsksToBeMaster());
    EXPECT_THAT(Asked(), ElementsAre(127.5, 127.5));
    BeMaster(true);
    Grant();
    EXPECT_FALSE(held.GetOffer().IsAnything());
}

TEST_F(HeldBeforeTest, SaysWhyWhatIsAskedForAgainIsRefused) {
    Hold();
    LoseConnection();
    ComeBack();
    held.Restore();
    EXPECT_EQ(held.GetRefusal(), QString());
    Refuse("needs MayDoFFM");
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
    EXPECT_EQ(held.GetRefusal(), QStringLiteral("needs MayDoFFM"));
    Tune("118.4");
    EXPECT_EQ(held.GetRefusal(), QString());
}

TEST_F(HeldBeforeTest, SaysWhoIsMasterInstead) {
    Hold();
    LoseConnection();
    ComeBack();
    EXPECT_EQ(held.GetOtherMaster(), QString());
    server.Text("Status/Master/Name", "Bravo");
    held.Restore();
    Grant();
    EXPECT_TRUE(held.GetOffer().isMaster) << "it is still wanted";
    EXPECT_EQ(held.GetOtherMaster(), QStringLiteral("Bravo"));
    server.Text("Status/Master/Name", "");
    EXPECT_EQ(held.GetOtherMaster(), QString());
}

TEST_F(HeldBeforeTest, OffersWhatALostDeviceHadOnceItIsReady) {
    Hold();
    LoseDevice();
    EXPECT_FALSE(held.GetOffer().IsAnything());
    server.Flag("Status/Online", true);
    server.Key("Status/BootState", BootSelfTest);
    clock.Advance(1min);
    EXPECT_FALSE(held.GetOffer().IsAnything());
    server.Key("Status/BootState", BootReady);
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
    EXPECT_TRUE(held.GetOffer().isMaster);
}

TEST_F(HeldBeforeTest, TakesTheDeviceForTheCauseInEitherOrder) {
    Hold();
    server.Tune(0);
    BeMaster(false);
    server.Flag("Status/Online", false);
    BringDeviceBack();
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
    EXPECT_TRUE(held.GetOffer().isMaster);
}

TEST_F(HeldBeforeTest, DoesNotOfferWhatWasGivenUpOrTakenBefore) {
    Hold();
    BeMaster(false);
    clock.Advance(HeldBefore::Together + 1s);
    LoseDevice();
    BringDeviceBack();
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
    EXPECT_FALSE(held.GetOffer().isMaster);
}

TEST_F(HeldBeforeTest, OffersNothingWhereNothingWasHeld) {
    LoseConnection();
    ComeBack();
    LoseDevice();
    BringDeviceBack();
    EXPECT_FALSE(held.GetOffer().IsAnything());
}

TEST_F(HeldBeforeTest, RemembersThroughASecondLoss) {
    Hold();
    LoseConnection();
    ComeBack();
    LoseConnection();
    ComeBack();
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
}

TEST_F(HeldBeforeTest, ForgetsAFrequencyThatTheOperatorHasReplaced) {
    Hold();
    LoseConnection();
    ComeBack();
    Tune("118.4");
    Grant();
    EXPECT_FALSE(held.GetOffer().hz);
    EXPECT_TRUE(held.GetOffer().isMaster);
}

TEST_F(HeldBeforeTest, OffersAgainWhatWasRefused) {
    Hold();
    LoseConnection();
    ComeBack();
    held.Restore();
    Refuse("the ORV is busy: Calibration");
    EXPECT_EQ(held.GetOffer().hz, 127.5e6);
}

TEST_F(HeldBeforeTest, DoesNotGiveUpAMastershipThatIsThere) {
    Hold();
    LoseConnection();
    server.Tune(0);
    Be(EState::Connected);
    tuning.Bind(ServerTree::OwnPath());
    held.Restore();
    EXPECT_FALSE(AsksToBeMaster());
}

TEST_F(HeldBeforeTest, ForgetsWhatIsDismissedAndWhatAnotherServerHad) {
    Hold();
    LoseConnection();
    ComeBack();
    held.Dismiss();
    EXPECT_FALSE(held.GetOffer().IsAnything());
    Hold();
    LoseConnection();
    connection.state = EState::Idle;
    situation->Refresh();
    ComeBack();
    EXPECT_FALSE(held.GetOffer().IsAnything());
}

}  // namespace
