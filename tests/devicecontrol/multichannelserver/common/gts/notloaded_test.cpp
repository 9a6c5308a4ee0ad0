// SPDX-License-Identifier: Apache-2.0
// Entries of the configuration that are of no use are not lost when the list is saved.
#include <devicecontrol/multichannelserver/common/gts/datamoduleeditor.h>

#include <tests/devicecontrol/multichannelserver/common/gts/gtsdisplaytest.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/tracerecorder.h>

namespace {

class AnEntryThatIsNotLoaded : public GTSDisplayTest {
  protected:
    /// What the section "GTS" holds under \a key once a display has loaded and saved it.
    static QString Saved(const char* key) { return Gts()->ReadString(Text(key), Text("nothing")); }
    static void Put(const char* key, const char* content) { Gts()->WriteString(Text(key), Text(content)); }
    std::vector<QString> ShowAndEnd() {
        const TraceRecorder traces(ErrorHandler::TraceWarnings);
        Show();
        m_display.reset();
        std::vector<QString> told;
        for (const QString& message : traces.Messages())
            if (message.startsWith(Text("Configuration"))) told.push_back(message);
        return told;
    }
};

TEST_F(AnEntryThatIsNotLoaded, IsKeptAsideWithALineInTheLog) {
    PutCount(3);
    PutModule(0, 3, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 4, "ADAM-6051", "", 20);
    PutAssignment(1, 7, "118100000");
    Put("Module1/Comment", "by hand");
    PutModule(2, 5, "ADAM-6051", "10.0.0.3", 30);
    EXPECT_EQ(ShowAndEnd(),
              std::vector<QString>{Text("Configuration: 1 entries of GTS could not be used and are kept in "
                                        "GTS/NotLoaded: Module1")});
    EXPECT_EQ(Saved("ModuleCount"), Text("2"));
    EXPECT_EQ(Saved("Module1/Index"), Text("5"));
    EXPECT_EQ(Saved("Module1/Comment"), Text("nothing"));
    EXPECT_EQ(Saved("Module2/Index"), Text("nothing"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Index"), Text("4"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Address"), QString());
    EXPECT_EQ(Saved("NotLoaded/Module1/PollInterval"), Text("20"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Comment"), Text("by hand"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Assignments/AssignmentCount"), Text("12"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Assignments/DI_7"), Text("118100000"));
}

TEST_F(AnEntryThatIsNotLoaded, StaysThereThroughFurtherRuns) {
    PutCount(1);
    PutModule(0, 1, "ADAM-6051", "10.0.0.1", 0);
    EXPECT_EQ(ShowAndEnd().size(), 1U);
    EXPECT_EQ(ShowAndEnd().size(), 0U);
    EXPECT_EQ(Saved("ModuleCount"), Text("0"));
    EXPECT_EQ(Saved("NotLoaded/Module0/Index"), Text("1"));
}

TEST_F(AnEntryThatIsNotLoaded, WritesOverNoneThatWasKeptBefore) {
    for (const char* const index : {"1", "2", "3"}) {
        PutCount(1);
        PutModule(0, 0, "ADAM-6051", "10.0.0.1", 0);
        Put("Module0/Index", index);
        EXPECT_EQ(ShowAndEnd().size(), 1U);
    }
    EXPECT_EQ(Saved("NotLoaded/Module0/Index"), Text("1"));
    EXPECT_EQ(Saved("NotLoaded/Module1/Index"), Text("2"));
    EXPECT_EQ(Saved("NotLoaded/Module2/Index"), Text("3"));
}

TEST_F(AnEntryThatIsNotLoaded, IsKeptFromBehindTheHighestNumberThatIsRead) {
    PutCount(70000);
    PutModule(69999, 1, "ADAM-6051", "10.0.0.1", 10);
    ShowAndEnd();
    EXPECT_EQ(Saved("ModuleCount"), Text("0"));
    EXPECT_EQ(Saved("NotLoaded/Module69999/Address"), Text("10.0.0.1"));
}

TEST_F(AnEntryThatIsNotLoaded, StaysWhereItIsIfNobodyCountedItAndNobodyNeedsItsPlace) {
    PutCount(1);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 1, "ADAM-6051", "10.0.0.2", 10);
    PutModule(2, 2, "ADAM-6051", "10.0.0.3", 10);
    EXPECT_EQ(ShowAndEnd(), std::vector<QString>{});
    EXPECT_EQ(Saved("Module1/Address"), Text("10.0.0.2"));
    EXPECT_EQ(Saved("Module2/Address"), Text("10.0.0.3"));
}

TEST_F(AnEntryThatIsNotLoaded, IsKeptAsideIfAModuleWasAddedInItsPlace) {
    PutCount(0);
    PutModule(0, 5, "ADAM-6051", "10.0.0.1", 10);
    Show();
    WithModalDialog<DataModuleEditor>(
        [this] { Click(AddModule()); },
        [](DataModuleEditor& editor) { Click(*editor.findChild<QPushButton*>(Text("ok"))); });
    m_display.reset();
    EXPECT_EQ(Saved("Module0/Address"), Text("127.0.0.1"));
    EXPECT_EQ(Saved("NotLoaded/Module0/Address"), Text("10.0.0.1"));
}

TEST_F(AnEntryThatIsNotLoaded, IsNotOneThatTheOperatorDeleted) {
    PutCount(2);
    PutModule(0, 0, "ADAM-6051", "10.0.0.1", 10);
    PutModule(1, 1, "ADAM-6051", "10.0.0.2", 10);
    Show();
    RightClickOnRow(0);
    Choose("Delete");
    m_display.reset();
    EXPECT_EQ(Saved("ModuleCount"), Text("1"));
    EXPECT_EQ(Saved("Module0/Address"), Text("10.0.0.2"));
    EXPECT_EQ(Saved("Module1/Address"), Text("nothing"));
    EXPECT_EQ(Saved("NotLoaded/Module0/Address"), Text("nothing"));
}

TEST_F(AnEntryThatIsNotLoaded, MayHaveANameThatIsNoneOfTheList) {
    PutCount(3);
    Put("Module01/Address", "10.0.0.1");
    Put("Module-1/Address", "10.0.0.2");
    Put("Module/Address", "10.0.0.3");
    Put("Module1", "no section");
    EXPECT_EQ(ShowAndEnd(), std::vector<QString>{});
    EXPECT_EQ(Saved("Module01/Address"), Text("10.0.0.1"));
    EXPECT_EQ(Saved("Module-1/Address"), Text("10.0.0.2"));
    EXPECT_EQ(Saved("Module/Address"), Text("10.0.0.3"));
    EXPECT_EQ(Saved("Module1"), Text("no section"));
}

}  // namespace
