// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/devicechoice.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>

namespace {

TEST(DeviceChoice, IsTheSimulatedOneUnlessGiven) {
    EXPECT_EQ(DeviceChoice().kind, DeviceChoice::EKind::Simulated);
    DeviceChoice choice;
    EXPECT_EQ(choice.Parse(QStringLiteral("simulated")), QString());
    EXPECT_EQ(choice.kind, DeviceChoice::EKind::Simulated);
}

struct Right {
    const char* name;
    const char* text;
    int model;
    const char* ports;  ///< separated by blanks
    const char* mode;
    int width;
    int speed;
};

class RightReceivers : public testing::TestWithParam<Right> {};

TEST_P(RightReceivers, AreTaken) {
    const Right& row = GetParam();
    DeviceChoice choice;
    ASSERT_EQ(choice.Parse(QLatin1String(row.text)), QString());
    EXPECT_EQ(choice.kind, DeviceChoice::EKind::Hamlib);
    EXPECT_EQ(choice.hamlib.model, row.model);
    EXPECT_EQ(choice.hamlib.ports.join(QLatin1Char(' ')), QLatin1String(row.ports));
    EXPECT_EQ(choice.hamlib.mode, QLatin1String(row.mode));
    EXPECT_EQ(choice.hamlib.width, row.width);
    EXPECT_EQ(choice.hamlib.speed, row.speed);
}

INSTANTIATE_TEST_SUITE_P(
    DeviceChoice, RightReceivers,
    testing::Values(Right{"OneWithoutAPort", "hamlib:1", 1, "", "AM", 0, 0},
                    Right{"OneOnTheNetwork", "hamlib:2,rig.example.org:4532", 2, "rig.example.org:4532", "AM",
                          0, 0},
                    Right{"AnIPv6Address", "hamlib:2,[::1]:4532", 2, "[::1]:4532", "AM", 0, 0},
                    Right{"TwoSerialPorts", "hamlib:3073,/dev/ttyUSB0,/dev/ttyUSB1", 3073,
                          "/dev/ttyUSB0 /dev/ttyUSB1", "AM", 0, 0},
                    Right{"AllSettings", "hamlib:3073,/dev/ttyS0,mode=fm,width=12500,speed=19200", 3073,
                          "/dev/ttyS0", "FM", 12500, 19200},
                    Right{"BlanksAround", "hamlib: 2 , a:1 , b:2 , mode=USB", 2, "a:1 b:2", "USB", 0, 0}),
    [](const auto& row) { return row.param.name; });

TEST(DeviceChoice, TakesAPluginWithItsOptions) {
    DeviceChoice choice;
    ASSERT_EQ(choice.Parse(QStringLiteral("plugin:lib/my device.so,2,fast:yes")), QString());
    EXPECT_EQ(choice.kind, DeviceChoice::EKind::Plugin);
    EXPECT_EQ(choice.pluginFile, QStringLiteral("lib/my device.so"));
    EXPECT_EQ(choice.pluginOptions, QStringLiteral("2,fast:yes"));
    ASSERT_EQ(choice.Parse(QStringLiteral("plugin:C:\\device.dll")), QString());
    EXPECT_EQ(choice.pluginFile, QStringLiteral("C:\\device.dll"));
    EXPECT_EQ(choice.pluginOptions, QString());
}

TEST(DeviceChoice, OfAServiceNamesAPluginByItsWholePath) {
    const QString whole = QDir::toNativeSeparators(QDir::current().absoluteFilePath(QStringLiteral("my.so")));
    EXPECT_EQ(DeviceChoice::WithWholePath(QStringLiteral("plugin:my.so,2,fast")),
              QStringLiteral("plugin:%1,2,fast").arg(whole));
    for (const QString& other : {QStringLiteral("simulated"), QStringLiteral("hamlib:2,a:1")})
        EXPECT_EQ(DeviceChoice::WithWholePath(other), other);
}

struct WrongDevice {
    const char* name;
    const char* text;
    const char* fault;
};

class WrongDevices : public testing::TestWithParam<WrongDevice> {};

TEST_P(WrongDevices, AreAnsweredInOneLine) {
    DeviceChoice choice;
    const QString fault = choice.Parse(QLatin1String(GetParam().text));
    EXPECT_TRUE(fault.contains(QLatin1String(GetParam().fault))) << fault.toStdString();
    EXPECT_FALSE(fault.contains(QLatin1Char('\n')));
}

INSTANTIATE_TEST_SUITE_P(
    DeviceChoice, WrongDevices,
    testing::Values(
        WrongDevice{"NoSuchDevice", "antenna", "there is no device 'antenna', only simulated"},
        WrongDevice{"Nothing", "", "there is no device ''"},
        WrongDevice{"SimulatedTakesNothing", "simulated:1", "there is no device 'simulated'"},
        WrongDevice{"NoFile", "plugin:", "which file?"},
        WrongDevice{"NoFileButOptions", "plugin:,2", "which file?"},
        WrongDevice{"NoModel", "hamlib:", "'' is no number of a model of Hamlib"},
        WrongDevice{"NoColon", "hamlib", "'' is no number of a model of Hamlib"},
        WrongDevice{"AModelByName", "hamlib:Dummy", "'Dummy' is no number of a model of Hamlib"},
        WrongDevice{"ModelZero", "hamlib:0", "'0' is no number of a model of Hamlib"},
        WrongDevice{"ANegativeModel", "hamlib:-2", "'-2' is no number"},
        WrongDevice{"AHugeModel", "hamlib:99999999999", "'99999999999' is no number"},
        WrongDevice{"AnEmptyPort", "hamlib:2,", "a port is empty"},
        WrongDevice{"AnEmptyPortBetween", "hamlib:2,a:1,,b:1", "a port is empty"},
        WrongDevice{"APortTwice", "hamlib:2,a:1,a:1", "the port 'a:1' is there twice"},
        WrongDevice{"AnotherSetting", "hamlib:2,a:1,parity=odd", "there is no setting 'parity'"},
        WrongDevice{"NoMode", "hamlib:2,a:1,mode=", "mode: '' is no mode"},
        WrongDevice{"ALongMode", "hamlib:2,a:1,mode=AAAAAAAAAAAAAAAAAAAA", "is no mode"},
        WrongDevice{"NoWidth", "hamlib:2,a:1,width=wide", "width: 'wide' is no number from 1 to 10000000"},
        WrongDevice{"NoSpeed", "hamlib:2,a:1,speed=9", "speed: '9' is no number from 75 to 4000000"}),
    [](const auto& row) { return row.param.name; });

TEST(DeviceChoice, HasNoMoreThanSixtyFourReceivers) {
    QString text = QStringLiteral("hamlib:2");
    for (int i = 1; i <= HamlibSettings::MaxReceivers; ++i)
        text += QStringLiteral(",rig%1:4532").arg(i);
    DeviceChoice choice;
    EXPECT_EQ(choice.Parse(text), QString());
    EXPECT_EQ(choice.Parse(text + QStringLiteral(",more:4532")),
              QStringLiteral("there are more than 64 receivers"));
    EXPECT_TRUE(choice.Parse(QStringLiteral("hamlib:2,") + QString(201, QLatin1Char('x')))
                    .contains(QStringLiteral("longer than 200")));
}

}  // namespace
