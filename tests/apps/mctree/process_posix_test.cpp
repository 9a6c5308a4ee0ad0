// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/processfixture.h>

#include <sys/types.h>
#include <csignal>

namespace {

class SignalTest : public ProcessFixture, public testing::WithParamInterface<int> {};

TEST_P(SignalTest, EndsAWatchAsDone) {
    Start({QStringLiteral("watch"), QStringLiteral("/Status")});
    ASSERT_TRUE(WaitUntil([this] { return output.contains("connected to"); })) << errors.constData();
    ::kill(static_cast<pid_t>(process.GetProcessId()), GetParam());
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_EQ(errors, QByteArray());
}

INSTANTIATE_TEST_SUITE_P(, SignalTest, testing::Values(SIGINT, SIGTERM, SIGHUP), [](const auto& row) {
    return row.param == SIGINT ? "Interrupt" : row.param == SIGTERM ? "Terminate" : "HangUp";
});

class ShellTest : public ProcessFixture {
  protected:
    /// Lets the shell run \a command, in which %1 is mctree, connected to the server.
    void StartShell(const QString& command) {
        const QString program =
            QStringLiteral("'%1' --connect 127.0.0.1:%2").arg(QStringLiteral(MCTREE_PROGRAM)).arg(port);
        StartProgram(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command.arg(program)});
    }
};

TEST_F(ShellTest, AWatchThatNobodyReadsEndsAsDoneThoughNothingChanges) {
    StartShell(QStringLiteral("{ %1 watch /Status; echo $? >&2; } | head -n 1"));
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_EQ(output.count('\n'), 1);
    EXPECT_EQ(errors, QByteArray("0\n"));
}

TEST_F(ShellTest, AHostBeyondAsciiIsLookedUpAsItsName) {
    // "localhost" with two characters of Latin-1 that stand for an "o" in names of hosts.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    const QString host = QStringLiteral("\"$(printf 'l\\302\\272calh\\302\\272st'):%1\"").arg(port);
    StartProgram(QStringLiteral("/bin/sh"),
                 {QStringLiteral("-c"), QStringLiteral("'%1' --connect %2 get /Status/SweepTime")
                                            .arg(QStringLiteral(MCTREE_PROGRAM), host)});
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_TRUE(output.startsWith("2500")) << output.constData();
}

TEST_F(ShellTest, AnOutputThatIsClosedFromTheStartIsNotMistakenForTheConnection) {
    StartShell(QStringLiteral("%1 get /Status/SweepTime >&- 2>&-"));
    EXPECT_EQ(WaitForEnd(), 0);
}

}  // namespace
