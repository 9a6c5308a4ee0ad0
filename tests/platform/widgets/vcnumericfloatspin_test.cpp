// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vcnumericfloatspin.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSpinBox>

#include <limits>

namespace {

using values::Value;
using values::ValueNumeric;
using widgettest::Add;
using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;

class VCNumericFloatSpinTest : public widgettest::WidgetTest {
  protected:
    VCNumericFloatSpinTest() : m_spin(new VCNumericFloatSpin(&m_window)), m_other(new QLineEdit(&m_window)) {
        m_spin->setGeometry(10, 10, 200, 30);
        m_other->setGeometry(10, 50, 200, 30);
        m_spin->SetNumericInt_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_spin);
        m_value->AddObserver(&m_observer);
    }
    ~VCNumericFloatSpinTest() override {
        if (m_value != nullptr) m_value->DeleteObserver(&m_observer);
    }
    void Type(const char* text) { QTest::keyClicks(m_spin, Text(text)); }
    void Press(Qt::Key key) { QTest::keyClick(m_spin, key); }
    void Replace(const char* text) {
        m_spin->selectAll();
        Type(text);
    }
    void Leave() { m_other->setFocus(); }
    QString Read() const {
        Flush();
        return m_spin->text();
    }
    int CountChanges() const { return m_observer.Count(changecode::ContentChanged); }
    void Wheel(QWidget& widget, int steps) {
        const QPointF at(widget.rect().center());
        QWheelEvent event(at, widget.mapToGlobal(at.toPoint()), QPoint(), QPoint(0, 120 * steps),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    }

    ValueNumeric<int>* m_value = Add<ValueNumeric<int>>("/a/v", 7, 5, 50);
    VCNumericFloatSpin* m_spin;
    QLineEdit* m_other;
    RecordingObserver m_observer;
};

TEST_F(VCNumericFloatSpinTest, HasItsNameAndArrowsAsAskedFor) {
    const VCNumericFloatSpin plain(nullptr, "channels", false);
    EXPECT_EQ(plain.objectName(), Text("channels"));
    EXPECT_EQ(plain.buttonSymbols(), QAbstractSpinBox::NoButtons);
    EXPECT_EQ(m_spin->buttonSymbols(), QAbstractSpinBox::UpDownArrows);
}

TEST_F(VCNumericFloatSpinTest, ShowsAnIntegerWithoutLimits) {
    auto* const plain = Add<Value<int>>("/a/plain", std::numeric_limits<int>::min());
    m_spin->SetNumericInt_ValuePath(Text("/a/plain"));
    EXPECT_EQ(Read(), Text("-2147483648"));
    plain->SetValue(std::numeric_limits<int>::max());
    EXPECT_EQ(Read(), Text("2147483647"));
    Replace("-12");
    Press(Qt::Key_Return);
    EXPECT_EQ(plain->GetValue(), -12);
}

TEST_F(VCNumericFloatSpinTest, ANumberOfTheOtherKindIsNotShown) {
    Add<ValueNumeric<double>>("/a/real", 1.5, 0.0, 10.0);
    m_spin->SetNumericInt_ValuePath(Text("/a/real"));
    EXPECT_EQ(Read(), QString());
    m_spin->SetNumericDouble_ValuePath(Text("/a/real"));
    EXPECT_EQ(Read(), Text("1.500"));
    m_spin->SetNumericDouble_ValuePath(Text("/a/v"));
    EXPECT_EQ(Read(), QString());
}

TEST_F(VCNumericFloatSpinTest, ATypedNumberIsNotSentBeforeEnter) {
    Replace("12");
    EXPECT_EQ(m_value->GetValue(), 7);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 12);
    EXPECT_EQ(CountChanges(), 1);
    Leave();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCNumericFloatSpinTest, LeavingSends) {
    Replace("12");
    Press(Qt::Key_Tab);
    EXPECT_EQ(m_value->GetValue(), 12);
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCNumericFloatSpinTest, EscapeRestoresAndThenClosesADialog) {
    QDialog dialog;
    auto* const spin = new VCNumericFloatSpin(&dialog);
    spin->SetNumericInt_ValuePath(Text("/a/v"));
    widgettest::Activate(dialog, *spin);
    spin->selectAll();
    QTest::keyClicks(spin, Text("12"));
    QTest::keyClick(spin, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(spin->text(), Text("7"));
    QTest::keyClick(spin, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCNumericFloatSpinTest, ContentsThatComeWhileTheUserTypesWait) {
    Replace("12");
    m_value->SetValue(20);
    EXPECT_EQ(Read(), Text("12"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Read(), Text("20"));
    Replace("12");
    m_value->SetValue(30);
    Leave();
    EXPECT_EQ(m_value->GetValue(), 12);
}

TEST_F(VCNumericFloatSpinTest, WhoTypesTheOldNumberAgainAndConfirmsSetsIt) {
    Replace("7");
    m_value->SetValue(20);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 7);
    EXPECT_EQ(Read(), Text("7"));
}

TEST_F(VCNumericFloatSpinTest, WhoLeavesWithTheOldNumberDoesNotTakeBackTheNewOne) {
    Replace("7");
    m_value->SetValue(20);
    Leave();
    EXPECT_EQ(m_value->GetValue(), 20);
    EXPECT_EQ(Read(), Text("20"));
}

TEST_F(VCNumericFloatSpinTest, AfterAnUnchangedNumberContentsComeAgain) {
    Replace("7");
    Press(Qt::Key_Return);
    m_value->SetValue(20);
    EXPECT_EQ(Read(), Text("20"));
    Replace("8");
    Press(Qt::Key_Backspace);
    Type("20");
    Leave();
    m_value->SetValue(30);
    EXPECT_EQ(Read(), Text("30"));
}

TEST_F(VCNumericFloatSpinTest, ANumberBeyondTheLimitsCannotBeTyped) {
    Replace("99");
    EXPECT_EQ(m_spin->text(), Text("9"));
    Replace("-1");
    EXPECT_EQ(m_spin->text(), Text("1"));
}

TEST_F(VCNumericFloatSpinTest, AnUnfinishedNumberIsNotSentAndTheUserIsTold) {
    Replace("3");  // of 30, say: the minimum is 5
    Press(Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("7"));
    EXPECT_EQ(ShownTip(), Text("Please enter a number from 5 to 50."));
}

TEST_F(VCNumericFloatSpinTest, AnEmptyFieldIsNotSent) {
    m_spin->selectAll();
    Press(Qt::Key_Delete);
    Leave();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("7"));
    EXPECT_EQ(ShownTip(), Text("Please enter a number from 5 to 50."));
}

TEST_F(VCNumericFloatSpinTest, LimitsThatChangeAreTheLimitsOfTheField) {
    m_value->SetMax(100);
    Flush();
    Replace("99");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 99);
    m_value->SetMax(20);
    EXPECT_EQ(Read(), Text("20"));
    Press(Qt::Key_Up);
    EXPECT_EQ(Read(), Text("20"));
}

TEST_F(VCNumericFloatSpinTest, LimitsThatChangeWhileTheUserTypesHoldForWhatIsSent) {
    Replace("45");
    m_value->SetMax(20);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 20);
    EXPECT_EQ(Read(), Text("20"));
}

TEST_F(VCNumericFloatSpinTest, KeysStepAndSendEachStep) {
    Press(Qt::Key_Up);
    EXPECT_EQ(m_value->GetValue(), 8);
    Press(Qt::Key_Up);
    EXPECT_EQ(m_value->GetValue(), 9);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_value->GetValue(), 8);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(m_value->GetValue(), 18);
    EXPECT_EQ(CountChanges(), 4);
    m_value->SetValue(30);
    EXPECT_EQ(Read(), Text("30")) << "a step is no edit that is under way";
}

TEST_F(VCNumericFloatSpinTest, AStepAtTheLimitSendsNothing) {
    m_value->SetValue(50);
    Flush();
    Press(Qt::Key_Up);
    EXPECT_EQ(CountChanges(), 1);
    EXPECT_EQ(Read(), Text("50"));
}

TEST_F(VCNumericFloatSpinTest, AStepGoesOnFromWhatWasTyped) {
    Replace("12");
    Press(Qt::Key_Up);
    EXPECT_EQ(m_value->GetValue(), 13);
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCNumericFloatSpinTest, AStepFromAnUnfinishedNumberIsNone) {
    Replace("3");
    Press(Qt::Key_Up);
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(m_spin->text(), Text("3"));
}

TEST_F(VCNumericFloatSpinTest, AnArrowStepsOnAClick) {
    QStyleOptionSpinBox option;
    option.initFrom(m_spin);
    option.subControls = QStyle::SC_All;
    const QRect up =
        m_spin->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, m_spin);
    QTest::mouseClick(m_spin, Qt::LeftButton, Qt::NoModifier, up.center());
    EXPECT_EQ(m_value->GetValue(), 8);
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCNumericFloatSpinTest, AStepByAProgramIsSentInTheNextTurn) {
    m_spin->stepUp();
    RunTurns(1);
    EXPECT_EQ(m_value->GetValue(), 8);
}

TEST_F(VCNumericFloatSpinTest, TheWheelStepsOnlyWithTheFocus) {
    Wheel(*m_spin, 2);
    EXPECT_EQ(m_value->GetValue(), 9);
    Leave();
    Wheel(*m_spin, 2);
    RunTurns(2);
    EXPECT_EQ(m_value->GetValue(), 9);
}

TEST_F(VCNumericFloatSpinTest, WhatWasTypedIsDroppedWhenTheValueGoes) {
    Replace("12");
    m_value = nullptr;
    Delete("/a/v");
    EXPECT_EQ(Read(), QString());
    auto* const successor = Add<ValueNumeric<int>>("/a/v", 30, 5, 50);
    EXPECT_EQ(Read(), Text("30"));
    Press(Qt::Key_Return);
    Leave();
    RunTurns(2);
    EXPECT_EQ(successor->GetValue(), 30);
}

TEST_F(VCNumericFloatSpinTest, WhatIsTypedStaysWhileTheConnectionIsDown) {
    Replace("12");
    m_value->SetState(values::Stale);
    EXPECT_EQ(Read(), Text("12"));
    m_value->SetState(values::Valid);
    Flush();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_value->GetValue(), 12);
}

TEST_F(VCNumericFloatSpinTest, WhatIsConfirmedWhileTheConnectionIsDownIsRefused) {
    Replace("12");
    m_value->SetState(values::Stale);
    Press(Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("7"));
    EXPECT_EQ(ShownTip(), Text("This cannot be changed now."));
}

TEST_F(VCNumericFloatSpinTest, ABlankFieldStaysBlankWhateverIsPressed) {
    m_spin->SetNumericInt_ValuePath(QString());
    QSignalSpy changed(m_spin, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    Type("12");
    Press(Qt::Key_Return);
    Press(Qt::Key_Up);
    Wheel(*m_spin, 1);
    Leave();
    m_window.hide();
    m_window.show();
    RunTurns(2);
    EXPECT_EQ(Read(), QString());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(VCNumericFloatSpinTest, TakesAsMuchRoomBlankAsFilled) {
    const QSize filled = m_spin->sizeHint();
    m_value = nullptr;
    Delete("/a/v");
    Flush();
    EXPECT_EQ(m_spin->sizeHint(), filled);
    EXPECT_EQ(m_spin->minimumSizeHint().width() > 20, true);
}

TEST_F(VCNumericFloatSpinTest, AsksForRoomForItsLimits) {
    const int before = m_spin->sizeHint().width();
    m_value->SetMax(2000000000);
    Flush();
    EXPECT_GT(m_spin->sizeHint().width(), before);
}

}  // namespace
