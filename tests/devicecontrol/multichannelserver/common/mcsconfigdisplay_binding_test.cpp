// SPDX-License-Identifier: Apache-2.0
// The configuration display over the tree, and what comes, goes and comes back there.
#include <tests/devicecontrol/multichannelserver/common/configdisplaytest.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace {

using displaytest::Attachments;
using displaytest::Attended;
using displaytest::Child;
using displaytest::IsVeiled;
using treeaccess::Text;
using Flag = values::Value<bool>;
using Number = values::ValueNumeric<int>;
using String = values::Value<QString>;
using Texts = std::vector<QString>;

const QString otherPath = Text("/Other/Config");
const char* const names[] = {"deviceAdressDisp", "deviceNameDisp",          "connectOnStartUpDisp",
                             "forceConnectDisp", "numberOfFreqChannelDisp", "defaultScanAveragingTime"};

using ConfigDisplayBinding = ConfigDisplayOverTree;

const Texts blank{QString(), QString(), Text("o"), Text("o"), QString(), QString()};

TEST_F(ConfigDisplayBinding, ANewDisplayIsEmptyAndUnbound) {
    EXPECT_EQ(Shown(), blank);
    for (const char* name : names)
        EXPECT_TRUE(IsVeiled(Child<QWidget>(*m_display, name))) << name;
    EXPECT_FALSE(m_display->SetConfig_ValuePath(QString()));
}

TEST_F(ConfigDisplayBinding, ShowsTheConfiguration) {
    MCSConfigData& config = Config();
    config.SetDeviceName(Text("Hill_1"));
    config.SetDeviceAddress(Text("10.1.2.3"));
    config.SetConnectOnStartup(false);
    config.SetForceConnect(true);
    config.SetNumberOfFreqChannels(7);
    config.SetDefaultScanAveragingTime(5);
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_EQ(Shown(),
              (Texts{Text("Hill_1"), Text("10.1.2.3"), Text("o"), Text("x"), Text("7"), Text("2 s")}));
    config.SetDeviceName(Text("Hill_2"));
    config.SetNumberOfFreqChannels(8);
    EXPECT_EQ(Shown(),
              (Texts{Text("Hill_2"), Text("10.1.2.3"), Text("o"), Text("x"), Text("8"), Text("2 s")}));
}

TEST_F(ConfigDisplayBinding, MakesTheValuesOfANodeThatHasNoneButResetsNone) {
    treeaccess::PutValue<String>(path, "DeviceAddress")->SetValue(Text("kept"));
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_EQ(Shown().at(1), Text("kept"));
    EXPECT_EQ(m_tree.FindNode(path)->CountChildren(), 9);
}

void PutAttended(const QString& path) {
    treeaccess::PutValue<Attended<String>>(path, "DeviceAddress");
    treeaccess::PutValue<Attended<String>>(path, "DeviceName");
    treeaccess::PutValue<Attended<Flag>>(path, "ConnectOnStartup");
    treeaccess::PutValue<Attended<Flag>>(path, "ForceConnect");
    treeaccess::PutValue<Attended<Number>>(path, "NumberOfFreqChannels");
    treeaccess::PutValue<Attended<values::ValueSelection>>(path, "DefaultScanAveragingTimeIndex");
}

Texts Each(const char* what) {
    Texts texts;
    for (const char* key : {"DeviceAddress", "DeviceName", "ConnectOnStartup", "ForceConnect",
                            "NumberOfFreqChannels", "DefaultScanAveragingTimeIndex"})
        texts.push_back(Text(what) + QLatin1Char(' ') + Text(key));
    return texts;
}

TEST_F(ConfigDisplayBinding, HandsTheFieldsTheirPathsInOrder) {
    PutAttended(path);
    m_display->SetConfig_ValuePath(path);
    const IObserver* const config = Attachments().at(0).observer;
    const auto isField = [config](IObserver* observer) { return observer != config; };
    EXPECT_EQ(displaytest::AttachmentsOf(isField), Each("attach"));
    EXPECT_NE(Attachments().at(5).observer, Attachments().at(6).observer);
    Attachments().clear();
    m_display->SetConfig_ValuePath(QString());
    EXPECT_EQ(displaytest::AttachmentsOf(isField), Each("detach"));
    EXPECT_EQ(Attachments().at(0).observer, config);  // the configuration object goes first
}

TEST_F(ConfigDisplayBinding, AMissingPathAfterAGoodOneEmptiesEveryField) {
    Config().SetForceConnect(true);
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_NE(Shown(), blank);
    EXPECT_FALSE(m_display->SetConfig_ValuePath(Text("/Nowhere")));
    EXPECT_EQ(Shown(), blank);
    EXPECT_EQ(m_tree.FindItem(Text("/Nowhere")), nullptr);
    m_configs.clear();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), 0);
}

TEST_F(ConfigDisplayBinding, FlagsAndEnablingSurviveRebinding) {
    Config();
    m_display->SetFlags(MCSConfigDisplay::JobConfigGroup);
    m_display->EnableJobConfigGroup(false);
    m_display->SetConfig_ValuePath(path);
    m_display->SetConfig_ValuePath(QString());
    EXPECT_EQ(m_display->GetFlags(), MCSConfigDisplay::JobConfigGroup);
    EXPECT_FALSE(Child<QWidget>(*m_display, "Connection").isVisibleTo(m_display.get()));
    EXPECT_FALSE(Channels().isEnabled());
}

TEST_F(ConfigDisplayBinding, IsBoundAnewToTheSameAndToAnotherPath) {
    Config().SetDeviceName(Text("one"));
    Config(otherPath).SetDeviceName(Text("two"));
    m_display->SetConfig_ValuePath(path);
    const int before = treeaccess::CountObservers(m_tree.FindNode(path));
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), before);
    EXPECT_EQ(Shown().at(0), Text("one"));
    EXPECT_TRUE(m_display->SetConfig_ValuePath(otherPath));
    EXPECT_EQ(Shown().at(0), Text("two"));
    m_configs.clear();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), 0);
}

TEST_F(ConfigDisplayBinding, IsBoundBeforeItsSubtreeExistsAndAgainAfterwards) {
    EXPECT_FALSE(m_display->SetConfig_ValuePath(path));
    Config().SetDeviceName(Text("late"));
    EXPECT_EQ(Shown(), blank);
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_EQ(Shown().at(0), Text("late"));
}

TEST_F(ConfigDisplayBinding, IsDestroyedWhileBound) {
    Config();
    m_display->SetConfig_ValuePath(path);
    m_configs.clear();
    m_display.reset();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), 0);
}

TEST_F(ConfigDisplayBinding, GoesOnWhenItsSubtreeGoesAndComesBack) {
    Config();
    m_display->SetConfig_ValuePath(path);
    m_configs.clear();
    treeaccess::DeleteAt(path);
    EXPECT_EQ(Shown(), blank);
    MCSConfigData& again = Config();
    again.SetDeviceName(Text("back"));
    again.SetNumberOfFreqChannels(9);
    again.SetDefaultScanAveragingTime(0);
    const Texts back{Text("back"), Text("localhost"), Text("x"), Text("o"), Text("9"), Text("50 ms")};
    EXPECT_EQ(Shown(), back);
    EXPECT_TRUE(m_display->SetConfig_ValuePath(path));
    EXPECT_EQ(Shown(), back);
}

TEST_F(ConfigDisplayBinding, GoesOnWhenAValueComesBackWithAnotherType) {
    Config();
    m_display->SetConfig_ValuePath(path);
    for (const char* key : {"DeviceAddress", "DeviceName", "ConnectOnStartup", "ForceConnect",
                            "NumberOfFreqChannels", "DefaultScanAveragingTimeIndex"}) {
        treeaccess::DeleteAt(path + QLatin1Char('/') + Text(key));
        treeaccess::PutValue<values::ValueList<double>>(path, key);
    }
    EXPECT_EQ(Shown(), blank);
    for (const char* name : names)
        EXPECT_TRUE(IsVeiled(Child<QWidget>(*m_display, name))) << name;
}

TEST_F(ConfigDisplayBinding, VeilsWhatIsStale) {
    Config();
    m_display->SetConfig_ValuePath(path);
    const Texts live = Shown();
    displaytest::SetStates(path, values::Stale);
    EXPECT_EQ(Shown(), live);
    for (const char* name : names)
        EXPECT_TRUE(IsVeiled(Child<QWidget>(*m_display, name))) << name;
    displaytest::SetStates(path, values::Valid);
    RefreshScheduler::Instance().Flush();
    for (const char* name : names)
        EXPECT_FALSE(IsVeiled(Child<QWidget>(*m_display, name))) << name;
}

TEST_F(ConfigDisplayBinding, ShowsMarkupAndVeryLongTextsAsTheyAre) {
    MCSConfigData& config = Config();
    config.SetDeviceName(Text("<h1>Hill</h1><img src='file:///x'>"));
    config.SetDeviceAddress(QString(50000, QLatin1Char('x')));
    m_display->SetConfig_ValuePath(path);
    EXPECT_EQ(Shown().at(0), Text("<h1>Hill</h1><img src='file:///x'>"));
    EXPECT_EQ(Shown().at(1).size(), 50000);
    EXPECT_LT(m_display->minimumSizeHint().width(), 800);
}

TEST_F(ConfigDisplayBinding, ShowsNumbersBeyondWhatItWouldMakeItself) {
    using Limits = std::numeric_limits<int>;
    auto* const number = treeaccess::PutValue<Number>(path, "NumberOfFreqChannels");
    number->SetValue(Limits::max());
    m_display->SetConfig_ValuePath(path);
    EXPECT_EQ(Channels().value(), Limits::max());
    number->SetValue(Limits::min());
    RefreshScheduler::Instance().Flush();
    EXPECT_EQ(Channels().value(), Limits::min());
    EXPECT_EQ(number->GetValue(), Limits::min());
}

}  // namespace
