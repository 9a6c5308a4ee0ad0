// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <tests/devicecontrol/multichannelserver/common/notifying.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using treeaccess::DeleteAt;
using treeaccess::PutValue;
using treeaccess::Text;
using Switch = values::Value<bool>;
using NotifyingSet = Notifying<MCSPolicySet>;
using Notifications = std::vector<NotifyingSet::Notification>;

std::vector<QString> RegisteredNames() {
    const QList<QString> names = MCSPolicy::s_NameMCSPolicyMap.keys();
    return {names.begin(), names.end()};
}

class MCSPolicySetInTree : public testing::Test {
  protected:
    static Switch* SwitchOf(const QString& name) {
        return treeaccess::ValueAt<Switch>(Text("/P/Policy/") + name);
    }
    static Switch* SwitchOf(const MCSPolicy& policy) { return SwitchOf(policy.GetName()); }
    static Switch* PutSwitch(const char* name, bool content) {
        auto* const value = PutValue<Switch>(Text("/P/Policy"), name);
        value->SetValue(content);
        return value;
    }
    /// The names of the switches that are on.
    static std::vector<QString> SwitchedOn() {
        std::vector<QString> names;
        for (const QString& name : RegisteredNames())
            if (SwitchOf(name) != nullptr && SwitchOf(name)->GetValue()) names.push_back(name);
        return names;
    }
    static std::vector<QString> Contained(const MCSPolicySet& set) {
        std::vector<QString> names;
        for (const MCSPolicy& policy : set)
            names.push_back(policy.GetName());
        return names;
    }

    values::Tree m_tree;
    values::Node* m_node = m_tree.ProvideNode(Text("/P/Policy"));
};

class ShowingAPolicySet : public MCSPolicySetInTree, public testing::WithParamInterface<bool> {};

TEST_P(ShowingAPolicySet, CreatesASwitchPerPolicyInNameOrderFromTheSet) {
    NotifyingSet set;
    set.SetToDefaultPolicy();
    set.Clear();
    set.ShowViewInTree(m_node, GetParam());
    EXPECT_EQ(set.GetParentNodeInTree(), m_node);
    EXPECT_EQ(treeaccess::ChildNames(m_node), RegisteredNames());
    EXPECT_EQ(SwitchedOn(), Contained(set));
    EXPECT_EQ(SwitchedOn().size(), 5U);
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST_P(ShowingAPolicySet, LeavesAChildOfAnotherTypeAlone) {
    auto* const other = PutValue<values::Value<int>>(Text("/P/Policy"), "MayCal");
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.ShowViewInTree(m_node, GetParam());
    set.Clear();
    EXPECT_EQ(m_node->FindChild(Text("MayCal")), other);
    EXPECT_EQ(other->CountObservers(), 0);
    EXPECT_EQ(m_node->CountChildren(), 10);
    set.Remove(MCSPolicy::MAYCAL);
    EXPECT_EQ(set.Notifications(), (Notifications{{6, nullptr}}));
    EXPECT_EQ(other->GetValue(), 0);
}

TEST_P(ShowingAPolicySet, EndsCleanlyWhenAnObserverDeletesTheNodeHalfWay) {
    MCSPolicySet set;
    RecordingObserver observer;
    observer.React([&](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ChildrenAdded && observer.Count(code) == 3) DeleteAt(Text("/P/Policy"));
    });
    m_node->AddObserver(&observer);
    set.ShowViewInTree(m_node, GetParam());
    EXPECT_EQ(set.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(m_tree.FindItem(Text("/P/Policy")), nullptr);
    set.AddAll();
}

TEST_P(ShowingAPolicySet, EndsCleanlyWhenAnObserverHidesTheSetHalfWay) {
    MCSPolicySet set;
    RecordingObserver observer;
    observer.React([&](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ChildrenAdded && observer.Count(code) == 3)
            set.ShowViewInTree(nullptr, false);
    });
    m_node->AddObserver(&observer);
    set.ShowViewInTree(m_node, GetParam());
    EXPECT_EQ(set.GetParentNodeInTree(), nullptr);
    EXPECT_EQ(m_node->CountChildren(), 3);
    m_node->DeleteObserver(&observer);
    EXPECT_EQ(treeaccess::CountObservers(m_node), 0);
}

TEST_P(ShowingAPolicySet, EndsCleanlyWhenAnObserverOfASwitchDeletesTheNode) {
    // Whichever side wins, one of the two switches changes the other side.
    Switch* const first = PutSwitch("MayBIT", true);
    MCSPolicySet set;
    RecordingObserver observer([&](Observable* /*source*/, TChangeCode code) {
        if (code != changecode::StateChanged) DeleteAt(Text("/P/Policy"));
    });
    if (GetParam())
        set.AddObserver(&observer);
    else
        first->AddObserver(&observer);
    set.ShowViewInTree(m_node, GetParam());
    EXPECT_EQ(m_tree.FindItem(Text("/P/Policy")), nullptr);
    EXPECT_EQ(set.GetParentNodeInTree(), nullptr);
    set.SetToDefaultPolicy();
}

TEST_P(ShowingAPolicySet, EndsCleanlyWhenAnObserverDeletesTheSwitchThatChanges) {
    PutSwitch("MayBIT", true);
    MCSPolicySet set;
    const auto deleteIt = [](Observable* /*source*/, TChangeCode code) {
        if (code != changecode::StateChanged) DeleteAt(Text("/P/Policy/MayBIT"));
    };
    RecordingObserver observer(deleteIt);
    if (GetParam())
        set.AddObserver(&observer);
    else
        SwitchOf(Text("MayBIT"))->AddObserver(&observer);
    set.ShowViewInTree(m_node, GetParam());
    EXPECT_EQ(SwitchOf(Text("MayBIT")), nullptr);
    EXPECT_EQ(m_node->CountChildren(), 9);
    EXPECT_EQ(set.GetParentNodeInTree(), m_node);
    set.DeleteObserver(&observer);
    SwitchOf(Text("SeesMasterJobRf"))->SetValue(true);
    EXPECT_TRUE(set.Contains(MCSPolicy::SEESMASTERJOBRF));
}

INSTANTIATE_TEST_SUITE_P(EitherWay, ShowingAPolicySet, testing::Bool(),
                         [](const auto& row) { return row.param ? "TheTreeWins" : "TheSetWins"; });

TEST_F(MCSPolicySetInTree, TheSetTakesTheTreesStatesWhenTheTreeWins) {
    PutSwitch("MayCal", true);
    PutSwitch("MayBIT", false);
    NotifyingSet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Add(MCSPolicy::MAYRESTARTJOB);
    set.Clear();
    set.ShowViewInTree(m_node, true);
    EXPECT_EQ(set.ToString(), Text("MayCal, MayRestartJob"));
    EXPECT_EQ(set.Notifications(), (Notifications{{6, nullptr}, {5, nullptr}}));
    EXPECT_EQ(SwitchedOn(), Contained(set));
}

TEST_F(MCSPolicySetInTree, TheTreeTakesTheSetsStatesWhenTheSetWins) {
    PutSwitch("MayCal", true);
    PutSwitch("MayBIT", false);
    NotifyingSet set;
    set.Add(MCSPolicy::MAYBIT);
    set.Clear();
    set.ShowViewInTree(m_node, false);
    EXPECT_EQ(SwitchedOn(), std::vector<QString>{Text("MayBIT")});
    EXPECT_EQ(set.ToString(), Text("MayBIT"));
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST_F(MCSPolicySetInTree, SwitchesOfUnknownNamesAreIgnored) {
    Switch* const unknown = PutSwitch("MayDoAnything", true);
    MCSPolicySet set;
    set.ShowViewInTree(m_node, true);
    EXPECT_EQ(set.ToString(), Text("<none>"));
    EXPECT_EQ(unknown->CountObservers(), 0);
    EXPECT_TRUE(unknown->GetValue());
}

TEST_F(MCSPolicySetInTree, ASwitchTurnedOnAddsThePolicyAndTellsOfBoth) {
    NotifyingSet set;
    set.ShowViewInTree(m_node, false);
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(true);
    EXPECT_EQ(set.ToString(), Text("MayCal"));
    EXPECT_EQ(set.Notifications(), (Notifications{{5, nullptr}, {3, &set.AsObserver()}}));
}

TEST_F(MCSPolicySetInTree, ASwitchTurnedOffRemovesThePolicyAndTellsOfBoth) {
    NotifyingSet set;
    set.AddAll();
    set.ShowViewInTree(m_node, false);
    set.Clear();
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(false);
    EXPECT_FALSE(set.Contains(MCSPolicy::MAYCAL));
    EXPECT_EQ(set.Notifications(), (Notifications{{6, nullptr}, {3, &set.AsObserver()}}));
}

TEST_F(MCSPolicySetInTree, AddTurnsTheSwitchOnBeforeItTells) {
    NotifyingSet set;
    set.ShowViewInTree(m_node, false);
    set.Add(MCSPolicy::MAYCAL);
    EXPECT_EQ(SwitchedOn(), std::vector<QString>{Text("MayCal")});
    EXPECT_EQ(set.Notifications(), (Notifications{{3, &set.AsObserver()}, {5, nullptr}}));
}

TEST_F(MCSPolicySetInTree, RemoveTurnsTheSwitchOffBeforeItTells) {
    NotifyingSet set;
    set.AddAll();
    set.ShowViewInTree(m_node, false);
    set.Clear();
    set.Remove(MCSPolicy::MAYCAL);
    EXPECT_FALSE(SwitchOf(MCSPolicy::MAYCAL)->GetValue());
    EXPECT_EQ(set.Notifications(), (Notifications{{3, &set.AsObserver()}, {6, nullptr}}));
}

TEST_F(MCSPolicySetInTree, AddOfAContainedPolicyDoesNotTouchTheTree) {
    NotifyingSet set;
    set.Add(MCSPolicy::MAYCAL);
    set.ShowViewInTree(m_node, false);
    set.Clear();
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(false, &set);  // the set does not hear of it
    set.Add(MCSPolicy::MAYCAL);
    EXPECT_FALSE(SwitchOf(MCSPolicy::MAYCAL)->GetValue());
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST_F(MCSPolicySetInTree, RemoveOfAnAbsentPolicyDoesNotTouchTheTree) {
    NotifyingSet set;
    set.ShowViewInTree(m_node, false);
    SwitchOf(MCSPolicy::MAYCAL)->SetValue(true, &set);
    set.Remove(MCSPolicy::MAYCAL);
    EXPECT_TRUE(SwitchOf(MCSPolicy::MAYCAL)->GetValue());
    EXPECT_EQ(set.Notifications(), Notifications{});
}

TEST_F(MCSPolicySetInTree, TwoSetsUnderOneNodeFollowEachOther) {
    MCSPolicySet first;
    MCSPolicySet second;
    first.ShowViewInTree(m_node, false);
    second.ShowViewInTree(m_node, true);
    first.SetToDefaultPolicy();
    EXPECT_EQ(Contained(second), Contained(first));
    second.RemoveAll();
    EXPECT_EQ(first.ToString(), Text("<none>"));
}

}  // namespace
