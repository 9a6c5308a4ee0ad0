// SPDX-License-Identifier: Apache-2.0
// The program with receivers of Hamlib: its own dummy, and a server of Hamlib's as a peer.
#include <apps/mcserver/hamlib/hamlibmodule.h>
#include <apps/mcserver/hamlib/hamlibsettings.h>
#include <apps/mcserver/hamlib/irig.h>

#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/apps/mcserver/rigdaemon_posix.h>
#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QLibrary>

#include <gmock/gmock.h>

#include <set>

namespace {

class AServerWithHamlib : public testing::Test {
  protected:
    ~AServerWithHamlib() override { qunsetenv("MCS_MODBUS_PORT"); }

    void Start(const QString& device) {
        ASSERT_NO_FATAL_FAILURE(
            m_server.Start({QStringLiteral("--device"), QStringLiteral("hamlib:") + device}));
        ASSERT_TRUE(m_client.ConnectToServer(QStringLiteral("127.0.0.1"), m_server.Port()));
        ASSERT_TRUE(m_client.ConnectToMCSControlTree(QStringLiteral("/Console"),
                                                     static_cast<EMCSControlTreeSegments>(31)));
        ASSERT_TRUE(ServerProcess::WaitFor([this] { return m_client.IsMCSControlTreeConnected(); }));
        m_client.SetUniqueMpxORVName(QStringLiteral("Console"));
        ASSERT_NE(m_client.CreateAndConnectDynamicMpxORV(QString()), nullptr);
        m_frequency = WaitForValue<values::ValueNumeric<double>>(Own("Request/Frequency"));
        ASSERT_NE(m_frequency, nullptr);
    }
    void StartOver(const std::vector<RigDaemon*>& rigs) {
        QString device = QStringLiteral("2");
        for (RigDaemon* const rig : rigs) {
            ASSERT_NO_FATAL_FAILURE(rig->Start());
            device += QLatin1Char(',') + rig->Address();
        }
        ASSERT_NO_FATAL_FAILURE(Start(device));
        ASSERT_TRUE(WaitForFree(static_cast<int>(rigs.size())));
    }
    template <class V>
    static V* WaitForValue(const QString& path) {
        const auto find = [&] { return values::FindValue<V>(path, nullptr, nullptr); };
        EXPECT_TRUE(ServerProcess::WaitFor([&] { return find() != nullptr; })) << path.toStdString();
        return find();
    }
    static QString Own(const char* below) {
        return QStringLiteral("/Console/DynamicMpxORVs/Console/") + QLatin1String(below);
    }
    static QString Of(int receiver, const char* key) {
        return QStringLiteral("/Console/Status/Receivers/%1/%2").arg(receiver).arg(QLatin1String(key));
    }
    template <class V>
    static bool WaitForContent(const QString& path, const std::function<bool(const V&)>& isWanted) {
        return ServerProcess::WaitFor([&] {
            const V* const value = values::FindValue<V>(path, nullptr, nullptr);
            return value != nullptr && isWanted(*value);
        });
    }
    static bool WaitForText(const QString& path, const char* text) {
        return WaitForContent<values::Value<QString>>(
            path, [=](const auto& value) { return value.GetValue().contains(QLatin1String(text)); });
    }
    static bool WaitForAnswer(const char* text) { return WaitForText(Own("Request/Answer"), text); }
    static bool WaitForFree(int count) {
        return WaitForContent<values::ValueNumeric<int>>(
            QStringLiteral("/Console/Status/FreeFreqChannels"),
            [=](const auto& value) { return value.GetValue() == count; });
    }
    static bool WaitForFrequency(int receiver, double hz) {
        return WaitForContent<values::ValueNumeric<double>>(
            Of(receiver, "Frequency"), [=](const auto& value) { return value.GetValue() == hz; });
    }
    bool WaitForOutput(const char* text) {
        return ServerProcess::WaitFor([&] { return m_server.Output().contains(QLatin1String(text)); });
    }

    RigDaemon m_first;
    RigDaemon m_second;
    ModuleProcess m_module;
    values::Tree m_tree;
    MultiChannelServerClient m_client;
    ServerProcess m_server;
    values::ValueNumeric<double>* m_frequency = nullptr;
};

TEST_F(AServerWithHamlib, TunesADummy) {
    ASSERT_NO_FATAL_FAILURE(Start(QStringLiteral("1,mode=FM")));
    ASSERT_TRUE(WaitForFree(1));
    m_frequency->SetValue(121.5e6);
    EXPECT_TRUE(WaitForAnswer("done: tuned to 121.5 MHz"));
    EXPECT_TRUE(WaitForFrequency(1, 121.5e6));
    EXPECT_TRUE(WaitForText(Of(1, "Mode"), "FM"));
    EXPECT_TRUE(WaitForText(Of(1, "Name"), "Hamlib Dummy"));
    m_frequency->SetValue(2.9e9);
    EXPECT_TRUE(WaitForAnswer("refused: receiver 1 receives 0.15-1500 MHz only"));
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_EQ(m_server.Errors().toStdString(), "");
}

TEST_F(AServerWithHamlib, TunesAReceiverOnTheNetwork) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    m_frequency->SetValue(118.7e6);
    EXPECT_TRUE(WaitForAnswer("done: tuned to 118.7 MHz"));
    EXPECT_TRUE(WaitForFrequency(1, 118.7e6));
    EXPECT_EQ(m_first.Ask({QStringLiteral("f")}).value(0), QStringLiteral("118700000"));
    EXPECT_EQ(m_first.Ask({QStringLiteral("m")}).value(0), QStringLiteral("AM"));
}

TEST_F(AServerWithHamlib, ShowsHowTheSignalMoves) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    std::set<int> strengths;
    EXPECT_TRUE(WaitForContent<values::ValueNumeric<int>>(Of(1, "SignalStrength"), [&](const auto& value) {
        if (value.GetValue() > -200) strengths.insert(value.GetValue());
        return strengths.size() >= 2;
    }));
}

TEST_F(AServerWithHamlib, ShowsWhatSomebodyElseTunesTo) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    m_first.Ask({QStringLiteral("F"), QStringLiteral("99900000")});
    EXPECT_TRUE(WaitForFrequency(1, 99.9e6));
}

TEST_F(AServerWithHamlib, LosesAKilledReceiverAndGoesOnWithTheOther) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first, &m_second}));
    m_frequency->SetValue(118.7e6);
    ASSERT_TRUE(WaitForAnswer("done: tuned to 118.7 MHz"));
    m_first.Kill();
    const QByteArray ended = "ended: receiver 1 (" + m_first.Address().toUtf8() + ") is lost: ";
    EXPECT_TRUE(WaitForAnswer(ended.constData()));
    EXPECT_TRUE(WaitForText(Of(1, "State"), "Error"));
    EXPECT_TRUE(WaitForText(QStringLiteral("/Console/Status/ConnectionState"), "1 of 2 receivers answer"));
    m_frequency->SetValue(119.1e6);
    EXPECT_TRUE(WaitForAnswer("done: tuned to 119.1 MHz"));
    EXPECT_TRUE(WaitForFrequency(2, 119.1e6));
    EXPECT_EQ(m_second.Ask({QStringLiteral("f")}).value(0), QStringLiteral("119100000"));

    ASSERT_NO_FATAL_FAILURE(m_first.Start());
    EXPECT_TRUE(WaitForText(Of(1, "State"), "Connected"));
    EXPECT_TRUE(WaitForOutput("answers again"));
    EXPECT_TRUE(WaitForFree(1));
}

TEST_F(AServerWithHamlib, LosesAStalledReceiverUntilItGoesOn) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    m_frequency->SetValue(118.7e6);
    ASSERT_TRUE(WaitForAnswer("done: tuned to 118.7 MHz"));
    m_first.Stall();
    EXPECT_TRUE(WaitForAnswer("ended: receiver 1"));
    EXPECT_TRUE(WaitForText(QStringLiteral("/Console/Status/ConnectionState"),
                            "connection lost: the device does not answer"));
    m_first.GoOn();
    EXPECT_TRUE(WaitForFree(1));
    m_frequency->SetValue(119.1e6);
    EXPECT_TRUE(WaitForAnswer("done: tuned to 119.1 MHz"));
}

TEST_F(AServerWithHamlib, EndsInTimeWhileAReceiverIsStalled) {
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    m_first.Stall();
    m_frequency->SetValue(118.7e6);
    ASSERT_TRUE(WaitForAnswer("done: tuned to 118.7 MHz"));
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(m_server.Terminate(), 0);
    EXPECT_LT(timer.elapsed(), 5000);
    m_first.GoOn();
}

TEST_F(AServerWithHamlib, StartsBeforeItsReceivers) {
    ASSERT_NO_FATAL_FAILURE(m_first.Start());
    m_first.Kill();
    ASSERT_NO_FATAL_FAILURE(Start(QStringLiteral("2,") + m_first.Address()));
    EXPECT_TRUE(WaitForText(Of(1, "State"), "Error"));
    EXPECT_TRUE(
        WaitForText(QStringLiteral("/Console/Status/ConnectionState"), "connection lost: no connection"));
    ASSERT_NO_FATAL_FAILURE(m_first.Start());
    EXPECT_TRUE(WaitForFree(1));
}

TEST_F(AServerWithHamlib, BlanksWhatAGroundTransmitterUses) {
    m_server.WriteFile(QStringLiteral("mcserver.ini"),
                       "[GTS]\nModuleCount=1\nModule0\\Index=0\nModule0\\Name=ADAM-6051\n"
                       "Module0\\Address=127.0.0.1\nModule0\\PollInterval=10\n"
                       "Module0\\Assignments\\AssignmentCount=12\nModule0\\Assignments\\DI_3=121500000\n");
    ASSERT_NO_FATAL_FAILURE(m_module.Start());
    qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module.Port()));
    ASSERT_NO_FATAL_FAILURE(StartOver({&m_first}));
    m_frequency->SetValue(121.5e6);
    ASSERT_TRUE(WaitForAnswer("tuned to 121.5 MHz"));
    m_module.Say("key 3");
    EXPECT_TRUE(WaitForAnswer("ended: 121.5 MHz is blanked by"));
    EXPECT_TRUE(WaitForFree(1));
}

struct Refused {
    const char* name;
    const char* device;
    const char* error;
};

class DevicesThatHamlibLacks : public testing::TestWithParam<Refused> {};

TEST_P(DevicesThatHamlibLacks, KeepTheServerFromStartingInOneLine) {
    ServerProcess server;
    EXPECT_EQ(
        server.Run({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--config"),
                    server.ConfigPath(), QStringLiteral("--device"), QLatin1String(GetParam().device)}),
        1);
    EXPECT_EQ(server.Errors().count(QLatin1Char('\n')), 1) << server.Errors().toStdString();
    EXPECT_TRUE(server.Errors().contains(QLatin1String(GetParam().error))) << server.Errors().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    AServerWithHamlib, DevicesThatHamlibLacks,
    testing::Values(Refused{"NoSuchModel", "hamlib:999999", "Hamlib knows no model 999999"},
                    Refused{"NoPort", "hamlib:2", "model 2 needs a port for each receiver"},
                    Refused{"NoSuchMode", "hamlib:1,mode=ZZ", "Hamlib knows no 'ZZ'"}),
    [](const auto& row) { return row.param.name; });

TEST(TheModuleForReceivers, IsRefusedByAServerOfAnotherVersion) {
    QLibrary library(QStringLiteral(MCSERVER_HAMLIB));
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto create = reinterpret_cast<hamlibmodule::Create>(library.resolve(hamlibmodule::EntryPoint));
    ASSERT_NE(create, nullptr) << library.errorString().toStdString();
    HamlibSettings settings;
    settings.model = 1;
    QString error;
    EXPECT_EQ(create("0.0.1", settings, &error), nullptr);
    EXPECT_THAT(error.toStdString(),
                testing::MatchesRegex("what knows Hamlib is of version .*, and the server of 0.0.1"));
}

}  // namespace
