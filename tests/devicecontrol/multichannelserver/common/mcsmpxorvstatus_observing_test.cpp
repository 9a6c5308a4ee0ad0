// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using treeaccess::Text;
using NotifyingStatus = Notifying<MCSMpxORVStatus>;
using Notifications = std::vector<NotifyingStatus::Notification>;

const QString basePath = Text("/MultiChannelServer/DynamicMpxORVs/Alpha/Status");

std::vector<values::ValueBase*> ValuesOf(const MCSMpxORVStatus& status) {
    return {status.GetOperationTypeValue(), status.GetConnectedClientsValue(), status.GetOperationModeValue(),
            status.GetIsMasterValue(),      status.GetIsWatchingMasterValue(), status.GetCommentValue()};
}

class MCSMpxORVStatusObserving : public testing::Test {
  protected:
    values::Node* StatusNode() const { return m_tree.FindNode(basePath); }
    /// What the status tells once, and that it does it as the originator.
    Notifications Told(int times) {
        return Notifications(static_cast<std::size_t>(times), {3, &m_status.AsObserver()});
    }

    values::Tree m_tree;
    NotifyingStatus m_status{basePath};
};

TEST_F(MCSMpxORVStatusObserving, TellsOfEachOfItsValues) {
    RecordingObserver observer;
    m_status.GetConnectedClientsValue()->AddItem(Text("West"), 0.0, 7);
    m_status.Clear();
    m_status.AddObserver(&observer);
    m_status.GetOperationTypeValue()->SetValue(Text("Wideband"));
    m_status.GetConnectedClientsValue()->Select(7);
    m_status.GetOperationModeValue()->Select(4);
    m_status.GetIsMasterValue()->SetValue(true);
    m_status.GetIsWatchingMasterValue()->SetValue(true);
    m_status.GetCommentValue()->SetValue(Text("own"));
    EXPECT_EQ(m_status.Notifications(), Told(6));
    EXPECT_EQ(observer.Events(), std::vector<RecordingObserver::Event>(6, {&m_status, 3}));
}

TEST_F(MCSMpxORVStatusObserving, DoesNotTellOfContentsFromOtherSources) {
    values::Value<QString> foreign;
    foreign.AddObserver(&m_status);
    foreign.SetValue(Text("changed"));
    m_status.AsObserver().Update(StatusNode(), 3);
    m_status.AsObserver().Update(nullptr, 3);
    EXPECT_EQ(m_status.Notifications(), Notifications{});
}

TEST_F(MCSMpxORVStatusObserving, DoesNotTellOfAMissingSourceOnceAValueWent) {
    m_tree.Delete(m_status.GetCommentValue());
    m_status.AsObserver().Update(nullptr, 3);
    m_status.AsObserver().Update(nullptr, 8);
    EXPECT_EQ(m_status.Notifications(), Notifications{});
}

TEST_F(MCSMpxORVStatusObserving, TellsOfClientsThatComeGoOrAreReplaced) {
    values::ValueSelection* const clients = m_status.GetConnectedClientsValue();
    clients->AddItem(Text("West"), 0.0, 7);
    EXPECT_EQ(m_status.Notifications(), Told(1));
    clients->DeleteItem(clients->GetItem(7));
    EXPECT_EQ(m_status.Notifications(), Told(2));
    clients->SetItems({values::SelectionItem(Text("East"), 0.0, 8)});
    EXPECT_EQ(m_status.Notifications(), Told(3));
}

TEST_F(MCSMpxORVStatusObserving, DoesNotTellOfItemsOfTheOperationMode) {
    values::ValueSelection* const modes = m_status.GetOperationModeValue();
    modes->AddItem(Text("New"), 0.0, 99);
    modes->DeleteItem(modes->GetItem(99));
    modes->SetItems({});
    EXPECT_EQ(m_status.Notifications(), Notifications{});
}

TEST_F(MCSMpxORVStatusObserving, IgnoresOtherCodes) {
    for (values::ValueBase* value : ValuesOf(m_status))
        for (const TChangeCode code : {0, 1, 2, 4, 5, 6, 15, 16, 17, 18, 5019})
            m_status.AsObserver().Update(value, code);
    EXPECT_EQ(m_status.Notifications(), Notifications{});
    EXPECT_EQ(m_status.GetName(), Text("Alpha"));
    for (values::ValueBase* value : ValuesOf(m_status))
        ASSERT_NE(value, nullptr);
}

TEST_F(MCSMpxORVStatusObserving, AddingAClientTellsOthersOfTheItemThenOfTheSelection) {
    RecordingObserver observer;
    m_status.GetConnectedClientsValue()->AddObserver(&observer);
    m_status.AddConnectedClient(7, Text("West"));
    EXPECT_EQ(observer.Codes(), (std::vector<TChangeCode>{8, 3}));
    m_status.GetConnectedClientsValue()->DeleteObserver(&observer);
}

// It selects as the originator, so it hears, and tells, of the item only.
TEST_F(MCSMpxORVStatusObserving, AddingAClientIsToldOnce) {
    m_status.AddConnectedClient(7, Text("West"));
    EXPECT_EQ(m_status.Notifications(), Told(1));
}

TEST_F(MCSMpxORVStatusObserving, AddingAClientIsToldOfTwiceByAnotherObjectOnThePath) {
    NotifyingStatus other(basePath);
    m_status.AddConnectedClient(7, Text("West"));
    EXPECT_EQ(other.Notifications(), (Notifications{{3, &other.AsObserver()}, {3, &other.AsObserver()}}));
}

TEST_F(MCSMpxORVStatusObserving, RemovingAClientIsTold) {
    m_status.AddConnectedClient(7, Text("West"));
    m_status.AddConnectedClient(8, Text("East"));
    m_status.Clear();
    m_status.RemoveConnectedClient(7);  // not the current one
    EXPECT_EQ(m_status.Notifications(), Told(1));
}

TEST_F(MCSMpxORVStatusObserving, ForgetsTheValueThatGoesAwayAndNoOther) {
    for (std::size_t gone = 0; gone < 6; ++gone) {
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

TEST_F(MCSMpxORVStatusObserving, KeepsAValueWhoseStateIsAnother) {
    values::Value<QString>* const comment = m_status.GetCommentValue();
    comment->SetState(values::Stale);
    EXPECT_EQ(m_status.GetCommentValue(), comment);
    comment->SetValue(Text("own"));
    EXPECT_EQ(m_status.Notifications(), Told(1));
}

TEST_F(MCSMpxORVStatusObserving, ForgetsTheNodeThatGoesAwayWithItsValues) {
    auto status = std::make_unique<MCSMpxORVStatus>(Text("/Other/Status"));
    treeaccess::DeleteAt(Text("/Other"));
    for (const values::ValueBase* value : ValuesOf(*status))
        EXPECT_EQ(value, nullptr);
    EXPECT_EQ(status->GetName(), QString());
    status.reset();  // nothing is left to detach from
}

TEST_F(MCSMpxORVStatusObserving, KeepsItsNodeWhenAnotherGoesAway) {
    values::Node* const other = m_tree.ProvideNode(Text("/Other"));
    other->AddObserver(&m_status);
    m_tree.Delete(other);
    EXPECT_EQ(m_status.GetName(), Text("Alpha"));
}

TEST_F(MCSMpxORVStatusObserving, DestructionDetachesAndLeavesTheTree) {
    auto status = std::make_unique<MCSMpxORVStatus>(Text("/Other/Status"));
    status->SetComment(Text("own"));
    status.reset();
    values::Node* const node = m_tree.FindNode(Text("/Other/Status"));
    EXPECT_EQ(treeaccess::CountObservers(node), 0);
    EXPECT_EQ(node->CountChildren(), 6);
    EXPECT_EQ(treeaccess::ContentAt(Text("/Other/Status/Comment")), Text("own"));
}

TEST_F(MCSMpxORVStatusObserving, ACopySharesTheValuesAndIsNotTold) {
    {
        NotifyingStatus copy(m_status);
        copy.Clear();
        EXPECT_EQ(ValuesOf(copy), ValuesOf(m_status));
        EXPECT_EQ(copy.GetName(), Text("Alpha"));
        copy.SetComment(Text("own"));
        EXPECT_EQ(m_status.GetComment(), Text("own"));
        EXPECT_EQ(copy.Notifications(), Notifications{});
    }
    for (values::ValueBase* value : ValuesOf(m_status))
        EXPECT_EQ(value->CountObservers(), 1) << value->GetName().toStdString();
    EXPECT_EQ(StatusNode()->CountObservers(), 1);
}

TEST_F(MCSMpxORVStatusObserving, AssignmentDetachesFromItsOwnValuesAndSharesTheOthers) {
    MCSMpxORVStatus assigned(Text("/Other/Status"));
    assigned = m_status;
    EXPECT_EQ(ValuesOf(assigned), ValuesOf(m_status));
    EXPECT_EQ(assigned.GetComment_ValuePath(), m_status.GetComment_ValuePath());
    EXPECT_EQ(assigned.GetName(), Text("Alpha"));
    for (values::ValueBase* value : ValuesOf(m_status))
        EXPECT_EQ(value->CountObservers(), 1) << value->GetName().toStdString();
    EXPECT_EQ(treeaccess::CountObservers(m_tree.FindNode(Text("/Other/Status"))), 0);
}

TEST_F(MCSMpxORVStatusObserving, AssignmentToItselfChangesNothing) {
    const MCSMpxORVStatus& same = m_status;
    static_cast<MCSMpxORVStatus&>(m_status) = same;
    m_status.SetComment(Text("own"));
    EXPECT_EQ(m_status.Notifications(), Told(1));
    EXPECT_EQ(m_status.GetName(), Text("Alpha"));
}

}  // namespace
