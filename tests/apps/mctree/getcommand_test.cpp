// SPDX-License-Identifier: Apache-2.0
#include <platform/values/observation.h>

#include <tests/apps/mctree/commandfixture.h>
#include <tests/support/recordingobserver.h>

using namespace mctree;

namespace {

class GetCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        values::Node& node = AddNode(Server(), "a");
        Add(node, "Frequency", new values::ValueNumeric<double>(98.5e6, 0, 3e9));
        Add(node, "Comment", new values::Value<QString>(QStringLiteral("x\x1b[2J\ny")));
    }
};

TEST_F(GetCommandTest, PrintsTheContentAlone) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Frequency"})).IsDone());
    EXPECT_EQ(output, QByteArray("98500000\n"));
}

TEST_F(GetCommandTest, OtherProgramsGetATextAsItIs) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Comment"})).IsDone());
    EXPECT_EQ(output, QByteArray("x\x1b[2J\ny\n"));
}

TEST_F(GetCommandTest, ATerminalIsNotGivenOrders) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Comment"})).IsDone());
    EXPECT_EQ(output, QByteArray("x\\x1b[2J\\ny\n"));
}

TEST_F(GetCommandTest, ANodeHasNoContent) {
    const Outcome outcome = RunConnected(Words({"get", "/a"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/a is a node, which has no content (see ls)"));
}

TEST_F(GetCommandTest, JsonIsTheFullDescription) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Frequency", "--json"})).IsDone());
    EXPECT_EQ(Object()[QStringLiteral("path")].toString(), QStringLiteral("/a/Frequency"));
    EXPECT_EQ(Object()[QStringLiteral("content")].toDouble(), 98.5e6);
    EXPECT_EQ(Object()[QStringLiteral("max")].toDouble(), 3e9);
}

TEST_F(GetCommandTest, JsonDescribesANodeToo) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a", "--json"})).IsDone());
    EXPECT_EQ(Object()[QStringLiteral("kind")].toString(), QStringLiteral("node"));
}

TEST_F(GetCommandTest, SaysThatAContentIsStale) {
    RecordingObserver server([this](Observable*, TChangeCode code) {
        if (code == connectioncode::TicsChanged) Local<values::Value<QString>>("").SetState(values::Stale);
    });
    const Observation<IVtClient> observed(server, &client);
    const Outcome outcome = RunConnected(Words({"get", "/a/Comment"}));
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QStringLiteral("/a/Comment is stale: this is its last known content"));
}

TEST_F(GetCommandTest, SeveralContentsAreToldApartByTheirPaths) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Frequency", "/a/Comment"})).IsDone());
    EXPECT_EQ(output, QByteArray("/a/Frequency\t98500000\n/a/Comment\tx\\x1b[2J\\ny\n"));
}

TEST_F(GetCommandTest, PeopleSeeSeveralInColumnsWithTheirUnits) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"get", "/a/*"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/a/Frequency  98.5 MHz", "/a/Comment    x\\x1b[2J\\ny"}));
}

TEST_F(GetCommandTest, OfAPatternNodesDoNotCount) {
    EXPECT_TRUE(RunConnected(Words({"get", "/**"})).IsDone());
    EXPECT_EQ(Lines().size(), 2);
    EXPECT_EQ(RunConnected(Words({"get", "/*"})).message, QStringLiteral("nothing matches /*"));
}

TEST_F(GetCommandTest, AContentIsPrintedOnceThoughTwoPathsNameIt) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/F*", "/a/Frequency", "/*/Freq*"})).IsDone());
    EXPECT_EQ(Lines().size(), 1);
}

TEST_F(GetCommandTest, WhatIsNotFoundIsToldAndTheRestIsGot) {
    const Outcome outcome = RunConnected(Words({"get", "/b", "/a/Frequency", "/a"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("not found: /b\n/a is a node, which has no content (see ls)"));
    EXPECT_EQ(output, QByteArray("/a/Frequency\t98500000\n"));
}

TEST_F(GetCommandTest, JsonOfSeveralIsAnObjectALine) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/*", "--json"})).IsDone());
    ASSERT_EQ(Lines().size(), 2);
    for (const QString& line : Lines())
        EXPECT_TRUE(QJsonDocument::fromJson(line.toUtf8()).isObject());
}

class GetWaitTest : public GetCommandTest {
  protected:
    /// Runs the words once connected, and \a then when the mirror is there.
    Outcome RunWhile(const QStringList& words, std::function<void()> then) {
        client.Connect();
        client.Soon(std::move(then));
        return Run(words);
    }
    values::ValueNumeric<double>& Frequency() { return Local<values::ValueNumeric<double>>(""); }
};

TEST_F(GetWaitTest, WhatHoldsAlreadyIsNotWaitedFor) {
    EXPECT_TRUE(RunConnected(Words({"get", "/a/Frequency", "--wait", "=98.5 MHz"})).IsDone());
    EXPECT_EQ(output, QByteArray("98500000\n"));
}

TEST_F(GetWaitTest, AContentIsWaitedForThoughItHoldsForAMomentOnly) {
    EXPECT_TRUE(RunWhile(Words({"get", "/a/Frequency", "--wait", ">100M"}), [this] {
                    Frequency().SetValue(99e6);
                    Frequency().SetValue(101e6);
                    Frequency().SetValue(99e6);
                }).IsDone());
    EXPECT_EQ(output, QByteArray("101000000\n"));
}

TEST_F(GetWaitTest, WhatIsNotThereIsWaitedFor) {
    EXPECT_TRUE(RunWhile(Words({"get", "/b", "--wait", "exists"}), [this] {
                    Add(Server(), "b", new values::Value<int>(3));
                    client.Connect();
                }).IsDone());
    EXPECT_EQ(output, QByteArray("3\n"));
}

TEST_F(GetWaitTest, ItHasToHoldForAllPaths) {
    EXPECT_TRUE(RunWhile(Words({"get", "/a/Frequency", "/a/Comment", "--wait", "=7"}), [this] {
                    Frequency().SetValue(7);
                    EXPECT_TRUE(output.isEmpty());
                    Local<values::Value<QString>>("", 1).SetValue(QStringLiteral("7"));
                }).IsDone());
    EXPECT_EQ(Lines().size(), 2);
}

TEST_F(GetWaitTest, TimeThatIsOverHasACodeOfItsOwn) {
    const Outcome outcome = RunConnected(Words({"get", "/a/Frequency", "--wait", "=1", "--timeout", "20"}));
    EXPECT_EQ(outcome.code, EExitCode::TimedOut);
    EXPECT_EQ(outcome.message, QStringLiteral("what is waited for did not come about in time"));
    EXPECT_TRUE(output.isEmpty());
}

TEST_F(GetWaitTest, AConditionThatMeansNothingForTheValueIsWrongUsage) {
    const Outcome outcome = RunConnected(Words({"get", "/a/Frequency", "--wait", "=soon"}));
    EXPECT_EQ(outcome.code, EExitCode::Usage);
    EXPECT_TRUE(outcome.message.startsWith(QStringLiteral("/a/Frequency: \"soon\" is no number")));
    EXPECT_EQ(RunConnected(Words({"get", "/a", "--wait", "=1"})).message,
              QStringLiteral("/a: is a node, which has no content to wait for"));
}

TEST_F(GetWaitTest, AStaleContentIsNotWhatIsWaitedFor) {
    client.Connect();
    const Outcome outcome = RunWhile(Words({"get", "/a/Frequency", "--wait", "=1"}), [this] {
        client.Disconnect();
        Frequency().SetValue(1);
        EXPECT_TRUE(output.isEmpty());
        client.Connect();
    });
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(output, QByteArray("1\n"));
}

}  // namespace
