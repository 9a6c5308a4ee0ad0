// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccomboboxclassic.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>

namespace {

using values::SelectionItem;
using values::ValueSelection;
using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;

class VCComboBoxClassicTest : public widgettest::WidgetTest {
  protected:
    VCComboBoxClassicTest() : m_combo(new VCComboBoxClassic(&m_window)), m_other(new QLineEdit(&m_window)) {
        m_combo->setGeometry(10, 10, 200, 30);
        m_other->setGeometry(10, 50, 200, 30);
        m_combo->SetValueSelection_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_combo);
        m_value->AddObserver(&m_observer);
    }
    ~VCComboBoxClassicTest() override {
        if (m_value != nullptr) m_value->DeleteObserver(&m_observer);
    }
    QString Read() const {
        Flush();
        return m_combo->currentText();
    }
    QString ReadList() const {
        Flush();
        QStringList list;
        for (int i = 0; i < m_combo->count(); ++i)
            list << m_combo->itemText(i);
        return list.join(QLatin1Char(' '));
    }
    int CountChanges() const { return m_observer.Count(changecode::ContentChanged); }
    void Press(Qt::Key key) { QTest::keyClick(m_combo, key); }
    bool IsOpen() const { return m_combo->view()->isVisible(); }
    void Open() {
        QTest::mouseClick(m_combo, Qt::LeftButton);
        ASSERT_TRUE(WaitUntil([&] { return IsOpen(); }));
    }
    void ClickItem(int index) {
        QAbstractItemView& view = *m_combo->view();
        const QPoint at = view.visualRect(m_combo->model()->index(index, 0)).center();
        QTest::mouseMove(view.viewport(), at);
        // The list takes the click that opened it for itself, until a moment has passed.
        ASSERT_TRUE(WaitUntil([&] {
            if (!IsOpen()) return true;
            QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
            return !IsOpen();
        }));
        RunTurns(2);
    }
    void Wheel(int steps) {
        const QPointF at(m_combo->rect().center());
        QWheelEvent event(at, m_combo->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, -120 * steps),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_combo, &event);
    }

    ValueSelection* m_value = widgettest::AddSelection("/a/v", 4, 1);
    VCComboBoxClassic* m_combo;
    QLineEdit* m_other;
    RecordingObserver m_observer;
};

TEST_F(VCComboBoxClassicTest, ShowsTheChoicesAndTheCurrentOne) {
    EXPECT_EQ(ReadList(), Text("Zero One Two Three"));
    EXPECT_EQ(Read(), Text("One"));
    m_value->Select(30);
    EXPECT_EQ(Read(), Text("Three"));
    m_value->SelectIndex(ValueSelection::NoIndex);
    EXPECT_EQ(Read(), QString());
}

TEST_F(VCComboBoxClassicTest, FollowsChoicesThatComeAndGo) {
    m_value->AddItem(Text("Four"), 4, 40);
    EXPECT_EQ(ReadList(), Text("Zero One Two Three Four"));
    m_value->DeleteItem(m_value->GetItem(0));
    EXPECT_EQ(ReadList(), Text("One Two Three Four"));
    EXPECT_EQ(Read(), Text("One"));
    m_value->DeleteItem(m_value->GetItem(10));
    EXPECT_EQ(Read(), QString()) << "the current one has gone";
    m_value->SetItems({SelectionItem(Text("Other"), 0, 7)});
    EXPECT_EQ(ReadList(), Text("Other"));
    m_value->SetItems({});
    EXPECT_EQ(ReadList(), QString());
}

TEST_F(VCComboBoxClassicTest, AKeyChoosesAndSendsAtOnce) {
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetCurrentKey(), 20);
    Press(Qt::Key_End);
    EXPECT_EQ(m_value->GetCurrentKey(), 30);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetCurrentKey(), 30);
    Press(Qt::Key_Z);
    EXPECT_EQ(m_value->GetCurrentKey(), 0);
    EXPECT_EQ(CountChanges(), 3);
}

TEST_F(VCComboBoxClassicTest, AClickInTheListChooses) {
    QSignalSpy activated(m_combo, QOverload<int>::of(&QComboBox::activated));
    Open();
    ClickItem(3);
    EXPECT_EQ(m_value->GetCurrentKey(), 30);
    EXPECT_EQ(Read(), Text("Three"));
    EXPECT_EQ(CountChanges(), 1);
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(VCComboBoxClassicTest, EnterInTheListChooses) {
    Open();
    QTest::keyClick(m_combo->view(), Qt::Key_Down);
    EXPECT_EQ(CountChanges(), 0);
    QTest::keyClick(m_combo->view(), Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(m_value->GetCurrentKey(), 20);
    EXPECT_FALSE(IsOpen());
}

TEST_F(VCComboBoxClassicTest, EscapeInTheListRestores) {
    Open();
    QTest::keyClick(m_combo->view(), Qt::Key_Down);
    QTest::keyClick(m_combo->view(), Qt::Key_Escape);
    RunTurns(2);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("One"));
}

TEST_F(VCComboBoxClassicTest, WhoeverIsToldOfAChoiceInTheListMayDestroyTheWidget) {
    const QPointer<VCComboBoxClassic> combo(m_combo);
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) delete combo;
    });
    Open();
    QTest::keyClick(m_combo->view(), Qt::Key_Down);
    QTest::keyClick(m_combo->view(), Qt::Key_Return);
    RunTurns(2);
    EXPECT_TRUE(combo.isNull());
}

TEST_F(VCComboBoxClassicTest, TheListClosesWhenItsChoicesChange) {
    Open();
    m_value->AddItem(Text("Four"), 4, 40);
    Flush();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(ReadList(), Text("Zero One Two Three Four"));
    EXPECT_EQ(Read(), Text("One"));
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCComboBoxClassicTest, TheListStaysOpenWhenAnotherChoiceBecomesCurrent) {
    Open();
    m_value->Select(30);
    Flush();
    EXPECT_TRUE(IsOpen());
    ClickItem(0);
    EXPECT_EQ(m_value->GetCurrentKey(), 0);
}

TEST_F(VCComboBoxClassicTest, TheListClosesWhenTheValueIsStaleGoesOrMayNotBeWritten) {
    Open();
    m_value->SetState(values::Stale);
    Flush();
    EXPECT_FALSE(IsOpen());
    m_value->SetState(values::Valid);
    Flush();
    Open();
    m_value->SetWritable(false);
    Flush();
    EXPECT_FALSE(IsOpen());
    m_value->SetWritable(true);
    Flush();
    Open();
    m_value = nullptr;
    Delete("/a/v");
    Flush();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(ReadList(), QString());
}

TEST_F(VCComboBoxClassicTest, AChoiceThatIsNoLongerWhereItWasSeenIsNotMade) {
    widgettest::Settle();
    m_value->Select(20);  // shown at once, and a pause begins
    m_value->DeleteItem(m_value->GetItem(0));
    Press(Qt::Key_Down);  // "Three", as the user sees it, is not the fourth any more
    RunTurns(2);
    EXPECT_EQ(m_value->GetCurrentKey(), 20);
    EXPECT_EQ(ShownTip(), Text("There is no such choice any more."));
    EXPECT_EQ(ReadList(), Text("One Two Three"));
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetCurrentKey(), 30);
}

TEST_F(VCComboBoxClassicTest, AChoiceInWhosePlaceIsAnotherIsNotMade) {
    widgettest::Settle();
    m_value->Select(20);  // shown at once, and a pause begins
    m_value->SetItems({SelectionItem(Text("Zero"), 0, 0), SelectionItem(Text("One"), 0, 10),
                       SelectionItem(Text("Two"), 0, 20), SelectionItem(Text("Transmit"), 0, 30)});
    Press(Qt::Key_Down);
    RunTurns(2);
    EXPECT_EQ(m_value->GetCurrentKey(), 20) << "the user saw another text";
    EXPECT_EQ(ReadList(), Text("Zero One Two Transmit"));
}

TEST_F(VCComboBoxClassicTest, ChoicesOfTheSameTextAreToldApartByTheirKeys) {
    m_value->SetItems({SelectionItem(Text("Same"), 0, 1), SelectionItem(Text("Same"), 0, 2)});
    m_value->Select(1);
    Flush();
    widgettest::Settle();
    m_value->SetItems({SelectionItem(Text("Same"), 0, 2), SelectionItem(Text("Same"), 0, 1)});
    m_value->Select(2);
    Flush();
    EXPECT_EQ(m_combo->currentIndex(), 0);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetCurrentKey(), 1);
}

TEST_F(VCComboBoxClassicTest, TheListDoesNotOpenWhereNothingMayBeChosen) {
    m_value->SetWritable(false);
    Flush();
    QTest::mouseClick(m_combo, Qt::LeftButton);
    RunTurns(2);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(ShownTip(), Text("This cannot be changed now."));
    Press(Qt::Key_F4);
    EXPECT_FALSE(IsOpen());
    Press(Qt::Key_O);
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCComboBoxClassicTest, KeysThatChooseNothingAreLeftToTheDialog) {
    m_value->SetWritable(false);
    QDialog dialog;
    auto* const combo = new VCComboBoxClassic(&dialog);
    combo->SetValueSelection_ValuePath(Text("/a/v"));
    widgettest::Activate(dialog, *combo);
    QTest::keyClick(combo, Qt::Key_Shift);
    RunTurns(2);
    EXPECT_EQ(ShownTip(), QString());
    QTest::keyClick(combo, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(VCComboBoxClassicTest, TheWheelChoosesOnlyWithTheFocus) {
    Wheel(1);
    EXPECT_EQ(m_value->GetCurrentKey(), 20);
    m_other->setFocus();
    Wheel(1);
    RunTurns(2);
    EXPECT_EQ(m_value->GetCurrentKey(), 20);
}

TEST_F(VCComboBoxClassicTest, LongTextsAndMarkupAreShownCutAndAsTheyAre) {
    m_value->SetItems({SelectionItem(QString(50000, QLatin1Char('w')), 0, 1),
                       SelectionItem(Text("<b>bold</b> & more"), 0, 2)});
    m_value->Select(1);
    EXPECT_LT(Read().size(), 600);
    EXPECT_LE(m_combo->sizeHint().width(), 400);
    EXPECT_LE(m_combo->minimumSizeHint().width(), 400);
    EXPECT_TRUE(widgettest::TipOf(*m_combo).startsWith(Text("wwwwwwwwww"))) << "what does not fit";
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetCurrentKey(), 2);
    EXPECT_EQ(Read(), Text("<b>bold</b> & more"));
    Press(Qt::Key_Up);
    EXPECT_EQ(m_value->GetCurrentKey(), 1) << "a cut text can be chosen too";
}

}  // namespace
