// SPDX-License-Identifier: Apache-2.0
// Displays that were given their path as a property, as forms do, before there is anything at it.
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtWidgets/QTableView>

namespace {

using displaytest::Child;
using displaytest::TextOf;
using treeaccess::Text;

class DisplayProperties : public testing::Test {
  protected:
    void AddOnline(bool isOnline) {
        auto* const value = new values::Value<bool>(isOnline);
        value->SetName(Text("Online"));
        ASSERT_TRUE(tree.AddValue(Text("/Server/Status"), value));
    }

    values::Tree tree;
};

TEST_F(DisplayProperties, ADisplayFollowsItsPath) {
    MCSStatusDisplay display;
    EXPECT_TRUE(display.setProperty("valuePath", Text("/Server/Status")));
    EXPECT_EQ(display.property("valuePath").toString(), Text("/Server/Status"));
    for (const bool isOnline : {true, false}) {
        SCOPED_TRACE(isOnline);
        EXPECT_EQ(TextOf(display, "onlineDisp"), Text("- - -"));
        AddOnline(isOnline);
        RunTurns(1);
        EXPECT_EQ(TextOf(display, "onlineDisp"), Text(isOnline ? "Online" : "Offline"));
        tree.Delete(tree.FindItem(Text("/Server")));
        RunTurns(1);
    }
}

TEST_F(DisplayProperties, OneThatWasBoundByTheOperationLooksOnce) {
    MCSStatusDisplay display;
    EXPECT_FALSE(display.SetStatus_ValuePath(Text("/Server/Status")));
    AddOnline(true);
    RunTurns(1);
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("- - -"));
}

TEST_F(DisplayProperties, AnotherPathTakesThePlaceOfTheFirst) {
    MCSStatusDisplay display;
    display.setProperty("valuePath", Text("/Other/Status"));
    display.setProperty("valuePath", Text("/Server/Status"));
    AddOnline(true);
    tree.ProvideNode(Text("/Other/Status"));
    RunTurns(1);
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("Online"));
    display.setProperty("valuePath", QString());
    EXPECT_EQ(TextOf(display, "onlineDisp"), Text("- - -"));
}

TEST_F(DisplayProperties, AListFollowsAllItsPaths) {
    MCSMpxORVStatusListDisplay display;
    display.setProperty("valuePaths", Text("/Server/StaticMpxORVs,,/Server/DynamicMpxORVs"));
    EXPECT_EQ(display.property("valuePaths").toString(),
              Text("/Server/StaticMpxORVs,/Server/DynamicMpxORVs"));
    tree.ProvideNode(Text("/Server/StaticMpxORVs/Tower/Status"));
    tree.ProvideNode(Text("/Server/DynamicMpxORVs/Van/Status"));
    const auto* const view = display.findChild<QTableView*>();
    EXPECT_TRUE(WaitUntil([view] { return view->model()->rowCount() == 2; }));
    EXPECT_TRUE(display.property("fullStatusInformation").toBool());
    display.setProperty("fullStatusInformation", false);
    EXPECT_FALSE(display.property("fullStatusInformation").toBool());
}

TEST_F(DisplayProperties, AConfigurationHasBothGroupsUnlessOneIsHidden) {
    QWidget window;
    MCSConfigDisplay display(&window);
    EXPECT_EQ(display.GetFlags(), MCSConfigDisplay::BootConfigGroup | MCSConfigDisplay::JobConfigGroup);
    EXPECT_TRUE(display.setProperty("bootConfigGroup", false));
    EXPECT_EQ(display.GetFlags(), MCSConfigDisplay::JobConfigGroup);
    EXPECT_FALSE(display.property("bootConfigGroup").toBool());
    EXPECT_TRUE(display.property("jobConfigGroup").toBool());
}

}  // namespace
