// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <platform/config/cfgcenter.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using treeaccess::Text;
using NotifyingConfig = Notifying<MCSConfigData>;
using Notifications = std::vector<NotifyingConfig::Notification>;

/// What WriteTo calls: nine keys, each written and committed.
constexpr std::size_t CallsOfOneSave = 18;

class SavingMCSConfigData : public testing::Test {
  protected:
    /// Makes the store known and forgets what that took.
    void MakeStoreKnown() {
        m_config.ReadFrom(&m_cfg);
        m_cfg.ClearLog();
        m_config.Clear();
    }
    values::Value<bool>* Button() const {
        return treeaccess::ValueAt<values::Value<bool>>(Text("/Config/SaveConfig"));
    }

    values::Tree m_tree;
    FakeCfg m_cfg;
    const QString m_basePath = Text("/Config");
    NotifyingConfig m_config{&m_basePath, false};
};

TEST_F(SavingMCSConfigData, TheButtonStaysPressedAndWritesNothingBeforeAStoreIsKnown) {
    m_config.TriggerSaveConfig();
    EXPECT_TRUE(Button()->GetValue());
    EXPECT_TRUE(m_cfg.Log().empty());
    EXPECT_EQ(m_config.GetICfg(), nullptr);
}

TEST_F(SavingMCSConfigData, TheButtonSavesOnceAndComesBack) {
    MakeStoreKnown();
    RecordingObserver client;
    Button()->AddObserver(&client);
    m_config.TriggerSaveConfig();
    EXPECT_FALSE(Button()->GetValue());
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
    EXPECT_EQ(client.Codes(), (std::vector<TChangeCode>{3, 3}));
    EXPECT_EQ(m_config.Notifications(), Notifications{});
    m_config.TriggerSaveConfig();
    EXPECT_EQ(m_cfg.Log().size(), 2 * CallsOfOneSave);
    Button()->DeleteObserver(&client);
}

TEST_F(SavingMCSConfigData, AClientPressesTheButtonInTheTree) {
    MakeStoreKnown();
    m_config.SetDeviceName(Text("West"));
    Button()->SetValue(true);
    EXPECT_EQ(m_cfg.Content(Text("DeviceName")), Text("West"));
    EXPECT_FALSE(Button()->GetValue());
}

TEST_F(SavingMCSConfigData, TheButtonStillWorksAfterItWasStuckWithoutAStore) {
    m_config.TriggerSaveConfig();
    MakeStoreKnown();
    EXPECT_TRUE(Button()->GetValue());
    Button()->SetValue(false);
    EXPECT_TRUE(m_cfg.Log().empty());
    m_config.TriggerSaveConfig();
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
    EXPECT_FALSE(Button()->GetValue());
}

TEST_F(SavingMCSConfigData, WritingMakesAStoreKnownToTheButton) {
    m_config.WriteTo(&m_cfg);
    m_cfg.ClearLog();
    m_config.TriggerSaveConfig();
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
}

TEST_F(SavingMCSConfigData, TheFrequencySavesEverythingOnEveryChange) {
    MakeStoreKnown();
    m_config.SetDefaultFrequencyForChannels(2000000.0);
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
    EXPECT_EQ(m_cfg.Content(Text("DefaultFrequencyForChannel")), Text("2000000"));
    EXPECT_EQ(m_config.Notifications(), Notifications{});
    m_config.SetDefaultFrequencyForChannels(2000000.0);
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
}

TEST_F(SavingMCSConfigData, TheAveragingTimeSavesEverythingOnEveryChange) {
    MakeStoreKnown();
    m_config.SetDefaultScanAveragingTime(1);
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
    EXPECT_EQ(m_cfg.Content(Text("DefaultScanAveragingTimeIndex")), Text("1"));
    EXPECT_EQ(m_config.Notifications(), Notifications{});
}

TEST_F(SavingMCSConfigData, BothOnlyChangeTheTreeBeforeAStoreIsKnown) {
    m_config.SetDefaultFrequencyForChannels(2000000.0);
    m_config.SetDefaultScanAveragingTime(1);
    EXPECT_TRUE(m_cfg.Log().empty());
    EXPECT_EQ(m_config.GetDefaultFrequencyForChannels(), 2000000.0);
    EXPECT_EQ(m_config.GetDefaultScanAveragingTime(), 1);
}

TEST_F(SavingMCSConfigData, OtherSettingsWaitForTheButton) {
    MakeStoreKnown();
    m_config.SetDeviceName(Text("West"));
    m_config.SetNumberOfFreqChannels(9);
    m_config.SetGuiVisible(false);
    EXPECT_TRUE(m_cfg.Log().empty());
}

TEST_F(SavingMCSConfigData, ReadingAnotherStoreSavesInTheOneKnownBefore) {
    MakeStoreKnown();
    FakeCfg other;
    other.Put(Text("DefaultFrequencyForChannel"), Text("5000000"));
    other.Put(Text("DefaultScanAveragingTimeIndex"), Text("5"));
    m_config.ReadFrom(&other);
    EXPECT_EQ(m_cfg.Log().size(), CallsOfOneSave);
    EXPECT_EQ(m_cfg.Content(Text("DefaultFrequencyForChannel")), Text("5000000"));
    EXPECT_EQ(m_config.GetICfg(), &other);
}

TEST_F(SavingMCSConfigData, WithoutAnyStoreNothingHappens) {
    m_config.ReadFrom(nullptr);
    m_config.WriteTo(nullptr);
    m_config.WriteGuiVisibleTo(nullptr);
    EXPECT_EQ(m_config.GetICfg(), nullptr);
    EXPECT_EQ(m_config.Notifications(), Notifications{});
    EXPECT_EQ(m_config.GetDefaultDynMpxORVPolicy().ToString(), Text("<none>"));
}

TEST_F(SavingMCSConfigData, NullMeansTheStoreUsedLast) {
    FakeCfg other;
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetICfg(), &m_cfg);
    m_config.WriteTo(&other);
    EXPECT_EQ(m_config.GetICfg(), &other);
    m_cfg.ClearLog();
    other.ClearLog();
    m_config.WriteTo(nullptr);
    EXPECT_EQ(other.Log().size(), CallsOfOneSave);
    other.Put(Text("DeviceName"), Text("West"));
    m_config.ReadFrom(nullptr);
    EXPECT_EQ(m_config.GetDeviceName(), Text("West"));
    m_config.WriteGuiVisibleTo(nullptr);
    EXPECT_EQ(other.Log().back(), Text("CommitKey GuiVisible"));
    EXPECT_TRUE(m_cfg.Log().empty());
}

TEST_F(SavingMCSConfigData, GuiVisibleIsWrittenAloneAndDoesNotMakeTheStoreKnown) {
    m_config.SetGuiVisible(false);
    m_config.WriteGuiVisibleTo(&m_cfg);
    EXPECT_EQ(m_cfg.Log(),
              (std::vector<QString>{Text("WriteBool GuiVisible false"), Text("CommitKey GuiVisible")}));
    EXPECT_EQ(m_config.GetICfg(), nullptr);
}

TEST_F(SavingMCSConfigData, WithoutAPolicySectionTheDefaultPolicyHolds) {
    MCSPolicySet expected;
    expected.SetToDefaultPolicy();
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetDefaultDynMpxORVPolicy().ToString(), expected.ToString());
    m_cfg.PutSection(Text("DynamicMpxORVs"));  // and no "Policy" in it
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetDefaultDynMpxORVPolicy().ToString(), expected.ToString());
    EXPECT_EQ(m_cfg.Log().back(), Text("OpenSection DynamicMpxORVs/Policy"));
    EXPECT_EQ(m_cfg.OpenSections(), 0);
}

TEST_F(SavingMCSConfigData, ThePolicySectionChangesTheDefaultAndGetsItsMissingKeys) {
    m_cfg.PutSection(Text("DynamicMpxORVs"));
    m_cfg.PutSection(Text("DynamicMpxORVs/Policy"));
    m_cfg.Put(Text("DynamicMpxORVs/Policy/MayRestartJob"), Text("false"));
    m_cfg.Put(Text("DynamicMpxORVs/Policy/SeesMasterJobRf"), Text("true"));
    m_config.ReadFrom(&m_cfg);
    EXPECT_EQ(m_config.GetDefaultDynMpxORVPolicy().ToString(),
              Text("MayAlterFreqRanges, MayAlterFreqSingle, MayBeJobMaster, "
                   "MayReadSingleFreqFromMasterRanges, SeesMasterJobRf"));
    EXPECT_EQ(m_cfg.Content(Text("DynamicMpxORVs/Policy/MayBeJobMaster")), Text("true"));
    EXPECT_EQ(m_cfg.Content(Text("DynamicMpxORVs/Policy/MayBIT")), Text("false"));
    EXPECT_EQ(m_cfg.OpenSections(), 0);
}

TEST_F(SavingMCSConfigData, ThePolicyHandedOutIsACopy) {
    m_config.ReadFrom(&m_cfg);
    MCSPolicySet copy = m_config.GetDefaultDynMpxORVPolicy();
    copy.RemoveAll();
    EXPECT_TRUE(m_config.GetDefaultDynMpxORVPolicy().Contains(MCSPolicy::MAYBEJOBMASTER));
}

TEST_F(SavingMCSConfigData, NoStaticMpxORVExistsAfterReading) {
    EXPECT_FALSE(m_config.DoesStaticMpxORVExist(Text("Alpha")));
    m_cfg.PutSection(Text("StaticMpxORVs"));
    m_cfg.PutSection(Text("StaticMpxORVs/Alpha"));
    m_cfg.Put(Text("StaticMpxORVs/Alpha/Name"), Text("Alpha"));
    m_config.ReadFrom(&m_cfg);
    for (const char* name : {"Alpha", "alpha", "", "StaticMpxORVs"})
        EXPECT_FALSE(m_config.DoesStaticMpxORVExist(Text(name))) << name;
    EXPECT_TRUE(m_config.GetStaticMpxORVs().isEmpty());
}

/// The real store, on a file of its own.
class MCSConfigDataInAFile : public testing::Test {
  protected:
    MCSConfigDataInAFile() { Reopen(); }
    ~MCSConfigDataInAFile() override {
        m_root.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }
    /// Forgets what is in memory and reads the file.
    void Reopen() {
        m_root.reset();
        CfgCenter::Instance().SetStorePath(m_directory.filePath(Text("server.ini")));
        m_root.reset(CfgCenter::Instance().OpenRoot());
    }

    QTemporaryDir m_directory;
    std::unique_ptr<ICfg> m_root;
};

TEST_F(MCSConfigDataInAFile, IsTheSameInTheNextRun) {
    {
        const std::unique_ptr<ICfg> dynamic(m_root->ProvideSection(Text("DynamicMpxORVs")));
        const std::unique_ptr<ICfg> policy(dynamic->ProvideSection(Text("Policy")));
        policy->WriteBool(Text("MayCal"), true);
        const values::Tree tree;
        MCSConfigData config(nullptr, false);
        config.ReadFrom(m_root.get());
        config.SetDeviceAddress(Text("Gerät 1; Straße, \"West\""));
        config.SetNumberOfFreqChannels(17);
        config.SetForceConnect(true);
        config.SetGuiVisible(false);
        config.TriggerSaveConfig();
        config.SetDefaultFrequencyForChannels(145500000.0);
    }
    Reopen();
    const values::Tree tree;
    MCSConfigData config(nullptr, false);
    config.ReadFrom(m_root.get());
    EXPECT_EQ(config.GetDeviceAddress(), Text("Gerät 1; Straße, \"West\""));
    EXPECT_EQ(config.GetNumberOfFreqChannels(), 17);
    EXPECT_TRUE(config.GetForceConnect());
    EXPECT_FALSE(config.GetGuiVisible());
    EXPECT_EQ(config.GetDefaultFrequencyForChannels(), 145500000.0);
    EXPECT_EQ(config.GetDefaultScanAveragingTime(), 5);
    EXPECT_EQ(config.GetDefaultDynMpxORVPolicy().ToString(),
              Text("MayAlterFreqRanges, MayAlterFreqSingle, MayBeJobMaster, MayCal, "
                   "MayReadSingleFreqFromMasterRanges, MayRestartJob"));
}

}  // namespace
