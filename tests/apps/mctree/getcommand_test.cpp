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

}  // namespace
