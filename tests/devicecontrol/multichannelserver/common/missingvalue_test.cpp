// SPDX-License-Identifier: Apache-2.0
// What the data objects report when one of their values, or their node, cannot be had.
#include <tests/devicecontrol/multichannelserver/common/anydataobject.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/allocationcounter.h>
#include <tests/support/tracerecorder.h>

#include <gmock/gmock.h>

#include <memory>
#include <ostream>
#include <string>

namespace {

using anydataobject::MakeCommands;
using anydataobject::MakeConfigData;
using anydataobject::MakeMpxORVStatus;
using anydataobject::MakeStatus;
using anydataobject::Object;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using treeaccess::Text;

const QString basePath = anydataobject::BasePath();

struct MissingRow {
    Object (*make)();
    const char* file;
    int values;  ///< of the object, in all
    int number;  ///< of the one that is missing, in order of creation
    const char* key;
    const char* expression;  ///< null where nothing is asserted
    int line;
};

void PrintTo(const MissingRow& row, std::ostream* stream) {
    const std::string file = row.file;
    *stream << file.substr(file.rfind('/') + 1) << '_' << row.key;
}

constexpr const char* configFile = "devicecontrol/multichannelserver/common/mcsconfigdata";
constexpr const char* commandsFile = "devicecontrol/multichannelserver/common/mcscommands";
constexpr const char* statusFile = "devicecontrol/multichannelserver/common/mcsstatus";
constexpr const char* mpxFile = "devicecontrol/multichannelserver/common/mcsmpxorvstatus";

// clang-format off
const MissingRow rows[] = {
    {MakeConfigData, configFile, 9, 1, "DeviceAddress", "m_pDeviceAddress != NULL", 70},
    {MakeConfigData, configFile, 9, 2, "DeviceName", "m_pDeviceName != NULL", 76},
    {MakeConfigData, configFile, 9, 3, "ConnectOnStartup", "m_pConnectOnStartup != NULL", 80},
    {MakeConfigData, configFile, 9, 4, "ForceConnect", "m_pForceConnect != NULL", 84},
    {MakeConfigData, configFile, 9, 5, "NumberOfFreqChannels", "m_pNumberOfFreqChannels != NULL", 88},
    {MakeConfigData, configFile, 9, 6, "MaxProtocolLevel", "m_pMaxProtocolLevel != NULL", 92},
    {MakeConfigData, configFile, 9, 7, "SaveConfig", "m_pSaveConfig != NULL", 96},
    {MakeConfigData, configFile, 9, 8, "DefaultFrequencyForChannel", "m_pDefaultFrequencyForChannels != NULL", 100},
    {MakeConfigData, configFile, 9, 9, "DefaultScanAveragingTimeIndex", "m_pDefaultScanAveragingTime != NULL", 106},
    {MakeCommands, commandsFile, 1, 1, "ShallBeConnected", "m_pShallBeConnected != NULL", 44},
    {MakeStatus, statusFile, 11, 1, "BootState", "m_pBootState != NULL", 116},
    {MakeStatus, statusFile, 11, 2, "OperationMode", "m_pOperationMode != NULL", 122},
    {MakeStatus, statusFile, 11, 3, "FreeFreqChannels", "m_pFreeFreqChannels != NULL", 126},
    {MakeStatus, statusFile, 11, 4, "UsedFreqChannels", "m_pUsedFreqChannels != NULL", 130},
    {MakeStatus, statusFile, 11, 5, "McsMasterJobControlled", "m_pMcsMasterJobControlled != NULL", 134},
    {MakeStatus, statusFile, 11, 6, "SweepTime", "m_pSweepTime != NULL", 138},
    {MakeStatus, statusFile, 11, 7, "Online", "m_pOnline != NULL", 142},
    {MakeStatus, statusFile, 11, 8, "ConnectionState", "m_pConnectionState != NULL", 146},
    {MakeStatus, statusFile, 11, 9, "StaticMpxORVs", "m_pStaticMpxORVs != NULL", 150},
    {MakeStatus, statusFile, 11, 10, "DynamicMpxORVs", "m_pDynamicMpxORVs != NULL", 154},
    {MakeStatus, statusFile, 11, 11, "LogMessage", "m_pLogMessage != NULL", 157},
    {MakeMpxORVStatus, mpxFile, 6, 1, "OperationType", nullptr, 0},
    {MakeMpxORVStatus, mpxFile, 6, 2, "ConnectedClients", "m_pConnectedClients != NULL", 143},
    {MakeMpxORVStatus, mpxFile, 6, 3, "OperationMode", "m_pOperationMode != NULL", 149},
    {MakeMpxORVStatus, mpxFile, 6, 4, "IsMaster", "m_pIsMaster != NULL", 153},
    {MakeMpxORVStatus, mpxFile, 6, 5, "IsWatchingMaster", "m_pIsWatchingMaster != NULL", 157},
    {MakeMpxORVStatus, mpxFile, 6, 6, "Comment", "m_pComment != NULL", 161},
};
// clang-format on

class AMissingValue : public testing::TestWithParam<MissingRow> {
  protected:
    static Object MakeWithoutTheValue() {
        const AllocationFailure failure(GetParam().number);
        return GetParam().make();
    }
    void ExpectAllOthers() const {
        EXPECT_EQ(m_tree.FindItem(basePath + Text("/") + Text(GetParam().key)), nullptr);
        const values::Node* const node = m_tree.FindNode(basePath);
        EXPECT_EQ(node != nullptr ? node->CountChildren() : 0, GetParam().values - 1);
    }

    values::Tree m_tree;
};

TEST_P(AMissingValue, IsAssertedAndTheOthersAreMade) {
    TraceRecorder traces(ErrorHandler::TraceAssertions);
    Object object = MakeWithoutTheValue();
    ExpectAllOthers();
    if (GetParam().expression != nullptr) {
        ASSERT_EQ(traces.Records().size(), 1U);
        const TraceRecord& record = traces.Records()[0];
        EXPECT_EQ(record.kind, TraceRecord::Assertion);
        EXPECT_EQ(record.message, Text(GetParam().expression));
        EXPECT_EQ(record.file, Text(GetParam().file));
        EXPECT_EQ(record.line, GetParam().line);
    } else {
        EXPECT_EQ(traces.Records().size(), 0U);
    }
    traces.Clear();
    object.reset();
    EXPECT_EQ(traces.Records().size(), 0U);
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(basePath)), 0);
}

TEST_P(AMissingValue, IsNotAssertedUnlessAssertionsAreTraced) {
    const TraceRecorder traces(~static_cast<unsigned>(ErrorHandler::TraceAssertions));
    const Object object = MakeWithoutTheValue();
    ExpectAllOthers();
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

INSTANTIATE_TEST_SUITE_P(Table, AMissingValue, testing::ValuesIn(rows), testing::PrintToStringParamName());

struct NoValueMissingRow {
    const char* name;
    Object (*make)();
};

void PrintTo(const NoValueMissingRow& row, std::ostream* stream) {
    *stream << row.name;
}

class NoMissingValue : public testing::TestWithParam<NoValueMissingRow> {};

TEST_P(NoMissingValue, MeansNothingIsReported) {
    const values::Tree tree;
    const TraceRecorder traces(~0U);
    Object object = GetParam().make();
    object.reset();
    EXPECT_EQ(traces.Messages(), std::vector<QString>{});
}

INSTANTIATE_TEST_SUITE_P(Objects, NoMissingValue,
                         testing::Values(NoValueMissingRow{"ConfigData", MakeConfigData},
                                         NoValueMissingRow{"Commands", MakeCommands},
                                         NoValueMissingRow{"Status", MakeStatus},
                                         NoValueMissingRow{"MpxORVStatus", MakeMpxORVStatus}),
                         testing::PrintToStringParamName());

constexpr const char* NoNode = "No status node can be at the path '/Base'";

/// Where the path leads through a value no node can be.
void MakeStatusBelowAValue(Object (*make)(), unsigned flags) {
    const values::Tree tree;
    values::Tree::Instance()->AddValue(Text("/"), [] {
        auto* const value = new values::Value<int>();
        value->SetName(Text("Base"));
        return value;
    }());
    ErrorHandler::Instance().SetTraceFlags(flags);
    make();
}

TEST(AMissingStatusNodeDeathTest, EndsTheProcessAfterTheAssertion) {
    EXPECT_DEATH(
        MakeStatusBelowAValue(MakeStatus, ErrorHandler::TraceAssertions),
        AllOf(HasSubstr("m_pStaSubtree != NULL (devicecontrol/multichannelserver/common/mcsstatus:109)"),
              HasSubstr(NoNode)));
    EXPECT_DEATH(
        MakeStatusBelowAValue(MakeMpxORVStatus, ErrorHandler::TraceAssertions),
        AllOf(
            HasSubstr("m_pStaSubtree != NULL (devicecontrol/multichannelserver/common/mcsmpxorvstatus:135)"),
            HasSubstr(NoNode)));
}

TEST(AMissingStatusNodeDeathTest, EndsTheProcessWithoutAnAssertionWhereNoneIsTraced) {
    for (const auto make : {MakeStatus, MakeMpxORVStatus})
        EXPECT_DEATH(MakeStatusBelowAValue(make, 0), AllOf(HasSubstr(NoNode), Not(HasSubstr("!= NULL"))));
}

}  // namespace
