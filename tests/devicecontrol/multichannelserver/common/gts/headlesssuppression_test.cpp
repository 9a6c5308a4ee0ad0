// SPDX-License-Identifier: Apache-2.0
// The suppression without a window does what the display does.
#include <devicecontrol/multichannelserver/common/gts/headlesssuppression.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/gts/isuppressionlistener.h>
#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <tests/devicecontrol/multichannelserver/common/gts/gtsdisplaytest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <QtCore/QFile>

#include <map>
#include <optional>

namespace {

class AHeadlessSuppression : public GTSDisplayTest {
  protected:
    ~AHeadlessSuppression() override { m_headless.reset(); }

    SuppressionPlant& Start() { return m_headless.emplace().GetPlant(); }
    bool IsBlanked(double frequency) {
        return Blanking::Instance()->IsFrequencyBlanked(frequency, &m_client);
    }
    bool WaitForError(const char* text) {
        return WaitUntil([&] { return ErrorText() == Text(text); });
    }
    /// Everything below the node of the suppression, by its path.
    std::map<QString, QString> Published() {
        std::map<QString, QString> contents;
        for (values::TreeItem* const item : m_tree.FindNode(Text("/ORVServer/GTS"))->GetTreeItems()) {
            if (!item->IsNode()) contents[item->GetName()] = treeaccess::ContentAt(item->GetPathName());
            if (item->IsNode())
                for (values::TreeItem* const child : static_cast<values::Node*>(item)->GetTreeItems())
                    contents[item->GetName() + QLatin1Char('/') + child->GetName()] =
                        treeaccess::ContentAt(child->GetPathName());
        }
        return contents;
    }
    QByteArray SavedFile() {
        QFile file(m_directory.filePath(Text("test.ini")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// Two modules, of which the second fails, and an entry that cannot be used.
    void Configure() {
        const auto root = std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot());
        root->RemoveSection(Text("GTS"));
        PutCount(3);
        PutModule(0, 3, "ADAM-6051", "10.0.0.1", 10);
        PutAssignment(0, 2, "118100000");
        PutModule(1, 4, "ADAM-6051", "", 10);
        PutModule(2, 0, "ADAM-6060", "10.0.0.2", 20);
        m_modules.Read(Text("10.0.0.1"), 0xFFB);
        m_modules.Fail(Text("10.0.0.2"), 111);
    }

    BlankingClient m_client;
    std::optional<HeadlessSuppression> m_headless;
};

TEST_F(AHeadlessSuppression, PollsItsModulesAndBlanks) {
    Configure();
    EXPECT_EQ(Start().Count(), 2);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0); }));
    m_modules.Read(Text("10.0.0.1"), FakeModules::AllInactive);
    EXPECT_TRUE(WaitUntil([&] { return !IsBlanked(118100000.0); }));
}

TEST_F(AHeadlessSuppression, PublishesAndSavesWhatADisplayDoes) {
    const auto run = [this](const auto& start, const auto& end) {
        Configure();
        start();
        EXPECT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0) && !ErrorText().isEmpty(); }));
        const std::map<QString, QString> published = Published();
        end();
        EXPECT_EQ(m_modules.Interfaces(), 0);
        return std::make_pair(published, SavedFile());
    };
    const auto shown = run([this] { Show(); }, [this] { m_display.reset(); });
    m_tree.Delete(m_tree.FindNode(Text("/ORVServer")));
    const auto headless = run([this] { Start(); }, [this] { m_headless.reset(); });
    EXPECT_EQ(headless.first, shown.first);
    EXPECT_EQ(headless.first.size(), 8U);
    EXPECT_EQ(headless.second, shown.second);
    EXPECT_TRUE(headless.second.contains("NotLoaded")) << headless.second.toStdString();
}

TEST_F(AHeadlessSuppression, BringsBlankingAndTakesItAlong) {
    Configure();
    Start();
    ASSERT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0); }));
    values::Node* const gts = m_tree.FindNode(Text("/ORVServer/GTS"));
    EXPECT_EQ(gts->CountObservers(), 1);
    m_headless.reset();
    EXPECT_EQ(gts->CountObservers(), 0);
    EXPECT_EQ(treeaccess::ChildNames(gts), (std::vector<QString>{Text("ERROR"), Text("CONFIGURED")}));
    EXPECT_FALSE(IsBlanked(118100000.0));
    Blanking::Instance()->FreeInstance();
}

TEST_F(AHeadlessSuppression, HasItsValuesFromTheStartWithoutModules) {
    Start();
    EXPECT_EQ(ErrorText(), QString());
    EXPECT_EQ(Configured(), Text("0"));
}

TEST_F(AHeadlessSuppression, TracesAndWritesEveryErrorAndOpensNoWindow) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 1);
    m_modules.Fail(Text("10.0.0.1"), 111);
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    Start();
    auto* const error = treeaccess::ValueAt<values::Value<QString>>(Text("/ORVServer/GTS/ERROR"));
    ASSERT_NE(error, nullptr);
    RecordingObserver observer;
    error->AddObserver(&observer);
    ASSERT_TRUE(WaitUntil([&] { return observer.Count(changecode::ContentChanged) >= 10; }));
    error->DeleteObserver(&observer);
    EXPECT_TRUE(ErrorText().startsWith(Text("GTS DataModule ADAM-6051/10.0.0.1 error: ")));
    EXPECT_TRUE(ErrorText().endsWith(Text(" (111)")));
    ASSERT_FALSE(traces.Records().empty());
    EXPECT_EQ(traces.Records()[0].message, ErrorText());
    EXPECT_EQ(traces.Records()[0].file, Text("devicecontrol/multichannelserver/common/gts/gtsdisplayimpl"));
    EXPECT_EQ(traces.Records()[0].line, 390);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

TEST_F(AHeadlessSuppression, ConnectsLostModulesAnew) {
    Configure();
    SuppressionPlant& plant = Start();
    ASSERT_TRUE(WaitUntil([&] { return !ErrorText().isEmpty(); }));
    m_modules.Read(Text("10.0.0.2"), 0);
    plant.ConnectLostModules();
    EXPECT_TRUE(WaitUntil([&] {
        return treeaccess::ValueAt<values::ValueNumeric<int>>(
                   Text("/ORVServer/GTS/ADAM-6060-0/InputDiscretes"))
                       ->GetValue() == 0 &&
               m_modules.Addresses().size() == 3U;
    }));
}

/// Writes down which modules failed, and which answer again.
class RecordingListener final : public ISuppressionListener {
  public:
    void OnModuleFailed(const ModuleFailure& failure) override { failed.insert(failure.module.NodeName()); }
    void OnModuleAnswersAgain(const ModuleIdentity& module) override { answering.insert(module.NodeName()); }

    std::set<QString> failed;
    std::multiset<QString> answering;
};

TEST_F(AHeadlessSuppression, TellsItsListener) {
    Configure();
    RecordingListener listener;
    Start().SetListener(&listener);
    ASSERT_TRUE(WaitUntil([&] { return !listener.failed.empty(); }));
    EXPECT_EQ(listener.failed, std::set<QString>{Text("ADAM-6060-0")});
    m_modules.Read(Text("10.0.0.2"), 0);
    ASSERT_TRUE(WaitUntil([&] { return !listener.answering.empty(); }));
    const int requests = m_modules.Requests(Text("10.0.0.2"));
    while (m_modules.Requests(Text("10.0.0.2")) < requests + 3)
        RunTurns(1);
    EXPECT_EQ(listener.answering, std::multiset<QString>{Text("ADAM-6060-0")});
}

TEST_F(AHeadlessSuppression, EndsWhileRequestsHang) {
    Configure();
    m_modules.Hang(Text("10.0.0.1"));
    Start();
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    m_headless.reset();
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(AHeadlessSuppression, IsNotJoinedByADisplay) {
    Configure();
    Gts()->CommitKey(Text("ModuleCount"));
    const QByteArray before = SavedFile();
    Start();
    {
        const TraceRecorder traces(ErrorHandler::TraceAssertions);
        Show();
        ASSERT_EQ(traces.Records().size(), 1U);
        EXPECT_EQ(traces.Records()[0].kind, TraceRecord::Assertion);
    }
    EXPECT_EQ(Rows().topLevelItemCount(), 0);
    EXPECT_EQ(Configured(), Text("2"));
    m_display.reset();
    EXPECT_EQ(SavedFile(), before);
    EXPECT_TRUE(WaitUntil([&] { return IsBlanked(118100000.0); }));
}

TEST_F(AHeadlessSuppression, IsAskedForByAListThatIsNotEmpty) {
    EXPECT_FALSE(SuppressionPlant::IsConfigured());
    PutCount(0);
    EXPECT_FALSE(SuppressionPlant::IsConfigured());
    PutCount(1);
    EXPECT_TRUE(SuppressionPlant::IsConfigured());
}

}  // namespace
