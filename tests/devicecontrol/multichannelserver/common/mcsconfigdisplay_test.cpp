// SPDX-License-Identifier: Apache-2.0
// What the configuration display consists of.
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>

#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vclineedit.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>

#include <QtWidgets/QGroupBox>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

namespace {

using displaytest::Cell;
using displaytest::Child;
using treeaccess::Text;
using Flags = MCSConfigDisplay::Flags;

constexpr Flags both = MCSConfigDisplay::BootConfigGroup | MCSConfigDisplay::JobConfigGroup;

class ConfigDisplay : public testing::Test {
  protected:
    QGroupBox& Group(const char* objectName) const { return Child<QGroupBox>(m_display, objectName); }
    bool IsShown(const char* objectName) const {
        return Child<QWidget>(m_display, objectName).isVisibleTo(&m_display);
    }

    values::Tree m_tree;
    MCSConfigDisplay m_display{both};
};

struct FieldRow {
    const char* group;
    int row;
    const char* caption;
    const char* objectName;
    const char* className;
    int alignment;
};

void PrintTo(const FieldRow& row, std::ostream* stream) {
    *stream << row.objectName;
}

const FieldRow fields[] = {{"Connection", 0, "DF Station Name:", "deviceNameDisp", "VCLineEdit", 0},
                           {"Connection", 1, "DF Address:", "deviceAdressDisp", "VCLineEdit", 0},
                           {"Job Settings", 0, "Number of Frequency Channels for FFM:",
                            "numberOfFreqChannelDisp", "VCNumericFloatSpin", Qt::AlignLeft},
                           {"Job Settings", 1, "Scan Averaging Time:", "defaultScanAveragingTime",
                            "VCComboBoxClassic", Qt::AlignLeft}};

class ConfigDisplayField : public ConfigDisplay, public testing::WithParamInterface<FieldRow> {};

TEST_P(ConfigDisplayField, HasItsCaptionAndWidget) {
    auto& field = Child<QWidget>(m_display, GetParam().objectName);
    const QGridLayout& grid = displaytest::GridOf(Group(GetParam().group));
    EXPECT_STREQ(field.metaObject()->className(), GetParam().className);
    displaytest::ExpectRow(grid, GetParam().row, GetParam().caption, field);
    EXPECT_EQ(grid.itemAt(grid.indexOf(&field))->alignment(), Qt::Alignment(GetParam().alignment));
}

TEST_P(ConfigDisplayField, IsTranslated) {
    const displaytest::MarkingTranslator translator("MCSConfigDisplay");
    const MCSConfigDisplay display(both);
    const QGridLayout& grid = displaytest::GridOf(Child<QGroupBox>(display, GetParam().group));
    EXPECT_EQ(displaytest::CaptionAt(grid, GetParam().row).text(),
              QLatin1Char('<') + Text(GetParam().caption) + QLatin1Char('>'));
}

TEST_P(ConfigDisplayField, IsReadOutByItsCaption) {
    EXPECT_EQ(displaytest::SpokenName(Child<QWidget>(m_display, GetParam().objectName)) + QLatin1Char(':'),
              Text(GetParam().caption));
}

INSTANTIATE_TEST_SUITE_P(Table, ConfigDisplayField, testing::ValuesIn(fields),
                         testing::PrintToStringParamName());

struct BoxRow {
    int row;
    const char* objectName;
    const char* text;
};

void PrintTo(const BoxRow& row, std::ostream* stream) {
    *stream << row.objectName;
}

class ConfigDisplayBox : public ConfigDisplay, public testing::WithParamInterface<BoxRow> {};

TEST_P(ConfigDisplayBox, SpansBothColumns) {
    auto& box = Child<VCCheckBox>(m_display, GetParam().objectName);
    EXPECT_EQ(box.text(), Text(GetParam().text));
    EXPECT_EQ(displaytest::SpokenName(box), Text(GetParam().text));
    EXPECT_EQ(displaytest::CellOf(displaytest::GridOf(Group("Connection")), box),
              (Cell{GetParam().row, 0, 1, 2}));
}

TEST_P(ConfigDisplayBox, IsTranslated) {
    const displaytest::MarkingTranslator translator("MCSConfigDisplay");
    const MCSConfigDisplay display(both);
    EXPECT_EQ(Child<VCCheckBox>(display, GetParam().objectName).text(),
              QLatin1Char('<') + Text(GetParam().text) + QLatin1Char('>'));
}

INSTANTIATE_TEST_SUITE_P(Table, ConfigDisplayBox,
                         testing::Values(BoxRow{2, "connectOnStartUpDisp", "Connect on startup"},
                                         BoxRow{3, "forceConnectDisp",
                                                "Force connection if DF device is already in use"}),
                         testing::PrintToStringParamName());

TEST_F(ConfigDisplay, StacksItsGroups) {
    const QLayout* const layout = m_display.layout();
    ASSERT_NE(qobject_cast<const QVBoxLayout*>(layout), nullptr);
    displaytest::ExpectMargins(*layout, 0);
    EXPECT_EQ(layout->spacing(), 5);
    ASSERT_EQ(layout->count(), 2);
    EXPECT_EQ(layout->itemAt(0)->widget(), &Group("Connection"));
    EXPECT_EQ(layout->itemAt(1)->widget(), &Group("Job Settings"));
}

TEST_F(ConfigDisplay, LaysOutEachGroupOnAGrid) {
    for (const char* name : {"Connection", "Job Settings"}) {
        SCOPED_TRACE(name);
        const QGridLayout& grid = displaytest::GridOf(Group(name));
        displaytest::ExpectMargins(grid, 11);
        EXPECT_EQ(grid.horizontalSpacing(), 6);
        EXPECT_EQ(grid.verticalSpacing(), 6);
        EXPECT_EQ(grid.alignment(), Qt::AlignTop);
        EXPECT_EQ(Group(name).title(), Text(name));
        EXPECT_EQ(Group(name).parentWidget(), &m_display);
    }
    EXPECT_EQ(displaytest::GridOf(Group("Connection")).count(), 6);
    EXPECT_EQ(displaytest::GridOf(Group("Job Settings")).count(), 4);
}

TEST_F(ConfigDisplay, TranslatesTheTitlesOfItsGroupsButNotTheirNames) {
    const displaytest::MarkingTranslator translator("MCSConfigDisplay");
    const MCSConfigDisplay display(both);
    EXPECT_EQ(Child<QGroupBox>(display, "Connection").title(), Text("<Connection>"));
    EXPECT_EQ(Child<QGroupBox>(display, "Job Settings").title(), Text("<Job Settings>"));
}

TEST_F(ConfigDisplay, IsCalledAsGivenOrByItsClass) {
    EXPECT_EQ(m_display.objectName(), Text("MCSConfigDisplay"));
    EXPECT_STREQ(m_display.metaObject()->className(), "MCSConfigDisplay");
    EXPECT_EQ(m_display.metaObject()->methodCount(), QWidget::staticMetaObject.methodCount());
    QWidget parent;
    const MCSConfigDisplay mine(both, &parent, "mine", Qt::Tool);
    EXPECT_EQ(mine.objectName(), Text("mine"));
    EXPECT_EQ(mine.parentWidget(), &parent);
    EXPECT_EQ(mine.windowType(), Qt::Tool);
}

TEST_F(ConfigDisplay, ShowsTheGroupsOfItsFlags) {
    for (int bits = 0; bits <= 3; ++bits) {
        const auto flags = static_cast<Flags>(bits);
        const MCSConfigDisplay made(flags);
        m_display.SetFlags(flags);
        for (const MCSConfigDisplay* display : {&made, const_cast<const MCSConfigDisplay*>(&m_display)}) {
            EXPECT_EQ(display->GetFlags(), flags);
            EXPECT_EQ(Child<QGroupBox>(*display, "Connection").isVisibleTo(display), (bits & 1) != 0) << bits;
            EXPECT_EQ(Child<QGroupBox>(*display, "Job Settings").isVisibleTo(display), (bits & 2) != 0)
                << bits;
        }
    }
}

TEST_F(ConfigDisplay, ShowsOnlyTheJobSettingsAndLaterBoth) {
    MCSConfigDisplay display(MCSConfigDisplay::JobConfigGroup);
    EXPECT_FALSE(Child<QGroupBox>(display, "Connection").isVisibleTo(&display));
    EXPECT_TRUE(Child<QGroupBox>(display, "Job Settings").isVisibleTo(&display));
    display.SetFlags(static_cast<Flags>(3));
    EXPECT_TRUE(Child<QGroupBox>(display, "Connection").isVisibleTo(&display));
    EXPECT_TRUE(Child<QGroupBox>(display, "Job Settings").isVisibleTo(&display));
}

TEST_F(ConfigDisplay, HidesTheNumberOfChannelsOfADeviceThatHasNone) {
    const QLabel& caption = displaytest::CaptionAt(displaytest::GridOf(Group("Job Settings")), 0);
    const QLabel& other = displaytest::CaptionAt(displaytest::GridOf(Group("Job Settings")), 1);
    for (const long type : {3L, 0L, 3L, 259L}) {
        m_display.SetDeviceType(type);
        EXPECT_EQ(IsShown("numberOfFreqChannelDisp"), type != 3) << type;
        EXPECT_EQ(caption.isVisibleTo(&m_display), type != 3) << type;
        EXPECT_TRUE(IsShown("defaultScanAveragingTime"));
        EXPECT_TRUE(other.isVisibleTo(&m_display));
    }
}

TEST_F(ConfigDisplay, DisablesAGroupWithAllItsFields) {
    const auto isEnabled = [this](const char* name) { return Child<QWidget>(m_display, name).isEnabled(); };
    m_display.EnableBootConfigGroup(false);
    for (const char* name :
         {"Connection", "deviceNameDisp", "deviceAdressDisp", "connectOnStartUpDisp", "forceConnectDisp"})
        EXPECT_FALSE(isEnabled(name)) << name;
    EXPECT_TRUE(isEnabled("numberOfFreqChannelDisp"));
    m_display.EnableBootConfigGroup(true);
    m_display.EnableJobConfigGroup(false);
    for (const char* name : {"Job Settings", "numberOfFreqChannelDisp", "defaultScanAveragingTime"})
        EXPECT_FALSE(isEnabled(name)) << name;
    EXPECT_TRUE(isEnabled("deviceNameDisp"));
    m_display.EnableJobConfigGroup(true);
    EXPECT_TRUE(isEnabled("numberOfFreqChannelDisp"));
}

}  // namespace
