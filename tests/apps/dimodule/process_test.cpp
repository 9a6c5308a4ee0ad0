// SPDX-License-Identifier: Apache-2.0
#include <apps/common/childprogram.h>

#include <tests/apps/dimodule/moduleprocess.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr std::chrono::seconds Patience(30);

/// The program as its users have it: by its words, its lines and its exit codes.
class DiModuleProcess : public testing::Test {
  protected:
    /// What mbpoll reads in \a module: the lines "[0]: 	1", or its complaint.
    QByteArray Poll(const QStringList& what, int port) const {
        ChildProgram mbpoll(ChildProgram::EErrors::WithOutput);
        const ProgramOutcome outcome =
            mbpoll.Run(QStringLiteral(MBPOLL),
                       QStringList{QStringLiteral("-m"), QStringLiteral("tcp"), QStringLiteral("-0"),
                                   QStringLiteral("-1"), QStringLiteral("-p"), QString::number(port)} +
                           what + QStringList{QStringLiteral("127.0.0.1")},
                       Patience);
        EXPECT_NE(outcome.code, -1) << "mbpoll does not run, or does not end";
        return outcome.output;
    }
    static QByteArray States(const QByteArray& polled) {
        QByteArray states;
        for (const QByteArray& line : polled.split('\n'))
            if (line.startsWith('[')) states += line.right(1);
        return states;
    }
    QByteArray PollInputs(int count = 12) const {
        return Poll({QStringLiteral("-t"), QStringLiteral("1"), QStringLiteral("-r"), QStringLiteral("0"),
                     QStringLiteral("-c"), QString::number(count)},
                    module.Port());
    }
    QByteArray PollCoils() const {
        return Poll({QStringLiteral("-t"), QStringLiteral("0"), QStringLiteral("-r"), QStringLiteral("0"),
                     QStringLiteral("-c"), QStringLiteral("12")},
                    module.Port());
    }
    QString WriteScript(const QByteArray& text) const {
        QString path = directory.filePath(QStringLiteral("script"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    const QTemporaryDir directory;
    ModuleProcess module;
};

TEST_F(DiModuleProcess, IsReadByAnotherClient) {
    module.Start();
    EXPECT_EQ(States(PollInputs()), "111111111111");
    module.Say("key 0 3 11");
    EXPECT_EQ(States(PollInputs()), "011011111110");
    EXPECT_EQ(States(PollCoils()), "011011111110");
    EXPECT_THAT(PollInputs(13).toStdString(), HasSubstr("Illegal data address"));
    EXPECT_THAT(Poll({QStringLiteral("-t"), QStringLiteral("4"), QStringLiteral("-r"), QStringLiteral("0")},
                     module.Port())
                    .toStdString(),
                HasSubstr("Illegal function"));
}

TEST_F(DiModuleProcess, ShowsItsFaultsToAnotherClient) {
    module.Start();
    module.Say("fault exception 6");
    EXPECT_THAT(PollInputs().toStdString(), HasSubstr("Slave device or server is busy"));
    module.Say("fault transaction");
    EXPECT_THAT(PollInputs().toStdString(), HasSubstr("Invalid data"));
    module.Say("fault reset");
    EXPECT_THAT(PollInputs().toStdString(), HasSubstr("Connection reset by peer"));
    module.Say("fault none");
    EXPECT_EQ(States(PollInputs()), "111111111111");
}

TEST_F(DiModuleProcess, SaysWhereEachModuleIsAndWhatItDoes) {
    module.Start({QStringLiteral("--listen"), QStringLiteral("127.0.0.9:0")});
    EXPECT_NE(module.Port(0), 0);
    EXPECT_NE(module.Port(1), 0);
    EXPECT_EQ(module.Output(), QStringLiteral("listening on 127.0.0.1:%1\nlistening on 127.0.0.9:%2\n"
                                              "module 1 at 127.0.0.1:%1, 0 connections, 0 questions\n"
                                              "module 1 keyed: none\nmodule 1 fault: none\n"
                                              "module 2 at 127.0.0.9:%2, 0 connections, 0 questions\n"
                                              "module 2 keyed: none\nmodule 2 fault: none\n")
                                   .arg(module.Port(0))
                                   .arg(module.Port(1))
                                   .toUtf8());
    EXPECT_THAT(module.Say("key 2/3 4").toStdString(), StartsWith("module 2 keyed: 3 4\n"));
    EXPECT_THAT(module.Say("key 4").toStdString(), StartsWith("module 1 keyed: 4\nmodule 2 keyed: 3 4\n"));
    EXPECT_THAT(module.Say("fault 1/delay 5 x3").toStdString(), StartsWith("module 1 fault: delay 5 x3\n"));
    EXPECT_THAT(module.Say("states 2/0").toStdString(),
                StartsWith("module 2 keyed: 0 1 2 3 4 5 6 7 8 9 10 11\n"));
}

TEST_F(DiModuleProcess, ComplainsAboutCommandsAndGoesOn) {
    module.Start();
    module.Type("kee 3");
    module.Type("key 2/3");
    module.Type("wait 5");
    EXPECT_TRUE(
        module.WaitForErrors("dimodule: 'kee' is not understood\ndimodule: there is no module 2\n"
                             "dimodule: only a script waits and repeats\n"));
    EXPECT_EQ(States(PollInputs()), "111111111111");
}

TEST_F(DiModuleProcess, CarriesOutAScriptOverAndOver) {
    const QString script = WriteScript("key 3\nwait 5\nrelease 3\nwait 5\nrepeat\n");
    module.Start({QStringLiteral("--script"), script});
    EXPECT_TRUE(module.WaitForOutput("module 1 keyed: 3\nmodule 1 keyed: none\nmodule 1 keyed: 3\n"));
}

TEST_F(DiModuleProcess, AScriptMayEndIt) {
    const QString script = WriteScript("key 3\nwait 1\nquit\n");
    EXPECT_EQ(module.Run({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                          QStringLiteral("--script"), script}),
              0);
    EXPECT_TRUE(module.Output().endsWith("module 1 keyed: 3\n"));
}

TEST_F(DiModuleProcess, APatternKeysByItself) {
    module.Start({QStringLiteral("--pattern"), QStringLiteral("blink:10")});
    bool wasKeyed = false;
    bool wasReleased = false;
    for (int i = 0; i < 10000 && !(wasKeyed && wasReleased); ++i) {
        const QByteArray shown = module.Say("");
        wasKeyed = wasKeyed || shown.contains("keyed: 0 1 2");
        wasReleased = wasReleased || shown.contains("keyed: none");
    }
    EXPECT_TRUE(wasKeyed && wasReleased);
}

TEST_F(DiModuleProcess, EndsWithZeroWhenItIsAskedTo) {
    module.Start();
    module.Type("quit");
    EXPECT_EQ(module.End(), 0);
    EXPECT_EQ(module.Errors(), "");
}

#if defined(Q_OS_UNIX)
TEST_F(DiModuleProcess, EndsWithZeroOnASignalWhileItIsAsked) {
    module.Start({QStringLiteral("--fault"), QStringLiteral("delay 60000")});
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), module.Port());
    ASSERT_TRUE(socket.waitForConnected());
    socket.write(QByteArray::fromHex("00010000000601020000000c"));
    socket.flush();
    ASSERT_TRUE(module.WaitForConnections(1));
    EXPECT_EQ(module.Terminate(), 0);
    EXPECT_EQ(module.Errors(), "");
}
#endif

TEST_F(DiModuleProcess, TellsItsVersionAndHelp) {
    EXPECT_EQ(module.Run({QStringLiteral("--version")}), 0);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^dimodule \\d+\\.\\d+\\.\\d+\r?\n$"))
                    .match(QString::fromUtf8(module.Output()))
                    .hasMatch())
        << module.Output().toStdString();
    EXPECT_EQ(module.Run({QStringLiteral("--help")}), 0);
    EXPECT_THAT(module.Output().toStdString(), HasSubstr("--listen"));
}

TEST_F(DiModuleProcess, AWrongCommandLineIsTwoAndOneLine) {
    EXPECT_EQ(module.Run({QStringLiteral("--inputs"), QStringLiteral("40")}), 2);
    EXPECT_EQ(module.Errors(), "dimodule: --inputs: '40' is no number from 1 to 32 (see --help)\n");
    EXPECT_EQ(module.Output(), "");
}

TEST_F(DiModuleProcess, APortInUseIsOneAndOneLine) {
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const QString place = QStringLiteral("127.0.0.1:%1").arg(other.serverPort());
    EXPECT_EQ(module.Run({QStringLiteral("--listen"), place}), 1);
    EXPECT_THAT(module.Errors().toStdString(),
                StartsWith("dimodule: cannot listen on " + place.toStdString() + ": "));
    EXPECT_EQ(module.Errors().count('\n'), 1);
}

TEST_F(DiModuleProcess, AScriptThatCannotBeCarriedOutIsOneAndOneLine) {
    const QString script = WriteScript("key 1\nkey 2/3\n");
    EXPECT_EQ(module.Run({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                          QStringLiteral("--script"), script}),
              1);
    EXPECT_EQ(module.Errors(), "dimodule: " + script.toUtf8() + ": there is no module 2\n");
    EXPECT_EQ(module.Run({QStringLiteral("--script"), QStringLiteral("/nowhere/script")}), 1);
    EXPECT_EQ(module.Errors().count('\n'), 1);
}

}  // namespace
