// SPDX-License-Identifier: Apache-2.0
// What holds for edits in every widget that has them: access, refusals, and values that go meanwhile.
#include <tests/platform/widgets/everywidget.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>
#include <tests/support/waituntil.h>

#include <platform/values/refusals.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>

namespace {

using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;
using widgettest::TipOf;

class EveryEditor : public EveryWidget {
  protected:
    EveryEditor() {
        m_value = GetKind().AddValue("/a/v");
        Bind("/a/v");
        widgettest::Activate(m_window, *m_widget);
        m_value->AddObserver(&m_observer);
    }
    ~EveryEditor() override {
        if (m_value != nullptr) m_value->DeleteObserver(&m_observer);
    }
    void Edit() { GetKind().Edit(*m_widget); }
    int CountChanges() const { return m_observer.Count(changecode::ContentChanged); }
    void Refuse(const char* reason) {
        const TraceRecorder traces;
        // As a mirror does: first the server's content, then why.
        GetKind().SetContent(*m_value, false);
        values::Refusals::Instance().Report(m_value, Text("/a/v"), Text(reason));
    }

    values::ValueBase* m_value;
    RecordingObserver m_observer;
};

INSTANTIATE_TEST_SUITE_P(, EveryEditor, testing::ValuesIn(EditorKinds()), NameOfKind);

TEST_P(EveryEditor, AnEditSetsTheValueOnce) {
    Edit();
    EXPECT_EQ(CountChanges(), 1);
    EXPECT_NE(Read(), GetKind().GetText(false));
    RunTurns(3);
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, AnEditOfAValueThatMayNotBeWrittenIsRefused) {
    m_value->SetWritable(false);
    Flush();
    Edit();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), GetKind().GetText(false));
    m_value->SetWritable(true);
    Flush();
    Edit();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, AnEditOfAStaleValueIsRefused) {
    m_value->SetState(values::Stale);
    Flush();
    Edit();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), GetKind().GetText(false));
    m_value->SetState(values::Valid);
    Flush();
    Edit();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, AnEditOfNothingDoesNothing) {
    Bind("/a/nothing");
    Edit();
    RunTurns(2);
    EXPECT_EQ(Read(), GetKind().GetBlank());
    Bind("");
    Edit();
    RunTurns(2);
    EXPECT_EQ(Read(), GetKind().GetBlank());
}

TEST_P(EveryEditor, ARefusedEditShowsTheServersContentAndSaysWhy) {
    Edit();
    Refuse("not while <b>locked</b>");
    EXPECT_EQ(Read(), GetKind().GetText(false));
    RunTurns(2);
    EXPECT_EQ(ShownTip(), Text("not while <b>locked</b>"));
    EXPECT_EQ(m_widget->accessibleDescription(), Text("Connected\nRefused: not while <b>locked</b>"));
    EXPECT_TRUE(TipOf(*m_widget).contains(Text("\nRefused: not while <b>locked</b>")));
}

TEST_P(EveryEditor, TheNextEditForgetsTheRefusal) {
    Edit();
    Refuse("not now");
    Flush();
    Edit();
    EXPECT_FALSE(TipOf(*m_widget).contains(Text("not now")));
    EXPECT_EQ(m_widget->accessibleDescription(), QString());
}

TEST_P(EveryEditor, ARefusalOfSomebodyElsesEditIsNotPushedUponTheUser) {
    Refuse("not now");
    RunTurns(2);
    EXPECT_EQ(ShownTip(), QString());
    EXPECT_TRUE(TipOf(*m_widget).contains(Text("Refused: not now")));
}

TEST_P(EveryEditor, ARefusalOfAnotherItemIsNoneOfItsBusiness) {
    values::ValueBase* const other = GetKind().AddValue("/a/w");
    Edit();
    const TraceRecorder traces;
    values::Refusals::Instance().Report(other, Text("/a/w"), Text("no"));
    values::Refusals::Instance().Report(nullptr, Text("/a/v"), Text("no"));
    RunTurns(2);
    EXPECT_EQ(ShownTip(), QString());
    EXPECT_FALSE(TipOf(*m_widget).contains(Text("Refused")));
}

TEST_P(EveryEditor, ARefusalShowsNoTipWhereNobodySeesTheWidget) {
    Edit();
    m_widget->hide();
    Refuse("not now");
    RunTurns(2);
    EXPECT_EQ(ShownTip(), QString());
}

TEST_P(EveryEditor, ALongRefusalIsCut) {
    Edit();
    Refuse(std::string(50000, 'r').c_str());
    RunTurns(2);
    EXPECT_LT(ShownTip().size(), 600);
    EXPECT_GT(ShownTip().size(), 400);
}

TEST_P(EveryEditor, AnEditIsNotMadeToAValueThatTheUserHasNotSeen) {
    widgettest::Settle();
    GetKind().SetContent(*m_value, true);  // shown at once, and a pause begins
    GetKind().SetContent(*m_value, false);
    Delete("/a/v");
    m_value = GetKind().AddValue("/a/v");
    m_value->AddObserver(&m_observer);
    m_observer.Clear();
    Edit();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0) << "what is shown is still the old value";
    Flush();
    Edit();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, ADisabledWidgetTakesNoEdit) {
    m_widget->setEnabled(false);
    Edit();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
}

TEST_P(EveryEditor, WhoeverIsToldOfAnEditMaySetItBack) {
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged && CountChanges() == 1) GetKind().SetContent(*m_value, false);
    });
    Edit();
    EXPECT_EQ(Read(), GetKind().GetText(false));
    m_observer.React(nullptr);
    m_observer.Clear();
    Edit();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, WhoeverIsToldOfAnEditMayDestroyTheWidget) {
    const QPointer<QWidget> widget(m_widget);
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) delete widget;
    });
    Edit();
    RunTurns(2);
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(CountChanges(), 1);
}

TEST_P(EveryEditor, WhoeverIsToldOfAnEditMayDestroyTheValue) {
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code != changecode::ContentChanged) return;
        m_value = nullptr;
        Delete("/a/v");
    });
    Edit();
    RunTurns(2);
    EXPECT_EQ(m_value, nullptr);
    ExpectBlank(EBindingState::Waiting);
    EXPECT_EQ(m_widget->accessibleDescription(), Text("Not connected: nothing is there"))
        << "the edit was sent";
}

TEST_P(EveryEditor, WhoeverIsToldOfAnEditMayDestroyTheTree) {
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code != changecode::ContentChanged) return;
        m_value = nullptr;
        DestroyTree();
    });
    Edit();
    RunTurns(2);
    EXPECT_EQ(m_value, nullptr);
    ExpectBlank(EBindingState::Waiting);
}

TEST_P(EveryEditor, WhoeverIsToldOfAnEditMayBindTheWidgetToAnotherValue) {
    values::ValueBase* const other = GetKind().AddValue("/a/w");
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) Bind("/a/w");
    });
    RecordingObserver ofOther;
    other->AddObserver(&ofOther);
    Edit();
    RunTurns(2);
    ExpectLive();
    EXPECT_EQ(ofOther.Count(changecode::ContentChanged), 0);
    other->DeleteObserver(&ofOther);
}

TEST_P(EveryEditor, TakesTheFocusByTheKeyboardAndByAClickButNotByTheWheel) {
    EXPECT_TRUE((m_widget->focusPolicy() & Qt::TabFocus) != 0);
    EXPECT_TRUE((m_widget->focusPolicy() & Qt::ClickFocus) != 0);
    EXPECT_FALSE((m_widget->focusPolicy() & Qt::WheelFocus) == Qt::WheelFocus);
}

}  // namespace
