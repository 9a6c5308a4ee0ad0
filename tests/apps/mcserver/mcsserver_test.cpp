// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcserver/serverfixture.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <platform/values/observation.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/systemtext.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>

#include <cerrno>

using namespace std::chrono_literals;

namespace {

using testing::Contains;

const QString BootState = QStringLiteral("/MultiChannelServer/Status/BootState");
const QString OperationMode = QStringLiteral("/MultiChannelServer/Status/OperationMode");
const QString Online = QStringLiteral("/MultiChannelServer/Status/Online");
const QString ShallBeConnected = QStringLiteral("/MultiChannelServer/Command/ShallBeConnected");
const QString SaveConfig = QStringLiteral("/MultiChannelServer/Config/SaveConfig");
const QString DefaultFrequency = QStringLiteral("/MultiChannelServer/Config/DefaultFrequencyForChannel");

class McsServerTest : public ServerTest {
  protected:
    OrvScript Script(const QByteArray& text) {
        OrvScript script;
        QString error;
        EXPECT_TRUE(script.Parse(text, QStringLiteral("script"), &error)) << error.toStdString();
        return script;
    }
    /// Starts, and leaves in the log what is told of the start.
    void StartFromFile() { m_server->Start(std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot())); }
    /// What the status counts in microseconds.
    static std::chrono::microseconds SweepTime() {
        return std::chrono::microseconds(Count(QStringLiteral("SweepTime")));
    }
};

TEST_F(McsServerTest, BringsTheWholeTree) {
    Start(false);
    for (const char* const node : {"Config", "Command", "Status", "DynamicMpxORVs", "StaticMpxORVs"})
        EXPECT_NE(m_tree.FindNode(QStringLiteral("/MultiChannelServer/") + QLatin1String(node)), nullptr)
            << node;
}

TEST_F(McsServerTest, ShowsTheDeviceBooting) {
    QStringList states;
    Start(false);
    for (auto time = 0ms; time <= SimulatedOrv::BootTime; time += 50ms) {
        if (states.isEmpty() || states.last() != Choice(BootState)) states << Choice(BootState);
        EXPECT_TRUE(Flag(Online));
        EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), time == SimulatedOrv::BootTime ? 4 : 0);
        m_clock.Advance(50ms);
    }
    const QStringList expected = {QStringLiteral("Power On"), QStringLiteral("Loading"),
                                  QStringLiteral("Self Test"), QStringLiteral("Calibrating"),
                                  QStringLiteral("Ready")};
    EXPECT_EQ(states, expected);
    EXPECT_EQ(Choice(OperationMode), QStringLiteral("Scan"));
}

TEST_F(McsServerTest, ReportsTheSweepTimeAgainAndAgain) {
    Start();
    EXPECT_EQ(SweepTime(), 2040ms) << "two seconds of averaging by default, and 40 ms to get around";
    m_clock.Advance(500ms);
    EXPECT_EQ(SweepTime(), 2041ms);
    Set(ShallBeConnected, false);
    EXPECT_EQ(SweepTime(), 0ms);
}

TEST_F(McsServerTest, ASweepThatTakesLongerThanTheStatusCanCountIsShownAsTheLongest) {
    Start();
    m_server->OnSweepTimeChanged(72h);
    EXPECT_EQ(SweepTime(), 100s);
}

TEST_F(McsServerTest, ObeysShallBeConnected) {
    Start();
    Set(ShallBeConnected, false);
    EXPECT_FALSE(Flag(Online));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")), QStringLiteral("not connected"));
    EXPECT_EQ(Choice(BootState), QStringLiteral("Unknown"));
    EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), 0);
    Set(ShallBeConnected, true);
    EXPECT_TRUE(Flag(Online));
    m_clock.Advance(SimulatedOrv::BootTime);
    EXPECT_EQ(Choice(BootState), QStringLiteral("Ready"));
    EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), 4);
}

TEST_F(McsServerTest, ConnectsOnlyIfThatIsConfigured) {
    Configure("[General]\nConnectOnStartup=false\n");
    Start();
    EXPECT_FALSE(Flag(ShallBeConnected));
    EXPECT_FALSE(Flag(Online));
    Set(ShallBeConnected, true);
    EXPECT_TRUE(Flag(Online));
}

TEST_F(McsServerTest, TellsWhereItIsConnected) {
    Configure("[General]\nDeviceAddress=10.1.2.3\nDeviceName=North\n");
    Start();
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("connected to North at 10.1.2.3"));
}

TEST_F(McsServerTest, MoreChannelsCountAtOnce) {
    Start();
    auto* const channels = values::FindValue<values::ValueNumeric<int>>(
        QStringLiteral("/MultiChannelServer/Config/NumberOfFreqChannels"), nullptr, nullptr);
    channels->SetValue(7);
    EXPECT_EQ(Count(QStringLiteral("FreeFreqChannels")), 7);
}

TEST_F(McsServerTest, TheScanAveragesAsConfigured) {
    Start();
    auto* const averaging = values::FindValue<values::ValueSelection>(
        QStringLiteral("/MultiChannelServer/Config/DefaultScanAveragingTimeIndex"), nullptr, nullptr);
    averaging->Select(1000);
    m_clock.Advance(500ms);
    EXPECT_GE(SweepTime(), 1000ms);
    EXPECT_LT(SweepTime(), 1100ms);
    averaging->Select(50);
    m_clock.Advance(500ms);
    EXPECT_GE(SweepTime(), 50ms);
    EXPECT_LT(SweepTime(), 150ms);
}

TEST_F(McsServerTest, AFailingDeviceIsShownAndComesBack) {
    Start();
    m_device->RunScript(Script("after 1000 fail antenna torn off\nafter 5000 recover\n"));
    m_clock.Advance(1000ms);
    EXPECT_FALSE(Flag(Online));
    EXPECT_EQ(Choice(BootState), QStringLiteral("Failed"));
    EXPECT_EQ(Choice(OperationMode), QStringLiteral("Idle"));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")),
              QStringLiteral("connection lost: antenna torn off"));
    m_clock.Advance(4000ms);
    EXPECT_TRUE(Flag(Online));
    m_clock.Advance(SimulatedOrv::BootTime);
    EXPECT_EQ(Choice(BootState), QStringLiteral("Ready"));
}

TEST_F(McsServerTest, ADeviceThatFailsWhileNotWantedStaysAway) {
    Start();
    Set(ShallBeConnected, false);
    m_device->RunScript(Script("after 10 fail\nafter 20 recover\n"));
    m_clock.Advance(1000ms);
    EXPECT_FALSE(Flag(Online));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")), QStringLiteral("not connected"));
}

TEST_F(McsServerTest, WaitsForADeviceThatSomebodyElseUses) {
    m_device->RunScript(Script("after 0 occupy site B\nafter 3000 vacate\n"));
    m_clock.Turn();
    Start(false);
    EXPECT_FALSE(Flag(Online));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")), QStringLiteral("in use by site B"));
    m_clock.Advance(3000ms + SimulatedOrv::RetryTime);
    EXPECT_TRUE(Flag(Online));
}

TEST_F(McsServerTest, TakesTheDeviceByForceIfThatIsConfigured) {
    Configure("[General]\nForceConnect=true\n");
    m_device->RunScript(Script("after 0 occupy site B\n"));
    m_clock.Turn();
    Start(false);
    EXPECT_TRUE(Flag(Online));
}

TEST_F(McsServerTest, TheScriptChangesModesAndLogs) {
    Start();
    m_device->RunScript(Script("after 100 mode Memory Scan\nafter 200 log 3 bearings\n"));
    m_clock.Advance(100ms);
    EXPECT_EQ(Choice(OperationMode), QStringLiteral("Memory Scan"));
    m_clock.Advance(100ms);
    EXPECT_THAT(TakeLog(), Contains(QStringLiteral("ORV: 3 bearings")));
    EXPECT_EQ(StatusText(QStringLiteral("LogMessage")), QStringLiteral("14:03:22 ORV: 3 bearings"));
}

TEST_F(McsServerTest, SaveConfigSavesAndIsTakenBack) {
    KeepInFile();
    Start();
    values::FindValue<values::Value<QString>>(QStringLiteral("/MultiChannelServer/Config/DeviceName"),
                                              nullptr, nullptr)
        ->SetValue(QStringLiteral("South"));
    EXPECT_NE(Stored(QStringLiteral("DeviceName")), QStringLiteral("South"));
    Set(SaveConfig, true);
    EXPECT_FALSE(Flag(SaveConfig));
    EXPECT_EQ(Stored(QStringLiteral("DeviceName")), QStringLiteral("South"));
    EXPECT_THAT(TakeLog(), Contains(QStringLiteral("the configuration is saved")));
}

class SaveAnswers : public McsServerTest {
  protected:
    SaveAnswers() {
        KeepInFile();
        Start();
        m_answer.Begin(values::FindValue<values::Value<QString>>(SaveConfig + QStringLiteral("Answer"),
                                                                 nullptr, nullptr));
        m_observer.React([this](Observable*, TChangeCode code) {
            if (code == changecode::ContentChanged) m_answers << m_answer->GetValue();
        });
        Push();  // so that the file holds all keys
    }
    /// From now on the file cannot be written, by superusers either.
    void BlockWriting() { ASSERT_TRUE(QDir().mkpath(ConfigPath() + QStringLiteral(".next/in the way"))); }
    void AllowWriting() { ASSERT_TRUE(QDir(ConfigPath() + QStringLiteral(".next")).removeRecursively()); }
    void SetName(const char* name) {
        values::FindValue<values::Value<QString>>(QStringLiteral("/MultiChannelServer/Config/DeviceName"),
                                                  nullptr, nullptr)
            ->SetValue(QLatin1String(name));
    }
    /// What stands beside "SaveConfig" once it was pushed, and was told after the push.
    QString Push() {
        m_answers.clear();
        Set(SaveConfig, true);
        EXPECT_FALSE(Flag(SaveConfig));
        EXPECT_EQ(m_answers.size(), 1);
        return m_answers.value(0);
    }
    std::string Failure(const char* keys) const {
        return "failed: the configuration file '" + ConfigPath().toStdString() + "' cannot be written (" +
               SystemText(EEXIST, WindowsDeniesAccess).toStdString() + "); not saved: " + keys;
    }

    RecordingObserver m_observer;
    Observation<values::Value<QString>> m_answer{m_observer};
    QStringList m_answers;
};

TEST_F(SaveAnswers, TellWhoPushedThatAllIsSavedEveryTime) {
    EXPECT_EQ(Push(), QStringLiteral("done: the configuration is saved"));
    EXPECT_EQ(Push(), QStringLiteral("done: the configuration is saved"));
}

TEST_F(SaveAnswers, TellWhyNotAndWhichKeysUntilTheyAre) {
    ASSERT_NO_FATAL_FAILURE(BlockWriting());
    SetName("South");
    EXPECT_EQ(Push().toStdString(), Failure("DeviceName"));
    EXPECT_EQ(Push().toStdString(), Failure("DeviceName"));
    EXPECT_THAT(TakeLog(), Contains(testing::ResultOf(
                               [](const QString& line) {
                                   return line.startsWith(
                                       QLatin1String("the configuration cannot be saved: the configuration"));
                               },
                               true)));
    ASSERT_NO_FATAL_FAILURE(AllowWriting());
    EXPECT_EQ(Push(), QStringLiteral("done: the configuration is saved"));
    EXPECT_EQ(Stored(QStringLiteral("DeviceName")), QStringLiteral("South"));
}

TEST_F(SaveAnswers, TellOfTheFrequencyThatTheFileCannotHold) {
    values::FindValue<values::ValueNumeric<double>>(DefaultFrequency, nullptr, nullptr)->SetValue(2.5e9);
    EXPECT_EQ(Push(),
              QStringLiteral("done: the configuration is saved, but DefaultFrequencyForChannel of "
                             "2500000000 Hz cannot be kept: the configuration file holds whole hertz up "
                             "to 2147483647, so it holds -2147483648"));
}

TEST_F(SaveAnswers, AreLoggedForWhatSavesItself) {
    ASSERT_NO_FATAL_FAILURE(BlockWriting());
    TakeLog();
    values::FindValue<values::ValueNumeric<double>>(DefaultFrequency, nullptr, nullptr)->SetValue(145e6);
    EXPECT_THAT(TakeLog(),
                testing::ElementsAre(testing::ResultOf(
                    [](const QString& line) {
                        return line.endsWith(QLatin1String("not saved: DefaultFrequencyForChannel"));
                    },
                    true)));
}

/// A default frequency, and what is said when it is set and when it is read. Empty: nothing.
struct DefaultFrequencyCase {
    const char* name;
    double hz;
    const char* whenSet;
    const char* inFile;
    const char* whenRead;
};

class DefaultFrequencies : public McsServerTest, public testing::WithParamInterface<DefaultFrequencyCase> {
  protected:
    /// Of the log, what speaks of the frequency.
    QStringList Told() { return TakeLog().filter(QStringLiteral("DefaultFrequencyForChannel")); }
    static QStringList Expected(const char* line) {
        return *line != '\0' ? QStringList(QLatin1String(line)) : QStringList();
    }
};

TEST_P(DefaultFrequencies, AreToldIfTheFileCannotHoldThem) {
    KeepInFile();
    Start();
    TakeLog();
    values::FindValue<values::ValueNumeric<double>>(DefaultFrequency, nullptr, nullptr)
        ->SetValue(GetParam().hz);
    EXPECT_EQ(Told(), Expected(GetParam().whenSet));
    EXPECT_EQ(Stored(QStringLiteral("DefaultFrequencyForChannel")), QLatin1String(GetParam().inFile));
    Restart();
    TakeLog();
    StartFromFile();
    EXPECT_EQ(Told(), Expected(GetParam().whenRead));
}

const DefaultFrequencyCase AllDefaultFrequencies[] = {
    {"OfWholeHertz", 145e6, "", "145000000", ""},
    {"TheHighestThatFits", 2147483647, "", "2147483647", ""},
    {"TooHigh", 2147483648.0,
     "DefaultFrequencyForChannel of 2147483648 Hz cannot be kept: the configuration file holds whole hertz "
     "up to "
     "2147483647, so it holds -2147483648",
     "-2147483648",
     "the configuration file holds -2147483648 as DefaultFrequencyForChannel, which stands for a frequency "
     "above "
     "2147483647 Hz; 300000 is used"},
    {"TheHighest", 3e9,
     "DefaultFrequencyForChannel of 3000000000 Hz cannot be kept: the configuration file holds whole hertz "
     "up to "
     "2147483647, so it holds -2147483648",
     "-2147483648",
     "the configuration file holds -2147483648 as DefaultFrequencyForChannel, which stands for a frequency "
     "above "
     "2147483647 Hz; 300000 is used"},
    {"WithAFractionOfAHertz", 145000000.5,
     "DefaultFrequencyForChannel of 145000000.5 Hz cannot be kept: the configuration file holds whole hertz "
     "up to "
     "2147483647, so it holds 145000000",
     "145000000", ""},
};

INSTANTIATE_TEST_SUITE_P(, DefaultFrequencies, testing::ValuesIn(AllDefaultFrequencies),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(McsServerTest, TellsOfNumbersInTheFileThatItDoesNotUse) {
    Configure("[General]\nNumberOfFreqChannels=51\nDefaultScanAveragingTimeIndex=99\n");
    StartFromFile();
    const QStringList log = TakeLog();
    EXPECT_THAT(
        log, Contains(QStringLiteral("the configuration file holds 51 as NumberOfFreqChannels; 50 is used")));
    EXPECT_FALSE(log.filter(QStringLiteral("holds 99 as DefaultScanAveragingTimeIndex; ")).isEmpty());
}

TEST_F(McsServerTest, StoppingSavesTheConfigurationAndLetsGoOfTheDevice) {
    KeepInFile();
    Start();
    values::FindValue<values::Value<QString>>(QStringLiteral("/MultiChannelServer/Config/DeviceName"),
                                              nullptr, nullptr)
        ->SetValue(QStringLiteral("South"));
    m_server->Stop();
    EXPECT_EQ(Stored(QStringLiteral("DeviceName")), QStringLiteral("South"));
    EXPECT_FALSE(Flag(Online));
    Restart();
    Start();
    EXPECT_EQ(Text(QStringLiteral("/MultiChannelServer/Config/DeviceName")), QStringLiteral("South"));
}

TEST_F(McsServerTest, TheFirstStartWritesTheDefaultPoliciesForPeopleToFind) {
    KeepInFile();
    Start();
    EXPECT_EQ(Stored(QStringLiteral("DynamicMpxORVs/Policy/MayBeJobMaster")), QStringLiteral("true"));
    EXPECT_EQ(Stored(QStringLiteral("DynamicMpxORVs/Policy/MayCal")), QStringLiteral("false"));
}

const char* const TwoStatic =
    "[StaticMpxORVs]\n"
    "Names=\"Alpha, Bravo\"\n"
    "Alpha\\Comment=Mast 1\n"
    "Alpha\\MayCal=true\n"
    "Alpha\\MayBeJobMaster=false\n";

TEST_F(McsServerTest, MakesTheStaticMpxOrvsOfItsConfiguration) {
    Configure(TwoStatic);
    Start();
    EXPECT_EQ(Count(QStringLiteral("StaticMpxORVs")), 2);
    EXPECT_EQ(Text(Static(QStringLiteral("Alpha"), QStringLiteral("Status/Comment"))),
              QStringLiteral("Mast 1"));
    EXPECT_TRUE(Flag(Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayCal"))));
    EXPECT_FALSE(Flag(Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayBeJobMaster"))));
    EXPECT_TRUE(Flag(Static(QStringLiteral("Alpha"), QStringLiteral("Policy/MayRestartJob"))))
        << "what is not configured is as by default";
    EXPECT_TRUE(Exists(Static(QStringLiteral("Bravo"), QStringLiteral("Request/Answer"))));
}

TEST_F(McsServerTest, KeepsWhoSwitchedTheBlankingOfAStaticMpxOrv) {
    const QString since = Static(QStringLiteral("Alpha"), QStringLiteral("Status/BlankingSwitchedSince"));
    const QString by = Static(QStringLiteral("Alpha"), QStringLiteral("Status/BlankingSwitchedBy"));
    Configure(TwoStatic);
    Start();
    EXPECT_EQ(Text(since), QString());
    m_server->GetLog().SetActor(CodedText(QStringLiteral("anna (10.0.0.5:50000)")));
    Set(Static(QStringLiteral("Alpha"), QStringLiteral("Blanking")), false);
    m_server->GetLog().SetActor({});
    const QString moment = Text(since);
    ASSERT_NE(moment, QString());
    Set(SaveConfig, true);
    Restart();
    Start();
    EXPECT_FALSE(Flag(Static(QStringLiteral("Alpha"), QStringLiteral("Blanking"))));
    EXPECT_EQ(Text(since), moment);
    EXPECT_EQ(Text(by), QStringLiteral("anna (10.0.0.5:50000)"));
    EXPECT_EQ(Text(Static(QStringLiteral("Bravo"), QStringLiteral("Status/BlankingSwitchedSince"))),
              QString());
}

struct SwitchRow {
    const char* name;
    const char* value;
    bool on;
    const char* key;
    const char* stored;
};

class SwitchesOfStaticMpxOrvs : public McsServerTest, public testing::WithParamInterface<SwitchRow> {};

TEST_P(SwitchesOfStaticMpxOrvs, AreKeptWithoutASave) {
    Configure(TwoStatic);
    Start();
    Set(QStringLiteral("/MultiChannelServer/Config/ForceConnect"), true);
    Set(Static(QStringLiteral("Bravo"), QLatin1String(GetParam().value)), GetParam().on);
    m_clock.Advance(100ms);
    EXPECT_EQ(Stored(QLatin1String(GetParam().key)), QLatin1String(GetParam().stored));
    EXPECT_NE(Stored(QStringLiteral("ForceConnect")), QStringLiteral("true")) << "nobody has that saved";
}

INSTANTIATE_TEST_SUITE_P(
    Switches, SwitchesOfStaticMpxOrvs,
    testing::Values(SwitchRow{"Blanking", "Blanking", false, "StaticMpxORVs/Bravo/Blanking", "false"},
                    SwitchRow{"Policy", "Policy/MayBIT", true, "StaticMpxORVs/Bravo/MayBIT", "true"}),
    [](const testing::TestParamInfo<SwitchRow>& row) { return row.param.name; });

TEST_F(McsServerTest, TakesNoNonsenseForWhoSwitchedTheBlanking) {
    Configure(
        "[StaticMpxORVs]\nNames=Alpha\nAlpha\\BlankingSwitchedSince=yesterday\n"
        "Alpha\\BlankingSwitchedBy=anna\n");
    Start();
    EXPECT_EQ(Text(Static(QStringLiteral("Alpha"), QStringLiteral("Status/BlankingSwitchedSince"))),
              QString());
    EXPECT_EQ(Text(Static(QStringLiteral("Alpha"), QStringLiteral("Status/BlankingSwitchedBy"))), QString());
}

TEST_F(McsServerTest, SavesThePoliciesOfStaticMpxOrvs) {
    Configure(TwoStatic);
    Start();
    Set(Static(QStringLiteral("Bravo"), QStringLiteral("Policy/MayBIT")), true);
    Set(SaveConfig, true);
    EXPECT_EQ(Stored(QStringLiteral("StaticMpxORVs/Bravo/MayBIT")), QStringLiteral("true"));
    EXPECT_EQ(Stored(QStringLiteral("StaticMpxORVs/Alpha/MayCal")), QStringLiteral("true"));
    Restart();
    Start();
    EXPECT_TRUE(Flag(Static(QStringLiteral("Bravo"), QStringLiteral("Policy/MayBIT"))));
}

TEST_F(McsServerTest, NamesOfStaticMpxOrvsThatCannotBeAreToldAndLeftOut) {
    Configure("[StaticMpxORVs]\nNames=\"Alpha, a/b, Alpha,  , <i>\"\n");
    m_server->Start(std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot()));
    EXPECT_EQ(Count(QStringLiteral("StaticMpxORVs")), 1);
    const QStringList log = TakeLog();
    EXPECT_THAT(log, Contains(QStringLiteral("StaticMpxORVs: 'a/b' cannot be the name of an MpxORV")));
    EXPECT_THAT(log, Contains(QStringLiteral("StaticMpxORVs: 'Alpha' is there twice")));
    EXPECT_THAT(log, Contains(QStringLiteral("StaticMpxORVs: '(i)' cannot be the name of an MpxORV")));
}

}  // namespace
