// SPDX-License-Identifier: Apache-2.0
// Somebody sits in front of the configuration display, with mouse and keyboard.
#include <tests/devicecontrol/multichannelserver/common/configdisplaytest.h>

#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <gtest/gtest.h>

namespace {

using treeaccess::Text;
using ConfigDisplayOperator = ConfigDisplayOverTree;

TEST_F(ConfigDisplayOperator, WhatIsTypedIsSetOnEnter) {
    Config().SetDeviceName(Text("old"));
    m_display->SetConfig_ValuePath(path);
    Activate();
    QTest::mouseClick(&Name(), Qt::LeftButton);
    QTest::keyClick(&Name(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&Name(), Text("Ridge 7"));
    EXPECT_EQ(At("DeviceName"), Text("old"));
    QTest::keyClick(&Name(), Qt::Key_Return);
    EXPECT_EQ(At("DeviceName"), Text("Ridge 7"));
}

TEST_F(ConfigDisplayOperator, TheKeyboardGoesThroughItFromTopToBottom) {
    Config();
    m_display->SetConfig_ValuePath(path);
    Activate();
    Name().setFocus();
    for (QWidget* next :
         std::initializer_list<QWidget*>{&Address(), &OnStartup(), &Force(), &Channels(), &Time()}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next) << next->objectName().toStdString();
    }
}

TEST_F(ConfigDisplayOperator, EverythingCanBeSetByTheKeyboardAlone) {
    Config();
    m_display->SetConfig_ValuePath(path);
    Activate();
    const auto press = [](int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); };
    Address().setFocus();
    press(Qt::Key_End);
    QTest::keyClicks(&Address(), Text("2"));
    press(Qt::Key_Tab);
    EXPECT_EQ(At("DeviceAddress"), Text("localhost2"));
    press(Qt::Key_Space);
    EXPECT_EQ(At("ConnectOnStartup"), Text("false"));
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(At("ForceConnect"), Text("true"));
    press(Qt::Key_Tab);
    press(Qt::Key_Up);
    EXPECT_EQ(At("NumberOfFreqChannels"), Text("5"));
    press(Qt::Key_Tab);
    press(Qt::Key_Home);
    EXPECT_EQ(At("DefaultScanAveragingTimeIndex"), Text("50"));
    press(Qt::Key_Down);
    EXPECT_EQ(At("DefaultScanAveragingTimeIndex"), Text("100"));
}

TEST_F(ConfigDisplayOperator, AClickSwitchesABox) {
    Config();
    m_display->SetConfig_ValuePath(path);
    Activate();
    QTest::mouseClick(&OnStartup(), Qt::LeftButton, Qt::KeyboardModifiers(),
                      QPoint(5, OnStartup().height() / 2));
    EXPECT_EQ(At("ConnectOnStartup"), Text("false"));
    EXPECT_EQ(Shown().at(2), Text("o"));
}

TEST_F(ConfigDisplayOperator, AClickOnABoxIsToldOnce) {
    Config();
    m_display->SetConfig_ValuePath(path);
    Activate();
    // Until the next change is drawn at once: the box could take that for what the operator did.
    QTimer rest;
    const QSignalSpy rested(&rest, &QTimer::timeout);
    rest.start(2 * RefreshScheduler::Interval);
    ASSERT_TRUE(WaitUntil([&rested] { return rested.count() > 1; }));
    const QSignalSpy clicked(&Force(), &QCheckBox::clicked);
    const QSignalSpy toggled(&Force(), &QCheckBox::toggled);
    const QSignalSpy changed(&Force(), &QCheckBox::stateChanged);
    QTest::mouseClick(&Force(), Qt::LeftButton, Qt::KeyboardModifiers(), QPoint(5, Force().height() / 2));
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(toggled.count(), 1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ConfigDisplayOperator, AContentThatComesIsNotToldAsTheOperators) {
    MCSConfigData& config = Config();
    m_display->SetConfig_ValuePath(path);
    const QSignalSpy toggled(&Force(), &QCheckBox::toggled);
    const QSignalSpy changed(&Force(), &QCheckBox::stateChanged);
    config.SetForceConnect(true);
    EXPECT_EQ(Shown().at(3), Text("x"));
    EXPECT_EQ(toggled.count(), 0);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(ConfigDisplayOperator, MoreChannelsThanThereCanBeAreNotSet) {
    Config();
    m_display->SetConfig_ValuePath(path);
    Activate();
    Channels().setFocus();
    QTest::keyClick(&Channels(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&Channels(), Text("51"));
    QTest::keyClick(&Channels(), Qt::Key_Return);
    EXPECT_LE(At("NumberOfFreqChannels").toInt(), 50);
    EXPECT_EQ(Shown().at(4), At("NumberOfFreqChannels"));
}

TEST_F(ConfigDisplayOperator, NothingCanBeSetWhileItIsStale) {
    Config();
    m_display->SetConfig_ValuePath(path);
    const QString machine = At("DeviceName");
    Activate();
    displaytest::SetStates(path, values::Stale);
    RefreshScheduler::Instance().Flush();
    QTest::mouseClick(&Force(), Qt::LeftButton, Qt::KeyboardModifiers(), QPoint(5, Force().height() / 2));
    Name().setFocus();
    QTest::keyClicks(&Name(), Text("x"));
    QTest::keyClick(&Name(), Qt::Key_Return);
    Channels().setFocus();
    QTest::keyClick(&Channels(), Qt::Key_Up);
    EXPECT_EQ(At("ForceConnect"), Text("false"));
    EXPECT_EQ(At("DeviceName"), machine);
    EXPECT_EQ(At("NumberOfFreqChannels"), Text("4"));
}

}  // namespace
