// SPDX-License-Identifier: Apache-2.0
// The server offered at NATS, and mctree that reaches it there, as programs.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/platform/nats/natsserver.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSysInfo>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

const QString Channels = QStringLiteral("/MultiChannelServer/Config/NumberOfFreqChannels");

class NatsPrograms : public testing::Test {
  protected:
    NatsPrograms() { EXPECT_TRUE(m_nats.Start()); }

    QStringList AtNats() const {
        return {QStringLiteral("--nats"), QStringLiteral("127.0.0.1:%1").arg(m_nats.Port()),
                QStringLiteral("--station"), QStringLiteral("tower"), QStringLiteral("--insecure")};
    }
    /// Runs mctree with the station as its server.
    ProgramOutcome Tree(const QStringList& words) const {
        return ProgramRunner::Run(
            QStringLiteral(MCTREE_PROGRAM),
            QStringList{QStringLiteral("--connect"), m_nats.Address(QStringLiteral("tower"))} + words);
    }
    /// Lets alice in as an operator who proves it by the token that is returned.
    QString Admit(ServerProcess& server) const {
        const ProgramOutcome made = ProgramRunner::Run(
            QStringLiteral(MCSERVER),
            {QStringLiteral("--make-token"), QStringLiteral("alice"), QStringLiteral("operator")});
        static const QRegularExpression words(QStringLiteral("token: (\\S+)\naccess file: (.*)\n"));
        const QRegularExpressionMatch match = words.match(QString::fromUtf8(made.output));
        EXPECT_TRUE(match.hasMatch()) << made.output.toStdString();
        server.WriteFile(QStringLiteral("access"), "allow operator read /\nallow operator write /\n" +
                                                       match.captured(2).toUtf8() + '\n');
        return match.captured(1);
    }

    NatsServer m_nats;
};

TEST_F(NatsPrograms, WhoHasTheTokenReadsAndWritesOverNats) {
    ServerProcess server;
    const QString token = Admit(server);
    ASSERT_NO_FATAL_FAILURE(server.Start(
        AtNats() + QStringList{QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return server.Output().contains(QStringLiteral("offered at NATS as the station tower"));
    })) << server.Output().toStdString();
    const QStringList alice = {QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("--token"),
                               token};
    ProgramOutcome outcome = Tree(alice + QStringList{QStringLiteral("set"), Channels, QStringLiteral("3")});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
    outcome = Tree(alice + QStringList{QStringLiteral("get"), Channels});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
    EXPECT_EQ(outcome.output.trimmed(), "3");
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return server.Output().contains(QStringLiteral("@nats/-:")) ||
               server.Output().contains(QStringLiteral("(nats/-:"));
    }));
}

TEST_F(NatsPrograms, TheStatusTellsWhatTheServerHasToDoWithNats) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(AtNats()));
    const ProgramOutcome outcome =
        Tree({QStringLiteral("get"), QStringLiteral("/MultiChannelServer/Status/Nats/*")});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
    const std::string told = outcome.output.toStdString();
    for (const char* line :
         {"Nats/Station\ttower\n", "Nats/Connected\ttrue\n", "Nats/Problem\t\n", "Nats/Kept\tfalse\n",
          "Nats/LostMessages\t0\n", "Nats/GivenUp\t0\n", "Nats/LostSessions\t0\n"})
        EXPECT_THAT(told, HasSubstr(line));
    EXPECT_THAT(told,
                HasSubstr(QStringLiteral("Nats/Server\t127.0.0.1:%1\n").arg(m_nats.Port()).toStdString()));
}

TEST_F(NatsPrograms, WhoHasNoTokenIsRefusedThereAsOnASocket) {
    ServerProcess server;
    Admit(server);
    ASSERT_NO_FATAL_FAILURE(server.Start(
        AtNats() + QStringList{QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    const ProgramOutcome outcome = Tree({QStringLiteral("get"), Channels});
    EXPECT_NE(outcome.code, 0);
    EXPECT_THAT(outcome.errors.toStdString(), HasSubstr("the server refuses"));
}

// On a socket of this machine everybody is.
TEST_F(NatsPrograms, WithoutAnAccessFileNobodyIsAnOperatorOverNats) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(AtNats()));
    EXPECT_EQ(Tree({QStringLiteral("get"), Channels}).code, 0);
    const ProgramOutcome outcome = Tree({QStringLiteral("set"), Channels, QStringLiteral("3")});
    EXPECT_NE(outcome.code, 0);
}

TEST_F(NatsPrograms, WhoLooksForStationsFindsThemWithoutKnowingAny) {
    ServerProcess tower;
    ASSERT_NO_FATAL_FAILURE(tower.Start(AtNats()));
    ServerProcess mast;
    QStringList words = AtNats();
    words.replaceInStrings(QStringLiteral("tower"), QStringLiteral("mast"));
    ASSERT_NO_FATAL_FAILURE(mast.Start(words));
    const QString where = QStringLiteral("nats://127.0.0.1:%1").arg(m_nats.Port());
    const ProgramOutcome outcome =
        ProgramRunner::Run(QStringLiteral(MCTREE_PROGRAM), {QStringLiteral("stations"), where});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
    const QStringList lines = QString::fromUtf8(outcome.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << outcome.output.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("mast   mcserver 0.1"))) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("tower  mcserver 0.1"))) << lines[1].toStdString();
    const QString device = QSysInfo::machineHostName() + QStringLiteral("_1");
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral("connected to %1 at localhost").arg(device)))
        << lines[1].toStdString();
    const ProgramOutcome json = ProgramRunner::Run(
        QStringLiteral(MCTREE_PROGRAM), {QStringLiteral("stations"), where, QStringLiteral("--json")});
    EXPECT_THAT(json.output.toStdString(), HasSubstr("\"station\":\"tower\""));
}

TEST_F(NatsPrograms, WhereNatsIsNotStationsAreNot) {
    m_nats.Kill();
    const ProgramOutcome outcome = ProgramRunner::Run(
        QStringLiteral(MCTREE_PROGRAM),
        {QStringLiteral("stations"), QStringLiteral("nats://127.0.0.1:%1").arg(m_nats.Port())});
    EXPECT_EQ(outcome.code, 3);
    EXPECT_THAT(outcome.errors.toStdString(), HasSubstr("No server available for connection"));
}

TEST_F(NatsPrograms, TheSecondServerOfAStationRefusesToStartAndSaysWhoIsThere) {
    ServerProcess first;
    ASSERT_NO_FATAL_FAILURE(first.Start(AtNats()));
    ServerProcess second;
    EXPECT_EQ(second.Run(AtNats() + QStringList{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                                                QStringLiteral("--config"), second.ConfigPath()}),
              1);
    EXPECT_THAT(second.Errors().toStdString(),
                HasSubstr("mcserver: the station 'tower': it is taken by mcserver on "));
    EXPECT_THAT(second.Errors().toStdString(),
                HasSubstr(QStringLiteral("(process %1, since ").arg(first.ProcessId()).toStdString()));
    EXPECT_EQ(Tree({QStringLiteral("get"), Channels}).code, 0);
}

TEST_F(NatsPrograms, AServerThatWasKilledIsThereAgainAtOnce) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(AtNats()));
    server.Kill();
    ASSERT_NO_FATAL_FAILURE(server.Restart(AtNats()));
    const ProgramOutcome outcome = Tree({QStringLiteral("get"), Channels});
    EXPECT_EQ(outcome.code, 0) << outcome.errors.toStdString();
}

TEST_F(NatsPrograms, WithNatsKilledAndBackTheServerIsThereAgainByItself) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(AtNats()));
    m_nats.Kill();
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return server.Output().contains(QStringLiteral("not offered at NATS as the station tower: "));
    }));
    ASSERT_TRUE(m_nats.Start());
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        const QString lines = QLatin1Char('\n') + server.Output();
        return lines.count(QStringLiteral("\noffered at NATS as the station tower")) == 2;
    }));
    EXPECT_EQ(Tree({QStringLiteral("get"), Channels}).code, 0);
}

TEST_F(NatsPrograms, WithoutNatsTheServerStartsAllTheSameAndSaysWhatIsMissing) {
    m_nats.Kill();
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start(AtNats()));
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return server.Output().contains(
            QStringLiteral("not offered at NATS as the station tower: NATS at 127.0.0.1:"));
    })) << server.Output().toStdString();
}

struct BadWords {
    const char* name;
    const char* words;
    const char* complaint;
};

class NatsOptionFaults : public testing::TestWithParam<BadWords> {};

TEST_P(NatsOptionFaults, AreOneLine) {
    ServerProcess server;
    EXPECT_EQ(server.Run(QString::fromUtf8(GetParam().words).split(QLatin1Char(' '))), 2);
    EXPECT_EQ(server.Errors().toStdString(),
              std::string("mcserver: ") + GetParam().complaint + " (see --help)\n");
}

INSTANTIATE_TEST_SUITE_P(
    , NatsOptionFaults,
    testing::Values(
        BadWords{"AStationWithoutNats", "--station tower", "--station: it needs --nats"},
        BadWords{"AFileWithoutNats", "--nats-ca x", "--nats-ca: it needs --nats"},
        BadWords{"NoCredentials", "--nats localhost",
                 "--nats: everybody who reaches NATS would come in: it needs --access (or --insecure)"},
        BadWords{"NoTlsToAnotherMachine", "--nats localhost,hill --access x",
                 "--nats: it needs TLS, since NATS is on another machine: --nats-tls (or --insecure)"},
        BadWords{"NoHost", "--insecure --nats nats://", "--nats: it names no host"},
        BadWords{"AStationThatIsNone", "--insecure --nats hill --station a.b",
                 "--station: 'a.b' is no station's name: letters, digits, - and _, a letter or a "
                 "digit first"},
        BadWords{"APassword", "--insecure --nats joe:secret@hill",
                 "--nats: credentials do not stand in the address but in files or the environment"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
