// SPDX-License-Identifier: Apache-2.0
// What comes, goes and comes back under the display; and what it shows is live or veiled.
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using displaytest::Child;
using displaytest::IsVeiled;
using displaytest::TextOf;
using treeaccess::Text;

const QString path = Text("/MultiChannelServer/Status");
const QString otherPath = Text("/Other/Status");
const char* const labels[] = {"connectionStateDisp", "onlineDisp",      "bootStateDisp", "operationModeDisp",
                              "sweepTimeDisp",       "freqChannelDisp", "jobTypeDisp",   "nummberOfORVsDisp"};

class StatusDisplayFaults : public testing::Test {
  protected:
    StatusDisplayFaults() : m_display(std::make_unique<MCSStatusDisplay>()) {}

    void Show() {
        m_status = std::make_unique<MCSStatus>(path);
        m_status->GetOnlineValue()->SetValue(true);
        m_status->GetOperationModeValue()->Select(OperationScan);
        m_status->GetBootStateValue()->Select(BootReady);
        m_status->GetSweepTimeValue()->SetValue(10000);
        EXPECT_TRUE(m_display->SetStatus_ValuePath(path));
    }
    QString Shown(const char* objectName) const { return TextOf(*m_display, objectName); }
    /// The object names of the labels under a veil.
    std::vector<QString> Veiled() const {
        RefreshScheduler::Instance().Flush();
        std::vector<QString> veiled;
        for (const char* label : labels) {
            if (IsVeiled(Child<QLabel>(*m_display, label))) veiled.push_back(Text(label));
        }
        return veiled;
    }
    static std::vector<QString> All() {
        std::vector<QString> all;
        for (const char* label : labels)
            all.push_back(Text(label));
        return all;
    }

    values::Tree m_tree;
    std::unique_ptr<MCSStatus> m_status;
    std::unique_ptr<MCSStatusDisplay> m_display;
};

TEST_F(StatusDisplayFaults, IsDestroyedWhileBound) {
    Show();
    m_status.reset();
    m_display.reset();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), 0);
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(Text("/Gui"))), 0);
}

TEST_F(StatusDisplayFaults, IsBoundAnewToTheSamePath) {
    Show();
    const int before = treeaccess::CountObservers(m_tree.FindNode(path));
    EXPECT_TRUE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), before);
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("10 ms"));
}

TEST_F(StatusDisplayFaults, IsBoundToAnotherPath) {
    Show();
    const MCSStatus other(otherPath);
    other.GetConnectionStateValue()->SetValue(Text("other"));
    EXPECT_TRUE(m_display->SetStatus_ValuePath(otherPath));
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
    EXPECT_EQ(Shown("connectionStateDisp"), Text("other"));
    m_status->GetOnlineValue()->SetValue(false);
    m_status->GetOnlineValue()->SetValue(true);
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
    other.GetOnlineValue()->SetValue(true);
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
    m_status.reset();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(path)), 0);
}

TEST_F(StatusDisplayFaults, IsBoundBeforeItsSubtreeExistsAndAgainAfterwards) {
    EXPECT_FALSE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(m_tree.FindItem(path), nullptr);
    EXPECT_EQ(Shown("onlineDisp"), Text("- - -"));
    Show();
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
}

TEST_F(StatusDisplayFaults, MakesTheValuesOfANodeThatHasNone) {
    m_tree.ProvideNode(path);
    EXPECT_TRUE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(m_tree.FindNode(path)->CountChildren(), 11);
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
}

TEST_F(StatusDisplayFaults, AValueAtThePathIsNoNode) {
    treeaccess::PutValue<values::Value<int>>(Text("/MultiChannelServer"), "Status");
    EXPECT_FALSE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(Shown("onlineDisp"), Text("- - -"));
}

TEST_F(StatusDisplayFaults, GoesOnWhenItsNodeWasDeleted) {
    Show();
    treeaccess::DeleteAt(path);
    EXPECT_EQ(Veiled(), All());
    EXPECT_EQ(Shown("connectionStateDisp"), QString());
    m_display->SetDeviceType(3);
    EXPECT_FALSE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(Shown("onlineDisp"), Text("- - -"));
    Show();
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
    EXPECT_EQ(Veiled(), std::vector<QString>{});
}

TEST_F(StatusDisplayFaults, DoesNotTakeWhatCameBackForWhatItShowed) {
    Show();
    m_status.reset();
    treeaccess::DeleteAt(path);
    const MCSStatus again(path);
    again.GetOnlineValue()->SetValue(false);
    // Filled from the values that went: veiled until it is bound again.
    EXPECT_TRUE(IsVeiled(Child<QLabel>(*m_display, "onlineDisp")));
    EXPECT_TRUE(m_display->SetStatus_ValuePath(path));
    EXPECT_EQ(Shown("onlineDisp"), Text("Offline"));
    EXPECT_EQ(Veiled(), std::vector<QString>{});
}

TEST_F(StatusDisplayFaults, GoesOnWhenAllItKnowsWasDeleted) {
    Show();
    treeaccess::DeleteAt(Text("/MultiChannelServer"));
    treeaccess::DeleteAt(Text("/Gui"));
    EXPECT_EQ(Veiled(), All());
    m_display.reset();
    EXPECT_EQ(m_tree.GetRoot()->CountChildren(), 0);
}

TEST(StatusDisplayAndItsTree, TheTreeMayGoFirst) {
    auto tree = std::make_unique<values::Tree>();
    tree->ProvideNode(path);
    MCSStatusDisplay display;
    EXPECT_TRUE(display.SetStatus_ValuePath(path));
    tree.reset();
    EXPECT_FALSE(display.SetStatus_ValuePath(path));
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("- - -"));
}

struct GoneRow {
    const char* key;
    std::vector<QString> veiled;
};

void PrintTo(const GoneRow& row, std::ostream* stream) {
    *stream << row.key;
}

class StatusDisplayWithoutOne : public StatusDisplayFaults, public testing::WithParamInterface<GoneRow> {
  protected:
    QString PathOfOne() const { return path + QLatin1Char('/') + Text(GetParam().key); }
};

TEST_P(StatusDisplayWithoutOne, VeilsWhatDependedOnIt) {
    Show();
    treeaccess::DeleteAt(PathOfOne());
    EXPECT_EQ(Veiled(), GetParam().veiled);
}

TEST_P(StatusDisplayWithoutOne, VeilsWhatDependsOnItWhileItIsStale) {
    Show();
    auto* const value = dynamic_cast<values::ValueBase*>(m_tree.FindItem(PathOfOne()));
    value->SetState(values::Stale);
    EXPECT_EQ(Veiled(), GetParam().veiled);
    value->SetState(values::Valid);
    EXPECT_EQ(Veiled(), std::vector<QString>{});
}

TEST_P(StatusDisplayWithoutOne, StandsTheChangesOfAllOthers) {
    Show();
    treeaccess::DeleteAt(PathOfOne());
    for (values::TreeItem* const item : m_tree.FindNode(path)->GetTreeItems())
        item->GetObservable()->NotifyObservers(changecode::ContentChanged);
    EXPECT_EQ(Veiled(), GetParam().veiled);
}

TEST_P(StatusDisplayWithoutOne, StandsAnItemOfAnotherTypeInItsPlace) {
    Show();
    treeaccess::DeleteAt(PathOfOne());
    treeaccess::PutValue<values::ValueList<double>>(path, GetParam().key);
    for (values::TreeItem* const item : m_tree.FindNode(path)->GetTreeItems())
        item->GetObservable()->NotifyObservers(changecode::ContentChanged);
    m_display.reset();
}

std::vector<QString> Names(std::initializer_list<const char*> names) {
    std::vector<QString> texts;
    for (const char* name : names)
        texts.push_back(Text(name));
    return texts;
}

INSTANTIATE_TEST_SUITE_P(
    Table, StatusDisplayWithoutOne,
    testing::Values(
        GoneRow{"Online", Names({"onlineDisp", "sweepTimeDisp", "freqChannelDisp", "jobTypeDisp"})},
        GoneRow{"FreeFreqChannels", Names({"freqChannelDisp"})},
        GoneRow{"UsedFreqChannels", Names({"freqChannelDisp"})},
        GoneRow{"McsMasterJobControlled", Names({"jobTypeDisp"})},
        GoneRow{"StaticMpxORVs", Names({"nummberOfORVsDisp"})},
        GoneRow{"DynamicMpxORVs", Names({"nummberOfORVsDisp"})},
        GoneRow{"OperationMode", Names({"operationModeDisp", "sweepTimeDisp"})},
        GoneRow{"SweepTime", Names({"sweepTimeDisp"})}, GoneRow{"BootState", Names({"bootStateDisp"})},
        GoneRow{"ConnectionState", Names({"connectionStateDisp"})}, GoneRow{"LogMessage", Names({})}),
    testing::PrintToStringParamName());

TEST_F(StatusDisplayFaults, ShowsPlaceholdersForWhatIsGoneOnceSomethingElseChanges) {
    Show();
    for (const char* key : {"StaticMpxORVs", "FreeFreqChannels", "McsMasterJobControlled", "SweepTime"})
        treeaccess::DeleteAt(path + QLatin1Char('/') + Text(key));
    m_status->GetDynamicMpxORVsValue()->SetValue(7);
    EXPECT_EQ(Shown("nummberOfORVsDisp"), Text("- - -"));
    m_status->GetOnlineValue()->NotifyObservers(changecode::ContentChanged);
    EXPECT_EQ(Shown("freqChannelDisp"), Text("- - -"));
    EXPECT_EQ(Shown("jobTypeDisp"), Text("- - -"));
    EXPECT_EQ(Shown("sweepTimeDisp"), Text("- - - "));
    treeaccess::DeleteAt(path + Text("/Online"));
    m_status->GetOperationModeValue()->Select(OperationIdle);
    EXPECT_EQ(Shown("bootStateDisp"), Text("- - -"));
    EXPECT_EQ(Shown("operationModeDisp"), Text("- - -"));
}

TEST_F(StatusDisplayFaults, SaysThatItIsNotConnectedAndTakesThatBack) {
    const auto& online = Child<QLabel>(*m_display, "onlineDisp");
    EXPECT_EQ(Veiled(), All());
    EXPECT_EQ(online.toolTip(), Text("Not connected"));
    EXPECT_EQ(online.accessibleDescription(), Text("Not connected"));
    Show();
    EXPECT_EQ(Veiled(), std::vector<QString>{});
    EXPECT_EQ(online.toolTip(), QString());
    EXPECT_EQ(online.accessibleDescription(), QString());
    displaytest::SetStates(path, values::Stale);
    EXPECT_EQ(Veiled(), All());
    EXPECT_EQ(Shown("onlineDisp"), Text("Online"));
    displaytest::SetStates(path, values::Valid);
    EXPECT_EQ(Veiled(), std::vector<QString>{});
}

}  // namespace
