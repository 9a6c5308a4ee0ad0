// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace {

using treeaccess::Text;
using NotifyingConfig = Notifying<MCSConfigData>;
using Notifications = std::vector<NotifyingConfig::Notification>;

std::vector<QString> Lines(std::initializer_list<const char*> texts) {
    std::vector<QString> lines;
    for (const char* text : texts)
        lines.push_back(Text(text));
    return lines;
}

class MCSConfigDataStore : public testing::Test {
  protected:
    MCSConfigDataStore() { m_config.SetDeviceName(Text("ORV_1")); }

    void PutPolicySection() {
        m_cfg.PutSection(Text("DynamicMpxORVs"));
        m_cfg.PutSection(Text("DynamicMpxORVs/Policy"));
    }
    QString Stored(const char* key) const { return m_cfg.Content(Text(key)).value_or(Text("(missing)")); }

    values::Tree m_tree;
    FakeCfg m_cfg;
    const QString m_basePath = Text("/Config");
    NotifyingConfig m_config{&m_basePath, false};
};

TEST_F(MCSConfigDataStore, ReadingAnEmptyStoreAsksForEveryKeyAndWritesThree) {
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_cfg.Log(), Lines({"ReadString DeviceAddress localhost",
                                  "ReadString DeviceName ORV_1",
                                  "ReadBool ConnectOnStartup true",
                                  "ReadBool ForceConnect false",
                                  "ReadInt NumberOfFreqChannels 4",
                                  "ReadBool GuiVisible true",
                                  "ReadInt MaxProtocolLevel 30",
                                  "ReadBool ResetAfterBoot false",
                                  "ReadBool ResetAfterBoot true",
                                  "WriteBool ResetAfterBoot false",
                                  "CommitKey ResetAfterBoot",
                                  "ReadBool ResetAfterBoot false",
                                  "ReadInt DefaultFrequencyForChannel 0",
                                  "ReadInt DefaultFrequencyForChannel 1",
                                  "WriteInt DefaultFrequencyForChannel 30000000",
                                  "CommitKey DefaultFrequencyForChannel",
                                  "ReadInt DefaultFrequencyForChannel 30000000",
                                  "ReadInt DefaultScanAveragingTimeIndex 0",
                                  "ReadInt DefaultScanAveragingTimeIndex 1",
                                  "WriteInt DefaultScanAveragingTimeIndex 5",
                                  "CommitKey DefaultScanAveragingTimeIndex",
                                  "ReadInt DefaultScanAveragingTimeIndex -1",
                                  "OpenSection DynamicMpxORVs"}));
}

TEST_F(MCSConfigDataStore, ReadingAFullStoreWritesNothingButThePolicies) {
    m_cfg.Put(Text("ResetAfterBoot"), Text("false"));
    m_cfg.Put(Text("DefaultFrequencyForChannel"), Text("0"));
    m_cfg.Put(Text("DefaultScanAveragingTimeIndex"), Text("1"));
    m_config.SetDefaultFrequencyForChannels(30000000.9);
    m_config.SetDefaultScanAveragingTime(2);
    PutPolicySection();
    m_cfg.Put(Text("DynamicMpxORVs/Policy/MayCal"), Text("true"));
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(std::vector<QString>(m_cfg.Log().begin() + 7, m_cfg.Log().end()),
              Lines({"ReadBool ResetAfterBoot false",
                     "ReadBool ResetAfterBoot true",
                     "ReadBool ResetAfterBoot false",
                     "ReadInt DefaultFrequencyForChannel 0",
                     "ReadInt DefaultFrequencyForChannel 1",
                     "ReadInt DefaultFrequencyForChannel 30000000",
                     "ReadInt DefaultScanAveragingTimeIndex 0",
                     "ReadInt DefaultScanAveragingTimeIndex 1",
                     "ReadInt DefaultScanAveragingTimeIndex 2",
                     "OpenSection DynamicMpxORVs",
                     "OpenSection DynamicMpxORVs/Policy",
                     "ReadBool DynamicMpxORVs/Policy/IsSlaveToMasterJob false",
                     "ReadBool DynamicMpxORVs/Policy/MayAlterDeviceSettings false",
                     "ReadBool DynamicMpxORVs/Policy/MayAlterFreqRanges true",
                     "ReadBool DynamicMpxORVs/Policy/MayAlterFreqSingle true",
                     "ReadBool DynamicMpxORVs/Policy/MayBIT false",
                     "ReadBool DynamicMpxORVs/Policy/MayBeJobMaster true",
                     "ReadBool DynamicMpxORVs/Policy/MayCal false",
                     "ReadBool DynamicMpxORVs/Policy/MayReadSingleFreqFromMasterRanges true",
                     "ReadBool DynamicMpxORVs/Policy/MayRestartJob true",
                     "ReadBool DynamicMpxORVs/Policy/SeesMasterJobRf false",
                     "WriteBool DynamicMpxORVs/Policy/IsSlaveToMasterJob false",
                     "WriteBool DynamicMpxORVs/Policy/MayAlterDeviceSettings false",
                     "WriteBool DynamicMpxORVs/Policy/MayAlterFreqRanges true",
                     "WriteBool DynamicMpxORVs/Policy/MayAlterFreqSingle true",
                     "WriteBool DynamicMpxORVs/Policy/MayBIT false",
                     "WriteBool DynamicMpxORVs/Policy/MayBeJobMaster true",
                     "WriteBool DynamicMpxORVs/Policy/MayCal true",
                     "WriteBool DynamicMpxORVs/Policy/MayReadSingleFreqFromMasterRanges true",
                     "WriteBool DynamicMpxORVs/Policy/MayRestartJob true",
                     "WriteBool DynamicMpxORVs/Policy/SeesMasterJobRf false"}));
}

TEST_F(MCSConfigDataStore, WritingWritesAndCommitsKeyAfterKey) {
    m_config.SetDeviceAddress(Text("10.1.1.1"));
    m_config.SetConnectOnStartup(false);
    m_config.SetForceConnect(true);
    m_config.SetNumberOfFreqChannels(9);
    m_config.SetMaxProtocolLevel(static_cast<MCSProtocolLevel>(12));
    m_config.SetDefaultFrequencyForChannels(1500000.0);
    m_config.SetDefaultScanAveragingTime(3);
    m_config.SetGuiVisible(false);
    m_config.WriteTo(&m_cfg);
    EXPECT_EQ(
        m_cfg.Log(),
        Lines({"WriteString DeviceAddress 10.1.1.1", "CommitKey DeviceAddress",
               "WriteString DeviceName ORV_1", "CommitKey DeviceName", "WriteBool ConnectOnStartup false",
               "CommitKey ConnectOnStartup", "WriteBool ForceConnect true", "CommitKey ForceConnect",
               "WriteInt NumberOfFreqChannels 9", "CommitKey NumberOfFreqChannels",
               "WriteInt MaxProtocolLevel 12", "CommitKey MaxProtocolLevel",
               "WriteInt DefaultFrequencyForChannel 1500000", "CommitKey DefaultFrequencyForChannel",
               "WriteInt DefaultScanAveragingTimeIndex 3", "CommitKey DefaultScanAveragingTimeIndex",
               "WriteBool GuiVisible false", "CommitKey GuiVisible"}));
}

TEST_F(MCSConfigDataStore, AStoreWithoutFrequencyAndIndexEndsUpWithThemAndSoDoesTheTree) {
    m_config.SetDefaultFrequencyForChannels(1e6);
    m_config.SetDefaultScanAveragingTime(2);
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(Stored("DefaultFrequencyForChannel"), Text("30000000"));
    EXPECT_EQ(Stored("DefaultScanAveragingTimeIndex"), Text("5"));
    EXPECT_EQ(m_config.GetDefaultFrequencyForChannels(), 30000000.0);
    EXPECT_EQ(m_config.GetDefaultScanAveragingTime(), 5);
}

TEST_F(MCSConfigDataStore, OtherMissingKeysKeepTheSettingAndStayMissing) {
    m_config.SetDeviceAddress(Text("10.1.1.1"));
    m_config.SetConnectOnStartup(false);
    m_config.SetForceConnect(true);
    m_config.SetNumberOfFreqChannels(9);
    m_config.SetMaxProtocolLevel(static_cast<MCSProtocolLevel>(12));
    m_config.SetGuiVisible(false);
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetDeviceAddress(), Text("10.1.1.1"));
    EXPECT_EQ(m_config.GetDeviceName(), Text("ORV_1"));
    EXPECT_FALSE(m_config.GetConnectOnStartup());
    EXPECT_TRUE(m_config.GetForceConnect());
    EXPECT_EQ(m_config.GetNumberOfFreqChannels(), 9);
    EXPECT_EQ(m_config.GetMaxProtocolLevel(), 12);
    EXPECT_FALSE(m_config.GetGuiVisible());
    for (const char* key : {"DeviceAddress", "DeviceName", "ConnectOnStartup", "ForceConnect",
                            "NumberOfFreqChannels", "MaxProtocolLevel", "GuiVisible"})
        EXPECT_EQ(Stored(key), Text("(missing)")) << key;
}

TEST_F(MCSConfigDataStore, ReadingTakesEverySettingFromTheStore) {
    m_cfg.Put(Text("DeviceAddress"), Text("10.2.2.2"));
    m_cfg.Put(Text("DeviceName"), Text("West"));
    m_cfg.Put(Text("ConnectOnStartup"), Text("false"));
    m_cfg.Put(Text("ForceConnect"), Text("true"));
    m_cfg.Put(Text("NumberOfFreqChannels"), Text("11"));
    m_cfg.Put(Text("GuiVisible"), Text("false"));
    m_cfg.Put(Text("MaxProtocolLevel"), Text("21"));
    m_cfg.Put(Text("ResetAfterBoot"), Text("true"));
    m_cfg.Put(Text("DefaultFrequencyForChannel"), Text("2000000"));
    m_cfg.Put(Text("DefaultScanAveragingTimeIndex"), Text("6"));
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetDeviceAddress(), Text("10.2.2.2"));
    EXPECT_EQ(m_config.GetDeviceName(), Text("West"));
    EXPECT_FALSE(m_config.GetConnectOnStartup());
    EXPECT_TRUE(m_config.GetForceConnect());
    EXPECT_EQ(m_config.GetNumberOfFreqChannels(), 11);
    EXPECT_FALSE(m_config.GetGuiVisible());
    EXPECT_EQ(m_config.GetMaxProtocolLevel(), 21);
    EXPECT_TRUE(m_config.GetResetAfterBoot());
    EXPECT_EQ(m_config.GetDefaultFrequencyForChannels(), 2000000.0);
    EXPECT_EQ(m_config.GetDefaultScanAveragingTime(), 6);
}

TEST_F(MCSConfigDataStore, ResetAfterBootFollowsTheStore) {
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(Stored("ResetAfterBoot"), Text("false"));
    EXPECT_FALSE(m_config.GetResetAfterBoot());
    m_cfg.Put(Text("ResetAfterBoot"), Text("true"));
    m_config.ReadFrom(nullptr);
    EXPECT_TRUE(m_config.GetResetAfterBoot());
    m_config.WriteTo(nullptr);
    EXPECT_EQ(Stored("ResetAfterBoot"), Text("true"));
}

TEST_F(MCSConfigDataStore, ReadingTellsOnceAtItsEndWithWhatWasRead) {
    m_cfg.Put(Text("DeviceAddress"), Text("10.2.2.2"));
    m_cfg.Put(Text("NumberOfFreqChannels"), Text("11"));
    m_cfg.Put(Text("MaxProtocolLevel"), Text("21"));
    m_config.Clear();
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.Notifications(), (Notifications{{3, &m_config.AsObserver()}}));
    m_config.ReadFrom(&m_cfg);  // even if nothing changed
    EXPECT_EQ(m_config.Notifications().size(), 2U);
    m_config.SetDeviceAddress(Text("10.3.3.3"));  // reading is over
    EXPECT_EQ(m_config.Notifications().size(), 3U);
}

TEST_F(MCSConfigDataStore, WritingTellsNobody) {
    m_config.Clear();
    m_config.WriteTo(&m_cfg);
    EXPECT_EQ(m_config.Notifications(), Notifications{});
}

struct OutOfRangeRow {
    const char* name;
    const char* key;
    const char* content;
    const char* shown;
};

void PrintTo(const OutOfRangeRow& row, std::ostream* stream) {
    *stream << row.name;
}

class MCSConfigDataOutOfRange : public MCSConfigDataStore,
                                public testing::WithParamInterface<OutOfRangeRow> {};

TEST_P(MCSConfigDataOutOfRange, IsKeptOutOfTheTree) {
    const TraceRecorder traces;
    m_config.SetDefaultScanAveragingTime(2);
    m_cfg.Put(Text(GetParam().key), Text(GetParam().content));
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(treeaccess::ContentAt(Text("/Config/") + Text(GetParam().key)), Text(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(
    FromTheStore, MCSConfigDataOutOfRange,
    testing::Values(OutOfRangeRow{"ChannelsAbove", "NumberOfFreqChannels", "99", "50"},
                    OutOfRangeRow{"ChannelsBelow", "NumberOfFreqChannels", "-5", "0"},
                    OutOfRangeRow{"FrequencyBelow", "DefaultFrequencyForChannel", "1", "300000"},
                    OutOfRangeRow{"FrequencyThatCouldNotBeKept", "DefaultFrequencyForChannel", "-2147483648",
                                  "300000"},
                    OutOfRangeRow{"IndexAbove", "DefaultScanAveragingTimeIndex", "99", "200"},
                    OutOfRangeRow{"IndexBelow", "DefaultScanAveragingTimeIndex", "-5", "200"}),
    testing::PrintToStringParamName());

struct FrequencyRow {
    const char* name;
    double hz;
    const char* stored;
};

void PrintTo(const FrequencyRow& row, std::ostream* stream) {
    *stream << row.name;
}

class MCSConfigDataFrequency : public MCSConfigDataStore, public testing::WithParamInterface<FrequencyRow> {};

TEST_P(MCSConfigDataFrequency, IsWrittenAsAWholeNumberOf32Bits) {
    m_config.SetDefaultFrequencyForChannels(GetParam().hz);
    m_config.WriteTo(&m_cfg);
    EXPECT_EQ(Stored("DefaultFrequencyForChannel"), Text(GetParam().stored));
}

INSTANTIATE_TEST_SUITE_P(Table, MCSConfigDataFrequency,
                         testing::Values(FrequencyRow{"TheLowest", 300000.0, "300000"},
                                         FrequencyRow{"AFraction", 30000000.9, "30000000"},
                                         FrequencyRow{"TheLastThatFits", 2147483647.0, "2147483647"},
                                         FrequencyRow{"JustBelow31Bits", 2147483647.9, "2147483647"},
                                         FrequencyRow{"TheFirstThatDoesNotFit", 2147483648.0, "-2147483648"},
                                         FrequencyRow{"TheHighest", 3000000000.0, "-2147483648"}),
                         testing::PrintToStringParamName());

}  // namespace
