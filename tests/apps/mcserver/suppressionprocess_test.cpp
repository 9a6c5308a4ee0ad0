// SPDX-License-Identifier: Apache-2.0
// The program with a module of digital inputs, which is a program too.
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/modbus/modbussystem.h>
#include <platform/modbus/modbustcpinterfacecreator.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QFile>

namespace {

class AServerWithAModule : public testing::Test {
  protected:
    AServerWithAModule() { m_server.WriteFile(QStringLiteral("mcserver.ini"), Configuration()); }
    ~AServerWithAModule() override {
        for (const char* const name : {"MCS_MODBUS_PORT", "QT_QPA_PLATFORM", "QT_DEBUG_PLUGINS", "LC_ALL"})
            qunsetenv(name);
        if (!m_platform.isEmpty()) qputenv("QT_QPA_PLATFORM", m_platform);
    }

    static QByteArray Configuration() {
        return "[GTS]\n"
               "ModuleCount=1\n"
               "Module0\\Index=0\n"
               "Module0\\Name=ADAM-6051\n"
               "Module0\\Address=127.0.0.1\n"
               "Module0\\PollInterval=10\n"
               "Module0\\Assignments\\AssignmentCount=12\n"
               "Module0\\Assignments\\DI_3=121500000\n";
    }
    void Start() {
        ASSERT_NO_FATAL_FAILURE(m_module.Start({QStringLiteral("--fault"), QStringLiteral("exception 6")}));
        qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module.Port()));
        ASSERT_NO_FATAL_FAILURE(m_server.Start());
    }
    bool WaitForOutput(const char* text) {
        return ServerProcess::WaitFor([&] { return m_server.Output().contains(QString::fromUtf8(text)); });
    }
    void Connect() {
        ASSERT_TRUE(m_client.ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port()));
        ASSERT_TRUE(m_client.ConnectToMCSControlTree(QStringLiteral("/Console"),
                                                     static_cast<EMCSControlTreeSegments>(31)));
        ASSERT_TRUE(ServerProcess::WaitFor([this] { return m_client.IsMCSControlTreeConnected(); }));
        m_client.SetUniqueMpxORVName(QStringLiteral("Console"));
    }
    template <class V>
    static V* WaitForValue(const QString& path) {
        const auto find = [&] { return values::FindValue<V>(path, nullptr, nullptr); };
        EXPECT_TRUE(ServerProcess::WaitFor([&] { return find() != nullptr; })) << path.toStdString();
        return find();
    }

    bool WaitForAnswer(const char* text) {
        return ServerProcess::WaitFor([&] {
            const auto* const answer =
                values::FindValue<values::Value<QString>>(Own("Request/Answer"), nullptr, nullptr);
            return answer != nullptr && answer->GetValue().contains(QLatin1String(text));
        });
    }
    static QString Own(const char* below) {
        return QStringLiteral("/Console/DynamicMpxORVs/Console/") + QLatin1String(below);
    }

    static QString Module(const char* below) {
        return QStringLiteral("/Console/Status/Suppression/Modules/0/") + QLatin1String(below);
    }

    const QByteArray m_platform = qgetenv("QT_QPA_PLATFORM");
    values::Tree m_tree;
    MultiChannelServerClient m_client;
    ModuleProcess m_module;
    ServerProcess m_server;
};

TEST_F(AServerWithAModule, LogsThatItIsLost) {
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(
        WaitForOutput("GTS DataModule ADAM-6051 1/127.0.0.1 error: Modbus exception 6: "
                      "the module is busy"));
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_FALSE(m_server.Errors().contains(QStringLiteral("plugin"))) << m_server.Errors().toStdString();
}

TEST_F(AServerWithAModule, ConnectsItAnewByACommand) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"), Configuration() +
                                                           "Module0\\Label=Tower mast\n"
                                                           "Module0\\Labels\\DI_3=Tower 1\n");
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(WaitForOutput("GTS DataModule"));
    m_module.Say("fault none");
    m_module.Say("key 3");
    ASSERT_NO_FATAL_FAILURE(Connect());
    ASSERT_NE(m_client.CreateAndConnectDynamicMpxORV(QString()), nullptr);
    auto* const frequency = WaitForValue<values::ValueNumeric<double>>(Own("Request/Frequency"));
    ASSERT_NE(frequency, nullptr);
    ASSERT_TRUE(WaitForOutput("Ready"));
    frequency->SetValue(121.5e6);
    EXPECT_TRUE(WaitForAnswer("done, not supervised: tuned to 121.5 MHz"));  // the module is lost

    const auto* const reason = WaitForValue<values::Value<QString>>(Module("Reason"));
    const auto* const since = WaitForValue<values::Value<QString>>(Module("AnswersAgainSince"));
    ASSERT_TRUE(reason != nullptr && since != nullptr);
    EXPECT_TRUE(ServerProcess::WaitFor([&] {
        return reason->GetValue() == QLatin1String("answers again, reconnect it") &&
               since->GetValue().endsWith(QLatin1Char('Z'));
    })) << reason->GetValue().toStdString();
    auto* const command =
        WaitForValue<values::Value<bool>>(QStringLiteral("/Console/Command/ReconnectModules"));
    ASSERT_NE(command, nullptr);
    command->SetValue(true);
    EXPECT_TRUE(WaitForOutput("data modules in error are connected anew"));
    EXPECT_TRUE(WaitForAnswer("ended: 121.5 MHz is blanked by Tower mast, input Tower 1"));
    EXPECT_TRUE(ServerProcess::WaitFor([&] { return !command->GetValue(); }));
    EXPECT_TRUE(
        ServerProcess::WaitFor([&] { return reason->GetValue().isEmpty() && since->GetValue().isEmpty(); }));
}

TEST_F(AServerWithAModule, SaysAtTheStartWhatOfItIsNotInUse) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"), Configuration().replace("ModuleCount=1\n", ""));
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(WaitForOutput(
        "ModuleCount is missing, so these are not read and nothing of them is supervised: Module0"));
    EXPECT_EQ(m_server.Terminate(), 0);
}

TEST_F(AServerWithAModule, KeepsItsName) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"), Configuration() + "Module0\\Label=Tower mast\n");
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(WaitForOutput("GTS DataModule Tower mast/127.0.0.1 error"));
    EXPECT_EQ(m_server.Terminate(), 0);
    QFile file(m_server.ConfigPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("\nModule0\\Label=Tower mast\n"));
}

TEST_F(AServerWithAModule, LogsOnceThatItAnswersAgain) {
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(WaitForOutput("GTS DataModule ADAM-6051 1/127.0.0.1 error"));
    m_module.Say("fault none");
    ASSERT_TRUE(WaitForOutput("GTS DataModule ADAM-6051 1/127.0.0.1 answers again"));
    m_module.Say("fault silence");
    const QString timedOut = ModbusErrorText(modbussystem::CodeOf(modbussystem::EError::TimedOut));
    EXPECT_TRUE(WaitForOutput(timedOut.toUtf8()));
    EXPECT_EQ(m_server.Output().count(QStringLiteral("answers again")), 1);
}

TEST_F(AServerWithAModule, FillsNoJournalWhileItFails) {
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Connect());
    ASSERT_NE(m_client.CreateAndConnectDynamicMpxORV(QString()), nullptr);
    ASSERT_TRUE(WaitForOutput("Ready"));  // more than a second: a hundred polls
    // Once every ten seconds, however slow the machine is.
    EXPECT_LT(m_server.Output().count(QStringLiteral("GTS DataModule")), 5);
    EXPECT_LT(m_server.Errors().count(QStringLiteral("GTS DataModule")), 5);
}

TEST_F(AServerWithAModule, KeepsEntriesThatCannotBeUsedWhenItEnds) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"),
                       "[GTS]\n"
                       "ModuleCount=2\n"
                       "Module0\\Index=7\n"
                       "Module0\\Address=10.0.0.1\n"
                       "Module1\\Index=0\n"
                       "Module1\\Name=ADAM-6051\n"
                       "Module1\\Address=127.0.0.1\n"
                       "Module1\\PollInterval=10\n");
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(m_server.Terminate(), 0);
    QFile file(m_server.ConfigPath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    for (const char* const line :
         {"ModuleCount=1\n", "\nModule0\\Address=127.0.0.1\n", "\nNotLoaded\\Module0\\Index=7\n",
          "\nNotLoaded\\Module0\\Address=10.0.0.1\n"})
        EXPECT_TRUE(saved.contains(line)) << line << "in\n" << saved.toStdString();
    EXPECT_TRUE(m_server.Errors().contains(QStringLiteral("kept in GTS/NotLoaded: Module0")));
}

TEST_F(AServerWithAModule, LogsWhatIsWrongWithItsAddress) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"),
                       "[GTS]\n"
                       "ModuleCount=1\n"
                       "Module0\\Index=0\n"
                       "Module0\\Name=ADAM-6051\n"
                       "Module0\\Address=10.0.0.300\n"
                       "Module0\\PollInterval=10\n");
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    EXPECT_TRUE(WaitForOutput("): '300' is no number from 0 to 255"));
}

TEST_F(AServerWithAModule, NeedsNoPlatformForWindowsWithoutOne) {
    qputenv("QT_QPA_PLATFORM", "there-is-none");
    qputenv("QT_DEBUG_PLUGINS", "1");
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(WaitForOutput("GTS DataModule ADAM-6051 1/127.0.0.1 error"));
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_FALSE(m_server.Errors().contains(QStringLiteral("platforms"))) << m_server.Errors().toStdString();
}

TEST_F(AServerWithAModule, HasALogInEnglishWhateverTheLanguageOfItsWindow) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "de_DE.UTF-8");
    m_server.UseWindow();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_TRUE(
        WaitForOutput("GTS DataModule ADAM-6051 1/127.0.0.1 error: Modbus exception 6: the module is busy"));
#ifndef Q_OS_WIN  // there the language is that of the user's account, and not to be chosen by a test
    EXPECT_TRUE(ServerProcess::WaitFor([this] {
        return m_server.Errors().contains(QStringLiteral("GTS-Datenmodul ADAM-6051/127.0.0.1 Fehler"));
    })) << m_server.Errors().toStdString();
#endif
}

TEST_F(AServerWithAModule, HasNoCommandForModulesWithoutAny) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"), "");
    ASSERT_NO_FATAL_FAILURE(m_server.Start());
    ASSERT_NO_FATAL_FAILURE(Connect());
    EXPECT_NE(m_tree.FindItem(QStringLiteral("/Console/Command/ShallBeConnected")), nullptr);
    EXPECT_EQ(m_tree.FindItem(QStringLiteral("/Console/Command/ReconnectModules")), nullptr);
}

}  // namespace
