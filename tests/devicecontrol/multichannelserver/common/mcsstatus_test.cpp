// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using treeaccess::ContentAt;
using treeaccess::PutValue;
using treeaccess::Text;
using treeaccess::ValueAt;
using Number = values::ValueNumeric<int>;
using values::ValueSelection;

const QString basePath = Text("/MultiChannelServer/Status");

QString PathOf(const char* key) {
    return basePath + Text("/") + Text(key);
}

class MCSStatusInTree : public testing::Test {
  protected:
    values::Tree m_tree;
};

TEST_F(MCSStatusInTree, CreatesItsNodeAndValuesInAFixedOrder) {
    const MCSStatus status(basePath);
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(basePath)),
              (std::vector<QString>{Text("BootState"), Text("OperationMode"), Text("FreeFreqChannels"),
                                    Text("UsedFreqChannels"), Text("McsMasterJobControlled"),
                                    Text("SweepTime"), Text("Online"), Text("ConnectionState"),
                                    Text("StaticMpxORVs"), Text("DynamicMpxORVs"), Text("LogMessage")}));
}

TEST_F(MCSStatusInTree, CreatesEachValueWithItsType) {
    const MCSStatus status(basePath);
    EXPECT_NE(ValueAt<ValueSelection>(PathOf("BootState")), nullptr);
    EXPECT_NE(ValueAt<ValueSelection>(PathOf("OperationMode")), nullptr);
    for (const char* key :
         {"FreeFreqChannels", "UsedFreqChannels", "SweepTime", "StaticMpxORVs", "DynamicMpxORVs"})
        EXPECT_NE(ValueAt<Number>(PathOf(key)), nullptr) << key;
    for (const char* key : {"McsMasterJobControlled", "Online"})
        EXPECT_NE(ValueAt<values::Value<bool>>(PathOf(key)), nullptr) << key;
    for (const char* key : {"ConnectionState", "LogMessage"})
        EXPECT_NE(ValueAt<values::Value<QString>>(PathOf(key)), nullptr) << key;
}

struct StartRow {
    const char* key;
    const char* content;
};

TEST_F(MCSStatusInTree, ValuesStartEmptyAndNothingIsSelected) {
    MCSStatus status(basePath);
    const StartRow rows[] = {
        {"BootState", "-1"},       {"OperationMode", "-1"}, {"FreeFreqChannels", "0"},
        {"UsedFreqChannels", "0"}, {"SweepTime", "0"},      {"McsMasterJobControlled", "false"},
        {"Online", "false"},       {"ConnectionState", ""}, {"StaticMpxORVs", "0"},
        {"DynamicMpxORVs", "0"},   {"LogMessage", ""}};
    for (const StartRow& row : rows)
        EXPECT_EQ(ContentAt(PathOf(row.key)), Text(row.content)) << row.key;
    EXPECT_EQ(status.GetBootStateAsString(), QString());
    EXPECT_EQ(status.GetOperationModeAsString(), QString());
}

struct LimitRow {
    const char* key;
    int maximum;
};

TEST_F(MCSStatusInTree, NumbersStopAtTheirLimits) {
    const MCSStatus status(basePath);
    const LimitRow rows[] = {{"FreeFreqChannels", 1000},
                             {"UsedFreqChannels", 1000},
                             {"StaticMpxORVs", 1000},
                             {"DynamicMpxORVs", 1000},
                             {"SweepTime", 100000000}};
    for (const LimitRow& row : rows) {
        SCOPED_TRACE(row.key);
        Number* const number = ValueAt<Number>(PathOf(row.key));
        EXPECT_EQ(number->GetMin(), 0);
        EXPECT_EQ(number->GetMax(), row.maximum);
        number->SetValue(row.maximum);
        EXPECT_EQ(number->GetValue(), row.maximum);
        number->SetValue(row.maximum + 1);
        EXPECT_EQ(number->GetValue(), row.maximum);
        number->SetValue(-1);
        EXPECT_EQ(number->GetValue(), 0);
    }
}

void ExpectItems(const ValueSelection& selection, const values::ValueDescriptor& descriptor) {
    ASSERT_EQ(selection.Count(), descriptor.CountSelItems());
    for (int i = 0; i < selection.Count(); ++i) {
        EXPECT_EQ(selection.GetItemAt(i)->GetName(), descriptor.SelItems()[i].String());
        EXPECT_EQ(selection.GetItemAt(i)->GetKey(), descriptor.SelItems()[i].Key());
    }
}

TEST_F(MCSStatusInTree, SelectionsHaveTheItemsOfTheDevice) {
    const MCSStatus status(basePath);
    ExpectItems(*status.GetBootStateValue(), StdDeviceDefinition::g_vdBooState);
    ExpectItems(*status.GetOperationModeValue(), StdDeviceDefinition::g_vdOperationMode);
}

TEST_F(MCSStatusInTree, SelectionsReadAsEnumerationAndAsText) {
    MCSStatus status(basePath);
    status.GetBootStateValue()->Select(16);
    status.GetOperationModeValue()->Select(4);
    EXPECT_EQ(status.GetBootState(), BootReady);
    EXPECT_EQ(status.GetBootStateAsString(), Text("Ready"));
    EXPECT_EQ(status.GetOperationMode(), OperationScan);
    EXPECT_EQ(status.GetOperationModeAsString(), Text("Scan"));
}

TEST_F(MCSStatusInTree, AKeyBeyond32BitsIsNoModeAndNoBootState) {
    MCSStatus status(basePath);
    constexpr qint64 Beyond = qint64{1} << 32;
    for (ValueSelection* const selection : {status.GetOperationModeValue(), status.GetBootStateValue()}) {
        selection->AddItem(Text("From elsewhere"), 0.0, Beyond + 1);
        selection->Select(Beyond + 1);
    }
    EXPECT_EQ(static_cast<int>(status.GetOperationMode()), -1);
    EXPECT_EQ(static_cast<int>(status.GetBootState()), -1);
}

TEST_F(MCSStatusInTree, TwoObjectsOnOnePathShareTheValues) {
    MCSStatus first(basePath);
    MCSStatus second(basePath);
    EXPECT_EQ(m_tree.FindNode(basePath)->CountChildren(), 11);
    first.GetSweepTimeValue()->SetValue(250);
    second.GetConnectionStateValue()->SetValue(Text("connected"));
    EXPECT_EQ(second.GetSweepTime(), 250);
    EXPECT_EQ(first.GetConnectionState(), Text("connected"));
    for (values::TreeItem* item : m_tree.FindNode(basePath)->GetTreeItems())
        EXPECT_EQ(item->GetObservable()->CountObservers(), 2) << item->GetName().toStdString();
}

TEST_F(MCSStatusInTree, ASecondObjectResetsNeitherContentsNorLimitsNorItems) {
    const MCSStatus first(basePath);
    first.GetSweepTimeValue()->SetValue(250);
    first.GetFreeFreqChannelsValue()->SetMax(5);
    first.GetOnlineValue()->SetValue(true);
    first.GetBootStateValue()->Select(16);
    first.GetOperationModeValue()->DeleteItem(first.GetOperationModeValue()->GetItemAt(0));
    const MCSStatus second(basePath);
    EXPECT_EQ(second.GetSweepTime(), 250);
    EXPECT_EQ(second.GetFreeFreqChannelsValue()->GetMax(), 5);
    EXPECT_TRUE(second.IsOnline());
    EXPECT_EQ(second.GetBootStateValue()->GetCurrentKey(), 16);
    EXPECT_EQ(second.GetOperationModeValue()->Count(), 7);
}

TEST_F(MCSStatusInTree, ASelectionThatExistsWithoutItemsStaysWithoutThem) {
    PutValue<ValueSelection>(basePath, "BootState");
    const MCSStatus status(basePath);
    EXPECT_EQ(status.GetBootStateValue()->Count(), 0);
    EXPECT_EQ(status.GetOperationModeValue()->Count(), 8);
}

TEST_F(MCSStatusInTree, AValueOfAnotherTypeInTheWayGivesOneThatWorksOutsideTheTree) {
    auto* const other = PutValue<values::Value<int>>(basePath, "SweepTime");
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    MCSStatus status(basePath);
    const std::unique_ptr<Number> outside(status.GetSweepTimeValue());  // it belongs to nobody
    ASSERT_NE(outside, nullptr);
    outside->SetValue(7);
    EXPECT_EQ(status.GetSweepTime(), 7);
    EXPECT_EQ(m_tree.FindItem(status.GetSweepTime_ValuePath()), other);
    ASSERT_EQ(traces.Records().size(), 1U);
    EXPECT_TRUE(traces.Messages()[0].contains(Text("'/MultiChannelServer/Status/SweepTime'")));
}

TEST_F(MCSStatusInTree, PathsAreTheBasePathASlashAndTheKey) {
    const QString own = Text("/A//Status/");
    MCSStatus status(own);
    EXPECT_EQ(status.GetSweepTime_ValuePath(), Text("/A//Status//SweepTime"));
    EXPECT_EQ(m_tree.FindItem(Text("/A/Status/SweepTime")), status.GetSweepTimeValue());
    EXPECT_EQ(m_tree.FindNode(Text("/A/Status"))->CountChildren(), 11);
}

TEST_F(MCSStatusInTree, PathsStayAfterTheValuesWent) {
    MCSStatus status(basePath);
    treeaccess::DeleteAt(basePath);
    EXPECT_EQ(status.GetBootState_ValuePath(), PathOf("BootState"));
    EXPECT_EQ(status.GetLogMessage_ValuePath(), PathOf("LogMessage"));
}

TEST_F(MCSStatusInTree, EveryLogMessageIsToldEvenTheSameTwice) {
    MCSStatus status(basePath);
    RecordingObserver observer;
    status.AddObserver(&observer);
    status.GetLogMessageValue()->SetValue(Text("lost lock"));
    status.GetLogMessageValue()->SetValue(Text("lost lock"));
    EXPECT_EQ(observer.Count(3), 2);
    EXPECT_EQ(status.GetLogMessage(), Text("lost lock"));
    EXPECT_EQ(status.GetLogMessageValue()->GetDelivery(), values::EDelivery::EveryChange);
}

TEST_F(MCSStatusInTree, LogMessagesOfAValueThatExistedAreAllToldToo) {
    PutValue<values::Value<QString>>(basePath, "LogMessage")->SetValue(Text("before"));
    MCSStatus status(basePath);
    RecordingObserver observer;
    status.AddObserver(&observer);
    EXPECT_EQ(status.GetLogMessage(), Text("before"));
    status.GetLogMessageValue()->SetValue(Text("before"));
    EXPECT_EQ(observer.Count(3), 1);
}

TEST_F(MCSStatusInTree, OtherValuesTellOnlyChanges) {
    MCSStatus status(basePath);
    RecordingObserver observer;
    status.AddObserver(&observer);
    status.GetConnectionStateValue()->SetValue(Text("up"));
    status.GetConnectionStateValue()->SetValue(Text("up"));
    EXPECT_EQ(observer.Count(3), 1);
}

/// Moves one value and stands in for another.
class DerivedStatus final : public MCSStatus {
  public:
    using MCSStatus::MCSStatus;
    QString GetSweepTime_ValuePath() override { return Text("/Elsewhere/SweepTime"); }
    Number* GetFreeFreqChannelsValue() const override { return &m_channels; }
    ValueSelection* GetBootStateValue() const override { return &m_bootState; }

  private:
    mutable Number m_channels{42, 0, 100};
    mutable ValueSelection m_bootState;
};

// While the base is built the object is not yet of the derived class, so the value is made at the path of the
// base; from then on the derived accessor answers.
TEST_F(MCSStatusInTree, APathAccessorOfADerivedClassAnswersOnlyOnceTheObjectIsBuilt) {
    DerivedStatus status(basePath);
    EXPECT_EQ(status.GetSweepTime_ValuePath(), Text("/Elsewhere/SweepTime"));
    EXPECT_EQ(m_tree.FindItem(Text("/Elsewhere/SweepTime")), nullptr);
    EXPECT_EQ(m_tree.FindItem(PathOf("SweepTime")), status.GetSweepTimeValue());
}

TEST_F(MCSStatusInTree, PlainGettersAskTheValueAccessorOfADerivedClassAndTextsDoNot) {
    DerivedStatus status(basePath);
    ValueAt<Number>(PathOf("FreeFreqChannels"))->SetValue(7);
    EXPECT_EQ(status.GetFreeFreqChannels(), 42);
    status.GetBootStateValue()->AddItem(Text("Own"), 0.0, 1);
    status.GetBootStateValue()->Select(1);
    ValueAt<ValueSelection>(PathOf("BootState"))->Select(16);
    EXPECT_EQ(status.GetBootState(), BootPowerOn);
    EXPECT_EQ(status.GetBootStateAsString(), Text("Ready"));
}

}  // namespace
