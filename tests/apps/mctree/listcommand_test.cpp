// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

#include <QtCore/QJsonArray>

using namespace mctree;

namespace {

class ListCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        values::Node& status = AddNode(Server(), "Status");
        Add(status, "SweepTime", new values::ValueNumeric<int>(250000, 0, 100000000));
        Add(AddNode(status, "Deep\n"), "Online", new values::Value<bool>(true));
        Add(Server(), "Comment", new values::Value<QString>(QStringLiteral("x\x1b[2J")));
    }
};

TEST_F(ListCommandTest, ListsTheRootUnlessAPathIsGiven) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls"})).IsDone());
    EXPECT_EQ(Lines(), Words({"Status/  node  2 items", "Comment  text  x\\x1b[2J"}));
}

TEST_F(ListCommandTest, ListsWhatIsBelowANode) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls", "/Status"})).IsDone());
    EXPECT_EQ(Lines(), Words({"SweepTime  integer  250 ms", "Deep\\n/    node     1 item"}));
}

TEST_F(ListCommandTest, ListsAValueByItself) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls", "/Status/SweepTime"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/Status/SweepTime  integer  250 ms"}));
}

TEST_F(ListCommandTest, OtherProgramsGetOnePathALine) {
    EXPECT_TRUE(RunConnected(Words({"ls"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/Status/", "/Comment"}));
}

TEST_F(ListCommandTest, TheSubtreeIsPathsForOtherPrograms) {
    EXPECT_TRUE(RunConnected(Words({"ls", "-r"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/Status/", "/Status/SweepTime", "/Status/Deep\\n/", "/Status/Deep\\n/Online",
                              "/Comment"}));
}

TEST_F(ListCommandTest, SeveralPathsAreToldApartByTheirPaths) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls", "/Status", "/Comment"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/Status/SweepTime  integer  250 ms", "/Status/Deep\\n/    node     1 item",
                              "/Comment           text     x\\x1b[2J"}));
}

TEST_F(ListCommandTest, APatternListsWhatItMatchesAndNotWhatIsBelow) {
    EXPECT_TRUE(RunConnected(Words({"ls", "/*", "/*/D*"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/Status/", "/Comment", "/Status/Deep\\n/"}));
}

TEST_F(ListCommandTest, ARecursivePatternListsWhatIsBelowTooAndEachItemOnce) {
    EXPECT_TRUE(RunConnected(Words({"ls", "-r", "/S*", "/Status/*"})).IsDone());
    EXPECT_EQ(Lines(),
              Words({"/Status/", "/Status/SweepTime", "/Status/Deep\\n/", "/Status/Deep\\n/Online"}));
}

TEST_F(ListCommandTest, WhatIsNotFoundIsToldAndTheRestIsListed) {
    const Outcome outcome = RunConnected(Words({"ls", "/Nothing", "/Comment", "/S*/x*"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("not found: /Nothing\nnothing matches /S*/x*"));
    EXPECT_EQ(Lines(), Words({"/Comment"}));
}

TEST_F(ListCommandTest, AStarMayBeMeantAsItStands) {
    Add(Server(), "*", new values::Value<int>(1));
    EXPECT_TRUE(RunConnected(Words({"ls", "--literal", "/*"})).IsDone());
    EXPECT_EQ(Lines(), Words({"/*"}));
}

TEST_F(ListCommandTest, TheSubtreeIsIndentedOnATerminal) {
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls", "-r", "/"})).IsDone());
    EXPECT_EQ(Lines(), Words({"Status/      node     2 items", "  SweepTime  integer  250 ms",
                              "  Deep\\n/    node     1 item", "    Online   boolean  true",
                              "Comment      text     x\\x1b[2J"}));
}

TEST_F(ListCommandTest, AnEmptyNodeListsNothing) {
    AddNode(Server(), "Empty");
    EXPECT_TRUE(RunConnected(Words({"ls", "/Empty"})).IsDone());
    EXPECT_TRUE(output.isEmpty());
}

TEST_F(ListCommandTest, JsonIsAnArrayWithFullPaths) {
    EXPECT_TRUE(RunConnected(Words({"ls", "-r", "/Status", "--json"})).IsDone());
    const QJsonArray array = QJsonDocument::fromJson(output).array();
    QStringList paths;
    for (const auto& element : array)
        paths += element.toObject()[QStringLiteral("path")].toString();
    EXPECT_EQ(paths, Words({"/Status/SweepTime", "/Status/Deep\n", "/Status/Deep\n/Online"}));
    EXPECT_EQ(array[0].toObject()[QStringLiteral("content")].toInt(), 250000);
    EXPECT_EQ(Lines().size(), 5);  // one element a line
}

TEST_F(ListCommandTest, JsonOfAnEmptyNodeIsAnEmptyArray) {
    AddNode(Server(), "Empty");
    EXPECT_TRUE(RunConnected(Words({"ls", "/Empty", "--json"})).IsDone());
    EXPECT_EQ(output, QByteArray("[\n]\n"));
}

TEST_F(ListCommandTest, PathsOfTheRootHaveOneSlash) {
    EXPECT_TRUE(RunConnected(Words({"ls", "--json"})).IsDone());
    EXPECT_EQ(QJsonDocument::fromJson(output).array()[1].toObject()[QStringLiteral("path")].toString(),
              QStringLiteral("/Comment"));
}

TEST_F(ListCommandTest, ADeepTreeIsNoTrouble) {
    values::Node* node = &AddNode(Server(), "0");
    for (int i = 1; i < 3000; ++i)
        node = &AddNode(*node, "x");
    style.isTerminal = true;
    EXPECT_TRUE(RunConnected(Words({"ls", "-r", "/0"})).IsDone());
    EXPECT_EQ(Lines().size(), 2999);
}

}  // namespace
