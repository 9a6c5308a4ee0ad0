// SPDX-License-Identifier: Apache-2.0
// Every family of accessors, walked the same way: what is set on one side is read on the other, the path
// leads to the value, and no other value changes.
#include <devicecontrol/multichannelserver/common/mcscommands.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>
#include <vector>

namespace {

using treeaccess::ContentAt;
using treeaccess::Text;
using treeaccess::ValueAt;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;

const QString basePath = Text("/Base");

// One content of its own for each type and family; all differ from what a value starts with.
QString AsText(const QString& text) {
    return text;
}
QString AsText(bool flag) {
    return flag ? Text("true") : Text("false");
}
QString AsText(int number) {
    return QString::number(number);
}
/// Of a key of a selection, which is one or the other.
template <class T, std::enable_if_t<std::is_same_v<T, long> || std::is_same_v<T, qint64>, int> = 0>
QString AsText(T number) {
    return QString::number(number);
}
QString AsText(double number) {
    return QString::number(number, 'g', 17);
}

struct Family {
    const char* key;
    QString path;                   ///< what the path accessor gives
    const values::TreeItem* value;  ///< what the value accessor gives; null where there is none
    std::function<void()> set;      ///< changes the content, on one side
    std::function<QString()> get;   ///< reads the content, on the other side
    QString expected;               ///< what is then read
};

std::vector<QString> ReadAll(const std::vector<Family>& families) {
    std::vector<QString> contents;
    for (const Family& family : families)
        contents.push_back(family.get());
    return contents;
}

void ExpectFamilies(const std::vector<Family>& families) {
    for (std::size_t i = 0; i < families.size(); ++i) {
        const Family& family = families[i];
        SCOPED_TRACE(family.key);
        EXPECT_EQ(family.path, basePath + Text("/") + Text(family.key));
        const values::TreeItem* const item = values::Tree::Instance()->FindItem(family.path);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->GetName(), Text(family.key));
        EXPECT_TRUE(family.value == nullptr || family.value == item);
        std::vector<QString> expected = ReadAll(families);
        ASSERT_NE(expected[i], family.expected);
        expected[i] = family.expected;
        family.set();
        EXPECT_EQ(ReadAll(families), expected);
    }
}

/// Sets the value at the path of \a key, as a client would, without the object.
template <class V, class T>
std::function<void()> InTree(const char* key, const T& content) {
    return [key, content] { ValueAt<V>(basePath + Text("/") + Text(key))->SetValue(content); };
}

std::function<void()> KeyInTree(const char* key, long itemKey) {
    return [key, itemKey] { ValueAt<ValueSelection>(basePath + Text("/") + Text(key))->Select(itemKey); };
}

std::function<QString()> OfTree(const char* key) {
    return [key] { return ContentAt(basePath + Text("/") + Text(key)); };
}

class Accessors : public testing::Test {
  protected:
    values::Tree m_tree;
};

struct ConfigPaths {
    explicit ConfigPaths(const MCSConfigData& c)
        : address(c.GetDeviceAddress_ValuePath()),
          name(c.GetDeviceName_ValuePath()),
          connect(c.GetConnectOnStartup_ValuePath()),
          force(c.GetForceConnect_ValuePath()),
          channels(c.GetNumberOfFreqChannels_ValuePath()),
          level(c.GetMaxProtocolLevel_ValuePath()),
          frequency(c.GetDefaultFrequencyForChannels_ValuePath()),
          time(c.GetDefaultScanAveragingTime_ValuePath()) {}

    QString address, name, connect, force, channels, level, frequency, time;
};

// clang-format off
TEST_F(Accessors, WhatTheConfigurationSetsIsInTheTree) {
    MCSConfigData c(&basePath, false);
    const ConfigPaths p(c);
    const std::vector<Family> families = {
        {"DeviceAddress", p.address, nullptr, [&] { c.SetDeviceAddress(Text("address")); }, OfTree("DeviceAddress"), Text("address")},
        {"DeviceName", p.name, nullptr, [&] { c.SetDeviceName(Text("name")); }, OfTree("DeviceName"), Text("name")},
        {"ConnectOnStartup", p.connect, nullptr, [&] { c.SetConnectOnStartup(false); }, OfTree("ConnectOnStartup"), Text("false")},
        {"ForceConnect", p.force, nullptr, [&] { c.SetForceConnect(true); }, OfTree("ForceConnect"), Text("true")},
        {"NumberOfFreqChannels", p.channels, nullptr, [&] { c.SetNumberOfFreqChannels(17); }, OfTree("NumberOfFreqChannels"), Text("17")},
        {"MaxProtocolLevel", p.level, nullptr, [&] { c.SetMaxProtocolLevel(MCSProtocolLevel(18)); }, OfTree("MaxProtocolLevel"), Text("18")},
        {"SaveConfig", Text("/Base/SaveConfig"), nullptr, [&] { c.TriggerSaveConfig(); }, OfTree("SaveConfig"), Text("true")},
        {"DefaultFrequencyForChannel", p.frequency, nullptr, [&] { c.SetDefaultFrequencyForChannels(19e6); }, OfTree("DefaultFrequencyForChannel"), Text("19000000")},
        {"DefaultScanAveragingTimeIndex", p.time, nullptr, [&] { c.SetDefaultScanAveragingTime(3); }, OfTree("DefaultScanAveragingTimeIndex"), Text("500")},
    };
    ExpectFamilies(families);
    EXPECT_EQ(c.GetGuiVisible_ValuePath(), Text("/Base/GuiVisible"));
}

TEST_F(Accessors, WhatIsInTheTreeIsReadByTheConfiguration) {
    const MCSConfigData c(&basePath, false);
    const ConfigPaths p(c);
    const std::vector<Family> families = {
        {"DeviceAddress", p.address, nullptr, InTree<Value<QString>>("DeviceAddress", Text("address")), [&] { return AsText(c.GetDeviceAddress()); }, Text("address")},
        {"DeviceName", p.name, nullptr, InTree<Value<QString>>("DeviceName", Text("name")), [&] { return AsText(c.GetDeviceName()); }, Text("name")},
        {"ConnectOnStartup", p.connect, nullptr, InTree<Value<bool>>("ConnectOnStartup", false), [&] { return AsText(c.GetConnectOnStartup()); }, Text("false")},
        {"ForceConnect", p.force, nullptr, InTree<Value<bool>>("ForceConnect", true), [&] { return AsText(c.GetForceConnect()); }, Text("true")},
        {"NumberOfFreqChannels", p.channels, nullptr, InTree<ValueNumeric<int>>("NumberOfFreqChannels", 17), [&] { return AsText(c.GetNumberOfFreqChannels()); }, Text("17")},
        {"MaxProtocolLevel", p.level, nullptr, InTree<Value<int>>("MaxProtocolLevel", 18), [&] { return AsText(int(c.GetMaxProtocolLevel())); }, Text("18")},
        {"DefaultFrequencyForChannel", p.frequency, nullptr, InTree<ValueNumeric<double>>("DefaultFrequencyForChannel", 19e6), [&] { return AsText(c.GetDefaultFrequencyForChannels()); }, Text("19000000")},
        {"DefaultScanAveragingTimeIndex", p.time, nullptr, KeyInTree("DefaultScanAveragingTimeIndex", 500), [&] { return AsText(c.GetDefaultScanAveragingTime()); }, Text("3")},
    };
    ExpectFamilies(families);
}

TEST_F(Accessors, WhatIsInTheTreeIsReadByTheCommands) {
    MCSCommands c(&basePath);
    ExpectFamilies({{"ShallBeConnected", c.GetShallBeConnected_ValuePath(), c.GetShallBeConnectedValue(), InTree<Value<bool>>("ShallBeConnected", false), [&] { return AsText(c.GetShallBeConnectedValue()->GetValue()); }, Text("false")}});
}

TEST_F(Accessors, WhatIsInTheTreeIsReadByTheStatus) {
    MCSStatus s(basePath);
    const std::vector<Family> families = {
        {"BootState", s.GetBootState_ValuePath(), s.GetBootStateValue(), KeyInTree("BootState", 16), [&] { return AsText(int(s.GetBootState())); }, Text("16")},
        {"OperationMode", s.GetOperationMode_ValuePath(), s.GetOperationModeValue(), KeyInTree("OperationMode", 7), [&] { return AsText(int(s.GetOperationMode())); }, Text("7")},
        {"FreeFreqChannels", s.GetFreeFreqChannels_ValuePath(), s.GetFreeFreqChannelsValue(), InTree<ValueNumeric<int>>("FreeFreqChannels", 21), [&] { return AsText(s.GetFreeFreqChannels()); }, Text("21")},
        {"UsedFreqChannels", s.GetUsedFreqChannels_ValuePath(), s.GetUsedFreqChannelsValue(), InTree<ValueNumeric<int>>("UsedFreqChannels", 22), [&] { return AsText(s.GetUsedFreqChannels()); }, Text("22")},
        {"McsMasterJobControlled", s.GetMcsMasterJobControlled_ValuePath(), s.GetMcsMasterJobControlledValue(), InTree<Value<bool>>("McsMasterJobControlled", true), [&] { return AsText(s.IsMcsMasterJobControlled()); }, Text("true")},
        {"SweepTime", s.GetSweepTime_ValuePath(), s.GetSweepTimeValue(), InTree<ValueNumeric<int>>("SweepTime", 23), [&] { return AsText(s.GetSweepTime()); }, Text("23")},
        {"Online", s.GetOnline_ValuePath(), s.GetOnlineValue(), InTree<Value<bool>>("Online", true), [&] { return AsText(s.IsOnline()); }, Text("true")},
        {"ConnectionState", s.GetConnectionState_ValuePath(), s.GetConnectionStateValue(), InTree<Value<QString>>("ConnectionState", Text("state")), [&] { return AsText(s.GetConnectionState()); }, Text("state")},
        {"StaticMpxORVs", s.GetStaticMpxORVs_ValuePath(), s.GetStaticMpxORVsValue(), InTree<ValueNumeric<int>>("StaticMpxORVs", 24), [&] { return AsText(s.GetStaticMpxORVs()); }, Text("24")},
        {"DynamicMpxORVs", s.GetDynamicMpxORVs_ValuePath(), s.GetDynamicMpxORVsValue(), InTree<ValueNumeric<int>>("DynamicMpxORVs", 25), [&] { return AsText(s.GetDynamicMpxORVs()); }, Text("25")},
        {"LogMessage", s.GetLogMessage_ValuePath(), s.GetLogMessageValue(), InTree<Value<QString>>("LogMessage", Text("message")), [&] { return AsText(s.GetLogMessage()); }, Text("message")},
    };
    ExpectFamilies(families);
    EXPECT_EQ(s.GetBootStateAsString(), Text("Ready"));
    EXPECT_EQ(s.GetOperationModeAsString(), Text("Memory Scan"));
}

TEST_F(Accessors, WhatIsInTheTreeIsReadByTheStatusOfAMpxORV) {
    MCSMpxORVStatus s(basePath);
    s.GetConnectedClientsValue()->AddItem(Text("West"), 0.0, 31);
    const std::vector<Family> families = {
        {"OperationType", s.GetOperationType_ValuePath(), s.GetOperationTypeValue(), InTree<Value<QString>>("OperationType", Text("type")), [&] { return AsText(s.GetOperationType()); }, Text("type")},
        {"ConnectedClients", s.GetConnectedClients_ValuePath(), s.GetConnectedClientsValue(), KeyInTree("ConnectedClients", 31), [&] { return AsText(s.GetConnectedClientsValue()->GetCurrentKey()); }, Text("31")},
        {"OperationMode", s.GetOperationMode_ValuePath(), s.GetOperationModeValue(), KeyInTree("OperationMode", 7), [&] { return AsText(int(s.GetOperationMode())); }, Text("7")},
        {"IsMaster", s.GetIsMaster_ValuePath(), s.GetIsMasterValue(), InTree<Value<bool>>("IsMaster", true), [&] { return AsText(s.IsMaster()); }, Text("true")},
        {"IsWatchingMaster", s.GetIsWatchingMaster_ValuePath(), s.GetIsWatchingMasterValue(), InTree<Value<bool>>("IsWatchingMaster", true), [&] { return AsText(s.IsWatchingMaster()); }, Text("true")},
        {"Comment", s.GetComment_ValuePath(), s.GetCommentValue(), InTree<Value<QString>>("Comment", Text("comment")), [&] { return AsText(s.GetComment()); }, Text("comment")},
    };
    ExpectFamilies(families);
    EXPECT_EQ(s.GetOperationModeAsString(), Text("Memory Scan"));
}

TEST_F(Accessors, WhatTheStatusOfAMpxORVSetsIsInTheTree) {
    MCSMpxORVStatus s(basePath);
    ExpectFamilies({
        {"OperationType", s.GetOperationType_ValuePath(), s.GetOperationTypeValue(), [&] { s.SetOperationType(Text("type")); }, OfTree("OperationType"), Text("type")},
        {"ConnectedClients", s.GetConnectedClients_ValuePath(), s.GetConnectedClientsValue(), [&] { s.AddConnectedClient(31, Text("West")); }, OfTree("ConnectedClients"), Text("31")},
        {"Comment", s.GetComment_ValuePath(), s.GetCommentValue(), [&] { s.SetComment(Text("comment")); }, OfTree("Comment"), Text("comment")},
    });
}
// clang-format on

}  // namespace
