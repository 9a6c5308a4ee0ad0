// SPDX-License-Identifier: Apache-2.0
// What a bound widget shows while items come to its path, leave it, and come back.
#include <platform/values/valuelist.h>

#include <tests/platform/widgets/everywidget.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtCore/QPointer>

namespace {

using values::Node;
using widgettest::Add;
using widgettest::Settle;
using widgettest::Text;

class EveryWidgetBinding : public EveryWidget {};

INSTANTIATE_TEST_SUITE_P(, EveryWidgetBinding, testing::ValuesIn(AllKinds()), NameOfKind);

TEST_P(EveryWidgetBinding, IsBlankAtFirst) {
    ExpectBlank(EBindingState::Unbound);
}

TEST_P(EveryWidgetBinding, ShowsTheValueAtOnceWhenItIsBound) {
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    EXPECT_EQ(GetKind().Read(*m_widget), GetKind().GetText(false)) << "without a turn of the event loop";
    ExpectLive();
}

TEST_P(EveryWidgetBinding, IsBoundByAPropertyAsFormsHaveIt) {
    EXPECT_EQ(m_widget->property("valuePath"), QVariant(QByteArray("")));
    EXPECT_TRUE(m_widget->setProperty("valuePath", Text("/a/v")));
    EXPECT_EQ(m_widget->property("valuePath"), QVariant(QByteArray("/a/v")));
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, ShowsAChangeAtOnceAfterAPause) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    Settle();
    GetKind().SetContent(*value, true);
    EXPECT_EQ(GetKind().Read(*m_widget), GetKind().GetText(true));
}

TEST_P(EveryWidgetBinding, ShowsTheLastOfManyChanges) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    for (int i = 0; i < 1001; ++i)
        GetKind().SetContent(*value, i % 2 == 0);
    EXPECT_TRUE(WaitUntil([&] { return GetKind().Read(*m_widget) == GetKind().GetText(true); }));
}

TEST_P(EveryWidgetBinding, TakesAPathWithEmptySegments) {
    GetKind().AddValue("/a/v");
    Bind("//a///v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsForAnItemThatIsNotThere) {
    m_tree->ProvideNode(Text("/a"));
    Bind("/a/v");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/other");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsForAWholeSubtree) {
    Bind("/a/b/c/v");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/b/c/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsForASubtreeThatComesParentFirst) {
    Bind("/a/b/v");
    m_tree->ProvideNode(Text("/a"));
    ExpectBlank(EBindingState::Waiting);
    m_tree->ProvideNode(Text("/a/b"));
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/b/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsWhereTheWayLeadsThroughAValueThatGoesLater) {
    Add<values::Value<int>>("/a/b", 1);
    Bind("/a/b/v");
    ExpectBlank(EBindingState::Waiting);
    Delete("/a/b");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/b/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsAgainWhenTheParentOfTheWaitGoes) {
    m_tree->ProvideNode(Text("/a/b"));
    Bind("/a/b/c/v");
    Delete("/a");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/b/c/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, IsBlankWhenTheValueGoesAndFindsTheNextOne) {
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    Delete("/a/v");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, IsBlankWhenAnAncestorGoesAndFindsTheNextOne) {
    GetKind().AddValue("/a/b/c/v");
    Bind("/a/b/c/v");
    Delete("/a/b");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/b/c/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, FindsAValueThatTakesThePlaceWhileTheOldOneGoes) {
    values::ValueBase* const first = GetKind().AddValue("/a/v");
    GetKind().SetContent(*first, true);
    Bind("/a/v");
    class Successor final : public IObserver {
      public:
        explicit Successor(const Kind& kind) : m_kind(kind) {}
        void Update(Observable*, TChangeCode code) override {
            if (code == changecode::StateChanged) m_kind.AddValue("/a/v");
        }

      private:
        const Kind& m_kind;
    } successor(GetKind());
    first->AddObserver(&successor);
    first->MakeFirstObserver(&successor);
    Delete("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, ShowsNothingOfAnotherTypeAndTheValueWhenItIsBack) {
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    Delete("/a/v");
    // A label shows any value; no widget shows a node.
    if (GetKind().IsEditor())
        Add<values::ValueList<double>>("/a/v");
    else
        m_tree->ProvideNode(Text("/a/v"));
    ExpectBlank(EBindingState::WrongType);
    Delete("/a/v");
    ExpectBlank(EBindingState::Waiting);
    GetKind().AddValue("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, ANodeAtThePathIsNotShown) {
    m_tree->ProvideNode(Text("/a/v/below"));
    Bind("/a/v");
    ExpectBlank(EBindingState::WrongType);
    m_tree->ProvideNode(Text("/a/v/further"));
    ExpectBlank(EBindingState::WrongType);
    Delete("/a/v");
    GetKind().AddValue("/a/v");
    ExpectLive();
    Bind("/");
    ExpectBlank(EBindingState::WrongType);
}

TEST_P(EveryWidgetBinding, FollowsThePathAndNotTheItemThatIsRenamed) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    value->SetName(Text("w"));
    ExpectBlank(EBindingState::Waiting);
    value->SetName(Text("v"));
    ExpectLive();
}

TEST_P(EveryWidgetBinding, FindsAnItemThatIsRenamedToItsPath) {
    Add<values::Value<int>>("/a/b", 1);
    values::ValueBase* const value = GetKind().AddValue("/a/w");
    Bind("/a/v");
    ExpectBlank(EBindingState::Waiting);
    value->SetName(Text("v"));
    ExpectLive();
}

TEST_P(EveryWidgetBinding, RebindsToTheSamePathAnotherOneAndNone) {
    GetKind().AddValue("/a/v");
    GetKind().SetContent(*GetKind().AddValue("/a/w"), true);
    Bind("/a/v");
    Bind("/a/v");
    ExpectLive();
    Bind("/a/w");
    EXPECT_EQ(Read(), GetKind().GetText(true));
    Bind("/a/nothing");
    ExpectBlank(EBindingState::Waiting);
    Bind("");
    ExpectBlank(EBindingState::Unbound);
    GetKind().AddValue("/a/nothing");
    ExpectBlank(EBindingState::Unbound);
    Bind("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, HearsNothingMoreOfTheValueItLeft) {
    values::ValueBase* const left = GetKind().AddValue("/a/v");
    GetKind().AddValue("/a/w");
    Bind("/a/v");
    Bind("/a/w");
    GetKind().SetContent(*left, true);
    ExpectLive();
    EXPECT_EQ(left->CountObservers(), 0);
    Delete("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, IsBlankAfterTheTreeAndFindsTheNextTreeWhenItIsBoundAgain) {
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    DestroyTree();
    ExpectBlank(EBindingState::Waiting);
    Bind("/a/v");
    ExpectBlank(EBindingState::Waiting);
    m_tree = std::make_unique<values::Tree>();
    GetKind().AddValue("/a/v");
    Bind("/a/v");
    ExpectLive();
}

TEST_P(EveryWidgetBinding, WaitsThroughTheEndOfTheTree) {
    m_tree->ProvideNode(Text("/a"));
    Bind("/a/v");
    DestroyTree();
    ExpectBlank(EBindingState::Waiting);
}

TEST_P(EveryWidgetBinding, LeavesNoObserverWhenItIsDestroyed) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    delete m_widget;
    EXPECT_EQ(value->CountObservers(), 0);
    GetKind().SetContent(*value, true);

    m_widget = GetKind().Create(&m_window);
    Bind("/a/w");
    delete m_widget;
    EXPECT_EQ(m_tree->FindNode(Text("/a"))->CountObservers(), 0);
}

TEST_P(EveryWidgetBinding, MayBeDestroyedWhileAChangeWaitsToBeShown) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    GetKind().SetContent(*value, true);
    GetKind().SetContent(*value, false);
    delete m_widget;
    widgettest::Flush();
    m_widget = GetKind().Create(&m_window);
    Bind("/a/v");
    GetKind().SetContent(*value, true);
    Delete("/a/v");
    delete m_widget;
    widgettest::Flush();
    EXPECT_EQ(m_tree->FindNode(Text("/a"))->CountObservers(), 0);
}

TEST_P(EveryWidgetBinding, MayBeDestroyedByAnotherObserverOfItsValue) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    QPointer<QWidget> widget(m_widget);
    RecordingObserver destroys([&](Observable*, TChangeCode) { delete widget; });
    value->AddObserver(&destroys);  // before the widget, which would be told next
    Bind("/a/v");
    GetKind().SetContent(*value, true);
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(value->CountObservers(), 1);
    value->DeleteObserver(&destroys);
}

TEST_P(EveryWidgetBinding, MayBeDestroyedWhenItsValueGoesAndWhenOneComes) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    QPointer<QWidget> widget(m_widget);
    RecordingObserver destroys([&](Observable*, TChangeCode) { delete widget; });
    value->AddObserver(&destroys);
    Bind("/a/v");
    Delete("/a/v");
    EXPECT_TRUE(widget.isNull());

    Node* const node = m_tree->FindNode(Text("/a"));
    widget = m_widget = GetKind().Create(&m_window);
    node->AddObserver(&destroys);
    Bind("/a/v");
    GetKind().AddValue("/a/v");
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(node->CountObservers(), 1);
    node->DeleteObserver(&destroys);
}

TEST_P(EveryWidgetBinding, TellsNothingOfContentsThatComeFromTheTree) {
    const widgettest::SignalCounter signalsOfWidget(*m_widget);
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    Bind("/a/v");
    GetKind().SetContent(*value, true);
    Read();
    value->SetState(values::Stale);
    Read();
    value->SetState(values::Valid);
    value->SetWritable(false);
    Read();
    Delete("/a/v");
    Read();
    GetKind().AddValue("/a/v");
    Read();
    Bind("");
    EXPECT_EQ(signalsOfWidget.Count(), 0) << signalsOfWidget.Names().toStdString();
}

TEST_P(EveryWidgetBinding, NeverSetsTheValueByShowingIt) {
    values::ValueBase* const value = GetKind().AddValue("/a/v");
    int changes = 0;
    class Counter final : public IObserver {
      public:
        explicit Counter(int& count) : m_count(count) {}
        void Update(Observable*, TChangeCode code) override { m_count += code == changecode::ContentChanged; }

      private:
        int& m_count;
    } counter(changes);
    value->AddObserver(&counter);
    Bind("/a/v");
    GetKind().SetContent(*value, true);
    Read();
    Bind("");
    Bind("/a/v");
    RunTurns(3);
    EXPECT_EQ(changes, 1);
    value->DeleteObserver(&counter);
}

}  // namespace
