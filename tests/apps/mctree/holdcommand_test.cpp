// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

class HoldCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        AddNode(Server(), "Mine");
        AddNode(Server(), "Yours");
    }
};

TEST_F(HoldCommandTest, SaysThatItHoldsAndGoesOnUntilItIsInterrupted) {
    client.Connect();
    isInterrupted = true;
    EXPECT_TRUE(Run(Words({"hold", "/Mine", "/Yours"})).IsDone());
    EXPECT_EQ(output, QByteArray("held /Mine\nheld /Yours\n"));
    EXPECT_EQ(writes, 1);  // at once
}

TEST_F(HoldCommandTest, ALostConnectionIsToldAndSoIsItsReturn) {
    onWrite = [this] {
        if (writes == 1) client.Soon([this] { client.Disconnect(); });
        if (writes == 2) client.Soon([this] { client.Connect(); });
        if (writes == 3) isOutputOpen = false;
    };
    EXPECT_TRUE(RunConnected(Words({"hold", "/Mine"})).IsDone());
    EXPECT_EQ(output, QByteArray("held /Mine\nlost /Mine\nheld /Mine\n"));
}

TEST_F(HoldCommandTest, JsonIsAnObjectALine) {
    client.Connect();
    isInterrupted = true;
    EXPECT_TRUE(Run(Words({"hold", "/Mine", "--json"})).IsDone());
    EXPECT_EQ(output, QByteArray("{\"event\":\"held\",\"path\":\"/Mine\"}\n"));
}

TEST_F(HoldCommandTest, WhatIsTakenAwayEndsIt) {
    onWrite = [this] {
        client.Soon([] {
            values::Refusals::Instance().Report(nullptr, QStringLiteral("/Mine"),
                                                QStringLiteral("not any more"));
        });
    };
    const Outcome outcome = RunConnected(Words({"hold", "/Mine"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Mine: not any more"));
}

}  // namespace
