// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <vector>

namespace {

using treeaccess::ContentAt;
using treeaccess::PutValue;
using treeaccess::Text;
using treeaccess::ValueAt;
using values::ValueSelection;

const QString basePath = Text("/MultiChannelServer/DynamicMpxORVs/Alpha/Status");

QString PathOf(const char* key) {
    return basePath + Text("/") + Text(key);
}

class MCSMpxORVStatusInTree : public testing::Test {
  protected:
    values::Tree m_tree;
};

TEST_F(MCSMpxORVStatusInTree, CreatesItsNodeAndValuesInAFixedOrder) {
    const MCSMpxORVStatus status(basePath);
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(basePath)),
              (std::vector<QString>{Text("OperationType"), Text("ConnectedClients"), Text("OperationMode"),
                                    Text("IsMaster"), Text("IsWatchingMaster"), Text("Comment")}));
}

TEST_F(MCSMpxORVStatusInTree, CreatesEachValueWithItsTypeAndEmpty) {
    MCSMpxORVStatus status(basePath);
    for (const char* key : {"OperationType", "Comment"}) {
        ASSERT_NE(ValueAt<values::Value<QString>>(PathOf(key)), nullptr) << key;
        EXPECT_EQ(ContentAt(PathOf(key)), QString());
    }
    for (const char* key : {"IsMaster", "IsWatchingMaster"}) {
        ASSERT_NE(ValueAt<values::Value<bool>>(PathOf(key)), nullptr) << key;
        EXPECT_EQ(ContentAt(PathOf(key)), Text("false"));
    }
    ASSERT_NE(status.GetConnectedClientsValue(), nullptr);
    EXPECT_EQ(status.GetConnectedClientsValue()->Count(), 0);
    ASSERT_NE(status.GetOperationModeValue(), nullptr);
    EXPECT_EQ(status.GetOperationModeValue()->GetCurrentIndex(), -1);
    EXPECT_EQ(status.GetOperationModeAsString(), QString());
}

TEST_F(MCSMpxORVStatusInTree, OperationModesAreThoseOfTheDevice) {
    MCSMpxORVStatus status(basePath);
    const values::ValueDescriptor& modes = StdDeviceDefinition::g_vdOperationMode;
    ASSERT_EQ(status.GetOperationModeValue()->Count(), modes.CountSelItems());
    for (int i = 0; i < modes.CountSelItems(); ++i) {
        SCOPED_TRACE(i);
        status.GetOperationModeValue()->SelectIndex(i);
        EXPECT_EQ(status.GetOperationMode(), static_cast<EOperationMode>(modes.SelItems()[i].Key()));
        EXPECT_EQ(status.GetOperationModeAsString(), modes.SelItems()[i].String());
    }
}

TEST_F(MCSMpxORVStatusInTree, ASecondObjectSharesTheValuesAndResetsNothing) {
    MCSMpxORVStatus first(basePath);
    first.SetOperationType(Text("Wideband"));
    first.SetComment(Text("own"));
    first.AddConnectedClient(7, Text("West"));
    first.GetIsMasterValue()->SetValue(true);
    first.GetOperationModeValue()->DeleteItem(first.GetOperationModeValue()->GetItemAt(0));
    MCSMpxORVStatus second(basePath);
    EXPECT_EQ(second.GetOperationType(), Text("Wideband"));
    EXPECT_EQ(second.GetComment(), Text("own"));
    EXPECT_EQ(second.GetConnectedClientsValue()->GetCurrentKey(), 7);
    EXPECT_TRUE(second.IsMaster());
    EXPECT_EQ(second.GetOperationModeValue()->Count(), 7);
    EXPECT_EQ(m_tree.FindNode(basePath)->CountChildren(), 6);
}

TEST_F(MCSMpxORVStatusInTree, PathsAreTheBasePathASlashAndTheKey) {
    MCSMpxORVStatus status(Text("/A//Status/"));
    EXPECT_EQ(status.GetComment_ValuePath(), Text("/A//Status//Comment"));
    EXPECT_EQ(status.GetIsMaster_ValuePath(), Text("/A//Status//IsMaster"));
    EXPECT_EQ(m_tree.FindNode(Text("/A/Status"))->CountChildren(), 6);
}

TEST_F(MCSMpxORVStatusInTree, AValueOfAnotherTypeInTheWayIsNamedByTheNodesPathOrTheAccessors) {
    PutValue<values::Value<int>>(Text("/A/Status"), "Comment");
    PutValue<values::Value<int>>(Text("/A/Status"), "IsMaster");
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    const MCSMpxORVStatus status(Text("/A//Status/"));
    delete status.GetCommentValue();  // they belong to nobody
    delete status.GetIsMasterValue();
    ASSERT_EQ(traces.Records().size(), 2U);
    EXPECT_TRUE(traces.Messages()[0].contains(Text("'/A//Status//IsMaster'")));
    EXPECT_TRUE(traces.Messages()[1].contains(Text("'/A/Status/Comment'")));
}

TEST_F(MCSMpxORVStatusInTree, TypeAndCommentAreWrittenForEveryObserver) {
    const MCSMpxORVStatus status(basePath);
    RecordingObserver observer;
    const_cast<MCSMpxORVStatus&>(status).AddObserver(&observer);
    status.SetOperationType(Text("Wideband"));
    status.SetComment(Text("own"));
    EXPECT_EQ(ContentAt(PathOf("OperationType")), Text("Wideband"));
    EXPECT_EQ(ContentAt(PathOf("Comment")), Text("own"));
    EXPECT_EQ(observer.Codes(), (std::vector<TChangeCode>{3, 3}));
}

TEST_F(MCSMpxORVStatusInTree, TheTypeOfAValueThatWentIsEmpty) {
    MCSMpxORVStatus status(basePath);
    status.SetOperationType(Text("Wideband"));
    m_tree.Delete(status.GetOperationTypeValue());
    EXPECT_EQ(status.GetOperationTypeValue(), nullptr);
    EXPECT_EQ(status.GetOperationType(), QString());
}

struct NameRow {
    const char* row;
    const char* basePath;
    const char* name;
};

void PrintTo(const NameRow& row, std::ostream* stream) {
    *stream << row.row;
}

class NameOfAMpxORV : public MCSMpxORVStatusInTree, public testing::WithParamInterface<NameRow> {};

TEST_P(NameOfAMpxORV, IsThatOfTheStatusNodesParent) {
    MCSMpxORVStatus status(Text(GetParam().basePath));
    EXPECT_EQ(status.GetName(), Text(GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(
    Table, NameOfAMpxORV,
    testing::Values(NameRow{"OfADynamicMpxORV", "/MultiChannelServer/DynamicMpxORVs/Alpha/Status", "Alpha"},
                    NameRow{"WithSpaces", "/X/Two Words/Status", "Two Words"},
                    NameRow{"OfAnotherNode", "/X/Beta/State/", "Beta"},
                    NameRow{"BelowTheRoot", "/Status", ""}, NameRow{"OfTheRootItself", "/", ""}),
    testing::PrintToStringParamName());

TEST_F(MCSMpxORVStatusInTree, TheNameIsEmptyOnceTheNodeWent) {
    MCSMpxORVStatus status(basePath);
    treeaccess::DeleteAt(basePath);
    EXPECT_EQ(status.GetName(), QString());
}

/// The clients as "key:text", the current one marked with "*".
std::vector<QString> ClientsOf(const MCSMpxORVStatus& status) {
    const ValueSelection& clients = *status.GetConnectedClientsValue();
    std::vector<QString> texts;
    for (int i = 0; i < clients.Count(); ++i)
        texts.push_back(QString::number(clients.GetItemAt(i)->GetKey()) + Text(":") +
                        clients.GetItemAt(i)->GetName() + Text(i == clients.GetCurrentIndex() ? "*" : ""));
    return texts;
}

TEST_F(MCSMpxORVStatusInTree, AClientAddedBecomesTheCurrentOne) {
    MCSMpxORVStatus status(basePath);
    status.AddConnectedClient(7, Text("West"));
    constexpr long Highest = std::numeric_limits<long>::max();
    status.AddConnectedClient(Highest, Text("East"));
    EXPECT_EQ(ClientsOf(status),
              (std::vector<QString>{Text("7:West"), QString::number(Highest) + Text(":East*")}));
    EXPECT_EQ(status.GetConnectedClientsValue()->GetItemAt(0)->GetValue(), 0.0);
}

TEST_F(MCSMpxORVStatusInTree, TheSameIdTwiceIsTwoItemsOfWhichTheFirstIsFound) {
    MCSMpxORVStatus status(basePath);
    status.AddConnectedClient(7, Text("West"));
    status.AddConnectedClient(7, Text("West again"));
    EXPECT_EQ(ClientsOf(status), (std::vector<QString>{Text("7:West*"), Text("7:West again")}));
    status.RemoveConnectedClient(7);
    EXPECT_EQ(ClientsOf(status), std::vector<QString>{Text("7:West again")});
    status.RemoveConnectedClient(7);
    EXPECT_EQ(ClientsOf(status), std::vector<QString>{});
}

TEST_F(MCSMpxORVStatusInTree, AClientRemovedIsTheOneWithTheId) {
    MCSMpxORVStatus status(basePath);
    for (const long id : {1L, 2L, 3L})
        status.AddConnectedClient(id, Text("C"));
    status.RemoveConnectedClient(2);
    EXPECT_EQ(ClientsOf(status), (std::vector<QString>{Text("1:C"), Text("3:C*")}));
}

TEST_F(MCSMpxORVStatusInTree, AnUnknownIdIsNotRemoved) {
    MCSMpxORVStatus status(basePath);
    status.AddConnectedClient(7, Text("West"));
    RecordingObserver observer;
    status.AddObserver(&observer);
    for (const long id : {8L, -1L, 0L})
        status.RemoveConnectedClient(id);
    EXPECT_EQ(ClientsOf(status), std::vector<QString>{Text("7:West*")});
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{});
}

/// Answers for one value with another.
class DerivedMpxORVStatus final : public MCSMpxORVStatus {
  public:
    using MCSMpxORVStatus::MCSMpxORVStatus;
    values::Value<QString>* GetCommentValue() const override { return &m_own; }
    values::Value<QString>* GetOperationTypeValue() const override { return nullptr; }
    ValueSelection* GetOperationModeValue() const override { return &m_mode; }

  private:
    mutable values::Value<QString> m_own;
    mutable ValueSelection m_mode;
};

TEST_F(MCSMpxORVStatusInTree, PlainAccessorsAskTheValueAccessorOfADerivedClassAndTextsDoNot) {
    DerivedMpxORVStatus status(basePath);
    status.SetComment(Text("own"));
    EXPECT_EQ(status.GetComment(), Text("own"));
    EXPECT_EQ(ContentAt(PathOf("Comment")), QString());
    EXPECT_EQ(status.GetOperationType(), QString());
    status.GetOperationModeValue()->AddItem(Text("Own"), 0.0, 2);
    status.GetOperationModeValue()->Select(2);
    ValueAt<ValueSelection>(PathOf("OperationMode"))->Select(4);
    EXPECT_EQ(status.GetOperationMode(), OperationAudio);
    EXPECT_EQ(status.GetOperationModeAsString(), Text("Scan"));
}

}  // namespace
