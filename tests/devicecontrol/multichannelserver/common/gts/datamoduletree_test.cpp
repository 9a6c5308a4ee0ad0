// SPDX-License-Identifier: Apache-2.0
// What a data module publishes in the tree.
#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <ostream>

namespace {

const char* const sourceFile = "devicecontrol/multichannelserver/common/gts/datamodule";

class APublishedModule : public DataModuleTest {
  protected:
    static QString Touched(const char* member, TChangeCode code) {
        return Text("Someone does something with our value '%2' which should not happen. Change code: %1")
            .arg(code)
            .arg(Text(member));
    }
};

TEST_F(APublishedModule, HasItsItemsWithTheirRanges) {
    const auto module = Make(7);
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(Path("ADAM-6051-7"))),
              (std::vector<QString>{Text("InputDiscretes"), Text("Index"), Text("FrequencyAssignments")}));
    const Number* const discretes = NumberAt("ADAM-6051-7/InputDiscretes");
    const Number* const index = NumberAt("ADAM-6051-7/Index");
    ASSERT_NE(discretes, nullptr);
    ASSERT_NE(index, nullptr);
    EXPECT_EQ(discretes->GetMin(), 0);
    EXPECT_EQ(discretes->GetMax(), 65535);
    EXPECT_EQ(discretes->GetValue(), 0);
    EXPECT_EQ(index->GetMin(), 0);
    EXPECT_EQ(index->GetMax(), 100);
    EXPECT_EQ(index->GetValue(), 7);
    EXPECT_EQ(AssignmentsAt("ADAM-6051-7/FrequencyAssignments"), std::vector<double>(12, 0.0));
}

TEST_F(APublishedModule, ComesComplete) {
    RecordingObserver observer;
    m_tree.FindNode(Path(""))->AddObserver(&observer);
    const auto module = Make();
    EXPECT_EQ(observer.Codes(),
              (std::vector<TChangeCode>{changecode::ChildrenAdded, changecode::StructureChanged}));
    m_tree.FindNode(Path(""))->DeleteObserver(&observer);
}

TEST_F(APublishedModule, CannotShowAnIndexAboveTheRange) {
    const auto module = Make(500);
    EXPECT_EQ(NumberAt("ADAM-6051-500/Index")->GetValue(), 100);
}

TEST_F(APublishedModule, TakesAnItemThatIsThereAlready) {
    auto* const node = m_tree.ProvideNode(Path("ADAM-6051-0"));
    auto* const found = treeaccess::PutValue<Number>(Path("ADAM-6051-0"), "InputDiscretes");
    found->SetValue(99999);
    const auto module = Make();
    EXPECT_EQ(m_tree.FindNode(Path("ADAM-6051-0")), node);
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes"), found);
    EXPECT_EQ(found->GetMax(), 65535);
    EXPECT_EQ(found->GetValue(), 0);
    EXPECT_EQ(node->CountChildren(), 3);
}

TEST_F(APublishedModule, DoesWithoutAValueWhoseNameAnotherTypeHolds) {
    treeaccess::PutValue<values::Value<int>>(Path("ADAM-6051-0"), "InputDiscretes");
    const TraceRecorder traces;
    const auto module = Make();
    EXPECT_EQ(traces.Messages(),
              std::vector<QString>{
                  Text("The value '/ORVServer/GTS/ADAM-6051-0/InputDiscretes' could not be created")});
    module->SlotOnInputDiscretesChanged(12, 5);
    EXPECT_EQ(NumberAt("ADAM-6051-0/Index")->GetValue(), 0);
}

TEST_F(APublishedModule, DoesWithoutANodeWhoseNameAValueHolds) {
    treeaccess::PutValue<Number>(Path(""), "ADAM-6051-0");
    const TraceRecorder traces;
    const auto module = Make();
    EXPECT_EQ(traces.Messages(),
              std::vector<QString>{Text("The node '/ORVServer/GTS/ADAM-6051-0' could not be created")});
    module->RefreshTree();
}

TEST_F(APublishedModule, HasANodeWhateverItsTypeHolds) {
    const auto module = Make(0, "a/b");
    EXPECT_NE(NumberAt("a_b-0/InputDiscretes"), nullptr);
}

TEST_F(APublishedModule, ReportsThatItsNodeIsMissing) {
    treeaccess::DeleteAt(Path(""));
    const TraceRecorder traces;
    const auto module = Make();
    EXPECT_EQ(
        traces.Messages(),
        std::vector<QString>{Text("Node 'GTS' missing in ValueTree: Cannot handle DataModule 'ADAM-6051'.")});
    EXPECT_EQ(m_tree.FindItem(Path("")), nullptr);
    module->SlotOnConnectionEstablished();
    EXPECT_TRUE(module->IsConnected());
}

TEST_F(APublishedModule, ShowsItsFrequenciesAndInputsOnlyWhileItIsConnected) {
    const auto module = Make();
    module->SetFrequency(1, First);
    std::vector<double> frequencies(12, 0.0);
    module->SlotOnInputDiscretesChanged(12, 5);
    module->RefreshTree();
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), frequencies);
    module->SlotOnConnectionEstablished();
    frequencies[1] = First;
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 5);
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), frequencies);
    module->SlotOnConnectionClosed();
    frequencies[1] = 0.0;
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 0);
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), frequencies);
}

TEST_F(APublishedModule, HasAsManyZerosAsInputsWereRead) {
    const auto module = Make();
    module->SlotOnInputDiscretesChanged(3, 5);
    EXPECT_EQ(module->GetNumberOfInputs(), 3);
    module->RefreshTree();
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), std::vector<double>(3, 0.0));
    module->SlotOnConnectionEstablished();
    EXPECT_EQ(AssignmentsAt("ADAM-6051-0/FrequencyAssignments"), std::vector<double>(12, 0.0));
}

TEST_F(APublishedModule, DoesNotTurnBitsBeyondTheRangeIntoInactiveInputs) {
    const auto module = Make();
    module->SlotOnInputDiscretesChanged(12, 0x10001);
    EXPECT_EQ(NumberAt("ADAM-6051-0/InputDiscretes")->GetValue(), 1);
}

TEST_F(APublishedModule, TellsOfItsListAtEveryRefresh) {
    const auto module = Make();
    RecordingObserver observer;
    auto* const list = treeaccess::ValueAt<Assignments>(Path("ADAM-6051-0/FrequencyAssignments"));
    list->AddObserver(&observer);
    module->RefreshTree();
    EXPECT_EQ(observer.Codes(), (std::vector<TChangeCode>{changecode::ItemsChanged}));
    module->SlotOnConnectionEstablished();
    module->SetFrequency(0, First);
    module->RefreshTree();
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>(3, changecode::ItemsChanged));
    list->DeleteObserver(&observer);
}

TEST_F(APublishedModule, MovesToAnotherNodeWithAnotherType) {
    const auto module = Make();
    module->Configure(Text("ADAM-6060"), m_ip, PollInterval(1));
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(Path(""))), std::vector<QString>{Text("ADAM-6060-0")});
    module->Disconnect();
    EXPECT_EQ(AssignmentsAt("ADAM-6060-0/FrequencyAssignments"), std::vector<double>(6, 0.0));
}

TEST_F(APublishedModule, KeepsItsNodeWithTheSameType) {
    const auto module = Make();
    const values::Node* const node = m_tree.FindNode(Path("ADAM-6051-0"));
    module->Configure(Text("ADAM-6051"), Text("10.0.0.9"), PollInterval(2));
    EXPECT_EQ(m_tree.FindNode(Path("ADAM-6051-0")), node);
}

TEST_F(APublishedModule, TakesItsItemsAlong) {
    Make();
    EXPECT_EQ(m_tree.FindNode(Path(""))->CountChildren(), 0);
}

TEST_F(APublishedModule, DoesNotTraceWhatItDoesItself) {
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    {
        const auto module = Make();
        module->SetFrequency(0, First);
        module->SlotOnInputDiscretesChanged(12, 5);
        module->SlotOnConnectionEstablished();
        module->SlotOnConnectionError(110, QString());
        module->SlotOnConnectionClosed();
        module->SetType(Text("other"));
        module->RefreshTree();
    }
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

struct TouchRow {
    const char* name;
    const char* member;
    TChangeCode code;
    void (*touch)();
};

void PrintTo(const TouchRow& row, std::ostream* stream) {
    *stream << row.name;
}

values::ValueNumeric<int>* NumberNamed(const char* name) {
    return treeaccess::ValueAt<values::ValueNumeric<int>>(treeaccess::Text("/ORVServer/GTS/ADAM-6051-0/") +
                                                          treeaccess::Text(name));
}

values::ValueList<double>* List() {
    return treeaccess::ValueAt<values::ValueList<double>>(
        treeaccess::Text("/ORVServer/GTS/ADAM-6051-0/FrequencyAssignments"));
}

// clang-format off
const TouchRow touchRows[] = {
    {"TheIndex",               "m_pIndex",          3,  [] { NumberNamed("Index")->SetValue(50); }},
    {"TheIndexesLimit",        "m_pIndex",          4,  [] { NumberNamed("Index")->SetMax(50); }},
    {"TheInputs",              "m_pInputDiscretes", 3,  [] { NumberNamed("InputDiscretes")->SetValue(1); }},
    {"TheInputsState",         "m_pInputDiscretes", 2,  [] { NumberNamed("InputDiscretes")->SetState(values::Stale); }},
    {"TheAssignments",         "m_pAssignments",    7,  [] { List()->SetItems({1.0}); }},
    {"TheNode",                "m_pModuleNode",     15, [] { values::Tree::Instance()->FindNode(treeaccess::Text("/ORVServer/GTS/ADAM-6051-0"))->NotifyObservers(15); }},
};
// clang-format on

class ATouch : public DataModuleTest, public testing::WithParamInterface<TouchRow> {};

TEST_P(ATouch, OfAnItemByOthersIsTraced) {
    const auto module = Make();
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    GetParam().touch();
    ASSERT_EQ(traces.Records().size(), 1U);
    const TraceRecord& record = traces.Records()[0];
    EXPECT_EQ(record.kind, TraceRecord::Trace);
    EXPECT_EQ(record.message,
              Text("Someone does something with our value '%2' which should not happen. Change code: %1")
                  .arg(GetParam().code)
                  .arg(Text(GetParam().member)));
    EXPECT_EQ(record.file, Text(sourceFile));
    EXPECT_EQ(record.line, 159);
}

TEST_P(ATouch, IsNotTracedWithoutTheFlag) {
    const auto module = Make();
    const TraceRecorder traces(~static_cast<unsigned>(ErrorHandler::TraceWarnings));
    GetParam().touch();
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

INSTANTIATE_TEST_SUITE_P(Table, ATouch, testing::ValuesIn(touchRows), testing::PrintToStringParamName());

TEST_F(APublishedModule, StopsUsingAValueThatOthersDelete) {
    const auto module = Make();
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    treeaccess::DeleteAt(Path("ADAM-6051-0/InputDiscretes"));
    EXPECT_EQ(traces.Messages(),
              (std::vector<QString>{Touched("m_pInputDiscretes", 2),
                                    Text("Invalid delete of observable \"InputDiscretes\"."),
                                    Touched("m_pModuleNode", 17), Touched("m_pModuleNode", 15)}));
    EXPECT_EQ(traces.Records()[1].line, 159);
    module->SlotOnInputDiscretesChanged(12, 5);
    module->SlotOnConnectionEstablished();
    EXPECT_EQ(NumberAt("ADAM-6051-0/Index")->GetValue(), 0);
}

TEST_F(APublishedModule, StopsUsingItsNodeIfOthersDeleteIt) {
    const auto module = Make();
    {
        const TraceRecorder traces(ErrorHandler::TraceWarnings);
        treeaccess::DeleteAt(Path("ADAM-6051-0"));
        EXPECT_EQ(traces.Messages(),
                  (std::vector<QString>{
                      Touched("m_pModuleNode", 18), Touched("m_pInputDiscretes", 2),
                      Text("Invalid delete of observable \"InputDiscretes\"."), Touched("m_pIndex", 2),
                      Text("Invalid delete of observable \"Index\"."), Touched("m_pAssignments", 2),
                      Text("Invalid delete of observable \"FrequencyAssignments\".")}));
    }
    module->SlotOnConnectionEstablished();
    EXPECT_EQ(m_tree.FindItem(Path("ADAM-6051-0")), nullptr);
    module->Configure(Text("ADAM-6051"), m_ip, PollInterval(1));
    EXPECT_NE(NumberAt("ADAM-6051-0/InputDiscretes"), nullptr);
}

}  // namespace
