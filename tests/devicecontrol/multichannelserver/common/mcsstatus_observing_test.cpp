// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using treeaccess::DeleteAt;
using treeaccess::Text;
using NotifyingStatus = Notifying<MCSStatus>;
using Notifications = std::vector<NotifyingStatus::Notification>;

const QString basePath = Text("/MultiChannelServer/Status");

/// The values, looked at through their accessors.
std::vector<values::ValueBase*> ValuesOf(const MCSStatus& status) {
    return {status.GetBootStateValue(),
            status.GetOperationModeValue(),
            status.GetFreeFreqChannelsValue(),
            status.GetUsedFreqChannelsValue(),
            status.GetMcsMasterJobControlledValue(),
            status.GetSweepTimeValue(),
            status.GetOnlineValue(),
            status.GetConnectionStateValue(),
            status.GetStaticMpxORVsValue(),
            status.GetDynamicMpxORVsValue(),
            status.GetLogMessageValue()};
}

class MCSStatusObserving : public testing::Test {
  protected:
    values::Node* StatusNode() const { return m_tree.FindNode(basePath); }

    values::Tree m_tree;
};

TEST_F(MCSStatusObserving, TellsOfEachOfItsValuesWithItselfAsOriginator) {
    NotifyingStatus status(basePath);
    RecordingObserver observer;
    status.AddObserver(&observer);
    status.GetBootStateValue()->Select(16);
    status.GetOperationModeValue()->Select(4);
    status.GetFreeFreqChannelsValue()->SetValue(1);
    status.GetUsedFreqChannelsValue()->SetValue(2);
    status.GetMcsMasterJobControlledValue()->SetValue(true);
    status.GetSweepTimeValue()->SetValue(3);
    status.GetOnlineValue()->SetValue(true);
    status.GetConnectionStateValue()->SetValue(Text("up"));
    status.GetStaticMpxORVsValue()->SetValue(4);
    status.GetDynamicMpxORVsValue()->SetValue(5);
    status.GetLogMessageValue()->SetValue(Text("log"));
    EXPECT_EQ(status.Notifications(), Notifications(11, {3, &status.AsObserver()}));
    EXPECT_EQ(observer.Events(), std::vector<RecordingObserver::Event>(11, {&status, 3}));
}

TEST_F(MCSStatusObserving, TellsOfAChangedContentFromAnySource) {
    NotifyingStatus status(basePath);
    values::Value<int> foreign;
    foreign.AddObserver(&status);
    foreign.SetValue(1);
    status.AsObserver().Update(StatusNode(), 3);
    status.AsObserver().Update(nullptr, 3);
    EXPECT_EQ(status.Notifications(), Notifications(3, {3, &status.AsObserver()}));
}

TEST_F(MCSStatusObserving, IgnoresOtherCodes) {
    NotifyingStatus status(basePath);
    for (values::ValueBase* value : ValuesOf(status))
        for (const TChangeCode code : {0, 1, 2, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 5019})
            status.AsObserver().Update(value, code);
    for (const TChangeCode code : {2, 4, 15, 16, 17})
        status.AsObserver().Update(StatusNode(), code);
    EXPECT_EQ(status.Notifications(), Notifications{});
    for (values::ValueBase* value : ValuesOf(status)) {
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->CountObservers(), 1);
    }
    EXPECT_EQ(StatusNode()->CountObservers(), 1);
}

TEST_F(MCSStatusObserving, DoesNotRelayChangesOfASelectionsItems) {
    NotifyingStatus status(basePath);
    status.GetOperationModeValue()->AddItem(Text("New"), 0.0, 99);
    status.GetOperationModeValue()->DeleteItem(status.GetOperationModeValue()->GetItem(99));
    EXPECT_EQ(status.Notifications(), Notifications{});
}

TEST_F(MCSStatusObserving, ForgetsTheValueThatGoesAwayAndNoOther) {
    for (std::size_t gone = 0; gone < 11; ++gone) {
        NotifyingStatus status(basePath);
        const std::vector<values::ValueBase*> before = ValuesOf(status);
        SCOPED_TRACE(before[gone]->GetName().toStdString());
        m_tree.Delete(before[gone]);
        std::vector<values::ValueBase*> expected = before;
        expected[gone] = nullptr;
        EXPECT_EQ(ValuesOf(status), expected);
        EXPECT_EQ(status.Notifications(), Notifications{});
    }
}

TEST_F(MCSStatusObserving, AValueOutsideTheTreeThatGoesAwayIsNoneOfIts) {
    const MCSStatus status(basePath);
    {
        values::ValueNumeric<int> foreign;
        foreign.AddObserver(const_cast<MCSStatus*>(&status));
    }
    for (const values::ValueBase* value : ValuesOf(status))
        EXPECT_NE(value, nullptr);
}

TEST_F(MCSStatusObserving, KeepsAValueWhoseStateIsAnother) {
    NotifyingStatus status(basePath);
    auto* const sweepTime = status.GetSweepTimeValue();
    sweepTime->SetState(values::Stale);
    EXPECT_EQ(status.GetSweepTimeValue(), sweepTime);
    EXPECT_EQ(sweepTime->CountObservers(), 1);
    sweepTime->SetState(values::Valid);
    sweepTime->SetValue(5);
    EXPECT_EQ(status.Notifications().size(), 1U);
    m_tree.Delete(sweepTime);
    EXPECT_EQ(status.GetSweepTimeValue(), nullptr);
}

TEST_F(MCSStatusObserving, ForgetsTheNodeAndEveryValueWhenTheNodeGoesAway) {
    auto status = std::make_unique<MCSStatus>(basePath);
    DeleteAt(basePath);
    for (const values::ValueBase* value : ValuesOf(*status))
        EXPECT_EQ(value, nullptr);
    status.reset();  // nothing is left to detach from
    EXPECT_EQ(m_tree.FindItem(basePath), nullptr);
}

TEST_F(MCSStatusObserving, DestructionDetachesAndLeavesTheTree) {
    auto status = std::make_unique<MCSStatus>(basePath);
    status->GetSweepTimeValue()->SetValue(5);
    status.reset();
    EXPECT_EQ(treeaccess::CountObservers(StatusNode()), 0);
    EXPECT_EQ(StatusNode()->CountChildren(), 11);
    EXPECT_EQ(treeaccess::ContentAt(basePath + Text("/SweepTime")), Text("5"));
}

std::vector<QString> detached;  // names of the items, in order

/// An item of the tree that notes when somebody detaches from it.
template <class Item>
class Watched final : public Item {
  public:
    using Item::Item;
    void DeleteObserver(IObserver* observer) override {
        detached.push_back(this->GetName());
        Item::DeleteObserver(observer);
    }
};

template <class V>
void PutWatched(const char* name) {
    ASSERT_NE((treeaccess::PutValue<Watched<V>>(basePath, name)), nullptr);
}

TEST_F(MCSStatusObserving, DetachesFromTheNodeThenFromTheValuesWithTheModeAsFourth) {
    std::unique_ptr<values::TreeItem> node = std::make_unique<Watched<values::Node>>(Text("Status"));
    ASSERT_TRUE(m_tree.AddItem(Text("/MultiChannelServer"), node));
    for (const char* name : {"BootState", "OperationMode"})
        PutWatched<values::ValueSelection>(name);
    for (const char* name :
         {"FreeFreqChannels", "UsedFreqChannels", "SweepTime", "StaticMpxORVs", "DynamicMpxORVs"})
        PutWatched<values::ValueNumeric<int>>(name);
    for (const char* name : {"McsMasterJobControlled", "Online"})
        PutWatched<values::Value<bool>>(name);
    for (const char* name : {"ConnectionState", "LogMessage"})
        PutWatched<values::Value<QString>>(name);
    auto status = std::make_unique<MCSStatus>(basePath);
    detached.clear();
    status.reset();
    EXPECT_EQ(detached, (std::vector<QString>{Text("Status"), Text("BootState"), Text("FreeFreqChannels"),
                                              Text("UsedFreqChannels"), Text("OperationMode"),
                                              Text("McsMasterJobControlled"), Text("SweepTime"),
                                              Text("Online"), Text("ConnectionState"), Text("StaticMpxORVs"),
                                              Text("DynamicMpxORVs"), Text("LogMessage")}));
}

TEST_F(MCSStatusObserving, DetachesFromAValueThatGoesAwayButNotFromANodeThatDoes) {
    std::unique_ptr<values::TreeItem> node = std::make_unique<Watched<values::Node>>(Text("Status"));
    ASSERT_TRUE(m_tree.AddItem(Text("/MultiChannelServer"), node));
    const MCSStatus status(basePath);
    detached.clear();
    static_cast<IObserver&>(const_cast<MCSStatus&>(status)).Update(StatusNode(), 18);
    EXPECT_EQ(detached, std::vector<QString>{});
    EXPECT_EQ(StatusNode()->CountObservers(), 1);
    StatusNode()->DeleteObservers();  // the status has forgotten the node
}

class CopiedMCSStatus : public MCSStatusObserving {
  protected:
    NotifyingStatus m_original{basePath};
};

TEST_F(CopiedMCSStatus, SharesTheValuesAndIsNotTold) {
    NotifyingStatus copy(m_original);
    RecordingObserver observer;
    copy.Clear();
    copy.AddObserver(&observer);
    EXPECT_EQ(ValuesOf(copy), ValuesOf(m_original));
    EXPECT_EQ(copy.GetSweepTime_ValuePath(), m_original.GetSweepTime_ValuePath());
    copy.GetSweepTimeValue()->SetValue(5);
    EXPECT_EQ(m_original.GetSweepTime(), 5);
    EXPECT_EQ(copy.GetSweepTime(), 5);
    EXPECT_EQ(copy.Notifications(), Notifications{});
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{});
    EXPECT_EQ(m_original.Notifications().size(), 1U);
}

TEST_F(CopiedMCSStatus, DoesNotTellTheObserversOfTheOriginal) {
    RecordingObserver observer;
    m_original.AddObserver(&observer);
    MCSStatus copy(m_original);
    EXPECT_EQ(copy.CountObservers(), 0);
    static_cast<IObserver&>(copy).Update(nullptr, 3);
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{});
}

TEST_F(CopiedMCSStatus, LeavesTheRegistrationOfTheOriginalAloneWhenItGoes) {
    { const MCSStatus copy(m_original); }
    EXPECT_EQ(StatusNode()->CountObservers(), 1);
    for (values::ValueBase* value : ValuesOf(m_original))
        EXPECT_EQ(value->CountObservers(), 1) << value->GetName().toStdString();
    m_original.GetSweepTimeValue()->SetValue(5);
    EXPECT_EQ(m_original.Notifications().size(), 1U);
}

// A copy must not outlive a value: here it ends in time, as the value goes.
TEST_F(CopiedMCSStatus, IsNotToldThatAValueGoesAway) {
    auto copy = std::make_unique<MCSStatus>(m_original);
    const values::ValueBase* const value = copy->GetSweepTimeValue();
    RecordingObserver observer([&](Observable* /*source*/, TChangeCode /*code*/) {
        EXPECT_EQ(m_original.GetSweepTimeValue(), nullptr);
        EXPECT_EQ(copy->GetSweepTimeValue(), value);
        copy.reset();
    });
    copy->GetSweepTimeValue()->AddObserver(&observer);
    m_tree.Delete(m_original.GetSweepTimeValue());
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{2});
    EXPECT_EQ(copy, nullptr);
}

TEST_F(CopiedMCSStatus, CanOutliveTheOriginal) {
    auto original = std::make_unique<MCSStatus>(Text("/Other/Status"));
    const MCSStatus copy(*original);
    original->GetSweepTimeValue()->SetValue(5);
    original.reset();
    EXPECT_EQ(copy.GetSweepTime(), 5);
}

TEST_F(CopiedMCSStatus, AssignmentSharesTheValuesAndKeepsTheObservers) {
    MCSStatus assigned(Text("/Other/Status"));
    RecordingObserver observer;
    assigned.AddObserver(&observer);
    assigned = m_original;
    EXPECT_EQ(ValuesOf(assigned), ValuesOf(m_original));
    EXPECT_EQ(assigned.GetOnline_ValuePath(), m_original.GetOnline_ValuePath());
    EXPECT_EQ(assigned.CountObservers(), 1);
    m_original.GetSweepTimeValue()->SetValue(5);
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>{});
}

// Otherwise the values that it does not know any more would tell it of changes, even after its end.
TEST_F(CopiedMCSStatus, AssignmentDetachesFromWhatItHadBefore) {
    MCSStatus assigned(Text("/Other/Status"));
    assigned = m_original;
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(Text("/Other/Status"))), 0);
}

TEST_F(CopiedMCSStatus, AssignmentOnTheSamePathMakesItACopyThatIsNotTold) {
    NotifyingStatus assigned(basePath);
    static_cast<MCSStatus&>(assigned) = m_original;
    m_original.GetSweepTimeValue()->SetValue(5);
    EXPECT_EQ(assigned.GetSweepTime(), 5);
    EXPECT_EQ(assigned.Notifications(), Notifications{});
    EXPECT_EQ(m_original.Notifications().size(), 1U);
}

TEST_F(CopiedMCSStatus, AssignmentToItselfChangesNothing) {
    const MCSStatus& same = m_original;
    static_cast<MCSStatus&>(m_original) = same;
    m_original.GetSweepTimeValue()->SetValue(5);
    EXPECT_EQ(m_original.Notifications().size(), 1U);
    EXPECT_EQ(StatusNode()->CountObservers(), 1);
}

}  // namespace
