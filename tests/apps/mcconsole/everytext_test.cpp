// SPDX-License-Identifier: Apache-2.0
// Every text of a German console while things happen, with a server and a data module in processes of their
// own.
#include <apps/mcconsole/connectdialog.h>
#include <apps/pages/keysdialog.h>

#include <platform/values/valueaccess.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/apps/mcconsole/ingerman.h>
#include <tests/support/dialogs/modaldriver.h>

#include <QtCore/QSysInfo>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace {

class EveryTextTest : protected InGerman, public ConsoleTest {
  protected:
    EveryTextTest() {
        // People, programs, machines, policies by name, keys of the configuration: names stay.
        for (const QString& name :
             {QSysInfo::machineHostName(), QStringLiteral("mcconsole_tests"), QStringLiteral("mctree"),
              QStringLiteral("mcserver"), QStringLiteral("TestConsole"), QStringLiteral("ADAM-6051"),
              QStringLiteral("DeviceName"), QStringLiteral("NumberOfFreqChannels"),
              QStringLiteral("operator"), QStringLiteral("Turm West")})
            english.Allow(name);
        server.WriteFile(QStringLiteral("mcserver.ini"),
                         "[GTS]\n"
                         "ModuleCount=1\n"
                         "Module0\\Index=0\n"
                         "Module0\\Name=ADAM-6051\n"
                         "Module0\\Address=127.0.0.1\n"
                         "Module0\\PollInterval=10\n"
                         "Module0\\Assignments\\AssignmentCount=12\n"
                         "Module0\\Assignments\\DI_3=121500000\n"
                         "Module0\\Labels\\DI_3=Turm West\n");
    }
    ~EveryTextTest() override { qunsetenv("MCS_MODBUS_PORT"); }

    void ConnectWithModule() {
        ASSERT_NO_FATAL_FAILURE(module.Start());
        qputenv("MCS_MODBUS_PORT", QByteArray::number(module.Port()));
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        ASSERT_TRUE(WaitFor(
            [] { return Text("/Status/Suppression/Modules/0/State") == QLatin1String("Connected"); }));
        ASSERT_TRUE(
            WaitFor([] { return Text("/Status/ConnectionState").startsWith(QLatin1String("connected")); }));
        ASSERT_TRUE(WaitFor([] { return Mode() == QLatin1String("Scan"); }));
    }

    /// What the server's tree holds, without the language of the window.
    static QString Text(const char* below) {
        const auto* const value = values::FindValue<values::Value<QString>>(
            ConsoleSession::DefaultBasePath() + QLatin1String(below), nullptr, nullptr);
        return value != nullptr ? value->GetValue() : QString();
    }
    static QString Mode() {
        const auto* const mode = values::FindValue<values::ValueSelection>(
            ConsoleSession::DefaultBasePath() + QLatin1String("/Status/OperationMode"), nullptr, nullptr);
        return mode != nullptr ? mode->GetCurrentText() : QString();
    }
    static QString Own(const char* below) {
        return QStringLiteral("/DynamicMpxORVs/TestConsole/") + QLatin1String(below);
    }
    bool WaitForAnswer(const char* text) {
        return WaitFor([&] { return Text(Own("Request/Answer").toLatin1()).contains(QLatin1String(text)); });
    }
    void Set(const QString& path, const char* content) const {
        Tree({QStringLiteral("set"), QStringLiteral("/MultiChannelServer") + path,
              QString::fromLatin1(content)});
    }
    void Ask(const char* frequency) { Type(Find<QLineEdit>("MyMpxORV", "Frequency"), frequency); }
    void Click(const char* page, const char* name) {
        QTest::mouseClick(Find<QAbstractButton>(page, name), Qt::LeftButton);
    }

    /// Reads all there is when \a moment has come.
    void Look(const char* moment) { visibletexts::ForEachPage(*window, *window->GetTabs(), ReadAt(moment)); }
    void LookAt(QWidget& shown, const char* moment) { visibletexts::ForEach(shown, ReadAt(moment)); }
    /// Reads the question that \a ask leads to, and says no.
    void LookAtQuestion(const char* moment, const std::function<void()>& ask) {
        WithModalDialog<QDialog>(ask, [&](QDialog& question) {
            LookAt(question, moment);
            question.reject();
        });
    }
    QAction* Action(const char* german) const {
        for (QAction* const action : window->findChildren<QAction*>())
            if (action->text().remove(QLatin1Char('&')) == QString::fromUtf8(german)) return action;
        return nullptr;
    }

    ModuleProcess module;
};

TEST_F(EveryTextTest, IsGermanBeforeAnythingIsConnected) {
    ASSERT_GT(english.Count(), 400);
    Look("at first");
    LookAt(*std::make_unique<ConnectDialog>(RecentServers(), VtClientOptions(), nullptr),
           "the server is asked for");
    LookAt(*std::make_unique<KeysDialog>(window->GetKeys(), nullptr), "the keys are listed");
    ASSERT_NE(Action("Über"), nullptr);
    LookAtQuestion("about", [this] { Action("Über")->trigger(); });
    EXPECT_GT(count, 300);
    EXPECT_EQ(faults, "");
}

TEST_F(EveryTextTest, IsGermanWhileFrequenciesAreTunedRefusedAndTaken) {
    ASSERT_NO_FATAL_FAILURE(ConnectWithModule());
    Look("connected");
    Ask("118,4");
    ASSERT_TRUE(WaitForAnswer("done: tuned to 118.4 MHz"));
    Look("tuned");
    Ask("abc");
    Look("no frequency");
    Ask("5000");
    Look("out of range");
    module.Say("key 3");
    ASSERT_TRUE(
        WaitFor([] { return Text("/Status/Suppression/Modules/0/Inputs/3/KeyedSince") != QString(); }));
    Look("keyed");
    Ask("121,5");
    ASSERT_TRUE(WaitForAnswer("refused: 121.5 MHz is blanked"));
    Look("refused");
    Click("Overview", "RetryWhenSilent");
    Look("waiting for silence");
    module.Say("release 3");
    ASSERT_TRUE(WaitForAnswer("done: tuned to 121.5 MHz"));
    module.Say("key 3");
    ASSERT_TRUE(WaitForAnswer("ended: 121.5 MHz is blanked"));
    Look("taken away");
    Click("MyMpxORV", "BuiltInTest");
    ASSERT_TRUE(WaitForAnswer("refused: needs MayBIT"));
    Look("a policy is missing");
    EXPECT_EQ(faults, "");
}

TEST_F(EveryTextTest, IsGermanWhileAModuleIsLostAndComesBack) {
    ASSERT_NO_FATAL_FAILURE(ConnectWithModule());
    module.Say("fault exception 6");
    ASSERT_TRUE(
        WaitFor([] { return Text("/Status/Suppression/Modules/0/State") == QLatin1String("Error"); }));
    Look("the module is busy");
    module.Kill();
    ASSERT_TRUE(WaitFor(
        [] { return Text("/Status/Suppression/Modules/0/Reason").contains(QLatin1String("refused")); }));
    Look("the module is gone");
    Ask("121,5");
    ASSERT_TRUE(WaitForAnswer("done, not supervised"));
    Look("not supervised");
    module.Restart();
    Set(QStringLiteral("/Command/ReconnectModules"), "true");
    ASSERT_TRUE(
        WaitFor([] { return Text("/Status/Suppression/Modules/0/State") == QLatin1String("Connected"); }));
    Look("the module is back");
    EXPECT_EQ(faults, "");
}

TEST_F(EveryTextTest, IsGermanWhileOthersSwitchRightsAndTakeTheDevice) {
    ASSERT_NO_FATAL_FAILURE(ConnectWithModule());
    Set(Own("Policy/MayBeJobMaster"), "true");
    Set(Own("Policy/MayBIT"), "true");
    Set(Own("Policy/MayCal"), "true");
    Click("MyMpxORV", "BecomeMaster");
    ASSERT_TRUE(WaitForAnswer("done: is master"));
    Look("job master");
    LookAtQuestion("quitting as master", [this] { window->close(); });
    LookAtQuestion("disconnecting as master", [this] { Action("Trennen")->trigger(); });
    Click("MyMpxORV", "BuiltInTest");
    ASSERT_TRUE(WaitForAnswer("done: built-in test started"));
    Click("MyMpxORV", "Calibrate");
    ASSERT_TRUE(WaitForAnswer("refused: the ORV is busy"));
    Look("busy");
    ASSERT_TRUE(WaitFor([] { return Mode() == QLatin1String("Scan"); }));
    Look("the test has passed");
    Set(Own("Policy/MayBeJobMaster"), "false");
    ASSERT_TRUE(WaitForAnswer("ended: needs MayBeJobMaster"));
    Set(Own("Blanking"), "false");
    ASSERT_TRUE(WaitFor([] { return Text(Own("Status/BlankingSwitchedBy").toLatin1()) != QString(); }));
    Look("rights are taken away");
    Set(QStringLiteral("/Command/ShallBeConnected"), "false");
    ASSERT_TRUE(WaitFor([] { return Text("/Status/ConnectionState") == QLatin1String("not connected"); }));
    Ask("118,4");
    ASSERT_TRUE(WaitForAnswer("refused: the ORV is not connected"));
    Look("the device is let go");
    Set(QStringLiteral("/Command/ShallBeConnected"), "true");
    ASSERT_TRUE(WaitFor([] { return Mode() == QLatin1String("Scan"); }));
    Look("the device is back");
    EXPECT_EQ(faults, "");
}

TEST_F(EveryTextTest, IsGermanWhileTheConfigurationIsEdited) {
    ASSERT_NO_FATAL_FAILURE(ConnectWithModule());
    Set(QStringLiteral("/Config/DeviceName"), "Mast");
    ASSERT_TRUE(WaitFor([] { return Text("/Config/DeviceName") == QLatin1String("Mast"); }));
    Look("edited");
    Set(QStringLiteral("/Config/SaveConfig"), "true");
    ASSERT_TRUE(WaitFor([] { return Text("/Status/SavedConfig/DeviceName") == QLatin1String("Mast"); }));
    Look("saved");
    Set(QStringLiteral("/Config/NumberOfFreqChannels"), "3");
    Click("Commands", "shallBeConnectedState");
    Look("undo is offered");
    EXPECT_EQ(faults, "");
}

TEST_F(EveryTextTest, IsGermanWhileTheServerIsLostAndComesBack) {
    ASSERT_NO_FATAL_FAILURE(ConnectWithModule());
    Ask("118,4");
    ASSERT_TRUE(WaitForAnswer("done: tuned to 118.4 MHz"));
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    Look("lost");
    ASSERT_TRUE(
        WaitFor([this] { return !window->GetSession().GetProblem().contains(QLatin1String("closed")); }));
    Look("trying again");
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    ASSERT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
    ASSERT_TRUE(WaitFor([] { return Mode() == QLatin1String("Scan"); }));
    Look("back");
    window->GetSession().Disconnect();
    Look("disconnected");
    EXPECT_EQ(faults, "");
}

}  // namespace
