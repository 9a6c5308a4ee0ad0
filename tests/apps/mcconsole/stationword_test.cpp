// SPDX-License-Identifier: Apache-2.0
// How a station is, told to who looks at another one.
#include <apps/mcconsole/session/stationword.h>

#include <tests/apps/mcconsole/situationfixture.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class StationWordTest : public SituationTest {
  protected:
    StationWordTest() {
        server.MakeUsual();
        server.Number("DynamicMpxORVs/Console/Status/TunedFrequency", 0);
        server.Key("DynamicMpxORVs/Console/Status/OperationMode", OperationIdle);
        Be(EState::Connected);
    }

    void Tune(double hz) { server.Number("DynamicMpxORVs/Console/Status/TunedFrequency", hz); }
    std::string Told() const {
        const StationWord word = StationWord::Of(*situation);
        return (word.name + QStringLiteral(": ") + word.word).toStdString();
    }
    ESeverity Severity() const { return StationWord::Of(*situation).severity; }
    std::string Cause() const { return StationWord::Of(*situation).cause.toStdString(); }
};

TEST_F(StationWordTest, IsTheFrequencyWhileAllIsWell) {
    Tune(121.5e6);
    EXPECT_EQ(Told(), "mast-north: 121.5 MHz");
    EXPECT_EQ(Severity(), ESeverity::Ok);
}

TEST_F(StationWordTest, SaysThatNothingIsTunedThere) {
    EXPECT_EQ(Told(), "mast-north: NOT TUNED");
    EXPECT_EQ(Severity(), ESeverity::Look);
}

TEST_F(StationWordTest, ALostServerComesFirstAndItsWordDoesNotCountSeconds) {
    server.Suppress(2, 1, {}, {121.5e6});
    connection.problem = QStringLiteral("Connection refused");
    Be(EState::Lost);
    const StationWord before = StationWord::Of(*situation);
    EXPECT_EQ(Told(), "mast-north: LOST");
    EXPECT_EQ(Severity(), ESeverity::Act);
    EXPECT_THAT(Cause(), HasSubstr("Connection refused"));
    clock.Advance(std::chrono::seconds(5));
    EXPECT_TRUE(StationWord::Of(*situation) == before) << "a tab that is rewritten each second is not read";
}

TEST_F(StationWordTest, FrequenciesThatNobodyWatchesComeBeforeTheDevice) {
    Tune(118e6);
    server.Flag("Status/Online", false);
    EXPECT_EQ(Told(), "mast-north: no connection");
    server.Suppress(2, 1, {}, {121.5e6});
    EXPECT_EQ(Told(), "mast-north: 1 NOT SUPERVISED, 1/2");
    EXPECT_EQ(Severity(), ESeverity::Act);
    EXPECT_THAT(Cause(), HasSubstr("Not supervised: 121.5 MHz"));
}

TEST_F(StationWordTest, WhatIsWorthALookComesBeforeTheFrequency) {
    Tune(118e6);
    server.Suppress(2, 1, {}, {});
    EXPECT_EQ(Told(), "mast-north: 1 of 2 in use");
    EXPECT_EQ(Severity(), ESeverity::Look);
}

TEST_F(StationWordTest, ASlowServerIsTold) {
    Tune(118e6);
    connection.latency = std::chrono::milliseconds(900);
    Be(EState::Connected);
    EXPECT_EQ(Told(), "mast-north: answers slowly");
    EXPECT_EQ(Severity(), ESeverity::Look);
}

TEST_F(StationWordTest, WithoutAServerThereIsNoneToName) {
    Be(EState::Idle);
    EXPECT_EQ(Told(), "New station: not connected");
    EXPECT_EQ(Severity(), ESeverity::Unknown);
    Be(EState::Connecting);
    EXPECT_THAT(Told(), HasSubstr(": connecting"));
}

TEST_F(StationWordTest, WhoHasNoMpxOrvHereIsNotToldToTune) {
    connection.isMpxOrvUsed = false;
    connection.mpxOrvPath.clear();
    situation->Refresh();
    EXPECT_EQ(Told(), "mast-north: not used");
    EXPECT_EQ(Severity(), ESeverity::Unknown);
}

}  // namespace
