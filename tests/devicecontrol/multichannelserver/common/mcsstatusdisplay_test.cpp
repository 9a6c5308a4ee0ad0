// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>

#include <gtest/gtest.h>

namespace {

using displaytest::Cell;
using displaytest::Child;
using displaytest::TextOf;
using treeaccess::Text;

const QString path = Text("/MultiChannelServer/Status");
const char* const plainLabels[] = {"onlineDisp", "sweepTimeDisp", "freqChannelDisp", "jobTypeDisp",
                                   "nummberOfORVsDisp"};
const char* const valueLabels[] = {"connectionStateDisp", "bootStateDisp", "operationModeDisp"};

struct Row {
    int row;
    const char* caption;
    const char* objectName;
    const char* className;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.objectName;
}

const Row rows[] = {{0, "DF Device:", "connectionStateDisp", "VCLabel"},
                    {1, "MultiChannel Server:", "onlineDisp", "QLabel"},
                    {2, "Boot State:", "bootStateDisp", "VCLabel"},
                    {3, "Operation Mode:", "operationModeDisp", "VCLabel"},
                    {4, "Sweep Time:", "sweepTimeDisp", "QLabel"},
                    {5, "Frequency Channels for FFM:", "freqChannelDisp", "QLabel"},
                    {6, "Current Job Type:", "jobTypeDisp", "QLabel"},
                    {7, "Multiplexed DFs:", "nummberOfORVsDisp", "QLabel"}};

class StatusDisplayRow : public testing::TestWithParam<Row> {
  protected:
    values::Tree m_tree;
    MCSStatusDisplay m_display;
};

TEST_P(StatusDisplayRow, HasItsCaptionAndLabel) {
    auto& label = Child<QLabel>(m_display, GetParam().objectName);
    EXPECT_STREQ(label.metaObject()->className(), GetParam().className);
    displaytest::ExpectRow(displaytest::GridOf(m_display), GetParam().row, GetParam().caption, label);
}

TEST_P(StatusDisplayRow, IsTwentyPixelsHighWhereTheDisplayFillsIt) {
    const auto& label = Child<QLabel>(m_display, GetParam().objectName);
    const bool isPlain = qstrcmp(GetParam().className, "QLabel") == 0;
    EXPECT_EQ(label.minimumHeight() == 20 && label.maximumHeight() == 20, isPlain);
}

TEST_P(StatusDisplayRow, IsTranslated) {
    const displaytest::MarkingTranslator translator("MCSStatusDisplay");
    const MCSStatusDisplay display;
    const QLabel& caption = displaytest::CaptionAt(displaytest::GridOf(display), GetParam().row);
    EXPECT_EQ(caption.text(), QLatin1Char('<') + Text(GetParam().caption) + QLatin1Char('>'));
}

TEST_P(StatusDisplayRow, IsReadOutAsWhatItIsAndWhatItShows) {
    const MCSStatus status(path);
    status.GetOnlineValue()->SetValue(true);
    status.GetConnectionStateValue()->SetValue(Text("x"));
    status.GetBootStateValue()->Select(BootReady);
    status.GetOperationModeValue()->Select(OperationScan);
    m_display.SetStatus_ValuePath(path);
    const QString shown = TextOf(m_display, GetParam().objectName);
    EXPECT_FALSE(shown.isEmpty());
    EXPECT_EQ(displaytest::SpokenName(Child<QLabel>(m_display, GetParam().objectName)),
              Text(GetParam().caption) + QLatin1Char(' ') + shown);
}

INSTANTIATE_TEST_SUITE_P(Table, StatusDisplayRow, testing::ValuesIn(rows), testing::PrintToStringParamName());

class StatusDisplay : public testing::Test {
  protected:
    QString Shown(const char* objectName) const { return TextOf(m_display, objectName); }
    void BringOnline(bool isOnline = true) {
        m_display.SetStatus_ValuePath(path);
        m_status.GetOnlineValue()->SetValue(isOnline);
    }

    values::Tree m_tree;
    MCSStatus m_status{path};
    MCSStatusDisplay m_display;
};

TEST_F(StatusDisplay, LaysOutItsRowsOnOneGrid) {
    const QGridLayout& grid = displaytest::GridOf(m_display);
    displaytest::ExpectMargins(grid, 0);
    EXPECT_EQ(grid.horizontalSpacing(), 3);
    EXPECT_EQ(grid.verticalSpacing(), 3);
    EXPECT_EQ(grid.alignment(), Qt::AlignTop);
    EXPECT_EQ(grid.count(), 16);
    EXPECT_EQ(grid.rowCount(), 8);
    EXPECT_EQ(grid.columnStretch(0), 0);
    EXPECT_EQ(grid.columnStretch(1), 0);
    EXPECT_EQ(grid.columnStretch(2), 100);
}

TEST_F(StatusDisplay, IsCalledAsGivenOrByItsClass) {
    EXPECT_EQ(m_display.objectName(), Text("MCSStatusDisplay"));
    EXPECT_EQ(MCSStatusDisplay(nullptr, "mine").objectName(), Text("mine"));
    EXPECT_EQ(MCSStatusDisplay(nullptr, "").objectName(), QString());
}

TEST_F(StatusDisplay, TakesItsParentAndWindowFlags) {
    QWidget parent;
    const MCSStatusDisplay child(&parent, nullptr, Qt::Tool);
    EXPECT_EQ(child.parentWidget(), &parent);
    EXPECT_EQ(child.windowType(), Qt::Tool);
}

TEST_F(StatusDisplay, IsAWidgetAndAnObserver) {
    EXPECT_STREQ(m_display.metaObject()->className(), "MCSStatusDisplay");
    EXPECT_EQ(m_display.qt_metacast("IObserver"), static_cast<void*>(static_cast<IObserver*>(&m_display)));
    EXPECT_EQ(m_display.metaObject()->methodCount(), QWidget::staticMetaObject.methodCount());
}

TEST_F(StatusDisplay, ANewOneShowsNothing) {
    for (const char* label : plainLabels)
        EXPECT_EQ(Shown(label), Text("- - -")) << label;
    for (const char* label : valueLabels)
        EXPECT_EQ(Shown(label), QString()) << label;
    EXPECT_FALSE(m_display.SetStatus_ValuePath(QString()));
}

TEST_F(StatusDisplay, FillsAtOnceWhenItIsBound) {
    m_status.GetOnlineValue()->SetValue(true);
    m_status.GetConnectionStateValue()->SetValue(Text("Connected to ORV-1"));
    m_status.GetBootStateValue()->Select(BootReady);
    m_status.GetOperationModeValue()->Select(OperationMemoryScan);
    m_status.GetSweepTimeValue()->SetValue(2500);
    m_status.GetUsedFreqChannelsValue()->SetValue(3);
    m_status.GetFreeFreqChannelsValue()->SetValue(5);
    m_status.GetStaticMpxORVsValue()->SetValue(1);
    m_status.GetDynamicMpxORVsValue()->SetValue(12);
    EXPECT_TRUE(m_display.SetStatus_ValuePath(path));
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
    EXPECT_EQ(Shown("connectionStateDisp"), Text("Connected to ORV-1"));
    EXPECT_EQ(Shown("bootStateDisp"), Text("Ready"));
    EXPECT_EQ(Shown("operationModeDisp"), Text("Memory Scan"));
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("2.50 ms"));
    EXPECT_EQ(Shown("freqChannelDisp"), Text("3 of 8 channels used"));
    EXPECT_EQ(Shown("jobTypeDisp"), Text("Generic Job"));
    EXPECT_EQ(Shown("nummberOfORVsDisp"), Text("1 static and 12 dynamic"));
}

TEST_F(StatusDisplay, OfAnOfflineServerShowsOnlyHowManyItServes) {
    m_status.GetBootStateValue()->Select(BootReady);
    m_status.GetOperationModeValue()->Select(OperationScan);
    m_status.GetSweepTimeValue()->SetValue(2500);
    m_status.GetStaticMpxORVsValue()->SetValue(2);
    BringOnline(false);
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
    EXPECT_EQ(Shown("freqChannelDisp"), Text("- - -"));
    EXPECT_EQ(Shown("jobTypeDisp"), Text("- - -"));
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("- - - "));
    EXPECT_EQ(Shown("nummberOfORVsDisp"), Text("2 static and 0 dynamic"));
    for (const char* label : {"bootStateDisp", "operationModeDisp"}) {
        EXPECT_EQ(Shown(label), Text("- - -")) << label;
        EXPECT_TRUE(Child<QLabel>(m_display, label).alignment() & Qt::AlignLeft) << label;
        EXPECT_FALSE(displaytest::IsVeiled(Child<QLabel>(m_display, label))) << label;
    }
}

TEST_F(StatusDisplay, FollowsTheServerOnlineAndOffline) {
    m_status.GetBootStateValue()->Select(BootLoading);
    BringOnline();
    EXPECT_EQ(Shown("bootStateDisp"), Text("Loading"));
    m_status.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
    EXPECT_EQ(Shown("bootStateDisp"), Text("- - -"));
    m_status.GetOnlineValue()->SetValue(true);
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
    EXPECT_EQ(Shown("bootStateDisp"), Text("Loading"));
}

TEST_F(StatusDisplay, TellsTheTypeOfTheJob) {
    BringOnline();
    m_status.GetMcsMasterJobControlledValue()->SetValue(true);
    EXPECT_EQ(Shown("jobTypeDisp"), Text("Master Job"));
    m_status.GetMcsMasterJobControlledValue()->SetValue(false);
    EXPECT_EQ(Shown("jobTypeDisp"), Text("Generic Job"));
}

TEST_F(StatusDisplay, AChangeOfTheModeReevaluatesTheSweepTimeAtOnce) {
    BringOnline();
    m_status.GetSweepTimeValue()->SetValue(10001);
    m_status.GetOperationModeValue()->Select(OperationScan);
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("11 ms"));
    m_status.GetOperationModeValue()->Select(OperationSearch);
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("- - - "));
}

TEST_F(StatusDisplay, HidesTheChannelsOfADeviceThatHasNone) {
    QWidget& label = Child<QLabel>(m_display, "freqChannelDisp");
    QWidget& caption = displaytest::CaptionAt(displaytest::GridOf(m_display), 5);
    for (const long type : {3L, 0L, 3L, 4L, -3L, 259L}) {
        m_display.SetDeviceType(type);
        EXPECT_EQ(label.isVisibleTo(&m_display), type != 3) << type;
        EXPECT_EQ(caption.isVisibleTo(&m_display), type != 3) << type;
    }
    m_display.SetDeviceType(3);
    EXPECT_TRUE(Child<QLabel>(m_display, "sweepTimeDisp").isVisibleTo(&m_display));
    EXPECT_TRUE(Child<QLabel>(m_display, "jobTypeDisp").isVisibleTo(&m_display));
}

struct TranslatedRow {
    const char* objectName;
    const char* shown;
};

TEST_F(StatusDisplay, TranslatesEveryTextButThePlaceholders) {
    const displaytest::MarkingTranslator translator("MCSStatusDisplay");
    const auto expect = [this](std::initializer_list<TranslatedRow> expected) {
        for (const TranslatedRow& row : expected)
            EXPECT_EQ(Shown(row.objectName), Text(row.shown)) << row.objectName;
    };
    BringOnline(false);
    expect({{"onlineDisp", "<Offline>"},
            {"freqChannelDisp", "- - -"},
            {"sweepTimeDisp", "- - - "},
            {"nummberOfORVsDisp", "<0 static and 0 dynamic>"}});
    m_status.GetOnlineValue()->SetValue(true);
    m_status.GetOperationModeValue()->Select(OperationScan);
    m_status.GetSweepTimeValue()->SetValue(1);
    expect({{"onlineDisp", "<Online>"},
            {"freqChannelDisp", "<0 of 0 channels used>"},
            {"jobTypeDisp", "<Generic Job>"},
            {"sweepTimeDisp", "<0.00 ms>"}});
    m_status.GetMcsMasterJobControlledValue()->SetValue(true);
    m_status.GetSweepTimeValue()->SetValue(10000);
    expect({{"jobTypeDisp", "<Master Job>"}, {"sweepTimeDisp", "<10 ms>"}});
    m_display.SetStatus_ValuePath(QString());
    expect({{"onlineDisp", "- - -"}, {"jobTypeDisp", "- - -"}, {"sweepTimeDisp", "- - -"}});
}

TEST(StatusDisplayWithoutATree, ShowsNothingAndWorksOnceThereIsOne) {
    MCSStatusDisplay display;
    EXPECT_FALSE(display.SetStatus_ValuePath(path));
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("- - -"));
    const values::Tree tree;
    const MCSStatus status(path);
    status.GetBootStateValue()->Select(BootReady);
    EXPECT_TRUE(display.SetStatus_ValuePath(path));
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("Offline"));
    // There was no place for the flag that would hide it.
    EXPECT_EQ(TextOf(display, "bootStateDisp"), Text("Ready"));
}

TEST_F(StatusDisplay, ShowsMarkupAsItIsWritten) {
    BringOnline();
    m_status.GetConnectionStateValue()->SetValue(Text("<b>ORV</b> <img src='x.png'>"));
    EXPECT_EQ(Shown("connectionStateDisp"), Text("<b>ORV</b> <img src='x.png'>"));
    EXPECT_EQ(Child<QLabel>(m_display, "connectionStateDisp").textFormat(), Qt::PlainText);
}

TEST_F(StatusDisplay, IsNotHeldOpenByAVeryLongText) {
    BringOnline();
    m_status.GetConnectionStateValue()->SetValue(QString(50000, QLatin1Char('x')));
    EXPECT_TRUE(Shown("connectionStateDisp").startsWith(Text("xxxx")));
    m_display.layout()->activate();
    EXPECT_LT(m_display.minimumSizeHint().width(), 800);
}

}  // namespace
