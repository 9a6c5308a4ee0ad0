// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/processfixture.h>

#include <QtCore/QFileInfo>

#include <sys/types.h>
#include <chrono>
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

TEST_F(ShellTest, AValueMayComeFromTheStandardInput) {
    StartShell(QStringLiteral("printf 'one\\ntwo\\n' | %1 set /Status/Comment -"));
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_EQ(comment.GetValue(), QStringLiteral("one\ntwo"));
}

TEST_F(ShellTest, BehindTwoDashesItIsAText) {
    StartShell(QStringLiteral("%1 set /Status/Comment -- -"));
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_EQ(comment.GetValue(), QStringLiteral("-"));
}

TEST_F(ShellTest, LinesAreSetAsTheyComeAndFailuresToldAtOnce) {
    StartShell(QStringLiteral("exec %1 set -f -"));
    process.Say("/Status/SweepTime 7");
    ASSERT_TRUE(WaitUntil([this] { return sweepTime.GetValue() == 7; }));
    process.Say("/Locked on");
    ASSERT_TRUE(WaitUntil([this] { return errors == "mctree: line 2: /Locked: the switch is locked\n"; }));
    process.Say("/Status/SweepTime 8");
    EXPECT_EQ(process.EndInput(std::chrono::seconds(10)), 1);
    EXPECT_EQ(sweepTime.GetValue(), 8);
}

TEST_F(ShellTest, LinesThatDoNotComeCanBeInterrupted) {
    StartShell(QStringLiteral("exec %1 set -f -"));
    // What is told of the line says that its answer has come.
    const QByteArray refusal("mctree: line 1: /Locked: the switch is locked\n");
    process.Say("/Locked on");
    ASSERT_TRUE(WaitUntil([&] { return errors == refusal; }));
    ::kill(static_cast<pid_t>(process.GetProcessId()), SIGINT);
    EXPECT_EQ(WaitForEnd(), 1);
    EXPECT_EQ(errors.toStdString(), refusal.toStdString() + "mctree: interrupted\n");
}

TEST_F(ShellTest, WhatIsListedCanBeGot) {
    StartShell(QStringLiteral("%1 ls -r | grep -v '/$' | while read -r path; do %1 get \"$path\"; done"));
    EXPECT_EQ(WaitForEnd(), 0) << errors.constData();
    EXPECT_EQ(output, QByteArray("2500\n\nfalse\n"));
}

class CompletionTest : public ProcessFixture {
  protected:
    /// What bash offers behind \a line, in which %1 is the address of the server; a line each.
    QByteArray Offers(const QString& line) {
        const QString path = QFileInfo(QStringLiteral(MCTREE_PROGRAM)).path();
        environment.insert(QStringLiteral("PATH"),
                           path + QLatin1Char(':') + environment.value(QStringLiteral("PATH")));
        environment.insert(QStringLiteral("COMP_LINE"), line.arg(QStringLiteral("127.0.0.1:%1").arg(port)));
        environment.insert(QStringLiteral("COMPLETION"),
                           QStringLiteral(MCS_PACKAGING "/completions/mctree.bash"));
        StartProgram(
            QStringLiteral("bash"),
            {QStringLiteral("-c"), QStringLiteral("source \"$COMPLETION\"; COMP_POINT=${#COMP_LINE}; "
                                                  "_mctree; printf '%s\\n' \"${COMPREPLY[@]}\"")});
        EXPECT_EQ(WaitForEnd(), 0);
        EXPECT_EQ(errors, QByteArray());
        return output;
    }
};

TEST_F(CompletionTest, OffersCommandsOptionsAndPathsOfTheServer) {
    EXPECT_EQ(Offers(QStringLiteral("mctree h")), QByteArray("hold\nhelp\n"));
    EXPECT_EQ(Offers(QStringLiteral("mctree watch --c")),
              QByteArray("--connect\n--ca\n--cert\n--count\n--changes-only\n"));
    EXPECT_EQ(Offers(QStringLiteral("mctree --connect %1 get /St")), QByteArray("/Status/\n"));
    EXPECT_EQ(Offers(QStringLiteral("mctree get --connect %1 /Status/S")), QByteArray("/Status/SweepTime\n"));
    EXPECT_EQ(Offers(QStringLiteral("mctree get --connect %1 /Nothing/")), QByteArray("\n"));
}

}  // namespace
