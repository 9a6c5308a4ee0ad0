// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclineedit.h>

#include <tests/platform/widgets/widgettest.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtTest/QSignalSpy>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include <memory>

namespace {

using values::Value;
using widgettest::Add;
using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;

class VCLineEditTest : public widgettest::WidgetTest {
  protected:
    VCLineEditTest() : m_edit(new VCLineEdit(&m_window)), m_other(new QLineEdit(&m_window)) {
        m_edit->setGeometry(10, 10, 200, 30);
        m_other->setGeometry(10, 50, 200, 30);
        m_edit->SetText_ValuePath(Text("/a/v"));
        widgettest::Activate(m_window, *m_edit);
        m_value->AddObserver(&m_observer);
    }
    ~VCLineEditTest() override {
        if (m_value != nullptr) m_value->DeleteObserver(&m_observer);
    }
    void Type(const char* text) {
        QTest::keyClick(m_edit, Qt::Key_End);
        QTest::keyClicks(m_edit, Text(text));
    }
    void Press(Qt::Key key) { QTest::keyClick(m_edit, key); }
    void Leave() { m_other->setFocus(); }
    QString Read() const {
        Flush();
        return m_edit->displayText();
    }
    QString Content() const { return m_value->GetValue(); }
    int CountChanges() const { return m_observer.Count(changecode::ContentChanged); }

    Value<QString>* m_value = Add<Value<QString>>("/a/v", Text("old"));
    VCLineEdit* m_edit;
    QLineEdit* m_other;
    RecordingObserver m_observer;
};

TEST_F(VCLineEditTest, HasItsNameAndNoneUnlessGiven) {
    const VCLineEdit named(nullptr, "deviceName", LineEditNormal);
    EXPECT_EQ(named.objectName(), Text("deviceName"));
    EXPECT_EQ(m_edit->objectName(), QString());
}

TEST_F(VCLineEditTest, APasswordIsHiddenWhileItIsNotEdited) {
    VCLineEdit edit(nullptr, nullptr, LineEditPassword);
    edit.SetText_ValuePath(Text("/a/v"));
    EXPECT_EQ(edit.displayText().size(), 3);
    EXPECT_FALSE(edit.displayText().contains(Text("old")));
}

TEST_F(VCLineEditTest, APasswordThatIsTypedReplacesTheOldOne) {
    VCLineEdit edit(&m_window, nullptr, LineEditPassword);
    edit.SetText_ValuePath(Text("/a/v"));
    edit.show();
    edit.setFocus();
    QTest::keyClicks(&edit, Text("new"));
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(Content(), Text("new"));
    m_edit->setFocus();
    EXPECT_FALSE(edit.displayText().contains(Text("new")));
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCLineEditTest, TypedTextIsNotSentBeforeEnter) {
    Type("er");
    EXPECT_EQ(Content(), Text("old"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("older"));
    EXPECT_EQ(CountChanges(), 1);
    EXPECT_EQ(Read(), Text("older"));
    Leave();
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCLineEditTest, TheEnterKeyOfTheKeypadSendsToo) {
    Type("er");
    Press(Qt::Key_Enter);
    EXPECT_EQ(Content(), Text("older"));
}

TEST_F(VCLineEditTest, LeavingSends) {
    Type("er");
    Leave();
    EXPECT_EQ(Content(), Text("older"));
    EXPECT_EQ(CountChanges(), 1);
}

TEST_F(VCLineEditTest, TabSendsAndMovesOn) {
    Type("er");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Content(), Text("older"));
    EXPECT_TRUE(m_other->hasFocus());
}

TEST_F(VCLineEditTest, LeavingWithoutTypingSendsNothing) {
    QSignalSpy finished(m_edit, &QLineEdit::editingFinished);
    Leave();
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(VCLineEditTest, EscapeRestores) {
    Type("er");
    Press(Qt::Key_Escape);
    EXPECT_EQ(Read(), Text("old"));
    Leave();
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCLineEditTest, EscapeClosesTheDialogOnlyIfThereIsNothingToRestore) {
    QDialog dialog;
    auto* const edit = new VCLineEdit(&dialog);
    edit->SetText_ValuePath(Text("/a/v"));
    widgettest::Activate(dialog, *edit);
    edit->end(false);
    QTest::keyClicks(edit, Text("er"));
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(edit->text(), Text("old"));
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(VCLineEditTest, EnterSendsBeforeTheDefaultButtonOfADialogIsPressed) {
    QDialog dialog;
    auto* const edit = new VCLineEdit(&dialog);
    QPushButton button(&dialog);
    button.setDefault(true);
    QString sent;
    QObject::connect(&button, &QPushButton::clicked, &dialog, [&] { sent = Content(); });
    edit->SetText_ValuePath(Text("/a/v"));
    widgettest::Activate(dialog, *edit);
    edit->end(false);
    QTest::keyClicks(edit, Text("er"));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(sent, Text("older"));
}

TEST_F(VCLineEditTest, ContentsThatComeWhileTheUserTypesWait) {
    Type("er");
    m_value->SetValue(Text("new"));
    EXPECT_EQ(Read(), Text("older"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Read(), Text("new"));

    Type("er");
    m_value->SetValue(Text("newest"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("newer"));
}

TEST_F(VCLineEditTest, WhoTypesTheOldContentAgainAndConfirmsSetsIt) {
    Type("e");
    Press(Qt::Key_Backspace);
    m_value->SetValue(Text("new"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("old"));
}

TEST_F(VCLineEditTest, WhoLeavesWithTheOldContentDoesNotTakeBackTheNewOne) {
    Type("e");
    Press(Qt::Key_Backspace);
    m_value->SetValue(Text("new"));
    Leave();
    EXPECT_EQ(Content(), Text("new"));
    EXPECT_EQ(Read(), Text("new"));
}

TEST_F(VCLineEditTest, ContentsThatComeLeaveTheCursorOfWhoOnlyLooksAlone) {
    m_edit->setCursorPosition(2);
    m_value->SetValue(Text("newest"));
    EXPECT_EQ(Read(), Text("newest"));
    EXPECT_EQ(m_edit->cursorPosition(), 2);
    Leave();
    m_value->SetValue(QString(500, QLatin1Char('w')));
    Read();
    EXPECT_EQ(m_edit->cursorPosition(), 0) << "the beginning of a long text";
}

TEST_F(VCLineEditTest, WhatIsTypedStaysWhileTheConnectionIsDownAndIsSentWhenItIsBack) {
    Type("er");
    m_value->SetState(values::Stale);
    EXPECT_EQ(Read(), Text("older"));
    Type("x");
    EXPECT_EQ(Read(), Text("older")) << "nothing is typed into what is not connected";
    m_value->SetState(values::Valid);
    Flush();
    Type("x");
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("olderx"));
}

TEST_F(VCLineEditTest, WhatIsConfirmedWhileTheConnectionIsDownIsRefused) {
    Type("er");
    m_value->SetState(values::Stale);
    Flush();
    Press(Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(Read(), Text("old"));
    EXPECT_EQ(ShownTip(), Text("This cannot be changed now."));
    m_value->SetState(values::Valid);
    Flush();
    Leave();
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCLineEditTest, LeavingWhileTheConnectionIsDownIsRefusedToo) {
    Type("er");
    m_value->SetState(values::Stale);
    Leave();
    RunTurns(2);
    EXPECT_EQ(Read(), Text("old"));
    EXPECT_EQ(ShownTip(), Text("This cannot be changed now."));
    m_value->SetState(values::Valid);
    Flush();
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
}

TEST_F(VCLineEditTest, WhatWasTypedIsDroppedWhenTheValueGoesAndTheUserIsTold) {
    Type("er");
    m_value = nullptr;
    Delete("/a/v");
    EXPECT_EQ(Read(), QString());
    RunTurns(2);
    EXPECT_EQ(ShownTip(), Text("What was entered was not sent: the value has gone."));
    Add<Value<QString>>("/a/v", Text("another"));
    EXPECT_EQ(Read(), Text("another"));
    Press(Qt::Key_Return);
    Leave();
    RunTurns(2);
    EXPECT_EQ(static_cast<Value<QString>*>(m_tree->FindItem(Text("/a/v")))->GetValue(), Text("another"));
}

TEST_F(VCLineEditTest, WhatWasTypedIsNotSentToAValueThatTookThePlaceUnseen) {
    Type("er");
    m_value = nullptr;
    Delete("/a/v");
    auto* const successor = Add<Value<QString>>("/a/v", Text("another"));
    Press(Qt::Key_Return);
    RunTurns(2);
    EXPECT_EQ(successor->GetValue(), Text("another"));
    EXPECT_EQ(Read(), Text("another"));
}

TEST_F(VCLineEditTest, WhatWasTypedIsNotSentToAnotherPath) {
    auto* const other = Add<Value<QString>>("/a/w", Text("other"));
    Type("er");
    m_edit->SetText_ValuePath(Text("/a/w"));
    EXPECT_EQ(Read(), Text("other"));
    Press(Qt::Key_Return);
    Leave();
    RunTurns(2);
    EXPECT_EQ(other->GetValue(), Text("other"));
    EXPECT_EQ(Content(), Text("old"));
}

TEST_F(VCLineEditTest, WhatWasTypedIsNotSentBecauseTheFieldIsDisabled) {
    Type("er");
    m_edit->setEnabled(false);
    RunTurns(2);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("old"));
    EXPECT_EQ(ShownTip(), Text("What was entered was not sent: the field was locked."));
}

TEST_F(VCLineEditTest, WhatWasTypedIsRefusedWhenTheRightToWriteIsTakenMeanwhile) {
    Type("er");
    m_value->SetWritable(false);
    Flush();
    Press(Qt::Key_Return);
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), Text("old"));
}

TEST_F(VCLineEditTest, WhatIsBeingTypedOutlivesAMenuOverTheField) {
    Type("er");
    QMenu menu(m_edit);
    menu.addAction(Text("Paste"));
    menu.popup(m_edit->mapToGlobal(QPoint(0, 0)));
    ASSERT_TRUE(WaitUntil([&] { return menu.isVisible(); }));
    EXPECT_EQ(CountChanges(), 0);
    menu.close();
    RunTurns(2);
    Type("x");
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("olderx"));
}

TEST_F(VCLineEditTest, AFieldThatMayNotBeWrittenIsReadOnly) {
    m_value->SetWritable(false);
    Flush();
    Type("er");
    EXPECT_EQ(Read(), Text("old"));
    EXPECT_TRUE(m_edit->isReadOnly());
    m_value->SetWritable(true);
    Flush();
    EXPECT_FALSE(m_edit->isReadOnly());
}

TEST_F(VCLineEditTest, UndoDoesNotBringBackAnotherContent) {
    m_value->SetValue(Text("new"));
    Flush();
    QTest::keyClick(m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Read(), Text("new"));
}

TEST_F(VCLineEditTest, MarkupIsText) {
    m_value->SetValue(Text("<b>bold</b> &amp; <img src='http://127.0.0.1/x'>"));
    EXPECT_EQ(Read(), Text("<b>bold</b> &amp; <img src='http://127.0.0.1/x'>"));
}

TEST_F(VCLineEditTest, FiftyThousandCharactersAreShownAndEditedWhole) {
    m_value->SetValue(QString(50000, QLatin1Char('l')));
    EXPECT_EQ(Read().size(), 50000);
    m_edit->setCursorPosition(50000);
    Type("x");
    Press(Qt::Key_Return);
    EXPECT_EQ(Content().size(), 50001);
}

TEST_F(VCLineEditTest, ATextThatIsTooLongToBeEditedIsShownCutAndNeverSentBack) {
    const QString tooLong(2000000, QLatin1Char('l'));
    m_value->SetValue(tooLong);
    EXPECT_TRUE(Read().endsWith(QChar(0x2026)));
    EXPECT_LT(Read().size(), 2000);
    EXPECT_TRUE(
        widgettest::TipOf(*m_edit).startsWith(Text("This text is too long to be edited here.\n/a/v")));
    Type("x");
    Press(Qt::Key_Return);
    Leave();
    EXPECT_EQ(Content(), tooLong);
    m_value->SetValue(Text("short"));
    EXPECT_EQ(Read(), Text("short"));
    EXPECT_FALSE(m_edit->isReadOnly());
}

TEST_F(VCLineEditTest, WhatDoesNotFitIsToldByTheTipButNoPassword) {
    m_value->SetValue(Text("a long text that does not fit into the field by any means"));
    Flush();
    EXPECT_TRUE(widgettest::TipOf(*m_edit).startsWith(m_value->GetValue()));
    m_edit->resize(1000, 30);
    EXPECT_TRUE(widgettest::TipOf(*m_edit).startsWith(Text("/a/v")));
    VCLineEdit secret(&m_window, nullptr, LineEditPassword);
    secret.SetText_ValuePath(Text("/a/v"));
    secret.resize(100, 30);
    secret.show();
    EXPECT_TRUE(widgettest::TipOf(secret).startsWith(Text("/a/v")));
}

TEST_F(VCLineEditTest, TextOfSeveralLinesIsNotChangedByBeingShown) {
    m_value->SetValue(Text("one\ntwo\tthree"));
    Read();
    m_edit->setCursorPosition(3);
    QTest::keyClicks(m_edit, Text("x"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Content(), Text("onex\ntwo\tthree"));
}

TEST_F(VCLineEditTest, TellsWhatTheUserTypes) {
    QSignalSpy changed(m_edit, &QLineEdit::textChanged);
    QSignalSpy edited(m_edit, &QLineEdit::textEdited);
    Type("er");
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(edited.count(), 2);
}

}  // namespace
