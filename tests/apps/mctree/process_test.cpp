// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/processfixture.h>

#include <QtCore/QTemporaryFile>

namespace {

QStringList Words(std::initializer_list<const char*> words) {
    QStringList list;
    for (const char* word : words)
        list += QString::fromUtf8(word);
    return list;
}

TEST_F(ProcessFixture, GetPrintsTheContentAlone) {
    EXPECT_EQ(Run(Words({"get", "/Status/SweepTime"})), 0);
    EXPECT_EQ(output, QByteArray("2500\n"));
    EXPECT_EQ(errors, QByteArray());
}

TEST_F(ProcessFixture, SetReachesTheServerBeforeItEnds) {
    EXPECT_EQ(Run(Words({"set", "/Status/SweepTime", "3 ms"})), 0);
    EXPECT_EQ(sweepTime.GetValue(), 3000);
    EXPECT_EQ(output + errors, QByteArray("3 ms\n"));
}

TEST_F(ProcessFixture, SetTellsWhichLimitHolds) {
    EXPECT_EQ(Run(Words({"set", "/Status/SweepTime", "9000"})), 0);
    EXPECT_EQ(sweepTime.GetValue(), 5000);
    EXPECT_EQ(output, QByteArray("5000\n"));
    EXPECT_EQ(errors, QByteArray("mctree: /Status/SweepTime holds 5 ms (0 us .. 5 ms)\n"));
}

TEST_F(ProcessFixture, WhatIsDeniedEndsWithOneAndTheReason) {
    EXPECT_EQ(Run(Words({"set", "/Locked", "on"})), 1);
    EXPECT_EQ(output, QByteArray());
    EXPECT_EQ(errors, QByteArray("mctree: /Locked: the switch is locked\n"));
}

TEST_F(ProcessFixture, WhatIsNotThereEndsWithOne) {
    EXPECT_EQ(Run(Words({"get", "/Nothing", "--timeout", "200"})), 1);
    EXPECT_EQ(errors, QByteArray("mctree: not found: /Nothing\n"));
}

TEST_F(ProcessFixture, OnlyHoldingAsksTheServerForWhatItWouldMake) {
    access.onProvide = [this](const QString& path) { tree.ProvideNode(path); };
    for (const char* command : {"ls", "get"}) {
        EXPECT_EQ(Run({QString::fromLatin1(command), QStringLiteral("/Mine")}), 1) << command;
        EXPECT_EQ(errors, QByteArray("mctree: not found: /Mine\n"));
    }
    EXPECT_EQ(Run({QStringLiteral("set"), QStringLiteral("/Mine/Frequency"), QStringLiteral("1")}), 1);
    Start({QStringLiteral("watch"), QStringLiteral("/Mine")});
    EXPECT_TRUE(WaitUntil([this] { return !access.started.empty() && access.started.size() == 4; }));
    EXPECT_EQ(tree.FindItem(QStringLiteral("/Mine")), nullptr);
    EXPECT_TRUE(access.provided.empty());
    Kill();
    Start({QStringLiteral("hold"), QStringLiteral("/Mine")});
    EXPECT_TRUE(WaitUntil([this] { return tree.FindItem(QStringLiteral("/Mine")) != nullptr; }));
}

TEST_F(ProcessFixture, WhatMayNotBeReadEndsWithOne) {
    tree.ProvideNode(QStringLiteral("/Hidden"));
    EXPECT_EQ(Run(Words({"ls", "/Hidden"})), 1);
    EXPECT_TRUE(errors.startsWith("mctree: ")) << errors.constData();
    EXPECT_TRUE(errors.contains("/Hidden")) << errors.constData();
}

TEST_F(ProcessFixture, WrongUsageEndsWithTwo) {
    EXPECT_EQ(Run(Words({"get"})), 2);
    EXPECT_EQ(errors, QByteArray("mctree: get needs a path (mctree --help tells more)\n"));
    EXPECT_EQ(Run(Words({"set", "/Status/SweepTime", "soon"})), 2);
    EXPECT_EQ(
        errors,
        QByteArray("mctree: /Status/SweepTime: \"soon\" is no whole number, alone or with us, ms or s\n"));
    EXPECT_EQ(Run(Words({"info", "--connect", "a b"})), 2);
    EXPECT_EQ(errors, QByteArray("mctree: --connect: \"a b\" can be no host (mctree --help tells more)\n"));
}

TEST_F(ProcessFixture, WithoutAServerItEndsWithThree) {
    server.Close(QStringLiteral("over"));
    EXPECT_EQ(Run(Words({"info", "--timeout", "60000"})), 3);
    EXPECT_EQ(QString::fromUtf8(errors),
              QStringLiteral("mctree: no connection to 127.0.0.1:%1: Connection refused\n").arg(port));
}

TEST_F(ProcessFixture, TheTokenMayComeFromTheEnvironment) {
    access.wantedToken = QStringLiteral("s\u00e9cret");
    EXPECT_EQ(Run(Words({"ls", "--timeout", "200"})), 3);
    EXPECT_TRUE(errors.contains("the token of '' is wrong")) << errors.constData();
    environment.insert(QStringLiteral("MCS_TOKEN"), access.wantedToken);
    EXPECT_EQ(Run(Words({"ls"})), 0);
}

TEST_F(ProcessFixture, TheTokenMayStandInAFile) {
    access.wantedToken = QStringLiteral("s\u00e9cret");
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(
        "s\xc3\xa9"
        "cret\n");
    file.close();
    EXPECT_EQ(Run({QStringLiteral("ls"), QStringLiteral("--token-file"), file.fileName()}), 0);
    EXPECT_EQ(errors, QByteArray());
}

TEST_F(ProcessFixture, AServerThatSpeaksOtherwiseIsToldAtOnce) {
    EXPECT_EQ(Run(Words({"info", "--tls", "--timeout", "60000"})), 3);
    EXPECT_TRUE(errors.contains("does the server speak TLS?")) << errors.constData();
}

TEST_F(ProcessFixture, TextsAreUtf8InEveryLocale) {
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    EXPECT_EQ(Run(Words({"set", "/Status/Comment", "\xc2\xb5"})), 0);
    EXPECT_EQ(comment.GetValue(), QString(QChar(0xb5)));
    EXPECT_EQ(Run(Words({"get", "/Status/Comment"})), 0);
    EXPECT_EQ(output, QByteArray("\xc2\xb5\n"));
}

TEST_F(ProcessFixture, InfoTellsOfTheServer) {
    EXPECT_EQ(Run(Words({"info"})), 0);
    EXPECT_TRUE(output.contains("server        a test\n")) << output.constData();
    EXPECT_TRUE(output.contains("values        3\n")) << output.constData();
    EXPECT_FALSE(output.contains("not known")) << output.constData();
}

TEST_F(ProcessFixture, WatchLastsWhileTheServerIsRestarted) {
    Start(Words({"watch", "/Status", "--count", "3"}));
    ASSERT_TRUE(WaitUntil([this] { return output.count("connected to") == 1; })) << errors.constData();
    sweepTime.SetValue(1);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("SweepTime = 1 us"); }));
    server.Close(QStringLiteral("back soon"));
    sweepTime.SetValue(2);
    ASSERT_TRUE(WaitUntil([this] { return output.contains("connection lost: "); }));
    Listen(port);
    ASSERT_TRUE(WaitUntil([this] { return output.count("connected to") == 2; }));
    ASSERT_TRUE(WaitUntil([this] { return output.contains("SweepTime = 2 us"); }));
    comment.SetValue(QStringLiteral("again"));
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_TRUE(output.contains("/Status/Comment   = again\n")) << output.constData();
}

TEST(Program, HelpAndVersionNeedNoServer) {
    for (const char* word : {"--help", "--version"}) {
        const ProgramOutcome outcome =
            ProgramRunner::Run(QStringLiteral(MCTREE_PROGRAM), {QString::fromUtf8(word)});
        EXPECT_EQ(outcome.code, 0) << word;
        EXPECT_TRUE(outcome.output.contains("mctree")) << word;
        EXPECT_EQ(outcome.errors, QByteArray()) << word;
    }
}

}  // namespace
