// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

using namespace mctree;

namespace {

class SetCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        Add(Server(), "SweepTime", new values::ValueNumeric<int>(1, 0, 5000));
        Add(Server(), "Comment", new values::Value<QString>(QStringLiteral("before")));
        AddNode(Server(), "Node");
    }
};

TEST_F(SetCommandTest, WhatIsDoneNeedsNoWords) {
    QString asked;
    client.answer = [&asked](values::TreeItem& item) {
        asked = static_cast<values::Value<QString>&>(item).GetValue();
    };
    EXPECT_TRUE(RunConnected(Words({"set", "/Comment", "after"})).IsDone());
    EXPECT_TRUE(output.isEmpty());
    EXPECT_EQ(asked, QStringLiteral("after"));
}

TEST_F(SetCommandTest, AnEqualContentIsDoneWithoutAnAnswer) {
    client.answer = nullptr;
    EXPECT_TRUE(RunConnected(Words({"set", "/Comment", "before"})).IsDone());
}

TEST_F(SetCommandTest, AContentBeyondTheLimitsIsToldWithWhatHolds) {
    const Outcome outcome = RunConnected(Words({"set", "/SweepTime", "6 ms"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QStringLiteral("/SweepTime holds 5 ms (0 us .. 5 ms)"));
    EXPECT_EQ(output, QByteArray("5000\n"));
}

TEST_F(SetCommandTest, WhatTheServerMakesOfItIsTold) {
    client.answer = [](values::TreeItem& item) {
        static_cast<values::Value<QString>&>(item).SetValue(QStringLiteral("AFTER"));
    };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment holds AFTER"));
    EXPECT_EQ(output, QByteArray("AFTER\n"));
}

TEST_F(SetCommandTest, WhatIsDeniedIsToldWithTheReason) {
    client.answer = [](values::TreeItem& item) {
        static_cast<values::Value<QString>&>(item).SetValue(QStringLiteral("before"));
        values::Refusals::Instance().Report(&item, item.GetPathName(), QStringLiteral("role \"guest\"\n"));
    };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment: role \"guest\"\\n"));
    EXPECT_TRUE(output.isEmpty());
}

TEST_F(SetCommandTest, WhatHasGoneIsTold) {
    client.answer = [this](values::TreeItem& item) { tree.Delete(&item); };
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Comment: has gone"));
}

TEST_F(SetCommandTest, WithoutAnAnswerNothingIsKnown) {
    client.answer = nullptr;
    const Outcome outcome = RunConnected(Words({"set", "/Comment", "after", "--timeout", "20"}));
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message,
              QStringLiteral("/Comment: no answer, so it is not known whether this was done"));
}

TEST_F(SetCommandTest, ALostConnectionIsNoAnswer) {
    client.answer = [this](values::TreeItem&) { client.Disconnect(); };
    EXPECT_EQ(RunConnected(Words({"set", "/Comment", "after"})).code, EExitCode::NoConnection);
}

TEST_F(SetCommandTest, AWrongContentIsWrongUsage) {
    const Outcome outcome = RunConnected(Words({"set", "/SweepTime", "so\x1bon"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_EQ(outcome.message,
              QStringLiteral("/SweepTime: \"so\\x1bon\" is no whole number, alone or with us, ms or s"));
}

TEST_F(SetCommandTest, ANodeCannotBeSet) {
    EXPECT_EQ(RunConnected(Words({"set", "/Node", "1"})).message,
              QStringLiteral("/Node: is a node, which has no content"));
}

TEST_F(SetCommandTest, JsonTellsHowItEnded) {
    EXPECT_TRUE(RunConnected(Words({"set", "/SweepTime", "2", "--json"})).IsDone());
    EXPECT_EQ(output, QByteArray("{\"content\":2,\"path\":\"/SweepTime\",\"result\":\"done\"}\n"));
}

TEST_F(SetCommandTest, JsonTellsWhatHolds) {
    EXPECT_TRUE(RunConnected(Words({"set", "/SweepTime", "-1", "--json"})).IsDone());
    EXPECT_EQ(output, QByteArray("{\"content\":0,\"path\":\"/SweepTime\",\"result\":\"changed\"}\n"));
}

TEST_F(SetCommandTest, JsonTellsWhyNot) {
    client.answer = [](values::TreeItem& item) {
        values::Refusals::Instance().Report(&item, item.GetPathName(), QStringLiteral("no"));
    };
    EXPECT_EQ(RunConnected(Words({"set", "/SweepTime", "2", "--json"})).code, EExitCode::Refused);
    EXPECT_EQ(Object()[QStringLiteral("result")].toString(), QStringLiteral("refused"));
    EXPECT_EQ(Object()[QStringLiteral("reason")].toString(), QStringLiteral("/SweepTime: no"));
}

}  // namespace
