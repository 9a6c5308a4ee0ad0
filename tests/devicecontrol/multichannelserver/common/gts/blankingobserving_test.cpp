// SPDX-License-Identifier: Apache-2.0
// What Blanking makes of changes of the tree.
#include <tests/devicecontrol/multichannelserver/common/gts/blankingtest.h>
#include <tests/support/recordingobserver.h>

namespace {

class ABlankingObserver : public BlankingTest {
  protected:
    values::Node* GtsNode() { return m_tree.FindNode(Text("/ORVServer/GTS")); }
};

TEST_F(ABlankingObserver, CreatesTheNodeThatItObserves) {
    ASSERT_NE(GtsNode(), nullptr);
    EXPECT_EQ(GtsNode()->CountObservers(), 1);
}

TEST_F(ABlankingObserver, KnowsModulesThatWereThereBefore) {
    Publish("Module-0", {118100000.0}, 0);
    Blanking::Instance()->FreeInstance();
    EXPECT_TRUE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, DetachesFromEverythingWhenItGoes) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    EXPECT_EQ(treeaccess::CountObservers(module.node), 3);
    Blanking::Instance()->FreeInstance();
    EXPECT_EQ(GtsNode()->CountObservers(), 0);
    EXPECT_EQ(treeaccess::CountObservers(module.node), 0);
}

TEST_F(ABlankingObserver, TakesAModuleOnceItIsComplete) {
    auto* const node = m_tree.ProvideNode(Text("/ORVServer/GTS/Module-0"));
    auto* const assignments = AddTo<Assignments>(*node, "FrequencyAssignments");
    assignments->SetItems({118100000.0});
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_EQ(treeaccess::CountObservers(node), 0);
    AddTo<Discretes>(*node, "InputDiscretes");
    EXPECT_TRUE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, IgnoresAModuleWithValuesOfOtherTypes) {
    auto* const node = m_tree.ProvideNode(Text("/ORVServer/GTS/Module-0"));
    AddTo<values::Value<int>>(*node, "InputDiscretes");
    AddTo<Assignments>(*node, "FrequencyAssignments")->SetItems({118100000.0});
    auto* const other = m_tree.ProvideNode(Text("/ORVServer/GTS/Module-1"));
    AddTo<Discretes>(*other, "InputDiscretes");
    AddTo<values::ValueNumeric<double>>(*other, "FrequencyAssignments")->SetValue(118100000.0);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_EQ(treeaccess::CountObservers(node), 0);
    EXPECT_EQ(treeaccess::CountObservers(other), 0);
}

TEST_F(ABlankingObserver, IgnoresValuesBesideTheModules) {
    AddTo<Discretes>(*GtsNode(), "InputDiscretes");
    AddTo<Assignments>(*GtsNode(), "FrequencyAssignments")->SetItems({118100000.0});
    EXPECT_FALSE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, FollowsTheAssignments) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    module.assignments->SetItems({121500000.0});
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_TRUE(IsBlanked(121500000.0));
}

TEST_F(ABlankingObserver, TakesNewInputsAsInactiveUntilTheInputsAreReadAgain) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    module.assignments->SetItems({118100000.0, 121500000.0});
    EXPECT_TRUE(IsBlanked(118100000.0));
    EXPECT_FALSE(IsBlanked(121500000.0));
    module.discretes->SetValue(4);
    EXPECT_TRUE(IsBlanked(121500000.0));
}

TEST_F(ABlankingObserver, ForgetsInputsThatTheAssignmentsLost) {
    const Module module = Publish("Module-0", {118100000.0, 121500000.0}, 0);
    module.assignments->SetItems({118100000.0});
    EXPECT_FALSE(IsBlanked(121500000.0));
    module.assignments->SetItems({118100000.0, 121500000.0});
    EXPECT_FALSE(IsBlanked(121500000.0));
}

TEST_F(ABlankingObserver, ReadsAnUnchangedListAgainWhenItIsTold) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    module.assignments->NotifyObservers(changecode::ItemsChanged);
    EXPECT_TRUE(IsBlanked(118100000.0));
}

// A module that goes shows itself disconnected first; one that is lost in another way is not released unseen.
TEST_F(ABlankingObserver, KeepsWhatALostModuleBlankedUntilTheNextChange) {
    const Module lost = Publish("Module-0", {118100000.0}, 0);
    const Module other = Publish("Module-1", {121500000.0}, 0);
    m_tree.Delete(lost.node);
    EXPECT_TRUE(IsBlanked(118100000.0));
    other.discretes->SetValue(1);
    EXPECT_FALSE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, ReleasesAModuleThatShowsItselfDisconnectedBeforeItGoes) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    module.assignments->SetItems({0.0});
    EXPECT_FALSE(IsBlanked(118100000.0));
    m_tree.Delete(module.node);
    EXPECT_FALSE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, TakesAModuleThatComesBackUnderTheSameName) {
    m_tree.Delete(Publish("Module-0", {118100000.0}, 0).node);
    const Module again = Publish("Module-0", {121500000.0}, 0);
    EXPECT_FALSE(IsBlanked(118100000.0));
    EXPECT_TRUE(IsBlanked(121500000.0));
    again.discretes->SetValue(1);
    EXPECT_FALSE(IsBlanked(121500000.0));
}

TEST_F(ABlankingObserver, GoesOnWithTheRestOfAModuleThatLosesAValue) {
    const Module first = Publish("Module-0", {118100000.0}, 0);
    m_tree.Delete(first.discretes);
    first.assignments->SetItems({121500000.0});
    EXPECT_TRUE(IsBlanked(121500000.0));
    const Module second = Publish("Module-1", {123450000.0}, 0);
    m_tree.Delete(second.assignments);
    second.discretes->SetValue(1);
    EXPECT_FALSE(IsBlanked(123450000.0));
}

TEST_F(ABlankingObserver, TakesAStaleStateForNoChange) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    module.discretes->SetState(values::Stale);
    module.assignments->SetState(values::Stale);
    EXPECT_TRUE(IsBlanked(118100000.0));
    module.discretes->SetValue(1);
    EXPECT_FALSE(IsBlanked(118100000.0));
}

TEST_F(ABlankingObserver, IgnoresChangesOfNoConcern) {
    const Module module = Publish("Module-0", {118100000.0}, 0);
    for (TChangeCode code = -1; code <= 20; ++code) {
        if (code == changecode::GoingAway) continue;
        for (Observable* source :
             {static_cast<Observable*>(module.node), static_cast<Observable*>(GtsNode()),
              static_cast<Observable*>(module.assignments), static_cast<Observable*>(module.discretes)})
            source->NotifyObservers(code);
        EXPECT_TRUE(IsBlanked(118100000.0)) << code;
    }
    EXPECT_EQ(treeaccess::CountObservers(module.node), 3);
}

TEST_F(ABlankingObserver, OutlivesItsNode) {
    Publish("Module-0", {118100000.0}, 0);
    treeaccess::DeleteAt(Text("/ORVServer"));
    EXPECT_TRUE(IsBlanked(118100000.0));
    Blanking::Instance()->FreeInstance();
    EXPECT_FALSE(IsBlanked(118100000.0));
}

TEST(ABlankingAfterItsTree, IsFreedAllTheSame) {
    {
        values::Tree tree;
        Blanking::Instance();
        tree.ProvideNode(treeaccess::Text("/ORVServer/GTS/Module-0"));
    }
    BlankingClient client;
    EXPECT_FALSE(Blanking::Instance()->IsFrequencyBlanked(1.0, &client));
    Blanking::Instance()->FreeInstance();
}

// Whoever is told after Blanking finds its answer made.
TEST_F(ABlankingObserver, HasItsAnswerBeforeLaterObserversAsk) {
    const Module module = Publish("Module-0", {118100000.0}, 1);
    std::vector<bool> answers;
    RecordingObserver observer([&](Observable*, TChangeCode) { answers.push_back(IsBlanked(118100000.0)); });
    module.discretes->AddObserver(&observer);
    module.discretes->SetValue(0);
    module.discretes->SetValue(1);
    module.discretes->DeleteObserver(&observer);
    EXPECT_EQ(answers, (std::vector<bool>{true, false}));
}

}  // namespace
