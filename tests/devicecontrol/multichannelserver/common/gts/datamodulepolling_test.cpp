// SPDX-License-Identifier: Apache-2.0
// What a data module makes of its connection, and that nothing is blanked or released wrongly on the way.
#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <QtTest/QSignalSpy>

namespace {

class APolledModule : public DataModuleTest {
  protected:
    bool WaitForStatus(const DataModule& module, const char* status) {
        return WaitUntil([&] { return StatusOf(module) == Text(status); });
    }
};

TEST_F(APolledModule, ShowsThatItIsConnected) {
    const auto module = MakeConnected(0xFFE);
    EXPECT_EQ(StatusOf(*module), Text("Connected"));
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0xFFE);
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_FALSE(IsBlanked(Second));
}

TEST_F(APolledModule, FollowsItsInputs) {
    const auto module = MakeConnected(FakeModules::AllInactive);
    EXPECT_FALSE(IsBlanked(First));
    m_modules.Read(m_ip, 0xFFE);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(First); }));
    m_modules.Read(m_ip, 0xFFD);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(Second); }));
    EXPECT_FALSE(IsBlanked(First));
    m_modules.Read(m_ip, 0);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(First) && IsBlanked(Second); }));
}

TEST_F(APolledModule, BlanksAllThatItIsAssignedIfItsFirstAnswerIsAllZero) {
    const auto module = MakeConnected(0);
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_TRUE(IsBlanked(Second));
}

TEST_F(APolledModule, WritesNothingToTheTreeWhileTheAnswerStaysTheSame) {
    const auto module = MakeConnected(0xFFE);
    RecordingObserver observer;
    values::Node& node = *m_tree.FindNode(Path("ADAM-6051-0"));
    for (values::TreeItem* const item : node.GetTreeItems())
        item->GetObservable()->AddObserver(&observer);
    const int requests = m_modules.Requests(m_ip);
    while (m_modules.Requests(m_ip) < requests + 5)
        RunTurns(1);
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{});
    for (values::TreeItem* const item : node.GetTreeItems())
        item->GetObservable()->DeleteObserver(&observer);
}

TEST_F(APolledModule, TracesItsInputs) {
    const auto module = Make();
    {
        const TraceRecorder traces(ErrorHandler::TraceDetails);
        module->SlotOnInputDiscretesChanged(12, 4094);
        ASSERT_EQ(traces.Records().size(), 1U);
        EXPECT_EQ(traces.Records()[0].message, Text("DataModule::SlotOnInputDiscretesChanged: 4094"));
        EXPECT_EQ(traces.Records()[0].file, Text("devicecontrol/multichannelserver/common/gts/datamodule"));
        EXPECT_EQ(traces.Records()[0].line, 211);
    }
    const TraceRecorder traces(~static_cast<unsigned>(ErrorHandler::TraceDetails));
    module->SlotOnInputDiscretesChanged(12, 4094);
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

TEST_F(APolledModule, ShowsAnErrorAndTellsIt) {
    const auto module = MakeConnected(0);
    QSignalSpy spy(module.get(), &DataModule::SignalError);
    m_modules.Fail(m_ip, 110);
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    EXPECT_FALSE(module->IsConnected());
    ASSERT_GE(spy.count(), 1);
    EXPECT_EQ(spy[0][0].toString(), Text("ADAM-6051"));
    EXPECT_EQ(spy[0][1].toString(), m_ip);
    EXPECT_EQ(spy[0][2].toInt(), 110);
    EXPECT_NE(spy[0][3].toString(), QString());
}

TEST_F(APolledModule, ReleasesWhatItBlankedWhenItIsLost) {
    const auto module = MakeConnected(0);
    m_modules.Fail(m_ip, 110);
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    EXPECT_FALSE(IsBlanked(First));
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), std::vector<double>(12, 0.0));
}

TEST_F(APolledModule, StaysInErrorWhenTheConnectionClosesAfterIt) {
    const auto module = Make();
    module->SlotOnConnectionEstablished();
    module->SlotOnConnectionError(110, QString());
    module->SlotOnConnectionClosed();
    EXPECT_EQ(StatusOf(*module), Text("Error"));
}

TEST_F(APolledModule, StaysInErrorUntilItIsConnectedAnew) {
    const auto module = MakeConnected(0);
    m_modules.Fail(m_ip, 110);
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    m_modules.Read(m_ip, 0);
    const int requests = m_modules.Requests(m_ip);
    while (m_modules.Requests(m_ip) < requests + 5)
        RunTurns(1);
    EXPECT_EQ(StatusOf(*module), Text("Error"));
    EXPECT_FALSE(IsBlanked(First));
    module->Disconnect();
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_TRUE(IsBlanked(First));
}

// An all-zero answer is not told at first: what was read before must not stand for it.
TEST_F(APolledModule, DoesNotTakeWhatItReadBeforeItWasLostForAReading) {
    const auto module = MakeConnected(FakeModules::AllInactive);
    m_modules.Fail(m_ip, 110);
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    m_modules.Read(m_ip, 0);
    module->Disconnect();
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_TRUE(IsBlanked(Second));
}

TEST_F(APolledModule, DoesNotTakeWhatItReadBeforeItWasDisconnectedForAReading) {
    const auto module = MakeConnected(FakeModules::AllInactive);
    module->Disconnect();
    m_modules.Read(m_ip, 0);
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_TRUE(IsBlanked(First));
}

TEST_F(APolledModule, DoesNotTakeWhatItReadBeforeAnErrorForAReading) {
    const auto module = Make();
    module->SlotOnInputDiscretesChanged(12, 5);
    module->SlotOnConnectionEstablished();
    module->SlotOnConnectionError(110, QString());
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
    module->SlotOnConnectionEstablished();
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
}

TEST_F(APolledModule, DoesNotTakeWhatItReadBeforeItsConnectionClosedForAReading) {
    const auto module = Make();
    module->SlotOnInputDiscretesChanged(12, 5);
    module->SlotOnConnectionEstablished();
    module->SlotOnConnectionClosed();
    module->SlotOnConnectionEstablished();
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
}

TEST_F(APolledModule, IsNotReopenedWhenItsConnectionCloses) {
    const auto module = Make();
    module->SlotOnConnectionEstablished();
    module->SlotOnConnectionClosed();
    EXPECT_EQ(StatusOf(*module), Text("Disconnected"));
    EXPECT_FALSE(module->IsConnected());
    EXPECT_EQ(m_modules.Addresses(), std::vector<QString>{});
}

TEST_F(APolledModule, HasOneThreadHoweverOftenItIsConnected) {
    const auto module = MakeConnected(0);
    module->Connect();
    module->SlotOnConnectionClosed();
    module->Connect();
    EXPECT_EQ(m_modules.Interfaces(), 1);
}

TEST_F(APolledModule, DisconnectsAndConnectsAgain) {
    const auto module = MakeConnected(0);
    module->Disconnect();
    EXPECT_EQ(StatusOf(*module), Text("Disconnected"));
    EXPECT_FALSE(module->IsConnected());
    EXPECT_FALSE(IsBlanked(First));
    EXPECT_EQ(m_modules.Interfaces(), 0);
    RunTurns(3);  // what its thread told last is not heard any more
    EXPECT_EQ(StatusOf(*module), Text("Disconnected"));
    module->Connect();
    EXPECT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_TRUE(IsBlanked(First));
}

TEST_F(APolledModule, DoesNotHearFromAThreadThatItEnded) {
    m_modules.Read(m_ip, 0);
    const auto module = Make();
    module->SetFrequency(0, First);
    module->Connect();
    while (m_modules.Requests(m_ip) < 2)
        QThread::yieldCurrentThread();
    module->Disconnect();
    RunTurns(3);
    EXPECT_FALSE(module->IsConnected());
    EXPECT_FALSE(IsBlanked(First));
}

TEST_F(APolledModule, WaitsForItsThreadWhenItDisconnects) {
    m_modules.Hang(m_ip);
    const auto module = Make();
    module->Connect();
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    module->Disconnect();
    EXPECT_EQ(m_modules.Interfaces(), 0);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].message, Text("DataModule::Disconnect(): Waiting for thread termination."));
    EXPECT_EQ(traces.Records()[0].file, Text("devicecontrol/multichannelserver/common/gts/datamodule"));
    EXPECT_EQ(traces.Records()[0].line, 200);
}

TEST_F(APolledModule, DoesNotWaitWithoutAThread) {
    const auto module = Make();
    const TraceRecorder traces;
    module->Disconnect();
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

TEST_F(APolledModule, IsConfiguredWhileARequestHangs) {
    m_modules.Hang(m_ip);
    const auto module = Make();
    module->Connect();
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    module->Configure(Text("ADAM-6051"), Text("10.0.0.2"), PollInterval(1));
    EXPECT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_EQ(m_modules.Interfaces(), 1);
    EXPECT_EQ(m_modules.Hanging(), 0);
}

TEST_F(APolledModule, IsDeletedWhileARequestHangs) {
    m_modules.Hang(m_ip);
    auto module = Make();
    module->Connect();
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    module.reset();
    EXPECT_EQ(m_modules.Interfaces(), 0);
    EXPECT_EQ(m_tree.FindNode(Path(""))->CountChildren(), 0);
}

TEST_F(APolledModule, ShowsAnAddressThatCannotBeRightAsAnError) {
    m_modules.Refuse(m_ip);
    const auto module = Make();
    QSignalSpy spy(module.get(), &DataModule::SignalError);
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][2].toUInt(), FakeModules::InvalidAddress);
    module->Disconnect();
    EXPECT_EQ(StatusOf(*module), Text("Error"));
}

/// Looks at what is blanked whenever anything is told below the node "GTS", which is after Blanking heard it.
class AWatchedModule : public APolledModule {
  protected:
    AWatchedModule()
        : m_observer([this](Observable*, TChangeCode) {
              m_firstWas.push_back(IsBlanked(First));
              m_secondWas.push_back(IsBlanked(Second));
          }) {}
    /// The first input is keyed, the second is not.
    void Watch() {
        for (values::TreeItem* const item : m_tree.FindNode(Path("ADAM-6051-0"))->GetTreeItems())
            item->GetObservable()->AddObserver(&m_observer);
        m_tree.FindNode(Path(""))->AddObserver(&m_observer);
    }
    ~AWatchedModule() override {
        values::Node& gts = *m_tree.FindNode(Path(""));
        gts.DeleteObserver(&m_observer);
        for (values::TreeItem* const module : gts.GetTreeItems())
            for (values::TreeItem* const item : static_cast<values::Node*>(module)->GetTreeItems())
                item->GetObservable()->DeleteObserver(&m_observer);
    }
    /// How often the answer for the first frequency changed, and whether the second was ever blanked.
    int ChangesOfFirst() const {
        int changes = 0;
        for (std::size_t i = 1; i < m_firstWas.size(); ++i)
            changes += m_firstWas[i] != m_firstWas[i - 1] ? 1 : 0;
        return changes;
    }
    bool WasSecondBlanked() const {
        return std::find(m_secondWas.begin(), m_secondWas.end(), true) != m_secondWas.end();
    }

    RecordingObserver m_observer;
    std::vector<bool> m_firstWas;
    std::vector<bool> m_secondWas;
};

TEST_F(AWatchedModule, NeverBlanksAnInactiveInputWhileItConnects) {
    m_modules.Read(m_ip, 0xFFE);
    const auto module = Make();
    module->SetFrequency(0, First);
    module->SetFrequency(1, Second);
    Watch();
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_EQ(ChangesOfFirst(), 1);
    EXPECT_TRUE(m_firstWas.back());
    EXPECT_FALSE(WasSecondBlanked());
}

TEST_F(AWatchedModule, NeverBlanksAnInactiveInputWhileItDisconnects) {
    const auto module = MakeConnected(0xFFE);
    Watch();
    module->Disconnect();
    EXPECT_FALSE(IsBlanked(First));
    EXPECT_FALSE(WasSecondBlanked());
}

TEST_F(AWatchedModule, NeverBlanksAnInactiveInputWhileItIsLostAndBackAgain) {
    const auto module = MakeConnected(0xFFE);
    Watch();
    m_modules.Fail(m_ip, 110);
    ASSERT_TRUE(WaitForStatus(*module, "Error"));
    m_modules.Read(m_ip, 0xFFE);
    module->Disconnect();
    module->Connect();
    ASSERT_TRUE(WaitForStatus(*module, "Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_FALSE(WasSecondBlanked());
}

TEST_F(AWatchedModule, IsShownDisconnectedBeforeItsItemsGo) {
    auto module = MakeConnected(0xFFE);
    std::vector<TChangeCode> codes;
    RecordingObserver list([&](Observable*, TChangeCode code) {
        codes.push_back(code);
        EXPECT_FALSE(IsBlanked(First));
    });
    treeaccess::ValueAt<Assignments>(Path("ADAM-6051-0/FrequencyAssignments"))->AddObserver(&list);
    Watch();
    module.reset();
    EXPECT_EQ(codes, (std::vector<TChangeCode>{changecode::ItemsChanged, changecode::StateChanged}));
    EXPECT_FALSE(IsBlanked(First));
    EXPECT_FALSE(WasSecondBlanked());
}

TEST_F(AWatchedModule, NeverReleasesAKeyedInputWhileItsAssignmentsArePublishedAgain) {
    const auto module = MakeConnected(0xFFE);
    Watch();
    module->SetFrequency(2, 130000000.0);
    module->RefreshTree();
    EXPECT_TRUE(m_firstWas.front());
    EXPECT_EQ(ChangesOfFirst(), 0);
    EXPECT_FALSE(WasSecondBlanked());
}

}  // namespace
