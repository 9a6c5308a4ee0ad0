// SPDX-License-Identifier: Apache-2.0
// What the display shows, loads and saves.
#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>
#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/modbus/modbussystem.h>

#include <tests/devicecontrol/multichannelserver/common/gts/gtsdisplaytest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTranslator>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>

namespace {

class AGTSDisplay : public GTSDisplayTest {
  protected:
    bool IsBlanked(double frequency) {
        return Blanking::Instance()->IsFrequencyBlanked(frequency, &m_client);
    }

    BlankingClient m_client;
};

TEST_F(AGTSDisplay, HasTheNameGivenOrItsOwn) {
    EXPECT_EQ(Show().objectName(), Text("GTSDisplay"));
    m_display.reset();
    QWidget window;
    const GTSDisplay named(&window, "suppression", Qt::Widget);
    EXPECT_EQ(named.objectName(), Text("suppression"));
    EXPECT_EQ(named.parentWidget(), &window);
}

TEST_F(AGTSDisplay, IsLaidOutInThisOrder) {
    auto* const layout = qobject_cast<QVBoxLayout*>(Show().layout());
    ASSERT_NE(layout, nullptr);
    ASSERT_EQ(layout->count(), 5);
    const auto* const caption = qobject_cast<QLabel*>(layout->itemAt(0)->widget());
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->text(), Text("Data modules for Ground Transmitter Suppression:"));
    EXPECT_EQ(caption->buddy(), &Rows());
    ASSERT_NE(layout->itemAt(1)->spacerItem(), nullptr);
    EXPECT_EQ(layout->itemAt(1)->spacerItem()->sizeHint().height(), 5);
    EXPECT_EQ(layout->itemAt(2)->widget(), &Rows());
    const auto* const buttons = qobject_cast<QHBoxLayout*>(layout->itemAt(3)->layout());
    ASSERT_NE(buttons, nullptr);
    ASSERT_EQ(buttons->count(), 3);
    EXPECT_NE(buttons->itemAt(0)->spacerItem(), nullptr);
    EXPECT_EQ(buttons->itemAt(1)->widget(), &AssignInputs());
    EXPECT_EQ(buttons->itemAt(2)->widget(), &AddModule());
    EXPECT_NE(layout->itemAt(4)->spacerItem(), nullptr);
}

// A tool in which windows are laid out may show two of them, and has neither modules nor a configuration of
// ours.
TEST_F(AGTSDisplay, ThatOnlyLooksLikeOneBringsNothingIntoBeing) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 10);
    const QString before = Configured();
    {
        GTSDisplay look{GTSDisplay::LookOnly(), nullptr};
        const GTSDisplay another{GTSDisplay::LookOnly(), nullptr};
        look.show();
        EXPECT_EQ(look.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
        for (const QPushButton* const button : look.findChildren<QPushButton*>())
            EXPECT_FALSE(button->isEnabled()) << button->text().toStdString();
        EXPECT_EQ(m_tree.FindItem(Text("/ORVServer")), nullptr);
    }
    EXPECT_EQ(Configured(), before);
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), 1);
}

TEST_F(AGTSDisplay, HasButtonsOf80Pixels) {
    Show();
    EXPECT_EQ(AssignInputs().text(), Text("Assign Inputs"));
    EXPECT_EQ(AddModule().text(), Text("Add module"));
    EXPECT_EQ(AssignInputs().width(), 80);
    EXPECT_EQ(AddModule().width(), 80);
}

TEST_F(AGTSDisplay, HasATreeOfFiveColumns) {
    Show();
    const std::vector<std::pair<const char*, int>> columns{
        {"#", 40}, {"Type", 80}, {"IP Address", 80}, {"Polltime (ms)", 80}, {"Status", 80}};
    ASSERT_EQ(Rows().columnCount(), 5);
    int column = 0;
    for (const auto& [header, width] : columns) {
        EXPECT_EQ(Rows().headerItem()->text(column), Text(header));
        EXPECT_EQ(Rows().columnWidth(column), width);
        ++column;
    }
    EXPECT_EQ(Rows().selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_EQ(Rows().height(), 100);
    EXPECT_EQ(Rows().contextMenuPolicy(), Qt::CustomContextMenu);
    EXPECT_EQ(Rows().accessibleName(), Text("Data modules"));
}

TEST_F(AGTSDisplay, WithoutAConfigurationIsEmpty) {
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
    EXPECT_FALSE(AssignInputs().isEnabled());
    EXPECT_TRUE(AddModule().isEnabled());
    EXPECT_EQ(Configured(), Text("0"));
}

TEST_F(AGTSDisplay, WithAModuleCountOfZeroIsEmpty) {
    PutCount(0);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 10);
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
    EXPECT_FALSE(AssignInputs().isEnabled());
    EXPECT_EQ(Configured(), Text("0"));
}

TEST_F(AGTSDisplay, LoadsAndConnectsItsModules) {
    PutCount(2);
    PutModule(0, 3, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 0, "ADAM-6060", "10.0.0.2", 20);
    m_modules.Fail(Text("10.0.0.2"), 111);
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), 2);
    EXPECT_TRUE(AssignInputs().isEnabled());
    EXPECT_EQ(Configured(), Text("2"));
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    ASSERT_TRUE(WaitForStatus(1, "Error"));
    EXPECT_EQ(Row(0), MakeRow("4", "ADAM-6051", "10.0.0.1", "10", "Connected"));
    EXPECT_EQ(Row(1), MakeRow("1", "ADAM-6060", "10.0.0.2", "20", "Error"));
}

TEST_F(AGTSDisplay, BlanksWhatItsModulesAreAssigned) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1);
    PutAssignment(0, 2, "118100000");
    m_modules.Read(Text("10.0.0.1"), 0xFFB);
    Show();
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0); }));
    m_modules.Read(Text("10.0.0.1"), FakeModules::AllInactive);
    EXPECT_TRUE(WaitUntil([&] { return !IsBlanked(118100000.0); }));
}

TEST_F(AGTSDisplay, BringsBlankingAndTakesItAlong) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1);
    PutAssignment(0, 0, "118100000");
    m_modules.Read(Text("10.0.0.1"), 0);
    Show();
    values::Node* const gts = m_tree.FindNode(Text("/ORVServer/GTS"));
    ASSERT_NE(gts, nullptr);
    EXPECT_EQ(gts->CountObservers(), 1);
    ASSERT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0); }));
    m_display.reset();
    EXPECT_EQ(gts->CountObservers(), 0);
    EXPECT_EQ(treeaccess::ChildNames(gts), (std::vector<QString>{Text("ERROR"), Text("CONFIGURED")}));
    EXPECT_EQ(m_modules.Interfaces(), 0);
    EXPECT_FALSE(IsBlanked(118100000.0));
    Blanking::Instance()->FreeInstance();
}

TEST_F(AGTSDisplay, SavesWhatItLoaded) {
    PutCount(2);
    PutModule(0, 3, "ADAM-6051", "10.0.0.1", 10);
    PutAssignment(0, 11, "118100000");
    PutModule(1, 0, "ADAM-6060", "10.0.0.2", 20);
    Show();
    m_display.reset();
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), 2);
    ASSERT_TRUE(WaitForStatus(0, "Connected"));
    EXPECT_EQ(Row(0), MakeRow("4", "ADAM-6051", "10.0.0.1", "10", "Connected"));
    EXPECT_EQ(static_cast<DataModule*>(Rows().topLevelItem(0))->GetFrequency(11), 118100000.0);
}

TEST_F(AGTSDisplay, SavesToTheFileWhenItIsDestroyed) {
    PutCount(3);
    PutModule(1, 5, "ADAM-6051", "10.0.0.1", 10);
    Show();
    m_display.reset();
    CfgCenter::Instance().SetStorePath(QString());  // nothing is left but the file
    CfgCenter::Instance().SetStorePath(m_directory.filePath(Text("test.ini")));
    const auto gts = Gts();
    EXPECT_EQ(gts->ReadInt(Text("ModuleCount"), -1), 1);
    const auto module = Provide(*gts, Text("Module0"));
    EXPECT_EQ(module->ReadInt(Text("Index"), -1), 5);
    EXPECT_EQ(module->ReadString(Text("Name"), QString()), Text("ADAM-6051"));
    EXPECT_EQ(module->ReadString(Text("Address"), QString()), Text("10.0.0.1"));
    EXPECT_EQ(module->ReadInt(Text("PollInterval"), -1), 10);
    const auto assignments = Provide(*module, Text("Assignments"));
    EXPECT_EQ(assignments->ReadInt(Text("AssignmentCount"), -1), 12);
    EXPECT_EQ(assignments->ReadString(Text("DI_11"), QString()), Text("0"));
}

TEST_F(AGTSDisplay, ShowsAddressesThatCannotBeRightAsErrors) {
    const std::vector<const char*> addresses{"localhost", "::1", "1.2.3", "1.2.3.4.5", "999.1.1.1", " "};
    PutCount(static_cast<int>(addresses.size()));
    int number = 0;
    for (const char* const address : addresses) {
        PutModule(number, number, "ADAM-6051", address, 10);
        m_modules.Refuse(Text(address));
        ++number;
    }
    Show();
    ASSERT_EQ(Rows().topLevelItemCount(), number);
    for (int row = 0; row < number; ++row)
        EXPECT_TRUE(WaitForStatus(row, "Error")) << row;
    EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(AGTSDisplay, WarnsOnceAndWritesEveryError) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1000);
    Show();
    auto* const module = static_cast<DataModule*>(Rows().topLevelItem(0));
    module->SlotOnConnectionError(5, Text("first"));
    RecordingObserver observer;
    auto* const error = treeaccess::ValueAt<values::Value<QString>>(Text("/ORVServer/GTS/ERROR"));
    ASSERT_NE(error, nullptr);
    error->AddObserver(&observer);
    for (int i = 0; i < 10; ++i)
        module->SlotOnConnectionError(5, Text("again"));
    EXPECT_EQ(observer.Count(changecode::ContentChanged), 10);
    error->DeleteObserver(&observer);
    EXPECT_EQ(ErrorText(), Text("GTS DataModule ADAM-6051/10.0.0.1 error: again (5)"));
    ASSERT_EQ(Warnings().size(), 1U);
    EXPECT_EQ(Warnings()[0]->windowTitle(), Text("MultiChannel Server: GTS I/O failure"));
    EXPECT_EQ(Warnings()[0]->text(), Text("GTS DataModule ADAM-6051/10.0.0.1 error: first (5)"));
}

TEST_F(AGTSDisplay, WarnsAgainOnceTheWarningWasClosed) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1000);
    Show();
    auto* const module = static_cast<DataModule*>(Rows().topLevelItem(0));
    module->SlotOnConnectionError(5, Text("first"));
    ASSERT_EQ(Warnings().size(), 1U);
    Warnings()[0]->close();
    module->SlotOnConnectionError(5, Text("second"));  // even before it is destroyed
    RunTurns(2);
    ASSERT_EQ(Warnings().size(), 1U);
    EXPECT_EQ(Warnings()[0]->text(), Text("GTS DataModule ADAM-6051/10.0.0.1 error: second (5)"));
}

TEST_F(AGTSDisplay, TracesErrors) {
    PutCount(1);
    PutModule(0, 0, "%2", "10.0.0.1", 1000);
    Show();
    auto* const module = static_cast<DataModule*>(Rows().topLevelItem(0));
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    module->SlotOnConnectionError(-5, Text("%1"));
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_EQ(traces.Records()[0].message, Text("GTS DataModule %2/10.0.0.1 error: %1 (-5)"));
    EXPECT_EQ(traces.Records()[0].file, Text("devicecontrol/multichannelserver/common/gts/gtsdisplayimpl"));
    EXPECT_EQ(traces.Records()[0].line, 390);
}

TEST_F(AGTSDisplay, WritesErrorsAfterOthersDeletedTheValue) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1000);
    Show();
    auto* const module = static_cast<DataModule*>(Rows().topLevelItem(0));
    module->SlotOnConnectionError(5, Text("first"));
    treeaccess::DeleteAt(Text("/ORVServer/GTS/ERROR"));
    module->SlotOnConnectionError(5, Text("second"));
    EXPECT_EQ(ErrorText(), Text("GTS DataModule ADAM-6051/10.0.0.1 error: second (5)"));
}

TEST_F(AGTSDisplay, HasAnEmptyErrorFromTheStart) {
    Show();
    auto* const error = treeaccess::ValueAt<values::Value<QString>>(Text("/ORVServer/GTS/ERROR"));
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->GetValue(), QString());
    EXPECT_EQ(error->GetDelivery(), values::EDelivery::EveryChange);
}

/// Another language, in which a sentence has nothing of the original.
class OtherLanguage final : public QTranslator {
  public:
    OtherLanguage() { QCoreApplication::installTranslator(this); }
    ~OtherLanguage() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override {
        return QByteArray(text).contains("%4") ? QStringLiteral("%4 %3 %2 %1") : QString();
    }
};

/// Writes down what it is told: "ADAM-6051-0 at 10.0.0.1: text (5)" and "ADAM-6051-0 answers".
class RecordingListener final : public ISuppressionListener {
  public:
    void OnModuleFailed(const ModuleFailure& failure) override {
        events.push_back(QStringLiteral("%1 at %2: %3 (%4)%5")
                             .arg(failure.module.NodeName(), failure.module.address, failure.text)
                             .arg(failure.code)
                             .arg(failure.addressFault));
    }
    void OnModuleAnswersAgain(const ModuleIdentity& module) override {
        events.push_back(module.NodeName() + QStringLiteral(" answers"));
    }

    std::vector<QString> events;
};

TEST_F(AGTSDisplay, TellsWhyAModuleFailsInPartsInWhateverLanguage) {
    const OtherLanguage language;
    PutCount(1);
    PutModule(0, 4, "ADAM-6051", "10.0.0.300", 1000);
    RecordingListener listener;
    Show().GetPlant().SetListener(&listener);
    auto* const module = static_cast<DataModule*>(Rows().topLevelItem(0));
    module->SlotOnConnectionError(5, Text("an error: of its own"));
    EXPECT_EQ(ErrorText(), Text("5 an error: of its own 10.0.0.300 ADAM-6051"));
    EXPECT_EQ(listener.events, std::vector<QString>{Text(
                                   "ADAM-6051-4 at 10.0.0.300: an error: of its own (5)'300' is no number "
                                   "from 0 to 255 without leading zeros")});
    m_display->GetPlant().SetListener(nullptr);
    module->SlotOnConnectionError(5, Text("again"));
    EXPECT_EQ(listener.events.size(), 1U);
}

TEST_F(AGTSDisplay, TellsOnceThatALostModuleAnswersAgainAndLeavesItInError) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1);
    m_modules.Fail(Text("10.0.0.1"), 110);
    RecordingListener listener;
    Show().GetPlant().SetListener(&listener);
    ASSERT_TRUE(WaitForStatus(0, "Error"));
    m_modules.Read(Text("10.0.0.1"), 5);
    const auto answers = [&] {
        return std::count(listener.events.begin(), listener.events.end(), Text("ADAM-6051-0 answers"));
    };
    ASSERT_TRUE(WaitUntil([&] { return answers() > 0; }));
    const int requests = m_modules.Requests(Text("10.0.0.1"));
    while (m_modules.Requests(Text("10.0.0.1")) < requests + 5)
        RunTurns(1);
    EXPECT_EQ(answers(), 1);
    EXPECT_EQ(Row(0)[4], Text("Error"));
    QString reason;
    QDateTime since;
    m_display->GetPlant().ForEachModule([&](const ModuleView& module) {
        reason = module.reason;
        since = module.answersAgainSince;
    });
    EXPECT_EQ(reason, Text("answers again, reconnect it"));
    EXPECT_TRUE(since.isValid());
    m_modules.Fail(Text("10.0.0.1"), 110);
    EXPECT_TRUE(WaitUntil([&] {
        m_display->GetPlant().ForEachModule([&](const ModuleView& module) { reason = module.reason; });
        return reason.endsWith(Text("(110)"));
    }));
}

TEST_F(AGTSDisplay, TellsOfEveryPollThatFails) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1);
    m_modules.Fail(Text("10.0.0.1"), 110);
    RecordingListener listener;
    Show().GetPlant().SetListener(&listener);
    EXPECT_TRUE(WaitUntil([&] { return listener.events.size() >= 10; }));
    EXPECT_EQ(Warnings().size(), 1U);
}

TEST_F(AGTSDisplay, EndsWhileRequestsHang) {
    PutCount(3);
    for (int i = 0; i < 3; ++i)
        PutModule(i, i, "ADAM-6051", "10.0.0.1", 1);
    m_modules.Hang(Text("10.0.0.1"));
    Show();
    ASSERT_TRUE(m_modules.WaitUntilHanging(3));
    m_display.reset();
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(AGTSDisplay, TakesAThousandModules) {
    constexpr int Count = 1000;
    PutCount(Count);
    for (int i = 0; i < Count; ++i)
        PutModule(i, i, "ADAM-6051", "10.0.0.1", 1000);
    m_modules.Hang(Text("10.0.0.1"));
    QElapsedTimer clock;
    clock.start();
    Show();
    EXPECT_EQ(Rows().topLevelItemCount(), Count);
    EXPECT_EQ(Configured(), Text("1000"));
    EXPECT_EQ(Row(999)[0], Text("1000"));
    // As many are polled as there can be descriptors for; the others say so.
    const int polled = std::min(Count, modbussystem::MostConnections());
    ASSERT_TRUE(m_modules.WaitUntilHanging(polled));
    for (int row = polled; row < Count; ++row)
        EXPECT_TRUE(WaitForStatus(row, "Error")) << row;
    m_display.reset();
    EXPECT_EQ(m_modules.Interfaces(), 0);
    RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
}

TEST(AGTSDisplayWithoutATree, ShowsItsModulesAllTheSame) {
    const QTemporaryDir directory;
    CfgCenter::Instance().SetStorePath(directory.filePath(treeaccess::Text("test.ini")));
    { const GTSDisplay display; }
    CfgCenter::Instance().SetStorePath(QString());
    EXPECT_EQ(values::Tree::Instance(), nullptr);
}

}  // namespace
