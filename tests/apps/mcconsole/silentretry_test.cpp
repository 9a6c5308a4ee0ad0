// SPDX-License-Identifier: Apache-2.0
// Asking once more when nobody is keyed any more.
#include <apps/mcconsole/overview/silentretry.h>

#include <tests/apps/mcconsole/overviewfixture.h>

#include <gmock/gmock.h>

#include <QtTest/QSignalSpy>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class SilentRetryTest : public OverviewTest {
  public:
    void WantAnother() { Want("118.4"); }
    void TuneByHand() {
        tuning.Tune();
        Grant();
    }
    void LoseConnection() {
        Be(EState::Lost);
        tuning.Bind(QString());
        Be(EState::Connected);
        tuning.Bind(ServerTree::OwnPath());
    }
    void LoseMpxOrv() { tuning.Bind(QString()); }
    void LoseWord() { server.Remove("Status/Suppression"); }

  protected:
    SilentRetryTest() : retry(clock, tuning, *situation) {}

    void Key(std::vector<double> frequencies) {
        server.Suppress(2, 2, std::move(frequencies), {});
        clock.Advance(SilentRetry::SilentTime);
    }
    static SilentRetry::EReason Reason(const QSignalSpy& givenUp) {
        return givenUp.last().at(1).value<SilentRetry::EReason>();
    }
    void AskInVain() {
        Key({121.5e6});
        Tune("121.5");
        Refuse("121.5 MHz is blanked");
    }

    SilentRetry retry;
};

TEST_F(SilentRetryTest, AsksOnceWhenTheFrequencyIsSilent) {
    AskInVain();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Offered);
    retry.Wait();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    EXPECT_EQ(retry.GetFrequency(), 121.5e6);
    clock.Advance(1h);
    Key({118.4e6, 121.5e6});
    EXPECT_THAT(Asked(), ElementsAre(121.5)) << "it is still keyed";
    Key({118.4e6});
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
    Grant();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
    Key({121.5e6});
    Key({});
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
}

TEST_F(SilentRetryTest, AsksOneTimeOnlyAlsoWhenThatIsRefused) {
    AskInVain();
    retry.Wait();
    Key({});
    Refuse("the ORV is busy: Calibration");
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
    Key({121.5e6});
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Offered);
    Key({});
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
}

TEST_F(SilentRetryTest, IsOfferedOnlyForAKeyedFrequencyThatIsWanted) {
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
    Key({121.5e6});
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
    Want("121.5");
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Offered);
    Want("118.4");
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
    retry.Wait();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Idle);
}

TEST_F(SilentRetryTest, GoesOnWhenItIsAskedForByHandInVain) {
    AskInVain();
    retry.Wait();
    tuning.Tune();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    Refuse("121.5 MHz is blanked");
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    Key({});
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5, 121.5));
}

TEST_F(SilentRetryTest, CanBeCancelled) {
    AskInVain();
    retry.Wait();
    retry.Cancel();
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Offered);
    Key({});
    EXPECT_THAT(Asked(), ElementsAre(121.5));
}

TEST_F(SilentRetryTest, WaitsOutAPauseOfWhoTalks) {
    AskInVain();
    retry.Wait();
    server.Suppress(2, 2, {}, {});
    clock.Advance(SilentRetry::SilentTime - 1ms);
    server.Suppress(2, 2, {121.5e6}, {});
    clock.Advance(1h);
    EXPECT_THAT(Asked(), ElementsAre(121.5));
}

TEST_F(SilentRetryTest, WaitsOnWhileNobodyWatchesTheTransmitter) {
    AskInVain();
    retry.Wait();
    server.Suppress(2, 1, {}, {121.5e6});  // its module is lost
    clock.Advance(1h);
    EXPECT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    EXPECT_THAT(Asked(), ElementsAre(121.5)) << "it may still be keyed";
    Key({121.5e6});
    EXPECT_THAT(Asked(), ElementsAre(121.5));
    Key({});
    EXPECT_THAT(Asked(), ElementsAre(121.5, 121.5));
}

TEST_F(SilentRetryTest, SaysThatNobodyCanKnowAnyMore) {
    const QSignalSpy givenUp(&retry, &SilentRetry::GivenUp);
    AskInVain();
    retry.Wait();
    WantAnother();
    EXPECT_EQ(givenUp.count(), 0) << "the operator has something else in mind";
    Want("121.5");
    retry.Wait();
    LoseConnection();
    EXPECT_EQ(givenUp.count(), 1);
    retry.Wait();
    ASSERT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    EXPECT_EQ(Reason(givenUp), SilentRetry::EReason::NotTold);
    LoseWord();
    ASSERT_EQ(givenUp.count(), 2);
    EXPECT_EQ(givenUp.last().at(0).toDouble(), 121.5e6);
    EXPECT_EQ(Reason(givenUp), SilentRetry::EReason::NotTold);
}

TEST_F(SilentRetryTest, SaysThatThereIsNothingToTuneAnyMore) {
    const QSignalSpy givenUp(&retry, &SilentRetry::GivenUp);
    AskInVain();
    retry.Wait();
    LoseMpxOrv();
    ASSERT_EQ(givenUp.count(), 1);
    EXPECT_EQ(Reason(givenUp), SilentRetry::EReason::NoMpxOrv);
    tuning.Bind(ServerTree::OwnPath());
    Want("121.5");
    retry.Wait();
    ASSERT_EQ(retry.GetState(), SilentRetry::EState::Waiting);
    connection.isMpxOrvUsed = false;
    Be(EState::Connecting);  // to the same server, without it
    ASSERT_EQ(givenUp.count(), 2);
    EXPECT_EQ(Reason(givenUp), SilentRetry::EReason::NoMpxOrv);
}

struct EndRow {
    const char* name;
    void (SilentRetryTest::*happen)();
};

class EndOfWaiting : public SilentRetryTest, public testing::WithParamInterface<EndRow> {};

TEST_P(EndOfWaiting, AsksForNothing) {
    AskInVain();
    retry.Wait();
    (this->*GetParam().happen)();
    const std::size_t asked = Asked().size();
    EXPECT_NE(retry.GetState(), SilentRetry::EState::Waiting);
    Key({});
    EXPECT_EQ(Asked().size(), asked);
}

INSTANTIATE_TEST_SUITE_P(, EndOfWaiting,
                         testing::Values(EndRow{"WhenAnotherFrequencyIsWanted",
                                                &SilentRetryTest::WantAnother},
                                         EndRow{"WhenItIsGranted", &SilentRetryTest::TuneByHand},
                                         EndRow{"WhenTheConnectionIsLost", &SilentRetryTest::LoseConnection},
                                         EndRow{"WhenTheMpxOrvIsGone", &SilentRetryTest::LoseMpxOrv},
                                         EndRow{"WhenNobodyTellsWhoIsKeyed", &SilentRetryTest::LoseWord}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
