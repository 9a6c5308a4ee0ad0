// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using treeaccess::CountObservers;
using treeaccess::Text;
using Switch = values::Value<bool>;
using NotifyingSet = Notifying<MCSPolicySet>;
using Notifications = std::vector<NotifyingSet::Notification>;

/// A set with one policy, shown under a node.
class MCSPolicySetWhileShown : public testing::Test {
  protected:
    MCSPolicySetWhileShown() {
        m_set.Add(MCSPolicy::MAYCAL);
        m_set.ShowViewInTree(m_node, false);
        m_set.Clear();
    }

    Switch* SwitchOf(const MCSPolicy& policy) const {
        return dynamic_cast<Switch*>(m_node->FindChild(policy.GetName()));
    }

    values::Tree m_tree;
    values::Node* m_node = m_tree.ProvideNode(Text("/P/Policy"));
    NotifyingSet m_set;
};

TEST_F(MCSPolicySetWhileShown, ObservesEverySwitchAndTheNode) {
    EXPECT_EQ(CountObservers(m_node), 11);
}

TEST_F(MCSPolicySetWhileShown, HidingDetachesAndLeavesTheSwitches) {
    m_set.ShowViewInTree(nullptr, true);
    EXPECT_EQ(m_set.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(CountObservers(m_node), 0);
    EXPECT_EQ(m_node->CountChildren(), 10);
    m_set.Add(MCSPolicy::MAYBIT);
    EXPECT_FALSE(SwitchOf(MCSPolicy::MAYBIT)->GetValue());
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(false);
    EXPECT_EQ(m_set.ToString(), Text("MayBIT, MayCal"));
}

TEST_F(MCSPolicySetWhileShown, ShowingElsewhereDetachesFromTheFirstNode) {
    values::Node* const other = m_tree.ProvideNode(Text("/Q/Policy"));
    m_set.ShowViewInTree(other, false);
    EXPECT_EQ(m_set.GetParentNodeInTree(), other);
    EXPECT_EQ(CountObservers(m_node), 0);
    EXPECT_EQ(CountObservers(other), 11);
    m_tree.Delete(m_node);
    EXPECT_EQ(m_set.GetParentNodeInTree(), other);
}

TEST_F(MCSPolicySetWhileShown, ShowingAgainUnderTheSameNodeObservesOnce) {
    m_set.ShowViewInTree(m_node, true);
    EXPECT_EQ(CountObservers(m_node), 11);
    SwitchOf(MCSPolicy::MAYBIT)->SetValue(true);
    EXPECT_EQ(m_set.Notifications().size(), 2U);
}

TEST_F(MCSPolicySetWhileShown, ForgetsTheNodeThatGoesAway) {
    m_tree.Delete(m_node);
    EXPECT_EQ(m_set.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(m_set.Notifications(), Notifications{});
    m_set.Add(MCSPolicy::MAYBIT);
    m_set.Remove(MCSPolicy::MAYCAL);
    EXPECT_EQ(m_set.ToString(), Text("MayBIT"));
    EXPECT_EQ(m_set.Notifications(), (Notifications{{5, nullptr}, {6, nullptr}}));
}

TEST_F(MCSPolicySetWhileShown, ForgetsTheNodeWhoseParentGoesAway) {
    treeaccess::DeleteAt(Text("/P"));
    EXPECT_EQ(m_set.GetParentNodeInTree(), nullptr);
    m_set.AddAll();
}

TEST_F(MCSPolicySetWhileShown, IgnoresAnotherNodeThatGoesAway) {
    values::Node* const other = m_tree.ProvideNode(Text("/Q/Policy"));
    other->AddObserver(&m_set);
    m_tree.Delete(other);
    EXPECT_EQ(m_set.GetParentNodeInTree(), m_node);
    EXPECT_EQ(CountObservers(m_node), 11);
}

TEST_F(MCSPolicySetWhileShown, ForgetsSwitchesThatGoAwayOneByOne) {
    for (const MCSPolicy* policy : qAsConst(MCSPolicy::s_NameMCSPolicyMap)) {
        SCOPED_TRACE(policy->GetName().toStdString());
        m_tree.Delete(m_node->FindChild(policy->GetName()));
        m_set.SetContains(*policy, !m_set.Contains(*policy));
        EXPECT_EQ(m_node->FindChild(policy->GetName()), nullptr);
    }
    EXPECT_EQ(m_set.GetParentNodeInTree(), m_node);
    EXPECT_FALSE(m_set.Contains(MCSPolicy::MAYCAL));
    EXPECT_TRUE(m_set.Contains(MCSPolicy::MAYBIT));
    m_set.ShowViewInTree(nullptr, false);  // nothing is left to detach from
}

TEST_F(MCSPolicySetWhileShown, TellsNobodyOfASwitchThatGoesAway) {
    m_tree.Delete(SwitchOf(MCSPolicy::MAYCAL));
    EXPECT_TRUE(m_set.Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(m_set.Notifications(), Notifications{});
}

TEST_F(MCSPolicySetWhileShown, KeepsFollowingASwitchThatIsOnlyStale) {
    SwitchOf(MCSPolicy::MAYCAL)->SetState(values::Stale);
    EXPECT_EQ(CountObservers(m_node), 11);
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(false);
    EXPECT_FALSE(m_set.Contains(MCSPolicy::MAYCAL));
}

TEST_F(MCSPolicySetWhileShown, IgnoresOtherChanges) {
    for (const TChangeCode code : {0, 1, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 5019}) {
        SCOPED_TRACE(code);
        m_set.AsObserver().Update(SwitchOf(MCSPolicy::MAYBIT), code);
        if (code != 18) m_set.AsObserver().Update(m_node, code);
    }
    m_set.AsObserver().Update(nullptr, 3);
    m_set.AsObserver().Update(m_node, 3);
    const values::Value<int> number;
    m_set.AsObserver().Update(const_cast<values::Value<int>*>(&number), 3);
    EXPECT_EQ(m_set.Notifications(), Notifications{});
    EXPECT_EQ(m_set.GetParentNodeInTree(), m_node);
    EXPECT_EQ(m_set.ToString(), Text("MayCal"));
}

TEST_F(MCSPolicySetWhileShown, TellsOfAChangedSwitchOfAnyPlaceAndTakesItsOwn) {
    Switch elsewhere(false);
    elsewhere.SetName(Text("MayCal"));
    elsewhere.AddObserver(&m_set);
    elsewhere.SetValue(true);
    elsewhere.SetValue(false);
    EXPECT_TRUE(m_set.Contains(MCSPolicy::MAYCAL));  // as its own switch says
    EXPECT_EQ(m_set.Notifications(), (Notifications{{3, &m_set.AsObserver()}, {3, &m_set.AsObserver()}}));
}

TEST_F(MCSPolicySetWhileShown, ACopyIsNotShown) {
    MCSPolicySet copy(m_set);
    EXPECT_EQ(copy.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(copy.ToString(), Text("MayCal"));
    EXPECT_EQ(CountObservers(m_node), 11);
    copy.Add(MCSPolicy::MAYBIT);
    EXPECT_FALSE(SwitchOf(MCSPolicy::MAYBIT)->GetValue());
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(false);
    EXPECT_TRUE(copy.Contains(MCSPolicy::MAYCAL));
}

TEST_F(MCSPolicySetWhileShown, AssignmentHidesTheSetAndLeavesTheSwitches) {
    MCSPolicySet other;
    other.Add(MCSPolicy::MAYBIT);
    static_cast<MCSPolicySet&>(m_set) = other;
    EXPECT_EQ(m_set.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(m_set.ToString(), Text("MayBIT"));
    EXPECT_EQ(m_set.Notifications(), Notifications{});
    EXPECT_EQ(CountObservers(m_node), 0);
    EXPECT_TRUE(SwitchOf(MCSPolicy::MAYCAL)->GetValue());
    EXPECT_FALSE(SwitchOf(MCSPolicy::MAYBIT)->GetValue());
}

TEST_F(MCSPolicySetWhileShown, AssignmentOfAShownSetLeavesThatOneShown) {
    MCSPolicySet other;
    other = m_set;
    EXPECT_EQ(other.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(m_set.GetParentNodeInTree(), m_node);
    EXPECT_EQ(CountObservers(m_node), 11);
}

TEST_F(MCSPolicySetWhileShown, AssignmentToItselfChangesNothing) {
    const MCSPolicySet& same = m_set;
    static_cast<MCSPolicySet&>(m_set) = same;
    EXPECT_EQ(m_set.GetParentNodeInTree(), m_node);
    EXPECT_EQ(m_set.ToString(), Text("MayCal"));
}

TEST_F(MCSPolicySetWhileShown, DestructionDetachesAndLeavesTheSwitches) {
    values::Node* const node = m_tree.ProvideNode(Text("/Q/Policy"));
    auto set = std::make_unique<MCSPolicySet>();
    set->AddAll();
    set->ShowViewInTree(node, false);
    set.reset();
    EXPECT_EQ(CountObservers(node), 0);
    EXPECT_EQ(treeaccess::ContentAt(Text("/Q/Policy/MayBIT")), Text("true"));
    EXPECT_EQ(node->CountChildren(), 10);
}

}  // namespace
