// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using displaytest::TextOf;
using treeaccess::Text;
using Flag = values::Value<bool>;

const QString path = Text("/MultiChannelServer/Status");

/// The flags that say that there is no value to show.
class StatusDisplayFlags : public testing::Test {
  protected:
    StatusDisplayFlags() {
        const std::vector<values::TreeItem*> before = FlagsInTree();
        m_display = std::make_unique<MCSStatusDisplay>();
        std::vector<values::TreeItem*> now = FlagsInTree();
        now.erase(now.begin(), now.begin() + static_cast<std::ptrdiff_t>(before.size()));
        EXPECT_EQ(now.size(), 2U);
        m_boot = dynamic_cast<Flag*>(now.at(0));
        m_mode = dynamic_cast<Flag*>(now.at(1));
        m_status.GetBootStateValue()->Select(BootReady);
        m_status.GetOperationModeValue()->Select(OperationScan);
        m_status.GetOnlineValue()->SetValue(true);
        m_display->SetStatus_ValuePath(path);
    }

    static std::vector<values::TreeItem*> FlagsInTree() {
        const values::Node* const node = values::Tree::Instance()->FindNode(Text("/Gui"));
        return node != nullptr ? node->GetTreeItems() : std::vector<values::TreeItem*>();
    }
    QString Shown(const char* objectName) const { return TextOf(*m_display, objectName); }

    values::Tree m_tree;
    MCSStatus m_status{path};
    std::unique_ptr<MCSStatusDisplay> m_display;
    Flag* m_boot = nullptr;
    Flag* m_mode = nullptr;
};

TEST_F(StatusDisplayFlags, TheFirstIsForTheBootStateAndTheSecondForTheMode) {
    m_boot->SetValue(true);
    EXPECT_EQ(Shown("bootStateDisp"), Text("- - -"));
    EXPECT_EQ(Shown("operationModeDisp"), Text("Scan"));
    m_boot->SetValue(false);
    m_mode->SetValue(true);
    EXPECT_EQ(Shown("bootStateDisp"), Text("Ready"));
    EXPECT_EQ(Shown("operationModeDisp"), Text("- - -"));
}

TEST_F(StatusDisplayFlags, AreSwitchedForTheModeFirst) {
    std::vector<Observable*> switched;
    RecordingObserver recorder([&](Observable* source, TChangeCode) { switched.push_back(source); });
    m_boot->AddObserver(&recorder);
    m_mode->AddObserver(&recorder);
    m_status.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(switched, (std::vector<Observable*>{m_mode, m_boot}));
    EXPECT_TRUE(m_boot->GetValue());
    m_status.GetOnlineValue()->SetValue(true);
    EXPECT_FALSE(m_boot->GetValue());
    EXPECT_FALSE(m_mode->GetValue());
    m_boot->DeleteObserver(&recorder);
    m_mode->DeleteObserver(&recorder);
}

// Beside "Offline" no state stands that held before, not even until the next refresh.
TEST_F(StatusDisplayFlags, AreHeededAtOnce) {
    RefreshScheduler::Instance().Flush();
    const auto drawn = [this](const char* name) {
        return displaytest::Child<QLabel>(*m_display, name).text();
    };
    m_status.GetSweepTimeValue()->SetValue(1);
    m_status.GetBootStateValue()->Select(BootReady);  // something is shown, and what follows waits
    m_status.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(drawn("onlineDisp"), Text("Offline"));
    EXPECT_EQ(drawn("bootStateDisp"), Text("- - -"));
    EXPECT_EQ(drawn("operationModeDisp"), Text("- - -"));
    m_status.GetOnlineValue()->SetValue(true);
    EXPECT_EQ(drawn("bootStateDisp"), Text("Ready"));
    EXPECT_EQ(drawn("operationModeDisp"), Text("Scan"));
}

TEST_F(StatusDisplayFlags, AreForgottenWhenTheyGo) {
    m_tree.Delete(m_boot);
    m_status.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(Shown("bootStateDisp"), Text("Ready"));
    EXPECT_EQ(Shown("operationModeDisp"), Text("- - -"));
    m_tree.Delete(m_mode);
    m_status.GetOnlineValue()->SetValue(true);
    m_display->SetStatus_ValuePath(path);
    EXPECT_EQ(Shown("operationModeDisp"), Text("Scan"));
    m_display.reset();
}

TEST_F(StatusDisplayFlags, AreKeptWhenTheyOnlyTellOfAnotherState) {
    m_boot->SetState(values::Stale);
    m_boot->SetState(values::Valid);
    m_status.GetOnlineValue()->SetValue(false);
    EXPECT_EQ(Shown("bootStateDisp"), Text("- - -"));
}

TEST_F(StatusDisplayFlags, StayInTheTreeUnobservedWhenTheDisplayGoes) {
    m_display.reset();
    EXPECT_EQ(m_boot->CountObservers(), 0);
    EXPECT_EQ(m_mode->CountObservers(), 0);
    EXPECT_EQ(FlagsInTree().size(), 2U);
}

}  // namespace
