// SPDX-License-Identifier: Apache-2.0
// Edits by assistive technology: they count as those of a user at the keyboard, or are refused as those are.
#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <tests/platform/widgets/everywidget.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/spoken.h>
#include <tests/support/waituntil.h>

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>

namespace {

using widgettest::Add;
using widgettest::Flush;
using widgettest::ShownTip;
using widgettest::Text;

/// The edit that assistive technology makes in each kind of widget, and what ends it.
struct SpokenEdit {
    const char* name;
    int kind;  ///< among EditorKinds()
    void (*edit)(QWidget& widget);
    const char* end;  ///< what the value has then
};

void Confirm(QWidget& widget) {
    QTest::keyClick(&widget, Qt::Key_Return);
}

constexpr int CheckBox = 0, LineEdit = 2, Spin = 3, PushButton = 4;

const SpokenEdit SpokenEdits[] = {
    {"ABoxIsToggled", CheckBox, spoken::Toggle, "not checked"},
    {"ABoxIsPressed", CheckBox, spoken::Press, "not checked"},
    {"ATextIsReplaced", LineEdit,
     [](QWidget& widget) {
         spoken::Of(widget).editableTextInterface()->replaceText(0, 5, Text("second"));
         Confirm(widget);
     },
     "second"},
    {"ATextIsGivenAsAValue", LineEdit,
     [](QWidget& widget) {
         spoken::Of(widget).setText(QAccessible::Value, Text("second"));
         Confirm(widget);
     },
     "second"},
    {"ATextIsInsertedAndAnotherOneDeleted", LineEdit,
     [](QWidget& widget) {
         spoken::Of(widget).editableTextInterface()->insertText(5, Text(" and last"));
         spoken::Of(widget).editableTextInterface()->deleteText(0, 10);
         Confirm(widget);
     },
     "last"},
    {"ANumberIsSet", Spin, [](QWidget& widget) { spoken::Of(widget).valueInterface()->setCurrentValue(8.0); },
     "8"},
    {"ANumberIsWritten", Spin,
     [](QWidget& widget) {
         spoken::Of(widget).setText(QAccessible::Value, Text("8"));
         Confirm(widget);
     },
     "8"},
    {"ANumberBeyondTheLimitsIsSetToTheNextOne", Spin,
     [](QWidget& widget) { spoken::Of(widget).valueInterface()->setCurrentValue(1e9); }, "50"},
    {"AButtonIsPressed", PushButton, spoken::Press, "down"},
};

void PrintTo(const SpokenEdit& edit, std::ostream* stream) {
    *stream << edit.name;
}

class SpokenEditTest : public widgettest::WidgetTest, public testing::WithParamInterface<SpokenEdit> {
  protected:
    SpokenEditTest() {
        m_widget->setGeometry(10, 10, 200, 30);
        GetKind().Bind(*m_widget, Text("/a/v"));
        widgettest::Activate(m_window, *m_widget);
        Flush();
        m_value->AddObserver(&m_observer);
    }
    ~SpokenEditTest() override { m_value->DeleteObserver(&m_observer); }
    static const Kind& GetKind() { return *EditorKinds().at(static_cast<std::size_t>(GetParam().kind)); }
    QString Read() const {
        Flush();
        return GetKind().Read(*m_widget);
    }
    int CountChanges() const { return m_observer.Count(changecode::ContentChanged); }

    values::ValueBase* m_value = GetKind().AddValue("/a/v");
    QWidget* m_widget = GetKind().Create(&m_window);
    RecordingObserver m_observer;
};

INSTANTIATE_TEST_SUITE_P(, SpokenEditTest, testing::ValuesIn(SpokenEdits),
                         [](const auto& row) { return row.param.name; });

TEST_P(SpokenEditTest, SetsTheValueOnce) {
    GetParam().edit(*m_widget);
    ASSERT_TRUE(WaitUntil([this] { return CountChanges() > 0; }));
    RunTurns(3);
    EXPECT_EQ(CountChanges(), 1);
    EXPECT_EQ(Read(), Text(GetParam().end));
}

TEST_P(SpokenEditTest, IsRefusedWhereNobodyMayEdit) {
    m_value->SetWritable(false);
    Flush();
    const QString before = Read();
    GetParam().edit(*m_widget);
    EXPECT_TRUE(WaitUntil([] { return ShownTip().contains(Text("This cannot be changed now.")); }));
    EXPECT_EQ(CountChanges(), 0);
    EXPECT_EQ(Read(), before) << "nor is another picture shown";
    widgettest::HideTip();
}

TEST_P(SpokenEditTest, IsNoneWhereNothingIsBound) {
    GetKind().Bind(*m_widget, QString());
    const QString before = Read();
    GetParam().edit(*m_widget);
    RunTurns(3);
    EXPECT_TRUE(WaitUntil([&] { return Read() == before; })) << "once a button that was pressed is up again";
    EXPECT_EQ(CountChanges(), 0);
    widgettest::HideTip();
}

class SpokenWidgetTest : public widgettest::WidgetTest {};

TEST_F(SpokenWidgetTest, WhatIsTypedIsSentByEnterAndNotBefore) {
    auto* const value = Add<values::Value<QString>>("/a/v", Text("first"));
    VCLineEdit field(&m_window);
    field.SetText_ValuePath(Text("/a/v"));
    widgettest::Activate(m_window, field);
    spoken::Of(field).editableTextInterface()->replaceText(0, 5, Text("second"));
    RunTurns(3);
    EXPECT_EQ(value->GetValue(), Text("first"));
    EXPECT_EQ(field.text(), Text("second"));
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), Text("first"));
}

TEST_F(SpokenWidgetTest, ABoxTellsItsNameItsStateAndItsKey) {
    auto* const value = Add<values::Value<bool>>("/a/v", true);
    VCCheckBox box(&m_window);
    box.SetText(Text("Fish && &chips"));
    box.Set_ValuePath(Text("/a/v"));
    m_window.show();
    QAccessibleInterface& told = spoken::Of(box);
    EXPECT_EQ(told.role(), QAccessible::CheckBox);
    EXPECT_EQ(told.text(QAccessible::Name), Text("Fish & chips"));
    EXPECT_EQ(told.text(QAccessible::Accelerator), Text("Alt+C"));
    EXPECT_TRUE(told.state().checked && told.state().checkable && told.state().focusable);
    EXPECT_FALSE(told.state().readOnly);
    EXPECT_TRUE(told.actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    value->SetWritable(false);
    value->SetValue(false);
    Flush();
    EXPECT_FALSE(told.state().checked);
    EXPECT_TRUE(told.state().readOnly);
    box.setAccessibleName(Text("Supper"));
    EXPECT_EQ(told.text(QAccessible::Name), Text("Supper"));
}

// Who clicks through assistive technology clicks the middle of what it tells.
TEST_F(SpokenWidgetTest, TheMiddleOfABoxSwitchesIt) {
    auto* const value = Add<values::Value<bool>>("/a/v", false);
    VCCheckBox box(&m_window);
    box.SetText(Text("Box"));
    box.setGeometry(0, 0, 800, 30);
    box.Set_ValuePath(Text("/a/v"));
    widgettest::Activate(m_window, box);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier,
                      box.mapFromGlobal(spoken::Of(box).rect().center()));
    EXPECT_TRUE(value->GetValue());
}

TEST_F(SpokenWidgetTest, AFieldTellsWhereItsTextIsAndWhatIsChosen) {
    Add<values::Value<QString>>("/a/v", Text("Tower west"));
    VCLineEdit field(&m_window);
    field.setGeometry(0, 0, 300, 30);
    field.SetText_ValuePath(Text("/a/v"));
    m_window.show();
    QAccessibleInterface& told = spoken::Of(field);
    EXPECT_EQ(told.role(), QAccessible::EditableText);
    EXPECT_EQ(told.text(QAccessible::Value), Text("Tower west"));
    QAccessibleTextInterface& text = *told.textInterface();
    EXPECT_EQ(text.characterCount(), 10);
    EXPECT_EQ(text.text(6, 10), Text("west"));
    EXPECT_EQ(text.offsetAtPoint(text.characterRect(6).center() - QPoint(1, 0)), 6);
    EXPECT_TRUE(told.rect().contains(text.characterRect(6)));
    text.setSelection(0, 6, 10);
    int start = 0;
    int end = 0;
    text.selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(6, 10));
    EXPECT_EQ(field.selectedText(), Text("west"));
    text.removeSelection(0);
    EXPECT_EQ(text.selectionCount(), 0);
    text.setCursorPosition(99);
    EXPECT_EQ(text.cursorPosition(), 10);
    int from = 0;
    int to = 0;
    EXPECT_EQ(text.textAtOffset(7, QAccessible::WordBoundary, &from, &to), Text("west"));
}

TEST_F(SpokenWidgetTest, ASecretIsNotReadOut) {
    Add<values::Value<QString>>("/a/v", Text("secret"));
    VCLineEdit field(&m_window, nullptr, LineEditPassword);
    field.SetText_ValuePath(Text("/a/v"));
    QAccessibleInterface& told = spoken::Of(field);
    EXPECT_EQ(told.text(QAccessible::Value), Text("******"));
    EXPECT_EQ(told.textInterface()->text(0, 6), Text("******"));
    EXPECT_TRUE(told.state().passwordEdit);
}

TEST_F(SpokenWidgetTest, ANumberTellsItsLimits) {
    Add<values::ValueNumeric<int>>("/a/v", 7, 0, 50);
    VCNumericFloatSpin spin(&m_window);
    spin.SetNumericInt_ValuePath(Text("/a/v"));
    QAccessibleInterface& told = spoken::Of(spin);
    EXPECT_EQ(told.role(), QAccessible::SpinBox);
    EXPECT_EQ(told.text(QAccessible::Value), Text("7"));
    QAccessibleValueInterface& value = *told.valueInterface();
    EXPECT_EQ(value.currentValue().toDouble(), 7);
    EXPECT_EQ(value.minimumValue().toDouble(), 0);
    EXPECT_EQ(value.maximumValue().toDouble(), 50);
    EXPECT_EQ(value.minimumStepSize().toDouble(), 1);
}

TEST_F(SpokenWidgetTest, ABoxWithChoicesOpensThem) {
    values::ValueSelection* const value = widgettest::AddSelection("/a/v", 3, 0);
    auto* const kind = EditorKinds().at(1);
    QWidget* const box = kind->Create(&m_window);
    kind->Bind(*box, Text("/a/v"));
    widgettest::Activate(m_window, *box);
    spoken::Of(*box).actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    auto* const choices = static_cast<QComboBox*>(box);
    EXPECT_TRUE(WaitUntil([&] { return choices->view()->isVisible(); }));
    choices->hidePopup();
    value->SetWritable(false);
    Flush();
    spoken::Of(*box).actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    RunTurns(3);
    EXPECT_FALSE(choices->view()->isVisible());
    widgettest::HideTip();
}

}  // namespace
