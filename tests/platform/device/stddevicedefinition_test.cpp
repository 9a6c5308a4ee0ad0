// SPDX-License-Identifier: Apache-2.0
#include <platform/device/stddevicedefinition.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using values::ValueDescriptor;
using Item = std::pair<long, QString>;

std::vector<Item> ItemsOf(const ValueDescriptor& descriptor) {
    std::vector<Item> items;
    for (int i = 0; i < descriptor.CountSelItems(); ++i)
        items.emplace_back(descriptor.SelItems()[i].Key(), descriptor.SelItems()[i].String());
    return items;
}

// Read while static objects are being built, before main.
const std::vector<Item> itemsAtStart = ItemsOf(StdDeviceDefinition::g_vdOperationMode);
const int bootStatesAtStart = StdDeviceDefinition::g_vdBootState.CountSelItems();

TEST(StdDeviceDefinition, BootStates) {
    const std::vector<Item> expected = {{BootUnknown, QStringLiteral("Unknown")},
                                        {BootPowerOn, QStringLiteral("Power On")},
                                        {BootLoading, QStringLiteral("Loading")},
                                        {BootSelfTest, QStringLiteral("Self Test")},
                                        {BootCalibrating, QStringLiteral("Calibrating")},
                                        {BootReady, QStringLiteral("Ready")},
                                        {BootFailed, QStringLiteral("Failed")}};
    EXPECT_EQ(ItemsOf(StdDeviceDefinition::g_vdBooState), expected);
    EXPECT_EQ(expected[5].first, 16);
    EXPECT_EQ(expected[6].first, 32);
}

TEST(StdDeviceDefinition, BothSpellingsOfTheBootStateAreTheSameDescriptor) {
    EXPECT_EQ(&StdDeviceDefinition::g_vdBootState, &StdDeviceDefinition::g_vdBooState);
}

TEST(StdDeviceDefinition, OperationModes) {
    const std::vector<Item> expected = {
        {0, QStringLiteral("Idle")},          {1, QStringLiteral("FFM")},
        {2, QStringLiteral("Audio")},         {3, QStringLiteral("Search")},
        {4, QStringLiteral("Scan")},          {5, QStringLiteral("Calibration")},
        {6, QStringLiteral("Built-in Test")}, {7, QStringLiteral("Memory Scan")}};
    EXPECT_EQ(ItemsOf(StdDeviceDefinition::g_vdOperationMode), expected);
}

TEST(StdDeviceDefinition, ReportIntervalsHoldMilliseconds) {
    const ValueDescriptor& intervals = StdDeviceDefinition::g_vdReportInterval;
    const std::vector<Item> expected = {{50, QStringLiteral("50 ms")},   {100, QStringLiteral("100 ms")},
                                        {200, QStringLiteral("200 ms")}, {500, QStringLiteral("500 ms")},
                                        {1000, QStringLiteral("1 s")},   {2000, QStringLiteral("2 s")},
                                        {5000, QStringLiteral("5 s")},   {10000, QStringLiteral("10 s")}};
    EXPECT_EQ(ItemsOf(intervals), expected);
    for (int i = 0; i < intervals.CountSelItems(); ++i)
        EXPECT_EQ(intervals.SelItems()[i].Value(), static_cast<double>(intervals.SelItems()[i].Key()));
}

TEST(StdDeviceDefinition, DescriptorsCanBeUsedByStaticInitialisers) {
    EXPECT_EQ(itemsAtStart, ItemsOf(StdDeviceDefinition::g_vdOperationMode));
    EXPECT_EQ(bootStatesAtStart, 7);
}

}  // namespace
