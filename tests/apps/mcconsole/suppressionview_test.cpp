// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionstatus.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/suppression/suppressionfollower.h>
#include <apps/pages/suppressionview.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qwt_plot.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>

#include <memory>
#include <optional>

namespace {

using testing::HasSubstr;

constexpr double Airband = 121500000;  // Hz
constexpr unsigned long AllSilent = 0xfff;
constexpr unsigned long ThirdKeyed = 0xfff & ~0x8UL;

/// The page before the tree of a server whose modules the test plays.
class ASuppressionView : public testing::Test {
  protected:
    ASuppressionView() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        Blanking::Instance();
        m_plant.emplace();
        m_module = std::make_unique<DataModule>(nullptr, 0, QStringLiteral("ADAM-6051"),
                                                QStringLiteral("10.0.0.1"), PollInterval(100));
        m_module->SetFrequency(3, Airband);
        m_plant->Add(m_module->GetPlantModule());
        m_plant->SetName(QStringLiteral("ADAM-6051-0"), QStringLiteral("Tower mast"));
        m_plant->SetLabel(QStringLiteral("ADAM-6051-0"), 3, QStringLiteral("Tower 1"));
        m_status.emplace(&*m_plant, m_clock);
        m_view.resize(900, 500);
        m_view.show();
    }
    ~ASuppressionView() override {
        m_view.Bind(QString(), NoSegments);
        m_status.reset();
        m_module.reset();
        m_plant.reset();
        Blanking::Instance()->FreeInstance();
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Bind() { m_view.Bind(mcskeys::Root, AllSegments); }
    void Read(unsigned long inputs) {
        m_module->SlotOnInputDiscretesChanged(12, inputs);
        m_module->SlotOnConnectionEstablished();
        m_clock.Turn();
    }
    void Lose() {
        m_module->SlotOnConnectionError(111, QStringLiteral("Connection refused"));
        m_clock.Turn();
    }
    /// The cells of the first row of a table, with bars between them.
    std::string Row(const char* table, int first, int last) const {
        const QAbstractItemModel& model = *m_view.findChild<QTableView*>(QLatin1String(table))->model();
        QStringList cells;
        for (int column = first; column <= last && model.rowCount() > 0; ++column)
            cells << model.index(0, column).data().toString();
        return cells.join(QLatin1Char('|')).toStdString();
    }
    std::string Module() const { return Row("SuppressionModules", 0, 1); }
    std::string Input() const { return Row("SuppressionInputs", 0, 3); }
    int CountRows(const char* table) const {
        return m_view.findChild<QTableView*>(QLatin1String(table))->model()->rowCount();
    }
    std::string Summary() const {
        return m_view.findChild<QLabel*>(QStringLiteral("SuppressionSummary"))->text().toStdString();
    }
    template <class What>
    bool Becomes(What what, const std::string& text) {
        const bool is = WaitUntil([&] { return what() == text; });
        EXPECT_EQ(what(), text);
        return is;
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    ManualClock m_clock;
    std::unique_ptr<DataModule> m_module;
    std::optional<SuppressionPlant> m_plant;
    std::optional<SuppressionStatus> m_status;
    SuppressionView m_view;
};

TEST_F(ASuppressionView, ShowsAnotherRangeOfTimeHoweverThatIsChosen) {
    Bind();
    auto& plot = *m_view.findChild<QwtPlot*>();
    auto& tabs = *m_view.findChild<QTabWidget*>();
    for (int i = 0; i < tabs.count(); ++i)
        if (tabs.widget(i)->isAncestorOf(&plot)) tabs.setCurrentIndex(i);
    const double minutes = plot.axisInterval(QwtPlot::xBottom).width();
    spoken::Toggle(*m_view.findChild<QRadioButton*>(QStringLiteral("Range60")));
    EXPECT_NEAR(plot.axisInterval(QwtPlot::xBottom).width() / minutes, 6, 0.5);
    QTest::keyClick(m_view.findChild<QRadioButton*>(QStringLiteral("Range1440")), Qt::Key_Space);
    EXPECT_NEAR(plot.axisInterval(QwtPlot::xBottom).width() / minutes, 144, 2);
}

TEST_F(ASuppressionView, SaysThatAServerTellsNothing) {
    EXPECT_EQ(Summary(), "The server tells nothing of its suppression.");
    Bind();
    EXPECT_NE(Summary(), "The server tells nothing of its suppression.");
    m_status.reset();
    EXPECT_TRUE(Becomes([this] { return Summary(); }, "The server tells nothing of its suppression."));
}

TEST_F(ASuppressionView, ShowsWhatIsKeyed) {
    Bind();
    Read(ThirdKeyed);
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u25cf keyed|121.500"));
    EXPECT_EQ(Module(), "Tower mast|Connected");
    EXPECT_EQ(Summary(), "The input module is in use.\nBlanked now: 121.500 MHz.");
    Read(AllSilent);
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u25cb silent|121.500"));
    EXPECT_EQ(Summary(), "The input module is in use.\nNothing is blanked now.");
}

TEST_F(ASuppressionView, ShowsALostModuleAndItsReturn) {
    Bind();
    Read(AllSilent);
    Lose();
    EXPECT_TRUE(Becomes([this] { return Module(); }, "Tower mast|Error"));
    EXPECT_EQ(Input(), "Tower mast|Tower 1|\u2715 not supervised|121.500");
    EXPECT_THAT(Row("SuppressionModules", 3, 3), "Connection refused (111)");
    EXPECT_THAT(Summary(), HasSubstr("The input module is not in use. Not supervised: 121.500 MHz."));
    Read(AllSilent);
    EXPECT_TRUE(Becomes([this] { return Module(); }, "Tower mast|Connected"));
    EXPECT_EQ(Input(), "Tower mast|Tower 1|\u25cb silent|121.500");
}

TEST_F(ASuppressionView, WritesNothingWhileNobodySeesIt) {
    Bind();
    Read(AllSilent);
    ASSERT_TRUE(Becomes([this] { return Module(); }, "Tower mast|Connected"));
    m_view.hide();
    const QSignalSpy told(m_view.findChild<SuppressionFollower*>(), &SuppressionFollower::Changed);
    Lose();
    ASSERT_TRUE(WaitUntil([&] { return !told.isEmpty(); }));
    EXPECT_EQ(Module(), "Tower mast|Connected");
    m_view.show();
    EXPECT_EQ(Module(), "Tower mast|Error");
    EXPECT_THAT(Summary(), HasSubstr("The input module is not in use."));
}

TEST_F(ASuppressionView, TellsTheTableOnlyOfWhatIsAnother) {
    Bind();
    Read(AllSilent);
    ASSERT_TRUE(Becomes([this] { return Module(); }, "Tower mast|Connected"));
    const QSignalSpy told(m_view.findChild<QTableView*>(QStringLiteral("SuppressionModules"))->model(),
                          &QAbstractItemModel::dataChanged);
    Read(ThirdKeyed);
    ASSERT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u25cf keyed|121.500"));
    EXPECT_EQ(told.count(), 0) << "the module is as it was";
}

TEST_F(ASuppressionView, CallsAnInputUnsupervisedAlsoWhereAnotherModuleHasItsFrequency) {
    DataModule other(nullptr, 1, QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.2"), PollInterval(100));
    other.SetFrequency(0, Airband);
    m_plant->Add(other.GetPlantModule());
    Bind();
    Lose();
    other.SlotOnInputDiscretesChanged(12, AllSilent);
    other.SlotOnConnectionEstablished();
    m_clock.Turn();
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u2715 not supervised|121.500"));
    m_view.Bind(QString(), NoSegments);
}

TEST_F(ASuppressionView, ShowsInputsWithoutAFrequencyIfAsked) {
    Bind();
    EXPECT_EQ(CountRows("SuppressionInputs"), 1);
    QTest::mouseClick(m_view.findChild<QCheckBox*>(QStringLiteral("AllInputs")), Qt::LeftButton, {},
                      QPoint(8, 8));
    EXPECT_EQ(CountRows("SuppressionInputs"), 12);
}

TEST_F(ASuppressionView, ShowsWhoWasBlankedLast) {
    Bind();
    m_status->NoteBlanked(QStringLiteral("ADAM-6051-0"), 3, QStringLiteral("mast-north"));
    EXPECT_TRUE(Becomes([this] { return Row("SuppressionInputs", 5, 5); }, "mast-north"));
}

TEST_F(ASuppressionView, FollowsModulesThatComeAndGo) {
    Bind();
    {
        DataModule other(nullptr, 1, QStringLiteral("Other"), QStringLiteral("10.0.0.2"), PollInterval(100));
        m_plant->Add(other.GetPlantModule());
        m_clock.Turn();
        EXPECT_TRUE(WaitUntil([this] { return CountRows("SuppressionModules") == 2; }));
    }
    m_clock.Turn();
    EXPECT_TRUE(WaitUntil([this] { return CountRows("SuppressionModules") == 1; }));
    Read(ThirdKeyed);
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u25cf keyed|121.500"));
}

TEST_F(ASuppressionView, SaysThatItIsNotLiveWhileTheServerIsLost) {
    Bind();
    Read(ThirdKeyed);
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|\u25cf keyed|121.500"));
    for (const char* const below : {"ModuleCount", "Modules/0/State", "Modules/0/Inputs/3/Keyed"})
        dynamic_cast<values::ValueBase*>(
            m_tree.FindItem(QStringLiteral("/MultiChannelServer/Status/Suppression/") + QLatin1String(below)))
            ->SetState(values::Stale);
    EXPECT_TRUE(Becomes([this] { return Input(); }, "Tower mast|Tower 1|? not live|121.500"));
    EXPECT_THAT(Summary(), HasSubstr("What was known last: The input module is in use."));
}

TEST_F(ASuppressionView, TellsWhoIgnoresTheSuppression) {
    auto* const switched = values::ProvideValue<values::Value<bool>>(
        QStringLiteral("/MultiChannelServer/DynamicMpxORVs/mast-north/Blanking"), true, true, nullptr);
    Bind();
    EXPECT_EQ(CountRows("SuppressionIgnoring"), 0);
    switched->SetValue(false);
    Bind();
    EXPECT_EQ(Row("SuppressionIgnoring", 0, 2), "mast-north||");  // a server that does not say by whom
    values::ProvideValue<values::Value<QString>>(
        QStringLiteral("/MultiChannelServer/DynamicMpxORVs/mast-north/Status/BlankingSwitchedBy"),
        QStringLiteral("mcconsole on tower1"), true, nullptr);
    Bind();
    EXPECT_EQ(Row("SuppressionIgnoring", 0, 1), "mast-north|mcconsole on tower1");
}

TEST_F(ASuppressionView, DoesNotSayThatNobodyIgnoresItWhereThatIsNotKnown) {
    const QTabWidget& tabs = *m_view.findChild<QTabWidget*>(QStringLiteral("SuppressionTabs"));
    Bind();
    EXPECT_EQ(tabs.tabText(2), QStringLiteral("Nobody ignores it"));
    m_view.Bind(mcskeys::Root, StatusSegment);
    EXPECT_EQ(tabs.tabText(2), QStringLiteral("Who ignores it is not known"));
    values::ProvideValue<values::Value<bool>>(
        QStringLiteral("/MultiChannelServer/StaticMpxORVs/Tower/Blanking"), false, true, nullptr);
    m_view.Bind(mcskeys::Root, static_cast<EMCSControlTreeSegments>(StatusSegment | StaticMpxORVsSegment));
    EXPECT_EQ(tabs.tabText(2), QStringLiteral("Ignored by 1 or more"));
}

TEST_F(ASuppressionView, ReconnectsLostModules) {
    Bind();
    auto* const button = m_view.findChild<QPushButton*>(QStringLiteral("SuppressionReconnect"));
    EXPECT_FALSE(button->isVisible());
    auto* const command = values::ProvideValue<values::Value<bool>>(
        QStringLiteral("/MultiChannelServer/Command/ReconnectModules"), false, true, nullptr);
    EXPECT_TRUE(WaitUntil([&] { return button->isVisible(); }));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(WaitUntil([&] { return command->GetValue(); }));
}

TEST_F(ASuppressionView, FitsASmallWindow) {
    Bind();
    Read(ThirdKeyed);
    EXPECT_LE(m_view.minimumSizeHint().height(), 400);
    EXPECT_LE(m_view.minimumSizeHint().width(), 1000);
}

}  // namespace
