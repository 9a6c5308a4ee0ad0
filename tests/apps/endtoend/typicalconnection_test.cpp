// SPDX-License-Identifier: Apache-2.0
// The life of a client application, from its connection to its end.
#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <tests/apps/endtoend/application.h>

#include <QtCore/QCoreApplication>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using values::GoingAway;
using values::Value;
using values::ValueNumeric;

using Codes = std::vector<TChangeCode>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// The data objects of an application, on what it mirrors of the server.
struct DataObjects {
    explicit DataObjects(const QString& base)
        : status(base + S("/Status")), configPath(base + S("/Config")), commandPath(base + S("/Command")) {}

    MCSStatus status;
    const QString configPath;
    const QString commandPath;
    MCSConfigData config{&configPath, false};
    MCSCommands commands{&commandPath};
};

/// What an observer of the status sees of a device that boots: each boot state once, and the log.
class BootWatcher final : public IObserver {
  public:
    explicit BootWatcher(MCSStatus& status) : m_status(status) { m_status.AddObserver(this); }
    ~BootWatcher() override { m_status.DeleteObserver(this); }
    BootWatcher(const BootWatcher&) = delete;
    BootWatcher& operator=(const BootWatcher&) = delete;

    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != changecode::ContentChanged) return;
        Take(states, m_status.GetBootStateAsString());
        Take(log, m_status.GetLogMessage().section(QLatin1Char(' '), 1));  // without the time
    }

    std::vector<QString> states;
    std::vector<QString> log;

  private:
    static void Take(std::vector<QString>& texts, const QString& text) {
        if (texts.empty() || texts.back() != text) texts.push_back(text);
    }

    MCSStatus& m_status;
};

class TypicalConnection : public Application {
  protected:
    /// The device boots because this application wants it to, and the observers of its status see it.
    void BootTheDevice(DataObjects& objects);
    /// All that the server shows in its status goes with the mirror, and the data object knows.
    void LetGoOfTheControlTree(DataObjects& objects);
    /// What the default policies are, and who is connected.
    void ExpectANewMpxOrv(MpxORVHandle& handle);
};

void TypicalConnection::BootTheDevice(DataObjects& objects) {
    EXPECT_EQ(objects.config.GetDeviceName(), S("South mast"));
    EXPECT_EQ(objects.config.GetNumberOfFreqChannels(), 7);
    EXPECT_EQ(objects.status.GetStaticMpxORVs(), 1);
    EXPECT_FALSE(objects.status.IsOnline());
    EXPECT_EQ(objects.status.GetBootStateAsString(), S("Unknown"));
    EXPECT_EQ(objects.status.GetConnectionState(), S("not connected"));
    BootWatcher watcher(objects.status);
    objects.commands.GetShallBeConnectedValue()->SetValue(true);
    EXPECT_TRUE(WaitUntil([&] { return objects.status.GetSweepTime() > 0; }));
    EXPECT_THAT(watcher.states, ElementsAre(S("Unknown"), S("Power On"), S("Loading"), S("Self Test"),
                                            S("Calibrating"), S("Ready")));
    EXPECT_THAT(watcher.log, Contains(S("ORV: Ready")));
    EXPECT_TRUE(objects.status.IsOnline());
    EXPECT_EQ(objects.status.GetConnectionState(), S("connected to South mast at localhost"));
    EXPECT_EQ(objects.status.GetFreeFreqChannels(), 7);
    EXPECT_EQ(objects.status.GetOperationModeAsString(), S("Scan"));
}

void TypicalConnection::ExpectANewMpxOrv(MpxORVHandle& handle) {
    EXPECT_EQ(handle.GetName(), S("Receiver"));
    EXPECT_TRUE(WaitUntil([&] { return handle.GetPolicySet().begin() != handle.GetPolicySet().end(); }));
    EXPECT_EQ(handle.GetPolicySet().ToString(),
              S("MayAlterFreqRanges, MayAlterFreqSingle, MayBeJobMaster, MayReadSingleFreqFromMasterRanges, "
                "MayRestartJob"));
    const MCSMpxORVStatus status(handle.GetLocalControlPath() + S("/Status"));
    ASSERT_EQ(status.GetConnectedClientsValue()->Count(), 1);
    EXPECT_EQ(status.GetConnectedClientsValue()->GetItemAt(0)->GetName(),
              QCoreApplication::applicationName());
    EXPECT_TRUE(HasDynamicMpxOrvs(1));
}

void TypicalConnection::LetGoOfTheControlTree(DataObjects& objects) {
    client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(TakeCodes(), Codes{5022});
    EXPECT_FALSE(client.IsMCSControlTreeConnected());
    EXPECT_EQ(tree.FindItem(S("/Server")), nullptr);
    EXPECT_EQ(objects.status.GetBootStateValue(), nullptr);
    EXPECT_EQ(objects.commands.GetShallBeConnectedValue(), nullptr);
    EXPECT_TRUE(client.IsConnectedToServer());
}

TEST_F(TypicalConnection, StepByStepAndBack) {
    ASSERT_NO_FATAL_FAILURE(StartServer());
    ASSERT_TRUE(client.ConnectToServer(S("127.0.0.1"), server.Port()));
    EXPECT_THAT(TakeCodes(), IsEmpty());
    ASSERT_TRUE(IsTold(serverclientcode::ConnectedToServer));
    EXPECT_EQ(TakeCodes(), (Codes{5019}));
    ASSERT_TRUE(client.ConnectToMCSControlTree(
        S("/Server"), CommandSegment | ConfigSegment | StatusSegment | StaticMpxORVsSegment));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    EXPECT_EQ(TakeCodes(), (Codes{5025, 5021}));

    DataObjects objects(S("/Server"));
    BootTheDevice(objects);

    MpxORVHandle* const own = client.CreateAndConnectDynamicMpxORV(S("/Mine"));
    ASSERT_NE(own, nullptr);
    ASSERT_TRUE(IsTold(serverclientcode::AllTicsEstablished));
    EXPECT_EQ(TakeCodes(), (Codes{5023, 5025}));
    ExpectANewMpxOrv(*own);
    EXPECT_EQ(Tune(S("/Mine"), 145e6), S("done: tuned to 145 MHz"));
    EXPECT_EQ(objects.status.GetUsedFreqChannels(), 1);

    MpxORVHandle* const tower = client.ConnectStaticMpxORV(QString(), S("Tower"));
    ASSERT_NE(tower, nullptr);
    EXPECT_EQ(TakeCodes(), (Codes{5023}));
    EXPECT_TRUE(tower->GetPolicySet().Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(MCSMpxORVStatus(tower->GetLocalControlPath() + S("/Status")).GetComment(), S("ATC position 2"));
    EXPECT_EQ(Press(S("/Server/StaticMpxORVs/Tower"), "BuiltInTest"), S("refused: needs MayBIT"));

    delete tower;
    EXPECT_THAT(TakeCodes(), IsEmpty());
    delete own;
    EXPECT_THAT(TakeCodes(), IsEmpty());
    EXPECT_EQ(tree.FindItem(S("/Mine")), nullptr);
    EXPECT_TRUE(HasDynamicMpxOrvs(0));
    EXPECT_TRUE(WaitUntil([&] { return objects.status.GetUsedFreqChannels() == 0; }));
    LetGoOfTheControlTree(objects);
    client.DisconnectFromServer();
    EXPECT_THAT(TakeCodes(), IsEmpty());
    EXPECT_FALSE(client.IsConnectedToServer());
}

TEST_F(TypicalConnection, WithTheMpxOrvsInAMirroredSegmentOfTheirOwn) {
    ASSERT_NO_FATAL_FAILURE(StartServer());
    ASSERT_NO_FATAL_FAILURE(Connect(AllSegments));
    EXPECT_EQ(TakeCodes(), (Codes{5019, 5025, 5021}));
    DataObjects objects(S("/Server"));
    BootTheDevice(objects);

    MpxORVHandle* const own = client.CreateAndConnectDynamicMpxORV(QString());
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(TakeCodes(), Codes{5023});
    EXPECT_EQ(own->GetLocalControlPath(), S("/Server/DynamicMpxORVs/Receiver"));
    ExpectANewMpxOrv(*own);
    EXPECT_EQ(Press(own->GetLocalControlPath(), "BecomeMaster"), S("done: is master"));
    EXPECT_TRUE(objects.status.IsMcsMasterJobControlled());

    delete own;
    EXPECT_THAT(TakeCodes(), IsEmpty());
    LetGoOfTheControlTree(objects);
    EXPECT_TRUE(HasDynamicMpxOrvs(0)) << "though the connection lasts";
    EXPECT_FALSE(outsideStatus->IsMcsMasterJobControlled());
    client.DisconnectFromServer();
    EXPECT_THAT(TakeCodes(), IsEmpty());
}

TEST_F(TypicalConnection, AStaticMpxOrvMirroredByItself) {
    ASSERT_NO_FATAL_FAILURE(StartServer());
    ASSERT_NO_FATAL_FAILURE(Connect(StatusSegment));
    EXPECT_EQ(TakeCodes(), (Codes{5019, 5025, 5021}));
    MpxORVHandle* const tower = client.ConnectStaticMpxORV(S("/Tower"), S("Tower"));
    ASSERT_NE(tower, nullptr);
    EXPECT_FALSE(tower->IsControlTreeConnected());
    ASSERT_TRUE(IsTold(serverclientcode::AllTicsEstablished));
    EXPECT_EQ(TakeCodes(), (Codes{5023, 5025}));
    const MCSMpxORVStatus status(S("/Tower/Status"));
    EXPECT_EQ(status.GetConnectedClientsValue()->Count(), 1);
    EXPECT_EQ(Press(S("/Tower"), "Calibrate"), S("refused: the ORV is not connected"));
    client.DisconnectAllMpxORVs();
    EXPECT_THAT(TakeCodes(), IsEmpty());
    EXPECT_EQ(tree.FindItem(S("/Tower")), nullptr);
}

}  // namespace
