// SPDX-License-Identifier: Apache-2.0
// The demonstration with a cluster of NATS, as it is set up for real ones: users, TLS, three nodes, one
// killed.
#include <tests/apps/mcconsole/nodisplay.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>

namespace {

class NatsDemo : public testing::Test, protected ProgramRunner {};

TEST_F(NatsDemo, OutlivesOneOfItsNodes) {
    const std::shared_ptr<void> nobodySees = WithoutDisplay(environment);
    const QTemporaryDir directory;
    StartProgram(QStringLiteral(MCDEMO), {QStringLiteral("--pictures"), directory.path(),
                                          QStringLiteral("--nats"), QStringLiteral(MAKE_CLUSTER)});
    EXPECT_EQ(WaitForEnd(), 0) << output.constData();
    EXPECT_FALSE(errors.contains("mcdemo: ")) << errors.constData();
    EXPECT_FALSE(errors.contains("does not keep")) << errors.constData();
    // At first, and after the server was killed, but not after the node was.
    EXPECT_EQ(output.count("< connected as "), 4) << output.constData();
    EXPECT_EQ(output.count("< lost the server"), 2) << output.constData();
    EXPECT_EQ(output.count("alpha     < done: tuned to 121.5 MHz"), 3) << output.constData();
}

TEST_F(NatsDemo, SaysSoWhereNoClusterCanBeMade) {
    const std::shared_ptr<void> nobodySees = WithoutDisplay(environment);
    const QTemporaryDir directory;
    StartProgram(QStringLiteral(MCDEMO), {QStringLiteral("--pictures"), directory.path(),
                                          QStringLiteral("--nats"), QStringLiteral("/nowhere/make-cluster")});
    EXPECT_EQ(WaitForEnd(), 1);
    EXPECT_THAT(errors.toStdString(), testing::HasSubstr("mcdemo: /nowhere/make-cluster"));
}

// Names that begin with a digit, and ports that are not given: what a configuration's own grammar is picky
// about.
TEST_F(NatsDemo, IsWrittenAsNatsReadsIt) {
    const QTemporaryDir directory;
    const QString folder = directory.filePath(QStringLiteral("cluster"));
    const ProgramOutcome made = ProgramRunner::Run(
        QStringLiteral(MAKE_CLUSTER), {folder, QStringLiteral("--station"), QStringLiteral("3tower"),
                                       QStringLiteral("--node"), QStringLiteral("1north=nats1.example.org"),
                                       QStringLiteral("--node"), QStringLiteral("2south=10.0.0.1:4333")});
    ASSERT_EQ(made.code, 0) << made.errors.toStdString();
    EXPECT_THAT(made.output.toStdString(),
                testing::HasSubstr("--nats nats1.example.org:4222,10.0.0.1:4333 "));
    for (const char* const node : {"1north", "2south"}) {
        ChildProgram nats(ChildProgram::EErrors::WithOutput);
        nats.SetDirectory(folder + QLatin1Char('/') + QLatin1String(node));
        const ProgramOutcome read =
            nats.Run(QStringLiteral(NATS_SERVER),
                     {QStringLiteral("-t"), QStringLiteral("-c"), QStringLiteral("nats.conf")},
                     std::chrono::seconds(10));
        EXPECT_EQ(read.code, 0) << read.output.toStdString();
    }
}

struct BadCluster {
    const char* name;
    QStringList arguments;
    const char* complaint;
};

class MakeCluster : public testing::TestWithParam<BadCluster>, protected ProgramRunner {};

TEST_P(MakeCluster, RefusesWhatIsNoneAndWritesNothing) {
    const QTemporaryDir directory;
    const QString folder = directory.filePath(QStringLiteral("cluster"));
    const ProgramOutcome outcome = ProgramRunner::ProgramRunner::Run(
        QStringLiteral(MAKE_CLUSTER), QStringList{folder} + GetParam().arguments);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.errors.toStdString(), std::string("make-cluster: ") + GetParam().complaint + "\n");
    EXPECT_FALSE(QFile::exists(folder));
}

const QString Station = QStringLiteral("--station");
const QString Node = QStringLiteral("--node");

INSTANTIATE_TEST_SUITE_P(
    NatsDemo, MakeCluster,
    testing::Values(BadCluster{"NoStation", {Node, QStringLiteral("a=h")}, "a cluster needs a --station"},
                    BadCluster{"NoNode",
                               {Station, QStringLiteral("tower")},
                               "a cluster needs a --node; three of them stand the loss of one"},
                    BadCluster{"AStationWithADot",
                               {Station, QStringLiteral("to.wer")},
                               "'to.wer' is no name of a station"},
                    BadCluster{"AStationCalledLikeAUser",
                               {Station, QStringLiteral("viewer")},
                               "the users operator and viewer are there already"},
                    BadCluster{"ANodeWithoutHost",
                               {Node, QStringLiteral("a")},
                               "'a' is no node: NAME=HOST[:PORT[:CLUSTERPORT[:MONITORPORT]]]"},
                    BadCluster{"ANodeThatWouldWriteElsewhere",
                               {Node, QStringLiteral("../a=h")},
                               "'../a=h' is no node: NAME=HOST[:PORT[:CLUSTERPORT[:MONITORPORT]]]"},
                    BadCluster{"AnOptionWithoutValue", {Station}, "--station needs a value"},
                    BadCluster{"AnUnknownOption",
                               {QStringLiteral("--nodes"), QStringLiteral("a=h")},
                               "unknown option --nodes"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
