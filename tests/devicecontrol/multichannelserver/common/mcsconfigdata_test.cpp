// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <platform/app/vornos.h>
#include <platform/device/stddevicedefinition.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

namespace {

using treeaccess::ContentAt;
using treeaccess::Text;
using treeaccess::ValueAt;
using NotifyingConfig = Notifying<MCSConfigData>;
using Notifications = std::vector<NotifyingConfig::Notification>;

const QString basePath = Text("/MultiChannelServer/Config");

QString PathOf(const char* key) {
    return basePath + Text("/") + Text(key);
}

class MCSConfigDataInTree : public testing::Test {
  protected:
    values::Tree m_tree;
};

struct DefaultRow {
    const char* key;
    const char* content;
};

/// Contents of plain values; the device's name depends on the machine.
const DefaultRow defaults[] = {
    {"DeviceAddress", "localhost"},
    {"ConnectOnStartup", "true"},
    {"ForceConnect", "false"},
    {"NumberOfFreqChannels", "4"},
    {"MaxProtocolLevel", "30"},
    {"SaveConfig", "false"},
    {"DefaultFrequencyForChannel", "30000000"},
    {"DefaultScanAveragingTimeIndex", "-1"},  // nothing is selected
};

TEST_F(MCSConfigDataInTree, CreatesItsValuesInAFixedOrder) {
    const MCSConfigData config(&basePath, false);
    EXPECT_EQ(treeaccess::ChildNames(m_tree.FindNode(basePath)),
              (std::vector<QString>{
                  Text("DeviceAddress"), Text("DeviceName"), Text("ConnectOnStartup"), Text("ForceConnect"),
                  Text("NumberOfFreqChannels"), Text("MaxProtocolLevel"), Text("SaveConfig"),
                  Text("DefaultFrequencyForChannel"), Text("DefaultScanAveragingTimeIndex")}));
}

TEST_F(MCSConfigDataInTree, CreatesEachValueWithItsType) {
    const MCSConfigData config(&basePath, false);
    EXPECT_NE(ValueAt<values::Value<QString>>(PathOf("DeviceAddress")), nullptr);
    EXPECT_NE(ValueAt<values::Value<QString>>(PathOf("DeviceName")), nullptr);
    EXPECT_NE(ValueAt<values::Value<bool>>(PathOf("ConnectOnStartup")), nullptr);
    EXPECT_NE(ValueAt<values::Value<bool>>(PathOf("ForceConnect")), nullptr);
    EXPECT_NE(ValueAt<values::ValueNumeric<int>>(PathOf("NumberOfFreqChannels")), nullptr);
    EXPECT_NE(ValueAt<values::Value<int>>(PathOf("MaxProtocolLevel")), nullptr);
    EXPECT_NE(ValueAt<values::Value<bool>>(PathOf("SaveConfig")), nullptr);
    EXPECT_NE(ValueAt<values::ValueNumeric<double>>(PathOf("DefaultFrequencyForChannel")), nullptr);
    EXPECT_NE(ValueAt<values::ValueSelection>(PathOf("DefaultScanAveragingTimeIndex")), nullptr);
}

TEST_F(MCSConfigDataInTree, ValuesStartWithTheirDefaults) {
    const MCSConfigData config(&basePath, false);
    for (const DefaultRow& row : defaults) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(ContentAt(PathOf(row.key)), Text(row.content));
    }
    EXPECT_EQ(ContentAt(PathOf("DeviceName")), VornOS::Create()->GetMachineName() + Text("_1"));
}

TEST_F(MCSConfigDataInTree, FieldsOutsideTheTreeStartWithTheirDefaults) {
    const MCSConfigData config(&basePath, false);
    EXPECT_TRUE(config.GetGuiVisible());
    EXPECT_FALSE(config.GetResetAfterBoot());
    EXPECT_EQ(config.GetICfg(), nullptr);
    EXPECT_TRUE(config.GetStaticMpxORVs().isEmpty());
    EXPECT_EQ(config.GetDefaultDynMpxORVPolicy().ToString(), Text("<none>"));
    EXPECT_EQ(m_tree.FindItem(config.GetGuiVisible_ValuePath()), nullptr);
    EXPECT_EQ(m_tree.FindItem(PathOf("ResetAfterBoot")), nullptr);
}

TEST_F(MCSConfigDataInTree, NumbersStopAtTheirLimits) {
    MCSConfigData config(&basePath, false);
    config.SetNumberOfFreqChannels(51);
    EXPECT_EQ(config.GetNumberOfFreqChannels(), 50);
    config.SetNumberOfFreqChannels(-1);
    EXPECT_EQ(config.GetNumberOfFreqChannels(), 0);
    config.SetDefaultFrequencyForChannels(3000000001.0);
    EXPECT_EQ(config.GetDefaultFrequencyForChannels(), 3000000000.0);
    config.SetDefaultFrequencyForChannels(299999.0);
    EXPECT_EQ(config.GetDefaultFrequencyForChannels(), 300000.0);
}

TEST_F(MCSConfigDataInTree, AveragingTimesAreTheReportIntervals) {
    const MCSConfigData config(&basePath, false);
    const auto* times = ValueAt<values::ValueSelection>(config.GetDefaultScanAveragingTime_ValuePath());
    const values::ValueDescriptor& intervals = StdDeviceDefinition::g_vdReportInterval;
    ASSERT_EQ(times->Count(), intervals.CountSelItems());
    for (int i = 0; i < times->Count(); ++i) {
        EXPECT_EQ(times->GetItemAt(i)->GetName(), intervals.SelItems()[i].String());
        EXPECT_EQ(times->GetItemAt(i)->GetKey(), intervals.SelItems()[i].Key());
    }
    EXPECT_EQ(config.GetDefaultScanAveragingTime(), -1);
}

TEST_F(MCSConfigDataInTree, AnIndexThatNoSelectionHasIsRefused) {
    const TraceRecorder traces;
    MCSConfigData config(&basePath, false);
    config.SetDefaultScanAveragingTime(2);
    // The last are 0 in 32 bits, where a long has more.
    constexpr auto beyond =
        static_cast<long>(std::min<qint64>(0x100000000, std::numeric_limits<long>::max()));
    for (const long index : {99L, -5L, beyond, -beyond}) {
        SCOPED_TRACE(index);
        config.SetDefaultScanAveragingTime(index);
        EXPECT_EQ(config.GetDefaultScanAveragingTime(), 2);
    }
    config.SetDefaultScanAveragingTime(-1);
    EXPECT_EQ(config.GetDefaultScanAveragingTime(), -1);
}

TEST_F(MCSConfigDataInTree, WithoutABasePathItIsTheServersOwn) {
    const MCSConfigData config(nullptr, false);
    EXPECT_EQ(config.GetBasePath(), Text("/MultiChannelServer/Config"));
    EXPECT_EQ(m_tree.FindNode(Text("/MultiChannelServer/Config"))->CountChildren(), 9);
}

TEST_F(MCSConfigDataInTree, KeepsTheBasePathItWasGiven) {
    const QString own = Text("/Mirror/Config/");
    const MCSConfigData config(&own, false);
    EXPECT_EQ(config.GetBasePath(), own);
    EXPECT_EQ(config.GetDeviceName_ValuePath(), Text("/Mirror/Config//DeviceName"));
    EXPECT_EQ(m_tree.FindNode(Text("/Mirror/Config"))->CountChildren(), 9);
}

TEST_F(MCSConfigDataInTree, TwoObjectsOnOnePathShareTheValues) {
    MCSConfigData first(&basePath, false);
    first.SetDeviceAddress(Text("10.1.1.1"));
    first.SetNumberOfFreqChannels(9);
    first.SetDefaultScanAveragingTime(3);
    MCSConfigData second(&basePath, false);
    EXPECT_EQ(second.GetDeviceAddress(), Text("10.1.1.1"));
    EXPECT_EQ(second.GetNumberOfFreqChannels(), 9);
    EXPECT_EQ(second.GetDefaultScanAveragingTime(), 3);
    second.SetForceConnect(true);
    EXPECT_TRUE(first.GetForceConnect());
    EXPECT_EQ(m_tree.FindNode(basePath)->CountChildren(), 9);
}

TEST_F(MCSConfigDataInTree, OverwritingResetsSharedValuesToTheDefaults) {
    MCSConfigData first(&basePath, false);
    first.SetDeviceAddress(Text("10.1.1.1"));
    first.SetDeviceName(Text("ORV"));
    first.SetConnectOnStartup(false);
    first.SetForceConnect(true);
    first.SetNumberOfFreqChannels(9);
    first.SetMaxProtocolLevel(static_cast<MCSProtocolLevel>(12));
    first.TriggerSaveConfig();
    first.SetDefaultFrequencyForChannels(1e6);
    const MCSConfigData second(&basePath, true);
    for (const DefaultRow& row : defaults) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(ContentAt(PathOf(row.key)), Text(row.content));
    }
    EXPECT_EQ(first.GetDeviceName(), VornOS::Create()->GetMachineName() + Text("_1"));
}

TEST_F(MCSConfigDataInTree, OverwritingRestoresTheLimits) {
    const MCSConfigData first(&basePath, false);
    auto* const channels = ValueAt<values::ValueNumeric<int>>(first.GetNumberOfFreqChannels_ValuePath());
    channels->SetMin(10);
    channels->SetMax(20);
    const MCSConfigData second(&basePath, true);
    EXPECT_EQ(channels->GetMin(), 0);
    EXPECT_EQ(channels->GetMax(), 50);
    EXPECT_EQ(channels->GetValue(), 4);
}

TEST_F(MCSConfigDataInTree, OverwritingNeitherDoublesNorSelectsAveragingTimes) {
    MCSConfigData first(&basePath, false);
    first.SetDefaultScanAveragingTime(3);
    const MCSConfigData second(&basePath, true);
    EXPECT_EQ(ValueAt<values::ValueSelection>(second.GetDefaultScanAveragingTime_ValuePath())->Count(), 8);
    EXPECT_EQ(second.GetDefaultScanAveragingTime(), 3);
}

TEST_F(MCSConfigDataInTree, TellsItsObserversOfEachOfSixSettings) {
    NotifyingConfig config(&basePath, false);
    RecordingObserver observer;
    config.AddObserver(&observer);
    const std::function<void()> changes[] = {
        [&] { config.SetDeviceAddress(Text("a")); }, [&] { config.SetDeviceName(Text("b")); },
        [&] { config.SetConnectOnStartup(false); },  [&] { config.SetForceConnect(true); },
        [&] { config.SetNumberOfFreqChannels(7); },  [&] { config.SetMaxProtocolLevel(MCSProtocolLevel(1)); },
    };
    for (const auto& change : changes) {
        SCOPED_TRACE(observer.Events().size());
        config.Clear();
        change();
        EXPECT_EQ(config.Notifications(), (Notifications{{3, &config.AsObserver()}}));
        change();  // the same again is no change
        EXPECT_EQ(config.Notifications().size(), 1U);
    }
    EXPECT_EQ(observer.Events(), std::vector<RecordingObserver::Event>(6, {&config, 3}));
}

TEST_F(MCSConfigDataInTree, DoesNotTellOfThoseThatSaveThemselvesNorOfTheButton) {
    NotifyingConfig config(&basePath, false);
    config.SetDefaultFrequencyForChannels(1e6);
    config.SetDefaultScanAveragingTime(2);
    config.TriggerSaveConfig();
    config.SetGuiVisible(false);
    EXPECT_EQ(config.Notifications(), Notifications{});
}

TEST_F(MCSConfigDataInTree, ChangesInTheTreeAreTold) {
    NotifyingConfig config(&basePath, false);
    ValueAt<values::Value<QString>>(PathOf("DeviceName"))->SetValue(Text("ORV"));
    EXPECT_EQ(config.GetDeviceName(), Text("ORV"));
    EXPECT_EQ(config.Notifications(), (Notifications{{3, &config.AsObserver()}}));
}

TEST_F(MCSConfigDataInTree, OtherCodesAreNotTold) {
    NotifyingConfig config(&basePath, false);
    auto* const name = ValueAt<values::Value<QString>>(PathOf("DeviceName"));
    for (const TChangeCode code : {0, 1, 2, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 5019})
        config.AsObserver().Update(name, code);
    EXPECT_EQ(config.Notifications(), Notifications{});
    EXPECT_EQ(name->CountObservers(), 1);
}

TEST_F(MCSConfigDataInTree, DestructionDetachesAndLeavesTheValues) {
    auto config = std::make_unique<MCSConfigData>(&basePath, false);
    config->SetDeviceName(Text("ORV"));
    config.reset();
    values::Node* const node = m_tree.FindNode(basePath);
    EXPECT_EQ(node->CountChildren(), 9);
    EXPECT_EQ(treeaccess::CountObservers(node), 0);
    EXPECT_EQ(ContentAt(PathOf("DeviceName")), Text("ORV"));
}

TEST_F(MCSConfigDataInTree, OutlivesItsValuesWhicheverGoesAway) {
    std::vector<QString> keys;
    {
        const MCSConfigData config(&basePath, false);
        keys = treeaccess::ChildNames(m_tree.FindNode(basePath));
    }
    for (const QString& key : keys) {
        SCOPED_TRACE(key.toStdString());
        const auto config = std::make_unique<MCSConfigData>(&basePath, false);
        treeaccess::DeleteAt(basePath + Text("/") + key);
        EXPECT_EQ(m_tree.FindNode(basePath)->CountChildren(), 8);
        EXPECT_EQ(config->GetBasePath(), basePath);
    }
    MCSConfigData config(&basePath, false);
    treeaccess::DeleteAt(basePath);
    EXPECT_EQ(config.GetDeviceName_ValuePath(), PathOf("DeviceName"));
}

TEST_F(MCSConfigDataInTree, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<MCSConfigData>);
    EXPECT_FALSE(std::is_copy_assignable_v<MCSConfigData>);
}

}  // namespace
